#pragma once

#include <QFrame>
#include <vector>

#include "controls/ToolBarControl.h"
#include "editors/CLSClassControl.h"

class QHBoxLayout;
class QLabel;

namespace brisel::qt {

class ClassControlView;

/// The class pane as a framed panel with the class's name for a heading: laid over the canvas where
/// the pane says, or docked at its side while the property band is open. The button in the corner
/// and Escape close it. The keyboard comes to its first field when it opens, and goes back to the
/// canvas when it closes.
class ClassPane : public QFrame {
 public:
  /// `canvas` is what it is laid over, `side` the row at whose end it is docked.
  ClassPane(platform::Ref<editors::CLSClassControl> pane,
            platform::Ref<controls::ToolBarControl> bands, QWidget& canvas, QHBoxLayout& side);

  [[nodiscard]] bool isDocked() const { return m_docked; }
  [[nodiscard]] QString heading() const;

 protected:
  /// No key or click in the pane is one on the canvas below it.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void build();
  void follow();
  void dock(bool docked);
  void place();
  void appear(bool shown);
  void close();

  platform::Ref<editors::CLSClassControl> m_pane;
  platform::Ref<controls::ToolBarControl> m_bands;
  QWidget& m_canvas;
  QHBoxLayout& m_side;
  QLabel* m_heading;
  ClassControlView* m_content;
  QLabel* m_hint;  ///< instead of the content while no class is shown
  bool m_docked = false;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
