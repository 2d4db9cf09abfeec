#include "qt/PopupMenu.h"

#include <QCursor>
#include <QMenu>
#include <optional>

#include "controls/ToolBarControl.h"
#include "qt/Text.h"

namespace brisel::qt {

namespace {

std::optional<QPoint>& askedPlace() {
  static std::optional<QPoint> place;
  return place;
}

constexpr int kDeepest = 8;  ///< bands may open each other in a circle

void fill(QMenu& menu, const platform::Ref<controls::ToolBarControl>& control,
          std::string_view band, int depth);

void addTool(QMenu& menu, const platform::Ref<controls::ToolBarControl>& control,
             const controls::Tool& tool, int depth) {
  QAction* action = nullptr;
  if (tool.opens().empty()) {
    action = menu.addAction(toQt(tool.caption()));
    action->setCheckable(tool.checked());
    action->setChecked(tool.checked());
    QObject::connect(action, &QAction::triggered, &menu,
                     [control, key = tool.key()] { control->Click(key); });
  } else {
    QMenu* opened = menu.addMenu(toQt(tool.caption()));
    fill(*opened, control, tool.opens(), depth + 1);
    action = opened->menuAction();
  }
  action->setObjectName(toQt(tool.key()));
  const std::string objection = control->objection(tool.key());
  action->setEnabled(tool.enabled() && objection.empty());
  if (!objection.empty()) action->setToolTip(toQt(objection));
}

void fill(QMenu& menu, const platform::Ref<controls::ToolBarControl>& control,
          std::string_view band, int depth) {
  const platform::Ref<controls::Band> shown = control->band(band);
  if (!shown || depth > kDeepest) return;
  menu.setToolTipsVisible(true);
  for (const platform::Ref<controls::Tool>& tool : shown->tools()) {
    addTool(menu, control, *tool, depth);
  }
}

}  // namespace

void fillMenu(QMenu& menu, controls::ToolBarControl& toolBar, std::string_view band) {
  fill(menu, platform::Ref<controls::ToolBarControl>(&toolBar), band, 0);
}

QPoint popupPlace() { return askedPlace().value_or(QCursor::pos()); }

PopupsAt::PopupsAt(QPoint onScreen) { askedPlace() = onScreen; }
PopupsAt::~PopupsAt() { askedPlace().reset(); }

}  // namespace brisel::qt
