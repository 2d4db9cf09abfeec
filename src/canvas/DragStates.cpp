#include "canvas/DragStates.h"

#include <algorithm>

#include "canvas/DiagramControl.h"
#include "canvas/Interaction.h"
#include "canvas/Painter.h"
#include "canvas/Palette.h"

namespace brisel::canvas {

using platform::Point;
using platform::Rect;

namespace {

bool isLeft(const PointerEvent& event) { return event.button == PointerButton::left; }

bool liesIn(const Rect& band, const Item& item) {
  if (!item.isLink()) return band.contains(static_cast<const Node&>(item).bounds());
  const auto& points = static_cast<const Link&>(item).points();
  return std::all_of(points.begin(), points.end(), [&](Point p) { return band.contains(p); });
}

}  // namespace

MoveState::MoveState(Interaction& owner, Point start, SelectionMemory before)
    : InteractionState(owner),
      m_start(start),
      m_before(std::move(before)),
      m_items(owner.control().scene()),
      m_guides(owner.control()) {}

void MoveState::enter() { move({m_owner.pointer(), PointerButton::none, m_owner.modifiers()}); }

void MoveState::move(const PointerEvent& event) {
  const Scene::Update update(&m_owner.control().scene());
  // A release tells of modifiers too, but Alt may have been let go a moment before.
  m_free = event.modifiers.alt || (m_free && isLeft(event));
  m_guides.hide();
  Point way = wholeTwips(event.at - m_start);
  if (!m_free) {
    way = wholeTwips(way + m_guides.snap(m_items.bounds().movedBy(way), {}, {}));
    m_guides.show(m_items.bounds().movedBy(way), {}, {});
  }
  m_items.moveBy(way);
}

void MoveState::release(const PointerEvent& event) {
  if (!isLeft(event)) return;
  move(event);
  const auto keys = m_items.movedKeys();
  m_owner.rest();
  for (const std::string& key : keys) m_owner.control().NodeMoved(key);
}

void MoveState::cancel() {
  m_items.moveBy({});
  m_before.restore();
}

ResizeState::ResizeState(Interaction& owner, Node& node, Handle handle, Point start)
    : InteractionState(owner),
      m_node(&node),
      m_handle(handle),
      m_start(start),
      m_offset(handlesOf(node.bounds())[static_cast<std::size_t>(handle)] - start),
      m_before(node.bounds()),
      m_fitted(node.fitsText()),
      m_lines({m_node}, FollowingLines::Between::follow),
      m_cursor(owner.hoverCursor()),
      m_guides(owner.control()) {}

void ResizeState::move(const PointerEvent& event) {
  const double threshold = m_owner.control().viewport().toTwips(kDragPixels);
  m_moved |= distance(event.at, m_start, m_start) >= threshold;
  if (!m_moved) return;
  m_free = event.modifiers.alt || (m_free && isLeft(event));
  pull(wholeTwips(event.at + m_offset));
}

void ResizeState::pull(Point to) {
  const Scene::Update update(m_node->scene());
  const auto [left, right, top, bottom] = sidesOf(m_handle);
  const AlignedLines across{left, false, right};
  const AlignedLines down{top, false, bottom};
  const auto boxAt = [&](Point at) {
    return withinReach(pulled(m_before, m_handle, wholeTwips(at), m_node->minimumSize()));
  };
  Rect box = boxAt(to);
  m_guides.hide();
  if (!m_free) {
    box = boxAt(to + m_guides.snap(box, across, down, m_node.get()));
    m_guides.show(box, across, down);
  }
  m_node->bounds(box);
  m_lines.follow();
}

void ResizeState::release(const PointerEvent& event) {
  if (!isLeft(event)) return;
  move(event);
  m_owner.rest();
  if (m_node->bounds() != m_before) m_owner.control().NodeResized(m_node->key());
}

void ResizeState::cancel() {
  const Scene::Update update(m_node->scene());
  m_node->bounds(m_before);
  if (m_fitted) m_node->fitToText(true);
  m_lines.follow();
}

CursorShape ResizeState::cursor() const { return m_cursor; }

BendState::BendState(Interaction& owner, Link& link, std::size_t bend, bool isNew, Point start)
    : InteractionState(owner),
      m_link(&link),
      m_bend(bend),
      m_start(start),
      m_moved(isNew),
      m_before(link.bends()),
      m_bends(link.points().begin() + 1, link.points().end() - 1) {
  if (isNew) m_bends.insert(m_bends.begin() + static_cast<std::ptrdiff_t>(bend), start);
}

void BendState::enter() { move({m_owner.pointer(), PointerButton::left, {}}); }

void BendState::move(const PointerEvent& event) {
  const double threshold = m_owner.control().viewport().toTwips(kDragPixels);
  m_moved |= distance(event.at, m_start, m_start) >= threshold;
  if (!m_moved) return;
  m_bends[m_bend] = wholeTwips(event.at);
  m_link->bends(m_bends);
}

void BendState::release(const PointerEvent& event) {
  if (!isLeft(event)) return;
  move(event);
  m_owner.rest();
  if (!m_moved || m_link->scene() == nullptr || m_link->bends() != m_bends) return;
  const Scene::Update update(m_link->scene());
  const double reach = m_owner.control().viewport().toTwips(kHitPixels);
  m_link->removeBend(m_bend);
  const auto& points = m_link->points();
  if (distance(m_bends[m_bend], points[m_bend], points[m_bend + 1]) > reach) m_link->bends(m_bends);
}

void BendState::cancel() { m_link->bends(m_before); }

RubberBandState::RubberBandState(Interaction& owner, const PointerEvent& event)
    : InteractionState(owner),
      m_start(event.at),
      m_adds(event.modifiers.ctrl || event.modifiers.shift),
      m_before(owner.control().scene()) {}

void RubberBandState::enter() {
  if (!m_adds) m_owner.control().selection().clear();
}

void RubberBandState::leave() {
  const auto band = std::exchange(m_band, std::nullopt);
  if (band) m_owner.control().scene().damageOverlay(*band);
}

void RubberBandState::move(const PointerEvent& event) { draw(event.at); }

void RubberBandState::release(const PointerEvent& event) {
  if (!isLeft(event)) return;
  draw(event.at);
  m_owner.rest();
}

void RubberBandState::cancel() { m_before.restore(); }

void RubberBandState::paint(Painter& painter, double scale) const {
  if (!m_band) return;
  painter.fillRect(*m_band, palette::kRubberBand);
  painter.drawFrame(*m_band, {.color = palette::kSelected, .width = 1 / scale});
}

void RubberBandState::draw(Point to) {
  Scene& scene = m_owner.control().scene();
  const Scene::Update update(&scene);
  if (m_band) scene.damageOverlay(*m_band);
  m_band = Rect{std::min(m_start.x, to.x), std::min(m_start.y, to.y), std::abs(to.x - m_start.x),
                std::abs(to.y - m_start.y)};
  scene.damageOverlay(*m_band);
  select();
}

void RubberBandState::select() const {
  DiagramControl& control = m_owner.control();
  std::vector<Item*> found;
  control.scene().collect(*m_band, found);
  std::erase_if(found, [&](const Item* item) { return !liesIn(*m_band, *item); });
  std::sort(found.begin(), found.end(),
            [](const Item* a, const Item* b) { return a->order() < b->order(); });
  std::vector<Item*> wanted;
  if (m_adds) wanted = m_before.items();
  auto known = wanted;
  std::sort(known.begin(), known.end());
  for (Item* item : found) {
    if (!std::binary_search(known.begin(), known.end(), item)) wanted.push_back(item);
  }
  if (wanted != control.selection().selectedItems()) control.selection().set(wanted);
}

PanState::PanState(Interaction& owner, const PointerEvent& event)
    : InteractionState(owner), m_start(event), m_scroll(owner.control().viewport().scroll()) {}

void PanState::move(const PointerEvent& event) {
  Viewport& view = m_owner.control().viewport();
  view.scrollTo(view.scroll() + (m_start.at - event.at));
}

void PanState::release(const PointerEvent& event) {
  if (event.button != m_start.button) return;
  m_owner.rest();
  // Callers that know no release of a key end the holding with the button; a held key repeats.
  if (event.button == PointerButton::left) m_owner.spaceHeld(false);
}

void PanState::cancel() { m_owner.control().viewport().scrollTo(m_scroll); }

}  // namespace brisel::canvas
