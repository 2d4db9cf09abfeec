#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "layout/LayerGraph.h"

namespace brisel::layout {

/// The boxes of a component in rows, and in each row a bend of its own for every line that passes
/// it. Boxes and lines can be taken out and entered where they cost least: a line costs its length
/// in pixels, and many of them for each line that it crosses. In a row of n nodes are n + 1 slots,
/// the first before the first node.
class LineWays {
 public:
  /// Pixels that a crossing is worth.
  static constexpr float kCrossing = 2000;

  /// Pre: "graph" are the ordered rows of the component, none of whose lines was left out.
  LineWays(const Component& component, const LayeredGraph& graph, const Spacing& spacing);

  /// What stands where.
  struct Order {
    std::vector<int> row;                ///< of each box
    std::vector<std::vector<int>> rows;  ///< boxes and bends from left to right
  };
  [[nodiscard]] const Order& order() const { return m_order; }
  /// Pre: it was the order at some time.
  void restore(Order order);

  [[nodiscard]] int rows() const { return count(m_order.rows); }
  [[nodiscard]] int rowOf(int box) const { return m_order.row[box]; }
  /// The node that stands for a line in a row that it passes.
  [[nodiscard]] int bend(int line, int row) const {
    return count(m_order.row) + line * rows() + row;
  }
  /// In its row, from 0 on.
  [[nodiscard]] int placeOf(int node) const { return m_place[node]; }
  /// Where a node stands if all rows have the same middle, which is at 0; in pixels.
  [[nodiscard]] double xOf(int node, int row) const { return middle(row, m_place[node]); }

  void takeOutLine(int line);
  /// Pre: its lines are taken out.
  void takeOutBox(int box);
  void putBox(int box, int row, int slot);
  /// Enters a line where it costs least. Pre: both of its boxes are in rows.
  void lead(int line);

  /// What a line from one of its boxes to each slot of each row from "first" to before "end" would
  /// cost; there is nothing in the box's own row. Valid until something changes.
  const std::vector<std::vector<float>>& costsFrom(int box, int line, int first, int end);

  /// Of all lines.
  [[nodiscard]] double cost();
  [[nodiscard]] int crossings();
  /// Elementary steps done so far.
  [[nodiscard]] std::int64_t work() const { return m_work; }

 private:
  /// Where the lines between two rows end, seen from one of them.
  struct Ends {
    Adjacency of;               ///< by the place where the lines start
    std::vector<int> line;      ///< which one each of them is
    std::vector<float> before;  ///< how many end left of each slot of the other row
    bool isKnown = false;
  };
  struct Gap {
    std::vector<int> lines;
    Ends down;
    Ends up;
    bool isMeasured = false;
    int crossings = 0;
    double length = 0;
  };

  /// The upper and the lower box of a line.
  [[nodiscard]] std::pair<int, int> boxesOf(int line) const;
  /// The node of a line in a row that it passes or ends in.
  [[nodiscard]] int& nodeAt(int line, int row) { return m_nodeAt[line * rows() + row]; }
  [[nodiscard]] float middle(int row, int place) const {
    return (m_left[row][place] + m_left[row][place + 1]) / 2;
  }
  void enterLines();
  void enterLine(int line);
  void numberRow(int row);
  void change(int gap);
  const Ends& endsOf(int gap, bool down);
  void collectArms(const Ends& ends, int place, int trunk);
  void measure(Gap& gap, int row);
  int trunkCrossings(const Ends& ends, int place);
  void addTrunk(const Ends& ends, int place, int line);
  void reach(int box, int line, int last);
  void countCrossed(const Ends& ends, int place, bool isNode);
  void leave(int end);
  void pass(int end);
  int cheapestSlot(int row, float x) const;

  const Component& m_component;
  double m_boxGap;
  double m_lineGap;
  Order m_order;
  std::vector<int> m_place;  ///< of each node in its row
  std::vector<int> m_nodeAt;
  std::vector<std::vector<float>> m_left;  ///< left side of each place of a row, and its right end
  std::vector<Gap> m_gaps;                 ///< below each row
  std::vector<std::vector<float>> m_reached;  ///< what it costs to each slot of a row
  std::vector<float> m_crossed;               ///< what a line to each slot crosses
  std::vector<float> m_signs;                 ///< ones, and as many minus ones behind them
  std::vector<int> m_arms;
  std::vector<int> m_others;
  std::vector<int> m_from;
  std::vector<int> m_to;
  std::vector<int> m_next;
  std::int64_t m_work = 0;
};

}  // namespace brisel::layout
