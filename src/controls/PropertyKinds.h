#pragma once

#include <span>
#include <string_view>

#include "platform/Value.h"

namespace brisel::controls {

/// Which editor fits a property. `choice` offers words and takes only those, in any case, or
/// nothing; `openChoice` offers words and takes any text.
enum class PropertyKind { text, lines, boolean, number, choice, openChoice };

struct PropertyFormat {
  PropertyKind kind = PropertyKind::text;
  std::span<const std::string_view> words;  ///< what a choice offers
};

/// The format of a property by its key, ignoring case; a key that is not known takes the kind of
/// the value that is there.
[[nodiscard]] PropertyFormat formatOf(std::string_view key, const platform::Value& value);

/// The property that a key of the grid stands for: "Description" for "Intention", else the key.
[[nodiscard]] std::string_view propertyBehind(std::string_view key);

/// A value as the grid shows it: a Boolean for `boolean`, a number or empty for `number`, a string
/// for all else.
[[nodiscard]] platform::Value shownValue(const PropertyFormat& format,
                                         const platform::Value& stored);

/// A value given for a property, in the kind in which it is shown and stored; the words True and
/// False and written numbers count as what they say. An Error (typeMismatch) naming the key when it
/// does not fit.
[[nodiscard]] platform::Value storedValue(std::string_view key, const PropertyFormat& format,
                                          const platform::Value& given);

}  // namespace brisel::controls
