#include <array>

#include "Commands.h"
#include "Diagram.h"
#include "Files.h"
#include "GraphFile.h"
#include "Models.h"
#include "UsageError.h"
#include "canvas/Scene.h"
#include "platform/Text.h"

namespace brisel::app {

namespace {

constexpr std::string_view kHierarchy = "%HIERARCHY%";
constexpr std::array<std::string_view, 4> kStyles = {kHierarchy, "MATRIX", "RANDOM", "SPRING"};

/// Gaps of plain graphs, in their own unit: pixels.
constexpr layout::Spacing kPixels{30, 50, 1.6};
constexpr std::uint64_t kSeed = 1;

/// The code as the canvas knows it; case and percent signs do not matter on a command line.
std::string_view styleOf(const std::string& given) {
  for (const std::string_view style : kStyles) {
    const bool isIt = platform::equalsIgnoringCase(given, style) ||
                      platform::equalsIgnoringCase("%" + given + "%", style);
    if (isIt) return style;
  }
  throw UsageError("unknown layout style \"" + given + "\": %HIERARCHY%, MATRIX, RANDOM or SPRING");
}

layout::Drawing draw(const layout::Graph& graph, std::string_view style) {
  if (style == "MATRIX") return layout::matrix(graph, kPixels);
  if (style == "RANDOM") return layout::random(graph, kPixels, kSeed);
  if (style == "SPRING") return layout::spring(graph, kPixels);
  return layout::layered(graph, kPixels);
}

std::string_view kindOf(const platform::MetaRepository& model, const std::string& key) {
  if (model.MetaNodes(platform::types::kGeneralization)->find(key)) return "generalization";
  if (model.MetaNodes(platform::types::kAggregation)->find(key)) return "aggregation";
  return "association";
}

/// What stands on the canvas, in twips.
std::string sceneAsJson(const canvas::Scene& scene, const platform::MetaRepository& model) {
  GraphFile file;
  layout::Drawing drawing;
  std::unordered_map<std::string, std::size_t> boxes;
  for (const canvas::Node& node : scene.nodes()) {
    boxes.emplace(node.key(), file.boxes.size());
    file.boxes.push_back(node.key());
    file.graph.boxes.push_back(node.bounds().size());
    drawing.positions.push_back(node.bounds().topLeft());
  }
  for (const canvas::Link& link : scene.links()) {
    file.edges.push_back({link.key(), std::string(kindOf(model, link.key()))});
    file.graph.edges.push_back(
        {boxes.at(link.source()->key()), boxes.at(link.target()->key()), {}});
    drawing.lines.emplace_back(link.points().begin(), link.points().end());
  }
  return drawingAsJson(file, drawing);
}

std::string layOutModel(const LayoutOptions& options, std::string_view style) {
  Program program;
  const auto model = readModelFiles({options.file}, program.registry());
  Diagram diagram(program, *model.repository);
  // Drawing a model for the first time has laid it out already.
  if (!diagram.isFresh() || style != kHierarchy) diagram.layout(style);
  return sceneAsJson(diagram.scene(), *model.repository);
}

std::string layOutGraph(const LayoutOptions& options, std::string_view style) {
  const GraphFile file = GraphFile::read(options.file, readBytes(options.file));
  return drawingAsJson(file, draw(file.graph, style));
}

}  // namespace

void layOut(const LayoutOptions& options) {
  const std::string_view style = styleOf(options.style);
  const bool isGraph = endingOf(options.file) == ".json";
  writeBytes(options.output, isGraph ? layOutGraph(options, style) : layOutModel(options, style));
}

}  // namespace brisel::app
