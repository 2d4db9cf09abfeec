#pragma once

#include <vector>

#include "canvas/Link.h"
#include "platform/Diagram.h"

namespace brisel::canvas {

/// A place on the canvas as an object, in twips: a picture of the moment when it was asked for.
class PointObject : public platform::Object {
 public:
  explicit PointObject(platform::Point point) : m_point(point) {}

  [[nodiscard]] double x() const { return m_point.x; }
  [[nodiscard]] double y() const { return m_point.y; }
  [[nodiscard]] platform::Point point() const { return m_point; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  platform::Point m_point;
};

/// The live collection of a link's points. Its elements are PointObjects.
class LinkPoints : public platform::DiagramPoints {
 public:
  explicit LinkPoints(platform::Ref<Link> link) : m_link(std::move(link)) {}

  void Add(double x, double y) override;
  void Clear() override;
  [[nodiscard]] platform::Point at(std::size_t index) const override;
  [[nodiscard]] std::int64_t Count() const override;
  [[nodiscard]] platform::Ref<platform::Object> Item(std::int64_t index) const override;
  /// Points have no identifiers: does nothing.
  void Remove(std::string_view identifier, bool flag) override;
  void advance(Cursor& cursor) const override;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  platform::Ref<Link> m_link;
  mutable std::vector<platform::Ref<PointObject>> m_walked;  ///< keeps the elements of walks alive
};

}  // namespace brisel::canvas
