#pragma once

#include <cstdint>
#include <functional>
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
  /// taking it whenever they change; with false it keeps the size that it has. A box whose size was
  /// set large enough for its text grows when the text does.
  virtual void fitToText(bool fit) = 0;
  /// Between the two, title and rows may change in many steps; the box is fitted and seen anew once,
  /// at the outermost end.
  virtual void beginUpdate() = 0;
  virtual void endUpdate() = 0;
  /// Where the title stands in the box, cut at its border.
  [[nodiscard]] virtual Rect titleArea() const = 0;
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

/// Why a person must not join two nodes by a link: a short sentence, or the empty text where they
/// may. `link` is the key of the link whose end is dragged, empty for one that is being drawn.
using LinkRule = std::function<std::string(
    std::string_view link, std::string_view source, std::string_view target)>;

/// Whether the row of a node that carries the tag may be dropped on the target, by key; the empty
/// key stands for empty canvas.
using DropRule =
    std::function<bool(std::string_view node, std::string_view tag, std::string_view target)>;

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
  /// The pointer selects and moves. Switches "CanDrawLink" off.
  virtual void SelectMode() = 0;
  /// A click on empty canvas creates a node. Switches "CanDrawLink" on.
  virtual void ClickCreateMode() = 0;
  /// "select", "clickCreate" or "drawCreate".
  [[nodiscard]] virtual std::string Mode() const = 0;
  virtual void Clear() = 0;
  virtual void refresh() = 0;
  /// "%HIERARCHY%", "MATRIX", "RANDOM", "SPRING", or "TADJST", "BADJST", "LADJST", "RADJST", which
  /// align the selected nodes' top, bottom, left and right sides. An Error when the layout fails;
  /// one that a person cancelled leaves everything where it was.
  virtual void Layout(std::string_view code) = 0;
  /// Moves the nodes of these keys, which have no place yet, beside what they are joined to, clear
  /// of all others, which stay.
  virtual void placeAmong(const std::vector<std::string>& keys) = 0;
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

  /// The node at a point of the canvas, or nothing.
  [[nodiscard]] virtual Ref<DiagramNode> nodeAt(Point point) = 0;
  /// The nodes of which the area covers more than an edge, in the order of creation.
  [[nodiscard]] virtual Ref<Collection> nodesIn(const Rect& area) = 0;

  /// What a person may join and drop; with no rule everything goes. Calls of `createLink` are not
  /// asked about.
  virtual void linkRule(LinkRule rule) = 0;
  virtual void dropRule(DropRule rule) = 0;

  /// A word for the person on what was just done; stands until the next press, or until there is
  /// another hint.
  virtual void showHint(std::string_view text) = 0;

  /// Scrolls as little as brings the area into view; of a larger one its upper left part.
  virtual void reveal(const Rect& area) = 0;
  /// Percent.
  [[nodiscard]] virtual double getZoom() const = 0;
  /// An area of the canvas as it is seen now, in twips of the view from its upper left corner: at
  /// every zoom 15 to a pixel.
  [[nodiscard]] virtual Rect toView(const Rect& area) const = 0;
  /// The size of the view, in twips of its own.
  [[nodiscard]] virtual Size viewSize() const = 0;

  /// Between the two, changes are gathered and told to the views once, at the outermost end.
  virtual void beginUpdate() = 0;
  virtual void endUpdate() = 0;

  Event<std::string> NodeCreated, NodeDeleted, NodeMoved, NodeResized, NodeEnter, NodeLeave;
  Event<std::string> NodeClicked, NodePressed, NodeRClicked;
  Event<std::string> LinkCreated, LinkDeleted, LinkEnter, LinkLeave, LinkClicked, LinkRClicked;
  /// A button went down over the canvas; raised before anything comes of it.
  Event<> Pressed;
  /// A person wants to look into an item (double click, Enter), to rename a node (F2), or to delete
  /// what is selected (Del). The canvas itself does nothing.
  Event<std::string> NodeOpened, LinkOpened, NodeRenaming;
  Event<> DeleteAsked;
  /// A person dropped an end of a link on another node: the link's key, the node's key, and whether
  /// it was the source end. The line is as it was: who keeps the model reattaches it.
  Event<std::string, std::string, bool> LinkEndDropped;
  /// What a press would do, or why not, for a status bar; empty when there is nothing to say.
  Event<std::string> Hint;
  Event<> Cleared;      ///< all items are gone; none was told of by itself
  Event<> ModeChanged;  ///< `Mode` or "CanDrawLink"
  Event<std::string> ToolbarButton;
  Event<int, int> Scrolled, Zoomed;
  /// A row was dragged: key of its node, its tag, and where it was dropped.
  Event<std::string, std::string, double, double> ItemDropped;
  /// A key that the canvas has no use for was released: its name ("F1").
  Event<std::string> KeyReleased;

  [[nodiscard]] const MemberTable& memberTable() const override;
};

}  // namespace brisel::platform
