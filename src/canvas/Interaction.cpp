#include "canvas/Interaction.h"

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

  /// To be called last: tells a cursor and a hint that changed meanwhile.
  void done() {
    if (m_owner.m_depth > 1) return;
    if (m_owner.m_shownCursor != m_owner.cursor()) {
      m_owner.m_shownCursor = m_owner.cursor();
      m_owner.m_control.CursorChanged();
    }
    const std::string hint = m_owner.m_state->hint();
    if (m_owner.m_shownHint == hint) return;
    m_owner.m_shownHint = hint;
    m_owner.m_control.Hint(hint);
  }

 private:
  Interaction& m_owner;
};

Interaction::Interaction(DiagramControl& control)
    : m_control(control), m_state(std::make_unique<IdleState>(*this)) {}

Interaction::~Interaction() = default;

void Interaction::pointerAt(Point at) {
  m_pointer = at;
  m_pointerInside = true;
}

void Interaction::pointerMove(Point at) {
  Dispatch dispatch(*this);
  pointerAt(at);
  m_state->move({at, PointerButton::none, {}});
  dispatch.done();
}

void Interaction::pointerPress(const PointerEvent& event) {
  Dispatch dispatch(*this);
  pointerAt(event.at);
  m_made = nullptr;
  m_state->press(event);
  dispatch.done();
}

void Interaction::pointerRelease(const PointerEvent& event) {
  Dispatch dispatch(*this);
  pointerAt(event.at);
  m_state->release(event);
  offerAfterGesture();
  dispatch.done();
}

void Interaction::pointerDoubleClick(Point at) {
  Dispatch dispatch(*this);
  pointerAt(at);
  m_state->doubleClick({at, PointerButton::left, {}});
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

void Interaction::leaveHovered() {
  const auto left = std::exchange(m_hovered, nullptr);
  if (left) (m_hoveredIsLink ? m_control.LinkLeave : m_control.NodeLeave)(left->key());
}

}  // namespace brisel::canvas
