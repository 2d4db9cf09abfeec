#include "qt/PropertyWidget.h"

#include <QGridLayout>
#include <QLabel>
#include <QScopedValueRollback>
#include <algorithm>

#include "qt/ControlState.h"
#include "qt/EnterField.h"
#include "qt/Looks.h"
#include "qt/PropertyField.h"
#include "qt/Text.h"

namespace brisel::qt {

PropertyWidget::PropertyWidget(platform::Ref<controls::Property> grid, QWidget* parent)
    : QScrollArea(parent), m_grid(std::move(grid)) {
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);
  m_connections.push_back(m_grid->Reset.connect([this] { follow(); }));
  m_connections.push_back(
      m_grid->ValueChanged.connect([this](const std::string& key) { valueChanged(key); }));
  m_connections.push_back(m_grid->Changed.connect([this] { showState(*this, *m_grid); }));
  follow();
  showState(*this, *m_grid);
}

/// The fields are kept while a grid shows nothing, since it mostly shows the same keys again.
void PropertyWidget::follow() {
  const bool hasKeys = !m_grid->keys().empty();
  if (hasKeys && !fits()) rebuild();
  if (!widget()) return;
  widget()->setVisible(hasKeys);
  widget()->setEnabled(m_grid->node().get() != nullptr);
  if (!hasKeys) return;
  for (Line& line : m_lines) showLine(line);
}

/// Without a node there is nothing to tell another kind by.
bool PropertyWidget::fits() const {
  const bool hasNode = m_grid->node().get() != nullptr;
  return std::equal(m_lines.begin(), m_lines.end(), m_grid->keys().begin(), m_grid->keys().end(),
                    [&](const Line& line, const std::string& key) {
                      if (line.key != key) return false;
                      return !hasNode || line.kind == m_grid->format(key).kind;
                    });
}

void PropertyWidget::rebuild() {
  m_lines.clear();
  if (QWidget* old = takeWidget()) old->deleteLater();  // an edit of it may be going on
  auto* body = new QWidget;
  m_layout = new QGridLayout(body);
  m_layout->setColumnStretch(1, 1);
  m_layout->setContentsMargins(0, 0, 4, 0);
  for (const std::string& key : m_grid->keys()) addLine(key);
  m_layout->setRowStretch(m_layout->rowCount(), 1);
  setWidget(body);
  body->setAutoFillBackground(false);
}

void PropertyWidget::addLine(const std::string& key) {
  const controls::PropertyFormat format = m_grid->format(key);
  const std::size_t index = m_lines.size();
  QWidget* body = m_layout->parentWidget();
  QWidget* field =
      makeField(format, body, [this, index](const platform::Value& value) { edit(index, value); });
  field->setObjectName(toQt(key));
  field->setAccessibleName(toQt(key));
  auto* label = new QLabel(toQt(key), body);
  label->setTextFormat(Qt::PlainText);
  auto* refusal = new QLabel(body);
  refusal->setTextFormat(Qt::PlainText);
  refusal->setWordWrap(true);
  refusal->setPalette(refusalPalette(palette()));
  refusal->hide();
  const int row = m_layout->rowCount();
  const bool isTall = format.kind == controls::PropertyKind::lines;
  m_layout->addWidget(label, row, 0, isTall ? Qt::AlignTop : Qt::AlignVCenter);
  m_layout->addWidget(field, row, 1);
  m_layout->addWidget(refusal, row + 1, 1);
  m_lines.push_back({key, format.kind, label, field, refusal});
}

void PropertyWidget::showLine(Line& line) {
  refuse(line, QString());
  showInField(*line.field, line.kind, m_grid->ValueOf(line.key));
}

void PropertyWidget::valueChanged(const std::string& key) {
  if (m_telling) return;
  for (Line& line : m_lines) {
    if (line.key == key) showLine(line);
  }
}

void PropertyWidget::edit(std::size_t index, const platform::Value& value) {
  if (index >= m_lines.size()) return;
  const QScopedValueRollback telling(m_telling, true);
  const platform::Ref<controls::Property> held = m_grid;
  QString reason;
  try {
    held->Edit(m_lines[index].key, value);
  } catch (const std::exception& error) {
    reason = QString::fromUtf8(error.what());
  }
  if (index < m_lines.size()) refuse(m_lines[index], reason);
}

void PropertyWidget::refuse(Line& line, const QString& reason) {
  line.refusal->setText(reason);
  line.refusal->setVisible(!reason.isEmpty());
}

QWidget* PropertyWidget::field(std::string_view key) const {
  const auto found = std::find_if(m_lines.begin(), m_lines.end(),
                                  [&](const Line& line) { return line.key == key; });
  return found == m_lines.end() ? nullptr : found->field;
}

void PropertyWidget::enterFields() {
  if (!m_lines.empty()) enterField(*m_lines.front().field);
}

QString PropertyWidget::refusal(std::string_view key) const {
  const auto found = std::find_if(m_lines.begin(), m_lines.end(),
                                  [&](const Line& line) { return line.key == key; });
  return found == m_lines.end() ? QString() : found->refusal->text();
}

}  // namespace brisel::qt
