#include "layout/LineWays.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace brisel::layout {
namespace {

/// Pixels that a row is worth that a line leads down.
constexpr float kDown = 300;

float priceOf(float known, float crossed, float from, float to) {
  return known + LineWays::kCrossing * crossed + std::abs(from - to);
}

/// Numbers of what is at each place become numbers of what is before it.
template <class T>
void sumUp(std::vector<T>& values) {
  for (std::size_t i = 1; i < values.size(); ++i) values[i] += values[i - 1];
}

}  // namespace

LineWays::LineWays(const Component& component, const LayeredGraph& graph, const Spacing& spacing)
    : m_component(component),
      m_boxGap(spacing.node),
      m_lineGap(spacing.node / 2),
      m_place(component.boxes.size() + component.arcs.size() * graph.rows.size(), -1),
      m_nodeAt(component.arcs.size() * graph.rows.size(), -1),
      m_left(graph.rows.size()),
      m_gaps(graph.rows.size()),
      m_reached(graph.rows.size()),
      m_signs(component.boxes.size() + component.arcs.size(), 1) {
  m_signs.resize(2 * m_signs.size(), -1);
  m_order.row.assign(graph.layer.begin(), graph.layer.begin() + component.nodes());
  m_order.rows.resize(graph.rows.size());
  std::vector<std::vector<int>> linesAt(graph.layer.size());
  for (int i = 0; i < count(component.arcs); ++i) {
    const int first = rowOf(component.arcs[i].from) + 1;
    for (int row = first; row < rowOf(component.arcs[i].to); ++row) {
      linesAt[graph.firstBend[i] + row - first].push_back(i);
    }
  }
  for (int row = 0; row < rows(); ++row) {
    for (const int node : graph.rows[row]) {
      if (!graph.isBend(node)) m_order.rows[row].push_back(node);
      for (const int line : linesAt[node]) m_order.rows[row].push_back(bend(line, row));
    }
  }
  enterLines();
}

void LineWays::restore(Order order) {
  m_order = std::move(order);
  enterLines();
}

void LineWays::enterLines() {
  for (Gap& gap : m_gaps) gap.lines.clear();
  for (int i = 0; i < count(m_component.arcs); ++i) enterLine(i);
  for (int row = 0; row < rows(); ++row) numberRow(row);
}

void LineWays::enterLine(int line) {
  const auto [upper, lower] = boxesOf(line);
  const int last = rowOf(lower);
  for (int row = rowOf(upper); row < last; ++row) {
    m_gaps[row].lines.push_back(line);
    change(row);
    nodeAt(line, row) = row == rowOf(upper) ? upper : bend(line, row);
  }
  nodeAt(line, last) = lower;
}

std::pair<int, int> LineWays::boxesOf(int line) const {
  const Arc& arc = m_component.arcs[line];
  return rowOf(arc.from) < rowOf(arc.to) ? std::pair(arc.from, arc.to)
                                         : std::pair(arc.to, arc.from);
}

void LineWays::numberRow(int row) {
  const auto& nodes = m_order.rows[row];
  auto& left = m_left[row];
  left.resize(nodes.size() + 1);
  double at = 0;
  for (int i = 0; i < count(nodes); ++i) {
    m_place[nodes[i]] = i;
    left[i] = static_cast<float>(at);
    const bool isBox = nodes[i] < m_component.nodes();
    at += isBox ? m_component.width[nodes[i]] + m_boxGap : m_lineGap;
  }
  left.back() = static_cast<float>(at);
  for (float& x : left) x -= static_cast<float>(at / 2);
  m_work += count(nodes);
  change(row);
  if (row > 0) change(row - 1);
}

void LineWays::change(int gap) {
  m_gaps[gap].isMeasured = m_gaps[gap].down.isKnown = m_gaps[gap].up.isKnown = false;
}

void LineWays::takeOutLine(int line) {
  const auto [upper, lower] = boxesOf(line);
  for (int row = rowOf(upper); row < rowOf(lower); ++row) {
    auto& lines = m_gaps[row].lines;
    *std::find(lines.begin(), lines.end(), line) = lines.back();
    lines.pop_back();
    change(row);
    if (row == rowOf(upper)) continue;
    auto& nodes = m_order.rows[row];
    nodes.erase(nodes.begin() + m_place[bend(line, row)]);
    numberRow(row);
  }
}

void LineWays::takeOutBox(int box) {
  auto& nodes = m_order.rows[rowOf(box)];
  nodes.erase(nodes.begin() + m_place[box]);
  numberRow(rowOf(box));
}

void LineWays::putBox(int box, int row, int slot) {
  m_order.row[box] = row;
  auto& nodes = m_order.rows[row];
  nodes.insert(nodes.begin() + slot, box);
  numberRow(row);
}

const LineWays::Ends& LineWays::endsOf(int row, bool down) {
  Gap& gap = m_gaps[row];
  Ends& ends = down ? gap.down : gap.up;
  if (ends.isKnown) return ends;
  const int from = down ? row : row + 1;
  const int to = down ? row + 1 : row;
  m_from.clear();
  m_to.clear();
  for (const int line : gap.lines) {
    m_from.push_back(m_place[nodeAt(line, from)]);
    m_to.push_back(m_place[nodeAt(line, to)]);
  }
  ends.of.first.assign(m_left[from].size(), 0);
  ends.before.assign(m_left[to].size(), 0);
  for (const int place : m_from) ++ends.of.first[place + 1];
  for (const int place : m_to) ++ends.before[place + 1];
  sumUp(ends.of.first);
  sumUp(ends.before);
  m_next = ends.of.first;
  ends.of.items.resize(m_to.size());
  ends.line.resize(m_to.size());
  for (std::size_t i = 0; i < m_to.size(); ++i) {
    const int at = m_next[m_from[i]]++;
    ends.of.items[at] = m_to[i];
    ends.line[at] = gap.lines[i];
  }
  m_work += 4 * count(m_to) + count(m_left[from]) + count(m_left[to]);
  ends.isKnown = true;
  return ends;
}

/// Sorts the lines that start at a place into arms of a trunk and others.
void LineWays::collectArms(const Ends& ends, int place, int trunk) {
  m_arms.clear();
  m_others.clear();
  for (int i = ends.of.first[place]; i < ends.of.first[place + 1]; ++i) {
    const bool isArm = trunkOf(m_component.arcs[ends.line[i]]) == trunk;
    (isArm ? m_arms : m_others).push_back(ends.of.items[i]);
  }
  std::sort(m_arms.begin(), m_arms.end());
}

/// What leaves a box between the arms of its trunk, which starts above the middle one, crosses
/// those that end further out.
int LineWays::trunkCrossings(const Ends& ends, int place) {
  if (ends.of.degree(place) < 3) return 0;
  int sum = 0;
  for (const int trunk : {0, 1}) {
    collectArms(ends, place, trunk);
    if (m_arms.size() < 2) continue;
    const int middle = m_arms[m_arms.size() / 2];
    for (const int end : m_others) {
      for (const int arm : m_arms) sum += end > middle ? arm > end : arm < end;
    }
  }
  return sum;
}

/// The same for a line that is to start there, with each slot as its end.
void LineWays::addTrunk(const Ends& ends, int place, int line) {
  if (ends.of.degree(place) < 2) return;
  const int own = trunkOf(m_component.arcs[line]);
  for (const int trunk : {0, 1}) {
    collectArms(ends, place, trunk);
    if (m_arms.empty()) continue;
    const int middle = m_arms[m_arms.size() / 2];
    for (int slot = 0; slot < count(m_crossed); ++slot) {
      int sum = 0;
      if (trunk == own) {
        for (const int end : m_others) {
          sum += slot > middle ? middle < end && end < slot : slot <= end && end < middle;
        }
      } else {
        for (const int arm : m_arms) sum += slot > middle ? arm >= slot : arm < slot;
      }
      m_crossed[slot] += static_cast<float>(sum);
    }
  }
}

void LineWays::measure(Gap& gap, int row) {
  if (gap.isMeasured) return;
  const Ends& all = endsOf(row, true);
  const Adjacency& ends = all.of;
  const int lines = count(ends.items);
  gap.crossings = 0;
  gap.length = 0;
  for (int place = 0; place + 1 < count(ends.first); ++place) {
    // Lines that start at the same node do not cross, unless they are a trunk's.
    const int* others = ends.items.data() + ends.first[place + 1];
    const int right = lines - ends.first[place + 1];
    gap.crossings += trunkCrossings(all, place);
    for (const int end : ends.of(place)) {
      int crossed = 0;
      for (int k = 0; k < right; ++k) crossed += others[k] < end ? 1 : 0;
      gap.crossings += crossed;
      gap.length += std::abs(middle(row, place) - middle(row + 1, end));
    }
  }
  m_work += std::int64_t{lines} * lines / 4;
  gap.isMeasured = true;
}

double LineWays::cost() {
  double sum = double{kCrossing} * crossings();
  m_work += rows();
  for (const Gap& gap : m_gaps) sum += gap.length + double{kDown} * count(gap.lines);
  return sum;
}

int LineWays::crossings() {
  int sum = 0;
  for (int row = 0; row + 1 < rows(); ++row) {
    measure(m_gaps[row], row);
    sum += m_gaps[row].crossings;
  }
  return sum;
}

/// A line that starts left of the one looked at is crossed to the slots up to its end; one that
/// starts right of it, to those behind. Here a line that was right comes to be neither.
void LineWays::leave(int end) {
  for (std::size_t j = static_cast<std::size_t>(end) + 1; j < m_crossed.size(); ++j) {
    m_crossed[j] -= 1;
  }
}

/// A line that was right comes to be left.
void LineWays::pass(int end) {
  const float* sign = m_signs.data() + (m_signs.size() / 2 - static_cast<std::size_t>(end) - 1);
  float* crossed = m_crossed.data();
  const std::size_t slots = m_crossed.size();
  for (std::size_t j = 0; j < slots; ++j) crossed[j] += sign[j];
}

/// What a line from a slot, or from the node at a place, crosses.
void LineWays::countCrossed(const Ends& ends, int place, bool isNode) {
  m_crossed = ends.before;
  for (int i = 0; i < place; ++i) {
    for (const int end : ends.of.of(i)) pass(end);
  }
  if (!isNode) return;
  for (const int end : ends.of.of(place)) leave(end);
}

void LineWays::reach(int box, int line, int last) {
  const int start = rowOf(box);
  const bool down = last > start;
  for (int row = start; row != last; row += down ? 1 : -1) {
    const int next = down ? row + 1 : row - 1;
    const Ends& ends = endsOf(std::min(row, next), down);
    const auto slots = m_left[next].size();
    const float* x = m_left[next].data();
    auto& reached = m_reached[next];
    reached.assign(slots, std::numeric_limits<float>::infinity());
    const auto weigh = [&](float known, float at) {
      float* best = reached.data();
      const float* crossed = m_crossed.data();
      for (std::size_t j = 0; j < slots; ++j) {
        const float price = priceOf(known + kDown, crossed[j], at, x[j]);
        best[j] = price < best[j] ? price : best[j];
      }
    };
    m_work += static_cast<std::int64_t>(slots) * (row == start ? 2 : 2 * count(m_left[row]));
    if (row == start) {
      countCrossed(ends, m_place[box], true);
      if (down) addTrunk(ends, m_place[box], line);
      weigh(0, middle(row, m_place[box]));
      continue;
    }
    m_crossed = ends.before;
    const auto& from = m_reached[row];
    for (int i = 0; i < count(from); ++i) {
      weigh(from[i], m_left[row][i]);
      if (i + 1 == count(from)) break;
      for (const int end : ends.of.of(i)) pass(end);
    }
  }
}

const std::vector<std::vector<float>>& LineWays::costsFrom(int box, int line, int first, int end) {
  const int row = rowOf(box);
  if (row < end - 1) reach(box, line, end - 1);
  if (row > first) reach(box, line, first);
  m_reached[row].clear();
  return m_reached;
}

int LineWays::cheapestSlot(int row, float x) const {
  float least = std::numeric_limits<float>::infinity();
  int slot = 0;
  for (int j = 0; j < count(m_crossed); ++j) {
    const float price = priceOf(m_reached[row][j], m_crossed[j], x, m_left[row][j]);
    if (price >= least) continue;
    least = price;
    slot = j;
  }
  return slot;
}

void LineWays::lead(int line) {
  const auto [upper, lower] = boxesOf(line);
  const int first = rowOf(upper);
  const int last = rowOf(lower);
  if (first + 1 < last) reach(upper, line, last - 1);
  std::vector<int> slots(last - first, 0);
  // Backwards from the lower box, as the costs have it.
  int at = m_place[lower];
  float x = middle(last, at);
  for (int row = last - 1; row > first; --row) {
    countCrossed(endsOf(row, false), at, row == last - 1);
    at = cheapestSlot(row, x);
    x = m_left[row][at];
    slots[row - first] = at;
  }
  enterLine(line);
  for (int row = first + 1; row < last; ++row) {
    auto& nodes = m_order.rows[row];
    nodes.insert(nodes.begin() + slots[row - first], bend(line, row));
    numberRow(row);
  }
}

}  // namespace brisel::layout
