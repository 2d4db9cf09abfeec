#pragma once

#include <vector>

#include "platform/Geometry.h"

/// Where the texts of lines could stand: pure functions over courses and boxes (candidates beside
/// and on edges after Kakoulis, Tollis: On the complexity of the edge label placement problem,
/// 2001).
namespace brisel::layout {

/// Distances in the unit of the diagram.
struct LabelGaps {
  double box = 60;     ///< from the text of an end to its box
  double head = 135;   ///< from the text of an end to its line, where that has arrow or diamond
  double line = 60;    ///< the same elsewhere
  double beside = 30;  ///< from a name to the line that it stands beside
  double clear = 20;   ///< to the solids that a label keeps away from
  double hair = 8;     ///< to lines, so that they are seen
};

/// So many strikes are a crowd, in which it does not matter how many there are.
inline constexpr int kCrowd = 12;

struct LabelCandidate {
  platform::Rect area;
  bool onLine = false;  ///< lies on its own line, of which a piece is covered
  /// So many strikes had better be suffered than this place be taken: it is far from where a person
  /// looks for the text. Those of a crowd: any line had better be covered.
  int reluctance = 0;
};

/// For the name of a line, near the share of its length, from 0 to 1, first: on the line, on either
/// side of it, then further along. Lines of several pieces are labelled at the middle of a piece
/// that is longer than the label.
[[nodiscard]] std::vector<LabelCandidate> nameCandidates(const std::vector<platform::Point>& course,
                                                         platform::Size size, double share,
                                                         const LabelGaps& gaps);

/// For the text of the end at the first point of the course, which lies on the border of the box:
/// on the side that the line turns away from, then on the other one, then further along the line
/// and on it, where lines beside it leave no room.
[[nodiscard]] std::vector<LabelCandidate> endCandidates(const platform::Rect& box,
                                                        const std::vector<platform::Point>& course,
                                                        platform::Size size, bool hasHead,
                                                        const LabelGaps& gaps);

}  // namespace brisel::layout
