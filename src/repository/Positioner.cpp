#include "repository/Positioner.h"

#include <cmath>
#include <limits>

#include "platform/Error.h"
#include "platform/MemberTableOf.h"
#include "repository/Association.h"
#include "repository/CLSRepository.h"

namespace brisel::repository {

std::int32_t storedTwips(double coordinate) {
  const double rounded = std::nearbyint(static_cast<double>(static_cast<float>(coordinate)));
  if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
        rounded <= std::numeric_limits<std::int32_t>::max())) {
    throw platform::Error(platform::ErrorNumber::overflow, "Overflow: a point lies too far out");
  }
  return static_cast<std::int32_t>(rounded);
}

void Positioner::SavePoints(Association& association, CLSRepository& repository) {
  const auto points = association.link()->ExtraPoints();
  const std::int64_t count = points->Count();
  for (std::int64_t i = 1; i <= count; ++i) {
    if (i > std::numeric_limits<std::int32_t>::max()) {
      throw platform::Error(platform::ErrorNumber::overflow, "Overflow: too many points");
    }
    const std::string_view kind = i == 1 ? "START" : i == count ? "END" : "MIDDLE";
    const platform::Point point = points->at(static_cast<std::size_t>(i - 1));
    repository.MakeGeomPoint(*association.clsObject(), storedTwips(point.x), storedTwips(point.y),
                             kind, static_cast<std::int32_t>(i));
  }
}

void Positioner::LoadPoint(Association& association, platform::Node& point) {
  if (point.GetProperty("kindOfPosition") != platform::Value("MIDDLE")) return;
  association.link()->ExtraPoints()->Add(point.GetProperty("X").number(),
                                         point.GetProperty("Y").number());
}

const platform::MemberTable& Positioner::memberTable() const {
  static const platform::MemberTable kTable = platform::MemberTableOf<Positioner>()
                                                  .method("SavePoints", &Positioner::SavePoints)
                                                  .method("LoadPoint", &Positioner::LoadPoint)
                                                  .build();
  return kTable;
}

}  // namespace brisel::repository
