// Compartments, positions and data types.

#include <vector>

#include "editor/Busy.h"
#include "editor/CLSEditor.h"
#include "platform/Error.h"
#include "repository/Positioner.h"

namespace brisel::editor {

using platform::each;
using platform::Ref;
namespace types = platform::types;

void CLSEditor::Compartments(Text compartment) {
  trap("Compartments", [&] { toggleCompartment(compartment); });
}

void CLSEditor::toggleCompartment(Text compartment) {
  m_view.toggleCompartment(compartment);
  SyncViewButtons();
  const CanvasUpdate update(*m_diagram);
  for (auto& shown : each<platform::Node>(model().MetaNodes(types::kClass)->extension())) {
    if (!IsClassShown(shown)) continue;
    if (const ClassRef wrapper = GetClassFromNode(shown.identifier())) {
      showCompartments(*wrapper);
      wrapper->Node()->fitToText(true);
    }
  }
}

void CLSEditor::showCompartments(repository::Class& shown) const {
  const auto box = shown.Node();
  box->Section(0)->visible(m_view.attributes());
  box->Section(1)->visible(m_view.operations());
  shown.viewParameter(m_view.parameters());
  shown.Populate();
}

void CLSEditor::ShowCompartments(Text key, Text compartment, bool checked) {
  trap("ShowCompartments", [&] {
    const ClassRef shown = drawnClass(key);
    shown->Node()->Section(compartment == "Operations" ? 1 : 0)->visible(checked);
  });
}

void CLSEditor::SizeToFit(Text key) {
  trap("SizeToFit", [&] { drawnNode(key)->fitToText(true); });
}

Ref<platform::DiagramNode> CLSEditor::drawnNode(Text key) const {
  auto box = m_diagram->getNode(key);
  if (!box) {
    throw platform::Error(platform::ErrorNumber::notFound,
                          "No class is drawn under the key " + std::string(key));
  }
  return box;
}

CLSEditor::ClassRef CLSEditor::drawnClass(Text key) {
  static_cast<void>(drawnNode(key));
  ClassRef shown = GetClassFromNode(key);
  if (!shown) {
    throw platform::Error(platform::ErrorNumber::objectMissing,
                          "The box " + std::string(key) + " shows no class");
  }
  return shown;
}

void CLSEditor::AddPositions() {
  trap("AddPositions", [this] { storePositions(); });
}

void CLSEditor::storePositions() {
  const Busy busy(*this);
  const auto areas = model().MetaNodes(types::kGeomArea)->extension();
  for (auto& area : each<platform::Node>(m_repository->CopyList(*areas))) {
    if (area.GetProperty("NodeClass").text() != types::kClass) continue;
    if (!IsNodeShown(area.GetProperty("NodeId").text())) continue;
    m_repository->RemoveObject(types::kGeomArea, area.identifier());
  }
  for (auto& shown : each<platform::Node>(model().MetaNodes(types::kClass)->extension())) {
    const ClassRef wrapper = GetClassFromNode(shown.identifier());
    if (wrapper) storeArea(shown, wrapper->Node()->bounds());
  }
  storePoints();
}

void CLSEditor::storeArea(platform::Node& classNode, const platform::Rect& bounds) {
  using repository::storedTwips;
  m_repository->MakeGeomArea(classNode, storedTwips(bounds.top), storedTwips(bounds.left),
                             storedTwips(bounds.width), storedTwips(bounds.height));
}

void CLSEditor::storePoints() {
  std::vector<Ref<platform::Node>> hidden;  // of relationships that are not drawn now
  for (auto& point : each<platform::Node>(model().MetaNodes(types::kGeomPoint)->extension())) {
    if (!m_diagram->getLink(point.GetProperty("linkId").text())) hidden.emplace_back(&point);
  }
  m_repository->DeleteAllGeomPoints();
  repository::Positioner positioner;
  for (auto& line : each<platform::DiagramLink>(m_diagram->getAllLinks())) {
    const AssociationRef association = GetAssociationFromLink(line.key());
    if (association) association->SavePoints(positioner, *m_repository);
  }
  for (const auto& point : hidden) {
    const auto kind = model().MetaNodes(point->GetProperty("linkClass").text());
    const auto found = kind->find(point->GetProperty("linkId").text());
    if (!found) continue;
    const auto number = [&](Text key) {
      return static_cast<std::int32_t>(point->GetProperty(key).integer());
    };
    m_repository->MakeGeomPoint(static_cast<platform::Node&>(*found), number("X"), number("Y"),
                                point->GetProperty("kindOfPosition").text(), number("rank"));
  }
}

void CLSEditor::SynchronizeDataTypes() {
  trap("SynchronizeDataTypes", [this] { synchronizeDataTypes(); });
}

void CLSEditor::synchronizeDataTypes() {
  const auto classes = model().MetaNodes(types::kClass);
  try {
    for (const auto& one : watch().takeClassesToSynchronize()) {
      if (classes->find(one->identifier()) != one) continue;  // gone meanwhile
      const std::string name = one->name();
      if (m_repository->SearchObject(types::kDataType, "Name", name)) continue;
      m_repository->MakeDataType(name, "", "");
    }
  } catch (...) {
    m_watch.leave();  // what was not reached is not forgotten
    throw;
  }
}

}  // namespace brisel::editor
