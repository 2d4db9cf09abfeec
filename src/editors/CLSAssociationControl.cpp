#include "editors/CLSAssociationControl.h"

#include <array>

#include "controls/Panel.h"
#include "controls/Row.h"
#include "platform/ErrorTrap.h"
#include "platform/MemberTableOf.h"

namespace brisel::editors {

using controls::ControlArray;
using controls::Panel;
using controls::Property;
using platform::make;
using platform::Ref;

namespace {

using Text = std::string_view;

constexpr std::array<Text, 3> kEndTabs = {"Association", "Source", "Target"};

constexpr std::array<Text, 2> kFirstKeys = {"Name", "Intention"};
constexpr std::array<Text, 2> kGeneralizationKeys = {"Discriminator", "IsVirtual"};
constexpr std::array<Text, 3> kAssociationKeys = {"ReverseName", "PreferredDirection", "IsDerived"};
constexpr std::array<Text, 1> kAggregationKeys = {"IsComposite"};
constexpr std::array<Text, 4> kSourceKeys = {"SourceRolename", "SourceMultiplicity",
                                             "SourceCardinality", "SourceNavigable"};
constexpr std::array<Text, 4> kTargetKeys = {"TargetRolename", "TargetMultiplicity",
                                             "TargetCardinality", "TargetNavigable"};

template <std::size_t N>
void add(Property& grid, const std::array<Text, N>& keys) {
  for (const Text key : keys) grid.addKey(key);
}

}  // namespace

CLSAssociationControl::CLSAssociationControl(platform::ComponentRegistry& registry)
    : m_registry(registry),
      m_panels(make<ControlArray>(std::vector<Ref<platform::Object>>{
          make<Panel>(kEndTabs[0]), make<Panel>(kEndTabs[1]), make<Panel>(kEndTabs[2])})),
      m_grids(make<ControlArray>(std::vector<Ref<platform::Object>>{
          make<Property>(), make<Property>(), make<Property>()})) {
  m_tabChosen = m_tabs->SelectionChanged.connect([this] { showTab(); });
  for (const Text key : kEndTabs) m_tabs->add(key, key);
  showTab();
}

void CLSAssociationControl::Path(std::string_view path) {
  m_path = path;
  for (std::int64_t i = 0; i < m_grids->Count(); ++i) grid(i).Path(path);
}

Property& CLSAssociationControl::grid(std::int64_t index) const {
  return m_grids->at<Property>(index);
}

bool CLSAssociationControl::isEditable() const {
  return m_repository && m_association && m_association->clsObject() &&
         controls::isInRepository(*m_association->clsObject());
}

void CLSAssociationControl::Prepare() {
  platform::trapped(m_registry.shell(), "CLSAssociationControl", "Prepare", [this] {
    if (m_association) prepare();
  });
}

void CLSAssociationControl::prepare() {
  if (!m_repository) {
    throw platform::Error(platform::ErrorNumber::objectMissing,
                          "The relationship editor has no repository");
  }
  const Ref<platform::Node> node = m_association->clsObject();
  if (!node || !m_repository || !m_repository->GetRepository()) {
    throw platform::Error(platform::ErrorNumber::objectMissing,
                          "The relationship editor needs a repository and a relationship of it");
  }
  m_tabs->clear();
  for (const Text key : kEndTabs) m_tabs->add(key, key);
  for (std::int64_t i = 0; i < m_grids->Count(); ++i) {
    grid(i).initialize();
    grid(i).owner(node->Parent().get());
  }
  addKeys();
  for (std::int64_t i = 0; i < m_grids->Count(); ++i) {
    grid(i).load();
    grid(i).node(node.get());
  }
  showTab();
  Ref<platform::Link> link;
  m_stereotype->show(*m_repository->GetRepository(),
                     m_repository->GetStereotype(*node, link).get());
}

void CLSAssociationControl::addKeys() {
  const bool inherits = m_association->isGeneralization();
  add(grid(0), kFirstKeys);
  grid(1).Visible(!inherits);
  grid(2).Visible(!inherits);
  if (inherits) {
    m_tabs->caption(kEndTabs[0], "Generalization");
    add(grid(0), kGeneralizationKeys);
    m_tabs->remove(kEndTabs[1]);
    m_tabs->remove(kEndTabs[2]);
    return;
  }
  add(grid(1), kSourceKeys);
  add(grid(2), kTargetKeys);
  add(grid(0), kAssociationKeys);
  if (!m_association->isAggregation()) return;
  add(grid(0), kAggregationKeys);
  m_tabs->caption(kEndTabs[0], "Aggregation");
}

void CLSAssociationControl::showTab() {
  for (std::int64_t i = 0; i < m_panels->Count(); ++i) {
    auto& panel = m_panels->at<Panel>(i);
    panel.Visible(panel.Tag() == m_tabs->selected());
  }
}

void CLSAssociationControl::Finish(platform::DiagramControl*) {
  platform::trapped(m_registry.shell(), "CLSAssociationControl", "Finish", [this] { finish(); });
}

void CLSAssociationControl::finish() {
  const bool writes = isEditable();
  if (writes) {
    m_repository->SetStereotype(*m_association->clsObject(), m_stereotype->Selection().get());
  }
  for (std::int64_t i = 0; i < m_grids->Count(); ++i) {
    grid(i).apply();
    grid(i).clear();
    grid(i).release();
  }
  if (writes) m_association->Populate();
}

const platform::MemberTable& CLSAssociationControl::memberTable() const {
  using C = CLSAssociationControl;
  static const platform::MemberTable kTable =
      platform::MemberTableOf<C>(Control::memberTable())
          .property("Path", &C::Path, &C::Path)
          .property<Ref<repository::CLSRepository>, repository::CLSRepository*>(
              "Repository", &C::Repository, &C::Repository)
          .property<Ref<repository::Association>, repository::Association*>(
              "Association", &C::Association, &C::Association)
          .method("Prepare", &C::Prepare)
          .method("StartEdit", &C::StartEdit)
          .method("Finish", &C::Finish)
          .property("TabStrip1", &C::TabStrip1)
          .property("Picture1", &C::Picture1)
          .property("PropertyAssociation", &C::PropertyAssociation)
          .property("CLSSelectStereotype1", &C::CLSSelectStereotype1)
          .build();
  return kTable;
}

}  // namespace brisel::editors
