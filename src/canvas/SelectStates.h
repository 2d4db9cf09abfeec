#pragma once

#include "canvas/HitTest.h"
#include "canvas/InteractionState.h"
#include "canvas/Memory.h"
#include "canvas/RowDragState.h"

namespace brisel::canvas {

/// Nothing is going on: the pointer hovers, and a press begins a gesture.
class IdleState : public InteractionState {
 public:
  using InteractionState::InteractionState;

  void press(const PointerEvent& event) override;
  void move(const PointerEvent& event) override;
  void doubleClick(const PointerEvent& event) override;
  [[nodiscard]] bool isGesture() const override { return false; }
  [[nodiscard]] CursorShape cursor() const override;
  [[nodiscard]] std::string hint() const override;

 private:
  void pressLeft(const PointerEvent& event);
  /// A press on the offer began a node, or may become a link.
  bool pressToDraw(const PointerEvent& event, const std::optional<Hit>& hit);
};

/// A button is down on an item: its release is a click, moving on begins a drag.
class PressedState : public InteractionState {
 public:
  PressedState(Interaction& owner, const Hit& hit, const PointerEvent& event);

  void enter() override;
  void move(const PointerEvent& event) override;
  void release(const PointerEvent& event) override;
  void cancel() override;
  [[nodiscard]] bool needs(const Item& item) const override { return &item == m_item; }
  [[nodiscard]] CursorShape cursor() const override;

 private:
  void drag();
  /// The drag begins with the end of a line, one of its bends, or with a new line: it is done.
  bool dragOfLine();
  /// What is dragged is the row that was pressed, and not its box.
  [[nodiscard]] bool dragsRow() const;
  void click();

  Hit m_hit;
  GrabbedRow m_row;
  Item* m_item;
  platform::Ref<platform::DiagramItem> m_kept;
  PointerEvent m_start;
  SelectionMemory m_before;
  bool m_wasSelected;
  bool m_farMoved = false;
};

}  // namespace brisel::canvas
