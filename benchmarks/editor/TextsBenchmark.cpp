// Texts of lines: what placing them adds to the first layout of a large model, and what they cover
// in models from elsewhere. The folder of these is named by BRISEL_MODELS.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "canvas/DiagramControl.h"
#include "canvas/Link.h"
#include "canvas/Node.h"
#include "canvas/Scene.h"
#include "component/ModelFile.h"
#include "editor/Workbench.h"
#include "layout/Segments.h"

namespace brisel::benchmarks {
namespace {

namespace types = platform::types;
using platform::Point;
using platform::Rect;

void withoutTexts(const GeneratedModel& model) {
  for (const std::string_view type : {types::kAssociation, types::kAggregation}) {
    const auto all = model.repository->MetaNodes(type)->extension();
    for (std::int64_t i = 1; i <= all->Count(); ++i) {
      const auto node = platform::as<platform::Node>(all->Item(i));
      node->name("");
      for (const char* property :
           {"SourceRoleName", "SourceMultiplicity", "TargetRolename", "TargetMultiplicity"}) {
        node->set(property, std::string());
      }
    }
  }
}

/// Two thirds of the lines have a name, a role and a multiplicity at each end; or none.
void FirstLayout(benchmark::State& state) {
  const auto shape = ModelShape{.classes = static_cast<int>(state.range(0))};
  for (auto _ : state) {
    state.PauseTiming();
    const GeneratedModel model = generateModel(shape);
    if (state.range(1) == 0) withoutTexts(model);
    platform::ComponentRegistry registry(platform::make<component::AutomaticShell>());
    component::registerSuite(registry);
    const auto editor = platform::make<editor::CLSEditor>(registry);
    editor->Repository(model.repository.get());
    state.ResumeTiming();
    editor->Populate();
    state.PauseTiming();
    if (editor->diagram()->getAllNodes()->Count() != state.range(0)) {
      state.SkipWithError("not every class was drawn");
    }
    editor->terminate();
    state.ResumeTiming();
  }
}
BENCHMARK(FirstLayout)
    ->ArgNames({"classes", "texts"})
    ->ArgsProduct({{1000, 3000, 10000}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

/// What the texts of a picture lie over, each text counted once for each kind of thing.
struct Covered {
  int texts = 0;
  int boxes = 0;
  int others = 0;  ///< texts
  int heads = 0;
  int lines = 0;  ///< of others
  int names = 0;  ///< of these texts
  int own = 0;    ///< texts of ends on their own line, where a bundle leaves no room
};

struct Text {
  const canvas::Link* link;
  Rect area;
  bool isName;
};

/// Around the arrow or diamond at the first of the points.
Rect headOf(int arrow, Point tip, Point next) {
  if (arrow == 0 || tip == next) return {};
  const bool isDiamond = arrow >= 13;
  const double length = isDiamond ? canvas::kDiamondLength : canvas::kArrowLength;
  const double half = isDiamond ? canvas::kDiamondHalfWidth : canvas::kArrowHalfWidth;
  const Point way = next - tip;
  const Point along = way * (1 / std::hypot(way.x, way.y));
  const Point across{-along.y * half, along.x * half};
  const Point base = tip + along * length;
  const auto x = std::minmax({tip.x, (base + across).x, (base - across).x});
  const auto y = std::minmax({tip.y, (base + across).y, (base - across).y});
  return {x.first, y.first, x.second - x.first, y.second - y.first};
}

Covered coveredBy(const canvas::Scene& scene) {
  std::vector<Text> texts;
  std::vector<Rect> heads;
  for (const canvas::Link& link : scene.links()) {
    texts.push_back({&link, link.beginTextArea(), false});
    texts.push_back({&link, link.endTextArea(), false});
    texts.push_back({&link, link.labelArea(), true});
    const auto& points = link.points();
    heads.push_back(headOf(link.beginArrow(), points[0], points[1]));
    heads.push_back(headOf(link.endArrow(), points.back(), points[points.size() - 2]));
  }
  std::erase_if(texts, [](const Text& text) { return text.area.isEmpty(); });
  const auto over = [](const auto& all, const Rect& area) {
    return std::any_of(all.begin(), all.end(),
                       [&](const Rect& one) { return !one.isEmpty() && one.intersects(area); });
  };
  const auto isCrossed = [](const canvas::Link& line, const Rect& area) {
    return layout::runsThrough(line.points(), area);
  };
  const auto isOverOthers = [&](const Text& text) {
    for (const canvas::Link& line : scene.links()) {
      if (&line != text.link && isCrossed(line, text.area)) return true;
    }
    return false;
  };
  std::vector<Rect> boxes;
  for (const canvas::Node& node : scene.nodes()) boxes.push_back(node.bounds());
  Covered covered;
  for (const Text& text : texts) {
    ++covered.texts;
    covered.boxes += over(boxes, text.area);
    covered.heads += over(heads, text.area);
    covered.others += std::any_of(texts.begin(), texts.end(), [&](const Text& other) {
      return &other != &text && other.area.intersects(text.area);
    });
    const bool isOver = isOverOthers(text);
    covered.lines += isOver;
    covered.names += isOver && text.isName;
    covered.own += !text.isName && isCrossed(*text.link, text.area);
  }
  return covered;
}

/// Times the placing of all texts anew.
void TextsOfModel(benchmark::State& state, const std::string& path) {
  platform::ComponentRegistry registry(platform::make<component::AutomaticShell>());
  component::registerSuite(registry);
  component::ModelFile model;
  try {
    model = component::readModel(registry, {path});
  } catch (const platform::Error& error) {
    return state.SkipWithError(error.what());
  }
  const auto editor = platform::make<editor::CLSEditor>(registry);
  editor->Repository(model.repository.get());
  editor->Populate();
  const auto control = platform::as<canvas::DiagramControl>(editor->diagram());
  const Covered covered = coveredBy(control->scene());
  double size = 10;
  for (auto _ : state) {
    size = size > 10 ? 10 : 11;
    control->SectionFont("Courier New", size);
  }
  state.counters = {{"texts", covered.texts},      {"over box", covered.boxes},
                    {"over text", covered.others}, {"over head", covered.heads},
                    {"over line", covered.lines},  {"names of these", covered.names},
                    {"over own", covered.own}};
  editor->terminate();
}

const bool kRegistered = [] {
  const char* const folder = std::getenv("BRISEL_MODELS");
  if (!folder) return false;
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    constexpr std::array kKnown = {".uml", ".xmi", ".ecore", ".xml", ".dim"};
    const std::string ending = entry.path().extension().string();
    if (std::find(kKnown.begin(), kKnown.end(), ending) != kKnown.end()) {
      files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  for (const auto& file : files) {
    benchmark::RegisterBenchmark(("TextsOfModel/" + file.filename().string()).c_str(), TextsOfModel,
                                 file.string())
        ->Unit(benchmark::kMillisecond);
  }
  return true;
}();

}  // namespace
}  // namespace brisel::benchmarks
