#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "interchange/DimFormat.h"
#include "interchange/DimText.h"
#include "platform/Value.h"

namespace brisel::interchange {

/// One element of a DIM file as it was read. Its texts live until the next is read.
struct DimLine {
  enum class Kind { header, node, link, end };
  struct Property {
    std::string_view key;
    platform::Value value;
  };

  Kind kind = Kind::node;
  std::string_view type;  ///< of the node or link; the format in a header and at the end
  std::string_view identifier;
  std::optional<std::string_view> name;
  std::string_view source;  ///< identifier of a link's end
  std::string_view target;
  std::vector<Property> properties;
  std::optional<dim::Area> area;
  std::vector<dim::Point> points;
  std::int64_t version = 0;
  std::string_view modelKind;
  const char* place = nullptr;  ///< for DimText::fail
};

/// Calls for each element of the text, in order; header and end are elements too. Checks the form
/// of each: the JSON, the kinds of the values, that all keys are there that must and none that
/// may not. What the elements mean is for the caller to check. Raises an Error (badFile) naming
/// file, line and cause.
void readDimLines(DimText& text, const std::function<void(const DimLine&)>& take);

}  // namespace brisel::interchange
