#pragma once

#include <string>

#include "canvas/HitTest.h"
#include "canvas/InteractionState.h"
#include "canvas/Memory.h"
#include "canvas/Node.h"

namespace brisel::canvas {

/// The row of a box that was pressed, as it was then; nothing when no row was pressed, or one that
/// stands for nothing.
struct GrabbedRow {
  explicit GrabbedRow(const Hit& hit);
  explicit operator bool() const { return !tag.empty(); }

  std::string tag;
  std::string text;
  platform::Rect area;
};

/// The row of a box is dragged to another box, or to empty canvas: its text follows the pointer,
/// and the box that would take it is highlighted. Dropped where it came from nothing happens.
class RowDragState : public InteractionState {
 public:
  /// `start` is where the button went down, `before` what was selected then.
  RowDragState(Interaction& owner, Node& node, GrabbedRow row, platform::Point start,
               SelectionMemory before);

  void enter() override;
  void leave() override;
  void move(const PointerEvent& event) override;
  void release(const PointerEvent& event) override;
  void cancel() override;
  [[nodiscard]] bool needs(const Item& item) const override { return &item == m_node.get(); }
  [[nodiscard]] CursorShape cursor() const override;
  [[nodiscard]] std::string hint() const override;
  [[nodiscard]] bool scrollsAtEdge() const override { return true; }
  void paint(Painter& painter, double scale) const override;

 private:
  void follow(platform::Point at);
  /// Asks whether the row may be dropped there, once for each target.
  void aim(platform::Ref<Node> target);
  void damage() const;
  [[nodiscard]] platform::Rect ghost() const;
  [[nodiscard]] bool isHome() const { return m_target == m_node; }

  platform::Ref<Node> m_node;
  GrabbedRow m_row;
  platform::Size m_paper;
  platform::Point m_grip;  ///< from the upper left corner of the ghost to the pointer
  SelectionMemory m_before;
  platform::Point m_at;
  platform::Ref<Node> m_target;  ///< empty over empty canvas
  bool m_allowed = false;
};

}  // namespace brisel::canvas
