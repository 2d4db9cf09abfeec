#include "qt/CanvasToolBar.h"

#include <QAction>

#include "qt/Icon.h"
#include "qt/Text.h"

namespace brisel::qt {

namespace {

constexpr QSize kIconSize(24, 24);

}  // namespace

CanvasToolBar::CanvasToolBar(platform::Ref<canvas::DiagramControl> control, QWidget* parent)
    : QToolBar(parent), m_control(std::move(control)) {
  setObjectName("CanvasToolBar");
  setIconSize(kIconSize);
  const canvas::ButtonBar& bar = m_control->buttonBar();
  m_connections.push_back(bar.ButtonAdded.connect([this](std::size_t i) { addButton(i); }));
  m_connections.push_back(bar.ButtonChanged.connect([this](std::size_t i) { showState(i); }));
  m_connections.push_back(bar.Cleared.connect([this] { rebuild(); }));
  m_connections.push_back(
      bar.ShownChanged.connect([this] { setVisible(m_control->buttonBar().shown()); }));
  rebuild();
  setVisible(bar.shown());
}

QAction* CanvasToolBar::action(std::string_view key) const {
  const auto& buttons = m_control->buttonBar().buttons();
  for (std::size_t i = 0; i < m_actions.size(); ++i) {
    if (buttons[i].key == key && !key.empty()) return m_actions[i];
  }
  return nullptr;
}

void CanvasToolBar::rebuild() {
  clear();
  m_actions.clear();
  for (std::size_t i = 0; i < m_control->buttonBar().buttons().size(); ++i) addButton(i);
}

void CanvasToolBar::addButton(std::size_t index) {
  const canvas::Button& button = m_control->buttonBar().buttons()[index];
  QAction* action = nullptr;
  if (button.isSeparator()) {
    action = addSeparator();
  } else {
    action = addAction(loadIcon(button.icon), toQt(button.caption));
    action->setObjectName(toQt(button.key));
    action->setToolTip(toQt(button.tooltip));
    action->setStatusTip(toQt(button.tooltip));
    connect(action, &QAction::triggered, this, [this, key = button.key] { click(key); });
  }
  m_actions.insert(m_actions.begin() + static_cast<std::ptrdiff_t>(index), action);
  showState(index);
}

void CanvasToolBar::showState(std::size_t index) {
  const canvas::Button& button = m_control->buttonBar().buttons()[index];
  QAction* action = m_actions[index];
  if (button.isSeparator()) return;
  action->setEnabled(button.enabled);
  // A button becomes one that stays down when it is pressed for the first time.
  if (button.pressed) action->setCheckable(true);
  action->setChecked(button.pressed);
}

void CanvasToolBar::click(const std::string& key) {
  m_control->ClickButton(key);
  // The click itself has turned a button that stays down over; what counts is the canvas's answer.
  for (std::size_t i = 0; i < m_actions.size(); ++i) showState(i);
}

}  // namespace brisel::qt
