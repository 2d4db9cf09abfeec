#pragma once

#include <QColor>
#include <QIcon>
#include <QPalette>
#include <QPixmap>
#include <QRectF>
#include <map>
#include <tuple>

#include "repository/Relationships.h"

class QPainter;

namespace brisel::qt {

/// How relationships look in the cells of a matrix: lines as in a diagram, drawn from the row's
/// class on the left to the column's on the right. One back is mirrored and paler. Made ready once
/// a size, kind and direction.
class MatrixGlyphs {
 public:
  using Kind = repository::RelationshipKind;

  /// Readable on the ground that the palette has; forgets what was made ready for another.
  void palette(const QPalette& palette);

  [[nodiscard]] QColor color(Kind kind, bool forward) const;
  /// A glyph of that size in pixels of the view, ready for screens of the ratio.
  const QPixmap& glyph(Kind kind, bool forward, QSize size, double ratio);
  /// For a button or a menu.
  [[nodiscard]] QIcon icon(Kind kind) const;

 private:
  using Key = std::tuple<Kind, bool, int, int, double>;

  void draw(QPainter& painter, const QRectF& area, Kind kind, bool forward) const;

  bool m_isDark = false;
  QColor m_ground = Qt::white;
  std::map<Key, QPixmap> m_ready;
};

}  // namespace brisel::qt
