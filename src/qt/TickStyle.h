#pragma once

class QStyle;

namespace brisel::qt {

/// The desktop's style for widgets with tick boxes and option buttons, whose outlines some styles
/// draw on dark grounds in a shade that cannot be seen: there they get one of the text's colour.
/// Belongs to the application.
[[nodiscard]] QStyle& tickStyle();

}  // namespace brisel::qt
