// Start-up, tear-down, properties and services of the editor.

#include "editor/CLSEditor.h"

#include "editor/Design.h"

namespace brisel::editor {

using platform::Event;
using platform::Ref;

CLSEditor::CLSEditor(platform::ComponentRegistry& registry)
    : m_registry(registry),
      m_diagram(registry.create<platform::DiagramControl>("BriselDiagram.diagramControl")),
      m_activeBar(registry.create<platform::ToolBarControl>("BriselControls.ActiveBar")),
      m_className(platform::make<controls::TextBox>()),
      m_classControl(platform::make<editors::CLSClassControl>()),
      m_view(registry) {
  trap("UserControl_Initialize", [this] { initialize(); });
}

CLSEditor::~CLSEditor() { terminate(); }

void CLSEditor::initialize() {
  addPopupBands(*m_activeBar);
  configureCanvas();
  m_className->Visible(false);
  m_diagram->ShowToolbar(true);
  addCanvasButtons(*m_diagram, m_registry.installationFolder());
  SyncCategoryButtons();
  SyncViewButtons();
  m_classControl->Visible(false);
  m_repository = platform::make<repository::CLSRepository>();
  m_generator = m_registry.create("BriselUtility.UUIDGenerator");
  m_diagram->UUIDGenerator(m_generator.get());
  m_generator->call("Init", {"ClassEditor"});
  m_repository->Create(m_generator.get());
  BuildPropertyBand();
  connectCanvas();
}

void CLSEditor::configureCanvas() {
  m_diagram->GetDiagram()->set("CanDrawLink", false);
  m_diagram->set("nodePicture", "");
  m_diagram->set("linkPicture", "");
  m_diagram->set("nodeNumberOfSections", "2");
  m_diagram->SelectMode();
  m_diagram->SetNewNodeSize(3000, 1500);
  m_diagram->BackColor(0xFFFFFF);
  m_diagram->LabelFont("Courier New", 15);
  m_diagram->SectionFont("Courier New", 10);
}

void CLSEditor::BuildPropertyBand() {
  m_activeBar->addBand("tbProperty", "Class");
  m_activeBar->addTool("tbProperty", "Properties", "", "");
  m_activeBar->RecalcLayout();
}

void CLSEditor::connectCanvas() {
  const auto answer = [this](Event<std::string>& event, Text procedure, auto handler) {
    m_connections.push_back(event.connect([this, procedure, handler](const std::string& key) {
      trap(procedure, [&] { (this->*handler)(key); });
    }));
  };
  answer(m_diagram->NodeCreated, "NodeCreated", &CLSEditor::nodeCreated);
  answer(m_diagram->LinkCreated, "LinkCreated", &CLSEditor::linkCreated);
  answer(m_diagram->ToolbarButton, "ToolbarButton", &CLSEditor::buttonClicked);
  passThrough();
  const auto keyUp = [this](const std::string& key) { KeyUp(key); };
  m_connections.push_back(m_diagram->KeyReleased.connect(keyUp));
  m_connections.push_back(m_activeBar->KeyReleased.connect(keyUp));
}

void CLSEditor::passThrough() {
  const auto pass = [this](auto& from, auto& to) {
    m_connections.push_back(from.connect([&to](auto... arguments) { to(arguments...); }));
  };
  pass(m_diagram->NodeDeleted, ClassDeleted);
  pass(m_diagram->NodeMoved, ClassMoved);
  pass(m_diagram->NodeResized, ClassResized);
  pass(m_diagram->NodeEnter, ClassEnter);
  pass(m_diagram->NodeLeave, ClassLeave);
  pass(m_diagram->NodeClicked, ClassClicked);
  pass(m_diagram->NodeRClicked, ClassRClicked);
  pass(m_diagram->LinkEnter, AssocEnter);
  pass(m_diagram->LinkLeave, AssocLeave);
  pass(m_diagram->LinkClicked, AssocClicked);
  pass(m_diagram->LinkRClicked, AssocRClicked);
  pass(m_diagram->Scrolled, DiagramScrolled);
  pass(m_diagram->Zoomed, DiagramZoomed);
}

void CLSEditor::terminate() {
  if (std::exchange(m_terminated, true)) return;
  trap("UserControl_Terminate", [this] {
    m_diagram->UUIDGenerator(nullptr);
    removeFromHost();
  });
  m_connections.clear();
  m_parentWindow = {};
  m_session = {};
  m_packageObject = {};
}

void CLSEditor::removeFromHost() {
  if (!m_session) return;
  const ObjectRef manager = m_session->get("ComponentManager").object();
  if (!manager) return;
  if (const ObjectRef component = manager->call("GetComponent", {m_componentName}).object()) {
    if (const ObjectRef comObject = component->get("ComObject").object()) {
      comObject->call("Deinit");
      comObject->call("Destroy");
    }
  }
  manager->call("RemoveComponent", {m_componentName});
}

void CLSEditor::Path(Text path) {
  m_path = path;
  m_classControl->Path(path);
}

void CLSEditor::UUIDGenerator(platform::Object* generator) {
  m_generator = generator;
  m_repository->UUIDGenerator(generator);
}

Ref<platform::MetaRepository> CLSEditor::Repository() const {
  return m_repository->GetRepository();
}

void CLSEditor::Repository(platform::MetaRepository* repository) {
  m_repository->SetRepository(repository);
}

void CLSEditor::HourglassOn() {
  trap("HourglassOn", [this] { callParentWindow("HourglassOn"); });
}

void CLSEditor::HourglassOff() {
  trap("HourglassOff", [this] { callParentWindow("HourglassOff"); });
}

void CLSEditor::callParentWindow(Text member) {
  if (m_parentWindow) m_parentWindow->call(member);
}

void CLSEditor::Help() {
  trap("Help", [this] {
    if (!m_session) return;
    const ObjectRef application = m_session->get("Application").object();
    if (application) application->call("ShowHelp", {"UML class diagram.html"});
  });
}

void CLSEditor::Resize(double width, double height) { m_diagramBounds = {0, 0, width, height}; }

void CLSEditor::KeyUp(Text key) {
  if (key == "F1") Help();
}

platform::MetaRepository& CLSEditor::model() const {
  const auto repository = m_repository->GetRepository();
  if (!repository) {
    throw platform::Error(platform::ErrorNumber::objectMissing, "No repository is set");
  }
  return *repository;
}

}  // namespace brisel::editor
