#pragma once

#include <string>
#include <vector>

#include "canvas/Painter.h"

namespace brisel::test {

/// Keeps what was painted, kind by kind, in the order of painting.
class RecordingPainter : public canvas::Painter {
 public:
  struct Fill {
    platform::Rect rect;
    canvas::Color color;
  };
  struct Line {
    std::vector<platform::Point> points;
    canvas::Pen pen;
  };
  struct Polygon {
    std::vector<platform::Point> points;
    canvas::Color fill;
  };
  struct Text {
    platform::Point baseline;
    std::string text;
    canvas::TextStyle style;
  };

  void fillRect(const platform::Rect& rect, canvas::Color color) override {
    fills.push_back({rect, color});
  }
  void drawFrame(const platform::Rect& rect, const canvas::Pen&) override {
    frames.push_back(rect);
  }
  void drawPolyline(std::span<const platform::Point> points, const canvas::Pen& pen) override {
    lines.push_back({{points.begin(), points.end()}, pen});
  }
  void drawPolygon(std::span<const platform::Point> points, canvas::Color fill,
                   const canvas::Pen&) override {
    polygons.push_back({{points.begin(), points.end()}, fill});
  }
  void drawText(platform::Point baseline, std::string_view text,
                const canvas::TextStyle& style) override {
    texts.push_back({baseline, std::string(text), style});
  }

  std::vector<Fill> fills;
  std::vector<platform::Rect> frames;
  std::vector<Line> lines;
  std::vector<Polygon> polygons;
  std::vector<Text> texts;
};

}  // namespace brisel::test
