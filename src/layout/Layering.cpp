#include "layout/Layering.h"

#include "layout/NetworkSimplex.h"

namespace brisel::layout {

std::vector<int> layersOf(const Component& component) {
  constexpr int kInheritanceWeight = 1;
  constexpr std::int64_t kBudget = 300'000'000;
  std::vector<Constraint> constraints;
  constraints.reserve(component.arcs.size());
  for (const Arc& arc : component.arcs) {
    constraints.push_back({arc.from, arc.to, 1, arc.inheritance ? kInheritanceWeight : 1});
  }
  return networkSimplex(component.nodes(), constraints, kBudget);
}

}  // namespace brisel::layout
