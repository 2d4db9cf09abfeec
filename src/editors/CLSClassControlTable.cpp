// The class pane's members by name.

#include "editors/CLSClassControl.h"
#include "platform/MemberTableOf.h"

namespace brisel::editors {

const platform::MemberTable& CLSClassControl::memberTable() const {
  using C = CLSClassControl;
  static const platform::MemberTable kTable =
      platform::MemberTableOf<C>(Control::memberTable())
          .property("Path", &C::Path, &C::Path)
          .property<Ref<repository::CLSRepository>, repository::CLSRepository*>(
              "Repository", &C::Repository, &C::Repository)
          .property<Ref<repository::Class>, repository::Class*>("Class", &C::Class, &C::Class)
          .method("Prepare", &C::Prepare)
          .method("StartEdit", &C::StartEdit)
          .method("Finish", &C::Finish)
          .method("AddAttribute", &C::AddAttribute)
          .method("AddOperation", &C::AddOperation)
          .method("AddParameter", &C::AddParameter)
          .property("Node", &C::Node)
          .property("TabStrip1", &C::TabStrip1)
          .property("Picture1", &C::Picture1)
          .property("PropertyClass", &C::PropertyClass)
          .property("CLSSelectStereotype1", &C::CLSSelectStereotype1)
          .property("Attributes", &C::Attributes)
          .property("AttributeName", &C::AttributeName)
          .property("AttributeScope", &C::AttributeScope)
          .property("AttributeType", &C::AttributeType)
          .property("ToolAttr", &C::ToolAttr)
          .property("Operations", &C::Operations)
          .property("OperationName", &C::OperationName)
          .property("OperationScope", &C::OperationScope)
          .property("OperationType", &C::OperationType)
          .property("ToolOperation", &C::ToolOperation)
          .property("ParameterPicture", &C::ParameterPicture)
          .property("Parameters", &C::Parameters)
          .property("ParameterName", &C::ParameterName)
          .property("ParameterType", &C::ParameterType)
          .property("ToolParameter", &C::ToolParameter)
          .property("Property", &C::Property)
          .property("Property1", &C::Property1)
          .property("PropertyOk", &C::PropertyOk)
          .property("Left", &C::Left)
          .property("Top", &C::Top)
          .property("Width", &C::Width)
          .property("Height", &C::Height)
          .method("Close", &C::Close)
          .event("Closing", &C::Closing)
          .event("Edited", &C::Edited)
          .event("Gone", &C::Gone)
          .build();
  return kTable;
}

}  // namespace brisel::editors
