#include "qt/InputNames.h"

#include <QKeyEvent>
#include <algorithm>
#include <array>
#include <utility>

namespace brisel::qt {

namespace {

constexpr std::array<std::pair<int, const char*>, 17> kKeys{{
    {Qt::Key_Delete, "Delete"},
    {Qt::Key_Backspace, "Backspace"},
    {Qt::Key_Insert, "Insert"},
    {Qt::Key_Escape, "Escape"},
    {Qt::Key_Return, "Enter"},
    {Qt::Key_Enter, "Enter"},
    {Qt::Key_Tab, "Tab"},
    {Qt::Key_Backtab, "Tab"},
    {Qt::Key_Space, "Space"},
    {Qt::Key_Left, "Left"},
    {Qt::Key_Right, "Right"},
    {Qt::Key_Up, "Up"},
    {Qt::Key_Down, "Down"},
    {Qt::Key_Home, "Home"},
    {Qt::Key_End, "End"},
    {Qt::Key_PageUp, "PageUp"},
    {Qt::Key_PageDown, "PageDown"},
}};

}  // namespace

std::string nameOfButton(Qt::MouseButton button) {
  switch (button) {
    case Qt::LeftButton:
      return "left";
    case Qt::MiddleButton:
      return "middle";
    case Qt::RightButton:
      return "right";
    default:
      return {};
  }
}

std::string namesOfModifiers(Qt::KeyboardModifiers modifiers) {
  std::string names;
  const auto add = [&](Qt::KeyboardModifier modifier, const char* name) {
    if (!modifiers.testFlag(modifier)) return;
    if (!names.empty()) names += '+';
    names += name;
  };
  add(Qt::ControlModifier, "ctrl");
  add(Qt::ShiftModifier, "shift");
  add(Qt::AltModifier, "alt");
  return names;
}

std::string nameOfKey(const QKeyEvent& event) {
  const int key = event.key();
  const auto named = std::find_if(kKeys.begin(), kKeys.end(),
                                  [&](const auto& entry) { return entry.first == key; });
  if (named != kKeys.end()) return named->second;
  if (key >= Qt::Key_F1 && key <= Qt::Key_F35) return "F" + std::to_string(key - Qt::Key_F1 + 1);
  if (key > Qt::Key_Space && key <= Qt::Key_AsciiTilde) {
    return std::string(1, QChar(key).toLower().toLatin1());
  }
  return {};
}

}  // namespace brisel::qt
