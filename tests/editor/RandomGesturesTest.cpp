#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "canvas/DiagramControl.h"
#include "editor/CLSEditor.h"
#include "platform/Error.h"
#include "support/CanvasChecks.h"
#include "support/EditorBench.h"
#include "support/EditorChecks.h"
#include "support/RepositoryInvariants.h"

namespace brisel::editor {
namespace {

using platform::each;
using platform::Point;
using platform::Rect;
using test::EditorBench;

/// A person and a host who do anything at any time, and a host whose event handlers do so too.
class Hands : public EditorBench {
 public:
  explicit Hands(std::uint32_t seed)
      : canvas(dynamic_cast<canvas::DiagramControl&>(*editor->diagram())), m_random(seed) {
    for (const char* key :
         {"Association", "CompositeAggregation", "SharedAggregation", "Generalization"}) {
      canvas.AddButton(key, "", "", "", true);
    }
    for (const char* key : {"Divide", "Assemble"}) editor->ActiveBar21()->addLooseTool(key, key);
    for (const char* name : {"A", "B", "C", "D"}) {
      addClass(name);
      addAttribute(name, "x", "Int");
      addOperation(name, std::string("f") + name, "Int");
    }
    editor->Populate();
    editor->Compartments("ViewAttributes");
    editor->Compartments("ViewOperations");
    editor->Layout("MATRIX");
    for (auto* event : {&editor->ClassCreated, &editor->ClassDeleted, &editor->ClassMoved,
                        &editor->ClassChanged, &editor->ClassClicked, &editor->ClassEnter,
                        &editor->AssocCreated, &editor->AssocClicked, &editor->ClassRClicked}) {
      m_listening.push_back(event->connect([this](const std::string&) { interfere(); }));
    }
  }

  void step() {
    using Action = void (Hands::*)();
    static constexpr std::array<Action, 17> kActions = {
        &Hands::move,    &Hands::move,    &Hands::press,  &Hands::release,
        &Hands::release, &Hands::drag,    &Hands::drag,   &Hands::drag,
        &Hands::key,     &Hands::button,  &Hands::typing, &Hands::command,
        &Hands::menu,    &Hands::hostile, &Hands::pane,   &Hands::pane,
        &Hands::morph};
    try {
      (this->*kActions[below(kActions.size())])();
    } catch (const platform::Error&) {
      // What a caller of the canvas is told of a call that cannot be.
    }
  }

  canvas::DiagramControl& canvas;
  std::string last;  ///< what was done last, for whoever reads of a failure

 private:
  std::size_t below(std::size_t count) { return m_random() % count; }
  bool once(std::size_t in) { return below(in) == 0; }
  template <std::size_t N>
  const char* oneOf(const std::array<const char*, N>& words) {
    return words[below(N)];
  }

  /// Mostly where something is: in a box, on its border, on a line.
  Point place() {
    const double somewhere = static_cast<double>(below(20000)) - 2000;
    if (once(5)) return {somewhere, static_cast<double>(below(12000))};
    const auto boxes = canvas.getAllNodes();
    if (once(3) && canvas.getAllLinks()->Count() > 0) {
      const auto lines = canvas.getAllLinks();
      const auto line = platform::as<canvas::Link>(
          lines->Item(1 + static_cast<std::int64_t>(below(lines->Count() & 0xFFFF))));
      return line->points()[below(line->points().size())];
    }
    if (boxes->Count() == 0) return {somewhere, 0};
    const auto box = platform::as<canvas::Node>(
        boxes->Item(1 + static_cast<std::int64_t>(below(boxes->Count() & 0xFFFF))));
    const Rect bounds = box->bounds();
    const double share = static_cast<double>(below(101)) / 100;
    return {bounds.left + (once(2) ? 0 : bounds.width * share),
            bounds.top + bounds.height * static_cast<double>(below(101)) / 100};
  }
  const char* modifiers() { return oneOf<6>({"", "", "", "ctrl", "shift", "ctrl+shift"}); }
  const char* mouseButton() {
    return oneOf<6>({"left", "left", "left", "left", "right", "middle"});
  }
  std::string classKey() {
    const auto boxes = canvas.getAllNodes();
    if (boxes->Count() == 0 || once(8)) return once(2) ? "" : "nowhere";
    const auto count = static_cast<std::size_t>(boxes->Count());
    return platform::as<canvas::Node>(boxes->Item(1 + static_cast<std::int64_t>(below(count))))
        ->key();
  }
  std::string freshKey() { return "k" + std::to_string(below(60)); }

  void move() {
    last = "move";
    const Point at = place();
    canvas.PointerMove(at.x, at.y);
  }
  void press() {
    last = "press";
    const Point at = place();
    canvas.PointerPress(at.x, at.y, mouseButton(), modifiers());
  }
  void release() {
    last = "release";
    const Point at = place();
    canvas.PointerRelease(at.x, at.y, mouseButton(), modifiers());
  }
  void drag() {
    last = "drag";
    const Point from = place();
    const Point to = place();
    const char* with = once(5) ? "right" : "left";
    canvas.PointerPress(from.x, from.y, with, modifiers());
    const Point between = (from + to) * 0.5;
    canvas.PointerMove(between.x, between.y);
    canvas.PointerMove(to.x, to.y);
    if (once(8)) return;
    if (once(10)) canvas.KeyPress("Escape", "");
    canvas.PointerRelease(to.x, to.y, with, "");
  }
  void key() {
    last = oneOf<13>({"Delete", "F2", "Return", "Escape", "Tab", "Left", "Down", "Home", "Space",
                      "F1", "a", "+", "q"});
    canvas.KeyPress(last, modifiers());
    if (last == "Space") canvas.KeyRelease(last, "");
  }
  void button() {
    last = oneOf<14>({"Select", "Association", "CompositeAggregation", "SharedAggregation",
                      "Generalization", "ViewAttributes", "ViewOperations", "ViewParameters",
                      "COM::Enum", "ZoomIn", "ZoomNo", "AlignLeft", "LayoutMatrix", "Save"});
    click(last);
    if (once(4)) editor->CreateMode();
    if (once(8)) canvas.DrawCreateMode();
  }
  void typing() {
    last = "typing";
    editor->ClassName()->SetText(oneOf<4>({"Typed", "", "zwei\nZeilen", "名前"}));
    editor->ClassName()->KeyPress(oneOf<3>({"Return", "Escape", "Tab"}), "");
  }
  void command() {
    const std::string from = classKey();
    const std::string to = classKey();
    const std::size_t which = below(10);
    last = "command " + std::to_string(which);
    switch (which) {
      case 0:
      case 1:
        editor->CreateClass(once(6) ? from : freshKey(), "Made", "", "", "", "public");
        break;
      case 2:
        editor->CreateAssociation(freshKey(), "", "", from, to);
        break;
      case 3:
        editor->CreateAggregation(freshKey(), "", "", from, to, once(2));
        break;
      case 4:
        editor->CreateGeneralization(freshKey(), "", "", from, to);
        break;
      case 5:
        editor->DeleteClass(from);
        break;
      case 6:
        editor->ShowCompartments(from, once(2) ? "Operations" : "Attributes", once(2));
        break;
      case 7:
        editor->EditClass(from);
        break;
      case 8:
        editor->AddPositions();
        break;
      default:
        redraw();
    }
  }
  void menu() {
    last = oneOf<14>({"miPopupEdit", "miPopupProperties", "miPopupSizeToFit", "miTest",
                      "miCompartmentsAttributes", "miCompartmentsOperations", "Divide", "Assemble",
                      "miMorphClassSplit", "miMorphClassSplitSemantic", "miMorphExtractAttribute",
                      "miMorphMerge", "miMorphMerge", "miMorpToAss"});
    answerForm({{"ClassName", "SetText", "Split"},
                {once(2) ? "AllAttributes" : "AllOperations", "Click"},
                {"Ok", "Click"}});
    answerForm({{"Attributes", "Select", 1}, {"Ok", "Click"}});
    if (once(2)) editor->ActiveBar21()->Tag(classKey());
    editor->ActiveBar21()->Click(last);
    if (once(4)) editor->ActiveBar21()->showBand("tbProperty", once(2));
  }
  void morph() {
    const auto lines = canvas.getAllLinks();
    if (lines->Count() == 0) return;
    last = oneOf<5>({"miMorpToAss", "miMorphToAggShared", "miMorphToAggComposite", "miMorphToGen",
                     "miMorphToAttr"});
    const auto count = static_cast<std::size_t>(lines->Count());
    const auto line = lines->Item(1 + static_cast<std::int64_t>(below(count)));
    editor->ActiveBar21()->Tag(platform::as<canvas::Link>(line)->key());
    editor->ActiveBar21()->Click(last);
  }
  /// The class pane, whether it is open or not.
  void pane() {
    editors::CLSClassControl& control = *editor->CLSClassControl1();
    const std::size_t which = below(9);
    last = "pane " + std::to_string(which);
    switch (which) {
      case 0:
        control.AttributeName()->SetText(oneOf<4>({"a;b; ;c", "x", "", "größer"}));
        break;
      case 1:
        control.OperationName()->SetText(oneOf<3>({"f;g", "fA", ";;"}));
        break;
      case 2:
        control.AttributeType()->Enter(oneOf<4>({"Int", "Text", "A", " "}));
        break;
      case 3:
        control.OperationType()->Enter(oneOf<3>({"Int", "void", ""}));
        break;
      case 4:
        control.ToolAttr()->Click(oneOf<3>({"miAttrNew", "miAttrAdd", "miAttrDelete"}));
        break;
      case 5:
        control.ToolOperation()->Click(oneOf<4>(
            {"miOperationNew", "miOperationAdd", "miOperationDelete", "miOperationParameters"}));
        break;
      case 6:
        control.ParameterName()->SetText("p;q");
        control.ParameterType()->Enter("Int");
        control.ToolParameter()->Click(oneOf<2>({"miParameterDelete", "miParameterOk"}));
        break;
      case 7:
        if (const auto rows = control.Operations()->rowCount(); rows > 0) {
          const auto row = 1 + static_cast<std::int64_t>(below(rows));
          once(2) ? control.Operations()->Select(row) : control.Operations()->Open(row);
        }
        control.PropertyOk()->Click();
        break;
      default:
        removeAny(oneOf<3>({"DataType", "Operation", "Stereotype"}));
    }
    if (once(20)) control.Close();
  }
  /// Behind the editor's back; what it was the type of goes too, so that the model can be shown.
  void removeAny(const char* type) {
    const auto all = store->MetaNodes(type)->extension();
    if (all->Count() < 3) return;
    const auto one = platform::as<platform::Node>(
        all->Item(1 + static_cast<std::int64_t>(below(static_cast<std::size_t>(all->Count())))));
    for (const char* link :
         {"Attrib.Has.DataType", "Operation.Has.DataType", "Parameter.Has.DataType"}) {
      if (one->Incoming(link)->Count() > 0) return;
    }
    if (type == std::string_view("Operation")) {
      model->DeleteOperation(one->identifier());
    } else if (one->Incoming("Class.As.Stereotype")->Count() == 0) {
      all->Remove(one->identifier(), false);
    }
  }
  void hostile() {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::array numbers = {kNaN, kInfinity, -kInfinity, 1e300, -1e12, 0.0, -5.0, 4e9};
    const auto number = [&] { return numbers[below(numbers.size())]; };
    const std::size_t which = below(8);
    last = "hostile " + std::to_string(which);
    switch (which) {
      case 0:
        canvas.createNode(once(2) ? freshKey() : classKey(), "any", number(), number(), number(),
                          number(), -1);
        break;
      case 1:
        canvas.createNode(freshKey(), "", 0, 0, -1, 0, 99);
        break;
      case 2:
        canvas.createLink(once(3) ? classKey() : freshKey(), "", classKey(), classKey());
        break;
      case 3:
        canvas.PointerMove(number(), number());
        break;
      case 4:
        canvas.ItemDropped(classKey(), "nothing", number(), number());
        break;
      case 5:
        canvas.LinkEndDropped("nothing", classKey(), once(2));
        break;
      case 6:
        canvas.zoom(number());
        break;
      default:
        if (const auto box = canvas.getNode(classKey())) {
          box->bounds({number(), number(), number(), number()});
        }
    }
  }
  /// A handler of the host that does something of its own, but not within its own doing.
  void interfere() {
    if (m_interferes || !once(12)) return;
    m_interferes = true;
    const std::string before = last;
    if (once(3)) {
      editor->DeleteClass(classKey());
    } else {
      step();
    }
    last = before + " with a handler's " + last;
    m_interferes = false;
  }

  std::mt19937 m_random;
  bool m_interferes = false;
  std::vector<platform::Connection> m_listening;
};

TEST(RandomGestures, leaveCanvasAndModelInStep) {
  for (std::uint32_t seed = 1; seed <= 12; ++seed) {
    Hands hands(seed);
    for (int step = 1; step <= 500; ++step) {
      hands.step();
      const std::string wrong = test::checkAgreement(hands) + test::checkInvariants(hands.canvas);
      ASSERT_EQ(wrong, "") << "seed " << seed << ", step " << step << ": " << hands.last
                           << "\nlast report: "
                           << (hands.messages.empty() ? "" : hands.messages.back());
    }
    test::checkInvariants(*hands.store);
    hands.redraw();
    EXPECT_EQ(test::checkAgreement(hands), "") << "seed " << seed << ", drawn anew";
  }
}

}  // namespace
}  // namespace brisel::editor
