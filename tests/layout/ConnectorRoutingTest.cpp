#include <cmath>
#include <limits>
#include <map>

#include <gtest/gtest.h>

#include "layout/ConnectorRouting.h"
#include "layout/Graphs.h"
#include "layout/Numbers.h"
#include "layout/Segments.h"

namespace brisel::layout {
namespace {

const Spacing kLeadRoom{40, 60, 1.6};
constexpr Point kNoEdge{-10'000, -10'000};

/// Boxes numbered from 0 and lines from 0 on; gives what touches the area and counts how much.
class Surrounded : public Surroundings {
 public:
  void collect(const Rect& area, std::vector<StandingBox>& found,
               std::vector<StandingLine>& foundLines) const override {
    const Rect wide = area.grownBy(1);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
      if (boxes[i].intersects(wide)) found.push_back({i, boxes[i]});
    }
    for (const StandingLine& line : lines) {
      for (std::size_t i = 1; i < line.course.size(); ++i) {
        if (crosses(line.course[i - 1], line.course[i], wide)) {
          foundLines.push_back(line);
          break;
        }
      }
    }
    given += found.size();
  }
  [[nodiscard]] Connector connector(std::uint64_t id, std::size_t from, std::size_t to,
                                    EdgeKind kind = EdgeKind::association) const {
    return {id, {from, boxes[from]}, {to, boxes[to]}, kind};
  }
  std::vector<std::vector<Point>> route(const std::vector<Connector>& connectors) const {
    return ConnectorRouter(*this, kLeadRoom, kNoEdge).route(connectors);
  }

  std::vector<Rect> boxes;
  std::vector<StandingLine> lines;
  mutable std::size_t given = 0;
};

int bendsOf(const std::vector<Point>& course) { return static_cast<int>(course.size()) - 2; }

double lengthOf(const std::vector<Point>& course) {
  double sum = 0;
  for (std::size_t i = 1; i < course.size(); ++i) {
    sum += std::hypot(course[i].x - course[i - 1].x, course[i].y - course[i - 1].y);
  }
  return sum;
}

TEST(ConnectorRouting, takesTheShortWayOfFewBends) {
  struct Case {
    const char* what;
    std::vector<Rect> boxes;  // from the first to the second
    int bends;
    double length;
  };
  const Rect start{0, 0, 100, 50};
  const std::vector<Case> cases{
      {"beside each other", {start, {200, 10, 100, 50}}, 0, 100},
      {"round one corner", {start, {300, 300, 100, 50}}, 1, 500},
      {"past a box between them", {start, {400, 0, 100, 50}, {200, -10, 100, 90}}, 2, 440},
      {"through a gate",
       {start, {0, 300, 100, 50}, {-500, 150, 545, 20}, {60, 150, 500, 20}},
       0,
       250},
  };
  for (const auto& [what, boxes, wanted, length] : cases) {
    SCOPED_TRACE(what);
    Surrounded picture;
    picture.boxes = boxes;
    const auto course = picture.route({picture.connector(0, 0, 1)}).front();
    EXPECT_EQ(bendsOf(course), wanted);
    EXPECT_NEAR(lengthOf(course), length, 60);
    ConnectorRouter judge(picture, kLeadRoom, kNoEdge);
    EXPECT_TRUE(judge.isSound({picture.connector(0, 0, 1), course}));
  }
}

TEST(ConnectorRouting, leadsManyLinesAroundManyBoxes) {
  for (const std::uint64_t seed : {1, 2, 3}) {
    Numbers numbers(seed);
    Surrounded picture;
    for (int i = 0; i < 100; ++i) {
      picture.boxes.push_back({i % 10 * 260.0 + 60 * numbers.part(),
                               i / 10 * 200.0 + 40 * numbers.part(), 60 + 80 * numbers.part(),
                               30 + 70 * numbers.part()});
    }
    std::vector<Connector> connectors;
    for (std::uint64_t i = 0; i < 80; ++i) {
      const auto from = static_cast<std::size_t>(numbers.below(100));
      const auto to = (from + 1 + static_cast<std::size_t>(numbers.below(99))) % 100;
      connectors.push_back(picture.connector(
          i, from, to, i % 3 == 0 ? EdgeKind::generalization : EdgeKind::association));
    }
    const auto courses = picture.route(connectors);
    EXPECT_EQ(courses, picture.route(connectors)) << "the same once more";
    for (std::size_t i = 0; i < courses.size(); ++i) {
      picture.lines.push_back({connectors[i], courses[i]});
    }
    ConnectorRouter judge(picture, kLeadRoom, kNoEdge);
    for (const StandingLine& line : picture.lines) {
      EXPECT_TRUE(judge.isSound(line)) << "line " << line.connector.id << " of seed " << seed;
      for (const auto& [end, box] : {std::pair(line.course.front(), line.connector.source.rect),
                                     std::pair(line.course.back(), line.connector.target.rect)}) {
        EXPECT_TRUE(box.grownBy(1e-6).contains(end) && !box.grownBy(-1e-6).contains(end));
      }
    }
  }
}

TEST(ConnectorRouting, keepsOffWhatStands) {
  Surrounded picture;
  picture.boxes = {{0, 0, 100, 60}, {400, 0, 100, 60}};
  picture.lines = {{picture.connector(7, 0, 1), {{100, 30}, {400, 30}}}};
  const auto course = picture.route({picture.connector(0, 0, 1)}).front();
  EXPECT_EQ(bendsOf(course), 0);
  EXPECT_GE(std::abs(course.front().y - 30), 5) << "beside the line between the same boxes";

  ConnectorRouter judge(picture, kLeadRoom, kNoEdge);
  const auto isSound = [&](std::vector<Point> points, EdgeKind kind = EdgeKind::association) {
    return judge.isSound({picture.connector(0, 0, 1, kind), std::move(points)});
  };
  EXPECT_TRUE(isSound({{100, 45}, {400, 45}}));
  EXPECT_FALSE(isSound({{100, 30}, {400, 30}})) << "on the line that stands";
  EXPECT_FALSE(isSound({{100, 20}, {400, 45}})) << "slanting";
  EXPECT_FALSE(isSound({{50, 0}, {50, 80}, {450, 80}, {450, 60}})) << "through its own box";
}

/// Pairs of courses that run less than so far apart for a stretch.
int pairsOnEachOther(const std::vector<std::vector<Point>>& courses, double apart) {
  const auto reach = [](Point a, Point b) {
    return Rect{std::min(a.x, b.x), std::min(a.y, b.y), std::abs(a.x - b.x), std::abs(a.y - b.y)};
  };
  int pairs = 0;
  for (std::size_t i = 0; i < courses.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      bool isOn = false;
      for (std::size_t p = 1; p < courses[i].size(); ++p) {
        for (std::size_t q = 1; q < courses[k].size(); ++q) {
          const Rect a = reach(courses[i][p - 1], courses[i][p]);
          const Rect b = reach(courses[k][q - 1], courses[k][q]);
          const bool areLevel = a.height == 0 && b.height == 0;
          if (!areLevel && (a.width > 0 || b.width > 0)) continue;
          const double x = std::min(a.right(), b.right()) - std::max(a.left, b.left);
          const double y = std::min(a.bottom(), b.bottom()) - std::max(a.top, b.top);
          isOn |= areLevel ? x > 1 && y > -apart : y > 1 && x > -apart;
        }
      }
      pairs += isOn;
    }
  }
  return pairs;
}

TEST(ConnectorRouting, setsTheManyLinesOfABoxApart) {
  struct Case {
    const char* what;
    std::vector<Rect> boxes;  // from the first to many of the others
    int lines;
  };
  std::vector<Case> cases{{"all at one side", {{300, 0, 100, 40}, {0, 60, 290, 20}}, 24},
                          {"more than a side takes", {{300, 500, 100, 60}}, 60},
                          {"through a gate", {{0, 0, 60, 60}, {-300, 90, 310, 40}}, 9}};
  cases[0].boxes.push_back({410, 60, 400, 20});
  cases[2].boxes.push_back({50, 90, 310, 40});
  for (auto& [what, boxes, lines] : cases) {
    SCOPED_TRACE(what);
    Surrounded picture;
    picture.boxes = boxes;
    std::vector<Connector> connectors;
    for (int i = 0; i < lines; ++i) {
      picture.boxes.push_back({i % 12 * 100.0 - 200, 700 + i / 12 * 100.0, 60, 40});
      connectors.push_back(
          picture.connector(static_cast<std::uint64_t>(i), 0, picture.boxes.size() - 1));
    }
    const auto courses = picture.route(connectors);
    EXPECT_EQ(pairsOnEachOther(courses, 2.9), 0);
    for (std::size_t i = 0; i < courses.size(); ++i) {
      picture.lines.push_back({connectors[i], courses[i]});
    }
    ConnectorRouter judge(picture, kLeadRoom, kNoEdge);
    for (const StandingLine& line : picture.lines) EXPECT_TRUE(judge.isSound(line));
  }
}

TEST(ConnectorRouting, joinsTheTrunkOfItsRelatives) {
  Surrounded picture;
  picture.boxes = {{200, 0, 100, 60}, {0, 300, 100, 60}, {200, 300, 100, 60}, {400, 300, 100, 60}};
  picture.lines = {{picture.connector(7, 1, 0, EdgeKind::generalization),
                    {{50, 300}, {50, 200}, {230, 200}, {230, 60}}}};
  const std::vector<Connector> led{picture.connector(1, 3, 0, EdgeKind::generalization),
                                   picture.connector(2, 2, 0, EdgeKind::realization),
                                   picture.connector(3, 2, 0, EdgeKind::association)};
  const auto courses = picture.route(led);
  EXPECT_EQ(courses[0].back(), (Point{230, 60})) << "one arrow for all";
  EXPECT_EQ(courses[0][courses[0].size() - 2], (Point{230, 200})) << "from its branch on";
  for (const std::size_t other : {1, 2}) {
    EXPECT_GE(std::abs(courses[other].back().x - 230), 5) << "not related: a place of its own";
  }
  EXPECT_NE(courses[1].back(), courses[2].back());
}

TEST(ConnectorRouting, looksOnlyWhereTheLineRuns) {
  Surrounded picture;
  for (int i = 0; i < 40'000; ++i) {
    picture.boxes.push_back({i % 200 * 160.0, i / 200 * 160.0, 100, 60});
  }
  static_cast<void>(picture.route({picture.connector(0, 20'100, 20'303)}));
  EXPECT_LT(picture.given, picture.boxes.size() / 20);
}

TEST(ConnectorRouting, takesWhatNobodyDraws) {
  const double huge = 2e9;
  struct Case {
    const char* what;
    std::vector<Rect> boxes;
    bool hasCourse;
  };
  const std::vector<Case> cases{
      {"one box over the other", {{0, 0, 100, 50}, {50, 20, 100, 50}}, false},
      {"boxes that touch", {{0, 0, 100, 50}, {100, 0, 100, 50}}, true},
      {"no size", {{0, 0, 0, 0}, {500, 300, 0, 0}}, true},
      {"walled in",
       {{0, 0, 100, 50},
        {900, 0, 100, 50},
        {-50, -50, 200, 50},
        {-50, 50, 200, 50},
        {-50, 0, 50, 50},
        {100, 0, 50, 50}},
       true},
      {"far away", {{-huge, -huge, 100, 50}, {huge, huge, 100, 50}}, true},
      {"large", {{-huge, 100, 2 * huge, huge}, {0, -500, 100, 50}}, true},
  };
  for (const auto& [what, boxes, hasCourse] : cases) {
    SCOPED_TRACE(what);
    Surrounded picture;
    picture.boxes = boxes;
    const auto course = picture.route({picture.connector(0, 0, 1)}).front();
    EXPECT_EQ(course.size() >= 2, hasCourse);
    EXPECT_TRUE(test::isAxisParallel(course));
    for (const Point p : course) EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
  }
  Surrounded one;
  one.boxes = {{0, 0, 100, 50}};
  EXPECT_TRUE(one.route({one.connector(0, 0, 0)}).front().empty()) << "a loop is not its affair";
}

TEST(ConnectorRouting, isCancelledBetweenLines) {
  Surrounded picture;
  picture.boxes = {{0, 0, 100, 50}, {300, 0, 100, 50}};
  ConnectorRouter router(picture, kLeadRoom, kNoEdge);
  EXPECT_THROW(
      static_cast<void>(router.route({picture.connector(0, 0, 1)}, [](double) { return false; })),
      Cancelled);
}

}  // namespace
}  // namespace brisel::layout
