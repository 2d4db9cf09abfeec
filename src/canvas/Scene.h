#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "canvas/GridIndex.h"
#include "canvas/ItemList.h"
#include "canvas/Labels.h"
#include "canvas/Link.h"
#include "canvas/Metrics.h"
#include "canvas/Node.h"
#include "canvas/Selection.h"
#include "platform/Event.h"
#include "platform/Geometry.h"

namespace brisel::canvas {

/// What stands on the canvas: boxes and lines with their keys, their order and where they lie.
/// Every change is told to the views as the area to be painted again. Owned by the control.
///
/// Always true: keys are unique among boxes and among lines; both ends of a line stand in the
/// scene; each item is found where it is painted.
class Scene {
 public:
  Scene();
  ~Scene();
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  // What painting reads.
  /// Boxes and lines that touch the area, from the lowest to the topmost: boxes in the order of
  /// their creation, then lines in theirs.
  void itemsIn(const platform::Rect& area, std::vector<const Node*>& nodes,
               std::vector<const Link*>& links) const;
  /// In the order of creation, which is from the lowest to the topmost.
  [[nodiscard]] const ItemList<Node>& nodes() const { return m_nodes; }
  [[nodiscard]] const ItemList<Link>& links() const { return m_links; }
  /// Around all extents; empty when nothing is there. Costs nothing.
  [[nodiscard]] platform::Rect extent() const;
  [[nodiscard]] const Font& titleFont() const { return m_titleFont; }
  /// Of rows, labels and end texts.
  [[nodiscard]] const Font& textFont() const { return m_textFont; }
  /// An RGB colour of the platform's numbering (red in the lowest byte) or a system colour.
  [[nodiscard]] std::int64_t backColor() const { return m_backColor; }
  /// Changes with every change of what is seen: a kept picture of the same number is still good.
  [[nodiscard]] std::uint64_t revision() const { return m_revision; }
  /// Changes with every change of a box's bounds or a line's bends, and with every item that comes
  /// or goes.
  [[nodiscard]] std::uint64_t geometryRevision() const { return m_geometryRevision; }
  /// The areas in twips whose picture changed, raised once after each change, or at the end of the
  /// outermost update. Handles of selected items reach kHandlePixels beyond them.
  platform::Event<const std::vector<platform::Rect>&> Damaged;

  [[nodiscard]] Node* node(std::string_view key) const;
  [[nodiscard]] Link* link(std::string_view key) const;

  [[nodiscard]] Selection& selection() { return m_selection; }
  [[nodiscard]] const Selection& selection() const { return m_selection; }

  void titleFont(Font font);
  void textFont(Font font);
  void backColor(std::int64_t color);

  /// The items of which a part touches the area, in no particular order.
  void collect(const platform::Rect& area, std::vector<Item*>& found) const;

  /// Nothing when the key is in use.
  Node* addNode(platform::Ref<Node> node);
  Link* addLink(platform::Ref<Link> link);
  /// The item must be in this scene. A box must have no links any more.
  void remove(Node& node);
  void remove(Link& link);
  void clear();

  void beginUpdate() { ++m_updates; }
  /// Gathers changes while it lives.
  class Update {
   public:
    explicit Update(Scene* scene) : m_scene(scene) {
      if (m_scene) m_scene->beginUpdate();
    }
    ~Update() {
      if (m_scene) m_scene->endUpdate();
    }
    Update(const Update&) = delete;
    Update& operator=(const Update&) = delete;

   private:
    Scene* m_scene;
  };
  /// An endUpdate without its begin does nothing.
  void endUpdate();
  /// Everything is to be painted again.
  void damageAll();
  void damage(const platform::Rect& area);
  /// Something over the items changed there (a rubber band): they themselves are as they were.
  void damageOverlay(const platform::Rect& area);

 private:
  friend class Labels;
  friend class Node;
  friend class Link;
  friend class Selection;

  /// The item changed its look or its place: it will be found at its new extent, and both the old
  /// and the new one will be painted.
  void touched(Item& item);
  /// Brings index, extents and labels up to the changes.
  void settle() const;
  void enter(Item& item) const;
  void enterMoved() const;
  void tell();
  void fontsChanged();
  void adopt(Item& item);
  void forget(Item& item);
  static void addDamage(std::vector<platform::Rect>& damage, const platform::Rect& area);

  /// The links that join two boxes, in either direction, in the order of their creation.
  struct Pair {
    const Node* a;
    const Node* b;
    friend bool operator==(const Pair&, const Pair&) = default;
  };
  struct PairHash {
    std::size_t operator()(const Pair& pair) const;
  };
  [[nodiscard]] static Pair pairOf(const Link& link);
  /// Enters the link at both of its boxes and in their pair; or takes it out of there.
  void attach(Link& link);
  void detach(Link& link);
  static void attachEnd(Link& link, bool atSource);
  static void detachEnd(Link& link, bool atSource);
  /// The bends or the company of a link changed: straight lines of the pair spread anew.
  void pairChanged(const Link& link);

  ItemList<Node> m_nodes;
  ItemList<Link> m_links;
  std::unordered_map<std::string_view, Node*> m_nodeByKey;
  std::unordered_map<std::string_view, Link*> m_linkByKey;
  std::unordered_map<Pair, std::vector<Link*>, PairHash> m_pairs;
  Selection m_selection{*this};
  std::uint64_t m_nextOrder = 1;
  Font m_titleFont{"Courier New", 15};
  Font m_textFont{"Courier New", 10};
  std::int64_t m_backColor = 0xFFFFFF;
  int m_updates = 0;
  std::uint64_t m_revision = 1;
  std::uint64_t m_geometryRevision = 1;
  mutable GridIndex m_index;
  mutable Labels m_labels{*this};
  mutable bool m_settling = false;
  mutable ExtentTree m_extents;
  mutable std::vector<platform::Rect> m_oldParts, m_newParts;  ///< room for `settle`
  mutable std::vector<Labels::Moved> m_moved;
  mutable std::vector<Item*> m_pending;
  mutable std::vector<platform::Rect> m_damage;
};

}  // namespace brisel::canvas
