#include "layout/ConnectorRouting.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "layout/ConnectorNudging.h"
#include "layout/ConnectorSearch.h"
#include "layout/ConnectorSpreading.h"
#include "layout/LayerGraph.h"
#include "layout/Progress.h"
#include "layout/RoutingField.h"
#include "layout/Segments.h"
#include "layout/StraightLines.h"

namespace brisel::layout {
namespace {

/// Lines that found no room are led anew so often.
constexpr int kMostLedAgain = 2;
/// Of a course that enters a box or slants; one for each piece that it lies on.
constexpr int kWorstFault = 100;
/// Courses that were rounded to whole units stay as good as they were; in tracks.
constexpr double kRounding = 0.01;
/// Lines so many tracks apart are not drawn as one.
constexpr double kJustApart = 0.125;

/// Between the sides that face each other, with two bends or none.
std::vector<Point> plainCourse(const Rect& source, const Rect& target, double corner) {
  const double apartX = std::max(target.left - source.right(), source.left - target.right());
  const double apartY = std::max(target.top - source.bottom(), source.top - target.bottom());
  const Way way = apartX > apartY ? Way::level : Way::upright;
  const Range a = alongOf(source, way);
  const Range b = alongOf(target, way);
  const double from = a.high <= b.low ? a.high : a.low;
  const double to = a.high <= b.low ? b.low : b.high;
  const Range one = portRange(acrossOf(source, way), corner);
  const Range other = portRange(acrossOf(target, way), corner);
  if (one.overlaps(other)) {
    const double level = (std::max(one.low, other.low) + std::min(one.high, other.high)) / 2;
    return {pointAt(from, level, way), pointAt(to, level, way)};
  }
  const double middle = (from + to) / 2;
  const double start = (one.low + one.high) / 2;
  const double end = (other.low + other.high) / 2;
  return {pointAt(from, start, way), pointAt(middle, start, way), pointAt(middle, end, way),
          pointAt(to, end, way)};
}

double manhattan(const Connector& c) {
  const Point way = c.target.rect.center() - c.source.rect.center();
  return std::abs(way.x) + std::abs(way.y);
}

}  // namespace

class ConnectorRouter::Job {
 public:
  Job(const Surroundings& surroundings, const Spacing& spacing, Point corner)
      : m_measures(spacing.node),
        m_field(surroundings, m_measures),
        m_corner(corner),
        m_search(m_field, m_measures, corner),
        m_nudging(m_field, m_measures, corner),
        m_spreading(m_field, m_measures, m_nudging) {}

  void stand(const StandingBox& box) { m_field.addBox(box); }
  void stand(const StandingLine& line) { m_field.addLine(line); }

  /// How much there is to be said against a course, which is to keep so many tracks apart.
  int faults(const StandingLine& line, double tracks = kLeastTrack - kRounding) {
    if (line.course.size() < 2) return kWorstFault;
    int sum = 0;
    for (std::size_t i = 1; i < line.course.size(); ++i) {
      sum += faults(line.connector, line.course[i - 1], line.course[i], tracks * m_measures.track);
    }
    return sum;
  }

  std::vector<std::vector<Point>> route(const std::vector<Connector>& connectors,
                                        const std::vector<std::vector<Point>>& former,
                                        const GoOn& goOn) {
    Progress progress(goOn, 2 * static_cast<double>(connectors.size()));
    std::vector<int> order(connectors.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
      return manhattan(connectors[a]) < manhattan(connectors[b]);
    });
    std::vector<int> numbers(connectors.size(), -1);
    for (std::size_t i = 0; i < former.size(); ++i) {
      const StandingLine line{connectors[i], former[i]};
      if (faults(line) < kWorstFault) numbers[i] = m_field.addLine(line);
    }
    std::erase_if(order, [&](int i) { return numbers[i] >= 0; });
    m_search.expect(connectors.size());
    // Those that were led first know nothing of the later ones: what these disturb is led again.
    for (int round = 0; round < 2; ++round) {
      for (const int i : order) {
        progress.step();
        progress.done(1);
        if (round > 0 && !isDisturbed(numbers[i])) continue;
        if (numbers[i] >= 0) m_field.removeLine(numbers[i]);
        numbers[i] = m_field.addLine({connectors[i], lead(connectors[i])});
      }
    }
    setApart(numbers, progress);
    std::vector<std::vector<Point>> courses;
    for (const int number : numbers) courses.push_back(m_field.line(number).course);
    return courses;
  }

 private:
  int faults(const Connector& connector, Point a, Point b, double apart) {
    constexpr double kStraight = 1;
    const bool isLevel = std::abs(a.y - b.y) < kStraight;
    if (!isLevel && std::abs(a.x - b.x) >= kStraight) return kWorstFault;
    const Way way = isLevel ? Way::level : Way::upright;
    const Range span = between(along(a, way), along(b, way));
    if (!(span.high - span.low < kFarthestLed * m_measures.tile)) return kWorstFault;
    int sum = 0;
    const double level = across(a, way);
    m_field.eachBox(rectOf(span, {level, level}, way), [&](const StandingBox& box) {
      if (crosses(a, b, box.rect.grownBy(-kStraight))) sum += kWorstFault;
    });
    m_field.eachPiece(rectOf(span, Range{level, level}.grownBy(apart), way), way,
                      [&](const RoutingField::Piece& piece) {
                        if (!piece.span.overlaps(span.grownBy(-kStraight))) return;
                        const Connector& other = m_field.line(piece.line).connector;
                        sum += other.id != connector.id && !areRelated(other, connector);
                      });
    return sum;
  }

  /// Spreads the lines, and leads those anew for which there is no room where they run.
  void setApart(std::vector<int>& numbers, Progress& progress) {
    for (int round = 0;; ++round) {
      m_spreading.spread(numbers);
      std::vector<std::size_t> crowded;
      for (std::size_t i = 0; i < numbers.size(); ++i) {
        const StandingLine& line = m_field.line(numbers[i]);
        if (!line.course.empty() && !isFar(line.connector) && faults(line) > 0) {
          crowded.push_back(i);
        }
      }
      if (crowded.empty() || round == kMostLedAgain) return;
      m_search.keepOff(true);
      for (const std::size_t i : crowded) {
        progress.step();
        const StandingLine line = m_field.line(numbers[i]);
        if (faults(line) > 0) improve(numbers[i], lead(line.connector), 1);
      }
      m_search.keepOff(false);
    }
  }

  /// The line takes the course if that has at least so many faults fewer.
  void improve(int& number, const std::vector<Point>& course, int fewer) {
    const StandingLine old = m_field.line(number);
    const StandingLine changed{old.connector, course};
    if (course.empty() || faults(changed) + fewer > faults(old)) return;
    m_field.removeLine(number);
    number = m_field.addLine(changed);
  }

  [[nodiscard]] bool isFar(const Connector& connector) const {
    const Rect all = connector.source.rect.united(connector.target.rect);
    return !(all.width + all.height < kFarthestLed * m_measures.tile);
  }

  /// Whether a line that came later crosses the line, or runs beside it too near.
  bool isDisturbed(int number) {
    if (isFar(m_field.line(number).connector)) return false;
    const auto& course = m_field.line(number).course;
    bool isDisturbed = false;
    for (std::size_t i = 1; i < course.size() && !isDisturbed; ++i) {
      const Point a = course[i - 1];
      const Point b = course[i];
      const Way way = std::abs(a.y - b.y) < 1 ? Way::level : Way::upright;
      const Range span = between(along(a, way), along(b, way));
      const Range side = between(across(a, way), across(b, way));
      const auto take = [&](const RoutingField::Piece& piece) {
        isDisturbed |= piece.line > number && !areRelated(m_field.line(piece.line).connector,
                                                          m_field.line(number).connector);
      };
      m_field.eachPiece(rectOf(span, side, way), crossWay(way), take);
      m_field.eachPiece(rectOf(span, side.grownBy(m_measures.track / 2), way), way, take);
    }
    return isDisturbed;
  }

  std::vector<Point> lead(const Connector& connector) {
    const Rect& source = connector.source.rect;
    const Rect& target = connector.target.rect;
    if (connector.isLoop() || source.intersects(target)) return {};
    if (isFar(connector)) {
      return plainCourse(source, target, m_measures.corner);
    }
    const Trunk trunk = trunkOf(connector);
    auto course = m_search.find(connector, trunk);
    if (!course) return plainCourse(source, target, m_measures.corner);
    m_nudging.shift(connector, trunk, *course);
    return *course;
  }

  /// The relatives that stand at the target meet it at one point, or at the first of several.
  Trunk trunkOf(const Connector& connector) {
    Trunk trunk;
    if (connector.kind < EdgeKind::generalization) return trunk;
    std::vector<int> relatives;
    for (const Way way : {Way::upright, Way::level}) {
      m_field.eachPiece(connector.target.rect, way, [&](const RoutingField::Piece& piece) {
        if (areRelated(m_field.line(piece.line).connector, connector)) {
          relatives.push_back(piece.line);
        }
      });
    }
    std::sort(relatives.begin(), relatives.end());
    relatives.erase(std::unique(relatives.begin(), relatives.end()), relatives.end());
    for (const int relative : relatives) {
      const auto& course = m_field.line(relative).course;
      if (course.size() < 2) continue;
      if (!trunk.port) trunk.port = course.back();
      const Point apart = *trunk.port - course.back();
      if (std::abs(apart.x) + std::abs(apart.y) > 1) continue;
      for (std::size_t i = std::max<std::size_t>(1, course.size() - 2); i < course.size(); ++i) {
        const bool isLevel = std::abs(course[i].y - course[i - 1].y) < 1;
        if (!isLevel && std::abs(course[i].x - course[i - 1].x) >= 1) continue;
        const Way way = isLevel ? Way::level : Way::upright;
        trunk.pieces.push_back({way, across(course[i], way),
                                between(along(course[i - 1], way), along(course[i], way))});
      }
    }
    return trunk;
  }

  RoutingMeasures m_measures;
  RoutingField m_field;
  Point m_corner;
  ConnectorSearch m_search;
  ConnectorNudging m_nudging;
  ConnectorSpreading m_spreading;
};

ConnectorRouter::ConnectorRouter(const Surroundings& surroundings, const Spacing& spacing,
                                 Point corner)
    : m_job(std::make_unique<Job>(surroundings, checked(spacing), corner)) {}

ConnectorRouter::~ConnectorRouter() = default;

void ConnectorRouter::stand(const StandingBox& box) { m_job->stand(box); }
void ConnectorRouter::stand(const StandingLine& line) { m_job->stand(line); }
bool ConnectorRouter::isSound(const StandingLine& line) { return m_job->faults(line) == 0; }
bool ConnectorRouter::mayStay(const StandingLine& line) {
  return m_job->faults(line, kJustApart) == 0;
}

std::vector<std::vector<Point>> ConnectorRouter::route(
    const std::vector<Connector>& connectors, const GoOn& goOn,
    const std::vector<std::vector<Point>>& former) {
  return m_job->route(connectors, former, goOn);
}

}  // namespace brisel::layout
