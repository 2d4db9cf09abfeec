#include "qt/TextBoxWidget.h"

#include <QKeyEvent>
#include <algorithm>

#include "qt/ControlState.h"
#include "qt/Text.h"

namespace brisel::qt {

namespace {

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

}  // namespace

TextBoxWidget::TextBoxWidget(platform::Ref<controls::TextBox> box, QWidget* parent)
    : QLineEdit(parent), m_box(std::move(box)) {
  connect(this, &QLineEdit::textEdited, this, [this] { tellText(); });
  connect(this, &QLineEdit::selectionChanged, this, [this] { tellSelection(); });
  connect(this, &QLineEdit::cursorPositionChanged, this, [this] { tellSelection(); });
  m_connections.push_back(m_box->Changed.connect([this] { follow(); }));
  m_connections.push_back(m_box->FocusAsked.connect([this] { takeFocus(); }));
  showState(*this, *m_box);
  followText();
}

void TextBoxWidget::follow() {
  showState(*this, *m_box);
  followText();
}

void TextBoxWidget::followText() {
  if (m_telling) return;
  untold([this] {
    const QString wanted = toQt(m_box->Text());
    if (wanted != text()) setText(wanted);
    followSelection();
  });
}

void TextBoxWidget::followSelection() {
  const int start = toUnits(text(), m_box->SelStart());
  const int length = toUnits(text(), m_box->SelStart() + m_box->SelLength()) - start;
  if (length == 0) {
    if (hasSelectedText() || cursorPosition() != start) setCursorPosition(start);
  } else if (selectionStart() != start || selectionLength() != length) {
    setSelection(start, length);
  }
}

void TextBoxWidget::takeFocus() { setFocus(Qt::OtherFocusReason); }

void TextBoxWidget::tellText() {
  untold([this] {
    const int cursor = cursorPosition();
    m_box->SetText(fromQt(text()));
    if (toQt(m_box->Text()) != text()) {  // a break of lines was pasted
      setText(toQt(m_box->Text()));
      setCursorPosition(cursor);
    }
    m_box->SelStart(toCharacters(text(), cursorPosition()));
  });
}

void TextBoxWidget::tellSelection() {
  if (m_telling || !m_box->Visible()) return;
  untold([this] {
    const int start = hasSelectedText() ? selectionStart() : cursorPosition();
    m_box->SelStart(toCharacters(text(), start));
    m_box->SelLength(toCharacters(text(), start + selectionLength()) - m_box->SelStart());
  });
}

void TextBoxWidget::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    const platform::Ref<controls::TextBox> held = m_box;
    held->KeyPress("Return", {});
    event->ignore();  // a dialog's button may be meant as well
    return;
  }
  QLineEdit::keyPressEvent(event);
}

void TextBoxWidget::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  // The text box's own menu is no other place.
  if (event->reason() == Qt::PopupFocusReason || m_telling || !m_box->Visible()) return;
  m_box->LeaveFocus();
}

}  // namespace brisel::qt
