#pragma once

#include <string>
#include <vector>

#include "component/AutomaticShell.h"
#include "editor/CLSEditor.h"
#include "platform/ComponentRegistry.h"
#include "support/Model.h"

namespace brisel::test {

/// The whole suite without windows: a registry, the automatic shell, one editor on an empty model.
class EditorBench : public Model {
 public:
  /// `adapt` may register components of its own before the editor is made.
  explicit EditorBench(const std::function<void(platform::ComponentRegistry&)>& adapt = [](auto&) {
  });
  ~EditorBench();

  platform::Ref<component::AutomaticShell> shell;
  platform::ComponentRegistry registry;
  platform::Ref<editor::CLSEditor> editor;
  std::vector<std::string> messages;  ///< the texts of the message boxes shown so far

  /// What is done in the next modal form: [control, member, argument...] a step.
  using Steps = std::vector<std::vector<platform::Value>>;
  void answerForm(const Steps& steps) const;
  /// Clears the canvas and draws the model again, as a file that is reopened.
  void redraw();
  [[nodiscard]] platform::Ref<platform::DiagramNode> box(std::string_view key) const;
  [[nodiscard]] platform::Ref<platform::DiagramLink> line(std::string_view key) const;
  /// The keys of what is drawn, in order: "A B C".
  [[nodiscard]] std::string drawnNodes() const;
  [[nodiscard]] std::string drawnLinks() const;
  /// The texts of a section's rows, without blanks at their ends.
  [[nodiscard]] std::vector<std::string> rows(std::string_view key, int section) const;
  [[nodiscard]] bool isPressed(std::string_view button) const;
  void click(std::string_view button) const;

 private:
  platform::Connection m_listening;
};

}  // namespace brisel::test
