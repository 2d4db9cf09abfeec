#pragma once

#include <QTabBar>
#include <string>
#include <vector>

#include "controls/TabStrip.h"

namespace brisel::qt {

/// A row of tabs; the hidden ones are left out.
class TabStripWidget : public QTabBar {
 public:
  explicit TabStripWidget(platform::Ref<controls::TabStrip> tabs, QWidget* parent = nullptr);

  /// A person goes to the next tab, or with `backwards` to the one before, around the ends.
  void step(bool backwards);

 private:
  void follow();
  void choose(int index);

  platform::Ref<controls::TabStrip> m_tabs;
  std::vector<std::string> m_keys;  ///< of the tabs shown, in order
  bool m_following = false;
  platform::Connection m_changed;
};

}  // namespace brisel::qt
