#pragma once

#include "platform/Repository.h"

namespace brisel::repository {

class Association;
class CLSRepository;

/// Turns the points of a drawn line into "GeomPoint" nodes and back. Without state.
class Positioner : public platform::Object {
 public:
  /// One node a point, in order, with its rank from 1. Coordinates are rounded to whole twips,
  /// ties to even; an Error (overflow) for one that no 32-bit integer holds.
  void SavePoints(Association& association, CLSRepository& repository);
  /// Adds the point as a bend when it is a middle one; the ends follow from the boxes.
  void LoadPoint(Association& association, platform::Node& point);

  [[nodiscard]] const platform::MemberTable& memberTable() const override;
};

}  // namespace brisel::repository
