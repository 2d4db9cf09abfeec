#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "layout/ConnectorSearch.h"
#include "layout/RoutingField.h"

namespace brisel::layout {

/// Shifts the pieces of a line that was led around boxes to where they look best: off the pieces of
/// other lines, a gap away from boxes, between two bends in the middle, with few crossings. Pieces
/// on the line's own trunk stay.
class ConnectorNudging {
 public:
  ConnectorNudging(RoutingField& field, const RoutingMeasures& measures, Point corner)
      : m_field(field), m_measures(measures), m_corner(corner) {}

  /// Pre: the course has right angles, runs from border to border and is not in the field.
  void shift(const Connector& connector, const Trunk& trunk, std::vector<Point>& course);
  /// Within which a piece keeps its turns, its sides and clear of boxes. Pre: as of `shift`, but
  /// that the course may be in the field.
  [[nodiscard]] Range limitsOf(const Connector& connector, const std::vector<Point>& course,
                               std::size_t piece);

 private:
  /// Where a piece may lie.
  struct Room {
    Range limits;  ///< beyond which it would enter a box or turn its neighbours round
    double wish;
  };

  [[nodiscard]] std::optional<double> placeOf(std::size_t i);
  [[nodiscard]] Range spanOf(std::size_t i) const;
  [[nodiscard]] Way wayOf(std::size_t i) const;
  [[nodiscard]] double levelOf(std::size_t i) const;
  [[nodiscard]] Room roomOf(std::size_t i);
  void limitByBoxes(std::size_t i, Range& boxes);
  [[nodiscard]] std::vector<RoutingField::Piece> neighboursOf(std::size_t i, const Range& limits);
  [[nodiscard]] std::optional<double> best(std::size_t i, const Room& room,
                                           const std::vector<Range>& forbidden);
  [[nodiscard]] int crossings(std::size_t i, double level);
  [[nodiscard]] int crossings(Point a, Point b);

  RoutingField& m_field;
  const RoutingMeasures& m_measures;
  Point m_corner;
  const Connector* m_connector = nullptr;
  const Trunk* m_trunk = nullptr;
  const std::vector<Point>* m_course = nullptr;
};

}  // namespace brisel::layout
