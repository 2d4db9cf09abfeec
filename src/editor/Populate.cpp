// Drawing the model on the canvas, and laying it out.

#include <algorithm>
#include <cmath>
#include <exception>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "editor/Busy.h"
#include "editor/CLSEditor.h"
#include "platform/Shell.h"
#include "repository/Positioner.h"

namespace brisel::editor {

using platform::each;
using platform::Ref;
using repository::endOf;
using repository::kRelationshipTypes;
using repository::RelationshipType;
namespace types = platform::types;

namespace {

constexpr std::string_view kHierarchy = "%HIERARCHY%";

using RankedPoints = std::vector<std::pair<std::int64_t, platform::Node*>>;

/// Whether the points are those that the canvas computes for a line from a class to itself: then
/// nobody bent it, and it goes on following its box.
bool isComputedLoop(const platform::DiagramLink& line, const RankedPoints& stored) {
  if (line.source() != line.target()) return false;
  const auto drawn = line.ExtraPoints();
  if (static_cast<std::size_t>(drawn->Count()) != stored.size()) return false;
  for (std::size_t i = 0; i < stored.size(); ++i) {
    const platform::Point at = drawn->at(i);
    const platform::Node& point = *stored[i].second;
    if (std::abs(at.x - point.GetProperty("X").number()) > 1) return false;
    if (std::abs(at.y - point.GetProperty("Y").number()) > 1) return false;
  }
  return true;
}

}  // namespace

void CLSEditor::Populate() {
  trap("Populate", [this] { populate(); });
}

void CLSEditor::populate() {
  const Busy busy(*this);
  ensureConventions();
  m_view.load(*layoutNode());
  SyncViewButtons();
  SyncCategoryButtons();
  // Before the first layout all boxes stand on one spot, where nobody is to see them.
  const CanvasUpdate update(*m_diagram);
  drawModel();
  if (model().MetaNodes(types::kGeomArea)->extension()->Count() == 0) {
    toggleCompartment("ViewParameters");
    layoutHierarchically();
  }
}

/// Whether boxes still stand where they were made, one on top of the other.
bool CLSEditor::isStacked() const {
  const auto boxes = m_diagram->getAllNodes();
  if (boxes->Count() < 2) return false;
  for (const auto& box : each<platform::DiagramNode>(boxes)) {
    if (box.bounds().topLeft() != platform::Point{}) return false;
  }
  return true;
}

void CLSEditor::ensureConventions() {
  const auto isMissing = [this](Text type) {
    return model().MetaNodes(type)->extension()->Count() == 0;
  };
  if (isMissing(types::kStereotype)) {
    model().MakeNode(types::kStereotype, "<NONE>", m_repository->UUID());
  }
  if (isMissing(types::kLayout)) saveView();
}

void CLSEditor::drawModel() {
  const Temporarily programmatic(m_programmatic, true);
  const CanvasUpdate update(*m_diagram);
  drawClasses();
  for (const RelationshipType& type : kRelationshipTypes) drawRelationships(type);
  const std::set<std::string> placed = restoreAreas();
  restorePoints();
  placeBoxesWithoutArea(placed);
}

// The host is told of each box and line, and may delete others meanwhile: both walks are over a
// copy, of which only what is still there is drawn.

void CLSEditor::drawClasses() {
  const auto type = model().MetaNodes(types::kClass);
  for (auto& shown : each<platform::Node>(type->extension()->copy())) {
    if (type->find(shown.identifier()) != &shown || !IsClassShown(shown)) continue;
    const Temporarily drawn(m_drawn, Ref<platform::Node>(&shown));
    m_diagram->createNode(shown.identifier(), shown.name(), 0, 0, 3000, 2000, 2);
  }
}

void CLSEditor::drawRelationships(const RelationshipType& drawnType) {
  const auto type = model().MetaNodes(drawnType.kind);
  for (auto& relationship : each<platform::Node>(type->extension()->copy())) {
    if (type->find(relationship.identifier()) != &relationship) continue;
    drawRelationship(relationship, drawnType);
  }
}

/// Nothing is drawn where a class at an end is not.
void CLSEditor::drawRelationship(platform::Node& relationship, const RelationshipType& type) {
  const auto source = endOf(relationship, type.source);
  const auto target = endOf(relationship, type.target);
  if (!source || !target) return;
  const std::string sourceKey = source->identifier();
  const std::string targetKey = target->identifier();
  if (!IsNodeShown(sourceKey) || !IsNodeShown(targetKey)) return;
  const Temporarily drawn(m_drawn, Ref<platform::Node>(&relationship));
  m_diagram->createLink(relationship.identifier(), relationship.name(), sourceKey, targetKey);
}

std::set<std::string> CLSEditor::restoreAreas() {
  std::set<std::string> placed;
  for (auto& area : each<platform::Node>(model().MetaNodes(types::kGeomArea)->extension())) {
    std::string key = area.GetProperty("NodeId").text();
    const auto box = m_diagram->getNode(key);
    if (!box) continue;
    box->bounds({area.GetProperty("left").number(), area.GetProperty("top").number(),
                 area.GetProperty("Width").number(), area.GetProperty("height").number()});
    placed.insert(std::move(key));
  }
  return placed;
}

/// Boxes that have no place yet (their category was hidden so far, or they were made behind the
/// editor's back) come beside what they are joined to, not on top of each other, and their lines
/// are led around what stands.
void CLSEditor::placeBoxesWithoutArea(const std::set<std::string>& placed) {
  if (placed.empty()) return;
  std::vector<std::string> rest;
  for (auto& box : each<platform::DiagramNode>(m_diagram->getAllNodes())) {
    if (!placed.contains(box.key())) rest.push_back(box.key());
  }
  if (!rest.empty()) m_diagram->placeAmong(rest);
}

void CLSEditor::restorePoints() {
  std::map<std::string, RankedPoints> byLink;
  const auto points = model().MetaNodes(types::kGeomPoint)->extension();
  for (auto& point : each<platform::Node>(points)) {
    byLink[point.GetProperty("linkId").text()].emplace_back(point.GetProperty("rank").integer(),
                                                            &point);
  }
  repository::Positioner positioner;
  for (auto& [key, ranked] : byLink) {
    const AssociationRef association = GetAssociationFromLink(key);
    if (!association) continue;
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    if (isComputedLoop(*association->link(), ranked)) continue;
    for (const auto& [rank, point] : ranked) positioner.LoadPoint(*association, *point);
  }
}

bool CLSEditor::IsClassShown(platform::Node& classNode) {
  Ref<platform::Link> link;
  const auto stereotype = m_repository->GetStereotype(classNode, link);
  if (!stereotype) return true;
  const std::string name = stereotype->name();
  return !m_view.isCategory(name) || m_view.isShown(name);
}

bool CLSEditor::IsNodeShown(Text key) const { return static_cast<bool>(m_diagram->getNode(key)); }

void CLSEditor::Layout(Text style) {
  trap("Layout", [&] {
    if (style == kHierarchy) {
      layoutHierarchically();
    } else {
      m_diagram->Layout(style);
    }
  });
}

void CLSEditor::layoutHierarchically() {
  try {
    m_diagram->Layout(kHierarchy);
    if (isStacked()) m_diagram->Layout("MATRIX");  // the first layout of all was cancelled
    m_diagram->refresh();
  } catch (const std::exception&) {  // want of memory too
    const std::string answer = m_registry.shell().showMessage(
        {"Brisel",
         "There were some problems layouting this diagram due to its complexity. "
         "To prevent further errors, \n"
         "this diagram will be layouted in 'MATRIX' mode, if you want.",
         {"OK", "Cancel"},
         platform::MessageIcon::question});
    if (answer == "OK") m_diagram->Layout("MATRIX");
  }
}

Ref<platform::Node> CLSEditor::GetLayoutNode() {
  return trap("GetLayoutNode", [this] { return layoutNode(); });
}

Ref<platform::Node> CLSEditor::layoutNode() const {
  const auto layouts = model().MetaNodes(types::kLayout)->extension();
  if (layouts->Count() == 0) return {};
  return platform::as<platform::Node>(layouts->Item(1));
}

void CLSEditor::saveView() {
  Ref<platform::Node> node = layoutNode();
  if (!node) node = model().MakeNode(types::kLayout, "Layout", m_repository->UUID());
  m_view.save(*node);
}

void CLSEditor::Clear() {
  trap("Clear", [this] {
    CommitClassName();
    m_diagram->SelectMode();
    m_diagram->Clear();
    m_programmatic = false;
  });
}

void CLSEditor::SyncViewButtons() {
  showPressed("ViewAttributes", m_view.attributes());
  showPressed("ViewOperations", m_view.operations());
  showPressed("ViewParameters", m_view.parameters());
}

void CLSEditor::SyncCategoryButtons() {
  for (const std::string& category : m_view.categories()) {
    showPressed(category, m_view.isShown(category));
  }
}

void CLSEditor::showPressed(Text button, bool pressed) {
  if (pressed) {
    m_diagram->PressButton(button);
  } else {
    m_diagram->ReleaseButton(button);
  }
}

}  // namespace brisel::editor
