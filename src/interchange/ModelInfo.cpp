#include "interchange/ModelInfo.h"

#include "interchange/JsonWriter.h"

namespace brisel::interchange {

namespace {

using Counts = std::vector<std::pair<std::string, std::int64_t>>;

Counts countsOf(const platform::Ref<platform::Collection>& metaTypes) {
  Counts counts;
  for (const platform::MetaType& type : platform::each<platform::MetaType>(metaTypes)) {
    counts.emplace_back(type.name(), type.extension()->Count());
  }
  return counts;
}

void write(JsonWriter& json, std::string_view key, const Counts& counts) {
  json.key(key);
  json.openObject();
  for (const auto& [type, count] : counts) {
    json.key(type);
    json.value(count);
  }
  json.closeObject();
  json.newLine();
}

using Row = std::vector<std::pair<std::string_view, std::string_view>>;

void write(JsonWriter& json, std::string_view key, const std::vector<Row>& rows, bool isLast) {
  json.key(key);
  json.openArray();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    json.newLine();
    json.openObject();
    for (const auto& [name, value] : rows[i]) {
      json.key(name);
      json.value(value);
    }
    json.closeObject();
  }
  json.closeArray();
  if (!isLast) json.newLine();
}

void append(std::string& text, std::string_view heading, const Counts& counts) {
  text.append(heading).append("\n");
  for (const auto& [type, count] : counts) {
    if (count == 0) continue;
    const std::string number = std::to_string(count);
    constexpr std::size_t kColumns = 8;
    text.append(kColumns > number.size() ? kColumns - number.size() : 0, ' ');
    text.append(number).append("  ").append(type).append("\n");
  }
}

}  // namespace

ModelInfo modelInfo(const platform::MetaRepository& repository) {
  return {countsOf(repository.nodeTypes()), countsOf(repository.linkTypes())};
}

std::string infoAsJson(const ModelInfo& info, const ImportReport& report) {
  std::vector<Row> skipped;
  for (const auto& entry : report.skipped) {
    skipped.push_back({{"kind", entry.kind}, {"id", entry.id}, {"reason", entry.reason}});
  }
  std::vector<Row> stubs;
  for (const auto& entry : report.stubs) stubs.push_back({{"id", entry.id}, {"name", entry.name}});
  std::vector<Row> notes;
  for (const auto& entry : report.notes) {
    notes.push_back({{"kind", entry.kind}, {"id", entry.id}, {"text", entry.text}});
  }
  JsonWriter json;
  json.openObject();
  write(json, "nodes", info.nodes);
  write(json, "links", info.links);
  write(json, "skipped", skipped, false);
  write(json, "stubs", stubs, false);
  write(json, "notes", notes, true);
  json.closeObject();
  json.endText();
  return std::string(json.text());
}

std::string infoAsText(const ModelInfo& info, const ImportReport& report) {
  std::string text;
  append(text, "Nodes", info.nodes);
  append(text, "Links", info.links);
  for (const auto& entry : report.stubs) {
    text.append("stub: ").append(entry.name).append(" (").append(entry.id).append(")\n");
  }
  for (const auto& entry : report.skipped) {
    text.append("skipped: ").append(entry.kind).append(" ").append(entry.id).append(": ");
    text.append(entry.reason).append("\n");
  }
  for (const auto& entry : report.notes) {
    text.append("note: ").append(entry.kind).append(" ").append(entry.id).append(": ");
    text.append(entry.text).append("\n");
  }
  return text;
}

}  // namespace brisel::interchange
