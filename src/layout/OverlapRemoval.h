#pragma once

#include <vector>

#include "layout/Progress.h"
#include "platform/Geometry.h"

namespace brisel::layout {

/// Moves boxes apart until every two are at least "gap" apart, keeping roughly where they stand.
/// Pre: finite positions of the top left corners. Post: no two boxes overlap.
/// Pushes overlapping neighbours apart as springs would, then moves what is still in the way to the
/// nearest free place; where that would take too long, sweeps once from the left instead.
void removeOverlaps(const std::vector<platform::Size>& boxes, double gap,
                    std::vector<platform::Point>& positions, const Step& step = {});

}  // namespace brisel::layout
