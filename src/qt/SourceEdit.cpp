#include "qt/SourceEdit.h"

#include <QPaintEvent>
#include <QPainter>
#include <QSyntaxHighlighter>
#include <QTextBlock>

#include "qt/FixedFont.h"

namespace brisel::qt {

namespace {

constexpr int kGap = 6;  // pixels beside the numbers
constexpr int kTabColumns = 4;

/// Tags in a colour like that of links, comments dimmed; both may go over several lines.
class TagColors : public QSyntaxHighlighter {
 public:
  explicit TagColors(QPlainTextEdit& edit) : QSyntaxHighlighter(edit.document()), m_edit(edit) {}

 protected:
  void highlightBlock(const QString& text) override {
    enum State { outside = -1, inTag, inComment };
    const QPalette colors = m_edit.palette();
    const bool isDark = colors.color(QPalette::Base).lightness() < 128;
    const QColor ofState[] = {isDark ? QColor(0x7a, 0xb4, 0xf5) : QColor(0x1a, 0x4f, 0xc4),
                              colors.color(QPalette::PlaceholderText)};
    int state = previousBlockState();
    for (qsizetype at = 0; at < text.size();) {
      if (state == outside) {
        at = text.indexOf("{{", at);
        if (at < 0) break;
        state = text.mid(at + 2, 1) == "!" ? inComment : inTag;
      }
      qsizetype end = text.indexOf("}}", at);
      const bool isClosed = end >= 0;
      end = isClosed ? end + 2 : text.size();
      while (isClosed && end < text.size() && text[end] == '}') ++end;
      setFormat(static_cast<int>(at), static_cast<int>(end - at), ofState[state]);
      if (isClosed) state = outside;
      at = end;
    }
    setCurrentBlockState(state);
  }

 private:
  QPlainTextEdit& m_edit;
};

}  // namespace

class SourceEdit::Numbers : public QWidget {
 public:
  explicit Numbers(SourceEdit& edit) : QWidget(&edit), m_edit(edit) {}

 protected:
  void paintEvent(QPaintEvent* event) override { m_edit.paintNumbers(*event); }

 private:
  SourceEdit& m_edit;
};

SourceEdit::SourceEdit(Kind kind, QWidget* parent)
    : QPlainTextEdit(parent), m_numbers(new Numbers(*this)) {
  QFont font = fixedFont(false);
  font.setPointSizeF(QWidget::font().pointSizeF());
  setFont(font);
  setLineWrapMode(NoWrap);
  setTabStopDistance(kTabColumns * fontMetrics().horizontalAdvance(' '));
  if (kind == Kind::templateText) new TagColors(*this);
  connect(this, &QPlainTextEdit::blockCountChanged, this, [this] { layNumbersOut(); });
  connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& area, int dy) {
    if (dy != 0) {
      m_numbers->scroll(0, dy);
    } else {
      m_numbers->update(0, area.y(), m_numbers->width(), area.height());
    }
  });
  layNumbersOut();
}

void SourceEdit::markLine(int line) {
  if (line == m_marked) return;
  m_marked = line;
  showMark();
  m_numbers->update();
}

void SourceEdit::showMark() {
  QList<QTextEdit::ExtraSelection> marks;
  const QTextBlock block = document()->findBlockByNumber(m_marked - 1);
  if (m_marked > 0 && block.isValid()) {
    QColor color(0xd8, 0x45, 0x3c);
    color.setAlphaF(0.25F);
    QTextEdit::ExtraSelection mark;
    mark.cursor = QTextCursor(block);
    mark.format.setBackground(color);
    mark.format.setProperty(QTextFormat::FullWidthSelection, true);
    marks.append(mark);
  }
  setExtraSelections(marks);
}

void SourceEdit::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  layNumbersOut();
}

void SourceEdit::changeEvent(QEvent* event) {
  QPlainTextEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) {
    if (auto* colors = document()->findChild<QSyntaxHighlighter*>()) colors->rehighlight();
  }
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) layNumbersOut();
}

int SourceEdit::numbersWidth() const {
  const auto digits = QString::number(qMax(99, blockCount())).size();
  return 2 * kGap + fontMetrics().horizontalAdvance('9') * static_cast<int>(digits);
}

void SourceEdit::layNumbersOut() {
  const int width = numbersWidth();
  if (viewportMargins().left() != width) setViewportMargins(width, 0, 0, 0);
  const QRect inside = contentsRect();
  m_numbers->setGeometry(inside.left(), inside.top(), width, inside.height());
}

void SourceEdit::paintNumbers(QPaintEvent& event) {
  QPainter painter(m_numbers);
  painter.fillRect(event.rect(), palette().alternateBase());
  painter.setFont(font());
  const int height = fontMetrics().height();
  QTextBlock block = firstVisibleBlock();
  for (double top = blockBoundingGeometry(block).translated(contentOffset()).top();
       block.isValid() && top <= event.rect().bottom(); block = block.next()) {
    const double bottom = top + blockBoundingRect(block).height();
    if (bottom >= event.rect().top()) {
      const bool isMarked = block.blockNumber() + 1 == m_marked;
      painter.setPen(isMarked ? QColor(0xd8, 0x45, 0x3c)
                              : palette().color(QPalette::PlaceholderText));
      painter.drawText(QRectF(0, top, m_numbers->width() - kGap, height), Qt::AlignRight,
                       QString::number(block.blockNumber() + 1));
    }
    top = bottom;
  }
}

}  // namespace brisel::qt
