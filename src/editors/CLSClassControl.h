#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "controls/Button.h"
#include "controls/ControlArray.h"
#include "controls/Panel.h"
#include "controls/Property.h"
#include "controls/TabStrip.h"
#include "controls/ToolBarControl.h"
#include "editors/CLSSelectStereotype.h"
#include "editors/MemberPanel.h"
#include "platform/ComponentRegistry.h"
#include "platform/Diagram.h"
#include "platform/Geometry.h"
#include "repository/CLSRepository.h"
#include "repository/Class.h"

namespace brisel::editors {

/// The pane that edits one class: its stereotype and properties, its attributes, its operations and
/// their parameters. Members are written as they are edited; the stereotype and the class's own
/// properties at `Finish`. Protocol: `Path`, `Repository`, `Class`, `Prepare`, `StartEdit`,
/// `Finish`.
///
/// A class that leaves the model while it is edited is let go of: the pane hides and raises Gone.
class CLSClassControl : public controls::Control {
 public:
  explicit CLSClassControl(platform::ComponentRegistry& registry);
  ~CLSClassControl() override;

  [[nodiscard]] std::string Path() const { return m_path; }
  /// Also the property grids'.
  void Path(std::string_view path);
  [[nodiscard]] platform::Ref<repository::CLSRepository> Repository() const { return m_repository; }
  void Repository(repository::CLSRepository* repository) { m_repository = repository; }
  [[nodiscard]] platform::Ref<repository::Class> Class() const { return m_class; }
  void Class(repository::Class* shown) { m_class = shown; }
  /// Shows the class; does nothing without one.
  void Prepare();
  void StartEdit() {}
  void Finish(platform::DiagramControl* diagram);
  // Add a member by name, or give the one of that name the scope and type that are set.
  void AddAttribute(std::string_view name);
  void AddOperation(std::string_view name);
  void AddParameter(std::string_view name);

  /// The class's box on the canvas, or nothing.
  [[nodiscard]] platform::Ref<platform::DiagramNode> Node() const;

  /// Writes the stereotype and the class's own properties as they stand; editing goes on. A class
  /// that left the model is not written to.
  void writePending();

  // The controls by their names.
  template <class T>
  using Ref = platform::Ref<T>;
  [[nodiscard]] Ref<controls::TabStrip> TabStrip1() const { return m_tabs; }
  [[nodiscard]] Ref<controls::ControlArray> Picture1() const { return m_panels; }
  [[nodiscard]] Ref<controls::Property> PropertyClass() const { return m_classGrid; }
  [[nodiscard]] Ref<CLSSelectStereotype> CLSSelectStereotype1() const { return m_stereotype; }
  [[nodiscard]] Ref<controls::ListView> Attributes() const { return m_attributes.list; }
  [[nodiscard]] Ref<controls::TextBox> AttributeName() const { return m_attributes.name; }
  [[nodiscard]] Ref<controls::OptionGroup> AttributeScope() const { return m_attributes.scope; }
  [[nodiscard]] Ref<controls::Combo> AttributeType() const { return m_attributes.type; }
  [[nodiscard]] Ref<controls::ToolBarControl> ToolAttr() const { return m_attributeTools; }
  [[nodiscard]] Ref<controls::ListView> Operations() const { return m_operations.list; }
  [[nodiscard]] Ref<controls::TextBox> OperationName() const { return m_operations.name; }
  [[nodiscard]] Ref<controls::OptionGroup> OperationScope() const { return m_operations.scope; }
  [[nodiscard]] Ref<controls::Combo> OperationType() const { return m_operations.type; }
  [[nodiscard]] Ref<controls::ToolBarControl> ToolOperation() const { return m_operationTools; }
  [[nodiscard]] Ref<controls::Panel> ParameterPicture() const { return m_parameterPanel; }
  [[nodiscard]] Ref<controls::ListView> Parameters() const { return m_parameters.list; }
  [[nodiscard]] Ref<controls::TextBox> ParameterName() const { return m_parameters.name; }
  [[nodiscard]] Ref<controls::Combo> ParameterType() const { return m_parameters.type; }
  [[nodiscard]] Ref<controls::ToolBarControl> ToolParameter() const { return m_parameterTools; }
  [[nodiscard]] Ref<controls::Panel> Property() const { return m_memberPanel; }
  [[nodiscard]] Ref<controls::Property> Property1() const { return m_memberGrid; }
  [[nodiscard]] Ref<controls::Button> PropertyOk() const { return m_memberOk; }

  /// Where the pane stands on the canvas, in twips of its view.
  [[nodiscard]] const platform::Rect& area() const { return m_area; }
  void area(const platform::Rect& area);
  [[nodiscard]] double Left() const { return m_area.left; }
  [[nodiscard]] double Top() const { return m_area.top; }
  [[nodiscard]] double Width() const { return m_area.width; }
  [[nodiscard]] double Height() const { return m_area.height; }

  /// A person closes the pane: what is to come of it is the owner's.
  void Close() { Closing(); }

  platform::Event<> Closing;
  platform::Event<> Edited;  ///< a member of the class was added, changed or deleted here
  platform::Event<> Gone;    ///< the class left the model and the pane let go of it

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  template <class Body>
  void trap(std::string_view procedure, Body&& body);
  void addTools();
  void connect();
  void prepare();
  void finish(platform::DiagramControl* diagram);
  void release();
  [[nodiscard]] platform::Node* node() const;
  void follow(const platform::Change& change);
  void memberEdited(bool isAttribute);
  void toolClicked(const std::string& tool);
  void showTab();
  void openProperties(platform::Link& row, MemberPanel& panel);
  void closeProperties();
  void editParameters();
  void closeParameters();

  platform::ComponentRegistry& m_registry;
  std::string m_path;
  Ref<repository::CLSRepository> m_repository;
  Ref<repository::Class> m_class;
  platform::Rect m_area{0, 0, 6900, 6300};

  MemberPanel m_attributes{kAttributes};
  MemberPanel m_operations{kOperations};
  MemberPanel m_parameters{kParameters};
  Ref<controls::ToolBarControl> m_attributeTools;
  Ref<controls::ToolBarControl> m_operationTools;
  Ref<controls::ToolBarControl> m_parameterTools;
  Ref<controls::TabStrip> m_tabs = platform::make<controls::TabStrip>();
  Ref<controls::ControlArray> m_panels;
  Ref<controls::Panel> m_parameterPanel = platform::make<controls::Panel>();
  Ref<controls::Panel> m_memberPanel = platform::make<controls::Panel>();
  Ref<controls::Property> m_classGrid = platform::make<controls::Property>();
  Ref<controls::Property> m_memberGrid = platform::make<controls::Property>();
  Ref<controls::Button> m_memberOk = platform::make<controls::Button>("&Ok");
  Ref<CLSSelectStereotype> m_stereotype = platform::make<CLSSelectStereotype>();
  std::vector<platform::Connection> m_listening;
  platform::Connection m_following;
};

}  // namespace brisel::editors
