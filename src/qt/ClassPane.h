#pragma once

#include <QFrame>
#include <vector>

#include "controls/ToolBarControl.h"
#include "editors/CLSClassControl.h"

class QHBoxLayout;
class QLabel;

namespace brisel::qt {

/// The class pane as a framed panel with the class's name for a heading: laid over the canvas where
/// the pane says, or docked at its side while the property band is open. The button in the corner
/// closes it.
class ClassPane : public QFrame {
 public:
  /// `canvas` is what it is laid over, `side` the row at whose end it is docked.
  ClassPane(platform::Ref<editors::CLSClassControl> pane,
            platform::Ref<controls::ToolBarControl> bands, QWidget& canvas, QHBoxLayout& side);

  [[nodiscard]] bool isDocked() const { return m_docked; }
  [[nodiscard]] QString heading() const;

 private:
  void build();
  void follow();
  void dock(bool docked);
  void close();

  platform::Ref<editors::CLSClassControl> m_pane;
  platform::Ref<controls::ToolBarControl> m_bands;
  QWidget& m_canvas;
  QHBoxLayout& m_side;
  QLabel* m_heading;
  bool m_docked = false;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
