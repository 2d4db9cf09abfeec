// From the key of a button or tool to the command behind it.

#include <array>

#include "editor/CLSEditor.h"

namespace brisel::editor {

using platform::Arrow;

/// A tool of the popup menus, its command, what the command is told beside the element's key, and
/// what says when it would do nothing.
struct CLSEditor::ToolRow {
  Text key;
  void (CLSEditor::*command)(Text element, const ToolRow& row);
  Text word = {};
  std::int64_t number = 0;
  std::string (CLSEditor::*objection)(Text element, const ToolRow& row) = nullptr;
};

/// What a button says about the relationships that are drawn next, and how their ends look while
/// they are drawn.
struct CLSEditor::KindRow {
  Text key;
  RelationshipKind kind;
  Arrow begin;
  Arrow end;
};

const std::array<CLSEditor::KindRow, 4>& CLSEditor::kindRows() {
  using Kind = RelationshipKind;
  static constexpr std::array<KindRow, 4> kRows = {
      KindRow{"Association", Kind::association, Arrow::none, Arrow::none},
      KindRow{"CompositeAggregation", Kind::composite, Arrow::filledDiamond, Arrow::none},
      KindRow{"SharedAggregation", Kind::shared, Arrow::diamond, Arrow::none},
      KindRow{"Generalization", Kind::generalization, Arrow::none, Arrow::triangle},
  };
  return kRows;
}

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
      Row{"MatrixBrowser", &CLSEditor::matrixButton},
      Row{"Association", &CLSEditor::relationshipButton},
      Row{"CompositeAggregation", &CLSEditor::relationshipButton},
      Row{"SharedAggregation", &CLSEditor::relationshipButton},
      Row{"Generalization", &CLSEditor::relationshipButton},
      Row{"Template", &CLSEditor::templateButton},
      Row{"Open", &CLSEditor::openButton},
      Row{"Save", &CLSEditor::saveButton},
      Row{"AlignTop", &CLSEditor::alignButton},
      Row{"AlignBottom", &CLSEditor::alignButton},
      Row{"AlignLeft", &CLSEditor::alignButton},
      Row{"AlignRight", &CLSEditor::alignButton},
      Row{"Stereotypes", &CLSEditor::stereotypesButton},
      Row{"Demo", &CLSEditor::demoButton},
  };
  for (const Row& row : kRows) {
    if (row.key == key) return (this->*row.command)(key);
  }
  if (key.starts_with("COM::")) toggleCategory(key);
}

void CLSEditor::helpButton(const std::string&) { Help(); }
void CLSEditor::openButton(const std::string&) { OpenDiagram(); }
void CLSEditor::saveButton(const std::string&) { SaveDiagram(); }

void CLSEditor::matrixButton(const std::string&) { MatrixBrowser(); }
void CLSEditor::templateButton(const std::string&) { ShowTemplateEditor(); }

void CLSEditor::demoButton(const std::string&) { MakeDemo(); }

void CLSEditor::stereotypesButton(const std::string&) { EditStereotypes(); }

void CLSEditor::compartmentButton(const std::string& key) {
  Compartments(key);
  saveView();
}

void CLSEditor::relationshipButton(const std::string& key) {
  m_diagram->SelectMode();
  for (const KindRow& row : kindRows()) {
    if (row.key != key) continue;
    m_kind = row.kind;
    m_diagram->set("linkBeginArrow", static_cast<int>(row.begin));
    m_diagram->set("linkEndArrow", static_cast<int>(row.end));
  }
  m_diagram->GetDiagram()->set("CanDrawLink", true);
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

/// The buttons of the tools that the pointer can be look pressed when it is theirs.
void CLSEditor::SyncModeButtons() {
  const bool selects = m_diagram->Mode() == "select";
  const bool draws = m_diagram->GetDiagram()->get("CanDrawLink").isTrue();
  showPressed("Select", selects && !draws);
  for (const KindRow& row : kindRows()) {
    showPressed(row.key, selects && draws && row.kind == m_kind);
  }
}

void CLSEditor::ShowPopupMenu(Text what) {
  trap("ShowPopupMenu", [&] {
    if (what == "Class") {
      if (const ClassRef shown = GetClassFromNode(m_activeBar->Tag())) {
        const auto box = shown->Node();
        m_activeBar->checked("miCompartmentsAttributes", box->Section(0)->visible());
        m_activeBar->checked("miCompartmentsOperations", box->Section(1)->visible());
      }
      m_activeBar->popUp("tbPopupMenu");
    } else if (what == "Link") {
      m_activeBar->popUp("tbPopupAssoc");
    }
  });
}

const CLSEditor::ToolRow* CLSEditor::toolRow(Text tool) {
  using E = CLSEditor;
  static constexpr std::array kRows = {
      ToolRow{"miPopupEdit", &E::editTool},
      ToolRow{"miPopupProperties", &E::propertiesTool},
      ToolRow{"miPopupSizeToFit", &E::sizeToFitTool},
      ToolRow{"miPopupAssocEdit", &E::editAssociationTool},
      // One key is spelled without its "h" on purpose.
      ToolRow{"miMorpToAss", &E::morphTool, "ToAssociation", 0, &E::morphObjection},
      ToolRow{"miMorphToAggShared", &E::morphTool, "ToSharedAggregation", 0, &E::morphObjection},
      ToolRow{"miMorphToAggComposite", &E::morphTool, "ToCompositeAggregation", 0,
              &E::morphObjection},
      ToolRow{"miMorphToGen", &E::morphTool, "ToGeneralization", 0, &E::morphObjection},
      ToolRow{"miMorphToAttr", &E::morphTool, "ToAttribute", 0, &E::morphObjection},
      ToolRow{"miMorphClassSplit", &E::splitTool, "Split", 0, &E::splitObjection},
      ToolRow{"miMorphClassSplitSemantic", &E::splitTool, "SplitSemantic", 0, &E::splitObjection},
      ToolRow{"miCompartmentsAttributes", &E::compartmentTool, "Attributes"},
      ToolRow{"miCompartmentsOperations", &E::compartmentTool, "Operations"},
      ToolRow{"miMorphExtractAttribute", &E::extractTool, {}, 0, &E::extractObjection},
      ToolRow{"miMorphMerge", &E::mergeTool, {}, 0, &E::mergeObjection},
      ToolRow{"Divide", &E::propertyNodeTool, {}, 1},
      ToolRow{"Assemble", &E::propertyNodeTool, {}, 2},
  };
  for (const ToolRow& row : kRows) {
    if (row.key == tool) return &row;
  }
  return nullptr;
}

void CLSEditor::toolClicked(const std::string& tool) {
  CommitClassName();
  const std::string element = m_activeBar->Tag();
  if (const ToolRow* row = toolRow(tool)) (this->*row->command)(element, *row);
  PopupButton(tool);
}

void CLSEditor::editTool(Text key, const ToolRow&) { EditClass(key); }
void CLSEditor::editAssociationTool(Text key, const ToolRow&) { EditAssociation(key); }
void CLSEditor::propertiesTool(Text key, const ToolRow&) { ShowClassProperties(key); }
void CLSEditor::sizeToFitTool(Text key, const ToolRow&) { SizeToFit(key); }
void CLSEditor::propertyNodeTool(Text, const ToolRow& row) { PropertyNode(row.number); }

void CLSEditor::morphTool(Text key, const ToolRow& row) { MorphingAssoc(key, row.word); }
void CLSEditor::splitTool(Text key, const ToolRow& row) { MorphingClass(key, row.word); }
void CLSEditor::extractTool(Text key, const ToolRow&) { ExtractAttribute(key); }
void CLSEditor::mergeTool(Text, const ToolRow&) { MergeClasses(); }

void CLSEditor::compartmentTool(Text key, const ToolRow& row) {
  const bool show = !m_activeBar->checked(row.key);
  m_activeBar->checked(row.key, show);
  ShowCompartments(key, row.word, show);
}

std::string CLSEditor::objection(Text tool, Text element) {
  return trap("objection", [&]() -> std::string {
    const ToolRow* row = toolRow(tool);
    return row && row->objection ? (this->*row->objection)(element, *row) : std::string();
  });
}

std::string CLSEditor::morphObjection(Text key, const ToolRow& row) {
  return objectionToMorph(key, row.word);
}

std::string CLSEditor::splitObjection(Text key, const ToolRow&) {
  const ClassRef shown = GetClassFromNode(key);
  if (!shown) return "Select one class";
  const auto node = shown->clsObject();
  const bool hasMembers = node->outgoing(platform::types::kClassHasAttrib)->Count() > 0 ||
                          node->outgoing(platform::types::kClassHasOperation)->Count() > 0;
  return hasMembers ? "" : "The class has no members that could move";
}

std::string CLSEditor::extractObjection(Text key, const ToolRow&) {
  const ClassRef shown = GetClassFromNode(key);
  if (!shown) return "Select one class";
  const auto attributes = shown->clsObject()->outgoing(platform::types::kClassHasAttrib);
  return attributes->Count() > 0 ? "" : "The class has no attributes";
}

std::string CLSEditor::mergeObjection(Text, const ToolRow&) {
  return m_diagram->getSelectedNodes()->Count() > 1 ? "" : "Select the classes to merge";
}

void CLSEditor::PropertyNode(std::int64_t no) {
  trap("PropertyNode", [&] {
    if (no != 1 && no != 2) return;
    const auto box = drawnNode(m_activeBar->Tag());
    box->Section(0)->visible(no == 1);
    box->Section(1)->visible(no == 1);
    box->fitToText(true);
  });
}

}  // namespace brisel::editor
