#include "qt/ClassPane.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>
#include <cmath>

#include "qt/Text.h"

namespace brisel::qt {

namespace {

constexpr const char* kBand = "tbProperty";
constexpr int kDockedWidth = 280;

}  // namespace

ClassPane::ClassPane(platform::Ref<editors::CLSClassControl> pane,
                     platform::Ref<controls::ToolBarControl> bands, QWidget& canvas,
                     QHBoxLayout& side)
    : QFrame(&canvas),
      m_pane(std::move(pane)),
      m_bands(std::move(bands)),
      m_canvas(canvas),
      m_side(side),
      m_heading(new QLabel(this)) {
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
  QFont bold = font();
  bold.setBold(true);
  m_heading->setFont(bold);
  m_heading->setTextFormat(Qt::PlainText);
  auto* close = new QToolButton(this);
  close->setObjectName("ClosePane");
  close->setAutoRaise(true);
  close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
  close->setToolTip(tr("Close the pane"));
  connect(close, &QToolButton::clicked, this, [this] { this->close(); });

  auto* top = new QHBoxLayout;
  top->addWidget(m_heading, 1);
  top->addWidget(close);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(10, 6, 6, 6);
  column->addLayout(top);
  column->addStretch(1);
}

void ClassPane::follow() {
  const platform::Ref<controls::Band> band = m_bands->band(kBand);
  dock(band && band->visible());
  const platform::Ref<repository::Class> shown = m_pane->Class();
  const QString caption = band ? toQt(band->caption()) : tr("Class");
  m_heading->setText(shown ? tr("Class %1").arg(toQt(shown->name())) : caption);
  if (!m_docked) {
    const auto pixel = [](double twips) {
      return static_cast<int>(std::lround(twips / platform::kTwipsPerPixel));
    };
    const platform::Rect& area = m_pane->area();
    setGeometry(pixel(area.left), pixel(area.top), pixel(area.width), pixel(area.height));
  }
  setVisible(m_docked || m_pane->Visible());
  if (!m_docked) raise();
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

QString ClassPane::heading() const { return m_heading->text(); }

}  // namespace brisel::qt
