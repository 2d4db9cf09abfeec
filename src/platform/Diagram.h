#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Collection.h"
#include "platform/Event.h"
#include "platform/Geometry.h"
#include "platform/Object.h"

/// The diagram control as the editor sees it: boxes with a title and sections of rows, lines with
/// points and decorated ends, a tool bar, and the events of what a person did. All geometry is in
/// twips. The canvas implements it; a test may put one that refuses in its place.
namespace brisel::platform {

class DiagramNode;

/// A colour value of the system-colour numbering: the face of buttons.
inline constexpr std::int64_t kButtonFaceColor = 0x8000000F;

/// What the end of a line carries, in the canvas's numbering.
enum class Arrow : int { none = 0, open = 3, triangle = 8, filledDiamond = 13, diamond = 14 };

/// A compartment of a box: rows of text, shown or hidden together.
class DiagramSection : public Object {
 public:
  [[nodiscard]] virtual bool visible() const = 0;
  virtual void visible(bool visible) = 0;
  /// `kind` is "STRING"; `tag` the identifier of what the row stands for, empty for none.
  virtual void addRow(std::string_view text, std::string_view kind, std::string_view tag) = 0;
  virtual void clearRows() = 0;
  /// The rows, each with `text`, `kind` and `tag`.
  [[nodiscard]] virtual Ref<Collection> Rows() const = 0;
};

/// What boxes and lines have in common. An item that left the canvas still answers.
class DiagramItem : public Object {
 public:
  [[nodiscard]] virtual std::string key() const = 0;
  /// A box's title, a line's label; lines of it are separated by "\r\n" or "\n".
  [[nodiscard]] virtual std::string text() const = 0;
  virtual void text(std::string_view text) = 0;
  [[nodiscard]] virtual bool selected() const = 0;
  virtual void selected(bool selected) = 0;
  /// The object stored on the item under a name ("__Class"), or nothing; nothing any more once the
  /// item has left the canvas and its deletion was told.
  [[nodiscard]] virtual Ref<Object> getItem(std::string_view name) const = 0;
  virtual void setItem(std::string_view name, Object* object) = 0;
};

class DiagramNode : public DiagramItem {
 public:
  [[nodiscard]] virtual Rect bounds() const = 0;
  virtual void bounds(const Rect& bounds) = 0;
  [[nodiscard]] virtual std::int64_t fillColor() const = 0;
  virtual void fillColor(std::int64_t color) = 0;
  /// From 0; an Error (subscript) beyond the last.
  [[nodiscard]] virtual Ref<DiagramSection> Section(std::int64_t number) const = 0;
  /// Fit to text: with true the box takes the size that its title and visible rows need, and keeps
  /// taking it whenever they change; with false it keeps the size that it has.
  virtual void fitToText(bool fit) = 0;
};

/// The points of a line in order: where it leaves the source box, every bend, where it meets the
/// target box. A straight line has two.
class DiagramPoints : public Collection {
 public:
  /// Puts a bend before the last point.
  virtual void Add(double x, double y) = 0;
  /// Takes the bends away.
  void Clear() override = 0;
  [[nodiscard]] virtual Point at(std::size_t index) const = 0;
};

class DiagramLink : public DiagramItem {
 public:
  [[nodiscard]] virtual Ref<DiagramNode> source() const = 0;
  [[nodiscard]] virtual Ref<DiagramNode> target() const = 0;
  virtual void reattachSource(DiagramNode& node) = 0;
  virtual void reattachTarget(DiagramNode& node) = 0;
  [[nodiscard]] virtual int beginArrow() const = 0;
  virtual void beginArrow(int code) = 0;
  [[nodiscard]] virtual int endArrow() const = 0;
  virtual void endArrow(int code) = 0;
  /// Text beside the source end and the target end: role names and multiplicities.
  [[nodiscard]] virtual std::string beginText() const = 0;
  virtual void beginText(std::string_view text) = 0;
  [[nodiscard]] virtual std::string endText() const = 0;
  virtual void endText(std::string_view text) = 0;
  [[nodiscard]] virtual bool dashed() const = 0;
  virtual void dashed(bool dashed) = 0;
  [[nodiscard]] virtual Ref<DiagramPoints> ExtraPoints() const = 0;
};

class DiagramControl : public Object {
 public:
  virtual void ShowToolbar(bool show) = 0;
  /// All-empty strings make a separator. The icon file's path may be joined with backslashes.
  virtual void AddButton(std::string_view key, std::string_view caption, std::string_view tooltip,
                         std::string_view icon, bool enabled) = 0;
  /// Makes the button of the key look pressed, or not; an unknown key does nothing.
  virtual void PressButton(std::string_view key) = 0;
  virtual void ReleaseButton(std::string_view key) = 0;

  virtual void SetNewNodeSize(double width, double height) = 0;
  virtual void BackColor(std::int64_t rgb) = 0;
  virtual void LabelFont(std::string_view name, double size) = 0;
  virtual void SectionFont(std::string_view name, double size) = 0;
  virtual void UUIDGenerator(Object* generator) = 0;
  virtual void SelectMode() = 0;
  virtual void ClickCreateMode() = 0;
  virtual void Clear() = 0;
  virtual void refresh() = 0;
  /// "%HIERARCHY%", "MATRIX", "RANDOM", "SPRING", or "TADJST", "BADJST", "LADJST", "RADJST", which
  /// align the selected nodes' top, bottom, left and right sides. An Error when the layout fails.
  virtual void Layout(std::string_view code) = 0;
  /// The underlying diagram: its settings (property "CanDrawLink") and the hierarchical layout.
  virtual Ref<Object> GetDiagram() = 0;

  /// False when the key is in use; NodeCreated is raised inside the call.
  virtual bool createNode(std::string_view key, std::string_view text, double left, double top,
                          double width, double height, std::int64_t style) = 0;
  /// False when the key is in use or an end is missing; LinkCreated is raised inside the call.
  virtual bool createLink(std::string_view key, std::string_view text, std::string_view source,
                          std::string_view target) = 0;
  /// Nothing for an unknown key.
  [[nodiscard]] virtual Ref<DiagramNode> getNode(std::string_view key) = 0;
  [[nodiscard]] virtual Ref<DiagramLink> getLink(std::string_view key) = 0;
  /// False for what is not on the canvas. A node takes its links along.
  virtual bool deleteNode(const Value& keyOrNode) = 0;
  virtual bool deleteLink(const Value& keyOrLink) = 0;
  [[nodiscard]] virtual Ref<Collection> getAllNodes() = 0;
  [[nodiscard]] virtual Ref<Collection> getAllLinks() = 0;
  [[nodiscard]] virtual Ref<Collection> getSelectedNodes() = 0;
  [[nodiscard]] virtual Ref<Collection> getSelectedLinks() = 0;

  /// Between the two, changes are gathered and told to the views once, at the outermost end.
  virtual void beginUpdate() = 0;
  virtual void endUpdate() = 0;

  Event<std::string> NodeCreated, NodeDeleted, NodeMoved, NodeResized, NodeEnter, NodeLeave;
  Event<std::string> NodeClicked, NodePressed, NodeRClicked;
  Event<std::string> LinkCreated, LinkDeleted, LinkEnter, LinkLeave, LinkClicked, LinkRClicked;
  Event<std::string> ToolbarButton;
  Event<int, int> Scrolled, Zoomed;
  /// A row was dragged: key of its node, its tag, and where it was dropped.
  Event<std::string, std::string, double, double> ItemDropped;
  /// A key that the canvas has no use for was released: its name ("F1").
  Event<std::string> KeyReleased;

  [[nodiscard]] const MemberTable& memberTable() const override;
};

}  // namespace brisel::platform
