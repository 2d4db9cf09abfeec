#pragma once

#include <optional>
#include <string>

#include "canvas/InteractionState.h"
#include "canvas/LinkPreview.h"
#include "canvas/Memory.h"
#include "canvas/Node.h"

namespace brisel::canvas {

/// A node is made on empty canvas: by a click at its usual size, by a drag as large as was drawn.
/// Nothing is on the canvas before the button goes up.
class DrawNodeState : public InteractionState {
 public:
  DrawNodeState(Interaction& owner, platform::Point start);

  void leave() override;
  void move(const PointerEvent& event) override;
  void release(const PointerEvent& event) override;
  [[nodiscard]] CursorShape cursor() const override { return CursorShape::cross; }
  [[nodiscard]] std::string hint() const override;
  void paint(Painter& painter, double scale) const override;
  [[nodiscard]] bool scrollsAtEdge() const override { return true; }

 private:
  void show(std::optional<platform::Rect> drawn);
  [[nodiscard]] platform::Rect drawnTo(platform::Point to) const;

  platform::Point m_start;
  platform::Ref<Node> m_ghost;  ///< stands on no canvas
  std::optional<platform::Rect> m_drawn;
};

/// A link is drawn from the border of a node to another node, or back to the same.
class DrawLinkState : public InteractionState {
 public:
  /// `before` is what was selected when the button went down: drawing selects nothing until the
  /// link is there.
  DrawLinkState(Interaction& owner, Node& source, platform::Point start, SelectionMemory before);

  void enter() override;
  void leave() override { m_preview.hide(); }
  void move(const PointerEvent& event) override { aim(event.at, false); }
  void release(const PointerEvent& event) override;
  [[nodiscard]] bool needs(const Item& item) const override;
  [[nodiscard]] CursorShape cursor() const override;
  [[nodiscard]] std::string hint() const override;
  void paint(Painter& painter, double scale) const override { m_preview.paint(painter, scale); }
  [[nodiscard]] bool scrollsAtEdge() const override { return true; }

 private:
  /// Finds the node under the pointer and asks whether it may be the target: anew for another one
  /// than before, and always with `asks`. False when the gesture ended with the answer.
  bool aim(platform::Point at, bool asks);
  [[nodiscard]] Node* targetAt(platform::Point at);

  platform::Ref<Node> m_source;
  platform::Ref<Node> m_target;  ///< nothing over empty canvas, and over the source before it left
  platform::Point m_start;
  SelectionMemory m_before;
  LinkPreview m_preview;
  std::string m_reason;     ///< why the target is refused
  bool m_leftZone = false;  ///< the pointer was beyond the border that it began at
  bool m_mayLoop = false;   ///< it went so far that a return to the source is meant
};

}  // namespace brisel::canvas
