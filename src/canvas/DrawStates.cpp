#include "canvas/DrawStates.h"

#include <algorithm>
#include <cmath>

#include "canvas/DiagramControl.h"
#include "canvas/Interaction.h"
#include "canvas/NodePainter.h"
#include "canvas/Offer.h"
#include "canvas/Palette.h"

namespace brisel::canvas {

using platform::Point;
using platform::Rect;
using platform::Ref;
using platform::Size;

namespace {

constexpr double kLoopPixels = 40;  ///< so far from its start a drag means a line to its own box

/// What a length drawn along one axis becomes: no shorter than the least, in its own direction.
double atLeast(double drawn, double least) {
  return drawn < 0 ? std::min(drawn, -least) : std::max(drawn, least);
}

}  // namespace

DrawNodeState::DrawNodeState(Interaction& owner, Point start)
    : InteractionState(owner),
      m_start(wholeTwips(start)),
      m_ghost(platform::make<Node>("", DiagramControl::kNewNodeText, Rect{}, Node::kClassBox,
                                   owner.control().sectionsOfNewNodes())) {}

void DrawNodeState::leave() { show({}); }

void DrawNodeState::move(const PointerEvent& event) {
  const double threshold = m_owner.control().viewport().toTwips(kDragPixels);
  if (m_drawn || distance(event.at, m_start, m_start) >= threshold) show(drawnTo(event.at));
}

void DrawNodeState::release(const PointerEvent& event) {
  if (event.button != PointerButton::left) return;
  move(event);
  DiagramControl& control = m_owner.control();
  const Size usual = control.newNodeSize();
  const Rect drawn = m_drawn.value_or(Rect{m_start.x, m_start.y, usual.width, usual.height});
  m_owner.rest();
  m_owner.made(control.drawNode(drawn));
}

Rect DrawNodeState::drawnTo(Point to) const {
  const Font& font = m_owner.control().scene().titleFont();
  const Size text = textSize(DiagramControl::kNewNodeText, font);
  const Point way = wholeTwips(to) - m_start;
  const double width =
      atLeast(way.x, std::max(kMinimumWidth, std::ceil(text.width + 2 * kPadding)));
  const double sections = static_cast<double>(m_ghost->sectionCount()) * kEmptySection;
  const double height = atLeast(way.y, std::ceil(text.height + 2 * kTitlePadding + sections));
  return withinReach(Rect{m_start.x + std::min(0.0, width), m_start.y + std::min(0.0, height),
                          std::abs(width), std::abs(height)});
}

void DrawNodeState::show(std::optional<Rect> drawn) {
  Scene& scene = m_owner.control().scene();
  const Scene::Update update(&scene);
  if (m_drawn) scene.damageOverlay(*m_drawn);
  m_drawn = drawn;
  if (!m_drawn) return;
  m_ghost->bounds(*m_drawn);
  scene.damageOverlay(*m_drawn);
}

std::string DrawNodeState::hint() const { return "Release to make the class"; }

void DrawNodeState::paint(Painter& painter, double scale) const {
  if (!m_drawn) return;
  const Scene& scene = m_owner.control().scene();
  Detail detail;
  detail.pixelsPerTwip = scale;
  NodePainter(scene, painter, detail).paint(*m_ghost, *m_drawn);
  painter.fillRect(*m_drawn, palette::kAllowedFill);
  painter.drawFrame(*m_drawn, {.color = palette::kSelected, .width = 1 / scale});
}

DrawLinkState::DrawLinkState(Interaction& owner, Node& source, Point start, SelectionMemory before)
    : InteractionState(owner),
      m_source(&source),
      m_start(start),
      m_before(std::move(before)),
      m_preview(owner.control()) {}

void DrawLinkState::enter() {
  m_before.restore();
  aim(m_owner.pointer(), false);
}

Node* DrawLinkState::targetAt(Point at) {
  const Viewport& view = m_owner.control().viewport();
  Node* target = linkEndAt(m_owner.control(), at);
  const bool beside = target != m_source.get();
  m_leftZone |= beside || borderAt(m_owner.control(), at) != m_source.get();
  m_mayLoop |= beside || distance(at, m_start, m_start) >= view.toTwips(kLoopPixels);
  return beside || (m_leftZone && m_mayLoop) ? target : nullptr;
}

bool DrawLinkState::aim(Point at, bool asks) {
  DiagramControl& control = m_owner.control();
  Ref<Node> target = targetAt(at);
  if (target && (asks || target != m_target)) {
    const Ref<Node> source = m_source;
    std::string reason = refusalOf(control, "", *source, *target);
    if (!m_owner.isCurrent(*this)) return false;
    if (!target->scene()) target = nullptr;
    m_reason = std::move(reason);
  }
  m_target = target;
  if (!m_target) m_reason.clear();
  if (!m_leftZone) return true;
  if (m_target && m_reason.empty()) {
    m_preview.showBetween(*m_source, *m_target, *m_target);
  } else if (!m_target && m_source->bounds().contains(at)) {
    m_preview.hide();
  } else {
    m_preview.showLoose(*m_source, true, at, m_target.get());
  }
  return true;
}

void DrawLinkState::release(const PointerEvent& event) {
  if (event.button != PointerButton::left || !aim(event.at, true)) return;
  const Ref<Node> source = m_source;
  const Ref<Node> target = m_reason.empty() ? m_target : nullptr;
  m_owner.rest();
  m_owner.tellHint();  // before a dialog of who keeps the model
  if (target) m_owner.control().drawLink(*source, *target);
}

bool DrawLinkState::needs(const Item& item) const {
  return &item == m_source.get() || &item == m_target.get();
}

CursorShape DrawLinkState::cursor() const {
  return m_reason.empty() ? CursorShape::cross : CursorShape::forbidden;
}

std::string DrawLinkState::hint() const {
  if (!m_reason.empty()) return m_reason;
  return m_target ? "Release to draw the line" : "Drag to the other class";
}

}  // namespace brisel::canvas
