#pragma once

#include <Qt>
#include <string>

class QKeyEvent;

/// What a person's hand does, in the words that the canvas takes it in.
namespace brisel::qt {

/// "left", "middle", "right"; empty for any other.
[[nodiscard]] std::string nameOfButton(Qt::MouseButton button);
/// "ctrl+shift"
[[nodiscard]] std::string namesOfModifiers(Qt::KeyboardModifiers modifiers);
/// "F1", "Delete", "Left", "a"; empty for a key that the canvas knows no word for.
[[nodiscard]] std::string nameOfKey(const QKeyEvent& event);

}  // namespace brisel::qt
