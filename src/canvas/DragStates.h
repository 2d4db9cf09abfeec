#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "canvas/Guides.h"
#include "canvas/Handles.h"
#include "canvas/InteractionState.h"
#include "canvas/Memory.h"

namespace brisel::canvas {

/// Boxes follow the pointer, and the lines follow them. They are drawn to where they are aligned
/// with their neighbours, unless Alt is held.
class MoveState : public InteractionState {
 public:
  /// `before` is what was selected when the button went down.
  MoveState(Interaction& owner, platform::Point start, SelectionMemory before);

  void enter() override;
  void leave() override { m_guides.hide(); }
  void move(const PointerEvent& event) override;
  void release(const PointerEvent& event) override;
  void cancel() override;
  [[nodiscard]] bool needs(const Item& item) const override { return m_items.contains(item); }
  [[nodiscard]] CursorShape cursor() const override { return CursorShape::move; }
  [[nodiscard]] bool scrollsAtEdge() const override { return true; }
  void paint(Painter& painter, double scale) const override { m_guides.paint(painter, scale); }

 private:
  platform::Point m_start;
  SelectionMemory m_before;
  MovingItems m_items;
  Guides m_guides;
  bool m_free = false;  ///< Alt is held
};

/// A handle of a box follows the pointer; the sides that it pulls are drawn to alignments as boxes
/// are that are moved.
class ResizeState : public InteractionState {
 public:
  ResizeState(Interaction& owner, Node& node, Handle handle, platform::Point start);

  void leave() override { m_guides.hide(); }
  void move(const PointerEvent& event) override;
  void release(const PointerEvent& event) override;
  void cancel() override;
  [[nodiscard]] bool needs(const Item& item) const override { return &item == m_node.get(); }
  [[nodiscard]] CursorShape cursor() const override;
  [[nodiscard]] bool scrollsAtEdge() const override { return m_moved; }
  void paint(Painter& painter, double scale) const override { m_guides.paint(painter, scale); }

 private:
  void pull(platform::Point to);

  platform::Ref<Node> m_node;
  Handle m_handle;
  platform::Point m_start;
  platform::Point m_offset;  ///< from the pointer to the middle of the handle
  platform::Rect m_before;
  bool m_fitted;
  FollowingLines m_lines;
  bool m_moved = false;
  CursorShape m_cursor;
  Guides m_guides;
  bool m_free = false;  ///< Alt is held
};

/// A bend of a line follows the pointer; one dropped where the line would run without it goes away.
class BendState : public InteractionState {
 public:
  /// With `isNew` the bend is made at the first move, otherwise it is there already.
  BendState(Interaction& owner, Link& link, std::size_t bend, bool isNew, platform::Point start);

  void enter() override;
  void move(const PointerEvent& event) override;
  void release(const PointerEvent& event) override;
  void cancel() override;
  [[nodiscard]] bool needs(const Item& item) const override { return &item == m_link.get(); }
  [[nodiscard]] CursorShape cursor() const override { return CursorShape::pointing; }
  [[nodiscard]] bool scrollsAtEdge() const override { return m_moved; }

 private:
  platform::Ref<Link> m_link;
  std::size_t m_bend;
  platform::Point m_start;
  bool m_moved;
  std::vector<platform::Point> m_before;
  std::vector<platform::Point> m_bends;  ///< while it moves
};

/// A rectangle is drawn over empty canvas; what lies wholly in it is selected.
class RubberBandState : public InteractionState {
 public:
  RubberBandState(Interaction& owner, const PointerEvent& event);

  void enter() override;
  void leave() override;
  void move(const PointerEvent& event) override;
  void release(const PointerEvent& event) override;
  void cancel() override;
  [[nodiscard]] CursorShape cursor() const override { return CursorShape::cross; }
  [[nodiscard]] bool scrollsAtEdge() const override { return m_band.has_value(); }
  void paint(Painter& painter, double scale) const override;

 private:
  void draw(platform::Point to);
  void select() const;

  platform::Point m_start;
  bool m_adds;
  SelectionMemory m_before;
  std::optional<platform::Rect> m_band;
};

/// The canvas follows the pointer.
class PanState : public InteractionState {
 public:
  PanState(Interaction& owner, const PointerEvent& event);

  void move(const PointerEvent& event) override;
  void release(const PointerEvent& event) override;
  void cancel() override;
  [[nodiscard]] CursorShape cursor() const override { return CursorShape::closedHand; }

 private:
  PointerEvent m_start;
  platform::Point m_scroll;
};

}  // namespace brisel::canvas
