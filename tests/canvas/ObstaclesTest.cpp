#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "canvas/Obstacles.h"
#include "layout/LabelChoice.h"

namespace brisel::canvas {
namespace {

using platform::Point;
using platform::Rect;

double overlap(const Rect& a, const Rect& b) {
  const double width = std::min(a.right(), b.right()) - std::max(a.left, b.left);
  const double height = std::min(a.bottom(), b.bottom()) - std::max(a.top, b.top);
  return width > 0 && height > 0 ? std::ceil(width * height) : 0;
}

/// Boxes, texts and pieces of every size and direction, some of them taken out again, beside a
/// plain list of what is left.
class RandomObstacles {
 public:
  explicit RandomObstacles(unsigned seed) : m_random(seed) {
    for (int i = 0; i < 300; ++i) {
      addSolid(all.boxes, {rect(), 0});
      addSolid(all.texts, {rect(), 1 + m_random() % 9});
      addPiece();
    }
  }

  Rect rect() {
    const auto side = [&] { return size(); };
    return {place(), place(), side(), side()};
  }
  [[nodiscard]] double covered(const Rect& area, Obstacles::Turn turn) const {
    double sum = 0;
    for (const auto& solid : m_solids) sum += solid.turn < turn ? overlap(solid.area, area) : 0;
    return sum;
  }
  [[nodiscard]] Rect inTheWay(const Rect& area, Obstacles::Turn turn) const {
    Rect around;
    for (const auto& solid : m_solids) {
      if (solid.turn < turn && overlap(solid.area, area) > 0) around = around.united(solid.area);
    }
    return around;
  }
  [[nodiscard]] int crossed(const Rect& area, std::uint64_t line) const {
    int sum = 0;
    for (const auto& piece : m_pieces) {
      sum += piece.line == line ? 0 : layout::strike(piece.from, piece.to, area);
    }
    return sum;
  }

  Obstacles all;

 private:
  /// Mostly as small as texts and boxes, here and there as large as a diagram.
  double size() {
    return static_cast<double>(m_random() % (m_random() % 20 == 0 ? 300'000 : 4000));
  }
  double place() { return static_cast<double>(m_random() % 60'000) - 30'000; }
  void addSolid(CellGrid<Obstacles::Solid>& grid, const Obstacles::Solid& solid) {
    auto id = grid.add(solid);
    if (m_random() % 3 == 0) {
      grid.remove(id);
    } else {
      m_solids.push_back(solid);
    }
  }
  void addPiece() {
    const Point from{place(), place()};
    const Point way{m_random() % 3 == 0 ? 0 : size() - 2000,
                    m_random() % 3 == 0 ? 0 : 2000 - size()};
    const Obstacles::Piece piece{from, from + way, m_random() % 5};
    auto id = all.pieces.add(piece);
    if (m_random() % 3 == 0) {
      all.pieces.remove(id);
    } else {
      m_pieces.push_back(piece);
    }
  }

  std::mt19937 m_random;
  std::vector<Obstacles::Solid> m_solids;
  std::vector<Obstacles::Piece> m_pieces;
};

TEST(Obstacles, areCountedWhereverAndInWhateverOrderIsAsked) {
  constexpr double kAll = 1e15;
  std::size_t covering = 0;
  std::size_t crossing = 0;
  Surroundings::Found room;
  for (unsigned seed = 1; seed <= 8; ++seed) {
    RandomObstacles random(seed);
    for (Obstacles::Turn turn = 1; turn <= 10; ++turn) {
      const Rect expected = random.rect();
      Surroundings around(random.all, turn, turn % 5, expected, room);
      for (int i = 0; i < 20; ++i) {
        // Near each other, so that some are within what was looked around for.
        const Rect area = i % 5 == 4 ? random.rect() : expected.movedBy({i * 150.0, i * -90.0});
        const double covered = random.covered(area, turn);
        const int crossed = random.crossed(area, turn % 5);
        EXPECT_EQ(around.covered(area, kAll), covered);
        EXPECT_EQ(around.crossed(area, 1'000'000), crossed);
        const Rect solid = around.inTheWay(area);
        const Rect solidOfAll = random.inTheWay(area, turn);
        for (const auto edge : {&Rect::left, &Rect::top}) EXPECT_EQ(solid.*edge, solidOfAll.*edge);
        EXPECT_NEAR(solid.right(), solidOfAll.right(), 1e-6);
        EXPECT_NEAR(solid.bottom(), solidOfAll.bottom(), 1e-6);
        EXPECT_EQ(around.covered(area, 1) >= 1, covered >= 1);
        EXPECT_EQ(around.crossed(area, 1) >= 1, crossed >= 1);
        covering += covered > 0;
        crossing += crossed > 0;
      }
    }
  }
  EXPECT_GT(covering, 500U);
  EXPECT_GT(crossing, 500U);
}

}  // namespace
}  // namespace brisel::canvas
