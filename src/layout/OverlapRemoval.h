#pragma once

#include <vector>

#include "layout/Progress.h"
#include "platform/Geometry.h"

namespace brisel::layout {

/// Moves boxes apart until every two are at least "gap" apart, keeping roughly where they stand.
/// Pre: finite positions of the top left corners. Post: no two boxes overlap.
/// Pushes overlapping neighbours apart as springs would, then sweeps once from the left to end
/// what little overlap remains.
void removeOverlaps(const std::vector<platform::Size>& boxes, double gap,
                    std::vector<platform::Point>& positions, const Step& step = {});

}  // namespace brisel::layout
