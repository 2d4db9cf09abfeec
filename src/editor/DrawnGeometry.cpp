#include "editor/DrawnGeometry.h"

namespace brisel::editor {

using platform::each;
using platform::Point;

namespace {

std::vector<Point> pointsOf(const platform::DiagramLink& line) {
  const auto drawn = line.ExtraPoints();
  std::vector<Point> points;
  for (std::size_t i = 0; i < static_cast<std::size_t>(drawn->Count()); ++i) {
    points.push_back(drawn->at(i));
  }
  return points;
}

}  // namespace

DrawnGeometry::DrawnGeometry(platform::DiagramControl& diagram) {
  for (auto& box : each<platform::DiagramNode>(diagram.getAllNodes())) {
    m_boxes.push_back({box.key(), box.bounds()});
  }
  for (auto& line : each<platform::DiagramLink>(diagram.getAllLinks())) {
    m_lines.push_back({line.key(), pointsOf(line)});
  }
}

void DrawnGeometry::restore(platform::DiagramControl& diagram) const {
  for (const Box& kept : m_boxes) {
    if (const auto box = diagram.getNode(kept.key)) box->bounds(kept.bounds);
  }
  for (const Line& kept : m_lines) {
    const auto line = diagram.getLink(kept.key);
    // A line that runs as it did by itself goes on following its boxes.
    if (!line || pointsOf(*line) == kept.points) continue;
    const auto points = line->ExtraPoints();
    points->Clear();
    for (std::size_t i = 1; i + 1 < kept.points.size(); ++i) {
      points->Add(kept.points[i].x, kept.points[i].y);
    }
  }
}

}  // namespace brisel::editor
