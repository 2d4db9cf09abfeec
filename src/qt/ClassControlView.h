#pragma once

#include <QWidget>
#include <vector>

#include "editors/CLSClassControl.h"

class QLabel;
class QStackedWidget;

namespace brisel::qt {

class MemberView;
class PropertyWidget;
class StereotypePicker;
class TabStripWidget;

/// The editor of a class: tabs, and below them the panel of the tab that is selected, or what is
/// laid over it. Ctrl+PgUp and Ctrl+PgDn change the tab.
class ClassControlView : public QWidget {
 public:
  explicit ClassControlView(platform::Ref<editors::CLSClassControl> control,
                            QWidget* parent = nullptr);

  /// The keyboard comes to the first field of what is shown.
  void enterFields();

 protected:
  /// Escape leaves what is laid over a panel, Enter takes it; other keys are left to the parent.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  enum Page { classPage, attributePage, operationPage, parameterPage, propertyPage };

  void build();
  QWidget* makeClassPage();
  QWidget* makeParameterPage();
  QWidget* makePropertyPage();
  void addTabKey(const QKeySequence& key, bool backwards);
  void follow();
  [[nodiscard]] Page wantedPage() const;
  void showPage(Page page);
  void showHeadings();

  platform::Ref<editors::CLSClassControl> m_control;
  TabStripWidget* m_tabs;
  QStackedWidget* m_pages;
  StereotypePicker* m_stereotype = nullptr;
  MemberView* m_attributes = nullptr;
  MemberView* m_operations = nullptr;
  MemberView* m_parameters = nullptr;
  PropertyWidget* m_memberGrid = nullptr;
  QLabel* m_operationHeading = nullptr;
  QLabel* m_memberHeading = nullptr;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
