#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Collection.h"

namespace brisel::component {

/// The generic members of a diagram as typed calls, each handed on by its name to a canvas, which
/// says what the arguments mean (canvas/DiagramControl.h) and may be a host's own. A member that
/// the canvas lacks is a CallError; what the canvas answers comes back.
class DiagramMembers {
 public:
  using Text = std::string_view;
  using Value = platform::Value;
  using ObjectRef = platform::Ref<platform::Object>;
  using CollectionRef = platform::Ref<platform::Collection>;

  Value ShowToolbar(bool show) { return onCanvas("ShowToolbar", {show}); }
  Value AddImage(Text name, Text file) { return onCanvas("AddImage", {name, file}); }
  Value AddButton(Text key, Text caption, Text tooltip, Text icon, bool enabled) {
    return onCanvas("AddButton", {key, caption, tooltip, icon, enabled});
  }
  Value AddStandardButtons() { return onCanvas("AddStandardButtons"); }
  bool createLink(Text key, Text text, Text source, Text target) {
    return onCanvas("createLink", {key, text, source, target}).boolean();
  }
  bool createNode(Text key, Text text, double left, double top, double width, double height,
                  std::int64_t style) {
    return onCanvas("createNode", {key, text, left, top, width, height, style}).boolean();
  }
  bool deleteSelectedItems() { return onCanvas("deleteSelectedItems").boolean(); }
  bool deleteMarkedItems() { return onCanvas("deleteMarkedItems").boolean(); }
  bool deleteLink(const Value& keyOrLink) { return onCanvas("deleteLink", {keyOrLink}).boolean(); }
  bool deleteNode(const Value& keyOrNode) { return onCanvas("deleteNode", {keyOrNode}).boolean(); }
  bool markNode(const Value& keyOrNode) { return onCanvas("markNode", {keyOrNode}).boolean(); }
  bool markLink(const Value& keyOrLink) { return onCanvas("markLink", {keyOrLink}).boolean(); }
  bool selNode(const Value& keyOrNode) { return onCanvas("selNode", {keyOrNode}).boolean(); }
  bool selLink(const Value& keyOrLink) { return onCanvas("selLink", {keyOrLink}).boolean(); }
  bool unmarkAll() { return onCanvas("unmarkAll").boolean(); }
  bool unselectAll() { return onCanvas("unselectAll").boolean(); }
  Value TransformExtent(double pixels) { return onCanvas("TransformExtent", {pixels}); }
  ObjectRef getNode(Text key) { return onCanvas("getNode", {key}).object(); }
  ObjectRef getLink(Text key) { return onCanvas("getLink", {key}).object(); }
  CollectionRef getAllLinks() {
    return platform::as<platform::Collection>(onCanvas("getAllLinks").object());
  }
  CollectionRef getAllNodes() {
    return platform::as<platform::Collection>(onCanvas("getAllNodes").object());
  }
  CollectionRef getSelectedNodes() {
    return platform::as<platform::Collection>(onCanvas("getSelectedNodes").object());
  }
  CollectionRef getSelectedLinks() {
    return platform::as<platform::Collection>(onCanvas("getSelectedLinks").object());
  }
  CollectionRef getIncomingLinks(const Value& keyOrNode) {
    return platform::as<platform::Collection>(onCanvas("getIncomingLinks", {keyOrNode}).object());
  }
  CollectionRef getOutgoingLinks(const Value& keyOrNode) {
    return platform::as<platform::Collection>(onCanvas("getOutgoingLinks", {keyOrNode}).object());
  }
  Value getZoom() { return onCanvas("getZoom"); }
  Value zoom(double percent) { return onCanvas("zoom", {percent}); }
  Value noZoom() { return onCanvas("noZoom"); }
  Value SelectMode() { return onCanvas("SelectMode"); }
  Value DrawCreateMode() { return onCanvas("DrawCreateMode"); }
  Value ClickCreateMode() { return onCanvas("ClickCreateMode"); }
  Value CopyToClipboard() { return onCanvas("CopyToClipboard"); }
  Value Clear() { return onCanvas("Clear"); }
  Value GetDiagram() { return onCanvas("GetDiagram"); }
  Value GetDiagramHandle() { return onCanvas("GetDiagramHandle"); }
  void refresh() { onCanvas("refresh"); }
  void Layout(Text code) { onCanvas("Layout", {code}); }
  Value SetNewNodeSize(double width, double height) {
    return onCanvas("SetNewNodeSize", {width, height});
  }
  Value LabelFont(Text name, double size) { return onCanvas("LabelFont", {name, size}); }
  Value SectionFont(Text name, double size) { return onCanvas("SectionFont", {name, size}); }
  void PrintDiagram(bool preview) { onCanvas("PrintDiagram", {preview}); }
  Value GetCenter(const Value& keyOrItem) { return onCanvas("GetCenter", {keyOrItem}); }
  Value GetHitNode(const Value& point) { return onCanvas("GetHitNode", {point}); }

  [[nodiscard]] std::string nodePicture() const { return canvas()->get("nodePicture").string(); }
  void nodePicture(Text value) { canvas()->set("nodePicture", value); }
  [[nodiscard]] std::string linkPicture() const { return canvas()->get("linkPicture").string(); }
  void linkPicture(Text value) { canvas()->set("linkPicture", value); }
  [[nodiscard]] std::string linkBeginPicture() const {
    return canvas()->get("linkBeginPicture").string();
  }
  void linkBeginPicture(Text value) { canvas()->set("linkBeginPicture", value); }
  [[nodiscard]] std::string linkEndPicture() const {
    return canvas()->get("linkEndPicture").string();
  }
  void linkEndPicture(Text value) { canvas()->set("linkEndPicture", value); }
  [[nodiscard]] std::string nodeNumberOfSections() const {
    return canvas()->get("nodeNumberOfSections").string();
  }
  void nodeNumberOfSections(Text value) { canvas()->set("nodeNumberOfSections", value); }
  [[nodiscard]] std::int64_t linkBeginArrow() const {
    return canvas()->get("linkBeginArrow").integer();
  }
  void linkBeginArrow(std::int64_t value) { canvas()->set("linkBeginArrow", value); }
  [[nodiscard]] std::int64_t linkEndArrow() const {
    return canvas()->get("linkEndArrow").integer();
  }
  void linkEndArrow(std::int64_t value) { canvas()->set("linkEndArrow", value); }
  [[nodiscard]] std::int64_t linkNodeCX() const { return canvas()->get("linkNodeCX").integer(); }
  void linkNodeCX(std::int64_t value) { canvas()->set("linkNodeCX", value); }
  [[nodiscard]] std::int64_t linkNodeCY() const { return canvas()->get("linkNodeCY").integer(); }
  void linkNodeCY(std::int64_t value) { canvas()->set("linkNodeCY", value); }
  [[nodiscard]] std::int64_t BackColor() const { return canvas()->get("BackColor").integer(); }
  void BackColor(std::int64_t value) { canvas()->set("BackColor", value); }

 protected:
  DiagramMembers() = default;
  DiagramMembers(const DiagramMembers&) = default;
  DiagramMembers& operator=(const DiagramMembers&) = default;
  virtual ~DiagramMembers() = default;

  /// The canvas that is to answer; an Error where there is none.
  [[nodiscard]] virtual ObjectRef canvas() const = 0;

 private:
  Value onCanvas(Text member, std::vector<Value> arguments = {}) {
    return canvas()->call(member, std::move(arguments));
  }
};

}  // namespace brisel::component
