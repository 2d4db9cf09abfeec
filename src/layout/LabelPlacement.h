#pragma once

#include <functional>
#include <vector>

#include "platform/Geometry.h"

/// Where the texts of lines stand: pure functions over courses and boxes. A label takes the first
/// of its candidates, from the best to the worst, that nothing is in the way of (the greedy rule of
/// Christensen, Marks, Shieber: An empirical study of algorithms for point-feature label placement,
/// 1995; candidates beside and on edges after Kakoulis, Tollis: On the complexity of the edge label
/// placement problem, 2001). Labels that are placed one after the other in a fixed order therefore
/// stand where the picture alone puts them, whatever was moved before.
namespace brisel::layout {

/// Distances in the unit of the diagram.
struct LabelGaps {
  double box = 60;     ///< from the text of an end to its box
  double line = 135;   ///< from the text of an end to its line: room for arrow and diamond
  double beside = 30;  ///< from a name to the line that it stands beside
  double clear = 20;   ///< to whatever else a label keeps away from
};

struct LabelCandidate {
  platform::Rect area;
  bool onLine = false;  ///< lies on its own line, of which a piece is covered
};

/// What is in the way of a label.
struct LabelObstacles {
  struct Piece {
    platform::Point from;
    platform::Point to;
  };
  std::vector<platform::Rect> solid;  ///< boxes, and labels placed before
  std::vector<Piece> pieces;          ///< of other lines, which a label had better not cover
};

/// Adds what lies in the area, and perhaps more that lies near.
using LabelSurroundings = std::function<void(const platform::Rect& area, LabelObstacles& found)>;

/// For the name of a line, near the share of its length, from 0 to 1, first: on the line, on either
/// side of it, then further along. Lines of several pieces are labelled at the middle of a piece
/// that is longer than the label.
[[nodiscard]] std::vector<LabelCandidate> nameCandidates(const std::vector<platform::Point>& course,
                                                         platform::Size size, double share,
                                                         const LabelGaps& gaps);

/// For the text of the end at the first point of the course, which lies on the border of the box:
/// on the side that the line turns away from, then on the other one, then further along the line.
[[nodiscard]] std::vector<LabelCandidate> endCandidates(const platform::Rect& box,
                                                        const std::vector<platform::Point>& course,
                                                        platform::Size size, const LabelGaps& gaps);

struct PlacedLabel {
  platform::Rect area;
  /// Around all candidates that were looked at: what changes outside of it changes nothing.
  platform::Rect examined;
};

/// The first candidate over no solid and no line but the one that it lies on; where there is none,
/// the one with the least area over solids, then over the fewest lines. For the sake of lines alone
/// only the best eight are looked at; where they crowd so that the first candidate would cover more
/// than six of others they do not count. Pre: at least one.
[[nodiscard]] PlacedLabel bestOf(const std::vector<LabelCandidate>& candidates,
                                 const std::vector<platform::Point>& course,
                                 const LabelSurroundings& around, const LabelGaps& gaps);

}  // namespace brisel::layout
