#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QPluginLoader>
#include <QSignalSpy>
#include <QUiLoader>
#include <memory>

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <brisel/Widgets.h>
#include <gtest/gtest.h>

namespace brisel::designer {
namespace {

std::unique_ptr<QWidget> load(const QByteArray& form) {
  QUiLoader loader;
  loader.setWorkingDirectory(QDir("/"));
  loader.addPluginPath(BRISEL_PLUGINS);
  QBuffer buffer;
  buffer.setData(form);
  std::unique_ptr<QWidget> made(loader.load(&buffer));
  EXPECT_TRUE(made) << loader.errorString().toStdString();
  return made;
}

TEST(DesignerPlugin, offersControlsThatDesignerCanPlace) {
  QPluginLoader loader(BRISEL_PLUGIN);
  auto* plugin = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(loader.instance());
  ASSERT_TRUE(plugin) << loader.errorString().toStdString();
  ASSERT_EQ(plugin->customWidgets().size(), 4);
  for (QDesignerCustomWidgetInterface* control : plugin->customWidgets()) {
    const std::string name = control->name().toStdString();
    SCOPED_TRACE(name);
    EXPECT_FALSE(control->icon().pixmap(22).isNull());
    EXPECT_FALSE(control->toolTip().isEmpty());
    EXPECT_TRUE(QFile::exists(BRISEL_HEADERS "/" + control->includeFile()));
    const std::unique_ptr<QWidget> made(control->createWidget(nullptr));
    EXPECT_EQ(made->metaObject()->className(), name) << "Designer finds its properties by it";
    made->show();
    // The snippet that is dropped on a form makes one as well.
    const auto dropped = load(control->domXml().toUtf8());
    ASSERT_TRUE(dropped);
    EXPECT_EQ(dropped->metaObject()->className(), name);
  }
}

TEST(DesignerPlugin, aFormThatIsLoadedHoldsAWorkingEditor) {
  const auto form =
      load(R"(<ui version="4.0"><class>Form</class><widget class="QWidget" name="Form">
      <layout class="QVBoxLayout"><item><widget class="brisel::qt::CLSEditorWidget" name="diagram">
        <property name="Path"><string>/suite</string></property>
        <property name="ComponentName"><string>Classes</string></property>
      </widget></item></layout></widget></ui>)");
  ASSERT_TRUE(form);
  auto* diagram = form->findChild<qt::CLSEditorWidget*>("diagram");
  ASSERT_TRUE(diagram);
  EXPECT_EQ(diagram->editor().Path(), "/suite");
  EXPECT_EQ(diagram->editor().ComponentName(), "Classes");
  EXPECT_EQ(diagram->property("Path").toString(), "/suite");
  const QSignalSpy created(diagram, &qt::CLSEditorWidget::ClassCreated);
  const QSignalSpy zoomed(diagram, &qt::CLSEditorWidget::DiagramZoomed);
  diagram->editor().CreateClass("a", "A", "", "", "", "");
  diagram->editor().diagram()->call("zoom", {50});
  ASSERT_EQ(created.count(), 1);
  EXPECT_EQ(created.at(0).at(0).toString(), "a");
  EXPECT_EQ(zoomed.count(), 1);
}

}  // namespace
}  // namespace brisel::designer

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  const QApplication application(count, arguments);
  return RUN_ALL_TESTS();
}
