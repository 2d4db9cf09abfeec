// A class split in two: ticked members move to a new class beside it, or above it.

#include "editor/Busy.h"
#include "editor/Refactoring.h"
#include "editors/frmClass.h"
#include "platform/Shell.h"
#include "platform/Text.h"

namespace brisel::editor {

namespace {

constexpr double kSplitGap = 300;

struct SplitTexts {
  std::string_view name, information;
};
constexpr SplitTexts kPlain = {"Name of splitted class:",
                               "Check attributes/operation which are moved into the other class."};
constexpr SplitTexts kSemantic = {"Name of superclass:",
                                  "Check attributes/operation which are moved into superclass."};

}  // namespace

void CLSEditor::MorphingClass(Text key, Text kind) {
  trap("MorphingClass", [&] {
    if (kind == "SplitSemantic") {
      SplitClass(key, true);
    } else if (kind == "Split") {
      SplitClass(key, false);
    }
  });
}

void CLSEditor::SplitClass(Text key, bool semantic) {
  trap("SplitClass", [&] {
    finishEditing();
    const ClassRef old = refactoredClass(key);
    const auto dialog = platform::make<editors::frmClass>(m_registry);
    const SplitTexts& texts = semantic ? kSemantic : kPlain;
    dialog->CurrentClass(old.get());
    dialog->Prepare(*old);
    dialog->SetCaption("Split class " + old->name());
    dialog->SetClassnameLabel(texts.name);
    dialog->SetInformation(texts.information);
    m_registry.shell().runForm("frmClass", *dialog);
    if (dialog->Accepted()) split(*old, *dialog, semantic);
  });
}

void CLSEditor::split(repository::Class& old, editors::frmClass& answers, bool semantic) {
  const auto attributes = answers.Attributes()->tickedRows();
  const auto operations = answers.Operations()->tickedRows();
  const std::string name(platform::trimmed(answers.ClassName()->Text()));
  const ClassRef made = newClass(name, "superclass of " + old.name(), &old, kSplitGap);
  if (!made) return;
  const CanvasUpdate update(*m_diagram);
  Refill refill(*this);
  refill.add(old);
  refill.add(*made);
  m_repository->MoveAttributes(*made->clsObject(), *attributes, false);
  m_repository->MoveOperations(*made->clsObject(), *operations, false);
  refill.run();
  placeBeside(*made->Node(), *old.Node(), kSplitGap);
  if (semantic) {
    const AssociationRef inherits =
        createLink(RelationshipKind::generalization, freshKey(), "",
                   old.clsObject()->identifier(), made->clsObject()->identifier());
    if (inherits) noteExtracted(*inherits);
  }
  presentResult(*made);
  synchronizeDataTypes();
}

}  // namespace brisel::editor
