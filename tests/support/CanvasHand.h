#pragma once

#include <string>
#include <utility>
#include <vector>

#include "support/DiagramBuilder.h"
#include "support/RecordingPainter.h"

namespace brisel::test {

/// A person's hand on a canvas, and a listener that writes down what the canvas tells of it.
class CanvasHand : public DiagramBuilder {
 public:
  CanvasHand() {
    using Named = std::pair<const platform::Event<std::string>*, const char*>;
    for (const auto& [event, name] :
         {Named{&control->NodeMoved, "moved"}, Named{&control->NodeResized, "resized"},
          Named{&control->NodePressed, "pressed"}, Named{&control->NodeClicked, "clicked"},
          Named{&control->NodeRClicked, "rclicked"}, Named{&control->LinkClicked, "clicked"},
          Named{&control->LinkRClicked, "rclicked"}, Named{&control->NodeEnter, "enter"},
          Named{&control->NodeLeave, "leave"}, Named{&control->LinkEnter, "enter"},
          Named{&control->LinkLeave, "leave"}, Named{&control->KeyReleased, "key"},
          Named{&control->NodeOpened, "opened"}, Named{&control->LinkOpened, "opened"},
          Named{&control->NodeRenaming, "renaming"}}) {
      listening.push_back(event->connect([this, name = std::string(name)](const std::string& key) {
        told += name + ':' + key + ' ';
      }));
    }
    listening.push_back(control->DeleteAsked.connect([this] { told += "delete "; }));
    listening.push_back(control->Hint.connect([this](const std::string& text) { hint = text; }));
    listening.push_back(control->LinkEndDropped.connect(
        [this](const std::string& link, const std::string& node, bool atSource) {
          told += "dropped:" + link + (atSource ? " source " : " target ") + node + ' ';
        }));
  }

  void press(platform::Point at, const char* modifiers = "", const char* button = "left") {
    control->PointerPress(at.x, at.y, button, modifiers);
  }
  void move(platform::Point at) { control->PointerMove(at.x, at.y); }
  void release(platform::Point at, const char* modifiers = "", const char* button = "left") {
    control->PointerRelease(at.x, at.y, button, modifiers);
  }
  void click(platform::Point at, const char* modifiers = "", const char* button = "left") {
    press(at, modifiers, button);
    release(at, modifiers, button);
  }
  void drag(platform::Point from, platform::Point to) {
    press(from);
    move((from + to) * 0.5);
    release(to);
  }
  /// What the gesture under way shows over the items.
  [[nodiscard]] RecordingPainter gesture() const {
    RecordingPainter painter;
    control->paintGesture(painter, 1 / platform::kTwipsPerPixel);
    return painter;
  }
  [[nodiscard]] bool showsGesture() const {
    const RecordingPainter painter = gesture();
    return !painter.frames.empty() || !painter.lines.empty() || !painter.fills.empty();
  }
  [[nodiscard]] std::string selected() const {
    std::string keys;
    for (const canvas::Item* item : control->selection().selectedItems()) keys += item->itemKey();
    return keys;
  }

  std::vector<platform::Connection> listening;
  std::string told;  ///< "pressed:a clicked:a "
  std::string hint;  ///< the last one told
};

}  // namespace brisel::test
