#pragma once

#include <string>
#include <string_view>

#include "platform/Diagram.h"
#include "platform/Repository.h"

namespace brisel::repository {

/// True when the reference is set; broken references count as empty.
[[nodiscard]] inline bool IsObjectSet(const platform::Ref<platform::Object>& reference) noexcept {
  return static_cast<bool>(reference);
}

/// The larger of the two.
[[nodiscard]] constexpr std::int32_t Max(std::int32_t a, std::int32_t b) { return a > b ? a : b; }

/// "<<name>>" for the node's stereotype, or "" where it has none or the stereotype "<NONE>".
[[nodiscard]] std::string stereotypeLabel(const platform::Node& node);
/// The name of the node's stereotype, "" where it has none.
[[nodiscard]] std::string stereotypeName(const platform::Node& node);

/// Pairs a box on the canvas with the "Class" node that it shows. Holds no data of the model: every
/// value is read from or written to the node at the moment it is needed.
class Class : public platform::Object {
 public:
  using Text = std::string_view;

  [[nodiscard]] platform::Ref<platform::DiagramNode> Node() const { return m_box; }
  /// An Error (invalidCall) for none.
  void Node(platform::DiagramNode* box);
  [[nodiscard]] platform::Ref<platform::Node> clsObject() const { return m_node; }
  /// An Error (invalidCall) for none and for a node of another type than "Class".
  void clsObject(platform::Node* node);
  [[nodiscard]] std::string name() const;
  void name(Text name);
  /// Whether the texts of operations list their parameters.
  [[nodiscard]] bool viewParameter() const { return m_viewParameter; }
  void viewParameter(bool view) { m_viewParameter = view; }
  /// Fills the box: title, a row "marker name:type" an attribute, one an operation. An Error of
  /// the repository when an attribute or parameter has no data type.
  void Populate();
  /// Half of it, for members of one kind.
  void populateAttributes();
  void populateOperations();
  /// The text with blanks at its end until it is `width` characters long.
  [[nodiscard]] std::string GetString(Text text, std::int32_t width) const;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  [[nodiscard]] platform::Node& node() const;
  [[nodiscard]] std::string operationText(const platform::Node& operation) const;

  platform::Ref<platform::DiagramNode> m_box;
  platform::Ref<platform::Node> m_node;
  bool m_viewParameter = false;
};

}  // namespace brisel::repository
