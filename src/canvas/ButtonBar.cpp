#include "canvas/ButtonBar.h"

#include <algorithm>

namespace brisel::canvas {

void ButtonBar::show(bool shown) {
  if (shown == m_shown) return;
  m_shown = shown;
  ShownChanged();
}

const Button* ButtonBar::find(std::string_view key) const {
  if (key.empty()) return nullptr;
  const auto found = std::find_if(m_buttons.begin(), m_buttons.end(),
                                  [&](const Button& button) { return button.key == key; });
  return found == m_buttons.end() ? nullptr : &*found;
}

void ButtonBar::add(Button button) {
  m_buttons.push_back(std::move(button));
  ButtonAdded(m_buttons.size() - 1);
}

void ButtonBar::press(std::string_view key, bool pressed) {
  const Button* found = find(key);
  if (!found || found->pressed == pressed) return;
  const auto index = static_cast<std::size_t>(found - m_buttons.data());
  m_buttons[index].pressed = pressed;
  ButtonChanged(index);
}

void ButtonBar::clear() {
  m_buttons.clear();
  Cleared();
}

}  // namespace brisel::canvas
