#pragma once

#include <cmath>
#include <cstdint>
#include <random>
#include <string>

#include "canvas/DiagramControl.h"
#include "platform/ComponentRegistry.h"
#include "platform/Shell.h"

namespace brisel::bench {

/// A canvas with as many classes of ten rows, in a square, and 1.2 lines a class, all but one in
/// fifty to a class near by. The same number gives the same diagram.
struct GeneratedDiagram {
  explicit GeneratedDiagram(int classes)
      : control(platform::make<canvas::DiagramControl>(registry)), m_count(classes) {
    control->beginUpdate();
    m_side = static_cast<int>(std::ceil(std::sqrt(classes)));
    for (int i = 0; i < classes; ++i) addBox(i);
    for (int i = 0; i < classes * 12 / 10; ++i) addLine(i);
    control->endUpdate();
  }

  platform::ComponentRegistry registry{platform::Ref<platform::Shell>()};
  platform::Ref<canvas::DiagramControl> control;

 private:
  void addBox(int i) {
    const std::string number = std::to_string(i);
    control->createNode(number, "Class" + number, i % m_side * 4300.0, i / m_side * 3900.0, 3000,
                        1500, canvas::Node::kClassBox);
    canvas::Node& node = *control->scene().node(number);
    for (int row = 0; row < 10; ++row) {
      const bool attribute = row < 6;
      const std::string text = attribute
                                   ? "-attribute" + std::to_string(row) + ":Type" + number
                                   : "+operation" + std::to_string(row) + "() : Type" + number;
      node.Section(attribute ? 0 : 1)->addRow(text, "STRING", number + "::" + std::to_string(row));
    }
    node.Section(0)->visible(true);
    node.Section(1)->visible(true);
    node.fitToText(true);
  }

  void addLine(int i) {
    const int from = pick(m_count);
    const int near = from + pick(5) - 2 + (pick(5) - 2) * m_side;
    const int to = pick(50) > 0 && near >= 0 && near < m_count ? near : pick(m_count);
    if (from == to) return;
    const std::string key = "line" + std::to_string(i);
    control->createLink(key, i % 3 == 0 ? "label" : "", std::to_string(from), std::to_string(to));
    canvas::Link& link = *control->scene().link(key);
    link.endArrow(i % 2 == 0 ? 8 : 3);
    if (i % 2 == 1) link.endText("0..*");
  }

  int pick(int below) { return static_cast<int>(m_random() % static_cast<std::uint32_t>(below)); }

  int m_count;
  int m_side = 1;
  std::mt19937 m_random{7};
};

}  // namespace brisel::bench
