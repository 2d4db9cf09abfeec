#pragma once

#include <QWidget>

#include "controls/ListEditor.h"

class QLabel;
class QListView;
class QPushButton;

namespace brisel::qt {

class ListEditorModel;

/// A list of names with buttons that add, rename and remove. Names are typed in the list itself.
/// From the keyboard: Ins, F2 and Del.
class ListEditorWidget : public QWidget {
 public:
  explicit ListEditorWidget(platform::Ref<controls::ListEditor> list, QWidget* parent = nullptr);

  [[nodiscard]] QListView& list() const { return *m_view; }
  /// What was refused last; empty for nothing.
  [[nodiscard]] QString refusal() const;

 private:
  void build();
  QPushButton* addCommand(const QString& text, const char* name, const QKeySequence& key,
                          void (ListEditorWidget::*command)());
  void add();
  void rename();
  void remove();
  void showCommands();
  void refuse(const QString& reason);

  platform::Ref<controls::ListEditor> m_list;
  ListEditorModel* m_model;
  QListView* m_view;
  QPushButton* m_rename = nullptr;
  QPushButton* m_remove = nullptr;
  QLabel* m_refusal;
  platform::Connection m_changed;
  platform::Connection m_refused;
};

}  // namespace brisel::qt
