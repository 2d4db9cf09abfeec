#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Repository.h"
#include "platform/ValueArray.h"

namespace brisel::controls {

/// True while the element is one of its repository's: held by its type's extension.
[[nodiscard]] bool isInRepository(const platform::Element& element);

/// The node that a row shows: the element itself, or the target of a link; nothing when either has
/// left its repository.
[[nodiscard]] platform::Ref<platform::Node> shownNode(const platform::Element& element);

/// A row of a list as callers by name see it. Nothing is copied: cells and tag are read when they
/// are asked for, and empty once what the row stands for has left the repository.
class Row : public platform::Object {
 public:
  using Keys = std::shared_ptr<const std::vector<std::string>>;

  /// `element` is a node, or a link whose target is shown; `keys` the properties, a cell each.
  Row(platform::Ref<platform::Element> element, Keys keys)
      : m_element(std::move(element)), m_keys(std::move(keys)) {}

  /// The texts of the cells in the order of the columns.
  [[nodiscard]] platform::Ref<platform::ValueArray> cells() const;
  /// The identifier of the node that is shown.
  [[nodiscard]] std::string tag() const;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  platform::Ref<platform::Element> m_element;
  Keys m_keys;
};

}  // namespace brisel::controls
