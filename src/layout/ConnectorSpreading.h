#pragma once

#include <cstddef>
#include <vector>

#include "layout/ConnectorNudging.h"
#include "layout/RoutingField.h"

namespace brisel::layout {

/// Moves pieces of lines that run too near to each other apart, all of a passage together: each
/// makes room for the next, as far as boxes and what stands leave any.
///
/// Within a passage the pieces keep their order, those on one place that in which they cross least;
/// then separation constraints are met by a pass forth over the lower bounds and one back over the
/// upper ones: Dwyer, Marriott, Stuckey: Fast node overlap removal, 2005.
class ConnectorSpreading {
 public:
  ConnectorSpreading(RoutingField& field, const RoutingMeasures& measures,
                     ConnectorNudging& nudging)
      : m_field(field), m_measures(measures), m_nudging(nudging) {}

  /// `numbers` are those of lines of the field, which get others as they change. All other lines
  /// stand.
  void spread(std::vector<int>& numbers);

 private:
  struct Mover {
    std::size_t line;  ///< in `numbers`
    std::size_t piece;
    double level;
    Range span;
    Range limits{0, 0};
  };
  /// A piece of a line that keeps its place.
  struct Fixed {
    std::size_t mover;  ///< beside it
    double at;
  };
  using Passage = std::vector<std::size_t>;  ///< of movers

  void spread(std::vector<int>& numbers, Way way);
  void collect(Way way);
  [[nodiscard]] bool isOnTrunk(const StandingLine& line, const Mover& mover, Way way);
  [[nodiscard]] std::vector<Passage> passages() const;
  [[nodiscard]] bool areApart(const Mover& a, const Mover& b) const;
  void limit(const Passage& passage, Way way);
  void findFixed(const Passage& passage, Way way);
  [[nodiscard]] bool isCrowded(const Passage& passage) const;
  void sort(Passage& passage, Way way) const;
  [[nodiscard]] bool goesBefore(const Mover& a, const Mover& b, Way way) const;
  [[nodiscard]] bool separate(const Passage& passage, double apart);
  [[nodiscard]] const StandingLine& lineOf(const Mover& mover) const {
    return m_field.line((*m_numbers)[mover.line]);
  }

  RoutingField& m_field;
  const RoutingMeasures& m_measures;
  ConnectorNudging& m_nudging;
  const std::vector<int>* m_numbers = nullptr;
  std::vector<Mover> m_movers;  ///< by level
  std::vector<Fixed> m_fixed;
};

}  // namespace brisel::layout
