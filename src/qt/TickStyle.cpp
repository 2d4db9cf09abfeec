#include "qt/TickStyle.h"

#include <QApplication>
#include <QPainter>
#include <QPointer>
#include <QProxyStyle>
#include <QStyleOption>

namespace brisel::qt {

namespace {

constexpr int kOutlineAlpha = 120;

class TickStyle : public QProxyStyle {
 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isRound = element == PE_IndicatorRadioButton;
    if (!isRound && element != PE_IndicatorCheckBox && element != PE_IndicatorItemViewItemCheck) {
      return;
    }
    const QPalette& colors = option->palette;
    if (colors.color(QPalette::Window).lightness() >= colors.color(QPalette::Text).lightness()) {
      return;
    }
    QColor outline = colors.color(QPalette::Text);
    outline.setAlpha(kOutlineAlpha);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, isRound);
    painter->setPen(outline);
    painter->setBrush(Qt::NoBrush);
    const QRect shape = option->rect.adjusted(0, 0, -1, -1);
    if (isRound) {
      painter->drawEllipse(shape);
    } else {
      painter->drawRect(shape);
    }
    painter->restore();
  }
};

}  // namespace

QStyle& tickStyle() {
  static QPointer<TickStyle> style;
  if (!style) {
    style = new TickStyle;
    style->setParent(QCoreApplication::instance());
  }
  return *style;
}

}  // namespace brisel::qt
