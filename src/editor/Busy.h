#pragma once

#include "editor/CLSEditor.h"

namespace brisel::editor {

/// Shows the busy cursor as long as it lives, whatever fails meanwhile.
class CLSEditor::Busy {
 public:
  explicit Busy(CLSEditor& editor) : m_editor(editor) { m_editor.HourglassOn(); }
  ~Busy() { m_editor.HourglassOff(); }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  CLSEditor& m_editor;
};

/// Gathers what changes on the canvas into one repaint.
class CanvasUpdate {
 public:
  explicit CanvasUpdate(platform::DiagramControl& diagram) : m_diagram(diagram) {
    m_diagram.beginUpdate();
  }
  ~CanvasUpdate() { m_diagram.endUpdate(); }
  CanvasUpdate(const CanvasUpdate&) = delete;
  CanvasUpdate& operator=(const CanvasUpdate&) = delete;

 private:
  platform::DiagramControl& m_diagram;
};

/// Gives a variable a value for a while.
template <class T>
class Temporarily {
 public:
  Temporarily(T& variable, T value) : m_variable(variable), m_before(variable) {
    m_variable = std::move(value);
  }
  ~Temporarily() { m_variable = std::move(m_before); }
  Temporarily(const Temporarily&) = delete;
  Temporarily& operator=(const Temporarily&) = delete;

 private:
  T& m_variable;
  T m_before;
};

}  // namespace brisel::editor
