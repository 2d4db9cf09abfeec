#pragma once

#include <string>
#include <string_view>

#include "platform/Diagram.h"
#include "platform/Event.h"
#include "platform/Geometry.h"
#include "platform/Object.h"
#include "repository/CLSRepository.h"
#include "repository/Class.h"

namespace brisel::editors {

/// The pane that edits one class. So far it keeps what its owner hands it and shows the class's
/// name.
class CLSClassControl : public platform::Object {
 public:
  [[nodiscard]] std::string Path() const { return m_path; }
  void Path(std::string_view path) { m_path = path; }
  [[nodiscard]] platform::Ref<repository::Class> Class() const { return m_class; }
  void Class(repository::Class* shown) { m_class = shown; }
  [[nodiscard]] platform::Ref<repository::CLSRepository> Repository() const {
    return m_repository;
  }
  void Repository(repository::CLSRepository* repository) { m_repository = repository; }
  /// The class's box on the canvas.
  [[nodiscard]] platform::Ref<platform::DiagramNode> Node() const { return m_node; }
  void Node(platform::DiagramNode* node) { m_node = node; }

  /// Fills the pane from the class.
  void Prepare() { Changed(); }
  void StartEdit() {}
  /// Ends the editing of the class, which the pane lets go of.
  void Finish();

  [[nodiscard]] bool Visible() const { return m_visible; }
  void Visible(bool visible);
  /// Where the pane stands, in twips of the canvas's view.
  [[nodiscard]] const platform::Rect& area() const { return m_area; }
  void area(const platform::Rect& area);
  [[nodiscard]] double Left() const { return m_area.left; }
  [[nodiscard]] double Top() const { return m_area.top; }
  [[nodiscard]] double Width() const { return m_area.width; }
  [[nodiscard]] double Height() const { return m_area.height; }

  platform::Event<> Changed;  ///< the class shown, the place or the visibility

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::string m_path;
  platform::Ref<repository::Class> m_class;
  platform::Ref<repository::CLSRepository> m_repository;
  platform::Ref<platform::DiagramNode> m_node;
  platform::Rect m_area{0, 0, 4800, 3600};
  bool m_visible = true;
};

}  // namespace brisel::editors
