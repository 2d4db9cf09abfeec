#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "canvas/HitTest.h"
#include "canvas/InteractionState.h"
#include "platform/Diagram.h"
#include "platform/Ref.h"

namespace brisel::canvas {

class Painter;

/// Turns pointer input into what a person means by it, one state at a time, and tells what the
/// pointer rests on. Owned by the control.
class Interaction {
 public:
  explicit Interaction(DiagramControl& control);
  ~Interaction();

  void pointerMove(platform::Point at, Modifiers modifiers);
  void pointerPress(const PointerEvent& event);
  void pointerRelease(const PointerEvent& event);
  void pointerDoubleClick(platform::Point at);
  /// The pointer left the view: nothing is under it.
  void pointerLeave();
  /// While it is held, the left button pans.
  void spaceHeld(bool held);

  /// Pixels of the view that the next tick scrolls by; nothing while the pointer rests elsewhere than
  /// at the edge, or no gesture that scrolls there is under way.
  [[nodiscard]] platform::Point scrollStep() const;
  /// One tick: scrolls towards the edge at which the pointer rests, and the gesture goes on at what
  /// is now under it. Beyond the items there is nothing to scroll to.
  void autoScroll();

  /// Tells a hint that is not the state's own: it stands until the next press, or until there is
  /// something else to tell.
  void showHint(std::string_view text);
  /// What the pointer rests on, as it was told; nothing over empty canvas.
  [[nodiscard]] platform::Ref<platform::DiagramItem> hovered() const { return m_hovered; }

  /// Ends a gesture as if it had never begun; false when there was none.
  bool cancel();
  [[nodiscard]] bool inGesture() const { return m_state->isGesture(); }
  /// The item leaves the canvas: a gesture that needs it ends. Raises nothing: with the answer
  /// true, `refresh` is to follow when the item is gone.
  bool forget(Item& item);

  /// Mode or items are others: the pointer and the hint tell at once what a press does now.
  void refresh();

  [[nodiscard]] CursorShape cursor() const;
  /// What the gesture shows over the items.
  void paint(Painter& painter, double scale) const { m_state->paint(painter, scale); }
  /// Where the pointer was last.
  [[nodiscard]] platform::Point pointer() const { return m_pointer; }

  // For the states.
  [[nodiscard]] DiagramControl& control() const { return m_control; }
  /// Held when the pointer was last heard of.
  [[nodiscard]] Modifiers modifiers() const { return m_modifiers; }
  [[nodiscard]] bool isSpaceHeld() const { return m_spaceHeld; }
  [[nodiscard]] std::optional<Hit> hitAt(platform::Point at) const;
  void change(std::unique_ptr<InteractionState> next);
  /// Back to the state in which nothing is going on.
  void rest();
  /// False once the state was left, by whatever it set off itself.
  [[nodiscard]] bool isCurrent(const InteractionState& state) const {
    return m_state.get() == &state;
  }
  /// Tells the hint at once, so that what is told next by whoever keeps the model stays.
  void tellHint();
  /// A click just made the node: a double click is not meant for it.
  void made(platform::Ref<Node> node) { m_made = std::move(node); }
  [[nodiscard]] bool wasJustMade(const Node* node) const { return node && m_made == node; }
  /// What the pointer rests on; raises the events of entering and leaving when it is another.
  void hover(const std::optional<Hit>& hit);
  [[nodiscard]] CursorShape hoverCursor() const { return m_hoverCursor; }
  [[nodiscard]] const std::string& hoverHint() const { return m_hoverHint; }

 private:
  /// Keeps states that ended alive until the outermost input was dealt with.
  class Dispatch;

  void undoGesture();
  void pointerAt(const PointerEvent& event);
  void leaveHovered();
  /// What a press would do where the pointer is.
  void offer(const std::optional<Hit>& hit);
  void offerAfterGesture();

  DiagramControl& m_control;
  std::unique_ptr<InteractionState> m_state;
  std::vector<std::unique_ptr<InteractionState>> m_retired;
  platform::Ref<platform::DiagramItem> m_hovered;
  bool m_hoveredIsLink = false;
  CursorShape m_hoverCursor = CursorShape::arrow;
  CursorShape m_shownCursor = CursorShape::arrow;
  std::string m_hoverHint;
  std::string m_shownHint;
  bool m_noticeStands = false;  ///< the hint shown is not the state's own
  platform::Ref<Node> m_made;
  platform::Point m_pointer;
  bool m_pointerInside = false;
  platform::Point m_seenAt;     ///< the pointer in pixels of the view
  platform::Point m_pressedAt;  ///< where it was when the button went down, in pixels
  Modifiers m_modifiers;
  bool m_shownScrolling = false;
  bool m_spaceHeld = false;
  int m_depth = 0;
};

}  // namespace brisel::canvas
