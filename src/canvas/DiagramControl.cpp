#include "canvas/DiagramControl.h"

#include <array>
#include <charconv>
#include <cmath>

#include "canvas/Arrange.h"
#include "canvas/Interaction.h"
#include "canvas/InteractionState.h"
#include "canvas/Keyboard.h"
#include "canvas/LongTask.h"
#include "canvas/Memory.h"
#include "canvas/Points.h"
#include "canvas/SvgExport.h"
#include "platform/ComponentRegistry.h"
#include "platform/Error.h"
#include "platform/Shell.h"

namespace brisel::canvas {

using platform::Collection;
using platform::Error;
using platform::ErrorNumber;
using platform::make;
using platform::Object;
using platform::ObjectList;
using platform::Point;
using platform::Ref;
using platform::Value;

namespace {

constexpr double kWheelZoomStep = 1.15;
constexpr std::size_t kMostSections = 16;

Font checkedFont(std::string_view name, double size) {
  if (!(size >= 1 && size <= 1000)) {
    throw Error(ErrorNumber::invalidCall, "Font size out of range: " + Value(size).text());
  }
  return {std::string(name), size};
}

/// Where a hand can be: what lies out of reach is brought to its edge.
Point placeOf(double x, double y) {
  if (std::isnan(x) || std::isnan(y)) {
    throw Error(ErrorNumber::invalidCall, "A place on the canvas must be a number");
  }
  return withinReach(Point{x, y});
}

int wholeOf(double value) {
  return static_cast<int>(std::lround(std::clamp(value, -2147483647.0, 2147483647.0)));
}

}  // namespace

DiagramControl::DiagramControl(platform::ComponentRegistry& registry)
    : m_registry(registry),
      m_interaction(std::make_unique<Interaction>(*this)),
      m_settings(make<DiagramSettings>(*this)) {
  const auto scrolled = [this] {
    Scrolled(wholeOf(m_viewport.scroll().x), wholeOf(m_viewport.scroll().y));
  };
  const auto zoomed = [this] { Zoomed(wholeOf(m_viewport.zoom()), wholeOf(m_viewport.zoom())); };
  m_connections.push_back(m_viewport.ScrollChanged.connect(scrolled));
  m_connections.push_back(m_viewport.ZoomChanged.connect(zoomed));
}

DiagramControl::~DiagramControl() { m_settings->m_control = nullptr; }

void DiagramControl::ShowToolbar(bool show) { m_buttonBar.show(show); }

void DiagramControl::AddImage(std::string_view name, std::string_view file) {
  m_images.insert_or_assign(std::string(name), std::string(file));
}

std::string DiagramControl::imageFile(std::string_view name) const {
  const auto found = m_images.find(name);
  return found == m_images.end() ? std::string() : found->second;
}

void DiagramControl::AddButton(std::string_view key, std::string_view caption,
                               std::string_view tooltip, std::string_view icon, bool enabled) {
  m_buttonBar.add({std::string(key), std::string(caption), std::string(tooltip), std::string(icon),
                   enabled, false});
}

void DiagramControl::AddStandardButtons() {
  struct Standard {
    std::string_view key, tooltip;
  };
  static constexpr std::array kButtons = {
      Standard{"Select", "select tool"},
      Standard{},
      Standard{"ZoomIn", "bigger view"},
      Standard{"ZoomOut", "smaller view"},
      Standard{"ZoomNo", "100% view"},
      Standard{"ZoomFull", "full view"},
      Standard{},
      Standard{"Print", "print the diagram"},
      Standard{"PrintPreview", "show preview of the printed diagram"},
      Standard{},
      Standard{"Copy", "Copy diagram into clipboard"},
      Standard{},
      Standard{"LayoutRandom", "random layout"},
      Standard{"LayoutMatrix", "matrix layout"},
      Standard{"LayoutSpring", "spring layout"},
      Standard{"LayoutHierarchy", "hierarchical layout"},
  };
  for (const Standard& button : kButtons) {
    const std::string icon = button.key.empty() ? ""
                                                : m_registry.installationFolder() + "\\" +
                                                      std::string(button.key) + ".bmp";
    AddButton(button.key, "", button.tooltip, icon, true);
  }
}

void DiagramControl::PressButton(std::string_view key) { m_buttonBar.press(key, true); }

void DiagramControl::ReleaseButton(std::string_view key) { m_buttonBar.press(key, false); }

void DiagramControl::ClickButton(std::string_view key) {
  const Button* button = m_buttonBar.find(key);
  if (!button || !button->enabled) return;
  const Ref<DiagramControl> self(this);
  const std::string clicked(key);  // the handler may change the tool bar
  ToolbarButton(clicked);
  runButton(clicked);
}

void DiagramControl::runButton(std::string_view key) {
  struct Layouts {
    std::string_view key, code;
  };
  static constexpr std::array kLayouts = {
      Layouts{"LayoutRandom", "RANDOM"}, Layouts{"LayoutMatrix", "MATRIX"},
      Layouts{"LayoutSpring", "SPRING"}, Layouts{"LayoutHierarchy", "%HIERARCHY%"}};
  for (const Layouts& layout : kLayouts) {
    if (key == layout.key) return Layout(layout.code);
  }
  if (key == "Select") {
    SelectMode();
  } else if (key == "ZoomIn") {
    zoom(getZoom() * kZoomStep);
  } else if (key == "ZoomOut") {
    zoom(getZoom() / kZoomStep);
  } else if (key == "ZoomNo") {
    noZoom();
  } else if (key == "ZoomFull") {
    m_viewport.fit(m_scene.extent());
  } else if (key == "Print" || key == "PrintPreview") {
    PrintDiagram(key == "PrintPreview");
  } else if (key == "Copy") {
    CopyToClipboard();
  }
}

Ref<Collection> DiagramControl::Buttons() const {
  auto list = make<ObjectList>();
  for (const Button& button : m_buttonBar.buttons()) list->add(make<ButtonObject>(button));
  return list;
}

void DiagramControl::SetNewNodeSize(double width, double height) {
  if (!(width > 0 && height > 0 && width <= kReach && height <= kReach)) {
    throw Error(ErrorNumber::invalidCall, "A new node needs a size above zero and within reach");
  }
  m_newNodeSize = {width, height};
}

std::int64_t DiagramControl::BackColor() const { return m_scene.backColor(); }

void DiagramControl::BackColor(std::int64_t rgb) { m_scene.backColor(rgb); }

void DiagramControl::LabelFont(std::string_view name, double size) {
  m_scene.titleFont(checkedFont(name, size));
}

void DiagramControl::SectionFont(std::string_view name, double size) {
  m_scene.textFont(checkedFont(name, size));
}

void DiagramControl::UUIDGenerator(Object* generator) { m_generator = generator; }

void DiagramControl::setMode(PointerMode mode, bool canDrawLink) {
  const Ref<DiagramControl> self(this);
  m_interaction->cancel();
  const bool changed = mode != m_mode;
  m_mode = mode;
  if (canDrawLink != m_settings->CanDrawLink()) {
    m_settings->CanDrawLink(canDrawLink);  // tells
  } else if (changed) {
    tellMode();
  }
}

void DiagramControl::canDrawLinkChanged() {
  const Ref<DiagramControl> self(this);
  m_interaction->cancel();
  tellMode();
}

void DiagramControl::tellMode() {
  m_interaction->refresh();
  ModeChanged();
}

void DiagramControl::SelectMode() { setMode(PointerMode::select, false); }

void DiagramControl::ClickCreateMode() { setMode(PointerMode::clickCreate, true); }

void DiagramControl::DrawCreateMode() { setMode(PointerMode::drawCreate, true); }

std::string DiagramControl::Mode() const {
  switch (m_mode) {
    case PointerMode::clickCreate:
      return "clickCreate";
    case PointerMode::drawCreate:
      return "drawCreate";
    case PointerMode::select:
      break;
  }
  return "select";
}

void DiagramControl::refresh() { m_scene.damageAll(); }

void DiagramControl::Layout(std::string_view code) {
  const Ref<DiagramControl> self(this);
  m_interaction->cancel();
  std::vector<std::string> moved;
  if (isAlignment(code)) {
    moved = align(m_scene, code);
  } else {
    const std::size_t selected = selection().nodes().size();
    const bool some = selected >= 2 && selected < m_scene.nodes().size();
    LongTask task(m_registry, "Laying out the diagram", m_patience);
    const auto goOn = [&task](double share) { return task.goOn(share); };
    try {
      moved = (some ? arrangeSelected : arrange)(m_scene, code, ++m_layoutSeed, goOn);
    } catch (const layout::Cancelled&) {
      return showHint("The layout was cancelled: everything stays where it was");
    }
    if (some) {
      showHint("Laid out the " + std::to_string(selected) + " selected classes alone");
    } else {
      showHint("Laid out the diagram");
      m_viewport.scrollTo({});
    }
  }
  for (const std::string& key : moved) NodeMoved(key);
}

void DiagramControl::placeAmong(const std::vector<std::string>& keys) {
  canvas::placeAmong(m_scene, keys);
}

Ref<Object> DiagramControl::GetDiagram() { return m_settings; }

void DiagramControl::beginUpdate() { m_scene.beginUpdate(); }

void DiagramControl::endUpdate() { m_scene.endUpdate(); }

std::string DiagramControl::nodeNumberOfSections() const { return std::to_string(m_sections); }

void DiagramControl::nodeNumberOfSections(std::string_view number) {
  std::size_t sections = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), sections);
  if (error != std::errc() || end != number.data() + number.size() || sections > kMostSections) {
    throw Error(ErrorNumber::typeMismatch, "Not a number of sections: " + std::string(number));
  }
  m_sections = sections;
}

void DiagramControl::ShowGrid(bool show) {
  if (show == m_showGrid) return;
  m_showGrid = show;
  m_scene.damageAll();
}

Ref<Object> DiagramControl::GetCenter(const Value& item) {
  if (const Node* node = nodeOf(item)) return make<PointObject>(node->bounds().center());
  if (const Link* link = linkOf(item)) return make<PointObject>(middleOf(link->points()));
  return {};
}

Ref<platform::DiagramNode> DiagramControl::GetHitNode(const Value& point) {
  Point at = m_interaction->pointer();
  if (!point.isEmpty()) {
    const Ref<Object> object = point.object();
    at = {object->get("x").number(), object->get("y").number()};
  }
  return nodeAt(at);
}

Ref<platform::DiagramNode> DiagramControl::nodeAt(Point point) {
  std::vector<const Node*> nodes;
  std::vector<const Link*> links;
  m_scene.itemsIn({point.x, point.y, 0, 0}, nodes, links);
  for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) {
    if ((*node)->bounds().contains(point)) return const_cast<Node*>(*node);
  }
  return {};
}

Ref<Collection> DiagramControl::nodesIn(const platform::Rect& area) {
  std::vector<const Node*> nodes;
  std::vector<const Link*> links;
  m_scene.itemsIn(area, nodes, links);
  auto covered = make<ObjectList>();
  for (const Node* node : nodes) {
    if (node->bounds().intersects(area)) covered->add(const_cast<Node*>(node));
  }
  return covered;
}

void DiagramControl::showHint(std::string_view text) {
  const Ref<DiagramControl> self(this);
  m_interaction->showHint(text);
}

platform::Rect DiagramControl::toView(const platform::Rect& area) const {
  const platform::Rect pixels = m_viewport.toPixels(area);
  constexpr double kTwips = platform::kTwipsPerPixel;
  return {pixels.left * kTwips, pixels.top * kTwips, pixels.width * kTwips, pixels.height * kTwips};
}

platform::Size DiagramControl::viewSize() const {
  const platform::Size pixels = m_viewport.size();
  return {pixels.width * platform::kTwipsPerPixel, pixels.height * platform::kTwipsPerPixel};
}

void DiagramControl::CopyToClipboard() {
  m_registry.shell().copy({{"image/svg+xml", toSvg(m_scene)}});
}

void DiagramControl::PrintDiagram(bool preview) { PrintRequested(preview); }

void DiagramControl::PointerMove(double x, double y, std::string_view modifiers) {
  const Ref<DiagramControl> self(this);
  m_interaction->pointerMove(placeOf(x, y), modifiersNamed(modifiers));
}

void DiagramControl::PointerPress(double x, double y, std::string_view button,
                                  std::string_view modifiers) {
  const Ref<DiagramControl> self(this);
  const PointerEvent event{placeOf(x, y), buttonNamed(button), modifiersNamed(modifiers)};
  Pressed();
  m_interaction->pointerPress(event);
}

void DiagramControl::PointerRelease(double x, double y, std::string_view button,
                                    std::string_view modifiers) {
  const Ref<DiagramControl> self(this);
  m_interaction->pointerRelease({placeOf(x, y), buttonNamed(button), modifiersNamed(modifiers)});
}

void DiagramControl::PointerDoubleClick(double x, double y) {
  const Ref<DiagramControl> self(this);
  const Point at = placeOf(x, y);
  Pressed();
  m_interaction->pointerDoubleClick(at);
}

void DiagramControl::PointerLeave() {
  const Ref<DiagramControl> self(this);
  m_interaction->pointerLeave();
}

void DiagramControl::Wheel(double x, double y, double steps, std::string_view modifiers) {
  const Modifiers held = modifiersNamed(modifiers);
  const Ref<DiagramControl> self(this);
  if (held.ctrl) {
    m_viewport.zoomTo(getZoom() * std::pow(kWheelZoomStep, std::clamp(steps, -100.0, 100.0)),
                      placeOf(x, y));
  } else {
    const double pixels = -steps * kWheelPixels;
    m_viewport.scrollBy(held.shift ? Point{pixels, 0} : Point{0, pixels});
  }
}

bool DiagramControl::KeyPress(std::string_view key, std::string_view modifiers) {
  const Ref<DiagramControl> self(this);
  const Modifiers held = modifiersNamed(modifiers);
  if (key == "Space" || key == " ") {
    m_interaction->spaceHeld(true);
    return true;
  }
  if (m_interaction->inGesture()) {
    if (key == "Escape") m_interaction->cancel();
    return true;
  }
  if (pressKey(*this, key, held)) return true;
  KeyReleased(std::string(key));
  return false;
}

void DiagramControl::KeyRelease(std::string_view key, std::string_view modifiers) {
  const Ref<DiagramControl> self(this);
  static_cast<void>(modifiersNamed(modifiers));  // an error for unknown ones
  if (key == "Space" || key == " ") m_interaction->spaceHeld(false);
}

Ref<Object> DiagramControl::HitTest(double x, double y) {
  const auto hit = hitTest(m_scene, m_viewport, {x, y});
  if (!hit) return {};
  return make<HitObject>(*hit);
}

std::string DiagramControl::Cursor() const { return std::string(nameOf(cursor())); }

CursorShape DiagramControl::cursor() const { return m_interaction->cursor(); }

void DiagramControl::paintGesture(Painter& painter, double scale) const {
  m_interaction->paint(painter, scale);
}

bool DiagramControl::autoScrolls() const { return m_interaction->scrollStep() != Point{}; }

void DiagramControl::autoScroll() {
  const Ref<DiagramControl> self(this);
  m_interaction->autoScroll();
}

bool DiagramControl::canDrawLink() const { return m_settings->CanDrawLink(); }

std::string DiagramControl::refusal(std::string_view link, const Node& source,
                                    const Node& target) const {
  const platform::LinkRule rule = m_linkRule;  // it may put another one in its place
  return rule ? rule(link, source.itemKey(), target.itemKey()) : std::string();
}

bool DiagramControl::canDrop(const Node& node, std::string_view tag, const Node* target) const {
  const platform::DropRule rule = m_dropRule;
  return !rule || rule(node.itemKey(), tag, target ? target->itemKey() : std::string_view());
}

}  // namespace brisel::canvas
