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
  bool isFar = false;   ///< so far away that lines had better be covered than this be taken
};

/// What is in the way of a label. Both may stop counting when they have counted enough.
struct LabelSurroundings {
  /// How much of boxes and of labels placed before the area lies over, in the unit's square.
  std::function<double(const platform::Rect& area, double enough)> covered;
  /// How badly pieces of other lines run through the area: the sum of their strikes.
  std::function<int(const platform::Rect& area, int enough)> crossed;
};

/// How badly a piece of a line runs through the area of a label: 0 if it does not, 1 across it, 3
/// along its words.
[[nodiscard]] int strike(platform::Point from, platform::Point to, const platform::Rect& area);

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

/// The first candidate that covers no solid and no line but the one that it lies on; where there is
/// none, the one among those that cover no solid, and are not far if there is one, that is
/// struck by lines least; else the one that covers least of solids, then is struck least. Strikes
/// of a dozen are a crowd, in which it does not matter how many there are. Adds areas around all
/// candidates that were looked at: what changes outside of them changes nothing. Pre: at least one
/// candidate.
[[nodiscard]] platform::Rect bestOf(const std::vector<LabelCandidate>& candidates,
                                    const std::vector<platform::Point>& course,
                                    const LabelSurroundings& around, const LabelGaps& gaps,
                                    std::vector<platform::Rect>& examined);

}  // namespace brisel::layout
