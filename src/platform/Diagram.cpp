#include "platform/Diagram.h"

#include "platform/MemberTableOf.h"

namespace brisel::platform {

const MemberTable& DiagramControl::memberTable() const {
  using Control = DiagramControl;
  static const MemberTable kTable = MemberTableOf<Control>()
                                        .method("ShowToolbar", &Control::ShowToolbar)
                                        .method("AddButton", &Control::AddButton)
                                        .method("PressButton", &Control::PressButton)
                                        .method("ReleaseButton", &Control::ReleaseButton)
                                        .method("SetNewNodeSize", &Control::SetNewNodeSize)
                                        .method("LabelFont", &Control::LabelFont)
                                        .method("SectionFont", &Control::SectionFont)
                                        .method("SelectMode", &Control::SelectMode)
                                        .method("ClickCreateMode", &Control::ClickCreateMode)
                                        .property("Mode", &Control::Mode)
                                        .method("Clear", &Control::Clear)
                                        .method("refresh", &Control::refresh)
                                        .method("Layout", &Control::Layout)
                                        .method("getZoom", &Control::getZoom)
                                        .method("GetDiagram", &Control::GetDiagram)
                                        .method("createNode", &Control::createNode)
                                        .method("createLink", &Control::createLink)
                                        .method("getNode", &Control::getNode)
                                        .method("getLink", &Control::getLink)
                                        .method("deleteNode", &Control::deleteNode)
                                        .method("deleteLink", &Control::deleteLink)
                                        .method("getAllNodes", &Control::getAllNodes)
                                        .method("getAllLinks", &Control::getAllLinks)
                                        .method("getSelectedNodes", &Control::getSelectedNodes)
                                        .method("getSelectedLinks", &Control::getSelectedLinks)
                                        .event("NodeCreated", &Control::NodeCreated)
                                        .event("NodeDeleted", &Control::NodeDeleted)
                                        .event("NodeMoved", &Control::NodeMoved)
                                        .event("NodeResized", &Control::NodeResized)
                                        .event("NodeEnter", &Control::NodeEnter)
                                        .event("NodeLeave", &Control::NodeLeave)
                                        .event("NodeClicked", &Control::NodeClicked)
                                        .event("NodePressed", &Control::NodePressed)
                                        .event("NodeRClicked", &Control::NodeRClicked)
                                        .event("LinkCreated", &Control::LinkCreated)
                                        .event("LinkDeleted", &Control::LinkDeleted)
                                        .event("LinkEnter", &Control::LinkEnter)
                                        .event("LinkLeave", &Control::LinkLeave)
                                        .event("LinkClicked", &Control::LinkClicked)
                                        .event("LinkRClicked", &Control::LinkRClicked)
                                        .event("Pressed", &Control::Pressed)
                                        .event("NodeOpened", &Control::NodeOpened)
                                        .event("LinkOpened", &Control::LinkOpened)
                                        .event("NodeRenaming", &Control::NodeRenaming)
                                        .event("DeleteAsked", &Control::DeleteAsked)
                                        .event("LinkEndDropped", &Control::LinkEndDropped)
                                        .event("Hint", &Control::Hint)
                                        .event("Cleared", &Control::Cleared)
                                        .event("ModeChanged", &Control::ModeChanged)
                                        .event("ToolbarButton", &Control::ToolbarButton)
                                        .event("Scrolled", &Control::Scrolled)
                                        .event("Zoomed", &Control::Zoomed)
                                        .event("ItemDropped", &Control::ItemDropped)
                                        .event("KeyReleased", &Control::KeyReleased)
                                        .build();
  return kTable;
}

}  // namespace brisel::platform
