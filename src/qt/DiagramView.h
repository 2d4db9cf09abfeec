#pragma once

#include <QAbstractScrollArea>
#include <QTimer>
#include <string_view>
#include <vector>

#include "canvas/DiagramControl.h"
#include "platform/Event.h"
#include "platform/Ref.h"
#include "qt/DiagramPicture.h"

namespace brisel::qt {

/// The window onto a diagram control: shows its picture and hands it what the mouse, the wheel and
/// the keys do. Decides nothing itself.
class DiagramView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit DiagramView(platform::Ref<canvas::DiagramControl> control, QWidget* parent = nullptr);

  [[nodiscard]] canvas::DiagramControl& control() const { return *m_control; }
  /// A point of the viewport in twips of the canvas, and back.
  [[nodiscard]] platform::Point toTwips(QPointF position) const;
  [[nodiscard]] QPointF fromTwips(platform::Point point) const;

  [[nodiscard]] QSize sizeHint() const override { return {960, 640}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  bool viewportEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;

 private:
  void askForMenu();
  void showDamage(const std::vector<platform::Rect>& areas);
  void showPosition();
  void showCursor();
  void showAutoScroll();

  platform::Ref<canvas::DiagramControl> m_control;
  DiagramPicture m_picture;
  bool m_placingBars = false;
  QTimer m_scrollTimer;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
