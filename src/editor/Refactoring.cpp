// What the refactorings share: new classes, boxes refilled and placed.

#include "editor/Refactoring.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "controls/Row.h"
#include "platform/Error.h"

namespace brisel::editor {

using platform::DiagramNode;
using platform::Rect;

namespace {

constexpr platform::Point kFirstPlace{300, 300};

}  // namespace

CLSEditor::Refill::~Refill() {
  for (const ClassRef& shown : m_classes) {
    try {
      m_editor.refillAndFit(*shown);
    } catch (...) {  // the failure that led here is the one that is told
    }
  }
}

void CLSEditor::Refill::run() {
  for (const ClassRef& shown : std::exchange(m_classes, {})) m_editor.refillAndFit(*shown);
}

std::string CLSEditor::freshKey() { return m_generator->call("GetUUID").text(); }

/// Stands where it belongs at once, whatever fails afterwards; its size is not the last yet. A host
/// that is told of it may delete either class.
CLSEditor::ClassRef CLSEditor::newClass(Text name, Text intention, const repository::Class* beside,
                                        double gap) {
  if (beside) requireInModel(*beside);
  ClassRef made = CreateClass(freshKey(), name, intention, "", "", "public");
  if (!made) return {};
  requireInModel(*made);
  if (!beside) {
    place(*made->Node(), kFirstPlace, gap);
    return made;
  }
  requireInModel(*beside);
  placeBeside(*made->Node(), *beside->Node(), gap);
  return made;
}

CLSEditor::ClassRef CLSEditor::refactoredClass(Text key) {
  ClassRef shown = drawnClass(key);
  requireInModel(*shown);
  return shown;
}

void CLSEditor::requireInModel(const repository::Class& shown) {
  if (controls::isInRepository(*shown.clsObject())) return;
  throw platform::Error(platform::ErrorNumber::notFound,
                        "The class " + shown.name() + " has left the model");
}

/// What is selected is the result: the next command is meant for it.
void CLSEditor::presentResult(repository::Class& made) {
  present({made.Node()->key()});
  if (m_classControl->Visible()) showInPane(made);
}

void CLSEditor::refillAndFit(repository::Class& shown) {
  shown.Populate();
  shown.Node()->fitToText(true);
}

void CLSEditor::placeBeside(DiagramNode& box, const DiagramNode& other, double gap) {
  const Rect beside = other.bounds();
  place(box, {beside.right() + gap, beside.top}, gap);
}

/// At the corner, or at the next free place to its right, the gap behind what stands in the way.
void CLSEditor::place(DiagramNode& box, platform::Point corner, double gap) {
  Rect bounds = box.bounds();
  bounds.left = corner.x;
  bounds.top = corner.y;
  for (bool free = false; !free;) {
    free = true;
    double right = bounds.left;
    for (const auto& other : platform::each<DiagramNode>(m_diagram->nodesIn(bounds))) {
      if (&other == &box) continue;
      right = std::max(right, other.bounds().right());
      free = false;
    }
    if (!free) bounds.left = right + gap;
  }
  box.bounds(bounds);
}

/// A relationship between a class and what was drawn out of it, which stands to its right.
void CLSEditor::noteExtracted(repository::Association& relationship) {
  ++m_relationshipsExtracted;
  relationship.Populate();
  leadAround(*relationship.link());
}

/// Leads a line to a box further right over or under the boxes between, where it would run through
/// them.
void CLSEditor::leadAround(platform::DiagramLink& line) {
  const Rect from = line.source()->bounds();
  const Rect to = line.target()->bounds();
  const auto [low, high] = std::minmax({from.center().y, to.center().y});
  const Rect between{from.right(), low, to.left - from.right(), high - low + 1};
  if (m_diagram->nodesIn(between)->Count() == 0) return;
  const std::optional<double> over = clearLevel(line, true);
  const std::optional<double> under = clearLevel(line, false);
  if (!over && !under) return;
  const bool isOverNearer = over && (!under || from.top - *over <= *under - from.bottom());
  const double level = isOverNearer ? *over : *under;
  line.ExtraPoints()->Add(from.center().x, level);
  line.ExtraPoints()->Add(to.center().x, level);
}

/// Where a line from box to box, up or down and over and back, is clear of all others; nothing
/// where there are too many in the way.
std::optional<double> CLSEditor::clearLevel(const platform::DiagramLink& line, bool above) const {
  constexpr double kClearance = 225;
  constexpr int kTries = 8;
  const auto source = line.source();
  const auto target = line.target();
  const Rect from = source->bounds();
  const Rect to = target->bounds();
  double edge = above ? std::min(from.top, to.top) : std::max(from.bottom(), to.bottom());
  for (int i = 0; i < kTries; ++i) {
    const double level = above ? edge - kClearance : edge + kClearance;
    const auto leg = [&](const Rect& box) {
      const double end = above ? box.top : box.bottom();
      return Rect{box.center().x, std::min(end, level), 0, std::abs(end - level)};
    };
    const Rect across{from.center().x, level, to.center().x - from.center().x, 0};
    bool isFree = true;
    for (const Rect& part : {leg(from), across, leg(to)}) {
      const auto boxes = m_diagram->nodesIn(part.grownBy(kClearance / 2));
      for (const auto& box : platform::each<DiagramNode>(boxes)) {
        if (&box == source || &box == target) continue;
        isFree = false;
        edge = above ? std::min(edge, box.bounds().top) : std::max(edge, box.bounds().bottom());
      }
    }
    if (isFree) return level;
  }
  return {};
}

}  // namespace brisel::editor
