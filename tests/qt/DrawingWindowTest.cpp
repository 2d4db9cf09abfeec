#include "WindowHand.h"
#include "qt/NameBox.h"
#include "support/CanvasChecks.h"
#include "support/EditorChecks.h"

namespace brisel::qt {
namespace {

using canvas::middleOf;
using platform::Arrow;
using platform::Point;
using platform::Rect;
using Side = test::WindowHand::Side;
using test::checkAgreement;
using test::checkInvariants;
using test::describe;

/// A person draws a diagram in the application's window; at the end of each case canvas and model
/// must agree.
class DrawingWindow : public testing::Test, public test::WindowHand {
 protected:
  void TearDown() override {
    EXPECT_EQ(checkAgreement(editor()), "");
    EXPECT_EQ(checkInvariants(canvas()), "");
    EXPECT_TRUE(shell->asked.empty()) << shell->asked.front();
  }

  void drawClass(Point at, std::string_view name) {
    push("NewClass");
    click(this->at(at));
    write(name);
    key(Qt::Key_Return);
  }
  /// Three classes, drawn and named by hand: Left and Right side by side, Below under them.
  void drawThree() {
    drawClass({1500, 1500}, "Left");
    drawClass({9000, 2250}, "Right");
    drawClass({4500, 7500}, "Below");
  }
  [[nodiscard]] const platform::Node& modelOf(const canvas::Link& line) {
    return *editor().GetAssociationFromLink(line.key())->clsObject();
  }
  [[nodiscard]] NameBox& nameBox() const { return window->editor().nameBox(); }
};

TEST_F(DrawingWindow, classesAreDrawnByClicksAndNamedByTyping) {
  push("NewClass");
  EXPECT_TRUE(button("NewClass").isChecked());
  EXPECT_EQ(status("StatusTool"), "New class");
  move(at({3000, 3000}));
  EXPECT_EQ(status("StatusHint"), "Click to place a class");
  EXPECT_EQ(cursor(), Qt::CrossCursor);

  click(at({3000, 3000}));
  ASSERT_TRUE(nameBox().isVisible());
  EXPECT_EQ(nameBox().selectedText(), "newClass");
  EXPECT_EQ(count("Class"), 1);
  write("Order");
  key(Qt::Key_Return);
  EXPECT_FALSE(nameBox().isVisible());
  EXPECT_EQ(box("Order").bounds().topLeft(), (Point{3000, 3000}));

  click(at({9000, 3000}));
  write("Line");
  click(at({9000, 7500}));  // the next class ends the naming
  EXPECT_NO_THROW(static_cast<void>(box("Line")));
  key(Qt::Key_Escape);  // and this one keeps its name
  EXPECT_NO_THROW(static_cast<void>(box("newClass")));
  EXPECT_TRUE(button("NewClass").isChecked()) << "Escape ended the naming, not the drawing";
  key(Qt::Key_Escape);
  EXPECT_FALSE(button("NewClass").isChecked());
  click(at({1500, 9000}));
  EXPECT_EQ(count("Class"), 3);
  window->refreshState();
  EXPECT_EQ(status("StatusCounts"), "3 classes, 0 relationships");
}

TEST_F(DrawingWindow, aClassDraggedOpenHasThatSize) {
  push("NewClass");
  drag(at({3000, 3000}), at({8250, 6000}));
  key(Qt::Key_Escape);
  EXPECT_EQ(box("newClass").bounds(), (Rect{3000, 3000, 5250, 3000}));
}

TEST_F(DrawingWindow, eachKindOfRelationshipIsDrawnFromBorderToBorder) {
  drawThree();
  const struct {
    const char* button;
    const char* type;
    Arrow begin, end;
    const char* from;
    const char* to;
    bool isComposite;
  } kinds[] = {
      {"Association", "Association", Arrow::none, Arrow::none, "Left", "Right", false},
      {"CompositeAggregation", "Aggregation", Arrow::filledDiamond, Arrow::none, "Left", "Right",
       true},
      {"SharedAggregation", "Aggregation", Arrow::diamond, Arrow::none, "Right", "Left", false},
      {"Generalization", "Generalization", Arrow::none, Arrow::triangle, "Left", "Right", false},
  };
  std::int64_t lines = 0;
  for (const auto& kind : kinds) {
    const bool leftwards = std::string_view(kind.from) == "Right";
    push(kind.button);
    EXPECT_TRUE(button(kind.button).isChecked()) << kind.button;
    EXPECT_FALSE(button("NewClass").isChecked()) << kind.button;
    const QPoint from = border(kind.from, leftwards ? Side::left : Side::right);
    const QPoint to = border(kind.to, leftwards ? Side::right : Side::left, 0.75);
    move(to);
    const QImage before = picture();
    move(from);
    EXPECT_EQ(cursor(), Qt::CrossCursor) << kind.button;
    hold(from, at({6500, 5500}));
    EXPECT_EQ(status("StatusHint"), "Drag to the other class") << kind.button;
    move(to);
    EXPECT_EQ(status("StatusHint"), "Release to draw the line") << kind.button;
    EXPECT_FALSE(looksLike(before)) << kind.button << ": the line is seen while it is drawn";
    release(to);
    ++lines;
    ASSERT_EQ(canvas().getAllLinks()->Count(), lines) << kind.button;
    const canvas::Link& line = *lastLine();
    EXPECT_EQ(line.sourceNode().text(), kind.from) << kind.button;
    EXPECT_EQ(line.targetNode().text(), kind.to) << kind.button;
    EXPECT_EQ(line.beginArrow(), static_cast<int>(kind.begin)) << kind.button;
    EXPECT_EQ(line.endArrow(), static_cast<int>(kind.end)) << kind.button;
    EXPECT_EQ(modelOf(line).Parent()->name(), kind.type) << kind.button;
    EXPECT_EQ(modelOf(line).GetProperty("isComposite").isTrue(), kind.isComposite) << kind.button;
  }
  EXPECT_EQ(count("Aggregation"), 2);
}

TEST_F(DrawingWindow, aLineBackToItsOwnClassIsALoop) {
  drawThree();
  push("Association");
  hold(border("Left", Side::right), at({6000, 3750}));
  const QPoint back = border("Left", Side::bottom, 0.75);
  move(back);
  release(back);
  const canvas::Link* loop = lastLine();
  ASSERT_NE(loop, nullptr);
  EXPECT_TRUE(loop->isLoop());
  EXPECT_FALSE(box("Left").bounds().grownBy(150).contains(loop->extent())) << "it can be seen";
  EXPECT_EQ(modelOf(*loop).Parent()->name(), "Association");
}

TEST_F(DrawingWindow, circlesOfGeneralizationsAreRefusedWithAWord) {
  drawThree();
  push("Generalization");
  drag(border("Left", Side::right), border("Right", Side::left));
  ASSERT_EQ(count("Generalization"), 1);
  const struct {
    QPoint from, over, to;
    const char* word;
  } refused[] = {
      {border("Right", Side::left, 0.75), at({6500, 5500}), border("Left", Side::right, 0.75),
       "Left is already below Right"},
      {border("Left", Side::right, 0.75), at({6500, 5500}), border("Left", Side::bottom),
       "A class cannot be its own super class"},
  };
  for (const auto& one : refused) {
    hold(one.from, one.over);
    move(one.to);
    EXPECT_EQ(status("StatusHint"), one.word);
    EXPECT_EQ(cursor(), Qt::ForbiddenCursor);
    release(one.to);
    EXPECT_EQ(canvas().getAllLinks()->Count(), 1) << one.word;
  }
}

TEST_F(DrawingWindow, theSelectedClassIsRenamedByF2) {
  const struct {
    const char* typed;
    void (*end)(DrawingWindow&);
    const char* named;
  } ends[] = {
      {"Entered", [](DrawingWindow& hand) { hand.key(Qt::Key_Return); }, "Entered"},
      {"Dropped", [](DrawingWindow& hand) { hand.key(Qt::Key_Escape); }, "Entered"},
      {"Clicked",
       [](DrawingWindow& hand) {
         hand.click(hand.at({10500, 9000}));
       },
       "Clicked"},
      {"Tabbed", [](DrawingWindow& hand) { hand.key(Qt::Key_Tab); }, "Tabbed"},
      {"Pushed", [](DrawingWindow& hand) { hand.push("ZoomNo"); }, "Pushed"},
      {"  ", [](DrawingWindow& hand) { hand.key(Qt::Key_Return); }, "Pushed"},
  };
  drawThree();
  push("Select");
  std::string name = "Left";
  for (const auto& one : ends) {
    click(title(name));
    key(Qt::Key_F2);
    ASSERT_TRUE(nameBox().isVisible()) << one.typed;
    EXPECT_EQ(nameBox().selectedText().toStdString(), name);
    write(one.typed);
    one.end(*this);
    EXPECT_FALSE(nameBox().isVisible()) << one.typed;
    name = one.named;
    EXPECT_EQ(editor().GetClassFromNode(box(name).key())->name(), name) << one.typed;
  }
}

TEST_F(DrawingWindow, theEndOfALineIsDraggedToAnotherClass) {
  drawThree();
  push("Association");
  drag(border("Left", Side::right), border("Right", Side::left));
  push("Select");
  canvas::Link& line = *lastLine();
  const auto grip = [&](bool atSource) {
    return at(atSource ? line.points().front() : line.points().back());
  };
  click(at(middleOf(line.points())));
  ASSERT_TRUE(line.selected());
  hold(grip(false), title("Below"));
  EXPECT_EQ(status("StatusHint"), "Release to join the line to this class");
  release(title("Below"));
  EXPECT_EQ(line.targetNode().text(), "Below");
  drag(grip(true), title("Right"));
  EXPECT_EQ(line.sourceNode().text(), "Right");
  const std::string joined = describe(canvas());
  drag(grip(true), at({10500, 9750}));  // nothing is there
  EXPECT_EQ(describe(canvas()), joined);
  EXPECT_EQ(count("Association"), 1);
}

TEST_F(DrawingWindow, bendsAreAddedMovedAndTakenAway) {
  drawThree();
  push("Association");
  drag(border("Left", Side::right), border("Right", Side::left));
  push("Select");
  canvas::Link& line = *lastLine();
  click(at(middleOf(line.points())));
  drag(at(middleOf(line.points())), at({6000, 5250}));
  ASSERT_EQ(line.bends(), (std::vector<Point>{{6000, 5250}}));
  drag(at(line.bends().front()), at({6750, 5250}));
  EXPECT_EQ(line.bends(), (std::vector<Point>{{6750, 5250}}));
  doubleClick(at(line.bends().front()));
  EXPECT_TRUE(line.bends().empty());
}

TEST_F(DrawingWindow, membersAreDraggedFromClassToClass) {
  drawThree();
  push("Select");
  const auto model = editor().CLSRepository();
  const std::string owner = box("Left").key();
  const std::string type = model->MakeDataType("int", "", "")->identifier();
  platform::Ref<platform::Link> link;
  for (const char* name : {"first", "second"}) model->AddAttributeS(owner, name, type, link);
  for (const char* name : {"open", "close"}) model->AddOperationS(owner, name, type, link);
  editor().GetClassFromNode(owner)->Populate();
  box("Left").fitToText(true);
  const auto rows = [&](const char* name, std::size_t section) {
    std::string texts;
    for (const canvas::Row& row : box(name).section(section).rows()) texts += row.text + '|';
    return texts;
  };

  const QImage before = picture();
  hold(row("Left", 0, 0), title("Right"));
  EXPECT_EQ(cursor(), Qt::ClosedHandCursor);
  EXPECT_FALSE(looksLike(before)) << "a ghost follows the hand";
  release(title("Right"));
  EXPECT_NE(rows("Right", 0).find("first"), std::string::npos);
  EXPECT_EQ(rows("Left", 0).find("first"), std::string::npos);

  model->AddAttributeS(box("Below").key(), "second", type, link);
  hold(row("Left", 0, 0), title("Below"));
  EXPECT_EQ(status("StatusHint"), "Release to move it to this class");
  release(title("Below"));
  EXPECT_EQ(status("StatusHint"), "Below has a member named second already");

  const QPoint ground = at({9750, 7500});
  hold(row("Left", 0, 0), ground);
  EXPECT_EQ(cursor(), Qt::ForbiddenCursor) << "an attribute needs a class";
  release(ground);
  EXPECT_NE(rows("Left", 0).find("second"), std::string::npos);
  EXPECT_EQ(count("Class"), 3);

  drag(row("Left", 1, 0), ground);
  drag(row("Left", 1, 0), at({1500, 9000}));
  EXPECT_NE(rows("OperationClass 1", 1).find("open"), std::string::npos);
  EXPECT_NE(rows("OperationClass 2", 1).find("close"), std::string::npos);
  EXPECT_EQ(box("OperationClass 1").bounds().topLeft(), (Point{9750, 7500}));
  EXPECT_EQ(count("Operation"), 2);
  EXPECT_FALSE(nameBox().isVisible()) << "it has a name already";
}

}  // namespace
}  // namespace brisel::qt
