#pragma once

#include <cmath>
#include <string>

#include "canvas/DiagramControl.h"
#include "platform/ComponentRegistry.h"
#include "platform/Shell.h"

namespace brisel::bench {

/// A canvas of boxes of ten rows in a square, with 1.2 lines each.
class FilledCanvas {
 public:
  /// Lines to boxes all over the canvas are the worst that an index of lines can meet; after a
  /// layout most lead to a box nearby.
  enum class Lines { allOver, nearby };

  explicit FilledCanvas(int count, Lines lines = Lines::allOver) : control(platform::make<canvas::DiagramControl>(m_registry)) {
    control->beginUpdate();
    const int across = static_cast<int>(std::ceil(std::sqrt(count)));
    for (int i = 0; i < count; ++i) addBox(i, across);
    for (int i = 0; i < count * 12 / 10; ++i) {
      control->createLink("l" + std::to_string(i), "", keyOf(i % count),
                          keyOf(lines == Lines::allOver ? (i * 7 + 1) % count
                                                        : (i + (i % 3 == 0 ? across : 1)) % count));
    }
    control->endUpdate();
  }

  /// Gives every line a name, and each end a role or a multiplicity.
  void labelLines() const {
    control->beginUpdate();
    for (canvas::Link& link : control->scene().links()) {
      link.text("relates to");
      link.beginText("1");
      link.endText("parts 0..*");
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
