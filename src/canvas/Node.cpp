#include "canvas/Node.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "canvas/Link.h"
#include "canvas/Scene.h"
#include "platform/Error.h"
#include "platform/MemberTableOf.h"
#include "platform/Text.h"

namespace brisel::canvas {

using platform::Error;
using platform::ErrorNumber;
using platform::MemberTable;
using platform::MemberTableOf;
using platform::Object;
using platform::Point;
using platform::Rect;
using platform::Ref;
using platform::Size;

namespace {

void checkReach(const Rect& r) {
  for (const double value : {r.left, r.top, r.width, r.height}) {
    if (!(std::abs(value) <= kReach)) {
      throw Error(ErrorNumber::invalidCall, "Bounds of a node out of reach");
    }
  }
}

const Font& titleFontOf(const Scene* scene) {
  static const Font kNone{"Courier New", 15};
  return scene ? scene->titleFont() : kNone;
}

const Font& textFontOf(const Scene* scene) {
  static const Font kNone{"Courier New", 10};
  return scene ? scene->textFont() : kNone;
}

double neededHeight(const Section& section, const Font& font) {
  return 2 * kSectionPadding + static_cast<double>(section.rows().size()) * font.lineHeight();
}

}  // namespace

Node::Node(std::string_view key, std::string_view text, const Rect& bounds, std::int64_t style,
           std::size_t sections)
    : m_style(style), m_fillColor(platform::kButtonFaceColor) {
  checkReach(bounds);
  m_key = key;
  m_bounds = {bounds.left, bounds.top, std::max(0.0, bounds.width), std::max(0.0, bounds.height)};
  m_ownSize = m_bounds.size();
  m_sections.reserve(sections);
  for (std::size_t i = 0; i < sections; ++i) {
    m_sections.push_back(platform::make<canvas::Section>(*this));
  }
  Node::text(text);
}

Node::~Node() {
  for (const auto& section : m_sections) section->m_node = nullptr;
}

void Node::text(std::string_view text) {
  m_text = text;
  const auto lines = titleLines();
  m_titleLineCount = static_cast<int>(lines.size());
  m_titleColumns = 0;
  for (const auto line : lines)
    m_titleColumns = std::max(m_titleColumns, platform::columnsOf(line));
  contentChanged();
}

void Node::selected(bool selected) {
  if (scene()) scene()->selection().select(*this, selected);
}

Ref<Object> Node::getItem(std::string_view name) const { return stored(name); }

void Node::setItem(std::string_view name, Object* object) { store(name, object); }

Rect Node::bounds() const { return m_bounds; }

void Node::bounds(const Rect& bounds) {
  checkReach(bounds);
  const Rect wanted{bounds.left, bounds.top, std::max(0.0, bounds.width),
                    std::max(0.0, bounds.height)};
  if (wanted.size() != m_bounds.size()) {
    const Size needed = neededSize();
    m_fits = false;
    m_ownSize = wanted.size();
    m_grows = wanted.width >= needed.width && wanted.height >= needed.height;
  }
  place(wanted);
}

void Node::place(const Rect& bounds) {
  if (bounds == m_bounds) return;
  const Scene::Update update(scene());
  const Point moved = bounds.topLeft() - m_bounds.topLeft();
  const bool sameSize = bounds.size() == m_bounds.size();
  m_bounds = bounds;
  if (scene()) {
    ++scene()->m_geometryRevision;
    scene()->touched(*this);
  }
  for (const Attached& end : m_attached) {
    // The bends of a line to its own box are between two moved ends.
    if (end.link->isLoop() && end.atSource && sameSize) {
      for (Point& bend : end.link->m_bends) bend = bend + moved;
    }
    end.link->geometryChanged();
  }
}

void Node::fillColor(std::int64_t color) {
  if (color == m_fillColor) return;
  m_fillColor = color;
  if (scene()) scene()->touched(*this);
}

Ref<platform::DiagramSection> Node::Section(std::int64_t number) const {
  if (number < 0 || number >= static_cast<std::int64_t>(m_sections.size())) {
    throw Error(ErrorNumber::subscript, "No section " + std::to_string(number) + " in a node of " +
                                            std::to_string(m_sections.size()));
  }
  return m_sections[static_cast<std::size_t>(number)];
}

void Node::fitToText(bool fit) {
  m_fits = m_grows = fit;
  if (fit) contentChanged();
}

void Node::left(double left) { bounds({left, m_bounds.top, m_bounds.width, m_bounds.height}); }
void Node::top(double top) { bounds({m_bounds.left, top, m_bounds.width, m_bounds.height}); }
void Node::width(double width) { bounds({m_bounds.left, m_bounds.top, width, m_bounds.height}); }
void Node::height(double height) { bounds({m_bounds.left, m_bounds.top, m_bounds.width, height}); }

Rect Node::extent() const { return m_bounds.grownBy(platform::kTwipsPerPixel); }

void Node::endUpdate() {
  if (m_updates == 0 || --m_updates > 0) return;
  if (std::exchange(m_isStale, false)) contentChanged();
}

void Node::contentChanged() {
  if (m_updates > 0) {
    m_isStale = true;
    return;
  }
  const Scene::Update update(scene());
  if (m_fits) {
    const Size size = neededSize();
    place({m_bounds.left, m_bounds.top, size.width, size.height});
  } else if (m_grows) {
    const Size size = neededSize();
    place({m_bounds.left, m_bounds.top, std::max(m_ownSize.width, size.width),
           std::max(m_ownSize.height, size.height)});
  }
  if (scene()) scene()->touched(*this);
}

std::vector<std::string_view> Node::titleLines() const { return linesOf(m_text); }

double Node::titleHeight() const {
  return 2 * kTitlePadding + m_titleLineCount * titleFontOf(scene()).lineHeight();
}

Rect Node::titleArea() const {
  const bool alone = std::none_of(m_sections.begin(), m_sections.end(),
                                  [](const auto& section) { return section->visible(); });
  const double height = alone ? m_bounds.height : std::min(titleHeight(), m_bounds.height);
  return {m_bounds.left, m_bounds.top, m_bounds.width, height};
}

double Node::sectionTop(std::size_t number) const {
  double top = m_bounds.top + titleHeight();
  for (std::size_t i = 0; i < number; ++i) {
    if (m_sections[i]->visible()) top += neededHeight(*m_sections[i], textFontOf(scene()));
  }
  return top;
}

Rect Node::sectionArea(std::size_t number) const {
  if (!m_sections[number]->visible()) return {};
  const double top = sectionTop(number);
  if (top >= m_bounds.bottom()) return {};
  const bool last =
      std::none_of(m_sections.begin() + static_cast<std::ptrdiff_t>(number) + 1, m_sections.end(),
                   [](const auto& section) { return section->visible(); });
  const double room = m_bounds.bottom() - top;
  const double height =
      last ? room : std::min(room, neededHeight(*m_sections[number], textFontOf(scene())));
  return {m_bounds.left, top, m_bounds.width, height};
}

double Node::firstRow(std::size_t number) const { return sectionTop(number) + kSectionPadding; }

double Node::rowHeight() const { return textFontOf(scene()).lineHeight(); }

Size Node::neededSize() const {
  const Font& font = textFontOf(scene());
  double width = m_titleColumns * titleFontOf(scene()).columnWidth();
  double height = titleHeight();
  for (const auto& section : m_sections) {
    if (!section->visible()) continue;
    width = std::max(width, section->columns() * font.columnWidth());
    height += neededHeight(*section, font);
  }
  return {std::ceil(std::clamp(width + 2 * kPadding, kMinimumWidth, kReach)),
          std::ceil(std::min(height, kReach))};
}

Size Node::minimumSize() const {
  const double width = m_titleColumns * titleFontOf(scene()).columnWidth() + 2 * kPadding;
  return {std::ceil(std::max(kMinimumWidth, width)), std::ceil(titleHeight())};
}

const MemberTable& Node::memberTable() const {
  using Text = std::string_view;
  static const MemberTable kTable =
      MemberTableOf<Node>()
          .property("key", &Node::key)
          .property<std::string, Text>("text", &Node::text, &Node::text)
          .property<double, double>("left", &Node::left, &Node::left)
          .property<double, double>("top", &Node::top, &Node::top)
          .property<double, double>("width", &Node::width, &Node::width)
          .property<double, double>("height", &Node::height, &Node::height)
          .property("style", &Node::style)
          .property<std::int64_t, std::int64_t>("fillColor", &Node::fillColor, &Node::fillColor)
          .property<bool, bool>("selected", &Node::selected, &Node::selected)
          .property("marked", &Node::marked)
          .method("Section", &Node::Section)
          .method("getItem", &Node::getItem)
          .method("setItem", &Node::setItem)
          .method("fitToText", &Node::fitToText)
          .build();
  return kTable;
}

}  // namespace brisel::canvas
