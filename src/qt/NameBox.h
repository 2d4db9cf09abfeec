#pragma once

#include "qt/TextBoxWidget.h"

class QAbstractScrollArea;

namespace brisel::qt {

/// A text box laid over what a view shows: stands where the text box says, in its font, wider than
/// the text box says while its text needs it. The keyboard goes back to the view when it is done.
/// Child of the view's viewport; on paper, hence the same on light and dark desktops.
class NameBox : public TextBoxWidget {
 public:
  NameBox(platform::Ref<controls::TextBox> box, QAbstractScrollArea& view);

  [[nodiscard]] QSize sizeHint() const override { return {1, 1}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {1, 1}; }

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void follow() override;
  void takeFocus() override;

 private:
  void followPlace();
  void useFont(double points);
  void appear();
  void disappear();

  QAbstractScrollArea& m_view;
  double m_points = 0;
  double m_column = 1;  ///< width of a character in pixels
};

}  // namespace brisel::qt
