#include "layout/Sketch.h"

#include <algorithm>
#include <atomic>
#include <future>
#include <system_error>
#include <thread>
#include <tuple>
#include <utility>

#include "layout/CrossingReduction.h"
#include "layout/CycleRemoval.h"
#include "layout/GridPlacement.h"
#include "layout/Layering.h"
#include "layout/LineCrossings.h"
#include "layout/LongLines.h"
#include "layout/RowPlacement.h"
#include "layout/RowSearch.h"
#include "layout/Sifting.h"
#include "layout/TrunkSifting.h"
#include "layout/WideLayers.h"

namespace brisel::layout {
namespace {

/// Components of so few nodes are drawn in several ways.
constexpr int kFew = 500;
/// A drawing so many times wider or narrower than wanted can be borne.
constexpr double kOffShape = 3;
/// The shape of so small a component matters little to the whole.
constexpr int kShapeless = 20;
constexpr int kMostCores = 4;
/// Shares of the time at which the tries begin and end.
constexpr double kSweepsShare = 0.15;
constexpr double kPolishShare = 0.9;
constexpr std::int64_t kSiftingWork = 800'000'000;

/// What a part of the work from one share to another tells.
Step part(const Step& step, double from, double to) {
  if (!step) return {};
  return [&step, from, to](double share) { step(from + (to - from) * std::min(1.0, share)); };
}

bool isTree(const Component& component) { return count(component.arcs) == component.nodes() - 1; }

Sketch draw(Component component, LayeredGraph graph, const Spacing& spacing) {
  std::vector<double> width = component.width;
  width.resize(graph.layer.size(), 0);
  Sketch result;
  // In a tree what is above stands in the middle over what is below.
  const double up = isTree(component) ? 0.2 : 1;
  result.x = placeInRows(graph, width, {spacing.node, spacing.node / 2, up});
  result.routing = routeLines(component, graph, result.x, spacing);
  for (int n = 0; n < component.nodes(); ++n) {
    result.width = std::max(result.width, result.x[n] + component.width[n] / 2);
  }
  for (const auto& line : result.routing.lines) {
    for (const Point p : line) result.width = std::max(result.width, p.x);
  }
  if (component.nodes() > kShapeless) {
    const double aspect = result.width / result.routing.bottom / spacing.aspect;
    result.offShape = std::max({1.0, aspect / kOffShape, 1 / aspect / kOffShape});
  }
  result.crossings = lineCrossings(result.routing.lines);
  result.length = lineLength(result.routing.lines);
  result.component = std::move(component);
  result.graph = std::move(graph);
  return result;
}

/// So much work is worth it where each crossing is seen.
std::int64_t trunkWork(const Component& component) {
  return component.nodes() <= kFew ? 20'000'000 : 0;
}

/// So much search for better rows.
std::int64_t searchWork(const Component& component, bool isSeen) {
  constexpr int kMostNodes = 900;
  constexpr int kMostArcs = 3000;
  constexpr std::int64_t kMostWork = 150'000'000;
  const std::int64_t nodes = component.nodes();
  if (!isSeen || nodes > kMostNodes || count(component.arcs) > kMostArcs) return 0;
  return std::min({kMostWork, 500'000 * nodes, 10'000 * nodes * nodes});
}

/// What both ways to a first order have in common.
Sketch finish(Component component, LayeredGraph graph, const Spacing& spacing, bool isSeen,
              std::uint64_t seed, const Step& step) {
  searchRows(component, graph, spacing, seed, searchWork(component, isSeen), step);
  siftTrunks(component, graph, trunkWork(component));
  return draw(std::move(component), std::move(graph), spacing);
}

/// Layers that keep lines short, split where they are too wide, ordered by sweeps.
Sketch sketchBySweeps(Component component, const Spacing& spacing, bool isSeen, const Step& step) {
  removeCycles(component);
  std::vector<int> layer = layersOf(component);
  splitWideLayers(component, spacing, layer);
  LayeredGraph graph = withBends(component, layer);
  reduceCrossings(graph, part(step, 0, 0.5));
  return finish(std::move(component), std::move(graph), spacing, isSeen, 1, part(step, 0.5, 1));
}

/// Layers and a first order from a placement in a grid. Pre: inheritance is acyclic.
Sketch sketchByPlacement(Component component, const Spacing& spacing, bool isSeen,
                         std::uint64_t seed, const Step& step) {
  const Grid grid = placeOnGrid(component, spacing, seed, part(step, 0, 0.5));
  const std::vector<int> layer = layersFrom(component, grid);
  std::vector<double> place;
  for (int n = 0; n < component.nodes(); ++n) place.push_back(grid.of(n).column);
  turnDown(component, layer);
  LayeredGraph graph = withBends(component, layer, place);
  orderRows(component, place, graph);
  siftRows(graph, kSiftingWork, part(step, 0.5, 0.7));
  return finish(std::move(component), std::move(graph), spacing, isSeen, seed,
                part(step, 0.7, 0.9));
}

/// Exchanges neighbours of a row while the drawing gets better by that.
void polish(Sketch& sketch, const Spacing& spacing, const Step& step) {
  constexpr int kMostNodes = 100'000;
  int drawn = 0;
  for (bool any = true; any && sketch.crossings > 0;) {
    any = false;
    for (int row = 0; row < count(sketch.graph.rows); ++row) {
      for (int i = 0; i + 1 < count(sketch.graph.rows[row]) && drawn < kMostNodes; ++i) {
        LayeredGraph graph = sketch.graph;
        std::swap(graph.rows[row][i], graph.rows[row][i + 1]);
        graph.numberRow(row);
        drawn += graph.nodes();
        if (step) step(static_cast<double>(drawn) / kMostNodes);
        Sketch next = draw(sketch.component, std::move(graph), spacing);
        if (!next.isBetterThan(sketch)) continue;
        sketch = std::move(next);
        any = true;
      }
    }
  }
}

/// Tries beside the one that tells how far it is. Those that are not wanted any more end soon.
class Others {
 public:
  ~Others() { m_isOver = true; }

  template <class Try>
  void start(Try&& sketchTry) {
    const auto run = [this, sketchTry] {
      return sketchTry([this](double) {
        if (m_isOver) throw Cancelled();
      });
    };
    try {
      m_sketches.push_back(std::async(std::launch::async, run));
    } catch (const std::system_error&) {  // no thread to be had: when it is asked for
      m_sketches.push_back(std::async(std::launch::deferred, run));
    }
  }
  [[nodiscard]] std::vector<std::future<Sketch>>& sketches() { return m_sketches; }

 private:
  std::atomic<bool> m_isOver = false;
  std::vector<std::future<Sketch>> m_sketches;
};

}  // namespace

bool Sketch::isBetterThan(const Sketch& other) const {
  if ((offShape > 1) == (other.offShape > 1)) {
    return std::tuple(crossings, length) < std::tuple(other.crossings, other.length);
  }
  // It may be off its shape where it is better by more than that.
  const auto price = [](const Sketch& sketch) {
    const double crossed = static_cast<double>(sketch.crossings) + 0.1 * sketch.component.nodes();
    return crossed * sketch.length * sketch.offShape;
  };
  return price(*this) < price(other);
}

Sketch bestSketch(const Component& component, const Spacing& spacing, bool isSeen,
                  const Step& step) {
  const int nodes = component.nodes();
  const int arcs = count(component.arcs);
  const bool isSmall = isSeen && nodes <= kFew && arcs <= 3 * kFew;
  Component acyclic = component;
  breakInheritanceCycles(acyclic);
  if (!isSmall && !isTree(component)) {
    return sketchByPlacement(std::move(acyclic), spacing, isSeen, 1, step);
  }
  Sketch best = sketchBySweeps(component, spacing, isSeen, part(step, 0, kSweepsShare));
  if (isTree(component) && best.offShape == 1 && best.crossings == 0) return best;

  const auto offer = [&](Sketch next) {
    if (next.isBetterThan(best)) best = std::move(next);
  };
  if (!isSmall) {
    offer(sketchByPlacement(std::move(acyclic), spacing, isSeen, 1, step));
    return best;
  }
  constexpr int kFewestTries = 4;
  constexpr int kMostTries = 8;
  const int tries = std::clamp(1500 / std::max(nodes, arcs), kFewestTries, kMostTries);
  const auto sketchTry = [&](int k, const Step& told) {
    return sketchByPlacement(acyclic, spacing, isSeen, static_cast<std::uint64_t>(k) + 1, told);
  };
  const auto shareOf = [tries](int k) {
    return kSweepsShare + (kPolishShare - kSweepsShare) * k / tries;
  };
  // Several at a time; which one is taken does not depend on how many.
  const int cores =
      std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, kMostCores);
  for (int k = 0; k < tries; k += cores) {
    const int end = std::min(k + cores, tries);
    Others others;
    for (int other = k + 1; other < end; ++other) {
      others.start([&, other](const Step& told) { return sketchTry(other, told); });
    }
    offer(sketchTry(k, part(step, shareOf(k), shareOf(end))));
    for (auto& other : others.sketches()) offer(other.get());
  }
  polish(best, spacing, part(step, kPolishShare, 1));
  return best;
}

}  // namespace brisel::layout
