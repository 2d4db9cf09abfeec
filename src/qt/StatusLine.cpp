#include "qt/StatusLine.h"

#include <QLabel>
#include <QStatusBar>
#include <cmath>
#include <utility>

#include "qt/Text.h"

namespace brisel::qt {

namespace {

QString counted(std::int64_t count, const QString& one, const QString& many) {
  return QString::number(count) + ' ' + (count == 1 ? one : many);
}

/// The tools in hand, by the button that looks pressed.
constexpr std::pair<const char*, const char*> kToolNames[] = {
    {"NewClass", "New class"},
    {"Association", "Association"},
    {"CompositeAggregation", "Composite aggregation"},
    {"SharedAggregation", "Shared aggregation"},
    {"Generalization", "Generalization"},
};

}  // namespace

StatusLine::StatusLine(QStatusBar& bar, component::Document& document)
    : m_document(document),
      m_first(new QLabel(&bar)),
      m_tool(new QLabel(&bar)),
      m_counts(new QLabel(&bar)),
      m_zoom(new QLabel(&bar)) {
  m_first->setObjectName("StatusHint");
  m_first->setTextFormat(Qt::PlainText);
  // A long name must not make the window wider.
  m_first->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  m_tool->setObjectName("StatusTool");
  m_counts->setObjectName("StatusCounts");
  m_zoom->setObjectName("StatusZoom");
  m_zoom->setMinimumWidth(bar.fontMetrics().horizontalAdvance("8888 %"));
  m_zoom->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  bar.addWidget(m_first, 1);
  for (QLabel* field : {m_tool, m_counts, m_zoom}) {
    field->setContentsMargins(6, 0, 6, 0);
    bar.addPermanentWidget(field);
  }
  follow();
  showTool();
  showZoom();
  showCounts();
}

void StatusLine::follow() {
  editor::CLSEditor& editor = m_document.editor();
  canvas::DiagramControl& canvas = m_document.canvas();
  const auto add = [this](const auto& event, auto listener) {
    m_connections.push_back(event.connect(listener));
  };
  const auto enter = [this](const std::string& key) { over(key); };
  const auto leave = [this](const std::string&) { over({}); };
  add(editor.ClassEnter, enter);
  add(editor.ClassLeave, leave);
  add(editor.AssocEnter, enter);
  add(editor.AssocLeave, leave);
  add(canvas.Hint, [this](const std::string& text) {
    m_hint = toQt(text);
    showFirst();
  });
  add(canvas.ModeChanged, [this] { showTool(); });
  add(canvas.buttonBar().ButtonChanged, [this](std::size_t) { showTool(); });
  add(canvas.viewport().ZoomChanged, [this] { showZoom(); });
}

void StatusLine::over(const std::string& key) {
  m_over = key.empty() ? QString() : toQt(m_document.describe(key));
  showFirst();
}

void StatusLine::showFirst() { m_first->setText(m_hint.isEmpty() ? m_over : m_hint); }

void StatusLine::showTool() {
  const canvas::ButtonBar& buttons = m_document.canvas().buttonBar();
  QString text = tr("Select");
  for (const auto& [key, name] : kToolNames) {
    const canvas::Button* button = buttons.find(key);
    if (button && button->pressed) text = tr(name);
  }
  m_tool->setText(text);
}

void StatusLine::showCounts() {
  const component::Document::Counts counts = m_document.counts();
  QString text = counted(counts.classes, tr("class"), tr("classes")) + ", " +
                 counted(counts.relationships, tr("relationship"), tr("relationships"));
  if (const auto hidden = counts.classes - counts.shownClasses; hidden > 0) {
    text += tr(" (%1 hidden)").arg(hidden);
  }
  m_counts->setText(text);
}

void StatusLine::showZoom() {
  m_zoom->setText(QString::number(std::lround(m_document.canvas().getZoom())) + " %");
}

}  // namespace brisel::qt
