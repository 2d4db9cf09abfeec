#include "qt/ComboWidget.h"

#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QToolTip>

#include "qt/ComboModel.h"
#include "qt/ControlState.h"
#include "qt/Text.h"

namespace brisel::qt {

namespace {

constexpr int kVisibleEntries = 12;
constexpr int kLeastLength = 10;  ///< characters that the field has room for

}  // namespace

ComboWidget::ComboWidget(platform::Ref<controls::Combo> combo, Unknown unknown, QWidget* parent)
    : QComboBox(parent),
      m_combo(std::move(combo)),
      m_unknown(unknown),
      m_entries(new ComboModel(m_combo, this)) {
  setEditable(true);
  setInsertPolicy(NoInsert);
  setCompleter(nullptr);  // by its own entries, of which it has none
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(kLeastLength);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  makeList();
  connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) { typed(text); });
  m_connections.push_back(m_combo->Changed.connect([this] { follow(); }));
  follow();
}

void ComboWidget::makeList() {
  m_list = new QListView;  // the completer's
  m_list->setUniformItemSizes(true);
  m_completer = new QCompleter(m_entries, this);
  m_completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
  m_completer->setMaxVisibleItems(kVisibleEntries);
  m_completer->setPopup(m_list);
  m_completer->setWidget(this);
  connect(m_completer, qOverload<const QModelIndex&>(&QCompleter::activated), this,
          [this](const QModelIndex& index) {
            if (index.isValid()) choose(m_entries->entry(index.row()));
          });
}

void ComboWidget::follow() {
  if (m_telling) return;
  m_isTyping = false;
  m_completion.reset();
  m_typed = toQt(m_combo->Text());
  if (currentText() != m_typed) setEditText(m_typed);
  showState(*this, *m_combo);
}

// ---- the list -----------------------------------------------------------------------------------

void ComboWidget::showPopup() {
  if (m_list->isVisible()) return hidePopup();
  m_combo->refresh();
  m_entries->showAll();
  openList(m_entries->selectedRow());
}

void ComboWidget::hidePopup() { m_list->hide(); }

void ComboWidget::openList(int current) {
  if (m_entries->rowCount() == 0) return hidePopup();
  m_completer->complete();
  const QModelIndex row = m_completer->completionModel()->index(current, 0);
  m_list->setCurrentIndex(row);
  if (row.isValid()) m_list->scrollTo(row, QAbstractItemView::PositionAtCenter);
}

// ---- what a person does -------------------------------------------------------------------------

void ComboWidget::tellType(const QString& text) {
  const QScopedValueRollback telling(m_telling, true);
  m_isTyping = true;
  m_combo->Type(fromQt(text));
}

void ComboWidget::typed(const QString& text) {
  const bool grew = text.size() > m_typed.size() && lineEdit()->cursorPosition() == text.size();
  if (!m_isTyping) m_combo->refresh();
  m_typed = text;
  m_completion.reset();
  tellType(text);
  m_entries->showMatches(text);
  if (grew) completeInField();
  openList(-1);
}

void ComboWidget::completeInField() {
  if (m_entries->rowCount() == 0) return;
  const std::size_t entry = m_entries->entry(0);
  const QString text = toQt(m_combo->entryText(entry));
  if (!text.startsWith(m_typed, Qt::CaseInsensitive)) return;
  m_completion = entry;
  if (text.size() == m_typed.size()) return;
  lineEdit()->setText(m_typed + text.mid(m_typed.size()));
  lineEdit()->setSelection(static_cast<int>(text.size()),
                           static_cast<int>(m_typed.size() - text.size()));
}

void ComboWidget::choose(std::size_t entry) {
  const platform::Ref<controls::Combo> held = m_combo;
  hidePopup();
  held->chooseEntry(entry);
  lineEdit()->selectAll();
}

/// False when there is nothing to take.
bool ComboWidget::enter() {
  const QModelIndex reached = m_list->isVisible() ? m_list->currentIndex() : QModelIndex();
  if (reached.isValid()) {
    choose(m_entries->entry(reached.row()));
    return true;
  }
  if (m_completion) {
    choose(*m_completion);
    return true;
  }
  if (m_unknown == Unknown::refused && !m_isTyping) return false;
  hidePopup();
  const platform::Ref<controls::Combo> held = m_combo;
  const QString text = currentText();
  held->Enter(fromQt(text));
  if (m_unknown == Unknown::refused && m_isTyping) {
    QToolTip::showText(mapToGlobal(QPoint(0, height())),
                       tr("There is no \"%1\" to choose").arg(text), this);
  } else {
    lineEdit()->selectAll();
  }
  return true;
}

bool ComboWidget::cancel() {
  const bool wasOpen = m_list->isVisible();
  hidePopup();
  if (!m_isTyping) return wasOpen;
  const platform::Ref<controls::Combo> held = m_combo;
  held->cancelTyping();
  lineEdit()->selectAll();
  return true;
}

/// What was typed is left behind: what is seen in the field is what counts.
void ComboWidget::settle() {
  if (!m_isTyping) return;
  if (m_completion) {
    const QString text = toQt(m_combo->entryText(*m_completion));
    tellType(text);
    m_typed = text;
    m_completion.reset();
    setEditText(text);
  }
  if (m_unknown == Unknown::refused && !m_combo->saysSelection()) m_combo->cancelTyping();
}

void ComboWidget::keyPressEvent(QKeyEvent* event) {
  bool taken = true;
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      taken = enter();
      break;
    case Qt::Key_Escape:
      taken = cancel();
      break;
    case Qt::Key_Up:
    case Qt::Key_Down:
      showPopup();
      break;
    default:
      QComboBox::keyPressEvent(event);
      return;
  }
  event->setAccepted(taken);
}

void ComboWidget::focusOutEvent(QFocusEvent* event) {
  QComboBox::focusOutEvent(event);
  const Qt::FocusReason reason = event->reason();
  if (reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason) return;
  hidePopup();
  settle();
}

}  // namespace brisel::qt
