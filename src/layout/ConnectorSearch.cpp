#include "layout/ConnectorSearch.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "layout/LayerGraph.h"

namespace brisel::layout {
namespace {

/// A search ends unsuccessfully after so many.
constexpr int kMostSteps = 3000;
/// And all of them together.
constexpr int kMostStepsOfAll = 500'000;
/// After so many it looks for a way rather than for the best one; earlier when many lines are led.
constexpr double kPatience = 400;
constexpr double kLeastPatience = 30;
constexpr double kPatienceOfAll = 3000;
/// A ray is followed over so many tiles.
constexpr int kLongestRay = 400;
/// What a piece on another one costs, in bends; most are shifted apart later.
constexpr double kOnAnother = 0.5;
/// And for a line that found no room among them.
constexpr double kOnAnotherAgain = 3;
/// What a line pays for its end at a side that does not suit it, in bends.
constexpr double kUnfit = 0.75;
/// And for an end beside the trunk that it could join.
constexpr double kOffTrunk = 1.5;
/// What a crossing with a line from a box to itself counts; to pass between them takes two.
constexpr double kAcrossLoop = 4;
/// A piece on the trunk looks better than one beside it.
constexpr double kOnTrunk = -0.2;

}  // namespace

bool Trunk::covers(Way way, double at, const Range& span) const {
  return std::any_of(pieces.begin(), pieces.end(), [&](const Piece& piece) {
    return piece.way == way && std::abs(piece.at - at) < 1 && piece.span.overlaps(span);
  });
}

Range portRange(const Range& side, double corner) {
  const double margin = std::min(corner, (side.high - side.low) / 4);
  return {side.low + margin, side.high - margin};
}

std::size_t ConnectorSearch::KeyHash::operator()(const Key& key) const {
  const std::hash<double> hash;
  return (hash(key.x) * 31 + hash(key.y)) * 31 + static_cast<std::size_t>(key.heading);
}

void ConnectorSearch::expect(std::size_t lines) {
  const double share = kPatienceOfAll / static_cast<double>(lines + 1);
  m_patience = std::clamp(share, kLeastPatience, kPatience);
}

std::optional<std::vector<Point>> ConnectorSearch::find(const Connector& connector,
                                                        const Trunk& trunk) {
  m_connector = &connector;
  m_trunk = &trunk;
  if (m_stepsOfAll > kMostStepsOfAll) return {};
  const Rect whole = connector.source.rect.united(connector.target.rect);
  for (const double room : {10.0, 60.0}) {
    m_window = whole.grownBy(room * 4 * m_measures.gap +
                             0.25 * (room / 10) * std::max(whole.width, whole.height));
    const double left = std::max(m_window.left, std::min(m_corner.x, whole.left));
    const double top = std::max(m_window.top, std::min(m_corner.y, whole.top));
    m_window = {left, top, m_window.right() - left, m_window.bottom() - top};
    m_states.clear();
    m_least.clear();
    m_open = {};
    m_steps = 0;
    start();
    while (!m_open.empty() && m_steps < kMostSteps) {
      const int number = m_open.top().state;
      m_open.pop();
      const State& state = m_states[number];
      if (state.isGoal) return courseTo(number);
      if (m_least.at({state.at.x, state.at.y, state.heading}) < state.cost) continue;
      ++m_steps;
      ++m_stepsOfAll;
      expand(number);
    }
    if (m_steps >= kMostSteps) break;
  }
  return {};
}

/// What speaks against an end at a side: what else ends there, and a wrong side of a super or sub
/// class.
double ConnectorSearch::sideCost(const StandingBox& box, Heading side, bool isTarget) {
  const Way way = crossWay(wayOf(side));  // along the side
  const Range extent = alongOf(box.rect, way);
  const double level = side % 2 == 0 ? acrossOf(box.rect, way).low : acrossOf(box.rect, way).high;
  double ends = 0;
  m_field.eachPiece(rectOf(extent, {level, level}, way), crossWay(way),
                    [&](const RoutingField::Piece& piece) {
                      const bool isEnd = piece.span.low == level || piece.span.high == level;
                      if (isEnd && !areRelated(m_field.line(piece.line).connector, *m_connector)) {
                        ++ends;
                      }
                    });
  const double room =
      1 + std::floor(std::max(0.0, extent.high - extent.low - 2 * m_measures.corner) /
                     m_measures.track);
  // When a side is full, ends are set nearer to each other, and more so at the others.
  const double least = room / kLeastTrack;
  double bends = std::min(ends / room, 1.0) + (ends >= room ? 1 : 0) +
                 4 * std::max(0.0, ends - room) / (least - room) + (ends >= least ? 8 : 0);
  if (m_connector->kind >= EdgeKind::generalization) {
    constexpr int kTop = 2;
    const int best = isTarget ? kTop + 1 : kTop;
    if (side < kTop) bends += kUnfit;
    if (side == (best ^ 1)) bends += 2 * kUnfit;
  }
  return bends * m_measures.bend;
}

/// What a piece at a box costs that is too short for an arrow.
double ConnectorSearch::shortCost(double length) const {
  return length >= m_measures.stub ? 0 : m_measures.bend * (1 - length / m_measures.stub);
}

void ConnectorSearch::start() {
  const Rect& source = m_connector->source.rect;
  const Rect& target = m_connector->target.rect;
  for (Heading side = 0; side < 4; ++side) {
    m_targetCost[static_cast<std::size_t>(side)] = sideCost(m_connector->target, side, true);
    const double cost = sideCost(m_connector->source, side, false);
    const Way way = crossWay(wayOf(side));
    const Range ports = portRange(alongOf(source, way), m_measures.corner);
    const Range there = portRange(alongOf(target, way), m_measures.corner);
    std::vector<double> places{(ports.low + ports.high) / 2};
    const auto add = [&](double place) {
      if (place >= ports.low && place <= ports.high &&
          std::find(places.begin(), places.end(), place) == places.end()) {
        places.push_back(place);
      }
    };
    if (ports.overlaps(there)) {
      add((std::max(ports.low, there.low) + std::min(ports.high, there.high)) / 2);
    }
    add((there.low + there.high) / 2);
    if (m_trunk->port) add(along(*m_trunk->port, way));
    const double level = side % 2 == 0 ? acrossOf(source, way).low : acrossOf(source, way).high;
    for (const double place : places) {
      const Point at = pointAt(place, level, way);
      open({at, side, cost, kNone}, rest(at, side));
    }
  }
}

void ConnectorSearch::open(const State& state, double rest) {
  if (!state.isGoal) {
    const Key key{state.at.x, state.at.y, state.heading};
    const auto [least, isNew] = m_least.try_emplace(key, state.cost);
    if (!isNew && least->second <= state.cost) return;
    least->second = state.cost;
  }
  const double weight = 1.02 + m_steps / m_patience;
  m_open.push({state.cost + weight * rest, count(m_states)});
  m_states.push_back(state);
}

/// At most what is left: the distance to the target and the bends that the way there has at least.
double ConnectorSearch::rest(Point at, Heading heading) const {
  const Way way = wayOf(heading);
  const Range ahead = alongOf(m_connector->target.rect, way);
  const Range beside = acrossOf(m_connector->target.rect, way);
  const auto off = [](double value, const Range& range) {
    return std::max({0.0, range.low - value, value - range.high});
  };
  const double a = along(at, way);
  const double offAlong = off(a, ahead);
  const double offAcross = off(across(at, way), beside);
  const bool isBehind = signOf(heading) > 0 ? a > ahead.high : a < ahead.low;
  int bends = 0;
  if (isBehind) {
    bends = offAcross > 0 ? 2 : 3;
  } else if (offAcross > 0) {
    bends = 1;
  }
  return offAlong + offAcross + bends * m_measures.bend;
}

void ConnectorSearch::expand(int number) {
  const State state = m_states[number];
  const Way way = wayOf(state.heading);
  const double sign = signOf(state.heading);
  Ray ray;
  follow(state, ray);
  const auto before = [&](const auto& a, const auto& b) { return sign * a < sign * b; };
  std::sort(ray.turns.begin(), ray.turns.end(), before);
  ray.turns.erase(std::unique(ray.turns.begin(), ray.turns.end()), ray.turns.end());
  std::sort(ray.costs.begin(), ray.costs.end(),
            [&](const Ray::Cost& a, const Ray::Cost& b) { return sign * a.at < sign * b.at; });
  if (ray.hitsTarget) {
    const double length = std::abs(ray.end - along(state.at, way));
    const Heading side = state.heading ^ 1;
    double cost = state.cost + length + m_targetCost[static_cast<std::size_t>(side)];
    for (const Ray::Cost& c : ray.costs) {
      if (sign * c.at < sign * ray.end) cost += c.cost;
    }
    cost += shortCost(length);
    const Point end = pointAt(ray.end, across(state.at, way), way);
    if (m_trunk->port) {
      const Point apart = *m_trunk->port - end;
      if (std::abs(apart.x) + std::abs(apart.y) > 1) cost += kOffTrunk * m_measures.bend;
    }
    open({end, state.heading, cost, number, true}, 0);
  }
  pushTurns(number, ray);
}

void ConnectorSearch::pushTurns(int number, const Ray& ray) {
  const State state = m_states[number];
  const Way way = wayOf(state.heading);
  const double sign = signOf(state.heading);
  const double from = along(state.at, way);
  auto cost = ray.costs.begin();
  double paid = 0;
  for (const double turn : ray.turns) {
    if (sign * turn < sign * from + m_measures.least / 2) continue;
    if (sign * turn > sign * ray.end) break;
    for (; cost != ray.costs.end() && sign * cost->at < sign * turn; ++cost) paid += cost->cost;
    const double length = std::abs(turn - from);
    double sum = state.cost + paid + length + m_measures.bend;
    if (state.parent == kNone) sum += shortCost(length);
    const Point at = pointAt(turn, across(state.at, way), way);
    const Heading first = way == Way::level ? 2 : 0;
    open({at, first, sum, number}, rest(at, first));
    open({at, first + 1, sum, number}, rest(at, first + 1));
  }
}

/// Follows the ray to the first box in its way or to the edge of the window.
void ConnectorSearch::follow(const State& state, Ray& ray) {
  const Way way = wayOf(state.heading);
  const double sign = signOf(state.heading);
  const Range window = alongOf(m_window, way);
  ray.end = sign > 0 ? window.high : window.low;
  const double side = across(state.at, way);
  double from = along(state.at, way);
  for (int i = 0; i < kLongestRay && sign * from < sign * ray.end; ++i) {
    const double to = sign > 0 ? std::min(from + m_measures.tile, ray.end)
                               : std::max(from - m_measures.tile, ray.end);
    const Range part{std::min(from, to), std::max(from, to)};
    meetBoxes(state, rectOf(part, Range{side, side}.grownBy(m_measures.band), way), ray);
    meetLines(state, rectOf(part, Range{side, side}.grownBy(m_measures.track / 4), way), ray);
    from = to;
  }
  if (sign * from < sign * ray.end) {
    ray.end = from;
    ray.hitsTarget = false;
  }
  addGoalTurns(way, ray);
}

void ConnectorSearch::meetBoxes(const State& state, const Rect& area, Ray& ray) {
  const Way way = wayOf(state.heading);
  const double sign = signOf(state.heading);
  const double from = along(state.at, way);
  const double side = across(state.at, way);
  m_near.clear();
  m_field.eachBox(area, [&](const StandingBox& box) { m_near.push_back(box); });
  for (const StandingBox& box : m_near) {
    const bool isSource = box.id == m_connector->source.id;
    const bool isTarget = box.id == m_connector->target.id;
    const auto& lanes = m_field.lanesOf(box);
    const std::size_t first = way == Way::level ? 0 : 2;
    ray.turns.push_back(lanes[first]);
    ray.turns.push_back(lanes[first + 1]);
    if (isSource && state.parent == kNone) continue;
    const Range extent = alongOf(box.rect, way);
    const Range beside = acrossOf(box.rect, way);
    const double near = sign > 0 ? extent.low : extent.high;
    const auto blocks = [&](double margin) {
      const double begin = near - sign * margin;
      const double end = (sign > 0 ? extent.high : extent.low) + sign * margin;
      return beside.grownBy(margin).contains(side) && sign * end > sign * from &&
             sign * begin >= sign * from;
    };
    if (isTarget && sign * near >= sign * from) {
      const Range ports = portRange(beside, m_measures.corner);
      if (side >= ports.low && side <= ports.high && sign * near <= sign * ray.end) {
        ray.end = near;
        ray.hitsTarget = true;
        continue;
      }
    }
    for (const double margin : {m_measures.least, 0.0}) {
      if (!blocks(margin)) continue;
      const double begin = near - sign * margin;
      if (sign * begin < sign * ray.end) {
        ray.end = begin;
        ray.hitsTarget = false;
      }
      break;
    }
  }
}

void ConnectorSearch::meetLines(const State& state, const Rect& area, Ray& ray) {
  const Way way = wayOf(state.heading);
  const double sign = signOf(state.heading);
  const double side = across(state.at, way);
  const auto isOwn = [&](const RoutingField::Piece& piece) {
    return areRelated(m_field.line(piece.line).connector, *m_connector);
  };
  m_field.eachPiece(area, crossWay(way), [&](const RoutingField::Piece& piece) {
    if (!piece.span.contains(side) || isOwn(piece)) return;
    // Arrows and bends are not to be crossed.
    const double end = std::min(side - piece.span.low, piece.span.high - side);
    const bool isLoop = m_field.line(piece.line).connector.isLoop();
    const double crossings = isLoop ? kAcrossLoop : end < m_measures.stub ? 2 : 1;
    ray.costs.push_back({piece.at, crossings * m_measures.crossing});
  });
  const double from = along(state.at, way);
  const double onAnother = m_keepsOff ? kOnAnotherAgain : kOnAnother;
  m_field.eachPiece(area, way, [&](const RoutingField::Piece& piece) {
    if (piece.span.low == piece.span.high) return;
    const bool isTrunk = isOwn(piece);
    if (isTrunk && std::abs(piece.at - side) >= 1) return;
    const double begin =
        sign > 0 ? std::max(from, piece.span.low) : std::min(from, piece.span.high);
    ray.costs.push_back({begin, (isTrunk ? kOnTrunk : onAnother) * m_measures.bend});
  });
}

/// Places to turn that lead to a side of the target, or to its trunk.
void ConnectorSearch::addGoalTurns(Way way, Ray& ray) const {
  const Range source = portRange(alongOf(m_connector->source.rect, way), m_measures.corner);
  const Range target = portRange(alongOf(m_connector->target.rect, way), m_measures.corner);
  ray.turns.push_back((target.low + target.high) / 2);
  if (source.overlaps(target)) {
    ray.turns.push_back((std::max(source.low, target.low) + std::min(source.high, target.high)) /
                        2);
  } else {
    const double quarter = (target.high - target.low) / 4;
    ray.turns.push_back(source.low > target.high ? target.high - quarter : target.low + quarter);
    ray.turns.push_back((std::max(source.low, target.low) + std::min(source.high, target.high)) /
                        2);
  }
  for (const Rect& box : {m_connector->source.rect, m_connector->target.rect}) {
    ray.turns.push_back(alongOf(box, way).low - m_measures.stub);
    ray.turns.push_back(alongOf(box, way).high + m_measures.stub);
  }
  if (m_trunk->port) ray.turns.push_back(along(*m_trunk->port, way));
  for (const Trunk::Piece& piece : m_trunk->pieces) {
    if (piece.way != way) ray.turns.push_back(piece.at);
  }
}

std::vector<Point> ConnectorSearch::courseTo(int number) const {
  std::vector<Point> course;
  for (int i = number; i != kNone; i = m_states[i].parent) course.push_back(m_states[i].at);
  std::reverse(course.begin(), course.end());
  return course;
}

}  // namespace brisel::layout
