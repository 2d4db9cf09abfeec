#include "qt/ClassControlView.h"

#include <QApplication>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "qt/ButtonWidget.h"
#include "qt/ComboWidget.h"
#include "qt/EnterField.h"
#include "qt/Looks.h"
#include "qt/MemberView.h"
#include "qt/PropertyWidget.h"
#include "qt/StereotypePicker.h"
#include "qt/TabStripWidget.h"
#include "qt/Text.h"

namespace brisel::qt {

namespace {

constexpr std::string_view kCloseParameters = "miParameterOk";

QVBoxLayout* columnOf(QWidget& page) {
  auto* column = new QVBoxLayout(&page);
  column->setContentsMargins(0, 0, 0, 0);
  return column;
}

QLabel* makeHeading(QWidget& page) {
  auto* heading = new QLabel(&page);
  heading->setFont(headingFont(heading->font()));
  heading->setTextFormat(Qt::PlainText);
  return heading;
}

}  // namespace

ClassControlView::ClassControlView(platform::Ref<editors::CLSClassControl> control, QWidget* parent)
    : QWidget(parent),
      m_control(std::move(control)),
      m_tabs(new TabStripWidget(m_control->TabStrip1(), this)),
      m_pages(new QStackedWidget(this)) {
  build();
  addTabKey(QKeySequence(Qt::CTRL | Qt::Key_PageUp), true);
  addTabKey(QKeySequence(Qt::CTRL | Qt::Key_PageDown), false);
  const auto changed = [this] { follow(); };
  const auto panels = m_control->Picture1();
  for (std::int64_t i = 0; i < panels->Count(); ++i) {
    m_connections.push_back(panels->at<controls::Panel>(i).Changed.connect(changed));
  }
  m_connections.push_back(m_control->ParameterPicture()->Changed.connect(changed));
  m_connections.push_back(m_control->Property()->Changed.connect(changed));
  m_connections.push_back(m_control->Changed.connect(changed));
  follow();
}

void ClassControlView::build() {
  using Controls = MemberView::Controls;
  m_attributes = new MemberView(
      Controls{m_control->Attributes(), m_control->AttributeName(), m_control->AttributeScope(),
               m_control->AttributeType(), m_control->ToolAttr(), "tbAttributes", "miAttrDelete",
               "Attribute", tr("Attributes")},
      m_pages);
  m_operations = new MemberView(
      Controls{m_control->Operations(), m_control->OperationName(), m_control->OperationScope(),
               m_control->OperationType(), m_control->ToolOperation(), "tbOperations",
               "miOperationDelete", "Operation", tr("Operations")},
      m_pages);
  m_pages->insertWidget(classPage, makeClassPage());
  m_pages->insertWidget(attributePage, m_attributes);
  m_pages->insertWidget(operationPage, m_operations);
  m_pages->insertWidget(parameterPage, makeParameterPage());
  m_pages->insertWidget(propertyPage, makePropertyPage());

  auto* frame = new QFrame(this);
  frame->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
  columnOf(*frame)->addWidget(m_pages);
  frame->layout()->setContentsMargins(8, 8, 8, 8);
  QVBoxLayout* column = columnOf(*this);
  column->setSpacing(0);
  column->addWidget(m_tabs);
  column->addWidget(frame, 1);
}

QWidget* ClassControlView::makeClassPage() {
  auto* page = new QWidget(m_pages);
  m_stereotype = new StereotypePicker(m_control->CLSSelectStereotype1(), page);
  auto* grid = new PropertyWidget(m_control->PropertyClass(), page);
  QVBoxLayout* column = columnOf(*page);
  column->addWidget(m_stereotype);
  column->addWidget(grid, 1);
  return page;
}

QWidget* ClassControlView::makeParameterPage() {
  auto* page = new QWidget(m_pages);
  m_operationHeading = makeHeading(*page);
  m_parameters = new MemberView({m_control->Parameters(),
                                 m_control->ParameterName(),
                                 {},
                                 m_control->ParameterType(),
                                 m_control->ToolParameter(),
                                 "tbParameters",
                                 "miParameterDelete",
                                 "Parameter",
                                 tr("Parameters")},
                                page);
  QVBoxLayout* column = columnOf(*page);
  column->addWidget(m_operationHeading);
  column->addWidget(m_parameters, 1);
  return page;
}

QWidget* ClassControlView::makePropertyPage() {
  auto* page = new QWidget(m_pages);
  m_memberHeading = makeHeading(*page);
  m_memberGrid = new PropertyWidget(m_control->Property1(), page);
  auto* ok = new ButtonWidget(m_control->PropertyOk(), page);
  ok->setObjectName("PropertyOk");
  ok->setAutoDefault(false);
  QVBoxLayout* column = columnOf(*page);
  column->addWidget(m_memberHeading);
  column->addWidget(m_memberGrid, 1);
  column->addWidget(ok, 0, Qt::AlignRight);
  return page;
}

void ClassControlView::addTabKey(const QKeySequence& key, bool backwards) {
  auto* shortcut = new QShortcut(key, this);
  shortcut->setContext(Qt::WidgetWithChildrenShortcut);
  connect(shortcut, &QShortcut::activated, this, [this, backwards] { m_tabs->step(backwards); });
}

// ---- which page is shown ------------------------------------------------------------------------

ClassControlView::Page ClassControlView::wantedPage() const {
  if (m_control->Property()->Visible()) return propertyPage;
  if (m_control->ParameterPicture()->Visible()) return parameterPage;
  const auto panels = m_control->Picture1();
  for (std::int64_t i = 0; i < panels->Count(); ++i) {
    if (panels->at<controls::Panel>(i).Visible()) return static_cast<Page>(i);
  }
  return static_cast<Page>(m_pages->currentIndex());
}

void ClassControlView::follow() {
  showHeadings();
  const Page page = wantedPage();
  if (page != m_pages->currentIndex()) showPage(page);
}

/// The keyboard stays within the pages, or where it is when it is elsewhere.
void ClassControlView::showPage(Page page) {
  const bool hadKeyboard = m_pages->isAncestorOf(QApplication::focusWidget());
  const auto before = static_cast<Page>(m_pages->currentIndex());
  m_pages->setCurrentIndex(page);
  if (!hadKeyboard) return;
  if (page == attributePage && before == propertyPage) return m_attributes->enterList();
  if (page == operationPage && before >= parameterPage) return m_operations->enterList();
  if (page == parameterPage && before == propertyPage) return m_parameters->enterList();
  enterFields();
}

void ClassControlView::showHeadings() {
  const auto operation = m_control->Operations()->selectedRow();
  m_operationHeading->setText(
      operation ? tr("Parameters of %1").arg(toQt(operation->Target()->name())) : QString());
  const auto member = m_control->Property1()->node();
  m_memberHeading->setText(member ? tr("Properties of %1").arg(toQt(member->name())) : QString());
}

void ClassControlView::enterFields() {
  switch (static_cast<Page>(m_pages->currentIndex())) {
    case classPage:
      return enterField(m_stereotype->combo());
    case attributePage:
      return m_attributes->enterFields();
    case operationPage:
      return m_operations->enterFields();
    case parameterPage:
      return m_parameters->enterFields();
    case propertyPage:
      return m_memberGrid->enterFields();
  }
}

// ---- what a person does -------------------------------------------------------------------------

void ClassControlView::keyPressEvent(QKeyEvent* event) {
  const platform::Ref<editors::CLSClassControl> held = m_control;
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  const bool isEscape = event->key() == Qt::Key_Escape;
  const int page = m_pages->currentIndex();
  if (page == propertyPage && isEnter) {
    held->PropertyOk()->Click();
  } else if (page == propertyPage && isEscape) {
    held->Property()->Visible(false);  // what was edited there is dropped
  } else if (page == parameterPage && isEscape) {
    held->ToolParameter()->Click(kCloseParameters);
  } else {
    event->ignore();
  }
}

}  // namespace brisel::qt
