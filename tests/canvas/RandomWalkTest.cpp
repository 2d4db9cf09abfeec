#include <array>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/Error.h"
#include "store/UUIDGenerator.h"
#include "support/CanvasChecks.h"
#include "support/DiagramBuilder.h"
#include "support/RecordingPainter.h"

namespace brisel::canvas {
namespace {

using platform::Point;
using platform::Rect;
using platform::Ref;
using test::checkInvariants;
using test::describe;

/// A person and a host that do anything at any time.
class Walker {
 public:
  explicit Walker(unsigned seed) : m_random(seed) {
    for (int i = 0; i < 6; ++i) createNode();
    for (int i = 0; i < 6; ++i) createLink();
    control = m_diagram.control;
    control->UUIDGenerator(platform::make<store::UUIDGenerator>().get());
    control->linkRule([this](std::string_view, std::string_view, std::string_view) {
      return below(4) == 0 ? std::string("not today") : std::string();
    });
    m_connections.push_back(control->LinkEndDropped.connect(
        [this](const std::string& link, const std::string& node, bool atSource) {
          ++reconnected;
          reattach(control->scene().link(link), control->scene().node(node), atSource);
        }));
    const auto count = [this](const std::string& key) { handMade += key.size() > 8 ? 1 : 0; };
    m_connections.push_back(control->NodeCreated.connect(count));
    m_connections.push_back(control->LinkCreated.connect(count));
  }

  void step() {
    using Action = void (Walker::*)();
    static constexpr std::array<Action, 23> kActions = {
        &Walker::press,      &Walker::press,    &Walker::move,        &Walker::move,
        &Walker::move,       &Walker::release,  &Walker::release,     &Walker::key,
        &Walker::key,        &Walker::wheel,    &Walker::doubleClick, &Walker::createNode,
        &Walker::createLink, &Walker::change,   &Walker::change,      &Walker::bend,
        &Walker::command,    &Walker::reattach, &Walker::mode,        &Walker::draw,
        &Walker::draw,       &Walker::leave,    &Walker::tick,
    };
    (this->*kActions[static_cast<std::size_t>(below(kActions.size()))])();
  }

  /// From now on whoever hears of something, or is asked, may do anything to the canvas.
  void interfere() {
    const auto meddle = [this](const std::string&) {
      if (below(4) == 0) control->deleteNode(anyKey("n"));
      if (below(4) == 0) control->deleteLink(anyKey("l"));
      if (below(40) == 0) control->Clear();
      if (m_meddling || below(8) != 0) return;
      m_meddling = true;
      step();
      m_meddling = false;
    };
    for (const auto* event : {&control->NodeCreated, &control->LinkCreated, &control->NodeDeleted,
                              &control->LinkDeleted, &control->NodePressed, &control->NodeMoved,
                              &control->NodeClicked, &control->NodeEnter, &control->LinkLeave,
                              &control->Hint, &control->NodeOpened, &control->NodeRenaming}) {
      m_connections.push_back(event->connect(meddle));
    }
    for (const auto* event : {&control->Pressed, &control->DeleteAsked, &control->ModeChanged}) {
      m_connections.push_back(event->connect([meddle] { meddle(""); }));
    }
    control->linkRule([this, meddle](std::string_view, std::string_view, std::string_view) {
      meddle("");
      return std::string(below(4) == 0 ? "not today" : "");
    });
  }

  /// A whole gesture with the left button, taken back before it ends: true when a trace was left.
  bool cancelledGestureLeavesTrace() {
    control->KeyPress("Escape", "");
    for (const char* button : {"left", "middle", "right"})
      control->PointerRelease(0, 0, button, "");
    const std::string before = describe(*control);
    const Point start = place();
    control->PointerPress(start.x, start.y, "left", modifiers());
    for (int i = below(4); i >= 0; --i) move();
    const bool inGesture = describe(*control) != before;
    control->KeyPress("Escape", "");
    test::RecordingPainter over;
    control->paintGesture(over, 1);
    if (!over.frames.empty() || !over.lines.empty() || !over.fills.empty()) return true;
    if (!inGesture) return false;
    ++traces;
    return describe(*control) != before;
  }

  Ref<DiagramControl> control;
  int traces = 0;       ///< gestures that changed something before they were taken back
  int handMade = 0;     ///< items drawn by hand
  int reconnected = 0;  ///< ends dropped on another node

 private:
  int below(std::size_t count) {
    return static_cast<int>(m_random() % static_cast<unsigned>(count));
  }
  std::string anyKey(const std::string& kind) {
    return kind + std::to_string(below(static_cast<std::size_t>(m_made) + 1));
  }
  Node* anyNode() { return any(control->scene().nodes()); }
  Link* anyLink() { return any(control->scene().links()); }
  template <class Items>
  auto any(const Items& items) -> decltype(&*items.begin()) {
    if (items.size() == 0) return nullptr;
    auto item = items.begin();
    for (int i = below(items.size()); i > 0; --i) ++item;
    return &*item;
  }
  std::string modifiers() {
    static constexpr std::array kAll = {"", "", "", "ctrl", "shift"};
    return kAll[static_cast<std::size_t>(below(kAll.size()))];
  }
  std::string button() {
    static constexpr std::array kAll = {"left", "left", "left", "", "middle", "right"};
    return kAll[static_cast<std::size_t>(below(kAll.size()))];
  }

  /// Mostly where something is: boxes, their edges and corners, points of lines.
  Point place() {
    if (const Node* node = anyNode(); node && below(3) != 0) {
      const Rect box = node->bounds();
      return {box.left + box.width * below(5) / 4, box.top + box.height * below(5) / 4};
    }
    if (const Link* link = anyLink()) {
      const auto& points = link->points();
      const std::size_t i = static_cast<std::size_t>(below(points.size()));
      const std::size_t k = static_cast<std::size_t>(below(points.size()));
      return (points[i] + points[k]) * 0.5;
    }
    return {below(20000) - 5000.0, below(20000) - 5000.0};
  }

  void press() {
    const Point at = place();
    control->PointerPress(at.x, at.y, button(), modifiers());
  }
  void move() {
    const Point at = below(30) == 0 ? Point{1e300, -1e300} : place();
    control->PointerMove(at.x, at.y);
  }
  void release() {
    const Point at = place();
    control->PointerRelease(at.x, at.y, button(), modifiers());
  }
  void tick() { control->autoScroll(); }
  void doubleClick() {
    const Point at = place();
    control->PointerDoubleClick(at.x, at.y);
  }
  void wheel() {
    const Point at = place();
    control->Wheel(at.x, at.y, below(9) - 4, modifiers());
  }
  void key() {
    static constexpr std::array kKeys = {"Escape", "Left", "Up", "Tab",   "Home",   "a",  "Space",
                                         "+",      "-",    "0",  "Enter", "Delete", "F2", "F1"};
    const char* name = kKeys[static_cast<std::size_t>(below(kKeys.size()))];
    control->KeyPress(name, modifiers());
    if (std::string(name) == "Space" && below(2) == 0) control->KeyRelease(name, "");
  }
  void createNode() {
    ++m_made;
    m_diagram.control->createNode("n" + std::to_string(m_made), "Box\r\n" + anyKey("t"),
                                  below(12000), below(9000), below(5000) - 500, below(3000) - 500,
                                  Node::kClassBox);
  }
  void createLink() {
    ++m_made;
    m_diagram.control->createLink("l" + std::to_string(m_made), below(2) == 0 ? "" : "label",
                                  anyKey("n"), anyKey("n"));
  }
  void change() {
    Node* node = anyNode();
    if (!node) return;
    const auto section = node->Section(below(2));
    switch (below(6)) {
      case 0:
        return node->fitToText(below(2) == 0);
      case 1:
        return section->visible(!section->visible());
      case 2:
        return section->addRow("+row:" + anyKey("type"), "STRING", "r");
      case 3:
        return section->clearRows();
      case 4:
        return node->text(std::string(static_cast<std::size_t>(below(40)), 'x'));
      default:
        return node->left(below(100) == 0 ? 2e9 : below(12000));
    }
  }
  void bend() {
    Link* link = anyLink();
    if (!link) return;
    const Point at = place();
    if (below(4) == 0) {
      link->ExtraPoints()->Clear();
    } else {
      link->ExtraPoints()->Add(at.x, at.y);
    }
  }
  void reattach() { reattach(anyLink(), anyNode(), below(2) == 0); }
  static void reattach(Link* link, Node* node, bool atSource) {
    if (!link || !node) return;
    atSource ? link->reattachSource(*node) : link->reattachTarget(*node);
  }
  void mode() {
    switch (below(4)) {
      case 0:
        return control->SelectMode();
      case 1:
        return control->ClickCreateMode();
      case 2:
        return control->DrawCreateMode();
      default:
        control->GetDiagram()->set("CanDrawLink", below(2) == 0);
    }
  }
  /// From a border or an end of a selected line to somewhere.
  void draw() {
    Point from = place();
    if (Link* link = anyLink(); link && below(2) == 0) {
      control->selLink(link->key());
      from = below(2) == 0 ? link->points().front() : link->points().back();
    }
    control->PointerPress(from.x, from.y, "left", "");
    move();
    move();
    release();
  }
  void leave() { control->PointerLeave(); }
  void command() {
    static constexpr std::array kLayouts = {"%HIERARCHY%", "MATRIX", "RANDOM", "SPRING",
                                            "TADJST",      "BADJST", "LADJST", "RADJST"};
    switch (below(7)) {
      case 0:
        return control->Layout(kLayouts[static_cast<std::size_t>(below(kLayouts.size()))]);
      case 1:
        control->deleteNode(anyKey("n"));
        return;
      case 2:
        control->deleteLink(anyKey("l"));
        return;
      case 3:
        control->markNode(anyKey("n"));
        control->markLink(anyKey("l"));
        return;
      case 4:
        if (below(4) == 0) control->deleteMarkedItems();
        return;
      case 5:
        if (below(6) == 0) control->deleteSelectedItems();
        return;
      default:
        return control->SectionFont("Courier New", 6 + below(10));
    }
  }

  std::mt19937 m_random;
  test::DiagramBuilder m_diagram;
  std::vector<platform::Connection> m_connections;
  int m_made = 0;
  bool m_meddling = false;
};

TEST(RandomWalk, keepsTheCanvasInOrder) {
  int handMade = 0;
  int reconnected = 0;
  for (unsigned seed = 1; seed <= 40; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Walker walker(seed);
    if (seed % 2 == 0) walker.interfere();
    for (int i = 0; i < 400; ++i) {
      walker.step();
      ASSERT_EQ(checkInvariants(*walker.control), "") << "after step " << i;
    }
    handMade += walker.handMade;
    reconnected += walker.reconnected;
  }
  EXPECT_GT(handMade, 150);
  EXPECT_GT(reconnected, 20);
}

TEST(RandomWalk, takesGesturesBackWithoutATrace) {
  int traces = 0;
  for (unsigned seed = 100; seed < 116; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Walker walker(seed);
    for (int i = 0; i < 60; ++i) {
      for (int k = 0; k < 3; ++k) walker.step();
      ASSERT_FALSE(walker.cancelledGestureLeavesTrace()) << "after step " << i;
    }
    traces += walker.traces;
  }
  EXPECT_GT(traces, 200) << "most gestures have something to take back";
}

}  // namespace
}  // namespace brisel::canvas
