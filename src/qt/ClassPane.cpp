#include "qt/ClassPane.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QStyle>
#include <QToolButton>
#include <cmath>

#include "qt/ClassControlView.h"
#include "qt/Looks.h"
#include "qt/Text.h"

namespace brisel::qt {

namespace {

constexpr const char* kBand = "tbProperty";
constexpr int kDockedWidth = 340;

}  // namespace

ClassPane::ClassPane(platform::Ref<editors::CLSClassControl> pane,
                     platform::Ref<controls::ToolBarControl> bands, QWidget& canvas,
                     QHBoxLayout& side)
    : QFrame(&canvas),
      m_pane(std::move(pane)),
      m_bands(std::move(bands)),
      m_canvas(canvas),
      m_side(side),
      m_heading(new QLabel(this)),
      m_content(new ClassControlView(m_pane, this)),
      m_hint(new QLabel(tr("Select a class to see its properties."), this)) {
  build();
  const auto changed = [this](const std::string&) { follow(); };
  m_connections.push_back(m_pane->Changed.connect([this] { follow(); }));
  m_connections.push_back(m_bands->BandShown.connect(changed));
  m_connections.push_back(m_bands->BandClosed.connect(changed));
  m_connections.push_back(m_bands->LayoutChanged.connect([this] { follow(); }));
  follow();
}

void ClassPane::build() {
  setObjectName("ClassPane");
  setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::Window);  // not the paper's
  setCursor(Qt::ArrowCursor);
  setAttribute(Qt::WA_NoMousePropagation);
  m_heading->setFont(headingFont(font()));
  m_heading->setTextFormat(Qt::PlainText);
  auto* close = new QToolButton(this);
  close->setObjectName("ClosePane");
  close->setAutoRaise(true);
  close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
  close->setToolTip(tr("Close the pane"));
  close->setAccessibleName(close->toolTip());
  close->setFocusPolicy(Qt::NoFocus);  // Escape is nearer
  connect(close, &QToolButton::clicked, this, [this] { this->close(); });

  auto* top = new QHBoxLayout;
  top->addWidget(m_heading, 1);
  top->addWidget(close);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(10, 6, 10, 10);
  column->addLayout(top);
  column->addWidget(m_content, 1);
  column->addWidget(m_hint, 1, Qt::AlignTop);
  m_hint->setWordWrap(true);
}

void ClassPane::follow() {
  const platform::Ref<controls::Band> band = m_bands->band(kBand);
  dock(band && band->visible());
  const platform::Ref<repository::Class> shown = m_pane->Class();
  const QString caption = band ? toQt(band->caption()) : tr("Class");
  m_heading->setText(shown ? tr("Class %1").arg(toQt(shown->name())) : caption);
  m_content->setVisible(shown.get() != nullptr);
  m_hint->setVisible(!shown);
  if (!m_docked) place();
  appear(m_docked || m_pane->Visible());
}

void ClassPane::place() {
  const auto pixel = [](double twips) {
    return static_cast<int>(std::lround(twips / platform::kTwipsPerPixel));
  };
  const platform::Rect& area = m_pane->area();
  setGeometry(pixel(area.left), pixel(area.top), pixel(area.width), pixel(area.height));
  raise();
}

void ClassPane::appear(bool shown) {
  const bool wasShown = !isHidden();
  if (shown == wasShown) return;
  QWidget& view = *m_canvas.parentWidget();
  if (shown) {
    show();
    if (m_pane->Class()) m_content->enterFields();
  } else {
    const bool hadKeyboard = isAncestorOf(QApplication::focusWidget());
    hide();
    if (hadKeyboard) view.setFocus(Qt::OtherFocusReason);
  }
}

void ClassPane::dock(bool docked) {
  if (docked == m_docked) return;
  m_docked = docked;
  if (docked) {
    setFixedWidth(kDockedWidth);
    m_side.addWidget(this);
  } else {
    m_side.removeWidget(this);
    setParent(&m_canvas);
    setMinimumWidth(0);
    setMaximumWidth(QWIDGETSIZE_MAX);
  }
}

void ClassPane::close() { m_pane->Close(); }

void ClassPane::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1) return event->ignore();  // help is the window's
  if (event->key() == Qt::Key_Escape) close();
  event->accept();
}

QString ClassPane::heading() const { return m_heading->text(); }

}  // namespace brisel::qt
