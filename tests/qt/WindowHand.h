#pragma once

#include <QLabel>
#include <QMenu>
#include <QTest>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "WindowBench.h"
#include "canvas/Node.h"

namespace brisel::test {

/// A person at the application's window. The mouse goes through the window to whatever lies under
/// it, keys go to whoever has the keyboard. Places are pixels of the window.
class WindowHand : public WindowBench {
 public:
  WindowHand() {
    window->resize(1280, 860);
    QApplication::processEvents();
    activate();
    canvas().viewport().scrollTo({});
  }

  void press(QPoint at, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mousePress(surface(), button, {}, at);
  }
  void move(QPoint to) { QTest::mouseMove(surface(), to); }
  void release(QPoint at, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseRelease(surface(), button, {}, at);
  }
  void click(QPoint at, Qt::MouseButton button = Qt::LeftButton) {
    move(at);
    press(at, button);
    release(at, button);
  }
  void doubleClick(QPoint at) { QTest::mouseDClick(surface(), Qt::LeftButton, {}, at); }
  /// Presses and moves; nothing is released yet.
  void hold(QPoint from, QPoint to, Qt::MouseButton button = Qt::LeftButton) {
    move(from);
    press(from, button);
    move((from + to) / 2);
    move(to);
  }
  void drag(QPoint from, QPoint to) {
    hold(from, to);
    release(to);
  }
  void wheel(QPoint at, int steps, Qt::KeyboardModifiers modifiers = {}) {
    QWidget* below = window->childAt(at);
    QWheelEvent event(below->mapFrom(window.get(), QPointF(at)), window->mapToGlobal(QPointF(at)),
                      {}, {0, 120 * steps}, Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(below, &event);
  }
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(surface(), key, modifiers);
  }
  void write(std::string_view text) {
    for (const char letter : text) QTest::keyClick(surface(), letter);
  }
  /// Clicks the button of a tool bar.
  void push(std::string_view key) {
    for (const qt::CanvasToolBar* bar :
         {&window->editor().toolBar(), &window->editor().drawingTools()}) {
      QAction* action = bar->action(key);
      const QWidget* shown = action ? bar->widgetForAction(action) : nullptr;
      if (!shown || !shown->isVisible()) continue;
      click(shown->mapTo(window.get(), shown->rect().center()));
      return;
    }
    ADD_FAILURE() << "no button " << key << " is seen";
  }
  /// The menu that is open, or nothing.
  [[nodiscard]] static QMenu* menu() {
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }
  /// Clicks a tool of the menu that is open; a sub-menu opens by the arrow keys.
  void choose(const char* tool) {
    QMenu* open = menu();
    ASSERT_NE(open, nullptr) << tool;
    QAction* action = nullptr;
    for (QAction* one : open->actions()) action = one->objectName() == tool ? one : action;
    ASSERT_NE(action, nullptr) << tool;
    if (!action->menu()) {
      QTest::mouseClick(open, Qt::LeftButton, {}, open->actionGeometry(action).center());
      return;
    }
    for (qsizetype i = 0; i < open->actions().size() && open->activeAction() != action; ++i) {
      key(Qt::Key_Down);
    }
    key(Qt::Key_Right);
  }

  [[nodiscard]] QPoint at(platform::Point twips) const {
    const qt::DiagramView& view = window->editor().view();
    return view.viewport()->mapTo(window.get(), view.fromTwips(twips).toPoint());
  }
  [[nodiscard]] QPoint title(std::string_view text) const {
    return at(box(text).titleArea().center());
  }
  [[nodiscard]] QPoint row(std::string_view text, std::size_t section, int number) const {
    const canvas::Node& node = box(text);
    return at(
        {node.bounds().left + 600, node.firstRow(section) + (number + 0.5) * node.rowHeight()});
  }
  /// A point of the border, clear of the handles: so far along it from its upper or left end.
  enum class Side { left, right, top, bottom };
  [[nodiscard]] QPoint border(std::string_view text, Side side, double along = 0.25) const {
    const platform::Rect box = this->box(text).bounds();
    const platform::Point on{box.left + along * box.width, box.top + along * box.height};
    switch (side) {
      case Side::left:
        return at({box.left, on.y});
      case Side::right:
        return at({box.right(), on.y});
      case Side::top:
        return at({on.x, box.top});
      case Side::bottom:
        break;
    }
    return at({on.x, box.bottom()});
  }

  [[nodiscard]] canvas::DiagramControl& canvas() const { return document->canvas(); }
  [[nodiscard]] editor::CLSEditor& editor() const { return document->editor(); }
  [[nodiscard]] canvas::Node& box(std::string_view text) const {
    for (canvas::Node& node : canvas().scene().nodes()) {
      if (node.text() == text) return node;
    }
    throw std::out_of_range("no box " + std::string(text));
  }
  /// The line that was drawn last, or nothing.
  [[nodiscard]] canvas::Link* lastLine() const {
    canvas::Link* last = nullptr;
    for (canvas::Link& link : canvas().scene().links()) last = &link;
    return last;
  }
  [[nodiscard]] std::int64_t count(std::string_view type) const {
    return editor().Repository()->MetaNodes(type)->extension()->Count();
  }
  [[nodiscard]] std::string status(const char* field) const {
    return window->findChild<QLabel*>(field)->text().toStdString();
  }
  [[nodiscard]] Qt::CursorShape cursor() const {
    return window->editor().view().viewport()->cursor().shape();
  }
  /// What the canvas shows, with everything that is laid over it.
  [[nodiscard]] QImage picture() const {
    QApplication::processEvents();
    return window->editor().view().viewport()->grab().toImage();
  }
  /// Whether that is what the canvas shows now, but for roundings of colours.
  [[nodiscard]] bool looksLike(const QImage& before) const {
    constexpr int kRounding = 3;
    const QImage now = picture();
    if (now.size() != before.size()) return false;
    for (int y = 0; y < now.height(); ++y) {
      for (int x = 0; x < now.width(); ++x) {
        const QRgb a = now.pixel(x, y);
        const QRgb b = before.pixel(x, y);
        for (const int apart : {qRed(a) - qRed(b), qGreen(a) - qGreen(b), qBlue(a) - qBlue(b)}) {
          if (std::abs(apart) > kRounding) return false;
        }
      }
    }
    return true;
  }

 private:
  [[nodiscard]] QWindow* surface() const { return window->windowHandle(); }
};

}  // namespace brisel::test
