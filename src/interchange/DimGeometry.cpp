#include "interchange/DimGeometry.h"

#include <algorithm>
#include <array>

#include "platform/Text.h"

namespace brisel::interchange {

using platform::each;
using platform::MetaType;
using platform::Node;
using platform::Ref;
using platform::Value;

namespace {

/// The properties of the geometry nodes.
namespace record {

constexpr std::string_view kTop = "top";
constexpr std::string_view kLeft = "left";
constexpr std::string_view kWidth = "Width";
constexpr std::string_view kIsVisible = "IsVisible";
constexpr std::string_view kHeight = "height";
constexpr std::string_view kNodeId = "NodeId";
constexpr std::string_view kNodeClass = "NodeClass";
constexpr std::array kAreaKeys = {kTop, kLeft, kWidth, kIsVisible, kHeight, kNodeId, kNodeClass};

constexpr std::string_view kX = "X";
constexpr std::string_view kY = "Y";
constexpr std::string_view kKindOfPosition = "kindOfPosition";
constexpr std::string_view kLinkId = "linkId";
constexpr std::string_view kLinkClass = "linkClass";
constexpr std::string_view kRank = "rank";
constexpr std::array kPointKeys = {kX, kY, kKindOfPosition, kLinkId, kLinkClass, kRank};
}  // namespace record

/// What stands for the point's place in its line.
std::string_view kindOfPosition(std::size_t index, std::size_t count) {
  if (index == 0) return "START";
  return index + 1 == count ? "END" : "MIDDLE";
}

std::optional<dim::Area> areaOf(const Node& record) {
  const Value left = record.GetProperty(record::kLeft);
  const Value top = record.GetProperty(record::kTop);
  const Value width = record.GetProperty(record::kWidth);
  const Value height = record.GetProperty(record::kHeight);
  if (!left.isInteger() || !top.isInteger() || !width.isInteger() || !height.isInteger()) return {};
  if (record.GetProperty(record::kIsVisible) != Value(true)) return {};
  return dim::Area{left.integer(), top.integer(), width.integer(), height.integer()};
}

std::optional<dim::Point> pointOf(const Node& record, std::size_t index, std::size_t count) {
  const Value x = record.GetProperty(record::kX);
  const Value y = record.GetProperty(record::kY);
  if (!x.isInteger() || !y.isInteger()) return {};
  if (record.GetProperty(record::kRank) != Value(static_cast<std::int64_t>(index + 1))) return {};
  if (record.GetProperty(record::kKindOfPosition) != Value(kindOfPosition(index, count))) return {};
  return dim::Point{x.integer(), y.integer()};
}

}  // namespace

struct DimGeometry::Kind {
  std::string_view type;
  std::string_view elementId;
  std::string_view elementType;
  std::span<const std::string_view> keys;
};

const DimGeometry::Kind DimGeometry::kAreas = {platform::types::kGeomArea, record::kNodeId,
                                               record::kNodeClass, record::kAreaKeys};
const DimGeometry::Kind DimGeometry::kPoints = {platform::types::kGeomPoint, record::kLinkId,
                                                record::kLinkClass, record::kPointKeys};

DimGeometry::DimGeometry(const platform::MetaRepository& repository) {
  for (MetaType& type : each<MetaType>(repository.nodeTypes())) {
    m_nodeTypes.emplace(type.name(), &type);
  }
  for (const MetaType& type : each<MetaType>(repository.linkTypes())) {
    if (type.extension()->Count() == 0) continue;
    const std::string name = type.name();
    m_linkEnds.emplace(dim::linkWords(name).source);
    m_linkEnds.emplace(dim::linkWords(name).target);
  }
  takeAreas();
  takePoints();
}

bool DimGeometry::isGeometry(std::string_view type) {
  return type == kAreas.type || type == kPoints.type;
}

const DimGeometry::OfElement* DimGeometry::of(const Node& element) const {
  const auto found = m_elements.find(&element);
  return found == m_elements.end() ? nullptr : &found->second;
}

void DimGeometry::takeAreas() {
  for (const auto& [element, records] : recordsOf(kAreas)) {
    if (records.size() != 1) continue;
    const auto area = areaOf(*records.front());
    if (!area) continue;
    m_elements[element].area = area;
    m_withElement.insert(records.front());
  }
}

void DimGeometry::takePoints() {
  for (const auto& [element, records] : recordsOf(kPoints)) {
    std::vector<dim::Point> points;
    for (std::size_t i = 0; i < records.size(); ++i) {
      const auto point = pointOf(*records[i], i, records.size());
      if (!point) break;
      points.push_back(*point);
    }
    if (points.size() != records.size()) continue;
    m_elements[element].points = std::move(points);
    m_withElement.insert(records.begin(), records.end());
  }
}

/// The records of a kind by the elements that they belong to, as far as they are plain: without a
/// name, links and further properties. An element with one that is not plain is left away.
DimGeometry::Records DimGeometry::recordsOf(const Kind& kind) {
  const auto type = m_nodeTypes.find(std::string(kind.type));
  if (type == m_nodeTypes.end() || m_linkEnds.contains(std::string(kind.type))) return {};
  const auto extraKeys = extraKeysOf(*type->second, kind);
  if (!extraKeys) return {};

  const auto isPlain = [&](const Node& record) {
    const auto isEmpty = [&](const std::string& key) { return record.GetProperty(key).isEmpty(); };
    return record.name().empty() && std::all_of(extraKeys->begin(), extraKeys->end(), isEmpty);
  };
  Records records;
  std::unordered_set<const Node*> unusual;
  for (const Node& record : each<Node>(type->second->extension())) {
    const Node* element = elementOf(record, kind);
    if (!element) continue;
    records[element].push_back(&record);
    if (!isPlain(record)) unusual.insert(element);
  }
  for (const Node* element : unusual) records.erase(element);
  return records;
}

/// The properties known of the type beyond those of the kind; nothing at all when one of the
/// kind's own is spelled in another way, which lines of their own keep.
std::optional<std::vector<std::string>> DimGeometry::extraKeysOf(const MetaType& type,
                                                                 const Kind& kind) {
  std::vector<std::string> extra;
  for (const auto& definition : each<platform::PropertyDefinition>(type.properties())) {
    const std::string name = definition.name();
    if (dim::isOwnProperty(name)) continue;
    if (std::find(kind.keys.begin(), kind.keys.end(), name) != kind.keys.end()) continue;
    for (const std::string_view key : kind.keys) {
      if (platform::equalsIgnoringCase(key, name)) return {};
    }
    extra.push_back(name);
  }
  return extra;
}

const Node* DimGeometry::elementOf(const Node& record, const Kind& kind) {
  const Value type = record.GetProperty(kind.elementType);
  const Value identifier = record.GetProperty(kind.elementId);
  if (!type.isString() || !identifier.isString()) return nullptr;
  if (isGeometry(type.string())) return nullptr;
  const auto found = m_nodeTypes.find(type.string());
  if (found == m_nodeTypes.end()) return nullptr;
  m_elementTypes.insert(type.string());
  return static_cast<const Node*>(found->second->find(identifier.string()).get());
}

void DimGeometryMaker::makeArea(std::string_view type, std::string_view identifier,
                                const dim::Area& area) {
  const auto node = makeNode(platform::types::kGeomArea);
  node->SetProperty(record::kTop, area.top);
  node->SetProperty(record::kLeft, area.left);
  node->SetProperty(record::kWidth, area.width);
  node->SetProperty(record::kIsVisible, true);
  node->SetProperty(record::kHeight, area.height);
  node->SetProperty(record::kNodeId, identifier);
  node->SetProperty(record::kNodeClass, type);
}

void DimGeometryMaker::makePoints(std::string_view type, std::string_view identifier,
                                  std::span<const dim::Point> points) {
  for (std::size_t i = 0; i < points.size(); ++i) {
    const auto node = makeNode(platform::types::kGeomPoint);
    node->SetProperty(record::kX, points[i].x);
    node->SetProperty(record::kY, points[i].y);
    node->SetProperty(record::kKindOfPosition, kindOfPosition(i, points.size()));
    node->SetProperty(record::kLinkId, identifier);
    node->SetProperty(record::kLinkClass, type);
    node->SetProperty(record::kRank, static_cast<std::int64_t>(i + 1));
  }
}

Ref<Node> DimGeometryMaker::makeNode(std::string_view type) {
  return m_repository.MakeNode(type, {}, m_generator.call("GetUUID").text());
}

}  // namespace brisel::interchange
