#pragma once

#include <QObject>

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

namespace brisel::designer {

/// The controls that Qt Designer offers and QUiLoader makes: the editor, and the editors of one
/// class, one relationship and one stereotype.
class DesignerPlugin : public QObject, public QDesignerCustomWidgetCollectionInterface {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
  Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

 public:
  DesignerPlugin();
  ~DesignerPlugin() override;

  /// Owned by the plugin.
  [[nodiscard]] QList<QDesignerCustomWidgetInterface*> customWidgets() const override {
    return m_controls;
  }

 private:
  QList<QDesignerCustomWidgetInterface*> m_controls;
};

}  // namespace brisel::designer
