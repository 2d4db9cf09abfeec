#include "interchange/DimWriter.h"

#include <algorithm>
#include <cmath>

#include <simdjson.h>

#include "interchange/SafeFile.h"
#include "platform/Error.h"

namespace brisel::interchange {

using platform::each;
using platform::Link;
using platform::MetaType;
using platform::Node;
using platform::Ref;
using platform::Value;

namespace {

constexpr std::size_t kFlushSize = std::size_t{1} << 20U;

/// The keys of the properties that nodes of the type may have, in the order of their bytes: that
/// order does not change with the order in which they happened to be set.
std::vector<std::string> propertyKeys(const MetaType& type) {
  std::vector<std::string> keys;
  for (const auto& definition : each<platform::PropertyDefinition>(type.properties())) {
    if (!dim::isOwnProperty(definition.name())) keys.push_back(definition.name());
  }
  std::sort(keys.begin(), keys.end());
  return keys;
}

}  // namespace

void DimWriter::write(const std::string& file, const platform::MetaRepository& repository) {
  SafeFile out(file);
  write([&](std::string_view bytes) { out.write(bytes); }, repository);
  out.commit();
}

std::string DimWriter::text(const platform::MetaRepository& repository) {
  std::string all;
  write([&](std::string_view bytes) { all += bytes; }, repository);
  return all;
}

void DimWriter::write(const Sink& sink, const platform::MetaRepository& repository) {
  DimWriter(sink, repository).writeAll();
}

void DimWriter::writeAll() {
  m_json.openArray();
  m_json.openObject();
  m_json.plainKey(dim::key::kFormat);
  m_json.value(dim::kFormat);
  m_json.plainKey(dim::key::kVersion);
  m_json.value(dim::kVersion);
  m_json.plainKey(dim::key::kKind);
  m_json.value(dim::kModelKind);
  endLine();
  for (const MetaType& type : each<MetaType>(m_repository.nodeTypes())) writeNodes(type);
  for (const MetaType& type : each<MetaType>(m_repository.linkTypes())) writeLinks(type);
  m_json.openObject();
  m_json.plainKey(dim::key::kEnd);
  m_json.value(dim::kFormat);
  m_json.closeObject();
  m_json.closeArray();
  m_json.endText();
  flush();
}

void DimWriter::writeNodes(const MetaType& type) {
  m_type = type.name();
  m_keys = propertyKeys(type);
  const bool isGeometry = DimGeometry::isGeometry(m_type);
  m_hasGeometry = m_geometry.reaches(m_type);
  for (const Node& node : each<Node>(type.extension())) {
    if (isGeometry && m_geometry.isWithElement(node)) continue;
    writeNode(node);
  }
}

void DimWriter::writeNode(const Node& node) {
  m_json.openObject();
  m_json.plainKey(dim::key::kNode);
  m_json.value(m_type);
  m_json.plainKey(dim::key::kId);
  m_json.value(node.identifier());
  m_json.plainKey(dim::key::kName);
  m_json.value(node.name());
  bool any = false;
  for (const std::string& key : m_keys) {
    const Value value = node.GetProperty(key);
    if (value.isEmpty()) continue;
    if (!any) {
      m_json.plainKey(dim::key::kProperties);
      m_json.openObject();
      any = true;
    }
    m_json.key(key);
    writeValue(node, key, value);
  }
  if (any) m_json.closeObject();
  if (const auto* geometry = m_hasGeometry ? m_geometry.of(node) : nullptr) {
    writeGeometry(*geometry);
  }
  endLine();
}

void DimWriter::writeValue(const Node& node, std::string_view key, const Value& value) {
  if (value.isString()) return m_json.value(value.string());
  if (value.isBoolean()) return m_json.value(value.boolean());
  if (value.isInteger()) return m_json.value(value.integer());
  if (value.isDouble()) return writeDouble(value.number());
  throw platform::Error(platform::ErrorNumber::invalidCall,
                        "A DIM file cannot hold the " + std::string(value.kindName()) +
                            " that is the property \"" + std::string(key) + "\" of the " + m_type +
                            " \"" + node.identifier() + "\"");
}

void DimWriter::writeDouble(double number) {
  if (std::isfinite(number)) return m_json.value(number);
  m_json.openObject();
  m_json.plainKey(dim::key::kDouble);
  if (std::isnan(number)) {
    m_json.value(dim::word::kNotANumber);
  } else {
    m_json.value(number > 0 ? dim::word::kInfinity : dim::word::kMinusInfinity);
  }
  m_json.closeObject();
}

void DimWriter::writeGeometry(const DimGeometry::OfElement& geometry) {
  if (geometry.area) {
    m_json.plainKey(dim::key::kArea);
    m_json.openObject();
    m_json.plainKey(dim::key::kLeft);
    m_json.value(geometry.area->left);
    m_json.plainKey(dim::key::kTop);
    m_json.value(geometry.area->top);
    m_json.plainKey(dim::key::kWidth);
    m_json.value(geometry.area->width);
    m_json.plainKey(dim::key::kHeight);
    m_json.value(geometry.area->height);
    m_json.closeObject();
  }
  if (geometry.points.empty()) return;
  m_json.plainKey(dim::key::kPoints);
  m_json.openArray();
  for (const dim::Point& point : geometry.points) {
    m_json.openArray();
    m_json.value(point.x);
    m_json.value(point.y);
    m_json.closeArray();
  }
  m_json.closeArray();
}

void DimWriter::writeLinks(const MetaType& type) {
  m_type = type.name();
  const auto words = dim::linkWords(m_type);
  const MetaType* targets = nullptr;
  Ref<Node> lastSource;
  Ref<Node> lastTarget;
  std::string sourceId;
  for (const Link& link : each<Link>(type.extension())) {
    const Ref<Node> source = link.source();
    const Ref<Node> target = link.Target();
    if (!source || !target) continue;
    if (!targets) targets = target->Parent().get();
    if (source != lastSource) sourceId = source->identifier();  // owners mostly repeat
    lastSource = source;
    const std::string targetId = target->identifier();
    if (target != lastTarget && targets->find(targetId) != target) continue;  // it was removed
    lastTarget = target;

    m_json.openObject();
    m_json.plainKey(dim::key::kLink);
    m_json.value(m_type);
    m_json.plainKey(dim::key::kId);
    m_json.value(link.identifier());
    const std::string name = link.name();
    dim::ownershipName(m_linkName, sourceId, words.relation, targetId);
    if (name != m_linkName) {
      m_json.plainKey(dim::key::kName);
      m_json.value(name);
    }
    m_json.plainKey(dim::key::kSource);
    m_json.value(sourceId);
    m_json.plainKey(dim::key::kTarget);
    m_json.value(targetId);
    endLine();
  }
}

void DimWriter::endLine() {
  m_json.closeObject();
  m_json.newLine();
  if (m_json.text().size() >= kFlushSize) flush();
}

/// Text that is not UTF-8 must not get into a file: no one could read it again.
void DimWriter::flush() {
  const std::string_view text = m_json.text();
  if (!simdjson::validate_utf8(text)) failEncoding(text);
  m_sink(text);
  m_json.clear();
}

void DimWriter::failEncoding(std::string_view text) {
  constexpr std::size_t kShown = 100;
  for (std::size_t at = 0; at < text.size();) {
    const auto end = std::min(text.find('\n', at), text.size() - 1) + 1;
    const std::string_view line = text.substr(at, end - at);
    if (!simdjson::validate_utf8(line)) {
      throw platform::Error(
          platform::ErrorNumber::invalidCall,
          "A DIM file cannot hold text that is not UTF-8, as is in " +
              std::string(line.substr(0, std::min(line.find(",\"properties"), kShown))));
    }
    at = end;
  }
}

}  // namespace brisel::interchange
