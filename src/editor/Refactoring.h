#pragma once

#include <vector>

#include "editor/CLSEditor.h"

namespace brisel::editor {

/// The boxes of classes whose members are moved. At its end they show what the model has, and fit
/// it, whatever failed meanwhile.
class CLSEditor::Refill {
 public:
  explicit Refill(CLSEditor& editor) : m_editor(editor) {}
  ~Refill();
  Refill(const Refill&) = delete;
  Refill& operator=(const Refill&) = delete;

  void add(repository::Class& shown) { m_classes.emplace_back(&shown); }
  /// Refills them now; what fails passes to the caller.
  void run();

 private:
  CLSEditor& m_editor;
  std::vector<ClassRef> m_classes;
};

}  // namespace brisel::editor
