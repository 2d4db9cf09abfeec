#include "canvas/ReconnectState.h"

#include "canvas/DiagramControl.h"
#include "canvas/Interaction.h"
#include "canvas/Offer.h"

namespace brisel::canvas {

using platform::Point;
using platform::Ref;

ReconnectState::ReconnectState(Interaction& owner, Link& link, bool atSource)
    : InteractionState(owner),
      m_link(&link),
      m_atSource(atSource),
      m_preview(owner.control(), link) {}

Node& ReconnectState::present() const {
  return m_atSource ? m_link->sourceNode() : m_link->targetNode();
}

Node& ReconnectState::fixed() const {
  return m_atSource ? m_link->targetNode() : m_link->sourceNode();
}

void ReconnectState::enter() { aim(m_owner.pointer(), false); }

bool ReconnectState::aim(Point at, bool asks) {
  Node* const under = linkEndAt(m_owner.control(), at);
  if (under == &present()) {
    m_target = nullptr;
    m_reason.clear();
    m_preview.hide();
    return true;
  }
  Ref<Node> target = under;
  if (target && (asks || target != m_target)) {
    const Ref<Node> source = m_atSource ? target : Ref<Node>(&fixed());
    const Ref<Node> end = m_atSource ? Ref<Node>(&fixed()) : target;
    std::string reason = refusalOf(m_owner.control(), m_link->itemKey(), *source, *end);
    if (!m_owner.isCurrent(*this)) return false;
    if (!target->scene()) target = nullptr;
    m_reason = std::move(reason);
  }
  m_target = target;
  if (!m_target) m_reason.clear();
  if (!m_target || !m_reason.empty()) {
    m_preview.showLoose(fixed(), !m_atSource, at, m_target.get());
  } else {
    m_preview.showBetween(m_atSource ? *m_target : fixed(), m_atSource ? fixed() : *m_target,
                          *m_target);
  }
  return true;
}

void ReconnectState::release(const PointerEvent& event) {
  if (event.button != PointerButton::left || !aim(event.at, true)) return;
  const Ref<Link> link = m_link;
  const Ref<Node> target = m_reason.empty() ? m_target : nullptr;
  const bool atSource = m_atSource;
  m_owner.rest();
  if (target) m_owner.control().LinkEndDropped(link->key(), target->key(), atSource);
}

bool ReconnectState::needs(const Item& item) const {
  return &item == m_link.get() || &item == &fixed() || &item == &present() ||
         &item == m_target.get();
}

CursorShape ReconnectState::cursor() const {
  return m_reason.empty() ? CursorShape::pointing : CursorShape::forbidden;
}

std::string ReconnectState::hint() const {
  if (!m_reason.empty()) return m_reason;
  return m_target ? "Release to join the line to this class" : "Drag to another class";
}

}  // namespace brisel::canvas
