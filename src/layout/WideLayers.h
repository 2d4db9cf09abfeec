#pragma once

#include <vector>

#include "layout/LayerGraph.h"
#include "layout/Layout.h"

namespace brisel::layout {

/// Spreads layers that are too wide for the wanted shape over several.
/// Pre: "layer" is a layering of the component.
/// Post: it still is; the widest layer by the height of all comes near the wanted width by height,
/// unless the layers were narrower before. Nodes with more lines upwards go to the upper parts of
/// their layer, sub classes of one class evenly to all parts.
void splitWideLayers(const Component& component, const Spacing& spacing, std::vector<int>& layer);

}  // namespace brisel::layout
