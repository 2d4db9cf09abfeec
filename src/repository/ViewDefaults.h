#pragma once

#include <array>
#include <string_view>

#include "platform/Repository.h"

namespace brisel::repository {

class CLSRepository;

/// A category of types: the stereotype under which elements of type libraries are kept.
struct TypeCategory {
  std::string_view key;
  bool shown;  ///< in a diagram without settings of its own
};

inline constexpr std::array<TypeCategory, 7> kTypeCategories = {{
    {"COM::Builtin", false},
    {"COM::Enum", true},
    {"COM::TypeDef", true},
    {"COM::Module", true},
    {"COM::Interface", true},
    {"COM::CoClass", true},
    {"COM::DispInterface", true},
}};

inline constexpr std::string_view kViewAttributes = "ViewAttributes";
inline constexpr std::string_view kViewOperations = "ViewOperations";
inline constexpr std::string_view kViewParameters = "ViewParameters";

/// How the settings store a flag.
inline constexpr std::string_view kSettingTrue = "%TRUE%";
inline constexpr std::string_view kSettingFalse = "%FALSE%";

/// Gives a model that has none the view settings of a new diagram: attributes and operations
/// shown, parameters not (the first drawing of a model without geometry turns them on).
platform::Ref<platform::Node> makeLayoutNode(CLSRepository& model);

}  // namespace brisel::repository
