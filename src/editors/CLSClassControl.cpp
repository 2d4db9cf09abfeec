#include "editors/CLSClassControl.h"

#include "platform/MemberTableOf.h"

namespace brisel::editors {

void CLSClassControl::Finish() {
  m_class = nullptr;
  m_node = nullptr;
  Changed();
}

void CLSClassControl::Visible(bool visible) {
  if (m_visible == visible) return;
  m_visible = visible;
  Changed();
}

void CLSClassControl::area(const platform::Rect& area) {
  if (m_area == area) return;
  m_area = area;
  Changed();
}

const platform::MemberTable& CLSClassControl::memberTable() const {
  using C = CLSClassControl;
  static const platform::MemberTable kTable =
      platform::MemberTableOf<C>()
          .property("Path", &C::Path, &C::Path)
          .property<platform::Ref<repository::Class>, repository::Class*>("Class", &C::Class,
                                                                          &C::Class)
          .property<platform::Ref<repository::CLSRepository>, repository::CLSRepository*>(
              "Repository", &C::Repository, &C::Repository)
          .property<platform::Ref<platform::DiagramNode>, platform::DiagramNode*>("Node", &C::Node,
                                                                                  &C::Node)
          .method("Prepare", &C::Prepare)
          .method("StartEdit", &C::StartEdit)
          .property("Visible", &C::Visible, &C::Visible)
          .property("Left", &C::Left)
          .property("Top", &C::Top)
          .property("Width", &C::Width)
          .property("Height", &C::Height)
          .build();
  return kTable;
}

}  // namespace brisel::editors
