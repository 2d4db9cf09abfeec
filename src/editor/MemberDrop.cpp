// Members that are dragged from class to class, and ends of relationships from one to another.

#include <cmath>
#include <string>

#include "editor/Busy.h"
#include "editor/CLSEditor.h"

namespace brisel::editor {

using platform::as;
using platform::make;
using platform::Node;
using platform::Ref;
namespace types = platform::types;

namespace {

/// The link by which a class owns a member, and the type of it; nothing for what is no member.
struct Ownership {
  std::string_view type;
  Ref<platform::Link> link;
};

Ownership ownershipOf(const platform::MetaRepository& model, std::string_view member) {
  struct Row {
    std::string_view member, ownership;
  };
  for (const Row& row : {Row{types::kAttrib, types::kClassHasAttrib},
                         Row{types::kOperation, types::kClassHasOperation}}) {
    const auto found = as<Node>(model.MetaNodes(row.member)->find(member));
    if (!found) continue;
    const auto owners = found->Incoming(row.ownership);
    if (owners->Count() > 0) return {row.ownership, as<platform::Link>(owners->Item(1))};
  }
  return {};
}

}  // namespace

bool CLSEditor::mayDrop(Text node, Text tag, Text target) const {
  const Ownership owned = ownershipOf(model(), tag);
  if (!owned.link) return false;
  return target.empty() ? owned.type == types::kClassHasOperation : target != node;
}

void CLSEditor::memberDropped(const std::string& tag, platform::Point at) {
  const Ownership owned = ownershipOf(model(), tag);
  if (!owned.link) return;
  const std::string ownerKey = owned.link->source()->identifier();
  const auto target = m_diagram->nodeAt(at);
  if (target && target->key() == ownerKey) return;
  const bool isOperation = owned.type == types::kClassHasOperation;
  if (!target && !isOperation) return;
  const auto member = owned.link->Target();
  static_cast<void>(m_repository->GetDataType(*member));  // fails before anything is changed
  if (const auto box = target ? GetClassFromNode(target->key()) : ClassRef()) {
    if (m_repository->SearchLinkedObject(*box->clsObject(), owned.type, true, "Name",
                                         member->name())) {
      m_diagram->showHint(box->name() + " has a member named " + member->name() + " already");
      return;
    }
  }
  const ClassRef to = target ? drawnClass(target->key()) : makeOperationClass(at);
  if (!to) return;
  moveMember(owned.type, *owned.link, *to->clsObject());
  const CanvasUpdate update(*m_diagram);
  if (const ClassRef from = GetClassFromNode(ownerKey)) from->Populate();
  to->Populate();
  if (target) ClassChanged(target->key());
}

void CLSEditor::moveMember(Text ownership, platform::Link& owned, Node& to) {
  const auto links = make<platform::ObjectList>();
  links->add(&owned);
  if (ownership == types::kClassHasAttrib) {
    m_repository->MoveAttributes(to, *links, false);
  } else {
    m_repository->MoveOperations(to, *links, false);
  }
}

/// A new class at the place, for an operation that was dropped on empty canvas.
CLSEditor::ClassRef CLSEditor::makeOperationClass(platform::Point at) {
  const std::string key = m_generator->call("GetUUID").text();
  const std::string name = "OperationClass " + std::to_string(++m_operationClasses);
  ClassRef made = CreateClass(key, name, "", "", "", "public");
  if (!made) return {};
  platform::Rect bounds = made->Node()->bounds();
  bounds.left = std::nearbyint(at.x);
  bounds.top = std::nearbyint(at.y);
  made->Node()->bounds(bounds);
  made->Node()->fitToText(true);
  return made;
}

void CLSEditor::reconnect(const std::string& key, const std::string& classKey, bool atSource) {
  const AssociationRef moved = GetAssociationFromLink(key);
  const ClassRef end = GetClassFromNode(classKey);
  if (!moved || !end) return;
  const auto line = moved->link();
  const ClassRef other = GetClassFromNode((atSource ? line->target() : line->source())->key());
  if (!other) return;
  const ClassRef& source = atSource ? end : other;
  const ClassRef& target = atSource ? other : end;
  // The line of a generalization leads from the sub class, its second end, to the super class.
  const bool reversed = moved->isGeneralization();
  const ClassRef& first = reversed ? target : source;
  const ClassRef& second = reversed ? source : target;
  moved->clsObject(
      m_repository->MoveAssoc(*moved->clsObject(), *first->clsObject(), *second->clsObject())
          .get());
  if (atSource) {
    moved->MoveToNewSource(*end);
  } else {
    moved->MoveToNewTarget(*end);
  }
  moved->Populate();
  AssocChanged(key);
}

std::string CLSEditor::refusal(Text link, Text source, Text target) {
  const AssociationRef moved = link.empty() ? AssociationRef() : GetAssociationFromLink(link);
  const bool isGeneralization =
      moved ? moved->isGeneralization() : m_kind == RelationshipKind::generalization;
  if (!isGeneralization) return {};
  const auto classes = model().MetaNodes(types::kClass);
  const auto sub = as<Node>(classes->find(source));
  const auto super = as<Node>(classes->find(target));
  if (!sub || !super) return {};
  return repository::inheritanceRefusal(*sub, *super, link);
}

}  // namespace brisel::editor
