#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "canvas/Item.h"
#include "canvas/Labels.h"
#include "canvas/LinkRoute.h"
#include "canvas/Node.h"
#include "layout/LabelPlacement.h"
#include "platform/Diagram.h"

namespace brisel::canvas {

/// A line from a box to a box, or back to the same one. Its two end points follow from the boxes;
/// the bends between them are its own.
class Link : public platform::DiagramLink, public Item {
 public:
  Link(std::string_view key, std::string_view text, Node& source, Node& target);
  ~Link() override;

  [[nodiscard]] std::string key() const override { return m_key; }
  [[nodiscard]] std::string text() const override { return m_text; }
  void text(std::string_view text) override;
  [[nodiscard]] bool selected() const override { return isSelected(); }
  void selected(bool selected) override;
  [[nodiscard]] platform::Ref<platform::Object> getItem(std::string_view name) const override;
  void setItem(std::string_view name, platform::Object* object) override;
  [[nodiscard]] platform::Ref<platform::DiagramNode> source() const override { return m_source; }
  [[nodiscard]] platform::Ref<platform::DiagramNode> target() const override { return m_target; }
  void reattachSource(platform::DiagramNode& node) override;
  void reattachTarget(platform::DiagramNode& node) override;
  [[nodiscard]] int beginArrow() const override { return m_beginArrow; }
  void beginArrow(int code) override;
  [[nodiscard]] int endArrow() const override { return m_endArrow; }
  void endArrow(int code) override;
  [[nodiscard]] std::string beginText() const override { return m_beginText; }
  void beginText(std::string_view text) override;
  [[nodiscard]] std::string endText() const override { return m_endText; }
  void endText(std::string_view text) override;
  [[nodiscard]] bool dashed() const override { return m_dashed; }
  void dashed(bool dashed) override;
  [[nodiscard]] platform::Ref<platform::DiagramPoints> ExtraPoints() const override;
  [[nodiscard]] bool marked() const { return isMarked(); }
  /// The link itself: callers by name reach a line's points over one step more.
  [[nodiscard]] platform::Ref<Link> self() const { return const_cast<Link*>(this); }

  [[nodiscard]] platform::DiagramItem& object() override { return *this; }
  [[nodiscard]] bool isLink() const override { return true; }
  [[nodiscard]] platform::Rect extent() const override;
  /// Pieces of the line, and its label: a long slanted line covers little of the area it crosses.
  void addParts(std::vector<platform::Rect>& parts) const override;

  [[nodiscard]] Node& sourceNode() const { return *m_source; }
  [[nodiscard]] Node& targetNode() const { return *m_target; }
  [[nodiscard]] bool isLoop() const { return m_source == m_target; }

  // What painting and hit testing read, all in twips on the canvas.
  /// Every point in order, at least two; a loop without bends of its own has them computed.
  [[nodiscard]] const std::vector<platform::Point>& points() const;
  // Where texts stand on a canvas, `Labels` decides; without one they take their first choice.
  // They are painted on a ground of the canvas's colour.
  /// Empty without a label. Lies on the line or close beside it, near its middle when it is alone.
  /// Lines of text are centred in it.
  [[nodiscard]] platform::Rect labelArea() const;
  /// Beside the end, clear of the line and of the box; empty without a text. Lines of text stand
  /// flush with the left side.
  [[nodiscard]] platform::Rect beginTextArea() const;
  [[nodiscard]] platform::Rect endTextArea() const;

  /// The points that are the line's own: no ends, nothing computed.
  [[nodiscard]] const std::vector<platform::Point>& bends() const { return m_bends; }
  void bends(std::vector<platform::Point> bends);
  /// An Error (subscript) outside of 0 to the number of bends; so too for the next two.
  void insertBend(std::size_t index, platform::Point point);
  void moveBend(std::size_t index, platform::Point point);
  void removeBend(std::size_t index);

  /// Among all lines of its boxes, straight or not, in the order of their creation.
  [[nodiscard]] Rank rankOfAll() const { return m_labelRank; }

  enum class Label { begin, end, name };
  /// Where a text could stand, the best place first; empty without it.
  [[nodiscard]] std::vector<layout::LabelCandidate> candidates(Label label,
                                                               const layout::LabelGaps& gaps) const;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  friend class Labels;
  friend class Node;
  friend class Scene;

  struct Geometry {
    std::vector<platform::Point> points;
    platform::Rect course;  ///< around the points, with room for the decorations
    platform::Rect label, beginText, endText;
  };
  void geometryChanged();
  void reattach(platform::Ref<Node>& end, platform::DiagramNode& node);
  /// Texts on a canvas stand where they stood until it settles.
  [[nodiscard]] const Geometry& geometry() const;
  /// With all texts placed.
  [[nodiscard]] const Geometry& settled() const;
  [[nodiscard]] bool followsCorner() const { return isLoop() && m_bends.empty(); }
  /// How far the line reaches beyond its points, to either side.
  [[nodiscard]] double margin() const;

  platform::Ref<Node> m_source;
  platform::Ref<Node> m_target;
  std::size_t m_sourceSlot = 0;  ///< place in the source's list of attached links
  std::size_t m_targetSlot = 0;
  std::vector<platform::Point> m_bends;
  std::string m_beginText;
  std::string m_endText;
  int m_beginArrow = 0;
  int m_endArrow = 0;
  bool m_dashed = false;
  Rank m_rank;       ///< among the straight links of its two boxes
  Rank m_labelRank;  ///< among all links of them
  mutable bool m_stale = true;
  mutable bool m_textsStale = true;  ///< to be told to the scene's labels
  Labels::OfLink m_labels;
  mutable Geometry m_geometry;
};

}  // namespace brisel::canvas
