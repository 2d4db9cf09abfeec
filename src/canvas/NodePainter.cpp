#include "canvas/NodePainter.h"

#include <algorithm>
#include <cmath>

#include "canvas/Node.h"
#include "canvas/Palette.h"
#include "canvas/Scene.h"
#include "platform/Text.h"

namespace brisel::canvas {

using platform::kTwipsPerPixel;
using platform::Point;
using platform::Rect;

namespace {

constexpr double kFramedBlockPixels = 8;  ///< a smaller block has no frame
constexpr std::string_view kEllipsis = "\xE2\x80\xA6";

std::string_view withoutTrailingBlanks(std::string_view text) {
  const std::size_t last = text.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string_view() : text.substr(0, last + 1);
}

/// The longest start of the text that takes at most so many columns.
std::string_view startOf(std::string_view text, int columns) {
  std::size_t end = 0;
  int used = 0;
  while (end < text.size()) {
    std::size_t next = end + 1;
    while (next < text.size() && (static_cast<unsigned char>(text[next]) & 0xC0U) == 0x80U) ++next;
    used += platform::columnsOf(text.substr(end, next - end));
    if (used > columns) break;
    end = next;
  }
  return text.substr(0, end);
}

bool isStereotype(std::string_view line) { return line.starts_with("<<"); }

Color frameOf(const Node& node, const Detail& detail) {
  return detail.showSelection && node.isSelected() ? palette::kSelected : palette::kFrame;
}

}  // namespace

NodePainter::NodePainter(const Scene& scene, Painter& painter, const Detail& detail)
    : m_scene(scene), m_painter(painter), m_detail(detail) {}

void NodePainter::paint(const Node& node, const Rect& area) {
  const Color face = palette::fromPlatform(node.fillColor());
  if (m_detail.pixels(node.rowHeight()) < Detail::kRowPixels) {
    paintBlock(node, face);
    return;
  }
  const Rect bounds = node.bounds();
  m_painter.fillRect(bounds, face);
  paintTitle(node);
  for (std::size_t i = 0; i < node.sectionCount(); ++i) paintSection(node, i, area);
  m_painter.drawFrame(bounds, {.color = frameOf(node, m_detail)});
}

void NodePainter::paintBlock(const Node& node, Color face) {
  const Rect bounds = node.bounds();
  const bool selected = m_detail.showSelection && node.isSelected();
  if (m_detail.pixels(std::min(bounds.width, bounds.height)) < kFramedBlockPixels) {
    m_painter.fillRect(bounds, selected ? palette::kSelected : palette::kBlock);
    return;
  }
  m_painter.fillRect(bounds, selected ? palette::kSelected : palette::kSeparator);
  m_painter.fillRect(bounds.grownBy(-m_detail.twips(1)), face);
}

void NodePainter::paintTitle(const Node& node) {
  const Rect area = node.titleArea();
  const Font& font = m_scene.titleFont();
  const double width = area.width - 2 * kPadding;
  double top = area.top + kTitlePadding;
  for (const std::string_view line : node.titleLines()) {
    const std::string_view text = withoutTrailingBlanks(line);
    if (top + font.lineHeight() > area.bottom() + kTwipsPerPixel) return;
    const bool small = isStereotype(text);
    const Font& lineFont = small ? m_scene.textFont() : font;
    const TextStyle style{.size = lineFont.height(),
                          .color = small ? palette::kStereotype : palette::kText,
                          .bold = !small};
    const double needed = platform::columnsOf(text) * lineFont.columnWidth();
    const double left = area.left + kPadding + std::max(0.0, (width - needed) / 2);
    const double rise = (font.lineHeight() - lineFont.lineHeight()) / 2;
    paintText({left, top + rise}, text, lineFont, width, style);
    top += font.lineHeight();
  }
}

void NodePainter::paintSection(const Node& node, std::size_t number, const Rect& area) {
  const Rect section = node.sectionArea(number);
  if (section.height < kTwipsPerPixel) return;
  m_painter.fillRect({section.left, section.top, section.width, kTwipsPerPixel},
                     palette::kSeparator);
  const auto& rows = node.section(number).rows();
  const Font& font = m_scene.textFont();
  const TextStyle style{.size = font.height(), .color = palette::kText};
  const double first = node.firstRow(number);
  const double height = node.rowHeight();
  const double skipped = std::floor((area.top - first) / height);
  std::size_t i = skipped > 0 ? static_cast<std::size_t>(skipped) : 0;
  for (; i < rows.size(); ++i) {
    const double top = first + static_cast<double>(i) * height;
    if (top + height > section.bottom() + kTwipsPerPixel || top > area.bottom()) return;
    paintText({section.left + kPadding, top}, withoutTrailingBlanks(rows[i].text), font,
              section.width - 2 * kPadding, style);
  }
}

void NodePainter::paintText(Point at, std::string_view text, const Font& font, double width,
                            const TextStyle& style) {
  const int room = std::max(0, static_cast<int>(width / font.columnWidth() + 0.01));
  if (text.empty() || room == 0) return;
  if (!m_detail.readable(font.height())) {
    const double columns = std::min<double>(static_cast<double>(text.size()), room);
    const double thickness = std::max(1.0, std::round(m_detail.pixels(0.3 * font.lineHeight())));
    const Rect bar{at.x, at.y + 0.4 * font.lineHeight(), columns * font.columnWidth(),
                   m_detail.twips(thickness)};
    m_painter.fillRect(bar, palette::kUnreadable);
    return;
  }
  if (text.size() > static_cast<std::size_t>(room) && platform::columnsOf(text) > room) {
    m_cut.assign(startOf(text, room - 1));
    m_cut += kEllipsis;
    text = m_cut;
  }
  m_painter.drawText({at.x, baselineOf(at.y, font)}, text, style);
}

}  // namespace brisel::canvas
