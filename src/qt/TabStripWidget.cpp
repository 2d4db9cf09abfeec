#include "qt/TabStripWidget.h"

#include <QScopedValueRollback>
#include <algorithm>

#include "qt/ControlState.h"
#include "qt/Text.h"

namespace brisel::qt {

TabStripWidget::TabStripWidget(platform::Ref<controls::TabStrip> tabs, QWidget* parent)
    : QTabBar(parent), m_tabs(std::move(tabs)) {
  setExpanding(false);
  setDrawBase(false);
  setElideMode(Qt::ElideRight);
  connect(this, &QTabBar::currentChanged, this, [this](int index) { choose(index); });
  m_changed = m_tabs->Changed.connect([this] { follow(); });
  follow();
}

void TabStripWidget::follow() {
  const QScopedValueRollback following(m_following, true);
  m_keys.clear();
  int index = 0;
  for (const platform::Ref<controls::Tab>& tab : m_tabs->tabs()) {
    if (!tab->visible()) continue;
    if (index == count()) addTab(QString());
    const QString caption = toQt(tab->caption());
    if (tabText(index) != caption) setTabText(index, caption);
    m_keys.push_back(tab->key());
    ++index;
  }
  while (count() > index) removeTab(count() - 1);
  const auto selected = std::find(m_keys.begin(), m_keys.end(), m_tabs->selected());
  if (selected != m_keys.end()) setCurrentIndex(static_cast<int>(selected - m_keys.begin()));
  showState(*this, *m_tabs);
}

void TabStripWidget::choose(int index) {
  if (m_following || index < 0) return;
  const platform::Ref<controls::TabStrip> held = m_tabs;
  held->Choose(m_keys[static_cast<std::size_t>(index)]);
}

void TabStripWidget::step(bool backwards) {
  if (count() < 2 || !isEnabled()) return;
  setCurrentIndex((currentIndex() + (backwards ? count() - 1 : 1)) % count());
}

}  // namespace brisel::qt
