// The members that the control answers to by name.

#include "canvas/DiagramControl.h"
#include "platform/MemberTableOf.h"

namespace brisel::canvas {

using platform::MemberTable;
using platform::MemberTableOf;

namespace {

using C = DiagramControl;
using Text = std::string_view;

void addItems(MemberTableOf<C>& table) {
  table.method("deleteSelectedItems", &C::deleteSelectedItems)
      .method("deleteMarkedItems", &C::deleteMarkedItems)
      .method("getIncomingLinks", &C::getIncomingLinks)
      .method("getOutgoingLinks", &C::getOutgoingLinks)
      .method("selNode", &C::selNode)
      .method("selLink", &C::selLink)
      .method("unselectAll", &C::unselectAll)
      .method("markNode", &C::markNode)
      .method("markLink", &C::markLink)
      .method("unmarkAll", &C::unmarkAll)
      .method("beginUpdate", &C::beginUpdate)
      .method("endUpdate", &C::endUpdate)
      .method("GetCenter", &C::GetCenter)
      .method("GetHitNode", &C::GetHitNode)
      .optional(1);
}

void addSettings(MemberTableOf<C>& table) {
  table.property<std::int64_t, std::int64_t>("BackColor", &C::BackColor, &C::BackColor)
      .property<platform::Ref<platform::Object>, platform::Object*>(
          "UUIDGenerator", &C::UUIDGenerator, &C::UUIDGenerator)
      .property<std::string, Text>("nodePicture", &C::nodePicture, &C::nodePicture)
      .property<std::string, Text>("linkPicture", &C::linkPicture, &C::linkPicture)
      .property<std::string, Text>("linkBeginPicture", &C::linkBeginPicture, &C::linkBeginPicture)
      .property<std::string, Text>("linkEndPicture", &C::linkEndPicture, &C::linkEndPicture)
      .property<std::string, Text>("nodeNumberOfSections", &C::nodeNumberOfSections,
                                   &C::nodeNumberOfSections)
      .property<int, int>("linkBeginArrow", &C::linkBeginArrow, &C::linkBeginArrow)
      .property<int, int>("linkEndArrow", &C::linkEndArrow, &C::linkEndArrow)
      .property<int, int>("linkNodeCX", &C::linkNodeCX, &C::linkNodeCX)
      .property<int, int>("linkNodeCY", &C::linkNodeCY, &C::linkNodeCY)
      .property<bool, bool>("ShowGrid", &C::ShowGrid, &C::ShowGrid)
      .method("AddImage", &C::AddImage)
      .method("AddStandardButtons", &C::AddStandardButtons)
      .method("ClickButton", &C::ClickButton)
      .property("Buttons", &C::Buttons);
}

void addView(MemberTableOf<C>& table) {
  table.method("zoom", &C::zoom)
      .method("noZoom", &C::noZoom)
      .method("TransformExtent", &C::TransformExtent)
      .method("DrawCreateMode", &C::DrawCreateMode)
      .method("CopyToClipboard", &C::CopyToClipboard)
      .method("PrintDiagram", &C::PrintDiagram)
      .optional(1)
      .method("GetDiagramHandle", &C::GetDiagramHandle)
      .property("Cursor", &C::Cursor);
}

void addHand(MemberTableOf<C>& table) {
  table.method("PointerMove", &C::PointerMove)
      .optional(1)
      .method("PointerPress", &C::PointerPress)
      .optional(2)
      .method("PointerRelease", &C::PointerRelease)
      .optional(2)
      .method("PointerDoubleClick", &C::PointerDoubleClick)
      .method("PointerLeave", &C::PointerLeave)
      .method("Wheel", &C::Wheel)
      .optional(1)
      .method("KeyPress", &C::KeyPress)
      .optional(1)
      .method("KeyRelease", &C::KeyRelease)
      .optional(1)
      .method("HitTest", &C::HitTest)
      .event("PrintRequested", &C::PrintRequested);
}

}  // namespace

const MemberTable& DiagramControl::memberTable() const {
  static const MemberTable kTable = [this] {
    MemberTableOf<C> table(platform::DiagramControl::memberTable());
    addItems(table);
    addSettings(table);
    addView(table);
    addHand(table);
    return table.build();
  }();
  return kTable;
}

}  // namespace brisel::canvas
