#pragma once

#include <QWidget>
#include <vector>

#include "editors/CLSAssociationControl.h"

class QLabel;
class QStackedWidget;

namespace brisel::qt {

class PropertyWidget;
class StereotypePicker;
class TabStripWidget;

/// The editor of a relationship: a tab for itself and one for each of its ends.
class AssociationPane : public QWidget {
 public:
  explicit AssociationPane(platform::Ref<editors::CLSAssociationControl> control,
                           QWidget* parent = nullptr);

  /// The keyboard comes to the first property of the panel that is shown.
  void enterFields();

 private:
  QWidget* makePage(std::int64_t index);
  void addTabKey(const QKeySequence& key, bool backwards);
  void follow();
  [[nodiscard]] QString heading(std::int64_t index) const;

  platform::Ref<editors::CLSAssociationControl> m_control;
  TabStripWidget* m_tabs;
  QStackedWidget* m_pages;
  StereotypePicker* m_stereotype = nullptr;
  std::vector<QLabel*> m_headings;
  std::vector<PropertyWidget*> m_grids;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
