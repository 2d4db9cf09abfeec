#include "qt/FixedFont.h"

#include <algorithm>

#include "canvas/Painter.h"

namespace brisel::qt {

namespace {

constexpr int kBasePixelSize = 100;
constexpr std::size_t kSizesKept = 8;

}  // namespace

QFont fixedFont(bool bold) {
  QFont font(QStringLiteral("Courier New"));
  font.setStyleHint(QFont::Monospace);
  font.setFixedPitch(true);
  font.setBold(bold);
  font.setPixelSize(kBasePixelSize);
  font.setHintingPreference(QFont::PreferVerticalHinting);
  font.setStyleStrategy(QFont::StyleStrategy(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
  return font;
}

FixedFont::FixedFont(bool bold)
    : m_shaped(fixedFont(bold)), m_base(QRawFont::fromFont(m_shaped)), m_ascii(0x80) {
  for (char32_t c = U' '; c < 0x7F; ++c) {
    const QChar unit(static_cast<char16_t>(c));
    int count = 1;
    m_base.glyphIndexesForChars(&unit, 1, &m_ascii[c], &count);
  }
  const quint32 widest = m_ascii['M'];
  QPointF advance;
  m_base.advancesForGlyphIndexes(&widest, &advance, 1);
  const double measured = advance.x() / kBasePixelSize;
  if (measured > canvas::kColumnWidth) m_scale = canvas::kColumnWidth / measured;
}

const QRawFont& FixedFont::at(double pixelSize) {
  const auto found = std::find_if(m_sizes.begin(), m_sizes.end(),
                                  [&](const auto& entry) { return entry.first == pixelSize; });
  if (found != m_sizes.end()) return found->second;
  if (m_sizes.size() == kSizesKept) m_sizes.erase(m_sizes.begin());
  QRawFont font = m_base;
  font.setPixelSize(pixelSize * m_scale);
  return m_sizes.emplace_back(pixelSize, std::move(font)).second;
}

quint32 FixedFont::glyph(char32_t character) {
  if (character < m_ascii.size()) return m_ascii[character];
  const auto [entry, isNew] = m_others.try_emplace(character, 0);
  if (isNew) {
    const auto glyphs = m_base.glyphIndexesForString(QString::fromUcs4(&character, 1));
    if (glyphs.size() == 1) entry->second = glyphs.front();
  }
  return entry->second;
}

}  // namespace brisel::qt
