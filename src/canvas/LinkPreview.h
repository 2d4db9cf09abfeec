#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "canvas/Link.h"
#include "canvas/Node.h"
#include "platform/Geometry.h"
#include "platform/Ref.h"

namespace brisel::canvas {

class DiagramControl;
class Painter;

/// The line that a gesture would leave behind, and the box under the pointer that says by its look
/// whether the line may end there. Tells the scene what it changes on the canvas.
class LinkPreview {
 public:
  /// Of a new link, with the decorations that the control gives to those.
  explicit LinkPreview(DiagramControl& control);
  /// Of a link of which an end is dragged.
  LinkPreview(DiagramControl& control, const Link& link);

  /// What runs from a box to a box as the finished line would; the box is highlighted.
  void showBetween(const Node& source, const Node& target, const Node& highlighted);
  /// What has one end at a box and the other at the pointer. `refused`, if given, is the box under
  /// the pointer that the line must not end at.
  void showLoose(const Node& fixed, bool fixedIsSource, platform::Point pointer,
                 const Node* refused);
  void hide();

  void paint(Painter& painter, double scale) const;

 private:
  void show(std::vector<platform::Point> points, const platform::Rect& box, bool refused);
  [[nodiscard]] platform::Rect extent() const;
  [[nodiscard]] Rank rankBetween(const Node& source, const Node& target) const;

  DiagramControl& m_control;
  const Link* m_link = nullptr;  ///< not looked into once it may have gone
  std::vector<platform::Point> m_bends;
  int m_beginArrow;
  int m_endArrow;
  bool m_dashed = false;
  std::vector<platform::Point> m_points;  ///< none while nothing is shown
  platform::Rect m_box;                   ///< highlighted; empty for none
  bool m_refused = false;
};

/// Why a person must not join the two; empty where they may. A rule that fails refuses, too: its
/// words are the reason. It may end the gesture that asks, and take items away.
[[nodiscard]] std::string refusalOf(const DiagramControl& control, std::string_view link,
                                    const Node& source, const Node& target);

}  // namespace brisel::canvas
