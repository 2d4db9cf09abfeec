// From the key of a button to the command behind it.

#include <array>

#include "editor/CLSEditor.h"

namespace brisel::editor {

void CLSEditor::dispatchButton(const std::string& key) {
  struct Row {
    Text key;
    void (CLSEditor::*command)(const std::string& key);
  };
  static constexpr std::array kRows = {
      Row{"Help", &CLSEditor::helpButton},
      Row{"ViewParameters", &CLSEditor::compartmentButton},
      Row{"ViewAttributes", &CLSEditor::compartmentButton},
      Row{"ViewOperations", &CLSEditor::compartmentButton},
      Row{"Association", &CLSEditor::relationshipButton},
      Row{"CompositeAggregation", &CLSEditor::relationshipButton},
      Row{"SharedAggregation", &CLSEditor::relationshipButton},
      Row{"Generalization", &CLSEditor::relationshipButton},
      Row{"Open", &CLSEditor::openButton},
      Row{"Save", &CLSEditor::saveButton},
      Row{"AlignTop", &CLSEditor::alignButton},
      Row{"AlignBottom", &CLSEditor::alignButton},
      Row{"AlignLeft", &CLSEditor::alignButton},
      Row{"AlignRight", &CLSEditor::alignButton},
  };
  for (const Row& row : kRows) {
    if (row.key == key) return (this->*row.command)(key);
  }
  if (key.starts_with("COM::")) toggleCategory(key);
}

void CLSEditor::helpButton(const std::string&) { Help(); }
void CLSEditor::openButton(const std::string&) { OpenDiagram(); }
void CLSEditor::saveButton(const std::string&) { SaveDiagram(); }

void CLSEditor::compartmentButton(const std::string& key) {
  Compartments(key);
  saveView();
}

void CLSEditor::relationshipButton(const std::string& key) {
  m_diagram->SelectMode();
  m_kind = key == "Association"            ? RelationshipKind::association
           : key == "CompositeAggregation" ? RelationshipKind::composite
           : key == "SharedAggregation"    ? RelationshipKind::shared
                                           : RelationshipKind::generalization;
}

void CLSEditor::alignButton(const std::string& key) {
  // "AlignTop" is the canvas's "TADJST", and so on by the side's first letter.
  const char side = key[std::string_view("Align").size()];
  m_diagram->Layout(std::string(1, side) + "ADJST");
}

void CLSEditor::toggleCategory(const std::string& key) {
  AddPositions();
  if (m_view.isShown(key)) {
    m_view.hide(key);
  } else {
    m_view.show(key);
  }
  m_diagram->Clear();
  saveView();
  Populate();
}

}  // namespace brisel::editor
