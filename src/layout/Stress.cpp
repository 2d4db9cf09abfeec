#include "layout/Stress.h"

#include <algorithm>
#include <cmath>

#include "layout/Numbers.h"

namespace brisel::layout {
namespace {

using platform::Point;

struct Term {
  int a;
  int b;
  double length;
  double weight;
};

/// Terms between every node and the pivots, and along every line.
class Terms {
 public:
  Terms(int nodes, const Adjacency& near) : m_near(near), m_steps(nodes), m_least(nodes, nodes) {
    constexpr int kAllPairs = 250;
    const int pivots = nodes <= kAllPairs ? nodes : std::min(60, nodes);
    // Every pivot stands for the nodes that are nearest to it; its terms weigh as many.
    const double share = static_cast<double>(nodes) / pivots;
    int pivot = 0;
    for (int k = 0; k < pivots; ++k) {
      measureFrom(pivot);
      for (int n = 0; n < nodes; ++n) {
        const double d = m_steps[n];
        if (n == pivot || (pivots == nodes && n < pivot) || m_steps[n] == 1) continue;
        m_terms.push_back({pivot, n, d, share / (d * d)});
      }
      pivot = pivots == nodes ? k + 1 : farthest();
    }
    for (int n = 0; n < nodes; ++n) {
      for (const int other : near.of(n)) {
        if (n < other) m_terms.push_back({n, other, 1, 2});
      }
    }
  }

  std::vector<Term> take() { return std::move(m_terms); }

 private:
  void measureFrom(int start) {
    std::fill(m_steps.begin(), m_steps.end(), -1);
    m_queue.assign(1, start);
    m_steps[start] = 0;
    for (std::size_t next = 0; next < m_queue.size(); ++next) {
      const int node = m_queue[next];
      for (const int other : m_near.of(node)) {
        if (m_steps[other] >= 0) continue;
        m_steps[other] = m_steps[node] + 1;
        m_queue.push_back(other);
      }
    }
    for (std::size_t n = 0; n < m_steps.size(); ++n) m_least[n] = std::min(m_least[n], m_steps[n]);
  }
  [[nodiscard]] int farthest() const {
    return static_cast<int>(std::max_element(m_least.begin(), m_least.end()) - m_least.begin());
  }

  const Adjacency& m_near;
  std::vector<int> m_steps;
  std::vector<int> m_least;
  std::vector<int> m_queue;
  std::vector<Term> m_terms;
};

void descend(std::vector<Term>& terms, std::vector<Point>& points, Numbers& numbers,
             const Step& told) {
  constexpr int kRounds = 30;
  constexpr double kLastStep = 0.05;
  double lightest = INFINITY;
  double heaviest = 0;
  for (const Term& t : terms) {
    lightest = std::min(lightest, t.weight);
    heaviest = std::max(heaviest, t.weight);
  }
  const double first = 1 / lightest;
  const double decay = std::log(first * heaviest / kLastStep) / (kRounds - 1);
  for (int round = 0; round < kRounds; ++round) {
    if (told) told(static_cast<double>(round) / kRounds);
    for (std::size_t i = terms.size(); i > 1; --i) {
      std::swap(terms[i - 1], terms[numbers.next() % i]);
    }
    const double step = first * std::exp(-decay * round);
    for (const Term& t : terms) {
      const Point way = points[t.a] - points[t.b];
      const double length = std::max(1e-9, std::hypot(way.x, way.y));
      const double share = std::min(1.0, step * t.weight);
      const Point by = way * (share * (length - t.length) / 2 / length);
      points[t.a] = points[t.a] - by;
      points[t.b] = points[t.b] + by;
    }
  }
}

}  // namespace

std::vector<Point> byStress(int nodes, const Adjacency& near, double unit, const Step& step) {
  Numbers numbers(1);
  std::vector<Point> points(nodes);
  const double side = std::sqrt(static_cast<double>(nodes));
  for (Point& p : points) p = {numbers.part() * side, numbers.part() * side};
  std::vector<Term> terms = Terms(nodes, near).take();
  if (!terms.empty()) descend(terms, points, numbers, step);
  for (Point& p : points) p = p * unit;
  return points;
}

}  // namespace brisel::layout
