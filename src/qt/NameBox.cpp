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

/// Places in a text, counted in UTF-16 units here and in code points by the text box.
int toUnits(const QString& text, std::int64_t characters) {
  qsizetype unit = 0;
  while (characters > 0 && unit < text.size()) {
    unit += text.at(unit).isHighSurrogate() && unit + 1 < text.size() ? 2 : 1;
    --characters;
  }
  return static_cast<int>(unit);
}

std::int64_t toCharacters(const QString& text, int units) {
  const QStringView before = QStringView(text).left(units);
  return std::count_if(before.begin(), before.end(), [](QChar c) { return !c.isLowSurrogate(); });
}

/// For as long as it lives.
class Raised {
 public:
  explicit Raised(bool& flag) : m_flag(flag), m_before(flag) { m_flag = true; }
  ~Raised() { m_flag = m_before; }
  Raised(const Raised&) = delete;
  Raised& operator=(const Raised&) = delete;

 private:
  bool& m_flag;
  bool m_before;
};

}  // namespace

NameBox::NameBox(platform::Ref<controls::TextBox> box, QAbstractScrollArea& view)
    : QLineEdit(view.viewport()), m_box(std::move(box)), m_view(view) {
  setObjectName("ClassName");
  setAccessibleName(tr("Name of the class"));
  setAlignment(Qt::AlignCenter);
  setFrame(false);
  setStyleSheet(looks());
  setCursor(Qt::IBeamCursor);
  hide();
  connect(this, &QLineEdit::textEdited, this, [this] { tellText(); });
  connect(this, &QLineEdit::selectionChanged, this, [this] { tellSelection(); });
  connect(this, &QLineEdit::cursorPositionChanged, this, [this] { tellSelection(); });
  m_connections.push_back(m_box->Changed.connect([this] { follow(); }));
  m_connections.push_back(m_box->FocusAsked.connect([this] { takeFocus(); }));
  follow();
}

void NameBox::follow() {
  if (!m_box->Visible()) {
    disappear();
    return;
  }
  if (!m_telling) {
    const Raised telling(m_telling);
    followText();
    followSelection();
  }
  followPlace();
  appear();
}

void NameBox::followText() {
  const QString wanted = toQt(m_box->Text());
  if (wanted != text()) setText(wanted);
}

void NameBox::followSelection() {
  const int start = toUnits(text(), m_box->SelStart());
  const int length = toUnits(text(), m_box->SelStart() + m_box->SelLength()) - start;
  if (length == 0) {
    if (hasSelectedText() || cursorPosition() != start) setCursorPosition(start);
  } else if (selectionStart() != start || selectionLength() != length) {
    setSelection(start, length);
  }
}

/// Around the middle of the text box's place, as wide as the text needs, inside of the view.
void NameBox::followPlace() {
  useFont(m_box->FontSize());
  const auto pixel = [](double twips) {
    return static_cast<int>(std::lround(std::clamp(twips / kTwipsPerPixel, -1e6, 1e6)));
  };
  const platform::Rect& place = m_box->area();
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
  const Raised telling(m_telling);  // the text box knows that it is done
  if (hasFocus()) m_view.setFocus(Qt::OtherFocusReason);
  hide();
}

void NameBox::takeFocus() {
  if (m_box->Visible()) setFocus(Qt::OtherFocusReason);
}

void NameBox::tellText() {
  const Raised telling(m_telling);
  const int cursor = cursorPosition();
  m_box->SetText(fromQt(text()));
  if (toQt(m_box->Text()) != text()) {  // a break of lines was pasted
    setText(toQt(m_box->Text()));
    setCursorPosition(cursor);
  }
  m_box->SelStart(toCharacters(text(), cursorPosition()));
}

void NameBox::tellSelection() {
  if (m_telling || !m_box->Visible()) return;
  const Raised telling(m_telling);
  const int start = hasSelectedText() ? selectionStart() : cursorPosition();
  m_box->SelStart(toCharacters(text(), start));
  m_box->SelLength(toCharacters(text(), start + selectionLength()) - m_box->SelStart());
}

bool NameBox::event(QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
      m_view.setFocus(Qt::TabFocusReason);  // ends the naming; never to the next item of the window
      if (m_box->Visible()) m_box->LeaveFocus();
      return true;
    }
  }
  return QLineEdit::event(event);
}

void NameBox::keyPressEvent(QKeyEvent* event) {
  const platform::Ref<controls::TextBox> box = m_box;
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      box->KeyPress("Return", {});
      break;
    case Qt::Key_Escape:
      box->KeyPress("Escape", {});
      break;
    case Qt::Key_F1:
      event->ignore();  // help is the window's
      return;
    default:
      QLineEdit::keyPressEvent(event);
  }
  event->accept();  // keys that a line of text has no use for must not move what is selected
}

void NameBox::keyReleaseEvent(QKeyEvent* event) {
  QLineEdit::keyReleaseEvent(event);
  event->accept();
}

void NameBox::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  // The text box's own menu is no other place.
  if (event->reason() == Qt::PopupFocusReason || m_telling || !m_box->Visible()) return;
  m_box->LeaveFocus();
}

}  // namespace brisel::qt
