#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "component/Document.h"
#include "component/Suite.h"
#include "qt/CanvasToolBar.h"
#include "qt/DiagramView.h"
#include "qt/EditorWidget.h"
#include "qt/MainWindow.h"
#include "qt/MessageBar.h"
#include "qt/QtShell.h"

namespace brisel::test {

/// The window system's shell with a person who answers at once.
class AnsweringShell : public qt::QtShell {
 public:
  std::deque<std::string> answers;                     ///< to message boxes, by caption
  std::deque<std::optional<std::string>> chosenFiles;  ///< nothing cancels
  std::vector<std::string> asked;
  /// What the person does in the next form, once each; without anything to do, it is closed.
  std::deque<std::function<void(QWidget& dialog)>> inForms;

  std::string showMessage(const platform::Message& message) override {
    asked.push_back(message.text);
    return answers.empty() ? message.buttons.back() : take(answers);
  }
  std::optional<std::string> askOpenFile(const platform::FileDialog&) override { return file(); }
  std::optional<std::string> askSaveFile(const platform::FileDialog&) override { return file(); }
  void runForm(std::string_view name, platform::Object& form) override {
    const auto doing =
        inForms.empty() ? std::function<void(QWidget&)>([](QWidget&) {}) : take(inForms);
    QTimer::singleShot(0, [doing] {
      QWidget* dialog = QApplication::activeModalWidget();
      ASSERT_NE(dialog, nullptr);
      dialog->activateWindow();
      ASSERT_TRUE(
          QTest::qWaitFor([&] { return dialog->isAncestorOf(QApplication::focusWidget()); }));
      const QPointer<QWidget> open(dialog);
      doing(*dialog);
      if (open && open->isVisible()) open->close();
    });
    const QPointer<QWidget> front = QApplication::activeWindow();
    qt::QtShell::runForm(name, form);
    // Not every platform gives the keyboard back to the window before.
    if (front) front->activateWindow();
  }

 private:
  template <class T>
  static T take(std::deque<T>& queue) {
    T front = std::move(queue.front());
    queue.pop_front();
    return front;
  }
  std::optional<std::string> file() {
    return chosenFiles.empty() ? std::nullopt : take(chosenFiles);
  }
};

/// The application's window on the whole suite, and a folder for its files.
struct WindowBench {
  WindowBench() : registry(shell) {
    component::registerSuite(registry);
    registry.installationFolder(BRISEL_BINARY_DIR "/share/brisel");
    document = std::make_unique<component::Document>(registry);
    window = std::make_unique<qt::MainWindow>(*document, shell);
    // What a window asks for another one it does itself here.
    opened = window->OpenAsked.connect([this](const auto& file) { window->openFiles({file}); });
    window->resize(1100, 800);
    window->show();
    QApplication::processEvents();
  }

  /// Two classes with members and a relationship between them.
  void drawSample() const {
    editor::CLSEditor& editor = document->editor();
    const auto model = editor.CLSRepository();
    editor.CreateClass("order", "Order", "", "", "", "public");
    editor.CreateClass("line", "OrderLine", "", "", "", "public");
    const auto type = model->MakeDataType("int", "", "");
    platform::Ref<platform::Link> link;
    model->AddAttributeS("order", "number", type->identifier(), link);
    editor.CreateAggregation("lines", "lines", "", "order", "line", true);
  }
  [[nodiscard]] std::string path(const char* name) const {
    return folder.filePath(name).toStdString();
  }
  [[nodiscard]] QAction& button(std::string_view key) const {
    return *window->editor().action(key);
  }

  /// The keyboard is the window's.
  void activate() const {
    window->activateWindow();
    static_cast<void>(waitFor([&] { return window->isActiveWindow(); }));
  }
  /// What a window manager has to answer first comes true in the end, or does not.
  template <class Condition>
  [[nodiscard]] static bool waitFor(Condition&& isTrue) {
    QElapsedTimer waited;
    waited.start();
    while (!isTrue() && waited.elapsed() < 3000) QApplication::processEvents();
    return isTrue();
  }
  /// Presses a key where the keyboard is.
  static void type(int key, const QString& text = {},
                   Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QWidget* widget = QApplication::focusWidget();
      if (!widget) return;
      QKeyEvent event(type, key, modifiers, text);
      QApplication::sendEvent(widget, &event);
    }
  }
  static void type(const QString& text) {
    for (const char32_t c : text.toUcs4()) type(0, QString::fromUcs4(&c, 1));
  }
  /// Presses keys as the desktop sends them: to the list, dialog or window in front, shortcuts and
  /// mnemonics before anything else.
  static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(frontWindow(), key, modifiers);
    QApplication::processEvents();
  }
  static void write(const char* text) {
    for (const char* c = text; *c != '\0'; ++c) QTest::keyClick(frontWindow(), *c);
    QApplication::processEvents();
  }
  static QWindow* frontWindow() {
    if (const QWidget* list = QApplication::activePopupWidget()) return list->windowHandle();
    QWidget* front = QApplication::activeModalWidget();
    if (!front) front = QApplication::focusWidget();
    if (!front) front = QApplication::activeWindow();
    // Not every platform gives the keyboard back when a list was closed.
    if (!front->isActiveWindow()) {
      front->window()->activateWindow();
      QApplication::processEvents();
    }
    return front->window()->windowHandle();
  }
  /// A click of the mouse in the view, in its pixels.
  void click(QPointF at, Qt::MouseButton button = Qt::LeftButton) const {
    QWidget& viewport = *window->editor().view().viewport();
    if (button == Qt::LeftButton) window->editor().view().setFocus(Qt::MouseFocusReason);
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QMouseEvent event(type, at, viewport.mapToGlobal(at), button,
                        type == QEvent::MouseButtonPress ? button : Qt::NoButton, Qt::NoModifier);
      QApplication::sendEvent(&viewport, &event);
    }
  }

  QApplication& app = *qApp;
  QTemporaryDir folder;
  platform::Ref<AnsweringShell> shell = platform::make<AnsweringShell>();
  platform::ComponentRegistry registry;
  std::unique_ptr<component::Document> document;
  std::unique_ptr<qt::MainWindow> window;
  platform::Connection opened;
};

}  // namespace brisel::test
