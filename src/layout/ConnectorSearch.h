#pragma once

#include <cstddef>
#include <optional>
#include <queue>
#include <unordered_map>
#include <vector>

#include "layout/RoutingField.h"

namespace brisel::layout {

/// What the standing relatives of a line share at its target.
struct Trunk {
  struct Piece {
    Way way;
    double at;
    Range span;
  };
  std::optional<Point> port;
  std::vector<Piece> pieces;

  /// Whether a piece of a line lies on one of them.
  [[nodiscard]] bool covers(Way way, double at, const Range& span) const;
};

/// How far the end of a line stays from the corners of a side: Range is the side's extent.
[[nodiscard]] Range portRange(const Range& side, double corner);

/// Finds the way of one line: A* over the places where it can turn, each ray being followed to the
/// first box in its way. Costs are length, bends, crossings, crowded sides, and sides that do not
/// suit a generalization.
class ConnectorSearch {
 public:
  ConnectorSearch(RoutingField& field, const RoutingMeasures& measures, Point corner)
      : m_field(field), m_measures(measures), m_corner(corner) {}

  /// So many lines are to be led: the more they are, the sooner each search is content.
  void expect(std::size_t lines);
  /// Whether a line rather makes a detour than to lie where others do.
  void keepOff(bool others) { m_keepsOff = others; }
  /// From border to border with right angles; nothing when there is no way, or none was found
  /// within so many steps. Pieces may still lie on those of other lines.
  [[nodiscard]] std::optional<std::vector<Point>> find(const Connector& connector,
                                                       const Trunk& trunk);

 private:
  /// Left, right, up, down; so are the sides of a box numbered.
  using Heading = int;
  static constexpr int kNone = -1;

  struct State {
    Point at;
    Heading heading;
    double cost;
    int parent;
    bool isGoal = false;
  };
  struct Open {
    double estimate;
    int state;
    bool operator>(const Open& other) const {
      return std::pair(estimate, state) > std::pair(other.estimate, other.state);
    }
  };
  struct Key {
    double x, y;
    Heading heading;
    friend bool operator==(const Key&, const Key&) = default;
  };
  struct KeyHash {
    std::size_t operator()(const Key& key) const;
  };
  /// What a ray meets, in the order of the way along it.
  struct Ray {
    double end;
    bool hitsTarget = false;
    std::vector<double> turns;
    struct Cost {
      double at;
      double cost;
    };
    std::vector<Cost> costs;
  };

  static Way wayOf(Heading heading) { return heading < 2 ? Way::level : Way::upright; }
  static double signOf(Heading heading) { return heading % 2 == 0 ? -1 : 1; }

  void start();
  void open(const State& state, double rest);
  void expand(int number);
  void pushTurns(int number, const Ray& ray);
  void follow(const State& state, Ray& ray);
  void meetBoxes(const State& state, const Rect& area, Ray& ray);
  void meetLines(const State& state, const Rect& area, Ray& ray);
  void addGoalTurns(Way way, Ray& ray) const;
  [[nodiscard]] double rest(Point at, Heading heading) const;
  [[nodiscard]] double sideCost(const StandingBox& box, Heading side, bool isTarget);
  [[nodiscard]] double shortCost(double length) const;
  [[nodiscard]] std::vector<Point> courseTo(int number) const;

  RoutingField& m_field;
  const RoutingMeasures& m_measures;
  Point m_corner;
  const Connector* m_connector = nullptr;
  const Trunk* m_trunk = nullptr;
  Rect m_window;
  std::vector<State> m_states;
  std::priority_queue<Open, std::vector<Open>, std::greater<>> m_open;
  std::unordered_map<Key, double, KeyHash> m_least;
  std::array<double, 4> m_targetCost{};
  int m_steps = 0;
  int m_stepsOfAll = 0;
  double m_patience = 1;
  bool m_keepsOff = false;
  std::vector<StandingBox> m_near;  ///< room for `meetBoxes`
};

}  // namespace brisel::layout
