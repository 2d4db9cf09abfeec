#include <QCloseEvent>
#include <QDropEvent>
#include <QFile>
#include <QMenu>
#include <map>

#include <gtest/gtest.h>

#include "WindowBench.h"

namespace brisel::qt {
namespace {

using platform::Point;
using platform::Rect;
using test::WindowBench;

QByteArray contentOf(const std::string& path) {
  QFile file(QString::fromStdString(path));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

void write(const std::string& path, const QByteArray& content) {
  QFile file(QString::fromStdString(path));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(content);
}

/// All that a person sees of where things stand.
std::string placesIn(const component::Document& document) {
  std::string places;
  const auto add = [&](double value) { places += std::to_string(value) + " "; };
  for (const canvas::Node& node : document.canvas().scene().nodes()) {
    const Rect bounds = node.bounds();
    places += node.key() + ": ";
    for (const double value : {bounds.left, bounds.top, bounds.width, bounds.height}) add(value);
  }
  for (const canvas::Link& link : document.canvas().scene().links()) {
    places += link.key() + ": ";
    for (const Point& point : link.points()) {
      add(point.x);
      add(point.y);
    }
  }
  for (const canvas::Button& button : document.canvas().buttonBar().buttons()) {
    if (button.pressed) places += button.key + " ";
  }
  return places;
}

TEST(MainWindow, reopensADiagramAsItWasLeft) {
  const WindowBench bench;
  bench.drawSample();
  canvas::DiagramControl& canvas = bench.document->canvas();
  canvas.getNode("order")->bounds({3000, 1500, 3300, 2400});
  canvas.getNode("line")->bounds({9000, 6000, 2700, 1800});
  canvas.getLink("lines")->ExtraPoints()->Add(9900, 2250);
  bench.button("ViewOperations").trigger();
  bench.button("COM::Module").trigger();
  const std::string left = placesIn(*bench.document);

  bench.shell->chosenFiles.emplace_back(bench.path("order.dim"));
  ASSERT_TRUE(bench.document->save());
  EXPECT_EQ(placesIn(*bench.document), left) << "saving moves nothing";

  const WindowBench again;
  again.window->openFiles({bench.path("order.dim")});
  EXPECT_FALSE(again.window->messages().isVisible())
      << again.window->messages().text().toStdString();
  EXPECT_EQ(placesIn(*again.document), left);
  EXPECT_FALSE(again.document->isModified());

  const QByteArray first = contentOf(bench.path("order.dim"));
  again.button("Save").trigger();
  EXPECT_EQ(contentOf(bench.path("order.dim")), first);
}

TEST(MainWindow, marksWhatIsNotSaved) {
  const WindowBench bench;
  EXPECT_FALSE(bench.window->isWindowModified());
  bench.drawSample();
  bench.window->refreshState();
  EXPECT_TRUE(bench.window->isWindowModified());

  bench.shell->chosenFiles.emplace_back(bench.path("a.dim"));
  ASSERT_TRUE(bench.document->save());
  bench.window->refreshState();
  EXPECT_FALSE(bench.window->isWindowModified());
  EXPECT_EQ(bench.window->windowTitle(), "a.dim[*] - Brisel");

  const Rect bounds = bench.document->canvas().getNode("order")->bounds();
  bench.document->canvas().getNode("order")->bounds(bounds.movedBy({300, 0}));
  bench.window->refreshState();
  EXPECT_TRUE(bench.window->isWindowModified());
  bench.button("Save").trigger();
  bench.window->refreshState();
  EXPECT_FALSE(bench.window->isWindowModified()) << "the tool bar's button saves too";
}

TEST(MainWindow, asksBeforeChangesAreLost) {
  const struct {
    const char* answer;
    bool closes;
    bool saves;
  } cases[] = {{"Cancel", false, false}, {"Discard", true, false}, {"Save", true, true}};
  for (const auto& expected : cases) {
    const WindowBench bench;
    bench.drawSample();
    bench.shell->answers.emplace_back(expected.answer);
    bench.shell->chosenFiles.emplace_back(bench.path("kept.dim"));
    EXPECT_EQ(bench.window->close(), expected.closes) << expected.answer;
    EXPECT_EQ(bench.shell->asked.size(), 1U);
    EXPECT_EQ(QFile::exists(bench.folder.filePath("kept.dim")), expected.saves) << expected.answer;
  }
  const WindowBench untouched;
  EXPECT_TRUE(untouched.window->close());
  EXPECT_TRUE(untouched.shell->asked.empty());
}

TEST(MainWindow, keepsTheWindowOpenWhenSavingFails) {
  const WindowBench bench;
  bench.drawSample();
  bench.shell->answers.emplace_back("Save");
  bench.shell->chosenFiles.emplace_back(bench.path("no/such/folder/a.dim"));
  EXPECT_FALSE(bench.window->close());
  EXPECT_TRUE(bench.window->messages().isVisible());
  EXPECT_TRUE(bench.window->messages().text().contains("no/such/folder"))
      << bench.window->messages().text().toStdString();
  EXPECT_EQ(bench.document->path(), "") << "the diagram did not get that file";
  EXPECT_TRUE(bench.document->isModified());
}

TEST(MainWindow, aDragThatIsTakenBackIsNoChange) {
  const WindowBench bench;
  bench.drawSample();
  bench.shell->chosenFiles.emplace_back(bench.path("a.dim"));
  ASSERT_TRUE(bench.document->save());
  canvas::DiagramControl& canvas = bench.document->canvas();
  const platform::Point title = canvas.getNode("order")->titleArea().center();
  canvas.PointerPress(title.x, title.y, "", "");
  canvas.PointerMove(title.x + 900, title.y + 900, "");
  EXPECT_TRUE(bench.document->isModified());
  canvas.KeyPress("Escape", "");
  EXPECT_FALSE(bench.document->isModified());
}

TEST(MainWindow, keepsTheDiagramWhenOpeningFails) {
  const struct {
    const char* name;
    QByteArray content;
  } files[] = {
      {"cut.dim", "{\"format\": \"DIM\", "},
      {"other.dim", "PNG\r\n\x1a"},
      {"empty.dim", ""},
      {"cut.uml", "<uml:Model xmi:id='a'"},
      {"other.ecore", "<html><body/></html>"},
  };
  const WindowBench bench;
  bench.drawSample();
  const std::string before = placesIn(*bench.document);
  for (const auto& [name, content] : files) {
    write(bench.path(name), content);
    bench.window->messages().hide();
    bench.window->openFiles({bench.path(name)});
    EXPECT_TRUE(bench.window->messages().isVisible()) << name;
    EXPECT_TRUE(bench.window->messages().text().contains(name))
        << bench.window->messages().text().toStdString();
    EXPECT_EQ(placesIn(*bench.document), before) << name;
  }
  bench.window->openFiles({bench.path("missing.dim")});
  EXPECT_TRUE(bench.window->messages().text().contains("missing.dim"));
  EXPECT_EQ(placesIn(*bench.document), before);
}

TEST(MainWindow, opensWhatIsDroppedOnIt) {
  const WindowBench source;
  source.drawSample();
  source.shell->chosenFiles.emplace_back(source.path("dropped.dim"));
  ASSERT_TRUE(source.document->save());

  const WindowBench bench;
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QString::fromStdString(source.path("dropped.dim")))});
  QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(bench.window.get(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(bench.window.get(), &drop);
  EXPECT_EQ(bench.document->counts().classes, 2);
  EXPECT_EQ(bench.document->path(), source.path("dropped.dim"));
}

TEST(MainWindow, givesEveryMenuEntryATip) {
  const WindowBench bench;
  std::map<QString, QString> shortcuts;
  int entries = 0;
  for (const QAction* action : bench.window->findChildren<QAction*>()) {
    if (action->isSeparator() || action->menu() || action->text().isEmpty()) continue;
    if (action->parent()->inherits("QPlainTextEdit") || action->parent()->inherits("QLabel")) {
      continue;
    }
    ++entries;
    const std::string text = action->text().toStdString();
    EXPECT_FALSE(action->statusTip().isEmpty()) << text;
    if (action->shortcut().isEmpty()) continue;
    const auto [first, added] = shortcuts.emplace(action->shortcut().toString(), action->text());
    EXPECT_TRUE(added) << text << " and " << first->second.toStdString() << " share a shortcut";
  }
  EXPECT_GT(entries, 20);
}

TEST(MainWindow, exportsPictures) {
  const WindowBench bench;
  bench.drawSample();
  QAction* exporting = nullptr;
  for (QAction* action : bench.window->findChildren<QAction*>()) {
    if (action->text().startsWith("&Export")) exporting = action;
  }
  ASSERT_NE(exporting, nullptr);
  const std::pair<const char*, const char*> kinds[] = {
      {"a.svg", "<"}, {"a.png", "\x89PNG"}, {"a.pdf", "%PDF"}};
  for (const auto& [name, start] : kinds) {
    bench.shell->chosenFiles.emplace_back(bench.path(name));
    exporting->trigger();
    EXPECT_TRUE(contentOf(bench.path(name)).startsWith(start)) << name;
  }
  bench.shell->chosenFiles.emplace_back(bench.path("a.bmp"));
  exporting->trigger();
  EXPECT_TRUE(bench.window->messages().isVisible());
}

}  // namespace
}  // namespace brisel::qt
