#include "canvas/RowDragState.h"

#include <algorithm>

#include "canvas/DiagramControl.h"
#include "canvas/Interaction.h"
#include "canvas/NodePainter.h"
#include "canvas/Painter.h"
#include "canvas/Palette.h"

namespace brisel::canvas {

using platform::Point;
using platform::Rect;
using platform::Ref;

namespace {

constexpr double kTargetFramePixels = 2;

}  // namespace

GrabbedRow::GrabbedRow(const Hit& hit) {
  if (hit.part != Hit::Part::row) return;
  const Row& row = hit.node->section(hit.section).rows()[hit.index];
  tag = row.tag;
  text = row.text;
  const Rect box = hit.node->bounds();
  const double height = hit.node->rowHeight();
  const double top = hit.node->firstRow(hit.section) + static_cast<double>(hit.index) * height;
  area = {box.left, top, box.width, std::min(height, box.bottom() - top)};
}

RowDragState::RowDragState(Interaction& owner, Node& node, GrabbedRow row, Point start,
                           SelectionMemory before)
    : InteractionState(owner),
      m_node(&node),
      m_row(std::move(row)),
      m_before(std::move(before)),
      m_at(start),
      m_target(&node) {
  const platform::Size text = textSize(m_row.text, owner.control().scene().textFont());
  m_paper = {text.width + 2 * kPadding, text.height};
  const Point grip = start - m_row.area.topLeft();
  // Who grabs a short row beside its text still holds the paper.
  m_grip = {std::clamp(grip.x, kPadding, m_paper.width - kPadding), grip.y};
}

void RowDragState::enter() { follow(m_owner.pointer()); }

void RowDragState::leave() { damage(); }

void RowDragState::move(const PointerEvent& event) { follow(event.at); }

void RowDragState::release(const PointerEvent& event) {
  if (event.button != PointerButton::left) return;
  follow(event.at);
  const bool drops = m_allowed && !isHome();
  m_owner.rest();
  m_owner.tellHint();
  if (!drops || !m_node->scene()) return;
  m_owner.control().ItemDropped(m_node->key(), m_row.tag, event.at.x, event.at.y);
}

void RowDragState::cancel() { m_before.restore(); }

CursorShape RowDragState::cursor() const {
  return isHome() || m_allowed ? CursorShape::closedHand : CursorShape::forbidden;
}

std::string RowDragState::hint() const {
  if (isHome()) return "Drag to another class";
  if (!m_allowed) return "This cannot be dropped here";
  return m_target ? "Release to move it to this class" : "Release to make a class of it";
}

void RowDragState::follow(Point at) {
  DiagramControl& control = m_owner.control();
  const Scene::Update update(&control.scene());
  damage();
  m_at = at;
  const auto below = control.nodeAt(at);
  aim(static_cast<Node*>(below.get()));
  damage();
}

void RowDragState::aim(Ref<Node> target) {
  if (target == m_target) return;
  m_target = std::move(target);
  m_allowed = !isHome() && m_owner.control().canDrop(*m_node, m_row.tag, m_target.get());
}

Rect RowDragState::ghost() const {
  const Point corner = m_at - m_grip;
  return {corner.x, corner.y, m_paper.width, m_paper.height};
}

void RowDragState::damage() const {
  Scene& scene = m_owner.control().scene();
  scene.damageOverlay(m_row.area);
  scene.damageOverlay(ghost());
  if (m_target) scene.damageOverlay(m_target->bounds());
}

void RowDragState::paint(Painter& painter, double scale) const {
  const Pen accent{.color = palette::kSelected, .width = 1 / scale};
  painter.fillRect(m_row.area, palette::kRubberBand);
  if (m_target && m_allowed && m_target->scene()) {
    const Rect box = m_target->bounds();
    painter.fillRect(box, palette::kDropTarget);
    painter.drawFrame(box.grownBy(kTargetFramePixels / scale),
                      {.color = palette::kSelected, .width = kTargetFramePixels / scale});
  }
  const Rect paper = ghost();
  const Font& font = m_owner.control().scene().textFont();
  painter.fillRect(paper, palette::kGhost);
  painter.drawFrame(paper, accent);
  painter.drawText({paper.left + kPadding, baselineOf(paper.top, font)}, m_row.text,
                   {.size = font.height(), .color = palette::kText});
}

}  // namespace brisel::canvas
