#pragma once

#include <string_view>

#include "Program.h"
#include "canvas/DiagramControl.h"
#include "editor/CLSEditor.h"
#include "platform/Repository.h"

namespace brisel::app {

/// A model drawn by the editor, without a window. A model that was never laid out is laid out.
/// Raises what the editor could only have shown in a message box.
class Diagram {
 public:
  Diagram(Program& program, platform::MetaRepository& model);
  ~Diagram();
  Diagram(const Diagram&) = delete;
  Diagram& operator=(const Diagram&) = delete;

  /// By a code of the canvas or "%HIERARCHY%".
  void layout(std::string_view code);
  [[nodiscard]] const canvas::Scene& scene() const;
  /// Whether the model had no stored geometry, so that drawing it has laid it out.
  [[nodiscard]] bool isFresh() const { return m_fresh; }

 private:
  Program& m_program;
  platform::Ref<editor::CLSEditor> m_editor;
  bool m_fresh;
};

}  // namespace brisel::app
