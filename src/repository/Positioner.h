#pragma once

#include <cstdint>

#include "platform/Repository.h"

namespace brisel::repository {

class Association;
class CLSRepository;

/// The coordinate as it is stored: of single precision, rounded to whole twips, ties to even. An
/// Error (overflow) for one that no 32-bit integer holds.
[[nodiscard]] std::int32_t storedTwips(double coordinate);

/// Turns the points of a drawn line into "GeomPoint" nodes and back. Without state.
class Positioner : public platform::Object {
 public:
  /// One node a point, in order, with its rank from 1.
  void SavePoints(Association& association, CLSRepository& repository);
  /// Adds the point as a bend when it is a middle one; the ends follow from the boxes.
  void LoadPoint(Association& association, platform::Node& point);

  [[nodiscard]] const platform::MemberTable& memberTable() const override;
};

}  // namespace brisel::repository
