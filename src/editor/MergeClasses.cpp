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

constexpr double kMergeGap = 300;

}  // namespace

void CLSEditor::MergeClasses() {
  trap("MergeClasses", [this] {
    finishEditing();
    const std::vector<ClassRef> merged = selectedClasses();
    std::string run, list;
    for (const ClassRef& one : merged) {
      run += one->name();
      list += (list.empty() ? "" : ", ") + one->name();
    }
    const repository::Class* first = merged.empty() ? nullptr : merged.front().get();
    const ClassRef made = newClass(run, "Merged class from " + list, first, kMergeGap);
    if (!made) return;
    merge(merged, *made);
    if (first) placeBeside(*made->Node(), *first->Node(), kMergeGap);
    presentResult(*made);
    synchronizeDataTypes();
  });
}

/// In the order of selecting.
std::vector<CLSEditor::ClassRef> CLSEditor::selectedClasses() {
  std::vector<ClassRef> classes;
  for (auto& box : each<platform::DiagramNode>(m_diagram->getSelectedNodes())) {
    if (const ClassRef one = GetClassFromNode(box.key())) {
      requireInModel(*one);
      classes.push_back(one);
    }
  }
  return classes;
}

void CLSEditor::merge(const std::vector<ClassRef>& merged, repository::Class& into) {
  const CanvasUpdate update(*m_diagram);
  Refill refill(*this);
  refill.add(into);
  const auto to = into.clsObject();
  for (const ClassRef& one : merged) refill.add(*one);
  try {
    for (const ClassRef& one : merged) {
      requireInModel(*one);
      const auto from = one->clsObject();
      m_repository->MoveAttributes(*to, *from->outgoing(types::kClassHasAttrib), false);
      m_repository->MoveOperations(*to, *from->outgoing(types::kClassHasOperation), false);
      const auto records = m_repository->MoveAssociations(*to, *from);
      for (const auto& record : each<MovedAssociation>(records)) follow(record);
    }
  } catch (...) {
    restoreLines();
    throw;
  }
  refill.run();
  std::string told = stayedBehind(merged);
  for (const auto& link : each<platform::Link>(to->Incoming(types::kGeneralizationSub))) {
    if (endOf(*link.source(), types::kGeneralizationSuper) != to) continue;
    told += (told.empty() ? "" : "; ") + inheritsFromItself(*to);
    break;
  }
  if (!told.empty()) m_diagram->showHint(told);
}

std::string CLSEditor::stayedBehind(const std::vector<ClassRef>& merged) const {
  std::int64_t members = 0;
  for (const ClassRef& one : merged) {
    for (const Text ownership : {types::kClassHasAttrib, types::kClassHasOperation}) {
      members += one->clsObject()->outgoing(ownership)->Count();
    }
  }
  if (members == 0) return {};
  return std::to_string(members) + (members == 1 ? " member" : " members") +
         " stayed behind: the new class has one of that name";
}

std::string CLSEditor::inheritsFromItself(const Node& classNode) const {
  return classNode.name() + " now inherits from itself";
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
  line->link()->ExtraPoints()->Clear();  // they led to where the old class stands
  line->MoveToNewSource(*drawnClass(source->identifier()));
  line->MoveToNewTarget(*drawnClass(target->identifier()));
  line->Populate();
}

/// Brings lines and model in step after a failure: what was moved is followed, and a relationship
/// that was lost half way is made anew where its line is.
void CLSEditor::restoreLines() {
  for (auto& line : each<platform::DiagramLink>(m_diagram->getAllLinks())) {
    const AssociationRef shown = GetAssociationFromLink(line.key());
    if (!shown) continue;
    const auto old = shown->clsObject();
    const repository::RelationshipType& type = repository::relationshipTypeOf(*old);
    const auto found = platform::as<Node>(model().MetaNodes(type.kind)->find(line.key()));
    const auto source = found ? endOf(*found, type.source) : nullptr;
    const auto target = found ? endOf(*found, type.target) : nullptr;
    if (source && target) {
      const bool reversed = type.kind == types::kGeneralization;
      if (found != old) follow({found, reversed ? target : source, reversed ? source : target});
      continue;
    }
    if (found) repository::removeRest(*found);
    const auto made = makeReplacement(*shown, type.kind);
    m_repository->CopyProperties(*old, *made);
    shown->clsObject(made.get());
  }
}

}  // namespace brisel::editor
