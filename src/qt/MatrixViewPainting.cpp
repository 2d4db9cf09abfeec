// How the matrix looks. Each step paints what is seen only.

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "qt/Looks.h"
#include "qt/MatrixView.h"
#include "qt/Text.h"
#include "tools/MatrixWords.h"

namespace brisel::qt {

using tools::Matrix;

namespace {

constexpr int kLeastGrid = 6;      ///< smaller cells have no lines between them
constexpr int kNameGap = 6;        ///< before and behind a name
constexpr int kLeastGlyph = 13;    ///< smaller cells have coloured blocks for relationships
constexpr std::size_t kLines = 3;  ///< glyphs in a cell; of more, their number is told

QColor translucent(QColor color, int alpha) {
  color.setAlpha(alpha);
  return color;
}

}  // namespace

/// What one painting needs everywhere.
struct MatrixView::Look {
  QRect body;
  Span rows, columns;
  Cell current, hovered;
  QColor ground, faint, line, text, highlight;
  bool hasFocus;
};

QFont MatrixView::nameFont() const {
  QFont usual = font();
  const int pixels = std::clamp(m_cell * 7 / 10, 7, QFontInfo(font()).pixelSize());
  usual.setPixelSize(pixels);
  return usual;
}

QString MatrixView::emptyText() {
  const tools::Matrix::Options none;
  const Matrix::Options& shown = m_browser->options();
  const bool isFiltered =
      !shown.name.empty() || !shown.stereotype.empty() || shown.relatedOnly != none.relatedOnly;
  return isFiltered ? tr("No class is found by what is asked for above.")
                    : tr("The model has no classes.");
}

void MatrixView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.setClipRect(event->rect());
  const QPalette colors = palette();
  Look look{.body = body(),
            .rows = seenRows(),
            .columns = seenColumns(),
            .current = {m_browser->CurrentRow(), m_browser->CurrentColumn()},
            .hovered = m_hovered,
            .ground = colors.color(QPalette::Base),
            .faint = colors.color(QPalette::Window),
            .line = mixed(colors.color(QPalette::Base), colors.color(QPalette::Text), 0.13F),
            .text = colors.color(QPalette::Text),
            .highlight = colors.color(QPalette::Highlight),
            .hasFocus = hasFocus()};
  if (count() == 0) {
    painter.fillRect(viewport()->rect(), look.faint);
    painter.setPen(look.text);
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, emptyText());
    return;
  }
  painter.setClipRect(look.body & event->rect());
  paintGround(painter, look);
  paintCross(painter, look);
  paintMarks(painter, look);
  const auto frame = [&](Cell cell, const QColor& color, int width) {
    if (cell.row < 1 || cell.column < 1) return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(QRectF(areaOf(cell)).adjusted(0.5, 0.5, -0.5, -0.5));
  };
  frame(look.hovered, translucent(look.highlight, 160), 1);
  frame(look.current, look.hasFocus ? look.highlight : translucent(look.text, 140), 2);
  painter.setClipRect(event->rect());
  paintRowNames(painter, look);
  paintColumnNames(painter, look);
  painter.setClipRect(event->rect());
  painter.fillRect(QRect(0, 0, m_left, m_top), look.faint);
  if (!hasNames()) return;
  painter.setFont(nameFont());
  painter.setPen(translucent(look.text, 140));
  painter.drawText(QRect(0, 0, m_left - 6, m_top - 4), Qt::AlignRight | Qt::AlignBottom,
                   tr("from row\nto column"));
}

/// The diagonal, groups and the lines between cells.
void MatrixView::paintGround(QPainter& painter, const Look& look) {
  const QPoint corner = areaOf({look.rows.first + 1, look.columns.first + 1}).topLeft();
  const QRect cells(corner, areaOf({look.rows.last, look.columns.last}).bottomRight());
  // Every pixel once, and lines opaque: in a large window the ground is most of what is painted.
  painter.fillRect(cells, look.ground);
  painter.fillRect(look.body.adjusted(cells.right() + 1 - look.body.left(), 0, 0, 0), look.faint);
  painter.fillRect(look.body.adjusted(0, cells.bottom() + 1 - look.body.top(), 0, 0), look.faint);
  if (m_cell >= kLeastGrid) {
    for (qint64 row = look.rows.first; row < look.rows.last; ++row) {
      const int y = areaOf({row + 1, 0}).bottom();
      painter.fillRect(QRect(cells.left(), y, cells.width(), 1), look.line);
    }
    for (qint64 column = look.columns.first; column < look.columns.last; ++column) {
      const int x = areaOf({0, column + 1}).right();
      painter.fillRect(QRect(x, cells.top(), 1, cells.height()), look.line);
    }
  }
  const QColor tint = translucent(look.highlight, 22);
  const auto firstSeen = std::min(look.rows.first, look.columns.first);
  const auto lastSeen = std::max(look.rows.last, look.columns.last);
  const auto isBefore = [](const auto& group, qint64 place) { return group.second < place; };
  const auto first = std::lower_bound(m_groups.begin(), m_groups.end(), firstSeen, isBefore);
  for (auto group = first; group != m_groups.end() && group->first < lastSeen; ++group) {
    painter.fillRect(blockOf(group->first, group->second), tint);
  }
  const auto from = std::max(look.rows.first, look.columns.first);
  const auto to = std::min(look.rows.last, look.columns.last);
  for (qint64 place = from; place < to; ++place) {
    painter.fillRect(blockOf(place, place), translucent(look.text, 26));
  }
  painter.setBrush(Qt::NoBrush);
  painter.setPen(translucent(look.highlight, 130));
  for (auto group = first; group != m_groups.end() && group->first < lastSeen; ++group) {
    painter.drawRect(blockOf(group->first, group->second).adjusted(-1, -1, 0, 0));
  }
}

/// Row and column of the cell under the pointer, and of the current one.
void MatrixView::paintCross(QPainter& painter, const Look& look) {
  const auto band = [&](Cell cell, const QColor& color) {
    if (cell.row > 0) {
      const QRect row = areaOf({cell.row, 0});
      painter.fillRect(QRect(look.body.left(), row.top(), look.body.width(), row.height()), color);
    }
    if (cell.column > 0) {
      const QRect column = areaOf({0, cell.column});
      painter.fillRect(QRect(column.left(), look.body.top(), column.width(), look.body.height()),
                       color);
    }
  };
  if (look.hasFocus) band(look.current, translucent(look.highlight, 24));
  band(look.hovered, translucent(look.highlight, 38));
}

void MatrixView::paintMarks(QPainter& painter, const Look& look) {
  const Matrix& matrix = m_browser->matrix();
  for (qint64 row = look.rows.first; row < look.rows.last; ++row) {
    matrix.marks(static_cast<std::size_t>(row), static_cast<std::size_t>(look.columns.first),
                 static_cast<std::size_t>(look.columns.last), m_marks);
    for (std::size_t first = 0; first < m_marks.size();) {
      std::size_t last = first + 1;
      while (last < m_marks.size() && m_marks[last].column == m_marks[first].column) ++last;
      const QRect area = areaOf({row + 1, static_cast<qint64>(m_marks[first].column) + 1});
      paintCell(painter, area, &m_marks[first], last - first);
      first = last;
    }
  }
}

void MatrixView::paintCell(QPainter& painter, const QRect& area, const Matrix::Mark* marks,
                           std::size_t number) {
  const int gap = m_cell >= kLeastGrid ? 1 : 0;
  if (m_cell < kLeastGlyph) {
    // As many stripes as there are kinds and directions to be seen.
    const auto shown = static_cast<int>(std::min<std::size_t>(number, kLines));
    for (int i = 0; i < shown; ++i) {
      const int top = area.top() + gap + (area.height() - 2 * gap) * i / shown;
      const int bottom = area.top() + gap + (area.height() - 2 * gap) * (i + 1) / shown;
      painter.fillRect(
          QRect(area.left() + gap, top, area.width() - 2 * gap, std::max(1, bottom - top)),
          m_glyphs.color(marks[i].relationship->kind, marks[i].forward));
    }
    return;
  }
  if (number > kLines) {
    QFont bold = nameFont();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(m_glyphs.color(marks->relationship->kind, marks->forward));
    painter.drawText(area, Qt::AlignCenter, QString::number(number));
    return;
  }
  const auto lines = static_cast<int>(number);
  const int height = (m_cell - 2) / lines;
  for (int i = 0; i < lines; ++i) {
    painter.drawPixmap(area.left(), area.top() + (m_cell - 1 - height * lines) / 2 + i * height,
                       m_glyphs.glyph(marks[i].relationship->kind, marks[i].forward,
                                      {m_cell - 1, height}, devicePixelRatioF()));
  }
}

/// The name of a class, as wide as a row or a column and as long as there is room. Made once: text,
/// and upright text most of all, takes longer than everything else in a frame.
const QPixmap& MatrixView::name(qint64 place, Qt::Orientation orientation) {
  constexpr std::size_t kMostNames = 2000;
  const double ratio = devicePixelRatioF();
  if (m_names.size() > kMostNames || ratio != m_namesRatio) m_names.clear();
  m_namesRatio = ratio;
  const auto [entry, isNew] = m_names.try_emplace({place, orientation});
  if (!isNew) return entry->second;
  const bool isRow = orientation == Qt::Horizontal;
  const int length = isRow ? m_left : m_top;
  QPixmap picture((isRow ? QSize(length, m_cell) : QSize(m_cell, length)) * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setFont(nameFont());
  painter.setPen(palette().color(QPalette::WindowText));
  if (!isRow) {
    painter.translate(0, length);
    painter.rotate(-90);
  }
  const tools::Matrix::Class& shown = m_browser->matrix().at(static_cast<std::size_t>(place));
  const QString text = QFontMetrics(painter.font())
                           .elidedText(toQt(tools::titleOf(*shown.node)).simplified(),
                                       Qt::ElideRight, length - 2 * kNameGap);
  painter.drawText(QRect(kNameGap, 0, length - 2 * kNameGap, m_cell),
                   Qt::AlignVCenter | (isRow ? Qt::AlignRight : Qt::AlignLeft), text);
  return entry->second = std::move(picture);
}

void MatrixView::paintRowNames(QPainter& painter, const Look& look) {
  const QRect room(0, look.body.top(), m_left, look.body.height());
  painter.setClipRect(room);
  painter.fillRect(room, look.faint);
  for (qint64 row = look.rows.first; row < look.rows.last; ++row) {
    const QRect area = areaOf({row + 1, 0});
    const bool isCurrent = look.hasFocus && row + 1 == look.current.row;
    if (isCurrent) painter.fillRect(area, translucent(look.highlight, 60));
    if (row + 1 == look.hovered.row) painter.fillRect(area, translucent(look.highlight, 60));
    if (!hasNames()) continue;
    painter.drawPixmap(area.topLeft(), name(row, Qt::Horizontal));
  }
  if (look.current.column == 0 && look.current.row > 0 && look.hasFocus) {
    painter.setPen(QPen(look.highlight, 2));
    painter.drawRect(areaOf({look.current.row, 0}).adjusted(1, 1, -1, -1));
  }
  painter.fillRect(QRect(m_left - 1, look.body.top(), 1, look.body.height()),
                   translucent(look.text, 90));
}

/// Read from below, so that a name begins at its column.
void MatrixView::paintColumnNames(QPainter& painter, const Look& look) {
  const QRect room(look.body.left(), 0, look.body.width(), m_top);
  painter.setClipRect(room);
  painter.fillRect(room, look.faint);
  for (qint64 column = look.columns.first; column < look.columns.last; ++column) {
    const QRect area = areaOf({0, column + 1});
    const bool isCurrent = look.hasFocus && column + 1 == look.current.column;
    if (isCurrent) painter.fillRect(area, translucent(look.highlight, 60));
    if (column + 1 == look.hovered.column) painter.fillRect(area, translucent(look.highlight, 60));
    if (!hasNames()) continue;
    painter.drawPixmap(area.topLeft(), name(column, Qt::Vertical));
  }
  if (look.current.row == 0 && look.current.column > 0 && look.hasFocus) {
    painter.setPen(QPen(look.highlight, 2));
    painter.drawRect(areaOf({0, look.current.column}).adjusted(1, 1, -1, -1));
  }
  painter.fillRect(QRect(look.body.left(), m_top - 1, look.body.width(), 1),
                   translucent(look.text, 90));
}

}  // namespace brisel::qt
