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
      m_classControl(platform::make<editors::CLSClassControl>(registry)),
      m_view(registry) {
  trap("UserControl_Initialize", [this] { initialize(); });
}

CLSEditor::~CLSEditor() {
  m_connections.clear();  // nothing that is told from here on can hold the editor
  terminate();
}

void CLSEditor::initialize() {
  addPopupBands(*m_activeBar, [](Text tool) { return toolRow(tool) != nullptr; });
  configureCanvas();
  m_className->Visible(false);
  m_diagram->ShowToolbar(true);
  addCanvasButtons(*m_diagram, m_registry.installationFolder());
  SyncCategoryButtons();
  SyncViewButtons();
  SyncModeButtons();
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
  m_diagram->LabelFont("Courier New", kNameFontSize);
  m_diagram->SectionFont("Courier New", 10);
}

void CLSEditor::BuildPropertyBand() {
  m_activeBar->addBand("tbProperty", "Class");
  m_activeBar->addTool("tbProperty", "Properties", "", "");
  m_activeBar->RecalcLayout();
}

void CLSEditor::connectCanvas() {
  // A host that is told of something may drop its last reference to the editor.
  const auto answer = [this](auto& event, Text procedure, auto handler) {
    m_connections.push_back(event.connect([this, procedure, handler](auto... arguments) {
      const Ref<CLSEditor> self(this);
      trap(procedure, [&] { (this->*handler)(arguments...); });
    }));
  };
  answer(m_diagram->NodeCreated, "NodeCreated", &CLSEditor::nodeCreated);
  answer(m_diagram->LinkCreated, "LinkCreated", &CLSEditor::linkCreated);
  answer(m_diagram->NodeDeleted, "NodeDeleted", &CLSEditor::nodeDeleted);
  answer(m_diagram->Pressed, "Pressed", &CLSEditor::CommitClassName);
  answer(m_diagram->NodePressed, "NodePressed", &CLSEditor::nodePressed);
  answer(m_diagram->NodeRClicked, "NodeRClicked", &CLSEditor::nodeRightClicked);
  answer(m_diagram->LinkRClicked, "LinkRClicked", &CLSEditor::linkRightClicked);
  answer(m_diagram->NodeRenaming, "NodeRenaming", &CLSEditor::renameInPlace);
  answer(m_diagram->DeleteAsked, "DeleteAsked", &CLSEditor::deleteSelection);
  answer(m_diagram->LinkEndDropped, "LinkEndDropped", &CLSEditor::reconnect);
  answer(m_diagram->Cleared, "Cleared", &CLSEditor::canvasCleared);
  answer(m_diagram->ToolbarButton, "ToolbarButton", &CLSEditor::buttonClicked);
  answer(m_diagram->ModeChanged, "ModeChanged", &CLSEditor::SyncModeButtons);
  answer(m_activeBar->ToolClick, "ToolClick", &CLSEditor::toolClicked);
  answer(m_activeBar->BandShown, "BandShown", &CLSEditor::bandShown);
  answer(m_activeBar->BandClosed, "BandClosed", &CLSEditor::bandClosed);
  answer(m_className->KeyPressed, "ClassName_KeyPress", &CLSEditor::nameKeyPressed);
  answer(m_className->FocusLost, "ClassName_LostFocus", &CLSEditor::CommitClassName);
  answer(m_classControl->Edited, "ClassEdited", &CLSEditor::paneEdited);
  answer(m_classControl->Gone, "ClassGone", &CLSEditor::closePane);
  answer(m_classControl->Closing, "ClassClosing", &CLSEditor::closePane);
  m_connections.push_back(m_diagram->NodeOpened.connect([this](const std::string& key) {
    const Ref<CLSEditor> self(this);
    EditClass(key);
  }));
  m_connections.push_back(m_diagram->LinkOpened.connect([this](const std::string& key) {
    const Ref<CLSEditor> self(this);
    EditAssociation(key);
  }));
  const auto dropped = [this](const std::string&, const std::string& tag, double x, double y) {
    const Ref<CLSEditor> self(this);
    trap("ItemDropped", [&] { memberDropped(tag, {x, y}); });
  };
  m_connections.push_back(m_diagram->ItemDropped.connect(dropped));
  const auto moved = [this](int, int) { trap("PlaceClassEditor", [this] { viewChanged(); }); };
  m_connections.push_back(m_diagram->Scrolled.connect(moved));
  m_connections.push_back(m_diagram->Zoomed.connect(moved));
  passThrough();
  const auto keyUp = [this](const std::string& key) { KeyUp(key); };
  m_connections.push_back(m_diagram->KeyReleased.connect(keyUp));
  m_connections.push_back(m_activeBar->KeyReleased.connect(keyUp));
  m_activeBar->objections([this](Text tool) { return objection(tool, m_activeBar->Tag()); });
  m_diagram->linkRule([this](Text link, Text source, Text target) {
    return trap("LinkRule", [&] { return refusal(link, source, target); });
  });
  m_diagram->dropRule([this](Text node, Text tag, Text target) {
    return trap("DropRule", [&] { return mayDrop(node, tag, target); });
  });
}

/// There is nothing left to name or to edit.
void CLSEditor::canvasCleared() {
  endNaming();
  closePane();
}

/// What lies over the canvas follows it.
void CLSEditor::viewChanged() {
  placeClassName();
  PlaceClassEditor();
}

void CLSEditor::passThrough() {
  const auto pass = [this](auto& from, auto& to) {
    m_connections.push_back(from.connect([&to](auto... arguments) { to(arguments...); }));
  };
  pass(m_diagram->NodeMoved, ClassMoved);
  pass(m_diagram->NodeResized, ClassResized);
  pass(m_diagram->NodeEnter, ClassEnter);
  pass(m_diagram->NodeLeave, ClassLeave);
  pass(m_diagram->NodeClicked, ClassClicked);
  pass(m_diagram->LinkEnter, AssocEnter);
  pass(m_diagram->LinkLeave, AssocLeave);
  pass(m_diagram->LinkClicked, AssocClicked);
  pass(m_diagram->Scrolled, DiagramScrolled);
  pass(m_diagram->Zoomed, DiagramZoomed);
}

void CLSEditor::terminate() {
  if (std::exchange(m_terminated, true)) return;
  trap("UserControl_Terminate", [this] {
    m_diagram->UUIDGenerator(nullptr);
    removeFromHost();
  });
  trap("UserControl_Terminate", [this] { endTools(); });
  m_connections.clear();
  m_activeBar->objections({});
  m_diagram->linkRule({});
  m_diagram->dropRule({});
  m_watch.leave();
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

void CLSEditor::paneEdited() {
  if (const auto edited = m_classControl->Class()) ClassChanged(edited->clsObject()->identifier());
}

void CLSEditor::UUIDGenerator(platform::Object* generator) {
  m_generator = generator;
  m_repository->UUIDGenerator(generator);
}

Ref<platform::MetaRepository> CLSEditor::Repository() const {
  return m_repository->GetRepository();
}

void CLSEditor::Repository(platform::MetaRepository* repository) {
  trap("Repository", [this] {
    CommitClassName();
    closePane();
  });
  m_repository->SetRepository(repository);
  trap("Repository", [this] { showModelInTools(); });
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

ModelWatch& CLSEditor::watch() {
  m_watch.follow(model());
  return m_watch;
}

platform::MetaRepository& CLSEditor::model() const {
  const auto repository = m_repository->GetRepository();
  if (!repository) {
    throw platform::Error(platform::ErrorNumber::objectMissing, "No repository is set");
  }
  return *repository;
}

}  // namespace brisel::editor
