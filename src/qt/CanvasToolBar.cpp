#include "qt/CanvasToolBar.h"

#include <QAction>
#include <algorithm>
#include <array>

#include "qt/Icon.h"
#include "qt/Text.h"

namespace brisel::qt {

namespace {

constexpr QSize kIconSize(24, 24);

/// What a press on the canvas does next.
constexpr std::array<std::string_view, 6> kDrawingTools = {
    "Select",        "NewClass", "Association", "CompositeAggregation", "SharedAggregation",
    "Generalization"};

bool isDrawingTool(const canvas::Button& button) {
  return std::find(kDrawingTools.begin(), kDrawingTools.end(), button.key) != kDrawingTools.end();
}

bool hasPalette(const canvas::ButtonBar& bar) {
  return std::any_of(bar.buttons().begin(), bar.buttons().end(), [](const canvas::Button& button) {
    return isDrawingTool(button) && button.key != "Select";
  });
}

}  // namespace

CanvasToolBar::CanvasToolBar(platform::Ref<canvas::DiagramControl> control, Part part,
                             QWidget* parent)
    : QToolBar(parent), m_control(std::move(control)), m_part(part) {
  setObjectName(part == Part::row ? "CanvasToolBar" : "DrawingTools");
  setOrientation(part == Part::row ? Qt::Horizontal : Qt::Vertical);
  setIconSize(kIconSize);
  const canvas::ButtonBar& bar = m_control->buttonBar();
  m_connections.push_back(bar.ButtonAdded.connect([this](std::size_t i) { addButton(i); }));
  m_connections.push_back(bar.ButtonChanged.connect([this](std::size_t i) { showState(i); }));
  m_connections.push_back(bar.Cleared.connect([this] { rebuild(); }));
  m_connections.push_back(bar.ShownChanged.connect([this] { showBar(); }));
  rebuild();
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
  for (QAction* old : m_actions) {
    if (old) old->deleteLater();  // one of them may be the one that is being triggered
  }
  m_actions.clear();
  for (std::size_t i = 0; i < m_control->buttonBar().buttons().size(); ++i) addButton(i);
  showBar();
}

bool CanvasToolBar::isMine(const canvas::Button& button) const {
  if (m_part == Part::palette) return isDrawingTool(button);
  return !isDrawingTool(button) || button.key == "Select";
}

void CanvasToolBar::addButton(std::size_t index) {
  const canvas::Button& button = m_control->buttonBar().buttons()[index];
  QAction* made = isMine(button) ? makeAction(button) : nullptr;
  m_actions.insert(m_actions.begin() + static_cast<std::ptrdiff_t>(index), made);
  if (made) insertAction(placeOf(button.key), made);
  showState(index);
  showBar();
}

/// The action that a new one stands before; nothing for the end.
QAction* CanvasToolBar::placeOf(std::string_view key) const {
  if (key == "Open") return action("Save");
  return key == "Help" ? nullptr : action("Help");
}

QAction* CanvasToolBar::makeAction(const canvas::Button& button) {
  auto* made = new QAction(this);
  if (button.isSeparator()) {
    made->setSeparator(true);
    return made;
  }
  made->setIcon(loadIcon(button.icon));
  made->setText(toQt(button.caption));
  made->setObjectName(toQt(button.key));
  made->setToolTip(toQt(button.tooltip));
  made->setStatusTip(toQt(button.tooltip));
  connect(made, &QAction::triggered, this, [this, key = button.key] { click(key); });
  return made;
}

/// The bar itself, "Select" where it belongs, and separators between what is seen.
void CanvasToolBar::showBar() {
  const canvas::ButtonBar& bar = m_control->buttonBar();
  const bool split = hasPalette(bar);
  setVisible(bar.shown() && (split || m_part == Part::row));
  if (m_part == Part::palette) return;
  if (QAction* select = action("Select")) select->setVisible(!split);
  QAction* separator = nullptr;
  bool any = false;
  for (QAction* each : actions()) {
    if (each->isSeparator()) {
      each->setVisible(false);
      if (any) separator = each;
    } else if (each->isVisible()) {
      if (separator) separator->setVisible(true);
      separator = nullptr;
      any = true;
    }
  }
}

void CanvasToolBar::showState(std::size_t index) {
  const canvas::Button& button = m_control->buttonBar().buttons()[index];
  QAction* shown = m_actions[index];
  if (!shown || button.isSeparator()) return;
  shown->setEnabled(button.enabled);
  // A button becomes one that stays down when it is pressed for the first time.
  if (button.pressed) shown->setCheckable(true);
  shown->setChecked(button.pressed);
}

void CanvasToolBar::runInstead(std::string_view key, std::function<void()> command) {
  m_instead.insert_or_assign(std::string(key), std::move(command));
}

void CanvasToolBar::click(const std::string& key) {
  const auto own = m_instead.find(key);
  if (own != m_instead.end()) {
    own->second();
  } else {
    m_control->ClickButton(key);
  }
  // The click itself has turned a button that stays down over; what counts is the canvas's answer.
  for (std::size_t i = 0; i < m_actions.size(); ++i) showState(i);
}

}  // namespace brisel::qt
