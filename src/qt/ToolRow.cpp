#include "qt/ToolRow.h"

#include <QAction>
#include <QKeyEvent>
#include <QLayout>
#include <QToolButton>
#include <array>

#include "qt/Text.h"

namespace brisel::qt {

namespace {

/// What is written on the button of a tool; the whole caption is its tip. Rows of tools stand in
/// narrow panes.
struct ShortText {
  std::string_view keyEnd;
  const char* text;
};

constexpr std::array<ShortText, 4> kShortTexts = {{
    {"New", "Ne&w"},
    {"Add", "&Add"},
    {"Delete", "De&lete"},
    {"Parameters", "&Parameters"},
}};

QString shortText(const controls::Tool& tool) {
  for (const ShortText& row : kShortTexts) {
    if (tool.key().ends_with(row.keyEnd)) return QToolBar::tr(row.text);
  }
  return toQt(tool.caption());
}

}  // namespace

ToolRow::ToolRow(platform::Ref<controls::ToolBarControl> tools, std::string_view band,
                 QWidget* parent)
    : QToolBar(parent), m_tools(std::move(tools)), m_band(band) {
  setToolButtonStyle(Qt::ToolButtonTextOnly);
  setMovable(false);
  layout()->setContentsMargins(0, 0, 0, 0);
  m_layoutChanged = m_tools->LayoutChanged.connect([this] { follow(); });
  follow();
}

void ToolRow::follow() {
  for (QAction* old : actions()) {
    removeAction(old);
    old->deleteLater();  // it may be the one that is being triggered
  }
  const platform::Ref<controls::Band> band = m_tools->band(m_band);
  if (!band) return;
  for (const platform::Ref<controls::Tool>& tool : band->tools()) addTool(*tool);
}

void ToolRow::addTool(const controls::Tool& tool) {
  const QString caption = toQt(tool.caption()).remove('&');
  auto* action = new QAction(caption, this);
  action->setObjectName(toQt(tool.key()));
  action->setIconText(shortText(tool));
  action->setToolTip(caption);
  action->setStatusTip(caption);
  action->setEnabled(tool.enabled());
  connect(action, &QAction::triggered, this, [this, key = tool.key()] { click(key); });
  addAction(action);
  auto* button = static_cast<QToolButton*>(widgetForAction(action));
  button->setAutoRaise(false);
  button->setFocusPolicy(Qt::StrongFocus);
  button->setObjectName(toQt(tool.key()));
  button->setAccessibleName(caption);
  button->installEventFilter(this);
}

QToolButton* ToolRow::button(std::string_view key) const {
  for (QAction* action : actions()) {
    if (action->objectName() == toQt(key)) {
      return static_cast<QToolButton*>(widgetForAction(action));
    }
  }
  return nullptr;
}

void ToolRow::click(std::string_view key) {
  const platform::Ref<controls::ToolBarControl> held = m_tools;
  const std::string clicked(key);
  held->Click(clicked);
}

bool ToolRow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      static_cast<QToolButton*>(watched)->click();
      return true;
    }
  }
  return QToolBar::eventFilter(watched, event);
}

}  // namespace brisel::qt
