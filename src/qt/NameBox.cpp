#include "qt/NameBox.h"

#include <QAbstractScrollArea>
#include <QKeyEvent>
#include <algorithm>
#include <cmath>

#include "canvas/Painter.h"
#include "canvas/Palette.h"
#include "platform/Text.h"
#include "qt/FixedFont.h"
#include "qt/Text.h"

namespace brisel::qt {

using platform::kTwipsPerPixel;
using platform::kTwipsPerPoint;

namespace {

constexpr double kMostPoints = 1000;
constexpr int kFrame = 1;
constexpr int kSpareColumns = 1;  ///< for the cursor behind the last character
/// Between a line of text and the frame, as QLineEdit keeps it; no property tells.
constexpr int kInnerMargin = 2;

QString colorName(canvas::Color color) { return QColor::fromRgba(color).name(); }

QString looks() {
  return QStringLiteral(
             "QLineEdit { background: #ffffff; color: %1; border: %2px solid %3; padding: 0; "
             "margin: 0; selection-background-color: %3; selection-color: #ffffff; }")
      .arg(colorName(canvas::palette::kText))
      .arg(kFrame)
      .arg(colorName(canvas::palette::kSelected));
}

}  // namespace

NameBox::NameBox(platform::Ref<controls::TextBox> box, QAbstractScrollArea& view)
    : TextBoxWidget(std::move(box), view.viewport()), m_view(view) {
  setObjectName("ClassName");
  setAccessibleName(tr("Name of the class"));
  setAlignment(Qt::AlignCenter);
  setFrame(false);
  setStyleSheet(looks());
  setCursor(Qt::IBeamCursor);
  hide();
  follow();
}

void NameBox::follow() {
  if (!box().Visible()) {
    disappear();
    return;
  }
  followText();
  followPlace();
  appear();
}

/// Around the middle of the text box's place, as wide as the text needs, inside of the view.
void NameBox::followPlace() {
  useFont(box().FontSize());
  const auto pixel = [](double twips) {
    return static_cast<int>(std::lround(std::clamp(twips / kTwipsPerPixel, -1e6, 1e6)));
  };
  const platform::Rect& place = box().area();
  QRect wanted(pixel(place.left), pixel(place.top), pixel(place.width), pixel(place.height));
  const int columns = platform::columnsOf(fromQt(text())) + kSpareColumns;
  const int needed = static_cast<int>(std::ceil(columns * m_column)) + 2 * (kFrame + kInnerMargin);
  const QRect view = m_view.viewport()->rect();
  const QPoint middle = wanted.center();
  wanted.setWidth(std::max(wanted.width(), needed));
  wanted.setHeight(std::max(wanted.height(), fontMetrics().height() + 2 * kFrame));
  wanted.moveCenter(middle);
  const QRect seen = wanted.intersected(view);
  // What was scrolled out of sight stays there.
  setGeometry(seen.isEmpty() ? wanted : seen);
}

/// The canvas's bold font, column for column as the canvas measures it.
void NameBox::useFont(double points) {
  const double kept = std::clamp(points, 1.0, kMostPoints);
  if (kept == m_points) return;
  m_points = kept;
  const double pixels = kept * kTwipsPerPoint / kTwipsPerPixel;
  m_column = canvas::kColumnWidth * pixels;
  QFont font = fixedFont(true);
  font.setPointSizeF(pixels * 72 / logicalDpiY());
  const double advance = QFontMetricsF(font).horizontalAdvance('M');
  font.setLetterSpacing(QFont::AbsoluteSpacing, m_column - advance);
  setFont(font);
}

void NameBox::appear() {
  if (!isHidden()) return;
  show();
  raise();
}

void NameBox::disappear() {
  if (isHidden()) return;
  untold([this] {  // the text box knows that it is done
    if (hasFocus()) m_view.setFocus(Qt::OtherFocusReason);
    hide();
  });
}

void NameBox::takeFocus() {
  if (box().Visible()) TextBoxWidget::takeFocus();
}

bool NameBox::event(QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
      m_view.setFocus(Qt::TabFocusReason);  // ends the naming; never to the next item of the window
      if (box().Visible()) box().LeaveFocus();
      return true;
    }
  }
  return QLineEdit::event(event);
}

void NameBox::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Escape: {
      const platform::Ref<controls::TextBox> held(&box());
      held->KeyPress("Escape", {});
      break;
    }
    case Qt::Key_F1:
      event->ignore();  // help is the window's
      return;
    default:
      TextBoxWidget::keyPressEvent(event);
  }
  event->accept();  // keys that a line of text has no use for must not move what is selected
}

void NameBox::keyReleaseEvent(QKeyEvent* event) {
  QLineEdit::keyReleaseEvent(event);
  event->accept();
}

}  // namespace brisel::qt
