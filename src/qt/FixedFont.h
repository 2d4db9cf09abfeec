#pragma once

#include <QFont>
#include <QRawFont>
#include <unordered_map>
#include <vector>

namespace brisel::qt {

/// "Courier New" or what the system has in its place, as the canvas's text looks.
[[nodiscard]] QFont fixedFont(bool bold);

/// The canvas's fixed-pitch font in one weight, ready to draw by glyph numbers: "Courier New" or
/// what the system has in its place. A column is always 0.6 of the size, as the canvas measures.
/// Must go before the application object does.
class FixedFont {
 public:
  explicit FixedFont(bool bold);

  /// The font at a size in device pixels, which may be a fraction.
  [[nodiscard]] const QRawFont& at(double pixelSize);
  /// Glyph number of a character, 0 when the font lacks it. Valid at every size.
  [[nodiscard]] quint32 glyph(char32_t character);
  /// For text that needs more than one glyph a column: other scripts, right to left, symbols.
  [[nodiscard]] const QFont& shaped() const { return m_shaped; }

 private:
  QFont m_shaped;
  QRawFont m_base;
  double m_scale = 1;  ///< below 1 where the font found is wider than the canvas's measure
  std::vector<std::pair<double, QRawFont>> m_sizes;
  std::vector<quint32> m_ascii;
  std::unordered_map<char32_t, quint32> m_others;
};

/// Both weights.
struct FixedFonts {
  FixedFont regular{false};
  FixedFont bold{true};
};

}  // namespace brisel::qt
