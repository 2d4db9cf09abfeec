#include <QAbstractButton>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPalette>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTextCursor>
#include <cstdlib>

#include <gtest/gtest.h>

#include "WindowBench.h"
#include "component/ModelFile.h"
#include "controls/ToolBarControl.h"
#include "editors/frmClass.h"
#include "qt/ClassPane.h"
#include "qt/HelpWindow.h"
#include "qt/NameBox.h"
#include "qt/PopupMenu.h"
#include "qt/TemplateWindow.h"

namespace brisel::qt {
namespace {

using test::WindowBench;

QPalette darkPalette() {
  QPalette dark(QColor(0x35, 0x38, 0x3d), QColor(0x2b, 0x2d, 0x31));  // shades of the frames too
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    dark.setColor(role, QColor(0xe6, 0xe6, 0xe6));
    dark.setColor(QPalette::Disabled, role, QColor(0x7a, 0x7d, 0x82));
  }
  dark.setColor(QPalette::Base, QColor(0x1f, 0x21, 0x24));
  return dark;
}

/// Brightness from 0 to 255 in the middle of a part of the picture.
int brightness(const QImage& picture, const QRect& part) {
  qint64 sum = 0;
  for (int y = part.top(); y <= part.bottom(); ++y) {
    for (int x = part.left(); x <= part.right(); ++x) sum += qGray(picture.pixel(x, y));
  }
  return static_cast<int>(sum / (part.width() * part.height()));
}

/// Pictures for people to look at, kept beside the test program.
void keep(const QImage& picture, const char* name) {
  const std::string scale = qEnvironmentVariable("QT_SCALE_FACTOR", "1").toStdString();
  const std::string path = std::string(BRISEL_BINARY_DIR "/looks-") + name + "-" + scale + ".png";
  EXPECT_TRUE(picture.save(path.c_str())) << path;
}

/// The window follows a dark desktop, and its paper stays white.
TEST(Looks, followTheDesktopAndKeepThePaperWhite) {
  const WindowBench bench;
  bench.drawSample();
  bench.button("LayoutHierarchy").trigger();
  const QPalette before = QApplication::palette();
  for (const bool dark : {false, true}) {
    QApplication::setPalette(dark ? darkPalette() : before);
    bench.window->messages().show(MessageBar::Kind::error, "A message for those who look at this.");
    QApplication::processEvents();
    const QImage picture = bench.window->grab().toImage().convertToFormat(QImage::Format_RGB32);
    keep(picture, dark ? "window-dark" : "window-light");
    const double ratio = picture.devicePixelRatio();
    const auto at = [&](const QWidget& widget, QRect part) {
      part.moveTopLeft(widget.mapTo(bench.window.get(), part.topLeft()));
      return brightness(picture,
                        QRect((QPointF(part.topLeft()) * ratio).toPoint(), part.size() * ratio));
    };
    const QWidget& bar = bench.window->editor().toolBar();
    const int ground = at(bar, QRect(bar.width() - 30, 8, 20, 16));
    EXPECT_EQ(ground < 100, dark);
    const QWidget& editor = bench.window->editor();
    EXPECT_GT(at(editor, QRect(editor.width() - 120, editor.height() - 120, 60, 60)), 250);
  }
  QApplication::setPalette(before);
}

/// What is laid over the paper: a name is typed on paper on every desktop, the menu is the
/// desktop's.
TEST(Looks, ofWhatLiesOverThePaper) {
  const WindowBench bench;
  bench.drawSample();
  canvas::DiagramControl& canvas = bench.document->canvas();
  canvas.getNode("line")->bounds({6000, 6500, 3000, 1800});
  const auto bar = platform::as<controls::ToolBarControl>(bench.document->editor().ActiveBar21());
  const auto box = bench.document->editor().ClassName();
  const QPalette before = QApplication::palette();
  bench.activate();
  for (const bool dark : {false, true}) {
    QApplication::setPalette(dark ? darkPalette() : before);
    box->Text("OrderLine");
    box->FontSize(15);
    box->area(canvas.toView(canvas.getNode("line")->titleArea()));
    box->Visible(true);
    box->SelLength(5);
    box->SetFocus();
    QMenu menu(bench.window.get());
    fillMenu(menu, *bar, "tbPopupMenu");
    menu.popup(bench.window->mapToGlobal(QPoint(300, 500)));
    QApplication::processEvents();
    const QImage window = bench.window->grab().toImage().convertToFormat(QImage::Format_RGB32);
    keep(window, dark ? "over-dark" : "over-light");
    keep(menu.grab().toImage(), dark ? "menu-dark" : "menu-light");
    const QWidget& name = bench.window->editor().nameBox();
    const double ratio = window.devicePixelRatio();
    const QPoint corner = name.mapTo(bench.window.get(), QPoint(3, 3));
    const QRect paper((QPointF(corner) * ratio).toPoint(), QSize(4, 4));
    EXPECT_GT(brightness(window, paper), 250) << "a name is typed on paper";
    menu.close();
    box->Visible(false);
  }
  QApplication::setPalette(before);
}

void fillModel(repository::CLSRepository& model) {
  const auto text = model.MakeDataType("Text", "", "");
  const auto date = model.MakeDataType("Date", "", "");
  platform::Ref<platform::Link> link;
  for (const char* name :
       {"customer", "ordered", "delivered", "aNameThatIsLongerThanItsColumnIs"}) {
    model.AddAttributeS("order", name, date->identifier(), link);
  }
  for (const char* name : {"add", "total", "remove"}) {
    model.AddOperation("order", name, "", "", false, false, false, "public", false, false,
                       text->identifier(), link);
  }
  const std::string last = link->Target()->identifier();
  model.AddParameter(last, "line", "", text->identifier(), link);
  for (const char* name : {"entity", "boundary", "control"}) {
    model.GetRepository()->MakeNode("Stereotype", name, model.UUID());
  }
}

/// The labels and buttons that have less room than their text needs, or stick out of what they lie
/// on: "New Scope: ".
std::string clippedIn(const QWidget& window) {
  std::string clipped;
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    if (!widget->isVisible()) continue;
    const auto* label = qobject_cast<const QLabel*>(widget);
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    if (!(label && !label->wordWrap()) && !button) continue;
    const bool isNarrow = widget->width() < widget->sizeHint().width();
    const bool isOutside = !widget->parentWidget()->rect().contains(widget->geometry());
    if (!isNarrow && !isOutside) continue;
    clipped += (label ? label->text() : button->text()).toStdString() + ' ';
  }
  return clipped;
}

/// Each page of the class editor and each dialog, filled.
TEST(Looks, ofTheEditors) {
  WindowBench bench;
  bench.drawSample();
  editor::CLSEditor& editor = bench.document->editor();
  fillModel(*editor.CLSRepository());
  editor.GetClassFromNode("order")->Populate();
  bench.button("LayoutHierarchy").trigger();
  const auto pane = editor.CLSClassControl1();
  ClassPane& shown = bench.window->editor().classPane();
  const QPalette before = QApplication::palette();
  bench.activate();
  for (const bool dark : {false, true}) {
    QApplication::setPalette(dark ? darkPalette() : before);
    const std::string suffix = dark ? "-dark" : "-light";
    const auto keepPane = [&](const char* name) {
      QApplication::processEvents();
      keep(shown.grab().toImage(), (name + suffix).c_str());
      EXPECT_EQ(clippedIn(shown), "") << name;
    };
    editor.EditClass("order");
    EXPECT_EQ(shown.size(), QSize(460, 420));
    keepPane("class");
    pane->TabStrip1()->Choose("Attributes");
    pane->Attributes()->Select(2);
    keepPane("attributes");
    pane->Attributes()->Open(2);
    keepPane("member");
    pane->PropertyOk()->Click();
    pane->TabStrip1()->Choose("Operations");
    pane->Operations()->Select(3);
    keepPane("operations");
    pane->ToolOperation()->Click("miOperationParameters");
    keepPane("parameters");
    editor.ActiveBar21()->Tag("order");
    editor.ActiveBar21()->Click("miPopupProperties");
    pane->TabStrip1()->Choose("Attributes");
    keepPane("docked");
    keep(bench.window->grab().toImage(), ("beside" + suffix).c_str());
    pane->Close();
    bench.shell->inForms.emplace_back([&](QWidget& dialog) {
      keep(dialog.grab().toImage(), ("relationship" + suffix).c_str());
      EXPECT_EQ(clippedIn(dialog), "");
      dialog.findChild<QTabBar*>()->setCurrentIndex(1);
      QApplication::processEvents();
      keep(dialog.grab().toImage(), ("source" + suffix).c_str());
      EXPECT_EQ(clippedIn(dialog), "");
    });
    editor.EditAssociation("lines");
    const auto form = platform::make<editors::frmClass>(bench.registry);
    form->Caption("Split class Order");
    form->SetClassnameLabel("Name of splitted class:");
    form->SetInformation("Check attributes/operation which are moved into the other class.");
    form->Prepare(*editor.GetClassFromNode("order"));
    form->AllOperations()->Click();
    bench.shell->inForms.emplace_back([&](QWidget& dialog) {
      keep(dialog.grab().toImage(), ("split" + suffix).c_str());
      EXPECT_EQ(clippedIn(dialog), "");
    });
    bench.shell->runForm("frmClass", *form);
    bench.shell->inForms.emplace_back([&](QWidget& dialog) {
      keep(dialog.grab().toImage(), ("stereotypes" + suffix).c_str());
      EXPECT_EQ(clippedIn(dialog), "");
    });
    editor.EditStereotypes();
  }
  QApplication::setPalette(before);
}

/// The page has the colours of the desktop, its pictures the whiteness of paper.
TEST(Looks, ofTheHelp) {
  const QPalette before = QApplication::palette();
  for (const bool dark : {false, true}) {
    QApplication::setPalette(dark ? darkPalette() : before);
    HelpWindow window(BRISEL_BINARY_DIR "/share/brisel/help");
    window.resize(760, 1400);
    window.showPage("UML class diagram.html");
    QApplication::processEvents();
    const QImage picture = window.grab().toImage();
    keep(picture, dark ? "help-dark" : "help-light");
    const int ground = brightness(picture, QRect(2, 2, 10, 10));
    EXPECT_EQ(ground < 100, dark);
    const QTextCursor link = window.document()->find("Drawing");
    const int ink = qGray(link.charFormat().foreground().color().rgb());
    EXPECT_GT(std::abs(ink - ground), 110) << "links can be read";
  }
  QApplication::setPalette(before);
}

/// The template editor on a real model: whole, with a fault, and on a few classes.
TEST(Looks, ofTheTemplateEditor) {
  WindowBench bench;
  const auto model = component::readModel(bench.registry,
                                          {BRISEL_SOURCE_DIR "/examples/city-building.dim"});
  const auto held = platform::make<tools::Template>(bench.registry);
  tools::Template& tool = *held;
  tool.SetRepository(*model.repository);
  tool.WorkDirectory(BRISEL_SOURCE_DIR "/data/templates");
  tool.templateName("C++.tml");
  const std::string text = tool.Text();
  const QPalette before = QApplication::palette();
  for (const bool dark : {false, true}) {
    QApplication::setPalette(dark ? darkPalette() : before);
    TemplateWindow window(held);
    window.show();
    const auto picture = [&](const char* name) {
      EXPECT_TRUE(WindowBench::waitFor([&] { return window.isSettled(); }));
      QApplication::processEvents();
      const QImage image = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
      keep(image, (std::string("templates-") + name + (dark ? "-dark" : "-light")).c_str());
      return brightness(image, QRect(image.width() - 120, image.height() / 2, 60, 60));
    };
    const int ground = picture("whole");
    EXPECT_EQ(ground < 100, dark);
    tool.Text(text + "\n{{#classes}}\n{{nmae}}\n{{/classes}}\n");
    auto* const edit = window.findChild<QPlainTextEdit*>("Text");
    edit->moveCursor(QTextCursor::End);
    picture("fault");
    edit->moveCursor(QTextCursor::Start);
    tool.Text(text);
    window.findChild<QListWidget*>("Classes")->item(2)->setSelected(true);
    picture("selected");
    tool.Select(*platform::make<platform::ValueArray>(std::vector<platform::Value>()));
  }
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace brisel::qt
