#include "canvas/SvgPainter.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "canvas/Palette.h"

namespace brisel::canvas {

using platform::kTwipsPerPixel;
using platform::Point;
using platform::Rect;

namespace {

constexpr double kUsualFontSize = 10 * platform::kTwipsPerPoint;
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

/// The length of the well-formed UTF-8 sequence at the start of the text that XML allows, or 0.
std::size_t sequenceLength(std::string_view text) {
  const auto byte = [&](std::size_t i) {
    return i < text.size() ? static_cast<std::uint8_t>(text[i]) : std::uint8_t{0};
  };
  const std::uint8_t lead = byte(0);
  const std::size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                             : lead >= 0xE0 && lead <= 0xEF ? 3
                             : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                            : 0;
  if (length == 0) return 0;
  char32_t c = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0U) != 0x80U) return 0;
    c = (c << 6) | (byte(i) & 0x3FU);
  }
  const bool overlong = (length == 3 && c < 0x800) || (length == 4 && c < 0x10000);
  const bool surrogate = c >= 0xD800 && c <= 0xDFFF;
  if (overlong || surrogate || c > 0x10FFFF || c == 0xFFFE || c == 0xFFFF) return 0;
  return length;
}

/// What stands for an ASCII character that cannot stand for itself.
std::string_view escaped(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\t':
      return " ";
    default:
      return {};
  }
}

bool standsForItself(char c) {
  return c >= ' ' && c < 0x7F && c != '&' && c != '<' && c != '>' && c != '"';
}

}  // namespace

void appendXmlText(std::string& xml, std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    std::size_t plain = at;
    while (plain < text.size() && standsForItself(text[plain])) ++plain;
    xml.append(text, at, plain - at);
    if (plain == text.size()) return;
    at = plain;
    if (static_cast<std::uint8_t>(text[at]) < 0x80) {
      xml += escaped(text[at]);
      ++at;
    } else if (const std::size_t length = sequenceLength(text.substr(at))) {
      xml.append(text, at, length);
      at += length;
    } else {
      xml += kReplacement;
      ++at;
    }
  }
}

SvgPainter::SvgPainter(const Rect& area) {
  const double left = std::floor(area.left / kTwipsPerPixel);
  const double top = std::floor(area.top / kTwipsPerPixel);
  const double width = std::max(1.0, std::ceil(area.right() / kTwipsPerPixel) - left);
  const double height = std::max(1.0, std::ceil(area.bottom() / kTwipsPerPixel) - top);
  m_page = {left * kTwipsPerPixel, top * kTwipsPerPixel, width * kTwipsPerPixel,
            height * kTwipsPerPixel};
  m_svg =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\""
      " version=\"1.1\" xml:space=\"preserve\"";
  attribute("width", m_page.width);
  attribute("height", m_page.height);
  m_svg += " viewBox=\"";
  for (const double value : {m_page.left, m_page.top, m_page.width}) {
    number(value);
    m_svg += ' ';
  }
  number(m_page.height);
  m_svg += "\">\n<g font-family=\"'Courier New', 'Liberation Mono', monospace\"";
  attribute("font-size", kUsualFontSize);
  attribute("stroke-width", kTwipsPerPixel);
  paint("fill", palette::kText);
  m_svg += ">\n";
}

std::string SvgPainter::finish() {
  m_svg += "</g>\n</svg>\n";
  return std::exchange(m_svg, {});
}

/// Pixels with at most two decimals.
void SvgPainter::number(double twips) {
  constexpr int kParts = 100;
  std::array<char, 24> digits;
  const long long parts = std::llround(twips * (kParts / kTwipsPerPixel));
  const auto size = static_cast<unsigned long long>(parts < 0 ? -parts : parts);
  if (parts < 0) m_svg += '-';
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), size / kParts).ptr;
  m_svg.append(digits.data(), end);
  const auto rest = static_cast<int>(size % kParts);
  if (rest == 0) return;
  m_svg += '.';
  m_svg += static_cast<char>('0' + rest / 10);
  if (rest % 10 != 0) m_svg += static_cast<char>('0' + rest % 10);
}

void SvgPainter::attribute(std::string_view name, double twips) {
  m_svg += ' ';
  m_svg += name;
  m_svg += "=\"";
  number(twips);
  m_svg += '"';
}

void SvgPainter::paint(std::string_view name, Color color) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  m_svg += ' ';
  m_svg += name;
  m_svg += "=\"#";
  for (int shift = 20; shift >= 0; shift -= 4) m_svg += kDigits[(color >> shift) & 0xFU];
  m_svg += '"';
  const std::uint32_t alpha = color >> 24;
  if (alpha == 0xFF) return;
  std::array<char, 24> digits;
  const double opacity = std::round(alpha * 1000.0 / 0xFF) / 1000;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), opacity).ptr;
  m_svg += ' ';
  m_svg += name;
  m_svg += "-opacity=\"";
  m_svg.append(digits.data(), end);
  m_svg += '"';
}

void SvgPainter::stroke(const Pen& pen) {
  paint("stroke", pen.color);
  if (pen.width != kTwipsPerPixel) attribute("stroke-width", std::max(pen.width, 1.0));
  if (!pen.dashed) return;
  m_svg += " stroke-dasharray=\"";
  number(6 * kTwipsPerPixel);
  m_svg += ' ';
  number(4 * kTwipsPerPixel);
  m_svg += '"';
}

void SvgPainter::points(std::span<const Point> points) {
  m_svg += " points=\"";
  for (const Point& point : points) {
    if (&point != points.data()) m_svg += ' ';
    number(point.x);
    m_svg += ',';
    number(point.y);
  }
  m_svg += '"';
}

void SvgPainter::fillRect(const Rect& rect, Color color) {
  m_svg += "<rect";
  attribute("x", rect.left);
  attribute("y", rect.top);
  attribute("width", rect.width);
  attribute("height", rect.height);
  paint("fill", color);
  m_svg += "/>\n";
}

void SvgPainter::drawFrame(const Rect& rect, const Pen& pen) {
  const double inset = pen.width / 2;
  m_svg += "<path d=\"M";
  number(rect.left + inset);
  m_svg += ',';
  number(rect.top + inset);
  m_svg += 'H';
  number(rect.right() - inset);
  m_svg += 'V';
  number(rect.bottom() - inset);
  m_svg += 'H';
  number(rect.left + inset);
  m_svg += "Z\" fill=\"none\"";
  stroke(pen);
  m_svg += "/>\n";
}

void SvgPainter::drawPolyline(std::span<const Point> line, const Pen& pen) {
  m_svg += "<polyline";
  points(line);
  m_svg += " fill=\"none\"";
  stroke(pen);
  m_svg += "/>\n";
}

void SvgPainter::drawPolygon(std::span<const Point> corners, Color fill, const Pen& pen) {
  m_svg += "<polygon";
  points(corners);
  if (fill == kNoColor) {
    m_svg += " fill=\"none\"";
  } else {
    paint("fill", fill);
  }
  stroke(pen);
  m_svg += "/>\n";
}

void SvgPainter::drawText(Point baseline, std::string_view text, const TextStyle& style) {
  m_svg += "<text";
  attribute("x", baseline.x);
  attribute("y", baseline.y);
  if (style.size != kUsualFontSize) attribute("font-size", style.size);
  if (style.bold) m_svg += " font-weight=\"bold\"";
  if (style.color != palette::kText) paint("fill", style.color);
  m_svg += '>';
  appendXmlText(m_svg, text);
  m_svg += "</text>\n";
}

}  // namespace brisel::canvas
