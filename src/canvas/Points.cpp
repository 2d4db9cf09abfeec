#include "canvas/Points.h"

#include <cmath>
#include <string>

#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::canvas {

using platform::Error;
using platform::ErrorNumber;
using platform::MemberTable;
using platform::MemberTableOf;
using platform::Object;
using platform::Point;
using platform::Ref;

const MemberTable& PointObject::memberTable() const {
  static const MemberTable kTable = MemberTableOf<PointObject>()
                                        .property("x", &PointObject::x)
                                        .property("y", &PointObject::y)
                                        .build();
  return kTable;
}

void LinkPoints::Add(double x, double y) { m_link->insertBend(m_link->bends().size(), {x, y}); }

void LinkPoints::Clear() { m_link->bends({}); }

Point LinkPoints::at(std::size_t index) const {
  const auto& points = m_link->points();
  if (index >= points.size()) {
    throw Error(ErrorNumber::subscript, "No point " + std::to_string(index) + " in a link of " +
                                            std::to_string(points.size()));
  }
  return points[index];
}

std::int64_t LinkPoints::Count() const {
  return static_cast<std::int64_t>(m_link->points().size());
}

Ref<Object> LinkPoints::Item(std::int64_t index) const {
  if (index < 1 || index > Count()) {
    throw Error(ErrorNumber::subscript, "No item " + std::to_string(index) +
                                            " in a collection of " + std::to_string(Count()));
  }
  return platform::make<PointObject>(at(static_cast<std::size_t>(index - 1)));
}

void LinkPoints::Remove(std::string_view, bool) {}

void LinkPoints::advance(Cursor& cursor) const {
  const std::size_t next = cursor.element ? cursor.position + 1 : 0;
  const auto& points = m_link->points();
  cursor.position = next;
  cursor.element = nullptr;
  if (next >= points.size()) return;
  if (m_walked.size() <= next) m_walked.resize(next + 1);
  Ref<PointObject>& element = m_walked[next];
  if (!element || element->point() != points[next]) {
    element = platform::make<PointObject>(points[next]);
  }
  cursor.element = element.get();
}

const MemberTable& LinkPoints::memberTable() const {
  static const MemberTable kTable =
      MemberTableOf<LinkPoints>(Collection::memberTable()).method("Add", &LinkPoints::Add).build();
  return kTable;
}

}  // namespace brisel::canvas
