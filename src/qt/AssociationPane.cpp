#include "qt/AssociationPane.h"

#include <QApplication>
#include <QFrame>
#include <QLabel>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "controls/Panel.h"
#include "qt/Looks.h"
#include "qt/PropertyWidget.h"
#include "qt/StereotypePicker.h"
#include "qt/TabStripWidget.h"
#include "qt/Text.h"
#include "repository/Class.h"

namespace brisel::qt {

namespace {

constexpr std::int64_t kOwnPage = 0;
constexpr std::int64_t kSourcePage = 1;

/// The name of the class whose box it is.
QString className(const platform::Ref<platform::DiagramNode>& box) {
  if (!box) return {};
  const auto shown = platform::as<repository::Class>(box->getItem("__Class"));
  return shown ? toQt(shown->name()) : QString();
}

}  // namespace

AssociationPane::AssociationPane(platform::Ref<editors::CLSAssociationControl> control,
                                 QWidget* parent)
    : QWidget(parent),
      m_control(std::move(control)),
      m_tabs(new TabStripWidget(m_control->TabStrip1(), this)),
      m_pages(new QStackedWidget(this)) {
  const auto panels = m_control->Picture1();
  for (std::int64_t i = 0; i < panels->Count(); ++i) {
    m_pages->addWidget(makePage(i));
    m_connections.push_back(panels->at<controls::Panel>(i).Changed.connect([this] { follow(); }));
  }
  auto* frame = new QFrame(this);
  frame->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
  (new QVBoxLayout(frame))->addWidget(m_pages);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(m_tabs);
  column->addWidget(frame, 1);
  addTabKey(QKeySequence(Qt::CTRL | Qt::Key_PageUp), true);
  addTabKey(QKeySequence(Qt::CTRL | Qt::Key_PageDown), false);
  follow();
}

QWidget* AssociationPane::makePage(std::int64_t index) {
  auto* page = new QWidget(m_pages);
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  auto* heading = new QLabel(page);
  heading->setFont(headingFont(heading->font()));
  heading->setTextFormat(Qt::PlainText);
  column->addWidget(heading);
  m_headings.push_back(heading);
  auto* grid =
      new PropertyWidget(platform::Ref<controls::Property>(
                             &m_control->PropertyAssociation()->at<controls::Property>(index)),
                         page);
  m_grids.push_back(grid);
  column->addWidget(grid, 1);
  if (index == kOwnPage) {
    m_stereotype = new StereotypePicker(m_control->CLSSelectStereotype1(), page);
    column->addWidget(m_stereotype);
  }
  return page;
}

void AssociationPane::addTabKey(const QKeySequence& key, bool backwards) {
  auto* shortcut = new QShortcut(key, this);
  shortcut->setContext(Qt::WidgetWithChildrenShortcut);
  connect(shortcut, &QShortcut::activated, this, [this, backwards] { m_tabs->step(backwards); });
}

/// "Source: Order"
QString AssociationPane::heading(std::int64_t index) const {
  const auto panels = m_control->Picture1();
  const QString tag = toQt(panels->at<controls::Panel>(index).Tag());
  if (index == kOwnPage) return m_tabs->tabText(0);
  const auto shown = m_control->Association();
  const auto line = shown ? shown->link() : nullptr;
  const QString name =
      line ? className(index == kSourcePage ? line->source() : line->target()) : QString();
  return name.isEmpty() ? tag : tag + ": " + name;
}

void AssociationPane::follow() {
  const auto panels = m_control->Picture1();
  for (std::int64_t i = 0; i < panels->Count(); ++i) {
    m_headings[static_cast<std::size_t>(i)]->setText(heading(i));
    if (!panels->at<controls::Panel>(i).Visible() || i == m_pages->currentIndex()) continue;
    const bool hadKeyboard = m_pages->isAncestorOf(QApplication::focusWidget());
    m_pages->setCurrentIndex(static_cast<int>(i));
    if (hadKeyboard) enterFields();
  }
}

void AssociationPane::enterFields() {
  m_grids[static_cast<std::size_t>(m_pages->currentIndex())]->enterFields();
}

}  // namespace brisel::qt
