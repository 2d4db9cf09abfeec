#pragma once

#include <memory>
#include <string>
#include <vector>

#include "qt/EditorWidget.h"

namespace brisel::qt {

class HelpWindow;
class HostButtons;

/// The class-diagram editor as a control for a form: makes its editor, and ends it when it goes.
/// Starts with an empty model, the busy cursor of the program and a help window of its own; a host
/// that has its own sets `Repository`, `ParentWindow` and `Session` of the editor and calls
/// `Populate`.
///
/// What the editor raises is raised as a signal of the same name; a slot may delete the control
/// with deleteLater.
class CLSEditorWidget : public EditorWidget {
  Q_OBJECT
  Q_PROPERTY(QString Path READ Path WRITE Path)
  Q_PROPERTY(QString RepositoryFileName READ RepositoryFileName WRITE RepositoryFileName)
  Q_PROPERTY(QString ComponentName READ ComponentName WRITE ComponentName)
  Q_PROPERTY(bool DrawingTools READ DrawingTools WRITE DrawingTools)

 public:
  /// With the components that all controls of the program share (Suite::instance).
  explicit CLSEditorWidget(QWidget* parent = nullptr);
  /// With the host's components; the registry must outlive the control.
  explicit CLSEditorWidget(platform::ComponentRegistry& registry, QWidget* parent = nullptr);
  ~CLSEditorWidget() override;

  // The editor's own, as properties for Designer.
  [[nodiscard]] QString Path() const;
  void Path(const QString& path);
  [[nodiscard]] QString RepositoryFileName() const;
  void RepositoryFileName(const QString& name);
  [[nodiscard]] QString ComponentName() const;
  void ComponentName(const QString& name);
  /// Whether a person finds the drawing tools and the commands for files and tools of the suite
  /// beside those of the editor; true unless a host says otherwise before the control is shown.
  [[nodiscard]] bool DrawingTools() const { return m_drawingTools; }
  void DrawingTools(bool wanted) { m_drawingTools = wanted; }

  [[nodiscard]] QSize sizeHint() const override { return {800, 500}; }

 Q_SIGNALS:
  // The argument is the element's key unless named.
  void ClassCreated(const QString& key);
  void ClassDeleted(const QString& key);
  void ClassMoved(const QString& key);
  void ClassResized(const QString& key);
  void ClassChanged(const QString& key);
  void ClassEnter(const QString& key);
  void ClassLeave(const QString& key);
  void ClassClicked(const QString& key);
  void ClassRClicked(const QString& key);
  void AssocCreated(const QString& key);
  void AssocDeleted(const QString& key);
  void AssocChanged(const QString& key);
  void AssocEnter(const QString& key);
  void AssocLeave(const QString& key);
  void AssocClicked(const QString& key);
  void AssocRClicked(const QString& key);
  void ToolbarButton(const QString& button);
  void DiagramScrolled(int scrollX, int scrollY);
  void DiagramZoomed(int zoomX, int zoomY);
  void PopupButton(const QString& tool);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void passEventsOn();
  void giveHostObjects();

  platform::ComponentRegistry& m_registry;
  HelpWindow* m_help = nullptr;
  bool m_drawingTools = true;
  std::unique_ptr<HostButtons> m_buttons;  ///< once they were shown
  std::vector<platform::Connection> m_events;
};

}  // namespace brisel::qt
