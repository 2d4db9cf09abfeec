#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <gtest/gtest.h>

#include "WindowBench.h"
#include "qt/SourceEdit.h"
#include "qt/TemplateWindow.h"
#include "tools/OutputFolder.h"

namespace brisel::qt {
namespace {

using test::WindowBench;

/// The window on a model of two classes, with templates in a folder of its own.
struct TemplateBench {
  TemplateBench() {
    bench.drawSample();
    tools::writeTextFile(bench.path("installed/Names.tml"),
                         "{{#classes}}\n{{name}}\n{{/classes}}\n");
    tools::writeTextFile(bench.path("installed/Other.tml"), "other");
    tool = bench.registry.create<tools::Template>("BriselTemplateEditor.Template");
    tool->Create();
    tool->SetRepository(*bench.document->editor().CLSRepository()->GetRepository());
    tool->WorkDirectory(bench.path("installed"));
    tool->UserDirectory(bench.path("own"));
    tool->MainTemplate("Names.tml");
    tool->PopUp();
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (auto* found = dynamic_cast<TemplateWindow*>(widget)) window = found;
    }
    settle();
  }
  ~TemplateBench() {
    if (!window) return;
    bench.shell->answers = {"Discard"};
    window->close();
  }

  template <class Widget>
  [[nodiscard]] Widget& at(const char* name) const {
    return *window->findChild<Widget*>(name);
  }
  void settle() const {
    EXPECT_TRUE(WindowBench::waitFor([this] { return window->isSettled(); }));
  }
  [[nodiscard]] QString shown() const { return at<QPlainTextEdit>("File").toPlainText(); }
  [[nodiscard]] QString state() const { return at<QLabel>("State").text(); }

  WindowBench bench;
  platform::Ref<tools::Template> tool;
  QPointer<TemplateWindow> window;
};

TEST(TemplateWindow, ShowsWhatIsTypedAsItComesOut) {
  TemplateBench bench;
  ASSERT_TRUE(bench.window);
  EXPECT_EQ(bench.shown(), "Order\nOrderLine\n");
  EXPECT_EQ(bench.at<QListWidget>("Templates").count(), 2);
  EXPECT_EQ(bench.at<QListWidget>("Files").item(0)->text(), "Names.txt");
  auto& text = bench.at<QPlainTextEdit>("Text");
  text.setFocus();
  text.selectAll();
  WindowBench::type("{{#classes}}{{#file}}{{name}}.x{{/file}}<{{name}}>{{/classes}}");
  bench.settle();
  EXPECT_TRUE(bench.window->isWindowModified());
  EXPECT_EQ(bench.at<QListWidget>("Files").count(), 2);
  EXPECT_EQ(bench.shown(), "<Order>");
  bench.at<QListWidget>("Files").setCurrentRow(1);
  EXPECT_EQ(bench.shown(), "<OrderLine>");

  text.appendPlainText("{{nmae}}");
  bench.settle();
  EXPECT_EQ(bench.state(), "Line 2: there is no \"nmae\" here");
  EXPECT_FALSE(bench.at<QPushButton>("Write").isEnabled());
  EXPECT_EQ(bench.shown(), "<OrderLine>") << "what came out before stays in sight";
  text.undo();
  bench.settle();
  EXPECT_EQ(bench.state(), "");
}

TEST(TemplateWindow, RunsOverTheSelectedClassesOfTheLiveModel) {
  TemplateBench bench;
  auto& classes = bench.at<QListWidget>("Classes");
  bench.at<QLineEdit>("Filter").setText("LINE");
  EXPECT_TRUE(classes.item(0)->isHidden());
  EXPECT_FALSE(classes.item(1)->isHidden());
  classes.item(1)->setSelected(true);
  bench.settle();
  EXPECT_EQ(bench.shown(), "OrderLine\n");
  const auto model = bench.bench.document->editor().CLSRepository();
  model->GetRepository()->MetaNodes("Class")->find("line");
  platform::as<platform::Node>(model->GetRepository()->MetaNodes("Class")->find("line"))
      ->name("Row");
  bench.settle();
  EXPECT_EQ(bench.shown(), "Row\n");
  EXPECT_EQ(classes.selectedItems().size(), 1);
  model->DeleteClass("line");
  bench.settle();
  EXPECT_EQ(classes.count(), 1);
}

TEST(TemplateWindow, AsksBeforeChangesAreLost) {
  TemplateBench bench;
  auto& templates = bench.at<QListWidget>("Templates");
  bench.tool->Text("mine");
  bench.bench.shell->answers = {"Cancel"};
  templates.setCurrentRow(1);
  QApplication::processEvents();
  EXPECT_EQ(templates.currentRow(), 0);
  EXPECT_EQ(bench.tool->Text(), "mine");
  bench.bench.shell->answers = {"Cancel"};
  EXPECT_FALSE(bench.window->close());

  QTest::keyClick(&bench.at<QPlainTextEdit>("Text"), Qt::Key_S, Qt::ControlModifier);
  EXPECT_FALSE(bench.window->isWindowModified());
  EXPECT_EQ(tools::readTextFile(bench.bench.path("installed/Names.tml")), "mine");
  const auto asked = bench.bench.shell->asked.size();
  templates.setCurrentRow(1);
  QApplication::processEvents();
  EXPECT_EQ(bench.at<QPlainTextEdit>("Text").toPlainText(), "other");
  EXPECT_EQ(bench.bench.shell->asked.size(), asked) << "what is saved is not asked about";
}

TEST(TemplateWindow, WritesTheFiles) {
  TemplateBench bench;
  EXPECT_FALSE(bench.at<QPushButton>("Write").isEnabled());
  bench.at<QLineEdit>("Output").setText(QString::fromStdString(bench.bench.path("out")));
  bench.at<QPushButton>("Write").click();
  const std::string file = bench.bench.path("out/Names.txt");
  EXPECT_EQ(tools::readTextFile(file), "Order\nOrderLine\n");
  bench.at<QPushButton>("Write").click();
  EXPECT_TRUE(bench.state().startsWith("0 written, 1 unchanged"));
  tools::writeTextFile(file, "by hand");
  bench.bench.shell->answers = {"Cancel"};
  bench.at<QPushButton>("Write").click();
  EXPECT_EQ(tools::readTextFile(file), "by hand");
  bench.bench.shell->answers = {"Overwrite"};
  bench.at<QPushButton>("Write").click();
  EXPECT_EQ(tools::readTextFile(file), "Order\nOrderLine\n");
  bench.at<QLineEdit>("Output").setText(QString::fromStdString(file));
  bench.at<QPushButton>("Write").click();
  EXPECT_TRUE(bench.state().contains("Names.txt")) << bench.state().toStdString();
}

TEST(TemplateWindow, IsOpenedFromTheToolBarOnTheInstalledTemplates) {
  const WindowBench bench;
  bench.drawSample();
  bench.button("Template").trigger();
  QPointer<TemplateWindow> window;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (auto* found = dynamic_cast<TemplateWindow*>(widget)) window = found;
  }
  ASSERT_TRUE(window);
  EXPECT_TRUE(WindowBench::waitFor([&] { return window->isSettled(); }));
  EXPECT_TRUE(window->windowTitle().startsWith("C++.tml"));
  EXPECT_EQ(window->findChild<QListWidget*>("Files")->count(), 4);
  window->close();
}

}  // namespace
}  // namespace brisel::qt
