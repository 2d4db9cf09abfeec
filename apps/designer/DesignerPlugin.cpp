#include "DesignerPlugin.h"

#include <QDir>
#include <QIcon>
#include <array>

#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <brisel/Widgets.h>

namespace brisel::designer {

namespace {

struct Row {
  const char* className;
  const char* header;
  const char* objectName;
  const char* icon;
  const char* toolTip;
  int width;  ///< in pixels, of a control that was just dropped
  int height;
  QWidget* (*make)(QWidget* parent);
};

template <class Control>
QWidget* make(QWidget* parent) {
  return new Control(parent);
}

constexpr std::array kRows = {
    Row{"brisel::qt::CLSEditorWidget", "brisel/qt/CLSEditorWidget.h", "diagram", "brisel.svg",
        "Class diagram: draws classes and relationships and edits them", 640, 400,
        &make<qt::CLSEditorWidget>},
    Row{"brisel::qt::CLSClassControlWidget", "brisel/qt/EmbeddableEditors.h", "classEditor",
        "NewClass.svg", "Class editor: attributes, operations and properties of one class", 420,
        420, &make<qt::CLSClassControlWidget>},
    Row{"brisel::qt::CLSAssociationControlWidget", "brisel/qt/EmbeddableEditors.h",
        "relationshipEditor", "Association.svg",
        "Relationship editor: properties of one relationship and of its ends", 420, 320,
        &make<qt::CLSAssociationControlWidget>},
    Row{"brisel::qt::CLSSelectStereotypeWidget", "brisel/qt/EmbeddableEditors.h", "stereotype",
        "Stereotypes.svg", "Stereotype picker: a list of the stereotypes of a model", 260, 30,
        &make<qt::CLSSelectStereotypeWidget>},
};

class Control : public QDesignerCustomWidgetInterface {
 public:
  explicit Control(const Row& row) : m_row(row) {}

  [[nodiscard]] QString name() const override { return m_row.className; }
  [[nodiscard]] QString group() const override { return "Brisel"; }
  [[nodiscard]] QString toolTip() const override { return m_row.toolTip; }
  [[nodiscard]] QString whatsThis() const override { return m_row.toolTip; }
  [[nodiscard]] QString includeFile() const override { return m_row.header; }
  [[nodiscard]] bool isContainer() const override { return false; }
  [[nodiscard]] QWidget* createWidget(QWidget* parent) override { return m_row.make(parent); }

  [[nodiscard]] QIcon icon() const override {
    const std::string& folder = qt::Suite::instance().registry().installationFolder();
    return QIcon(QDir(QString::fromStdString(folder)).filePath(m_row.icon));
  }

  [[nodiscard]] QString domXml() const override {
    return QString(
               "<ui language=\"c++\"><widget class=\"%1\" name=\"%2\">"
               "<property name=\"geometry\"><rect><x>0</x><y>0</y>"
               "<width>%3</width><height>%4</height></rect></property></widget></ui>")
        .arg(m_row.className, m_row.objectName)
        .arg(m_row.width)
        .arg(m_row.height);
  }

 private:
  const Row& m_row;
};

}  // namespace

DesignerPlugin::DesignerPlugin() {
  for (const Row& row : kRows) m_controls.append(new Control(row));
}

DesignerPlugin::~DesignerPlugin() { qDeleteAll(m_controls); }

}  // namespace brisel::designer
