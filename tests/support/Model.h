#pragma once

#include <string>
#include <string_view>

#include "platform/Repository.h"
#include "repository/CLSRepository.h"

namespace brisel::test {

/// An empty model in a real store, with the wrapper that changes it, and short words for making
/// what tests need. Classes are made under their name as identifier.
class Model {
 public:
  using NodeRef = platform::Ref<platform::Node>;

  Model();

  platform::Ref<platform::MetaRepository> store;
  platform::Ref<repository::CLSRepository> model;

  NodeRef addClass(std::string_view name, std::string_view stereotype = {});
  NodeRef dataType(std::string_view name);
  NodeRef addAttribute(std::string_view owner, std::string_view name, std::string_view type);
  NodeRef addOperation(std::string_view owner, std::string_view name, std::string_view type);
  NodeRef addParameter(platform::Node& operation, std::string_view name, std::string_view type);

  [[nodiscard]] std::int64_t count(std::string_view nodeType) const;
  [[nodiscard]] std::int64_t linkCount(std::string_view linkType) const;
  [[nodiscard]] NodeRef find(std::string_view nodeType, std::string_view identifier) const;
  /// "a b c": the names at the far ends of the links of the type that leave the node.
  [[nodiscard]] static std::string owned(const platform::Node& node, std::string_view linkType);
  /// "first>second": the names of a relationship's classes, "?" for a missing end.
  [[nodiscard]] static std::string ends(const platform::Node& relationship);
};

}  // namespace brisel::test
