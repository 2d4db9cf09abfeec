// The selected classes merged into a new one. They themselves stay, emptied, on purpose: whether
// they go is the person's to say.

#include <string>
#include <vector>

#include "editor/Busy.h"
#include "editor/Refactoring.h"
#include "repository/MovedAssociation.h"

namespace brisel::editor {

using platform::each;
using platform::Node;
using repository::endOf;
using repository::MovedAssociation;
namespace types = platform::types;

namespace {

constexpr double kGap = 300;
constexpr platform::Point kFirstPlace{300, 300};

}  // namespace

void CLSEditor::MergeClasses() {
  trap("MergeClasses", [this] {
    std::vector<ClassRef> merged;
    std::string run, list;
    for (auto& box : each<platform::DiagramNode>(m_diagram->getSelectedNodes())) {
      const ClassRef one = GetClassFromNode(box.key());
      if (!one) continue;
      run += one->name();
      list += (merged.empty() ? "" : ", ") + one->name();
      merged.push_back(one);
    }
    const ClassRef made = newClass(run, "Merged class from " + list);
    if (!made) return;
    merge(merged, *made);
    if (merged.empty()) {
      place(*made->Node(), kFirstPlace, kGap);
    } else {
      placeBeside(*made->Node(), *merged.front()->Node(), kGap);
    }
    synchronizeDataTypes();
  });
}

void CLSEditor::merge(const std::vector<ClassRef>& merged, repository::Class& into) {
  const CanvasUpdate update(*m_diagram);
  Refill refill(*this);
  refill.add(into);
  const auto to = into.clsObject();
  for (const ClassRef& one : merged) refill.add(*one);
  try {
    for (const ClassRef& one : merged) {
      const auto from = one->clsObject();
      m_repository->MoveAttributes(*to, *from->outgoing(types::kClassHasAttrib), false);
      m_repository->MoveOperations(*to, *from->outgoing(types::kClassHasOperation), false);
      const auto records = m_repository->MoveAssociations(*to, *from);
      for (const auto& record : each<MovedAssociation>(records)) follow(record);
    }
  } catch (...) {
    followAll(*to);
    throw;
  }
  refill.run();
}

/// The line of a moved relationship now joins its new ends. One without a line, because a class at
/// its end is hidden, is moved in the model only.
void CLSEditor::follow(const MovedAssociation& moved) {
  const AssociationRef line = GetAssociationFromLink(moved.clsAssoc()->identifier());
  if (!line) return;
  line->clsObject(moved.clsAssoc().get());
  // The first end of a generalization is its super class, at which the line ends.
  const bool reversed = line->isGeneralization();
  const auto source = reversed ? moved.clsTarget() : moved.clsSource();
  const auto target = reversed ? moved.clsSource() : moved.clsTarget();
  if (reversed && source == target) {
    m_diagram->showHint(source->name() + " is now its own super class");
  }
  line->link()->ExtraPoints()->Clear();  // they led to where the old class stands
  line->MoveToNewSource(*drawnClass(source->identifier()));
  line->MoveToNewTarget(*drawnClass(target->identifier()));
  line->Populate();
}

/// Brings the lines of a class in step with the model, as far as it goes.
void CLSEditor::followAll(Node& classNode) {
  for (const repository::RelationshipType& type : repository::kRelationshipTypes) {
    for (const Text end : {type.source, type.target}) {
      for (const auto& link : each<platform::Link>(classNode.Incoming(end)->copy())) {
        const auto relationship = link.source();
        // As MoveAssociations names the ends.
        const bool reversed = type.kind == types::kGeneralization;
        const auto first = endOf(*relationship, reversed ? type.target : type.source);
        const auto second = endOf(*relationship, reversed ? type.source : type.target);
        if (first && second) follow(MovedAssociation(relationship, first, second));
      }
    }
  }
}

}  // namespace brisel::editor
