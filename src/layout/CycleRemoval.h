#pragma once

#include "layout/LayerGraph.h"

namespace brisel::layout {

/// Turns arcs round so that no circle remains.
/// Pre: inheritance runs from the super to the sub class; no arc joins a node to itself.
/// Post: the arcs are acyclic; those turned round are marked; an inheritance arc is turned round
/// only when it lies on a circle of inheritance alone.
/// Eades, Lin, Smyth: A fast and effective heuristic for the feedback arc set problem, 1993, run
/// under the order that inheritance sets.
void removeCycles(Component& component);

/// Turns inheritance arcs round so that no circle of inheritance alone remains.
void breakInheritanceCycles(Component& component);

}  // namespace brisel::layout
