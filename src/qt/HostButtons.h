#pragma once

#include <string>
#include <vector>

#include "canvas/DiagramControl.h"
#include "editor/CLSEditor.h"

namespace brisel::qt {

/// The buttons that the application, as the host of an editor, adds to its canvas: the drawing
/// tools, files, and the suite's other tools. The editor answers all but "NewClass", which is the
/// application's own. The editor must outlive it.
class HostButtons {
 public:
  HostButtons(editor::CLSEditor& editor, const std::string& installationFolder);

 private:
  void showMode();

  editor::CLSEditor& m_editor;
  platform::Ref<platform::DiagramControl> m_canvas;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
