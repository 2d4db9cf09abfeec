#include "WindowHand.h"
#include "qt/NameBox.h"
#include "support/CanvasChecks.h"
#include "support/EditorChecks.h"

namespace brisel::qt {
namespace {

using canvas::middleOf;
using platform::Point;
using platform::Rect;
using Side = test::WindowHand::Side;
using test::describe;

/// A person at a diagram that is there: two classes with members, joined by a line, and a third.
class CommandingWindow : public testing::Test, public test::WindowHand {
 protected:
  CommandingWindow() {
    drawSample();
    const auto model = editor().CLSRepository();
    const auto type = model->MakeDataType("money", "", "");
    platform::Ref<platform::Link> link;
    const auto total = model->AddOperationS("order", "total", type->identifier(), link);
    model->AddParameterS(total->identifier(), "taxed", type->identifier(), link);
    editor().CreateClass("customer", "Customer", "", "", "", "public");
    editor().GetClassFromNode("order")->Populate();
    box("Order").bounds({1500, 1500, 4500, 2250});
    box("OrderLine").bounds({9000, 2250, 3000, 1500});
    box("Customer").bounds({4500, 7500, 3000, 1500});
    canvas().unselectAll();
  }
  void TearDown() override { EXPECT_EQ(test::checkAgreement(editor()), ""); }

  [[nodiscard]] canvas::Link& line() const { return *lastLine(); }
  [[nodiscard]] QPoint lineMiddle() const {
    return at(middleOf(canvas().scene().link("lines")->points()));
  }
};

TEST_F(CommandingWindow, escapeEndsEveryGestureWithoutATrace) {
  const struct {
    const char* name;
    std::function<void()> prepare;
    std::function<QPoint()> from, to;
    Qt::MouseButton button = Qt::LeftButton;
    bool space = false;
  } gestures[] = {
      {"rubber band", [] {},
       [&] {
         return at({600, 600});
       },
       [&] {
         return at({8250, 9750});
       }},
      {"move", [] {}, [&] { return title("Order"); },
       [&] {
         return at({7500, 6000});
       }},
      {"move of all", [&] { key(Qt::Key_A, Qt::ControlModifier); }, [&] { return title("Order"); },
       [&] {
         return at({7500, 6000});
       }},
      {"resize", [&] { click(title("Customer")); },
       [&] {
         return at({7500, 9000});
       },
       [&] {
         return at({9750, 9750});
       }},
      {"new class", [&] { push("NewClass"); },
       [&] {
         return at({9000, 6000});
       },
       [&] {
         return at({12750, 9750});
       }},
      {"new line", [&] { push("SharedAggregation"); },
       [&] { return border("Order", Side::bottom); }, [&] { return title("Customer"); }},
      {"refused line", [&] { push("Generalization"); },
       [&] { return border("Order", Side::bottom); }, [&] { return title("Order"); }},
      {"loop", [&] { push("Association"); }, [&] { return border("Order", Side::bottom); },
       [&] { return border("Order", Side::right, 0.75); }},
      {"end of a line", [&] { click(lineMiddle()); }, [&] { return at(line().points().back()); },
       [&] { return title("Customer"); }},
      {"bend", [&] { click(lineMiddle()); }, [&] { return lineMiddle(); },
       [&] {
         return at({7500, 5250});
       }},
      {"member", [] {}, [&] { return row("Order", 0, 0); }, [&] { return title("Customer"); }},
      {"pan", [] {},
       [&] {
         return at({8250, 6000});
       },
       [&] {
         return at({9750, 7500});
       },
       Qt::MiddleButton},
      {"pan by hand", [] {}, [&] { return title("Order"); },
       [&] {
         return at({9750, 7500});
       },
       Qt::LeftButton, true},
  };
  for (const auto& gesture : gestures) {
    push("Select");
    canvas().unselectAll();
    gesture.prepare();
    const QPoint from = gesture.from();
    const QPoint to = gesture.to();
    move(to);
    const std::string diagram = describe(canvas());
    const QImage seen = picture();
    const std::string tool = status("StatusTool");
    int changes = 0;
    const auto listening = editor().Repository()->onChange([&](const auto&) { ++changes; });

    if (gesture.space) QTest::keyPress(window->windowHandle(), Qt::Key_Space);
    hold(from, to, gesture.button);
    EXPECT_FALSE(looksLike(seen)) << gesture.name << ": something is under way";
    key(Qt::Key_Escape);
    EXPECT_EQ(describe(canvas()), diagram) << gesture.name;
    release(to, gesture.button);
    if (gesture.space) QTest::keyRelease(window->windowHandle(), Qt::Key_Space);
    EXPECT_EQ(describe(canvas()), diagram) << gesture.name << ", after the release";
    EXPECT_TRUE(looksLike(seen)) << gesture.name;
    EXPECT_EQ(status("StatusTool"), tool) << gesture.name << ": the tool stays in the hand";
    EXPECT_EQ(changes, 0) << gesture.name;
  }
}

TEST_F(CommandingWindow, buttonsThatToggleLookPressedWhileTheyAreOn) {
  const auto model = editor().CLSRepository();
  const auto visible = [&](int section) { return box("Order").Section(section)->visible(); };
  const auto parameters = [&] {
    return box("Order").section(1).rows().front().text.find("taxed") != std::string::npos;
  };
  const auto drawn = [&](const char* category) {
    return static_cast<bool>(canvas().getNode(std::string("of ") + category));
  };
  const struct {
    const char* key;
    std::function<bool()> isSeen;
  } toggles[] = {
      {"ViewAttributes", [&] { return visible(0); }},
      {"ViewOperations", [&] { return visible(1); }},
      {"ViewParameters", parameters},
      {"COM::Builtin", [&] { return drawn("COM::Builtin"); }},
      {"COM::Enum", [&] { return drawn("COM::Enum"); }},
      {"COM::TypeDef", [&] { return drawn("COM::TypeDef"); }},
      {"COM::Module", [&] { return drawn("COM::Module"); }},
      {"COM::Interface", [&] { return drawn("COM::Interface"); }},
      {"COM::CoClass", [&] { return drawn("COM::CoClass"); }},
      {"COM::DispInterface", [&] { return drawn("COM::DispInterface"); }},
  };
  for (const auto& toggle : toggles) {
    if (!std::string_view(toggle.key).starts_with("COM::")) continue;
    const auto made =
        model->MakeClass(toggle.key, std::string("of ") + toggle.key, "", "", "", "public");
    model->SetStereotype(*made, model->MakeStereotype(toggle.key, model->UUID(), "").get());
  }
  canvas().Clear();
  editor().Populate();
  for (const auto& toggle : toggles) {
    const bool initially = toggle.isSeen();
    for (const bool on : {!initially, initially}) {
      push(toggle.key);
      EXPECT_EQ(toggle.isSeen(), on) << toggle.key;
      EXPECT_EQ(button(toggle.key).isChecked(), on) << toggle.key;
      EXPECT_EQ(editor().GetLayoutNode()->GetProperty(toggle.key).text(), on ? "%TRUE%" : "%FALSE%")
          << toggle.key;
    }
  }
  push("COM::Builtin");  // all are drawn: what TearDown compares
  const char* const tools[] = {"NewClass",          "Association",    "CompositeAggregation",
                               "SharedAggregation", "Generalization", "Select"};
  for (const char* key : tools) {
    push(key);
    for (const char* other : tools) EXPECT_EQ(button(other).isChecked(), other == key) << other;
  }
}

TEST_F(CommandingWindow, aRightClickOffersTheCommandsOfTheClass) {
  std::vector<std::string> chosen;
  const auto listening =
      editor().PopupButton.connect([&](const std::string& tool) { chosen.push_back(tool); });
  const auto open = [&](QPoint at) {
    click(at, Qt::RightButton);
    ASSERT_NE(menu(), nullptr);
    const QPoint pointer = window->mapToGlobal(at);
    // On a small screen it makes room for itself.
    const bool fits = menu()->screen()->geometry().contains(QRect(pointer, menu()->size()));
    EXPECT_TRUE(!fits || (menu()->pos() - pointer).manhattanLength() <= 8);
  };
  const auto isTicked = [&](const char* tool) {
    for (const QAction* action : menu()->actions()) {
      if (action->objectName() == tool) return action->isCheckable() && action->isChecked();
    }
    ADD_FAILURE() << tool << " is missing";
    return false;
  };
  for (const bool shown : {true, false, true}) {
    open(title("Order"));
    EXPECT_TRUE(box("Order").selected());
    choose("miCompartments");
    EXPECT_EQ(isTicked("miCompartmentsAttributes"), shown);
    EXPECT_TRUE(isTicked("miCompartmentsOperations"));
    choose("miCompartmentsAttributes");
    EXPECT_EQ(menu(), nullptr);
    EXPECT_EQ(box("Order").Section(0)->visible(), !shown);
  }
  open(title("Order"));
  choose("miPopupSizeToFit");
  EXPECT_EQ(box("Order").bounds().size(), box("Order").neededSize());

  open(title("Customer"));
  key(Qt::Key_Escape);
  EXPECT_EQ(menu(), nullptr);
  click(at({600, 600}), Qt::RightButton);
  EXPECT_EQ(menu(), nullptr) << "nothing is there";
  EXPECT_EQ(chosen,
            (std::vector<std::string>{"miCompartmentsAttributes", "miCompartmentsAttributes",
                                      "miCompartmentsAttributes", "miPopupSizeToFit"}));
}

TEST_F(CommandingWindow, aRightClickOffersTheCommandsOfTheLine) {
  std::vector<std::string> clicked;
  const auto listening =
      editor().AssocRClicked.connect([&](const std::string& key) { clicked.push_back(key); });
  click(lineMiddle(), Qt::RightButton);
  EXPECT_EQ(clicked, std::vector<std::string>{"lines"});
  EXPECT_TRUE(line().selected());
  ASSERT_NE(menu(), nullptr);
  QStringList entries;
  for (const QAction* action : menu()->actions()) entries += action->text();
  EXPECT_EQ(entries.join('|'), "Edit ...|Morphing");
  choose("miPopupAssocMorph");
  ASSERT_NE(menu(), nullptr);
  EXPECT_EQ(menu()->actions().size(), 5);
  key(Qt::Key_Escape);
  key(Qt::Key_Escape);
  EXPECT_EQ(menu(), nullptr);
  EXPECT_TRUE(line().selected()) << "Escape was the menu's";
}

TEST_F(CommandingWindow, delTakesWhatIsSelectedFromCanvasAndModel) {
  click(lineMiddle());
  key(Qt::Key_Delete);
  EXPECT_EQ(lastLine(), nullptr);
  EXPECT_EQ(count("Aggregation"), 0);
  editor().CreateAssociation("owner", "", "", "customer", "order");
  click(title("Order"));
  key(Qt::Key_Delete);
  EXPECT_EQ(count("Class"), 2);
  EXPECT_EQ(count("Association"), 0) << "relationships go with their class";
  EXPECT_EQ(count("Attrib") + count("Operation"), 0);
  key(Qt::Key_A, Qt::ControlModifier);
  key(Qt::Key_Delete);
  EXPECT_EQ(count("Class"), 0);
  key(Qt::Key_Delete);
  window->refreshState();
  EXPECT_EQ(status("StatusCounts"), "0 classes, 0 relationships");
  EXPECT_TRUE(shell->asked.empty());
}

TEST_F(CommandingWindow, theViewIsScrolledZoomedAndPanned) {
  const canvas::Viewport& view = canvas().viewport();
  const QPoint pointer = title("OrderLine");
  wheel(pointer, -1);
  EXPECT_EQ(view.scroll(), (Point{0, 900}));
  wheel(pointer, 1);
  wheel(pointer, 3, Qt::ControlModifier);
  EXPECT_GT(view.zoom(), 150);
  EXPECT_EQ(status("StatusZoom"), std::to_string(std::lround(view.zoom())) + " %");
  EXPECT_LE((title("OrderLine") - pointer).manhattanLength(), 2) << "what is pointed at stays";
  key(Qt::Key_0, Qt::ControlModifier);
  EXPECT_EQ(view.zoom(), 100);
  key(Qt::Key_Home);
  EXPECT_TRUE(view.visible().contains(canvas().scene().extent()));
  key(Qt::Key_0, Qt::ControlModifier);

  for (const bool byHand : {true, false}) {
    const Qt::MouseButton button = byHand ? Qt::LeftButton : Qt::MiddleButton;
    const Point before = view.scroll();
    const QPoint from = title("Order");
    if (byHand) QTest::keyPress(window->windowHandle(), Qt::Key_Space);
    move(from);
    EXPECT_EQ(cursor(), byHand ? Qt::OpenHandCursor : Qt::SizeAllCursor);
    hold(from, from + QPoint(90, 60), button);
    EXPECT_EQ(cursor(), Qt::ClosedHandCursor);
    release(from + QPoint(90, 60), button);
    if (byHand) QTest::keyRelease(window->windowHandle(), Qt::Key_Space);
    EXPECT_EQ(view.scroll(), before - (Point{1350, 900}));
    EXPECT_EQ(box("Order").bounds().topLeft(), (Point{1500, 1500})) << "nothing was moved";
  }
}

TEST_F(CommandingWindow, keysNudgeAndWalk) {
  click(title("Order"));
  key(Qt::Key_Right);
  EXPECT_EQ(box("Order").bounds().left, 1515);
  key(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(box("Order").bounds().top, 1650);
  std::string walked;
  for (int i = 0; i < 3; ++i) {
    key(Qt::Key_Tab);
    for (const canvas::Item* item : canvas().selection().selectedItems()) {
      walked += std::string(item->itemKey()) + ' ';
    }
  }
  EXPECT_EQ(walked, "line customer lines ");
  key(Qt::Key_Tab, Qt::ShiftModifier);
  EXPECT_TRUE(box("Customer").selected());
}

TEST_F(CommandingWindow, whatIsDrawnIsThereAgainWhenItIsReopened) {
  push("Generalization");
  drag(border("Customer", Side::top), border("Order", Side::bottom));
  push("Association");
  hold(border("OrderLine", Side::right), at({13500, 3000}));
  release(border("OrderLine", Side::bottom, 0.75));
  push("Select");
  drag(title("OrderLine"), title("OrderLine") + QPoint(90, 30));
  click(lineMiddle());
  drag(lineMiddle(), at({7500, 5250}));
  push("ViewOperations");
  push("COM::Enum");
  canvas().unselectAll();
  canvas().viewport().scrollTo({});
  const std::string left = describe(canvas());
  shell->chosenFiles.emplace_back(path("drawn.dim"));
  key(Qt::Key_S, Qt::ControlModifier);
  window->refreshState();
  EXPECT_FALSE(window->isWindowModified());

  test::WindowHand again;
  again.window->openFiles({path("drawn.dim")});
  again.canvas().zoom(100);
  again.canvas().viewport().scrollTo({});
  EXPECT_EQ(describe(again.canvas()), left);
  EXPECT_FALSE(again.button("ViewOperations").isChecked());
  EXPECT_FALSE(again.button("COM::Enum").isChecked());
  EXPECT_TRUE(again.button("ViewAttributes").isChecked());
  EXPECT_EQ(test::checkAgreement(again.editor()), "");
}

}  // namespace
}  // namespace brisel::qt
