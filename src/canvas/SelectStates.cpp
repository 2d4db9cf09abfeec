#include "canvas/SelectStates.h"

#include <cmath>

#include "canvas/Detail.h"
#include "canvas/DiagramControl.h"
#include "canvas/DragStates.h"
#include "canvas/DrawStates.h"
#include "canvas/Interaction.h"
#include "canvas/Offer.h"
#include "canvas/ReconnectState.h"

namespace brisel::canvas {

using platform::Point;

namespace {

Item& itemOf(const Hit& hit) {
  return hit.node ? static_cast<Item&>(*hit.node) : static_cast<Item&>(*hit.link);
}

/// The bend that a hit on a point of a line means; nothing for the ends and for computed points.
std::optional<std::size_t> bendOf(const Hit& hit) {
  if (hit.part != Hit::Part::point || hit.index == 0) return {};
  const std::size_t bend = hit.index - 1;
  if (bend + 2 >= hit.link->points().size()) return {};
  return bend;
}

bool extendsSelection(const PointerEvent& event) {
  return event.modifiers.ctrl || event.modifiers.shift;
}

}  // namespace

void IdleState::press(const PointerEvent& event) {
  const bool left = event.button == PointerButton::left;
  if (event.button == PointerButton::middle || (left && m_owner.isSpaceHeld())) {
    m_owner.change(std::make_unique<PanState>(m_owner, event));
  } else if (left) {
    pressLeft(event);
  } else if (event.button == PointerButton::right) {
    if (const auto hit = m_owner.hitAt(event.at)) {
      m_owner.change(std::make_unique<PressedState>(m_owner, *hit, event));
    }
  }
}

void IdleState::pressLeft(const PointerEvent& event) {
  const auto hit = m_owner.hitAt(event.at);
  if (pressToDraw(event, hit)) return;
  if (!hit) {
    m_owner.change(std::make_unique<RubberBandState>(m_owner, event));
  } else if (hit->part == Hit::Part::handle) {
    m_owner.change(std::make_unique<ResizeState>(m_owner, *hit->node, hit->handle, event.at));
  } else {
    m_owner.change(std::make_unique<PressedState>(m_owner, *hit, event));
  }
}

bool IdleState::pressToDraw(const PointerEvent& event, const std::optional<Hit>& hit) {
  if (extendsSelection(event)) return false;
  const Offer offer = offerAt(m_owner.control(), hit, event.at);
  if (offer.kind == Offer::Kind::drawNode) {
    m_owner.change(std::make_unique<DrawNodeState>(m_owner, event.at));
  } else if (offer.kind == Offer::Kind::drawLink) {
    m_owner.change(std::make_unique<PressedState>(m_owner, *offer.hit, event));
  } else {
    return false;
  }
  return true;
}

void IdleState::move(const PointerEvent& event) { m_owner.hover(m_owner.hitAt(event.at)); }

void IdleState::doubleClick(const PointerEvent& event) {
  const auto hit = m_owner.hitAt(event.at);
  if (!hit || m_owner.wasJustMade(hit->node)) return;
  const auto bend = bendOf(*hit);
  DiagramControl& control = m_owner.control();
  if (bend && *bend < hit->link->bends().size()) {
    hit->link->removeBend(*bend);
  } else if (hit->link) {
    control.LinkOpened(hit->link->key());
  } else {
    control.NodeOpened(hit->node->key());
  }
}

std::string IdleState::hint() const { return m_owner.hoverHint(); }

CursorShape IdleState::cursor() const {
  return m_owner.isSpaceHeld() ? CursorShape::openHand : m_owner.hoverCursor();
}

PressedState::PressedState(Interaction& owner, const Hit& hit, const PointerEvent& event)
    : InteractionState(owner),
      m_hit(hit),
      m_row(hit),
      m_item(&itemOf(hit)),
      m_kept(&m_item->object()),
      m_start(event),
      m_before(owner.control().scene()),
      m_wasSelected(m_item->isSelected()) {}

void PressedState::enter() {
  DiagramControl& control = m_owner.control();
  const bool extends = extendsSelection(m_start);
  if (!m_wasSelected && extends && m_start.button == PointerButton::left) {
    control.selection().select(*m_item, true);
  } else if (!m_wasSelected) {
    control.selection().selectOnly(*m_item);
  }
  if (m_hit.node && m_start.button == PointerButton::left) control.NodePressed(m_kept->key());
}

void PressedState::move(const PointerEvent& event) {
  const Point way = event.at - m_start.at;
  const double threshold = m_owner.control().viewport().toTwips(kDragPixels);
  if (m_farMoved || std::hypot(way.x, way.y) < threshold) return;
  m_farMoved = true;
  if (m_start.button != PointerButton::left) return;
  drag();
}

void PressedState::drag() {
  if (dragOfLine()) return;
  DiagramControl& control = m_owner.control();
  const bool alone = control.selection().size() == 1;
  if (m_hit.link && alone) {
    // Only a line that was selected before: a near miss of a box must not bend lines.
    if (m_wasSelected && m_hit.onLine) {
      m_owner.change(
          std::make_unique<BendState>(m_owner, *m_hit.link, m_hit.index, true, m_start.at));
    }
    return;
  }
  if (dragsRow()) {
    m_owner.change(std::make_unique<RowDragState>(m_owner, *m_hit.node, std::move(m_row),
                                                  m_start.at, m_before));
    return;
  }
  if (control.selection().nodes().empty()) return;
  m_owner.change(std::make_unique<MoveState>(m_owner, m_start.at, m_before));
}

bool PressedState::dragOfLine() {
  const bool onPoint = m_hit.part == Hit::Part::point;
  if (const auto bend = onPoint ? bendOf(m_hit) : std::nullopt) {
    m_owner.change(std::make_unique<BendState>(m_owner, *m_hit.link, *bend, false, m_start.at));
  } else if (onPoint) {
    m_owner.change(std::make_unique<ReconnectState>(m_owner, *m_hit.link, m_hit.index == 0));
  } else if (m_hit.node && m_owner.control().canDrawLink() && !extendsSelection(m_start) &&
             borderAt(m_owner.control(), m_start.at) == m_hit.node) {
    m_owner.change(std::make_unique<DrawLinkState>(m_owner, *m_hit.node, m_start.at, m_before));
  } else {
    return false;
  }
  return true;
}

bool PressedState::dragsRow() const {
  const DiagramControl& control = m_owner.control();
  if (!m_row || extendsSelection(m_start)) return false;
  // Of several selected boxes all are moved, from wherever; and nobody aims at a row too small to
  // be read.
  const Detail detail{.pixelsPerTwip = control.viewport().pixelsPerTwip()};
  return control.selection().size() == 1 && detail.readable(control.scene().textFont().height());
}

void PressedState::release(const PointerEvent& event) {
  if (event.button != m_start.button) return;
  m_owner.rest();
  if (!m_farMoved) click();
}

void PressedState::click() {
  DiagramControl& control = m_owner.control();
  const std::string key = m_kept->key();
  const bool isLink = m_hit.link != nullptr;
  if (m_start.button == PointerButton::right) {
    (isLink ? control.LinkRClicked : control.NodeRClicked)(key);
    return;
  }
  if (extendsSelection(m_start)) {
    if (m_wasSelected) control.selection().select(*m_item, false);
  } else {
    control.selection().selectOnly(*m_item);
  }
  (isLink ? control.LinkClicked : control.NodeClicked)(key);
}

void PressedState::cancel() { m_before.restore(); }

CursorShape PressedState::cursor() const { return m_owner.hoverCursor(); }

}  // namespace brisel::canvas
