#include "support/CanvasChecks.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <sstream>
#include <vector>

#include "canvas/DiagramControl.h"

namespace brisel::test {

using canvas::Item;
using canvas::Link;
using canvas::Node;
using canvas::Scene;
using platform::Point;
using platform::Rect;

namespace {

/// Rounding of places that lie as far away as anything may.
constexpr double kTolerance = 0.01;

class Checker {
 public:
  explicit Checker(const Scene& scene) : m_scene(scene) {}

  std::string run() {
    std::set<const Item*> present;
    std::size_t ends = 0;
    Rect all;
    for (Node& node : m_scene.nodes()) {
      present.insert(&node);
      ends += node.attached().size();
      all = all.united(node.extent());
      checkNode(node);
    }
    for (Link& link : m_scene.links()) {
      present.insert(&link);
      all = all.united(link.extent());
      checkLink(link);
    }
    const Rect extent = m_scene.extent();
    require(near(extent.left, all.left) && near(extent.top, all.top) &&
                near(extent.right(), all.right()) && near(extent.bottom(), all.bottom()),
            "its extent is that of its items", "scene");
    require(ends == 2 * m_scene.links().size(), "each link stands at its two ends", "scene");
    checkListed(m_scene.selection().selectedItems(), present, &Item::isSelected, "selected");
    checkListed(m_scene.selection().markedItems(), present, &Item::isMarked, "marked");
    return m_wrong.str();
  }

 private:
  void require(bool holds, const char* what, const std::string& where) {
    if (!holds) m_wrong << where << ": not so that " << what << '\n';
  }

  static bool near(double a, double b) { return std::abs(a - b) <= kTolerance; }

  void checkItem(const Item& item) {
    require(item.scene() == &m_scene, "it knows its scene", item.itemKey());
    const Rect extent = item.extent();
    require(std::isfinite(extent.left + extent.top + extent.width + extent.height),
            "its extent is finite", item.itemKey());
  }

  void checkFound(const Item& item, Point at) {
    std::vector<Item*> found;
    m_scene.collect({at.x, at.y, 0, 0}, found);
    require(std::count(found.begin(), found.end(), &item) == 1, "it is found where it lies",
            item.itemKey());
  }

  void checkNode(const Node& node) {
    checkItem(node);
    checkFound(node, node.bounds().center());
    require(m_scene.node(node.key()) == &node, "its key finds it", node.key());
    const Rect box = node.bounds();
    require(box.width >= 0 && box.height >= 0, "its size is not negative", node.key());
    require(!node.fitsText() || box.size() == node.neededSize(), "it fits its text", node.key());
    for (const Node::Attached& end : node.attached()) {
      const Node& there = end.atSource ? end.link->sourceNode() : end.link->targetNode();
      require(&there == &node && end.link->scene() == &m_scene, "its links end here", node.key());
    }
  }

  void checkLink(const Link& link) {
    checkItem(link);
    require(m_scene.link(link.key()) == &link, "its key finds it", link.key());
    require(m_scene.node(link.sourceNode().key()) == &link.sourceNode() &&
                m_scene.node(link.targetNode().key()) == &link.targetNode(),
            "its ends stand on the canvas", link.key());
    const auto& points = link.points();
    require(points.size() >= 2, "it has two ends", link.key());
    for (std::size_t i = 1; i < points.size(); ++i) {
      checkFound(link, points[i - 1]);
      checkFound(link, points[i - 1] + (points[i] - points[i - 1]) * (1.0 / 3));
    }
    for (const Rect& text : {link.labelArea(), link.beginTextArea(), link.endTextArea()}) {
      if (!text.isEmpty()) checkFound(link, text.center());
    }
    require(onBorder(link.sourceNode().bounds(), points.front()), "it begins at its box",
            link.key());
    require(onBorder(link.targetNode().bounds(), points.back()), "it ends at its box", link.key());
    require(link.bends().empty() || points.size() == link.bends().size() + 2,
            "its points are its ends and bends", link.key());
  }

  static bool onBorder(const Rect& box, Point p) {
    if (!box.grownBy(kTolerance).contains(p)) return false;
    return std::min({std::abs(p.x - box.left), std::abs(p.x - box.right()), std::abs(p.y - box.top),
                     std::abs(p.y - box.bottom())}) < kTolerance;
  }

  void checkListed(const std::vector<Item*>& list, const std::set<const Item*>& present,
                   bool (Item::*is)() const, const char* what) {
    const std::set<const Item*> once(list.begin(), list.end());
    require(once.size() == list.size(), "items are listed once", what);
    for (const Item* item : once) require(present.contains(item), "the list is of items", what);
    for (const Item* item : present) {
      require((item->*is)() == once.contains(item), "item and list agree", item->itemKey());
    }
  }

  const Scene& m_scene;
  std::ostringstream m_wrong;
};

void write(std::ostream& out, const Rect& r) {
  out << ' ' << r.left << ',' << r.top << ' ' << r.width << 'x' << r.height;
}

}  // namespace

std::string checkInvariants(const canvas::DiagramControl& control) {
  return Checker(control.scene()).run();
}

std::string describe(const canvas::DiagramControl& control) {
  std::ostringstream out;
  out.precision(12);
  const Point scroll = control.viewport().scroll();
  out << "view " << control.getZoom() << " % at " << scroll.x << ',' << scroll.y << '\n';
  for (Node& node : control.scene().nodes()) {
    out << node.key() << " '" << node.text() << '\'';
    write(out, node.bounds());
    out << (node.fitsText() ? " fitted" : "") << (node.selected() ? " selected" : "") << '\n';
  }
  for (Link& link : control.scene().links()) {
    out << link.key() << " '" << link.text() << "' " << link.sourceNode().key() << "->"
        << link.targetNode().key();
    for (const Point p : link.points()) out << ' ' << p.x << ',' << p.y;
    out << (link.selected() ? " selected" : "") << '\n';
  }
  return out.str();
}

}  // namespace brisel::test
