#pragma once

#include <QToolBar>
#include <string>

#include "controls/ToolBarControl.h"

class QToolButton;

namespace brisel::qt {

/// The tools of one band in a row. The keyboard comes to each of them; Enter and the space bar
/// click.
class ToolRow : public QToolBar {
 public:
  ToolRow(platform::Ref<controls::ToolBarControl> tools, std::string_view band,
          QWidget* parent = nullptr);

  /// Nothing for a tool that is not in the row.
  [[nodiscard]] QToolButton* button(std::string_view key) const;
  /// A person's click.
  void click(std::string_view key);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void follow();
  void addTool(const controls::Tool& tool);

  platform::Ref<controls::ToolBarControl> m_tools;
  std::string m_band;
  platform::Connection m_layoutChanged;
};

}  // namespace brisel::qt
