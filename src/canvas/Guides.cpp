#include "canvas/Guides.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "canvas/Detail.h"
#include "canvas/DiagramControl.h"
#include "canvas/Painter.h"
#include "canvas/Palette.h"

namespace brisel::canvas {

using platform::Point;
using platform::Rect;

namespace {

/// Lines of whole twips and middles between them count as one.
constexpr double kSameLine = 1;

/// A box seen along one axis.
struct Span {
  double low, high;
  [[nodiscard]] double middle() const { return (low + high) / 2; }
};

Span across(const Rect& box) { return {box.left, box.right()}; }
Span down(const Rect& box) { return {box.top, box.bottom()}; }

/// A line of the one box and one of the other that are aligned when the distance is 0.
struct Pair {
  double line;
  double distance;
};

/// Calls with each pair of lines that may be aligned.
template <class Visit>
void forEachPair(Span box, Span other, AlignedLines lines, const Visit& visit) {
  if (lines.low) {
    visit(Pair{box.low, other.low - box.low});
    visit(Pair{box.low, other.high - box.low});
  }
  if (lines.middle) visit(Pair{box.middle(), other.middle() - box.middle()});
  if (lines.high) {
    visit(Pair{box.high, other.low - box.high});
    visit(Pair{box.high, other.high - box.high});
  }
}

/// The shortest way to an alignment; of two of the same length the one to the left or upwards.
double nearest(Span box, const std::vector<Rect>& neighbours, Span (*axis)(const Rect&),
               AlignedLines lines, double reach) {
  std::optional<double> best;
  for (const Rect& neighbour : neighbours) {
    forEachPair(box, axis(neighbour), lines, [&](Pair pair) {
      const double way = pair.distance;
      if (std::abs(way) > reach) return;
      const bool nearer = !best || std::abs(way) < std::abs(*best) ||
                          (std::abs(way) == std::abs(*best) && way < *best);
      if (nearer) best = way;
    });
  }
  return best.value_or(0);
}

/// One line for each edge or middle of the box that lies on that of a neighbour, along the other
/// axis from the first to the last of them.
struct Shown {
  double line;
  Span reach;
};
std::vector<Shown> aligned(Span box, Span boxReach, const std::vector<Rect>& neighbours,
                           Span (*axis)(const Rect&), Span (*otherAxis)(const Rect&),
                           AlignedLines lines) {
  std::vector<Shown> shown;
  for (const Rect& neighbour : neighbours) {
    const Span reach = otherAxis(neighbour);
    forEachPair(box, axis(neighbour), lines, [&](Pair pair) {
      if (std::abs(pair.distance) >= kSameLine) return;
      auto found = std::find_if(shown.begin(), shown.end(),
                                [&](const Shown& other) { return other.line == pair.line; });
      if (found == shown.end()) found = shown.insert(found, {pair.line, boxReach});
      found->reach.low = std::min(found->reach.low, reach.low);
      found->reach.high = std::max(found->reach.high, reach.high);
    });
  }
  return shown;
}

}  // namespace

void Guides::findNeighbours(const Node* resized) {
  m_neighbours.clear();
  const Scene& scene = m_control.scene();
  const Viewport& view = m_control.viewport();
  const Detail detail{.pixelsPerTwip = view.pixelsPerTwip()};
  if (detail.pixels(scene.textFont().lineHeight()) < Detail::kRowPixels) return;
  const Rect seen = view.visible();
  std::vector<Item*> found;
  scene.collect(seen, found);
  for (const Item* item : found) {
    if (item->isLink() || (resized ? item == resized : item->isSelected())) continue;
    const Rect box = static_cast<const Node*>(item)->bounds();
    if (box.intersects(seen)) m_neighbours.push_back(box);
  }
}

Point Guides::snap(const Rect& box, AlignedLines acrossLines, AlignedLines downLines,
                   const Node* resized) {
  findNeighbours(resized);
  const double reach = m_control.viewport().toTwips(kSnapPixels);
  return {nearest(across(box), m_neighbours, across, acrossLines, reach),
          nearest(down(box), m_neighbours, down, downLines, reach)};
}

void Guides::show(const Rect& box, AlignedLines acrossLines, AlignedLines downLines) {
  hide();
  for (const auto& [x, reach] :
       aligned(across(box), down(box), m_neighbours, across, down, acrossLines)) {
    m_lines.push_back({{x, reach.low}, {x, reach.high}});
  }
  for (const auto& [y, reach] :
       aligned(down(box), across(box), m_neighbours, down, across, downLines)) {
    m_lines.push_back({{reach.low, y}, {reach.high, y}});
  }
  damage();
}

void Guides::hide() {
  damage();
  m_lines.clear();
}

void Guides::damage() const {
  for (const Line& line : m_lines) {
    m_control.scene().damageOverlay(
        {line.from.x, line.from.y, line.to.x - line.from.x, line.to.y - line.from.y});
  }
}

void Guides::paint(Painter& painter, double scale) const {
  for (const Line& line : m_lines) {
    painter.drawPolyline(std::array{line.from, line.to},
                         {.color = palette::kGuide, .width = 1 / scale});
  }
}

}  // namespace brisel::canvas
