#include "editors/CLSClassControl.h"

#include <array>

#include "controls/Row.h"
#include "platform/ErrorTrap.h"

namespace brisel::editors {

using controls::ControlArray;
using controls::Panel;
using controls::ToolBarControl;
using platform::Change;
using platform::make;

namespace {

using Text = std::string_view;

constexpr std::array<Text, 3> kClassTabs = {"Class", "Attributes", "Operations"};
constexpr Text kOperationsTab = "Operations";

struct ToolRow {
  Text key, caption;
};
constexpr std::array kAttributeTools = {ToolRow{"miAttrNew", "New Attribute"},
                                        ToolRow{"miAttrAdd", "Add Attribute"},
                                        ToolRow{"miAttrDelete", "Delete Attribute"}};
constexpr std::array kOperationTools = {ToolRow{"miOperationNew", "New Operation"},
                                        ToolRow{"miOperationAdd", "Add Operation"},
                                        ToolRow{"miOperationDelete", "Delete Operation"},
                                        ToolRow{"miOperationParameters", "Edit Parameters"}};
constexpr std::array kParameterTools = {
    ToolRow{"miParameterNew", "New Parameter"}, ToolRow{"miParameterAdd", "Add Parameter"},
    ToolRow{"miParameterDelete", "Delete Parameter"}, ToolRow{"miParameterOk", "&Ok"}};

template <std::size_t N>
void fill(ToolBarControl& bar, Text band, const std::array<ToolRow, N>& tools) {
  bar.addBand(band, band);
  for (const ToolRow& tool : tools) bar.addTool(band, tool.key, tool.caption, "");
}

}  // namespace

template <class Body>
void CLSClassControl::trap(Text procedure, Body&& body) {
  platform::trapped(m_registry.shell(), "CLSClassControl", procedure, std::forward<Body>(body));
}

CLSClassControl::CLSClassControl(platform::ComponentRegistry& registry)
    : m_registry(registry),
      m_attributeTools(make<ToolBarControl>(registry)),
      m_operationTools(make<ToolBarControl>(registry)),
      m_parameterTools(make<ToolBarControl>(registry)),
      m_panels(make<ControlArray>(std::vector<Ref<Object>>{
          make<Panel>(kClassTabs[0]), make<Panel>(kClassTabs[1]), make<Panel>(kClassTabs[2])})) {
  addTools();
  for (const Text key : kClassTabs) m_tabs->add(key, key);
  m_parameterPanel->Visible(false);
  m_memberPanel->Visible(false);
  connect();
  showTab();
}

CLSClassControl::~CLSClassControl() = default;

void CLSClassControl::addTools() {
  fill(*m_attributeTools, "tbAttributes", kAttributeTools);
  fill(*m_operationTools, "tbOperations", kOperationTools);
  fill(*m_parameterTools, "tbParameters", kParameterTools);
}

void CLSClassControl::connect() {
  const auto on = [this](auto& event, Text procedure, auto handler) {
    m_listening.push_back(event.connect([this, procedure, handler](auto&&... arguments) {
      trap(procedure, [&] { handler(arguments...); });
    }));
  };
  for (const auto& tools : {m_attributeTools, m_operationTools, m_parameterTools}) {
    on(tools->ToolClick, "ToolClick", [this](const std::string& tool) { toolClicked(tool); });
  }
  for (MemberPanel* panel : {&m_attributes, &m_operations, &m_parameters}) {
    on(panel->Edited, "Edited", [this, panel] { memberEdited(panel == &m_attributes); });
    on(panel->list->RowOpened, "RowOpened",
       [this, panel](platform::Link& row) { openProperties(row, *panel); });
  }
  on(m_tabs->SelectionChanged, "TabStrip1_Click", [this] { showTab(); });
  on(m_memberOk->Clicked, "PropertyOk_Click", [this] { closeProperties(); });
}

void CLSClassControl::Path(Text path) {
  m_path = path;
  m_classGrid->Path(path);
  m_memberGrid->Path(path);
}

void CLSClassControl::area(const platform::Rect& area) {
  if (m_area == area) return;
  m_area = area;
  Changed();
}

platform::Ref<platform::DiagramNode> CLSClassControl::Node() const {
  return m_class ? m_class->Node() : Ref<platform::DiagramNode>();
}

platform::Node* CLSClassControl::node() const {
  return m_class ? m_class->clsObject().get() : nullptr;
}

void CLSClassControl::Prepare() {
  trap("Prepare", [this] {
    if (m_class) prepare();
  });
}

void CLSClassControl::prepare() {
  const Ref<platform::Node> shown = m_class->clsObject();
  const auto model = m_repository ? m_repository->GetRepository() : nullptr;
  if (!shown || !model || !controls::isInRepository(*shown)) {
    throw platform::Error(platform::ErrorNumber::objectMissing,
                          "The class pane needs a repository and a class of it");
  }
  for (MemberPanel* panel : {&m_attributes, &m_operations, &m_parameters}) {
    panel->prepare(*m_repository, m_registry.installationFolder());
  }
  m_attributes.show(shown.get());
  m_operations.show(shown.get());
  m_parameters.show(nullptr);
  m_memberGrid->initialize();
  m_classGrid->initialize();
  m_classGrid->owner(shown->Parent().get());
  m_classGrid->load();
  m_classGrid->node(shown.get());
  m_tabs->select(kClassTabs[0]);
  showTab();
  Ref<platform::Link> link;
  m_stereotype->show(*model, m_repository->GetStereotype(*shown, link).get());
  m_following = model->onChange([this](const Change& change) { follow(change); });
  Changed();
}

void CLSClassControl::Finish(platform::DiagramControl* diagram) {
  trap("Finish", [&] {
    if (m_class) finish(diagram);
  });
}

void CLSClassControl::finish(platform::DiagramControl* diagram) {
  m_following.disconnect();
  writePending();
  if (diagram) diagram->refresh();
  release();
}

void CLSClassControl::writePending() {
  const Ref<platform::Node> shown = node();
  if (!shown || !m_repository || !controls::isInRepository(*shown)) return;
  const Ref<repository::Class> wrapper = m_class;
  Ref<platform::Link> link;
  const auto chosen = m_stereotype->Selection();
  if (m_repository->GetStereotype(*shown, link) != chosen) {
    m_repository->SetStereotype(*shown, chosen.get());
  }
  m_classGrid->apply();
  wrapper->Populate();
}

/// Everything is empty, and no class is shown any more.
void CLSClassControl::release() {
  m_following.disconnect();
  m_class = nullptr;
  m_classGrid->clear();
  m_classGrid->release();
  m_memberGrid->clear();
  m_memberGrid->release();
  m_memberPanel->Visible(false);
  m_parameterPanel->Visible(false);
  for (MemberPanel* panel : {&m_attributes, &m_operations, &m_parameters}) panel->finish();
  m_stereotype->Destroy();
  Changed();
}

void CLSClassControl::follow(const Change& change) {
  if (change.kind == Change::Kind::nodeRemoved) {
    if (&change.element == node()) {
      release();
      Visible(false);
      Gone();
      return;
    }
    if (&change.element == m_parameters.owner().get()) closeParameters();
    if (&change.element == m_memberGrid->node().get()) {
      m_memberGrid->clear();
      m_memberPanel->Visible(false);
    }
  }
  for (MemberPanel* panel : {&m_attributes, &m_operations, &m_parameters}) panel->follow(change);
}

/// Only the rows of that kind differ; parameters stand in those of their operations.
void CLSClassControl::memberEdited(bool isAttribute) {
  if (!m_class) return;
  if (isAttribute) {
    m_class->populateAttributes();
  } else {
    m_class->populateOperations();
  }
  Edited();
}

void CLSClassControl::AddAttribute(Text name) {
  trap("AddAttribute", [&] { m_attributes.add(name); });
}

void CLSClassControl::AddOperation(Text name) {
  trap("AddOperation", [&] { m_operations.add(name); });
}

void CLSClassControl::AddParameter(Text name) {
  trap("AddParameter", [&] { m_parameters.add(name); });
}

void CLSClassControl::toolClicked(const std::string& tool) {
  struct Row {
    Text key;
    MemberPanel CLSClassControl::*panel;
    void (MemberPanel::*command)();
  };
  using C = CLSClassControl;
  using M = MemberPanel;
  // New Operation empties the fields of attributes: what the tool has always done.
  static constexpr std::array kRows = {
      Row{"miAttrNew", &C::m_attributes, &M::startNew},
      Row{"miAttrAdd", &C::m_attributes, &M::addEntered},
      Row{"miAttrDelete", &C::m_attributes, &M::removeEntered},
      Row{"miOperationNew", &C::m_attributes, &M::startNew},
      Row{"miOperationAdd", &C::m_operations, &M::addEntered},
      Row{"miOperationDelete", &C::m_operations, &M::removeEntered},
      Row{"miParameterNew", &C::m_parameters, &M::startNew},
      Row{"miParameterAdd", &C::m_parameters, &M::addEntered},
      Row{"miParameterDelete", &C::m_parameters, &M::removeEntered},
  };
  for (const Row& row : kRows) {
    if (row.key == tool) return ((this->*row.panel).*row.command)();
  }
  if (tool == "miOperationParameters") editParameters();
  if (tool == "miParameterOk") closeParameters();
}

void CLSClassControl::showTab() {
  m_tabs->caption(kOperationsTab, "Operations");
  for (std::int64_t i = 0; i < m_panels->Count(); ++i) {
    auto& panel = m_panels->at<Panel>(i);
    panel.Visible(panel.Tag() == m_tabs->selected());
  }
  m_parameterPanel->Visible(false);
  m_memberPanel->Visible(false);
}

void CLSClassControl::openProperties(platform::Link& row, MemberPanel& panel) {
  const Ref<platform::Node> member = row.Target();
  m_memberGrid->clear();
  m_memberGrid->owner(member->Parent().get());
  m_memberGrid->load();
  m_memberGrid->node(member.get());
  panel.currentKey(member->identifier());
  m_memberPanel->Visible(true);
}

void CLSClassControl::closeProperties() {
  if (!m_memberPanel->Visible()) return;
  m_memberGrid->apply();
  m_memberPanel->Visible(false);
  const Ref<platform::Node> member = m_memberGrid->node();
  memberEdited(member && member->Parent()->name() == platform::types::kAttrib);
}

void CLSClassControl::editParameters() {
  const auto row = m_operations.list->selectedRow();
  if (!row) return;
  m_parameters.show(row->Target().get());
  m_tabs->caption(kOperationsTab, "Parameters");
  m_parameterPanel->Visible(true);
}

void CLSClassControl::closeParameters() {
  m_parameterPanel->Visible(false);
  m_tabs->caption(kOperationsTab, "Operations");
}

}  // namespace brisel::editors
