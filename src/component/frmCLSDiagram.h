#pragma once

#include <string>
#include <string_view>

#include "editor/CLSEditor.h"
#include "platform/ComponentRegistry.h"

namespace brisel::component {

/// The form of a DiagramWindow: one editor that fills it. Toolkit-free; a window follows it.
class frmCLSDiagram : public platform::Object {
 public:
  static constexpr int kDefaultPointer = 0;
  static constexpr int kHourglassPointer = 11;

  /// Makes the editor; Load hands it this form as its parent window.
  explicit frmCLSDiagram(platform::ComponentRegistry& registry);

  [[nodiscard]] platform::Ref<platform::Object> CLSEditor() const { return m_editor; }
  [[nodiscard]] platform::Ref<editor::CLSEditor> Editor() const { return m_editor; }
  void HourglassOn();
  void HourglassOff();

  void Load();
  /// Ends the editor; the form answers on, but is of no use any more.
  void Unload();
  void Show(bool modal);
  void Hide();
  /// In twips; the editor fills the form.
  void Resize(double width, double height);
  /// F1 shows the help of the editor's session; errors are ignored.
  void KeyPress(std::string_view key, std::string_view modifiers);

  [[nodiscard]] std::string Caption() const { return m_caption; }
  void Caption(std::string_view caption);
  [[nodiscard]] bool Visible() const { return m_visible; }
  [[nodiscard]] bool modal() const { return m_modal; }
  [[nodiscard]] int MousePointer() const { return m_mousePointer; }

  platform::Event<> Changed;  ///< caption, visibility or mouse pointer

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  void mousePointer(int pointer);

  platform::Ref<editor::CLSEditor> m_editor;
  std::string m_caption;
  bool m_visible = false;
  bool m_modal = false;
  int m_mousePointer = kDefaultPointer;
};

}  // namespace brisel::component
