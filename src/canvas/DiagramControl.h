#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "canvas/ButtonBar.h"
#include "canvas/ControlObjects.h"
#include "canvas/HitTest.h"
#include "canvas/Input.h"
#include "canvas/Scene.h"
#include "canvas/Selection.h"
#include "canvas/Viewport.h"
#include "platform/Diagram.h"

namespace brisel::platform {
class ComponentRegistry;
}

namespace brisel::canvas {

class Interaction;
class Painter;

/// The diagram control: a scene, the view onto it, what is selected, a tool bar of its own, and
/// what a person's hand does with them. Knows no toolkit: a view paints it, feeds it pointer and
/// keys, and follows its events.
///
/// Said once for all members: places and sizes are in twips of the canvas; keys are compared letter
/// for letter; where a member takes a node or a link, hosts give the item itself or its key. What
/// is not on this canvas, another canvas's items among it, is an unknown one: it gives false,
/// nothing or an empty collection, never an error. Collections are the items as they were at the
/// call.
class DiagramControl : public platform::DiagramControl {
 public:
  /// Of the zoom buttons and keys: a factor.
  static constexpr double kZoomStep = 1.25;

  explicit DiagramControl(platform::ComponentRegistry& registry);
  ~DiagramControl() override;

  /// Whether the tool bar above the canvas is seen.
  void ShowToolbar(bool show) override;
  /// A picture for later use by name, in nodePicture and its kin: its name, which replaces an
  /// earlier picture of that name, and the path of its file, which is not read here.
  void AddImage(std::string_view name, std::string_view file);
  /// The file of a picture; empty for an unknown name.
  [[nodiscard]] std::string imageFile(std::string_view name) const;
  /// At the end of the tool bar: the key that ToolbarButton tells, the text on the button, the text
  /// beside the resting pointer, the path of the icon, and whether it can be clicked. All empty
  /// make a separator.
  void AddButton(std::string_view key, std::string_view caption, std::string_view tooltip,
                 std::string_view icon, bool enabled) override;
  /// The buttons that the canvas itself answers: select, zoom, print, copy, layouts.
  void AddStandardButtons();
  void PressButton(std::string_view key) override;
  void ReleaseButton(std::string_view key) override;
  /// A person's click: raises ToolbarButton first, then does what the canvas has for the key. An
  /// unknown or disabled button does nothing.
  void ClickButton(std::string_view key);
  /// Each with key, caption, tooltip, icon, enabled, pressed.
  [[nodiscard]] platform::Ref<platform::Collection> Buttons() const;

  /// Of a node that a click makes, and of one created without a size. An Error (invalidCall) for a
  /// size that is not above zero or out of reach.
  void SetNewNodeSize(double width, double height) override;
  [[nodiscard]] std::int64_t BackColor() const;
  /// Red in the lowest byte, then green and blue; or a system colour (0x80000000 and its number).
  void BackColor(std::int64_t rgb) override;
  /// The font of titles, and that of rows, labels and end texts: its name and its size in points,
  /// from 1 to 1000, an Error (invalidCall) else. All boxes that fit their text follow.
  void LabelFont(std::string_view name, double size) override;
  void SectionFont(std::string_view name, double size) override;
  /// Gives the keys of what is made without one, by its `GetUUID`; empty for none, and then nothing
  /// is made by hand.
  [[nodiscard]] platform::Ref<platform::Object> UUIDGenerator() const { return m_generator; }
  void UUIDGenerator(platform::Object* generator) override;
  /// Each of the three ends a gesture under way as if it had never begun.
  void SelectMode() override;
  void ClickCreateMode() override;
  /// A rectangle drawn on empty canvas becomes a node of that size, as it does in ClickCreateMode;
  /// a click makes one, too. Switches "CanDrawLink" on.
  void DrawCreateMode();
  [[nodiscard]] std::string Mode() const override;
  /// Takes everything away. Raises Cleared, and no events of deleted items.
  void Clear() override;
  /// Has everything painted again.
  void refresh() override;
  /// One of the codes of platform::DiagramControl::Layout. Raises NodeMoved for each node that
  /// moved. With two nodes or more selected these alone are laid out, clear of the others, which
  /// stay where they are. A layout of all nodes begins at the upper left corner of the canvas, which
  /// is scrolled into view. One that takes long is shown with a way to cancel it; nothing is changed
  /// then.
  void Layout(std::string_view code) override;
  void placeAmong(const std::vector<std::string>& keys) override;
  /// How long a layout may take before its progress is shown; 500 ms at first.
  void patience(std::chrono::milliseconds patience) { m_patience = patience; }
  /// An object with the property "CanDrawLink" and the method "Layout"(code).
  platform::Ref<platform::Object> GetDiagram() override;
  /// The view's native window, as the view told it; 0 without a view.
  [[nodiscard]] std::int64_t GetDiagramHandle() const { return m_handle; }

  /// Key, empty for a fresh one; title; upper left corner; size, of which what is not above zero is
  /// that of a new node; style, Node::kClassBox. False when the key is in use or there is none. An
  /// Error (invalidCall) for what is not a number or out of reach; nothing is created then.
  bool createNode(std::string_view key, std::string_view text, double left, double top,
                  double width, double height, std::int64_t style) override;
  /// Key, empty for a fresh one; label; keys of the two nodes. False when the key is in use, there
  /// is none, or an end is missing. It has the decorations of new links.
  bool createLink(std::string_view key, std::string_view text, std::string_view source,
                  std::string_view target) override;
  [[nodiscard]] platform::Ref<platform::DiagramNode> getNode(std::string_view key) override;
  [[nodiscard]] platform::Ref<platform::DiagramLink> getLink(std::string_view key) override;
  /// False for an unknown one. A node takes its links along; deletions are told when all are gone.
  bool deleteNode(const platform::Value& keyOrNode) override;
  bool deleteLink(const platform::Value& keyOrLink) override;
  /// True when there was something to delete; so too for marked ones.
  bool deleteSelectedItems();
  bool deleteMarkedItems();
  /// In the order of creation; what is selected in the order of selecting.
  [[nodiscard]] platform::Ref<platform::Collection> getAllNodes() override;
  [[nodiscard]] platform::Ref<platform::Collection> getAllLinks() override;
  [[nodiscard]] platform::Ref<platform::Collection> getSelectedNodes() override;
  [[nodiscard]] platform::Ref<platform::Collection> getSelectedLinks() override;
  [[nodiscard]] platform::Ref<platform::DiagramNode> nodeAt(platform::Point point) override;
  [[nodiscard]] platform::Ref<platform::Collection> nodesIn(const platform::Rect& area) override;
  /// Of a node, in the order of creation: those that end there, those that begin there. A link to
  /// its own node is among both.
  [[nodiscard]] platform::Ref<platform::Collection> getIncomingLinks(const platform::Value& node);
  [[nodiscard]] platform::Ref<platform::Collection> getOutgoingLinks(const platform::Value& node);
  /// Adds the item to the selection; false for an unknown one, true for a selected one, too.
  bool selNode(const platform::Value& node);
  bool selLink(const platform::Value& link);
  /// True when something was selected.
  bool unselectAll();
  /// A mark is not seen: it is a host's note for deleteMarkedItems. Results as for the selection.
  bool markNode(const platform::Value& node);
  bool markLink(const platform::Value& link);
  bool unmarkAll();

  void linkRule(platform::LinkRule rule) override { m_linkRule = std::move(rule); }
  void dropRule(platform::DropRule rule) override { m_dropRule = std::move(rule); }

  void beginUpdate() override;
  void endUpdate() override;

  /// Names of pictures for nodes and links; kept for hosts, "TEXT" and empty show none.
  [[nodiscard]] std::string nodePicture() const { return m_nodePicture; }
  void nodePicture(std::string_view name) { m_nodePicture = name; }
  [[nodiscard]] std::string linkPicture() const { return m_linkPicture; }
  void linkPicture(std::string_view name) { m_linkPicture = name; }
  [[nodiscard]] std::string linkBeginPicture() const { return m_linkBeginPicture; }
  void linkBeginPicture(std::string_view name) { m_linkBeginPicture = name; }
  [[nodiscard]] std::string linkEndPicture() const { return m_linkEndPicture; }
  void linkEndPicture(std::string_view name) { m_linkEndPicture = name; }
  /// How many sections a new node gets, as decimal digits: "0" to "16", an Error else.
  [[nodiscard]] std::string nodeNumberOfSections() const;
  void nodeNumberOfSections(std::string_view number);
  /// The decorations of new links (platform::Arrow).
  [[nodiscard]] int linkBeginArrow() const { return m_linkBeginArrow; }
  void linkBeginArrow(int code) { m_linkBeginArrow = code; }
  [[nodiscard]] int linkEndArrow() const { return m_linkEndArrow; }
  void linkEndArrow(int code) { m_linkEndArrow = code; }
  /// Width and height in twips of the node at the end of a link that ends nowhere; kept for hosts:
  /// no link that a hand draws ends nowhere.
  [[nodiscard]] int linkNodeCX() const { return m_linkNodeCX; }
  void linkNodeCX(int width) { m_linkNodeCX = width; }
  [[nodiscard]] int linkNodeCY() const { return m_linkNodeCY; }
  void linkNodeCY(int height) { m_linkNodeCY = height; }
  [[nodiscard]] bool ShowGrid() const { return m_showGrid; }
  void ShowGrid(bool show);

  void reveal(const platform::Rect& area) override { m_viewport.reveal(area); }
  /// Percent.
  [[nodiscard]] double getZoom() const override { return m_viewport.zoom(); }
  /// Percent, brought into the range of 2 to 800; around the middle of the view.
  void zoom(double percent) { m_viewport.zoomTo(percent); }
  /// 100 percent.
  void noZoom() { m_viewport.zoomTo(100); }
  /// A length in pixels of the view as twips of the canvas, at the current zoom.
  [[nodiscard]] double TransformExtent(double pixels) const { return m_viewport.toTwips(pixels); }
  void showHint(std::string_view text) override;
  [[nodiscard]] platform::Rect toView(const platform::Rect& area) const override;
  [[nodiscard]] platform::Size viewSize() const override;
  /// Of a node the middle of its box, of a link the middle of its line: an object with x and y; a
  /// key is taken for a node's first. Nothing for an unknown one.
  [[nodiscard]] platform::Ref<platform::Object> GetCenter(const platform::Value& item);
  /// The node at a point (an object with x and y in twips), or at the pointer for empty; or
  /// nothing.
  [[nodiscard]] platform::Ref<platform::DiagramNode> GetHitNode(const platform::Value& point);
  /// Puts the whole diagram there.
  void CopyToClipboard();
  /// Asks the view to print, or with true to show the preview; false when left away.
  void PrintDiagram(bool preview);

  // A person's input, in twips of the canvas; buttons and modifiers by name (Input.h).
  /// A gesture under way follows. With "alt" what is moved or resized does not snap to its
  /// neighbours.
  void PointerMove(double x, double y, std::string_view modifiers = {});
  void PointerPress(double x, double y, std::string_view button, std::string_view modifiers);
  void PointerRelease(double x, double y, std::string_view button, std::string_view modifiers);
  void PointerDoubleClick(double x, double y);
  /// The pointer left the view.
  void PointerLeave();
  /// Steps upwards are positive.
  void Wheel(double x, double y, double steps, std::string_view modifiers);
  /// A key that was pressed and, but for "Space", released: KeyRelease follows only for that one.
  /// False for a key that the canvas has no use for, after KeyReleased told of it.
  bool KeyPress(std::string_view key, std::string_view modifiers);
  void KeyRelease(std::string_view key, std::string_view modifiers);
  /// Nothing, or an object with `item`, `part` and `tag`.
  [[nodiscard]] platform::Ref<platform::Object> HitTest(double x, double y);
  /// Name of the CursorShape that the view should show.
  [[nodiscard]] std::string Cursor() const;

  // For views and for painting.
  [[nodiscard]] const Scene& scene() const { return m_scene; }
  [[nodiscard]] Scene& scene() { return m_scene; }
  [[nodiscard]] const Viewport& viewport() const { return m_viewport; }
  [[nodiscard]] Viewport& viewport() { return m_viewport; }
  [[nodiscard]] const ButtonBar& buttonBar() const { return m_buttonBar; }
  [[nodiscard]] const Selection& selection() const { return m_scene.selection(); }
  [[nodiscard]] Selection& selection() { return m_scene.selection(); }
  [[nodiscard]] CursorShape cursor() const;
  /// Paints what the gesture under way shows over the items; damage is told of it as of items.
  void paintGesture(Painter& painter, double scale) const;
  /// The answers of the rules; without a rule everything goes.
  [[nodiscard]] std::string refusal(std::string_view link, const Node& source,
                                    const Node& target) const;
  [[nodiscard]] bool canDrop(const Node& node, std::string_view tag, const Node* target) const;
  /// "CanDrawLink": a drag from the border of a box draws a link.
  [[nodiscard]] bool canDrawLink() const;
  /// "CanDrawLink" was set: ends the gesture under way and tells.
  void canDrawLinkChanged();
  /// A press on empty canvas draws a node.
  [[nodiscard]] bool createsNodes() const { return m_mode != PointerMode::select; }
  [[nodiscard]] platform::Size newNodeSize() const { return m_newNodeSize; }
  [[nodiscard]] std::size_t sectionsOfNewNodes() const { return m_sections; }
  /// What the hand makes, as `createNode` and `createLink` do, under fresh keys; it is the only
  /// selected item then. Nothing when it was refused, or taken away by who was told of it.
  Node* drawNode(const platform::Rect& bounds);
  Link* drawLink(const Node& source, const Node& target);
  /// The title of a node drawn by hand.
  static constexpr std::string_view kNewNodeText = "newClass";
  void windowHandle(std::int64_t handle) { m_handle = handle; }

  /// The pointer rests within kScrollEdgePixels of the view's edge, or outside, while something is
  /// dragged: a view calls autoScroll every 16 ms for as long. Nothing scrolls by itself.
  [[nodiscard]] bool autoScrolls() const;
  /// One step of scrolling, the longer the further out the pointer is; what is dragged goes along.
  void autoScroll();

  platform::Event<> CursorChanged;
  platform::Event<> AutoScrollChanged;
  /// The view prints, or with true shows the preview.
  platform::Event<bool> PrintRequested;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  enum class PointerMode { select, clickCreate, drawCreate };

  void setMode(PointerMode mode, bool canDrawLink);
  void tellMode();
  void runButton(std::string_view key);
  bool deleteItems(const std::vector<Item*>& items);
  /// Takes the items from the canvas, with the links of the nodes, then tells of each.
  void take(const std::vector<platform::Ref<Node>>& nodes,
            const std::vector<platform::Ref<Link>>& links);
  [[nodiscard]] std::string newKey(std::string_view wanted) const;
  [[nodiscard]] Node* nodeOf(const platform::Value& keyOrNode) const;
  [[nodiscard]] Link* linkOf(const platform::Value& keyOrLink) const;

  platform::ComponentRegistry& m_registry;
  Scene m_scene;
  Viewport m_viewport;
  ButtonBar m_buttonBar;
  std::unique_ptr<Interaction> m_interaction;
  platform::Ref<DiagramSettings> m_settings;
  std::vector<platform::Connection> m_connections;
  std::map<std::string, std::string, std::less<>> m_images;
  PointerMode m_mode = PointerMode::select;
  platform::LinkRule m_linkRule;
  platform::DropRule m_dropRule;
  std::uint64_t m_layoutSeed = 0;
  std::chrono::milliseconds m_patience{500};
  platform::Ref<platform::Object> m_generator;
  platform::Size m_newNodeSize{3000, 1500};
  std::size_t m_sections = 2;
  std::string m_nodePicture, m_linkPicture, m_linkBeginPicture, m_linkEndPicture;
  int m_linkBeginArrow = 0;
  int m_linkEndArrow = 0;
  int m_linkNodeCX = 3000;
  int m_linkNodeCY = 1500;
  bool m_showGrid = false;
  std::int64_t m_handle = 0;
};

}  // namespace brisel::canvas
