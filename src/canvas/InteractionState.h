#pragma once

#include <string>
#include <string_view>

#include "canvas/Input.h"
#include "platform/Geometry.h"

namespace brisel::canvas {

class DiagramControl;
class Interaction;
class Item;
class Painter;

struct PointerEvent {
  platform::Point at;  ///< twips on the canvas
  PointerButton button = PointerButton::none;
  Modifiers modifiers;
};

/// What the pointer does at the moment: one object a mode or gesture, made when it begins and gone
/// when it ends, so that gestures share no variables. A handler may hand over to another state; the
/// old one lives until the handler has returned.
class InteractionState {
 public:
  explicit InteractionState(Interaction& owner) : m_owner(owner) {}
  InteractionState(const InteractionState&) = delete;
  InteractionState& operator=(const InteractionState&) = delete;
  virtual ~InteractionState() = default;

  virtual void enter() {}
  virtual void leave() {}
  virtual void press(const PointerEvent&) {}
  virtual void move(const PointerEvent&) {}
  virtual void release(const PointerEvent&) {}
  virtual void doubleClick(const PointerEvent&) {}
  /// A key while the gesture is under way; Escape is not asked about.
  virtual void keyPress(std::string_view /*key*/, Modifiers) {}
  /// Takes back what the gesture did so far. The owner hands over to the next state.
  virtual void cancel() {}

  /// A gesture is under way, which Escape ends.
  [[nodiscard]] virtual bool isGesture() const { return true; }
  /// The gesture cannot go on without the item.
  [[nodiscard]] virtual bool needs(const Item&) const { return false; }
  [[nodiscard]] virtual CursorShape cursor() const { return CursorShape::arrow; }
  /// What the gesture tells a status bar: what a release would do, or why it would not.
  [[nodiscard]] virtual std::string hint() const { return {}; }
  /// Paints what the gesture shows over the items; the state itself tells Scene::damageOverlay what
  /// changes. `scale` is pixels a twip.
  virtual void paint(Painter&, double /*scale*/) const {}
  /// While the pointer rests at the edge of the view the canvas scrolls under it.
  [[nodiscard]] virtual bool scrollsAtEdge() const { return false; }

 protected:
  Interaction& m_owner;
};

}  // namespace brisel::canvas
