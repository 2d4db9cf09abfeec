#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Diagram.h"
#include "platform/Event.h"

namespace brisel::canvas {

/// A button of the canvas's tool bar, or a separator, whose strings are all empty.
struct Button {
  std::string key;
  std::string caption;
  std::string tooltip;
  std::string icon;  ///< path of the picture, joined as the caller joined it
  bool enabled = true;
  bool pressed = false;

  [[nodiscard]] bool isSeparator() const { return key.empty(); }
};

/// The canvas's own tool bar, in the order in which its buttons were added. A view shows it.
class ButtonBar {
 public:
  [[nodiscard]] bool shown() const { return m_shown; }
  void show(bool shown);
  [[nodiscard]] const std::vector<Button>& buttons() const { return m_buttons; }
  /// Nothing for an unknown or empty key.
  [[nodiscard]] const Button* find(std::string_view key) const;

  void add(Button button);
  /// Makes the button look pressed, or not; an unknown key does nothing.
  void press(std::string_view key, bool pressed);
  void clear();

  platform::Event<> ShownChanged;
  platform::Event<std::size_t> ButtonAdded;    ///< its index
  platform::Event<std::size_t> ButtonChanged;  ///< its index
  platform::Event<> Cleared;

 private:
  std::vector<Button> m_buttons;
  bool m_shown = false;
};

}  // namespace brisel::canvas
