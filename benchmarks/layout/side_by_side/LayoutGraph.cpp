// layout_graph GRAPH.json DRAWING.json [RUNS]: lays a graph out in layers, RUNS times (1), and
// writes the drawing with the median of the processor times it took. Both forms are those of the
// scorer.

#include <algorithm>
#include <ctime>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

#include <simdjson.h>

#include "layout/Layout.h"

namespace {

using namespace brisel::layout;

struct NamedGraph {
  Graph graph;
  std::vector<std::string> nodes;
  std::vector<std::string> edges;
};

EdgeKind kindOf(std::string_view name) {
  if (name == "generalization") return EdgeKind::generalization;
  if (name == "realization") return EdgeKind::realization;
  return name == "aggregation" || name == "composition" ? EdgeKind::aggregation
                                                        : EdgeKind::association;
}

NamedGraph read(const std::string& path) {
  simdjson::dom::parser parser;
  const simdjson::dom::element root = parser.load(path);
  NamedGraph result;
  std::unordered_map<std::string, std::size_t> numbers;
  for (const simdjson::dom::element node : root["nodes"].get_array()) {
    result.nodes.emplace_back(node["id"].get_string().value());
    numbers[result.nodes.back()] = result.graph.boxes.size();
    result.graph.boxes.push_back({node["w"].get_double(), node["h"].get_double()});
  }
  const auto number = [&](std::string_view id) { return numbers.at(std::string(id)); };
  for (const simdjson::dom::element edge : root["edges"].get_array()) {
    const std::size_t source = number(edge["src"].get_string());
    const std::size_t target = number(edge["dst"].get_string());
    if (source == target) continue;
    result.edges.emplace_back(edge["id"].get_string().value());
    result.graph.edges.push_back({source, target, kindOf(edge["kind"].get_string())});
  }
  return result;
}

void write(const NamedGraph& named, const Drawing& drawing, double seconds, std::ostream& out) {
  out.precision(12);
  out << "{\"layout_s\": " << seconds << ", \"nodes\": [";
  for (std::size_t i = 0; i < named.nodes.size(); ++i) {
    const Point at = drawing.positions[i];
    const Size size = named.graph.boxes[i];
    out << (i > 0 ? ",\n" : "\n") << "{\"id\": \"" << named.nodes[i] << "\", \"x\": " << at.x
        << ", \"y\": " << at.y << ", \"w\": " << size.width << ", \"h\": " << size.height << '}';
  }
  out << "],\n\"edges\": [";
  for (std::size_t i = 0; i < named.edges.size(); ++i) {
    out << (i > 0 ? ",\n" : "\n") << "{\"id\": \"" << named.edges[i] << "\", \"points\": [";
    const auto& line = drawing.lines[i];
    for (std::size_t k = 0; k < line.size(); ++k) {
      out << (k > 0 ? ", " : "") << '[' << line[k].x << ", " << line[k].y << ']';
    }
    out << "]}";
  }
  out << "]}\n";
}

int run(const std::string& from, const std::string& to, int runs) {
  const NamedGraph named = read(from);
  const Spacing spacing{30, 50, 1.6};
  std::vector<double> seconds;
  Drawing drawing;
  for (int i = 0; i < runs; ++i) {
    const std::clock_t start = std::clock();
    Drawing now = layered(named.graph, spacing);
    seconds.push_back(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    if (i > 0 && (now.positions != drawing.positions || now.lines != drawing.lines)) {
      throw std::runtime_error("two layouts of one graph differ");
    }
    drawing = std::move(now);
  }
  std::sort(seconds.begin(), seconds.end());
  std::ofstream out(to);
  write(named, drawing, seconds[seconds.size() / 2], out);
  if (!out.flush()) throw std::runtime_error("cannot write " + to);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::cerr << "layout_graph GRAPH.json DRAWING.json [RUNS]\n";
    return 2;
  }
  try {
    return run(argv[1], argv[2], argc > 3 ? std::max(1, std::stoi(argv[3])) : 1);
  } catch (const std::exception& error) {
    std::cerr << "layout_graph: " << error.what() << '\n';
    return 1;
  }
}
