#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "canvas/Labels.h"
#include "layout/Segments.h"
#include "support/CanvasChecks.h"
#include "support/DiagramBuilder.h"

namespace brisel::canvas {
namespace {

using platform::Point;
using platform::Rect;
using test::DiagramBuilder;

/// A text of a line, in the order of placing.
struct Text {
  const Link* link;
  Link::Label label;
  Rect area;
};

std::vector<Text> textsOf(const Scene& scene) {
  std::vector<Text> texts;
  for (const Link& link : scene.links()) {
    texts.push_back({&link, Link::Label::begin, link.beginTextArea()});
    texts.push_back({&link, Link::Label::end, link.endTextArea()});
  }
  for (const Link& link : scene.links()) {
    texts.push_back({&link, Link::Label::name, link.labelArea()});
  }
  std::erase_if(texts, [](const Text& text) { return text.area.isEmpty(); });
  return texts;
}

std::string places(const Scene& scene) {
  std::string all;
  for (const Text& text : textsOf(scene)) {
    all += text.link->key() + " " + std::to_string(static_cast<int>(text.label)) + " " +
           std::to_string(text.area.left) + "," + std::to_string(text.area.top) + "\n";
  }
  return all;
}

/// How much lies over boxes and over texts that were placed before.
double overlaps(const Scene& scene, const std::vector<Text>& texts, std::size_t count,
                const Rect& area) {
  double over = 0;
  const auto add = [&](const Rect& other) { over += other.intersects(area) ? 1 : 0; };
  for (const Node& node : scene.nodes()) add(node.bounds());
  for (std::size_t i = 0; i < count; ++i) add(texts[i].area);
  return over;
}

class RandomDiagram : public DiagramBuilder {
 public:
  explicit RandomDiagram(unsigned seed) : m_random(seed) {
    // In some diagrams boxes stand in groups far from each other.
    const double apart = seed % 3 == 0 ? 200'000 : 0;
    for (int i = 0; i < kBoxes; ++i) {
      box("n" + std::to_string(i), "Class" + std::to_string(i), below(40000) + i % 2 * apart,
          below(30000) + i % 4 / 2 * apart,
          std::vector<std::string>(static_cast<std::size_t>(below(5)), "+attribute:integer"));
    }
    for (int i = 0; i < 34; ++i) {
      Link& link = line("l" + std::to_string(i), anyBox(), anyBox());
      retext(link);
      if (below(2) == 0) bend(link);
    }
  }
  /// The same picture made in one go.
  explicit RandomDiagram(const Scene& other) {
    control->beginUpdate();
    control->SectionFont(other.textFont().name, other.textFont().size);
    for (const Node& node : other.nodes()) {
      const Rect at = node.bounds();
      control->createNode(node.key(), node.text(), at.left, at.top, at.width, at.height, 2);
      control->scene().node(node.key())->bounds(at);
    }
    for (const Link& link : other.links()) {
      Link& copy = line(link.key(), link.sourceNode().key(), link.targetNode().key(), link.text());
      copy.beginText(link.beginText());
      copy.endText(link.endText());
      copy.bends(link.bends());
    }
    control->endUpdate();
  }

  void change() {
    Node* node = control->scene().node(anyBox());
    Link* link = control->scene().link("l" + std::to_string(below(34)));
    switch (link ? below(9) : 0) {
      case 0:
        return control->deleteNode(below(9) == 0 ? anyBox() : ""), void();
      case 1:
        return control->deleteLink(below(3) == 0 ? link->key() : ""), void();
      case 2:
        return retext(*link);
      case 3:
        return bend(*link);
      case 4:
        return link->bends({});
      case 5:
        return control->SectionFont("Courier New", 8 + below(4));
      case 6:
        if (node) link->reattachTarget(*node);
        return;
      default:
        if (node)
          node->bounds(node->bounds().movedBy({below(6000) - 3000.0, below(6000) - 3000.0}));
    }
  }

 private:
  static constexpr int kBoxes = 22;
  int below(unsigned n) { return static_cast<int>(m_random() % n); }
  std::string anyBox() { return "n" + std::to_string(below(kBoxes)); }
  void retext(Link& link) {
    static const std::vector<std::string> kTexts = {
        "", "", "1", "0..*", "parent\n0..1", "is related to"};
    const auto any = [&] { return kTexts[static_cast<std::size_t>(below(6))]; };
    link.text(any());
    link.beginText(any());
    link.endText(any());
  }
  void bend(Link& link) {
    const Point from = link.sourceNode().bounds().center();
    const Point to = link.targetNode().bounds().center();
    const double middle = (from.y + to.y) / 2 + below(400) - 200;
    link.bends({{from.x + below(400) - 200, middle}, {to.x + below(400) - 200, middle}});
  }

  std::mt19937 m_random;
};

TEST(Labels, coverNothingWhereThereIsRoomWhateverIsDone) {
  std::size_t all = 0;
  std::size_t covering = 0;
  for (unsigned seed = 1; seed <= 12; ++seed) {
    RandomDiagram diagram(seed);
    const Scene& scene = diagram.control->scene();
    for (int step = 0; step < 40; ++step) {
      SCOPED_TRACE("seed " + std::to_string(seed) + " step " + std::to_string(step));
      diagram.change();
      const auto texts = textsOf(scene);
      for (std::size_t i = 0; i < texts.size(); ++i) {
        ++all;
        if (overlaps(scene, texts, i, texts[i].area) == 0) continue;
        ++covering;
        for (const auto& candidate : texts[i].link->candidates(texts[i].label, {})) {
          EXPECT_GT(overlaps(scene, texts, i, candidate.area.grownBy(20)), 0)
              << texts[i].link->key() << " has a free place";
        }
      }
      ASSERT_EQ(test::checkInvariants(*diagram.control), "");
      ASSERT_EQ(places(scene), places(RandomDiagram(scene).control->scene()))
          << "the places follow from the picture, not from how it came about";
    }
  }
  EXPECT_GT(all, 10'000U);
  EXPECT_LT(covering * 20, all) << "and mostly there is room";
}

TEST(Labels, makeWayForABoxAndComeBack) {
  DiagramBuilder diagram;
  diagram.box("a", "A", 0, 0);
  diagram.box("b", "B", 0, 6000);
  diagram.box("far", "Far", 20000, 0);
  diagram.box("farther", "Farther", 20000, 6000);
  Node& box = diagram.box("c", "C", 6000, 2900);
  Link& link = diagram.line("l", "a", "b", "label");
  Link& other = diagram.line("m", "far", "farther", "label");
  const Rect first = link.labelArea();
  const Rect elsewhere = other.labelArea();
  EXPECT_EQ(first.center(), middleOf(link.points()));

  std::vector<Rect> damaged;
  const auto connection = diagram.control->scene().Damaged.connect(
      [&](const std::vector<Rect>& areas) { damaged = areas; });
  box.bounds(box.bounds().movedBy(first.center() - box.bounds().center()));
  const Rect second = link.labelArea();
  EXPECT_FALSE(second.intersects(box.bounds()));
  for (const Rect& place : {first, second}) {
    EXPECT_TRUE(std::any_of(damaged.begin(), damaged.end(),
                            [&](const Rect& area) { return area.contains(place); }));
  }
  EXPECT_FALSE(std::any_of(damaged.begin(), damaged.end(), [&](const Rect& area) {
    return area.intersects(elsewhere);
  })) << "far away nothing is placed anew";
  box.left(9000);
  EXPECT_EQ(link.labelArea(), first);
}

TEST(Labels, followADraggedBoxWithoutJumping) {
  DiagramBuilder diagram;
  Node& a = diagram.box("a", "A", 0, 0);
  diagram.box("b", "B", 9000, 6000);
  Link& link = diagram.line("l", "a", "b", "label");
  link.beginText("begin 1");
  link.endText("end 0..*");
  const auto distance = [](const Rect& one, const Rect& other) {
    const Point way = one.topLeft() - other.topLeft();
    return std::max(std::abs(way.x), std::abs(way.y));
  };
  for (int i = 0; i < 100; ++i) {
    const Rect before[] = {link.labelArea(), link.beginTextArea(), link.endTextArea()};
    a.bounds(a.bounds().movedBy({30, 12}));
    const Rect now[] = {link.labelArea(), link.beginTextArea(), link.endTextArea()};
    for (int k = 0; k < 3; ++k) EXPECT_LE(distance(before[k], now[k]), 60) << i << ' ' << k;
  }
}

TEST(Labels, keepOffTheLinesOfOthers) {
  DiagramBuilder diagram;
  diagram.box("a1", "A", 0, 0);
  diagram.box("a2", "A", 0, 9000);
  diagram.box("b1", "B", 700, 0);
  diagram.box("b2", "B", 700, 9000);
  Link& left = diagram.line("a", "a1", "a2");
  Link& right = diagram.line("b", "b1", "b2", "a long name");
  const auto isCovered = [&] {
    const double x = left.points()[0].x;
    return right.labelArea().left < x && x < right.labelArea().right();
  };
  EXPECT_FALSE(isCovered());
  EXPECT_LT(right.labelArea().left - right.points()[0].x, 100) << "still beside its own";
  diagram.control->deleteLink("a");
  EXPECT_EQ(right.labelArea().center(), middleOf(right.points()));
}

TEST(Labels, hideNoBendWhereThereIsRoomBeside) {
  DiagramBuilder diagram;
  diagram.box("a", "A", 0, 0);
  diagram.box("b", "B", 6500, 1200);
  Link& link = diagram.line("l", "a", "b", "too long for all pieces");
  link.bends({{2500, 300}, {2500, 900}, {4500, 900}, {4500, 1500}});
  for (const Point bend : link.bends()) EXPECT_FALSE(link.labelArea().contains(bend));
  EXPECT_FALSE(layout::runsThrough(link.points(), link.labelArea()));
}

TEST(Labels, ofEndsInABundleBelongToTheirLines) {
  // Multiplicities on lines that run nearer to each other than a digit and the gaps beside it.
  DiagramBuilder diagram;
  diagram.box("top", "ATopOfManyLetters", 0, 0);
  const double below = diagram.control->scene().node("top")->bounds().bottom();
  std::vector<Link*> lines;
  for (int i = 0; i < 10; ++i) {
    const std::string number = std::to_string(i);
    diagram.box("b" + number, "B", i * 1500 - 6000, 5000);
    lines.push_back(&diagram.line("l" + number, "top", "b" + number));
    lines.back()->beginText("1");
    lines.back()->bends({{300.0 + i * 150, below + 1500.0 + i % 2 * 150}});
  }
  const auto away = [](const Rect& text, const Link& line) {
    const auto& points = line.points();
    double least = 1e9;
    for (std::size_t i = 1; i < points.size(); ++i) {
      least = std::min(least, distance(text.center(), points[i - 1], points[i]));
    }
    return least;
  };
  for (const Link* line : lines) {
    const Rect text = line->beginTextArea();
    EXPECT_LT(text.top, below + 1200) << "near its end";
    for (const Link* other : lines) {
      if (other == line) continue;
      EXPECT_FALSE(layout::runsThrough(other->points(), text)) << line->key();
      EXPECT_LT(away(text, *line), away(text, *other)) << line->key() << ' ' << other->key();
    }
  }
}

TEST(Labels, keepOffTheHeadsOfLines) {
  DiagramBuilder diagram;
  diagram.box("top", "ATopOfManyLetters", 0, 0);
  std::vector<Link*> lines;
  for (int i = 0; i < 6; ++i) {
    const std::string number = std::to_string(i);
    diagram.box("b" + number, "B", i * 1500 - 2000, 2500 + i % 2 * 800);
    lines.push_back(&diagram.line("l" + number, "top", "b" + number, i % 2 == 0 ? "name" : ""));
    lines.back()->beginText("owner 1");
    lines.back()->endText("0..*");
    lines.back()->bends({{200.0 + i * 300, 1200}, {i * 1500 - 1600.0, 1200}});
    lines.back()->beginArrow(i % 2 == 0 ? 14 : 13);
    lines.back()->endArrow(3);
  }
  std::vector<Rect> heads;
  for (const Link* line : lines) {
    heads.push_back(headArea(line->beginArrow(), beginOf(line->points())));
    heads.push_back(headArea(line->endArrow(), endOf(line->points())));
  }
  for (const Text& text : textsOf(diagram.control->scene())) {
    for (const Rect& head : heads) EXPECT_FALSE(text.area.intersects(head)) << text.link->key();
  }
}

}  // namespace
}  // namespace brisel::canvas
