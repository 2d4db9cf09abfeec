#pragma once

#include <QTimer>
#include <QWidget>

#include "tools/Template.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace brisel::qt {

class SourceEdit;

/// The window of the template editor: templates and classes on the left, the template's text in the
/// middle, what it makes on the right, and what is wrong below. The preview is made in slices
/// between events, a moment after the last change.
class TemplateWindow : public QWidget {
 public:
  explicit TemplateWindow(const platform::Ref<tools::Template>& tool, QWidget* parent = nullptr);

  /// Whether the preview is complete and shown.
  [[nodiscard]] bool isSettled() const { return !m_timer.isActive(); }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  [[nodiscard]] QWidget* makeLists();
  [[nodiscard]] QWidget* makeText();
  [[nodiscard]] QWidget* makePreview();
  [[nodiscard]] QWidget* makeBottom();
  void makeShortcuts();

  void changed(const std::string& what);
  void showTemplates();
  void showText();
  void showClasses();
  void filterClasses();
  void takeSelection();
  void schedule();
  void slice();
  void showFiles();
  void showFile();
  void showState();
  void say(const QString& text, bool isFault = false);

  void openTemplate(QListWidgetItem* item);
  void save();
  void saveAs();
  void chooseFolder();
  void write();
  /// Runs what may raise an Error, and tells of it below.
  template <class Action>
  void attempt(Action action);

  platform::Ref<tools::Template> m_tool;
  platform::Connection m_changes;
  QTimer m_timer;
  QListWidget* m_templates = nullptr;
  QLabel* m_classesTitle = nullptr;
  QLineEdit* m_filter = nullptr;
  QListWidget* m_classes = nullptr;
  QLabel* m_textTitle = nullptr;
  QPushButton* m_save = nullptr;
  SourceEdit* m_text = nullptr;
  QLabel* m_filesTitle = nullptr;
  QListWidget* m_files = nullptr;
  SourceEdit* m_file = nullptr;
  QLabel* m_state = nullptr;
  QLineEdit* m_output = nullptr;
  QPushButton* m_write = nullptr;
  bool m_isShowing = false;  ///< the window changes its own controls
  bool m_classesAreOld = true;
  bool m_isFault = false;  ///< the line below tells of something that is wrong
};

}  // namespace brisel::qt
