#include <QApplication>

#include <brisel/Widgets.h>

int main(int count, char** arguments) {
  const QApplication application(count, arguments);
  brisel::qt::CLSEditorWidget diagram;
  diagram.editor().CreateClass("order", "Order", "", "", "", "public");
  diagram.editor().CreateClass("line", "OrderLine", "", "", "", "public");
  diagram.editor().CreateAggregation("lines", "lines", "", "order", "line", true);
  diagram.editor().Layout("%HIERARCHY%");
  diagram.show();
  return QApplication::exec();
}
