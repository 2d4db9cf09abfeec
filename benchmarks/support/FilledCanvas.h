#pragma once

#include <cmath>
#include <string>

#include "canvas/DiagramControl.h"
#include "platform/ComponentRegistry.h"
#include "platform/Shell.h"

namespace brisel::bench {

/// A canvas of boxes of ten rows in a square, with 1.2 lines each to boxes all over it: the worst
/// that an index of lines can meet.
class FilledCanvas {
 public:
  explicit FilledCanvas(int count) : control(platform::make<canvas::DiagramControl>(m_registry)) {
    control->beginUpdate();
    const int across = static_cast<int>(std::ceil(std::sqrt(count)));
    for (int i = 0; i < count; ++i) addBox(i, across);
    for (int i = 0; i < count * 12 / 10; ++i) {
      control->createLink("l" + std::to_string(i), "", keyOf(i % count),
                          keyOf((i * 7 + 1) % count));
    }
    control->endUpdate();
  }

  static std::string keyOf(int i) { return "n" + std::to_string(i); }

 private:
  void addBox(int i, int across) const {
    control->createNode(keyOf(i), "Class" + std::to_string(i), i % across * 5000.0,
                        i / across * 5000.0, 3000, 1500, canvas::Node::kClassBox);
    const auto node = control->getNode(keyOf(i));
    const auto rows = node->Section(0);
    for (int row = 0; row < 10; ++row) {
      rows->addRow("+attribute" + std::to_string(row) + ":integer", "STRING", keyOf(row));
    }
    node->Section(1)->visible(false);
    node->fitToText(true);
  }

  platform::ComponentRegistry m_registry{platform::Ref<platform::Shell>()};

 public:
  platform::Ref<canvas::DiagramControl> control;
};

}  // namespace brisel::bench
