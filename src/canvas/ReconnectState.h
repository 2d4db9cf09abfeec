#pragma once

#include <string>

#include "canvas/InteractionState.h"
#include "canvas/Link.h"
#include "canvas/LinkPreview.h"

namespace brisel::canvas {

/// An end of a link is dragged to another node. The link stays as it is: where the end was dropped
/// is told, and who keeps the model reattaches it.
class ReconnectState : public InteractionState {
 public:
  ReconnectState(Interaction& owner, Link& link, bool atSource);

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
  /// As DrawLinkState's: asks about another node than before, and always with `asks`; false when
  /// the gesture ended with the answer.
  bool aim(platform::Point at, bool asks);
  [[nodiscard]] Node& present() const;  ///< where the dragged end is
  [[nodiscard]] Node& fixed() const;    ///< where the other end is

  platform::Ref<Link> m_link;
  bool m_atSource;
  platform::Ref<Node> m_target;  ///< another node than the present one, under the pointer
  LinkPreview m_preview;
  std::string m_reason;  ///< why it is refused
};

}  // namespace brisel::canvas
