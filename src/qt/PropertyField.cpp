#include "qt/PropertyField.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <array>

#include "qt/Text.h"
#include "qt/TickStyle.h"

namespace brisel::qt {

using controls::PropertyFormat;
using controls::PropertyKind;
using platform::Value;

namespace {

constexpr int kLines = 3;

/// The wheel scrolls the grid past a list of words that does not have the keyboard.
class WheelGuard : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) return false;
    event->ignore();
    return true;
  }
};

QString textOf(const Value& value) { return toQt(value.text()); }

// ---- a tick box ---------------------------------------------------------------------------------

QWidget* makeTick(const PropertyFormat&, QWidget* parent, FieldEdited edited) {
  auto* field = new QCheckBox(parent);
  field->setStyle(&tickStyle());
  QObject::connect(field, &QCheckBox::clicked, field,
                   [edited = std::move(edited)](bool ticked) { edited(ticked); });
  return field;
}

void showTick(QWidget& field, const Value& value) {
  static_cast<QCheckBox&>(field).setChecked(value.isTrue());
}

// ---- a line -------------------------------------------------------------------------------------

QWidget* makeLine(const PropertyFormat&, QWidget* parent, FieldEdited edited) {
  auto* field = new QLineEdit(parent);
  QObject::connect(field, &QLineEdit::textEdited, field,
                   [edited = std::move(edited)](const QString& text) { edited(fromQt(text)); });
  return field;
}

void showLine(QWidget& field, const Value& value) {
  auto& line = static_cast<QLineEdit&>(field);
  if (line.text() != textOf(value)) line.setText(textOf(value));
}

// ---- several lines ------------------------------------------------------------------------------

QWidget* makeLines(const PropertyFormat&, QWidget* parent, FieldEdited edited) {
  auto* field = new QPlainTextEdit(parent);
  field->setTabChangesFocus(true);
  const int frame =
      2 * (field->frameWidth() + static_cast<int>(field->document()->documentMargin()));
  field->setFixedHeight(kLines * field->fontMetrics().lineSpacing() + frame);
  QObject::connect(field, &QPlainTextEdit::textChanged, field,
                   [field, edited = std::move(edited)] { edited(fromQt(field->toPlainText())); });
  return field;
}

void showLines(QWidget& field, const Value& value) {
  auto& lines = static_cast<QPlainTextEdit&>(field);
  if (lines.toPlainText() != textOf(value)) lines.setPlainText(textOf(value));
}

// ---- words --------------------------------------------------------------------------------------

QComboBox* makeWords(const PropertyFormat& format, QWidget* parent) {
  auto* field = new QComboBox(parent);
  field->setFocusPolicy(Qt::StrongFocus);
  field->installEventFilter(new WheelGuard(field));
  for (const std::string_view word : format.words) field->addItem(toQt(word));
  return field;
}

QWidget* makeChoice(const PropertyFormat& format, QWidget* parent, FieldEdited edited) {
  QComboBox* field = makeWords(format, parent);
  field->insertItem(0, QString());  // no word at all
  QObject::connect(field, &QComboBox::textActivated, field,
                   [edited = std::move(edited)](const QString& text) { edited(fromQt(text)); });
  return field;
}

/// A word that is not offered stands in the list as long as it is the value.
void showChoice(QWidget& field, const Value& value) {
  auto& choice = static_cast<QComboBox&>(field);
  const QString text = textOf(value);
  if (choice.findText(text) < 0) choice.addItem(text);
  choice.setCurrentIndex(choice.findText(text));
}

QWidget* makeOpenChoice(const PropertyFormat& format, QWidget* parent, FieldEdited edited) {
  QComboBox* field = makeWords(format, parent);
  field->setEditable(true);
  field->setInsertPolicy(QComboBox::NoInsert);
  field->setCompleter(nullptr);  // "1" is a text of its own
  QObject::connect(field, &QComboBox::editTextChanged, field,
                   [edited = std::move(edited)](const QString& text) { edited(fromQt(text)); });
  return field;
}

void showOpenChoice(QWidget& field, const Value& value) {
  auto& choice = static_cast<QComboBox&>(field);
  if (choice.currentText() == textOf(value) && choice.currentIndex() < 0) return;
  choice.setCurrentIndex(choice.findText(textOf(value)));
  choice.setEditText(textOf(value));
}

// ---- kinds --------------------------------------------------------------------------------------

struct FieldKind {
  PropertyKind kind;
  QWidget* (*make)(const PropertyFormat& format, QWidget* parent, FieldEdited edited);
  void (*show)(QWidget& field, const Value& value);
};

constexpr std::array<FieldKind, 6> kKinds = {{
    {PropertyKind::text, &makeLine, &showLine},
    {PropertyKind::lines, &makeLines, &showLines},
    {PropertyKind::boolean, &makeTick, &showTick},
    {PropertyKind::number, &makeLine, &showLine},
    {PropertyKind::choice, &makeChoice, &showChoice},
    {PropertyKind::openChoice, &makeOpenChoice, &showOpenChoice},
}};

const FieldKind& fieldKind(PropertyKind kind) {
  for (const FieldKind& each : kKinds) {
    if (each.kind == kind) return each;
  }
  return kKinds.front();
}

}  // namespace

QWidget* makeField(const PropertyFormat& format, QWidget* parent, FieldEdited edited) {
  return fieldKind(format.kind).make(format, parent, std::move(edited));
}

void showInField(QWidget& field, PropertyKind kind, const Value& value) {
  const QSignalBlocker untold(field);
  fieldKind(kind).show(field, value);
}

}  // namespace brisel::qt
