#pragma once

#include <QWidget>
#include <string>

#include "controls/Combo.h"
#include "controls/ListView.h"
#include "controls/OptionGroup.h"
#include "controls/TextBox.h"
#include "controls/ToolBarControl.h"

class QGridLayout;

namespace brisel::qt {

class ListViewWidget;

/// Members of one kind: the fields in which one is entered, the tools, and the list. Del in the
/// list deletes the member that is selected there.
class MemberView : public QWidget {
 public:
  struct Controls {
    platform::Ref<controls::ListView> list;
    platform::Ref<controls::TextBox> name;
    platform::Ref<controls::OptionGroup> scope;  ///< nothing for members without a scope
    platform::Ref<controls::Combo> type;
    platform::Ref<controls::ToolBarControl> tools;
    std::string band;        ///< of the tools
    std::string deleteTool;  ///< which of them deletes what the name field names
    QString member;          ///< "Attribute"; the widgets are named after it, "AttributeName"
    QString listName;        ///< for those who listen to the window
  };

  explicit MemberView(Controls controls, QWidget* parent = nullptr);

  /// Where a person begins.
  void enterFields();
  void enterList();

 private:
  void build();
  void addField(QGridLayout& grid, const char* name, const QString& label, QWidget& field);
  void deleteSelected();

  Controls m_controls;
  QWidget* m_name;
  ListViewWidget* m_list;
  platform::Connection m_deleteAsked;
};

}  // namespace brisel::qt
