#include "canvas/Interaction.h"

#include <algorithm>

#include "canvas/DiagramControl.h"
#include "canvas/Offer.h"
#include "canvas/SelectStates.h"

namespace brisel::canvas {

using platform::Point;
using platform::Ref;

class Interaction::Dispatch {
 public:
  explicit Dispatch(Interaction& owner) : m_owner(owner) { ++m_owner.m_depth; }
  ~Dispatch() {
    if (--m_owner.m_depth > 0) return;
    m_owner.m_retired.clear();
  }
  Dispatch(const Dispatch&) = delete;
  Dispatch& operator=(const Dispatch&) = delete;

  /// To be called last: tells what changed meanwhile of the cursor, of scrolling at the edge and of
  /// the hint.
  void done() {
    if (m_owner.m_depth > 1) return;
    const bool scrolls = m_owner.scrollStep() != Point{};
    const bool scrollingChanged = std::exchange(m_owner.m_shownScrolling, scrolls) != scrolls;
    const CursorShape cursor = m_owner.cursor();
    const bool cursorChanged = std::exchange(m_owner.m_shownCursor, cursor) != cursor;
    if (cursorChanged) m_owner.m_control.CursorChanged();
    if (scrollingChanged) m_owner.m_control.AutoScrollChanged();
    m_owner.tellHint();
  }

 private:
  Interaction& m_owner;
};

namespace {

/// Pixels along one side of the view in a tick of 16 ms; the sign is the direction. A press at the
/// very edge does not mean to scroll before the pointer goes on towards it.
double scrollStepAlong(double at, double pressedAt, double length) {
  const double low = std::clamp(pressedAt, 0.0, kScrollEdgePixels);
  const double high = length - std::clamp(length - pressedAt, 0.0, kScrollEdgePixels);
  const auto speed = [](double depth) {
    return std::min(kScrollSlowest + depth * kScrollGrowth, kScrollFastest);
  };
  if (at < low) return -speed(low - at);
  return at > high ? speed(at - high) : 0;
}

/// Where a view that begins at `from` and sees `length` is scrolled to: not beyond what there is
/// from `low` to `high`, but it stays where it is when it looks beyond that already.
double scrolledWithin(double from, double by, double length, double low, double high) {
  if (by < 0) return std::max(from + by, std::min(from, low));
  return by > 0 ? std::min(from + by, std::max(from, high - length)) : from;
}

}  // namespace

Interaction::Interaction(DiagramControl& control)
    : m_control(control), m_state(std::make_unique<IdleState>(*this)) {}

Interaction::~Interaction() = default;

void Interaction::pointerAt(const PointerEvent& event) {
  m_pointer = event.at;
  m_seenAt = m_control.viewport().toPixels(event.at);
  m_modifiers = event.modifiers;
  m_pointerInside = true;
}

void Interaction::pointerMove(Point at, Modifiers modifiers) {
  Dispatch dispatch(*this);
  const PointerEvent event{at, PointerButton::none, modifiers};
  pointerAt(event);
  m_state->move(event);
  dispatch.done();
}

void Interaction::pointerPress(const PointerEvent& event) {
  Dispatch dispatch(*this);
  pointerAt(event);
  m_noticeStands = false;
  m_pressedAt = m_seenAt;
  m_made = nullptr;
  m_state->press(event);
  dispatch.done();
}

void Interaction::pointerRelease(const PointerEvent& event) {
  Dispatch dispatch(*this);
  pointerAt(event);
  m_state->release(event);
  offerAfterGesture();
  dispatch.done();
}

void Interaction::pointerDoubleClick(Point at) {
  Dispatch dispatch(*this);
  const PointerEvent event{at, PointerButton::left, {}};
  pointerAt(event);
  m_state->doubleClick(event);
  dispatch.done();
}

void Interaction::pointerLeave() {
  Dispatch dispatch(*this);
  m_pointerInside = false;
  hover({});
  dispatch.done();
}

void Interaction::spaceHeld(bool held) {
  Dispatch dispatch(*this);
  m_spaceHeld = held;
  dispatch.done();
}

Point Interaction::scrollStep() const {
  if (!m_state->scrollsAtEdge()) return {};
  const platform::Size view = m_control.viewport().size();
  return {scrollStepAlong(m_seenAt.x, m_pressedAt.x, view.width),
          scrollStepAlong(m_seenAt.y, m_pressedAt.y, view.height)};
}

void Interaction::autoScroll() {
  Dispatch dispatch(*this);
  Viewport& view = m_control.viewport();
  const Point before = view.scroll();
  const platform::Rect seen = view.visible();
  const Point step = scrollStep() * view.toTwips(1.0);
  const platform::Rect all = m_control.scene().extent().grownBy(view.toTwips(kScrollEdgePixels));
  view.scrollTo({scrolledWithin(seen.left, step.x, seen.width, all.left, all.right()),
                 scrolledWithin(seen.top, step.y, seen.height, all.top, all.bottom())});
  if (view.scroll() != before) {
    m_pointer = view.toTwips(m_seenAt);
    m_state->move({m_pointer, PointerButton::none, m_modifiers});
  }
  dispatch.done();
}

bool Interaction::cancel() {
  if (!m_state->isGesture()) return false;
  Dispatch dispatch(*this);
  undoGesture();
  offerAfterGesture();
  dispatch.done();
  return true;
}

void Interaction::undoGesture() {
  InteractionState& state = *m_state;
  rest();  // first: what the undoing sets off finds no gesture any more
  state.cancel();
}

bool Interaction::forget(Item& item) {
  const bool hovered = m_hovered == &item.object();
  if (hovered) m_hovered = nullptr;
  if (!m_state->needs(item)) return hovered;
  const Dispatch dispatch(*this);  // without a word: the item is half gone
  undoGesture();
  return true;
}

CursorShape Interaction::cursor() const { return m_state->cursor(); }

std::optional<Hit> Interaction::hitAt(Point at) const {
  return hitTest(m_control.scene(), m_control.viewport(), at);
}

void Interaction::change(std::unique_ptr<InteractionState> next) {
  m_state->leave();
  m_retired.push_back(std::exchange(m_state, std::move(next)));
  m_state->enter();
}

void Interaction::rest() { change(std::make_unique<IdleState>(*this)); }

void Interaction::tellHint() {
  std::string hint = m_state->hint();
  if (hint.empty() && m_noticeStands) return;
  m_noticeStands = false;
  if (m_shownHint == hint) return;
  m_shownHint = hint;
  m_control.Hint(hint);
}

void Interaction::hover(const std::optional<Hit>& hit) {
  offer(hit);
  const Ref<platform::DiagramItem> item = !hit        ? nullptr
                                          : hit->node ? Ref<platform::DiagramItem>(hit->node)
                                                      : hit->link;
  if (item == m_hovered) return;
  leaveHovered();
  if (!item) return;
  m_hovered = item;
  m_hoveredIsLink = hit->link != nullptr;
  (m_hoveredIsLink ? m_control.LinkEnter : m_control.NodeEnter)(item->key());
}

void Interaction::offer(const std::optional<Hit>& hit) {
  const Offer offer =
      m_pointerInside ? offerAt(m_control, hit, m_pointer) : offerNowhere(m_control);
  m_hoverCursor = cursorOf(offer);
  m_hoverHint = hintOf(m_control, offer);
}

void Interaction::offerAfterGesture() {
  if (!m_state->isGesture()) offer(m_pointerInside ? hitAt(m_pointer) : std::nullopt);
}

void Interaction::refresh() {
  Dispatch dispatch(*this);
  offerAfterGesture();
  dispatch.done();
}

void Interaction::showHint(std::string_view text) {
  m_shownHint = text;
  m_noticeStands = true;
  m_control.Hint(m_shownHint);
}

void Interaction::leaveHovered() {
  const auto left = std::exchange(m_hovered, nullptr);
  if (left) (m_hoveredIsLink ? m_control.LinkLeave : m_control.NodeLeave)(left->key());
}

}  // namespace brisel::canvas
