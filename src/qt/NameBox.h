#pragma once

#include <QLineEdit>
#include <vector>

#include "controls/TextBox.h"

class QAbstractScrollArea;

namespace brisel::qt {

/// A text box as a line of text laid over what a view shows: stands where the text box says, in its
/// font, and tells it what is typed, selected and pressed. Wider than the text box says while its
/// text needs it. The keyboard goes back to the view when it is done. Child of the view's viewport;
/// on paper, hence the same on light and dark desktops.
class NameBox : public QLineEdit {
 public:
  NameBox(platform::Ref<controls::TextBox> box, QAbstractScrollArea& view);

  [[nodiscard]] QSize sizeHint() const override { return {1, 1}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {1, 1}; }

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void follow();
  void followText();
  void followSelection();
  void followPlace();
  void useFont(double points);
  void appear();
  void disappear();
  void takeFocus();
  void tellText();
  void tellSelection();

  platform::Ref<controls::TextBox> m_box;
  QAbstractScrollArea& m_view;
  double m_points = 0;
  double m_column = 1;     ///< width of a character in pixels
  bool m_telling = false;  ///< what the text box says comes from here
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
