// The editor's members by name.

#include "editor/CLSEditor.h"
#include "platform/MemberTableOf.h"

namespace brisel::editor {

const platform::MemberTable& CLSEditor::memberTable() const {
  using E = CLSEditor;
  static const platform::MemberTable kTable =
      platform::MemberTableOf<E>()
          .property("PackageObject", &E::PackageObject, &E::PackageObject)
          .property("RepositoryFileName", &E::RepositoryFileName, &E::RepositoryFileName)
          .property("Path", &E::Path, &E::Path)
          .property("UUIDGenerator", &E::UUIDGenerator, &E::UUIDGenerator)
          .property("CLSRepository", &E::CLSRepository)
          .property("Repository", &E::Repository, &E::Repository)
          .property("ComponentName", &E::ComponentName, &E::ComponentName)
          .property("Session", &E::Session, &E::Session)
          .property("ParentWindow", &E::ParentWindow, &E::ParentWindow)
          .method("HourglassOn", &E::HourglassOn)
          .method("HourglassOff", &E::HourglassOff)
          .method("Help", &E::Help)
          .method("diagram", &E::diagram)
          .method("Populate", &E::Populate)
          .method("Layout", &E::Layout)
          .method("GetLayoutNode", &E::GetLayoutNode)
          .method("Clear", &E::Clear)
          .method("SelectMode", &E::SelectMode)
          .method("CreateMode", &E::CreateMode)
          .method("GetClassFromNode", &E::GetClassFromNode)
          .method("GetAssociationFromLink", &E::GetAssociationFromLink)
          .method("CreateClass", &E::CreateClass)
          .method("CreateAssociation", &E::CreateAssociation)
          .method("CreateAggregation", &E::CreateAggregation)
          .method("CreateGeneralization", &E::CreateGeneralization)
          .method("DeleteClass", &E::DeleteClass)
          .method("ShowPopupMenu", &E::ShowPopupMenu)
          .method("EditClass", &E::EditClass)
          .method("PropertyNode", &E::PropertyNode)
          .method("Compartments", &E::Compartments)
          .method("ShowCompartments", &E::ShowCompartments)
          .method("SizeToFit", &E::SizeToFit)
          .method("AddPositions", &E::AddPositions)
          .method("SynchronizeDataTypes", &E::SynchronizeDataTypes)
          .method("OpenDiagram", &E::OpenDiagram)
          .method("SaveDiagram", &E::SaveDiagram)
          .event("ClassCreated", &E::ClassCreated)
          .event("ClassDeleted", &E::ClassDeleted)
          .event("ClassMoved", &E::ClassMoved)
          .event("ClassResized", &E::ClassResized)
          .event("ClassChanged", &E::ClassChanged)
          .event("ClassEnter", &E::ClassEnter)
          .event("ClassLeave", &E::ClassLeave)
          .event("ClassClicked", &E::ClassClicked)
          .event("ClassRClicked", &E::ClassRClicked)
          .event("AssocCreated", &E::AssocCreated)
          .event("AssocDeleted", &E::AssocDeleted)
          .event("AssocChanged", &E::AssocChanged)
          .event("AssocEnter", &E::AssocEnter)
          .event("AssocLeave", &E::AssocLeave)
          .event("AssocClicked", &E::AssocClicked)
          .event("AssocRClicked", &E::AssocRClicked)
          .event("ToolbarButton", &E::ToolbarButton)
          .event("DiagramScrolled", &E::DiagramScrolled)
          .event("DiagramZoomed", &E::DiagramZoomed)
          .event("PopupButton", &E::PopupButton)
          .property("diagramControl1", &E::diagram)
          .property("ActiveBar21", &E::ActiveBar21)
          .property("CLSClassControl1", &E::CLSClassControl1)
          .property("ClassName", &E::ClassName)
          .method("Resize", &E::Resize)
          .method("KeyUp", &E::KeyUp)
          .build();
  return kTable;
}

}  // namespace brisel::editor
