#include "qt/MessageBar.h"

#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>

namespace brisel::qt {

namespace {

constexpr int kDetailsHeight = 140;

}  // namespace

MessageBar::MessageBar(QWidget* parent)
    : QFrame(parent),
      m_icon(new QLabel(this)),
      m_text(new QLabel(this)),
      m_offer(new QPushButton(this)),
      m_more(new QToolButton(this)),
      m_details(new QPlainTextEdit(this)) {
  setObjectName("MessageBar");
  setAutoFillBackground(true);
  m_text->setTextFormat(Qt::PlainText);
  m_text->setWordWrap(true);
  m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
  m_more->setText(tr("Details"));
  m_more->setCheckable(true);
  m_more->setToolTip(tr("Show or hide what was found"));
  m_details->setReadOnly(true);
  m_details->setMaximumHeight(kDetailsHeight);
  connect(m_more, &QToolButton::toggled, m_details, &QWidget::setVisible);
  m_offer->setObjectName("MessageOffer");
  m_offer->setAutoDefault(false);
  connect(m_offer, &QPushButton::clicked, this, [this] {
    const auto run = m_run;  // it may tell something else here
    hide();
    run();
  });
  auto* close = new QToolButton(this);
  close->setAutoRaise(true);
  close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
  close->setToolTip(tr("Close this message"));
  connect(close, &QToolButton::clicked, this, &QWidget::hide);

  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(10, 4, 4, 4);
  grid->setColumnStretch(1, 1);
  grid->addWidget(m_icon, 0, 0);
  grid->addWidget(m_text, 0, 1);
  grid->addWidget(m_offer, 0, 2);
  grid->addWidget(m_more, 0, 3);
  grid->addWidget(close, 0, 4);
  grid->addWidget(m_details, 1, 0, 1, 5);
  hide();
}

void MessageBar::show(Kind kind, const QString& text, const QString& details) {
  const bool error = kind == Kind::error;
  QPalette colors = palette();
  colors.setColor(QPalette::Window, error ? QColor(0xfb, 0xdd, 0xdd) : QColor(0xfd, 0xf1, 0xcf));
  colors.setColor(QPalette::WindowText, QColor(0x2b, 0x2b, 0x2b));
  setPalette(colors);
  const auto symbol = error ? QStyle::SP_MessageBoxCritical : QStyle::SP_MessageBoxInformation;
  m_icon->setPixmap(style()->standardIcon(symbol).pixmap(16, 16));
  m_text->setText(text);
  m_offer->hide();
  m_more->setChecked(false);
  m_more->setVisible(!details.isEmpty());
  m_details->setPlainText(details);
  m_details->hide();
  QFrame::show();
}

void MessageBar::offer(const QString& caption, const QString& tip, std::function<void()> run) {
  m_offer->setText(caption);
  m_offer->setToolTip(tip);
  m_run = std::move(run);
  m_offer->show();
}

QString MessageBar::text() const { return m_text->text(); }

}  // namespace brisel::qt
