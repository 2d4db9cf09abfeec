#include "GraphFile.h"

#include <unordered_map>

#include <simdjson.h>

#include "automation/JsonText.h"
#include "platform/Error.h"

namespace brisel::app {

using layout::EdgeKind;
using platform::Error;
using platform::ErrorNumber;
using simdjson::dom::element;

namespace {

EdgeKind kindOf(std::string_view word) {
  if (word == "generalization") return EdgeKind::generalization;
  if (word == "realization") return EdgeKind::realization;
  if (word == "aggregation" || word == "composition") return EdgeKind::aggregation;
  return EdgeKind::association;
}

/// Reads one graph; every failure names the file.
class Reader {
 public:
  explicit Reader(const std::string& name) : m_name(name) {}

  GraphFile read(std::string_view json) {
    simdjson::dom::parser parser;
    element root;
    if (const auto error = parser.parse(json.data(), json.size()).get(root)) {
      fail(simdjson::error_message(error));
    }
    for (const element node : listOf(root, "nodes")) addBox(node);
    for (const element edge : listOf(root, "edges")) addEdge(edge);
    return std::move(m_file);
  }

 private:
  [[noreturn]] void fail(const std::string& cause) const {
    throw Error(ErrorNumber::badFile, m_name + ": " + cause);
  }

  simdjson::dom::array listOf(const element& root, const char* key) const {
    simdjson::dom::array list;
    if (root[key].get(list)) fail(std::string("not a graph: no list \"") + key + "\"");
    return list;
  }

  std::string text(const element& json, const char* key, const std::string& what) const {
    std::string_view text;
    if (json[key].get(text)) fail(what + " has no text \"" + key + "\"");
    return std::string(text);
  }

  double side(const element& json, const char* key, const std::string& id) const {
    double length = 0;
    if (json[key].get(length)) fail("node " + id + " has no number \"" + key + "\"");
    if (length < 0) fail("node " + id + " has a negative \"" + key + "\"");
    return length;
  }

  std::size_t end(const element& json, const char* key, const std::string& id) const {
    const std::string box = text(json, key, "edge " + id);
    const auto found = m_boxes.find(box);
    if (found == m_boxes.end()) fail("edge " + id + " ends at a node that is not there: " + box);
    return found->second;
  }

  void addBox(const element& json) {
    const std::string id = text(json, "id", "node " + std::to_string(m_file.boxes.size() + 1));
    if (!m_boxes.emplace(id, m_file.boxes.size()).second) fail("a second node " + id);
    m_file.graph.boxes.push_back({side(json, "w", id), side(json, "h", id)});
    m_file.boxes.push_back(id);
  }

  void addEdge(const element& json) {
    const std::string id = text(json, "id", "edge " + std::to_string(m_file.edges.size() + 1));
    std::string kind = text(json, "kind", "edge " + id);
    m_file.graph.edges.push_back({end(json, "src", id), end(json, "dst", id), kindOf(kind)});
    m_file.edges.push_back({id, std::move(kind)});
  }

  const std::string& m_name;
  GraphFile m_file;
  std::unordered_map<std::string, std::size_t> m_boxes;
};

void appendField(std::string& out, std::string_view key, std::string_view text) {
  out.append(",\"").append(key).append("\":");
  automation::appendJsonString(out, text);
}

void appendField(std::string& out, std::string_view key, double number) {
  out.append(",\"").append(key).append("\":");
  automation::appendJsonNumber(out, number);
}

void appendPoints(std::string& out, const std::vector<layout::Point>& points) {
  out += ",\"points\":[";
  for (const layout::Point& point : points) {
    if (&point != points.data()) out += ',';
    out += '[';
    automation::appendJsonNumber(out, point.x);
    out += ',';
    automation::appendJsonNumber(out, point.y);
    out += ']';
  }
  out += ']';
}

}  // namespace

GraphFile GraphFile::read(const std::string& name, std::string_view json) {
  return Reader(name).read(json);
}

std::string drawingAsJson(const GraphFile& file, const layout::Drawing& drawing) {
  std::string out = "{\"nodes\":[";
  for (std::size_t i = 0; i < file.boxes.size(); ++i) {
    out += i > 0 ? ",\n{\"id\":" : "\n{\"id\":";
    automation::appendJsonString(out, file.boxes[i]);
    appendField(out, "x", drawing.positions[i].x);
    appendField(out, "y", drawing.positions[i].y);
    appendField(out, "w", file.graph.boxes[i].width);
    appendField(out, "h", file.graph.boxes[i].height);
    out += '}';
  }
  out += "\n],\"edges\":[";
  for (std::size_t i = 0; i < file.edges.size(); ++i) {
    const layout::Edge& edge = file.graph.edges[i];
    out += i > 0 ? ",\n{\"id\":" : "\n{\"id\":";
    automation::appendJsonString(out, file.edges[i].id);
    appendField(out, "kind", file.edges[i].kind);
    appendField(out, "src", file.boxes[edge.source]);
    appendField(out, "dst", file.boxes[edge.target]);
    appendPoints(out, drawing.lines[i]);
    out += '}';
  }
  return out += "\n]}\n";
}

}  // namespace brisel::app
