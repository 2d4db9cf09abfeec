#pragma once

#include <functional>
#include <vector>

#include "layout/LabelPlacement.h"
#include "platform/Geometry.h"

/// Which of its candidates a label takes: the one that costs least, the earlier of two that cost
/// the same (the greedy rule of Christensen, Marks, Shieber: An empirical study of algorithms for
/// point-feature label placement, 1995). Labels that are placed one after the other in a fixed
/// order therefore stand where the picture alone puts them, whatever was moved before.
namespace brisel::layout {

/// What is in the way of a label: solids, which are boxes and labels placed before, and lines.
struct LabelSurroundings {
  /// How much of solids the area lies over, in the unit's square. May stop counting at enough.
  std::function<double(const platform::Rect& area, double enough)> covered;
  /// Around all solids that the area lies over; empty where there is none.
  std::function<platform::Rect(const platform::Rect& area)> inTheWay;
  /// How badly pieces of other lines run through the area: the sum of their strikes. May stop
  /// counting at enough.
  std::function<int(const platform::Rect& area, int enough)> crossed;
};

/// How badly a piece of a line runs through the area of a label: 0 if it does not, 1 across it, 3
/// along its words.
[[nodiscard]] int strike(platform::Point from, platform::Point to, const platform::Rect& area);

/// Among the candidates that cover no solid the one with the least of strikes and reluctance, where
/// a crowd of strikes counts as kCrowd. Where all cover solids, one of the first pushed past what
/// is in its way, if that is not far; else the one that covers least of solids, then is struck
/// least. Adds areas around all places that were looked at: what changes outside of them changes
/// nothing. Pre: at least one candidate.
[[nodiscard]] platform::Rect bestOf(const std::vector<LabelCandidate>& candidates,
                                    const std::vector<platform::Point>& course,
                                    const LabelSurroundings& around, const LabelGaps& gaps,
                                    std::vector<platform::Rect>& examined);

}  // namespace brisel::layout
