#pragma once

#include <string>
#include <vector>

#include "canvas/DiagramControl.h"
#include "platform/ComponentRegistry.h"
#include "platform/Shell.h"
#include "platform/Text.h"

namespace brisel::test {

/// A canvas to put boxes and lines on in few words.
class DiagramBuilder {
 public:
  DiagramBuilder() : control(platform::make<canvas::DiagramControl>(registry)) {}

  canvas::Node& box(const std::string& key, const std::string& title, double left, double top,
                    const std::vector<std::string>& attributes = {},
                    const std::vector<std::string>& operations = {}) {
    control->createNode(key, title, left, top, 3000, 1500, canvas::Node::kClassBox);
    canvas::Node& node = *control->scene().node(key);
    fill(node, 0, attributes);
    fill(node, 1, operations);
    node.fitToText(true);
    return node;
  }

  canvas::Link& line(const std::string& key, const std::string& source, const std::string& target,
                     const std::string& label = "") {
    control->createLink(key, label, source, target);
    return *control->scene().link(key);
  }

  platform::ComponentRegistry registry{platform::Ref<platform::Shell>()};
  platform::Ref<canvas::DiagramControl> control;

 private:
  static void fill(canvas::Node& node, std::int64_t section, const std::vector<std::string>& rows) {
    const auto rowsOf = node.Section(section);
    rowsOf->visible(!rows.empty());
    for (const std::string& row : rows) rowsOf->addRow(row, "STRING", "");
  }
};

}  // namespace brisel::test
