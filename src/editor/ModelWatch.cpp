#include "editor/ModelWatch.h"

#include <algorithm>
#include <array>

#include "platform/Text.h"

namespace brisel::editor {

using platform::Change;
using platform::each;
using platform::Node;
using platform::Ref;
namespace types = platform::types;

namespace {

/// The geometry records, and the property by which one names the element that it belongs to.
struct RecordType {
  std::string_view type, owner;
};
constexpr std::array kRecords = {RecordType{types::kGeomArea, "NodeId"},
                                 RecordType{types::kGeomPoint, "linkId"}};

const RecordType* recordTypeOf(std::string_view type) {
  const auto found = std::find_if(kRecords.begin(), kRecords.end(),
                                  [&](const RecordType& one) { return one.type == type; });
  return found == kRecords.end() ? nullptr : &*found;
}

}  // namespace

void ModelWatch::follow(platform::MetaRepository& model) {
  if (m_model == &model) return;
  leave();
  m_model = &model;
  m_listening = model.onChange([this](const Change& change) { changed(change); });
}

void ModelWatch::leave() {
  m_listening.disconnect();
  m_model = nullptr;
  m_geometry.clear();
  m_knowsGeometry = false;
  m_classes.clear();
  m_allClasses = true;
}

std::vector<Ref<Node>> ModelWatch::geometryOf(std::string_view element) {
  if (!m_knowsGeometry) {
    for (const RecordType& record : kRecords) {
      for (auto& node : each<Node>(m_model->MetaNodes(record.type)->extension())) {
        enter(node.GetProperty(record.owner).text(), node);
      }
    }
    m_knowsGeometry = true;
  }
  const auto found = m_geometry.find(std::string(element));
  return found == m_geometry.end() ? Nodes() : found->second;
}

std::vector<Ref<Node>> ModelWatch::takeClassesToSynchronize() {
  if (!std::exchange(m_allClasses, false)) return std::exchange(m_classes, {});
  m_classes.clear();
  Nodes all;
  for (auto& node : each<Node>(m_model->MetaNodes(types::kClass)->extension())) {
    all.emplace_back(&node);
  }
  return all;
}

void ModelWatch::changed(const Change& change) {
  if (auto* node = dynamic_cast<Node*>(&change.element)) nodeChanged(*node, change);
}

void ModelWatch::nodeChanged(Node& node, const Change& change) {
  using Kind = Change::Kind;
  const std::string type = node.Parent()->name();
  if (m_knowsGeometry && recordTypeOf(type)) geometryChanged(node, change);
  if (m_allClasses) return;
  if (type == types::kClass && (change.kind == Kind::nodeMade || change.kind == Kind::renamed)) {
    m_classes.emplace_back(&node);
  } else if (type == types::kDataType &&
             (change.kind == Kind::nodeRemoved || change.kind == Kind::renamed)) {
    m_allClasses = true;
  }
}

void ModelWatch::geometryChanged(Node& record, const Change& change) {
  const std::string_view key = recordTypeOf(record.Parent()->name())->owner;
  if (change.kind == Change::Kind::nodeRemoved) {
    strike(record.GetProperty(key).text(), record);
  } else if (change.kind == Change::Kind::propertySet &&
             platform::equalsIgnoringCase(change.key, key)) {
    strike(change.before.text(), record);
    enter(change.after.text(), record);
  }
}

void ModelWatch::enter(std::string_view owner, Node& record) {
  m_geometry[std::string(owner)].emplace_back(&record);
}

void ModelWatch::strike(std::string_view owner, const Node& record) {
  const auto found = m_geometry.find(std::string(owner));
  if (found == m_geometry.end()) return;
  std::erase_if(found->second, [&](const Ref<Node>& one) { return one.get() == &record; });
  if (found->second.empty()) m_geometry.erase(found);
}

}  // namespace brisel::editor
