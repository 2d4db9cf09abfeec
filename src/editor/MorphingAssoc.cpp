// One relationship turned into another kind, or into an attribute. Always in this order: the new
// is made, properties are copied, the old one is deleted, the line is repainted.

#include <array>

#include "controls/Row.h"
#include "editor/Refactoring.h"

namespace brisel::editor {

using platform::Node;
using platform::Ref;
using repository::Association;
namespace types = platform::types;

/// A word, what it does, and why it would do nothing to a relationship: empty where it would.
struct CLSEditor::MorphRow {
  Text word;
  void (CLSEditor::*morph)(Association& morphed);
  Text (*objection)(const Association& morphed);
};

namespace {

std::string_view notAssociation(const Association& morphed) {
  return morphed.isAssociation() ? "It is an association already" : "";
}
std::string_view notShared(const Association& morphed) {
  return morphed.isAggregation() && !isComposite(morphed) ? "It is a shared aggregation already"
                                                          : "";
}
std::string_view notComposite(const Association& morphed) {
  return isComposite(morphed) ? "It is a composite aggregation already" : "";
}
std::string_view compositeOnly(const Association& morphed) {
  return isComposite(morphed) ? "" : "Only a composite aggregation can become this";
}

}  // namespace

const CLSEditor::MorphRow* CLSEditor::morphRow(Text word) {
  using E = CLSEditor;
  static constexpr std::array kRows = {
      MorphRow{"ToAssociation", &E::toAssociation, &notAssociation},
      MorphRow{"ToSharedAggregation", &E::toSharedAggregation, &notShared},
      MorphRow{"ToCompositeAggregation", &E::toCompositeAggregation, &notComposite},
      MorphRow{"ToGeneralization", &E::toGeneralization, &compositeOnly},
      MorphRow{"ToAttribute", &E::toAttribute, &compositeOnly},
  };
  for (const MorphRow& row : kRows) {
    if (row.word == word) return &row;
  }
  return nullptr;
}

std::string CLSEditor::objectionToMorph(Text key, Text word) {
  const AssociationRef morphed = GetAssociationFromLink(key);
  return morphed ? std::string(morphRow(word)->objection(*morphed)) : "Select one relationship";
}

void CLSEditor::MorphingAssoc(Text key, Text typ) {
  trap("MorphingAssoc", [&] {
    finishEditing();
    const AssociationRef morphed = drawnAssociation(key);
    const MorphRow* row = morphRow(typ);
    if (row && row->objection(*morphed).empty()) (this->*row->morph)(*morphed);
    morphed->Populate();
  });
}

void CLSEditor::toAssociation(Association& morphed) {
  replace(morphed, types::kAssociation,
          [this](Node& from, Node& to) { m_repository->CopyAssocProperties(from, to); });
}

void CLSEditor::toSharedAggregation(Association& morphed) {
  if (morphed.isAggregation()) return morphed.clsObject()->SetProperty("isComposite", false);
  replace(morphed, types::kAggregation, [this](Node& from, Node& to) {
    m_repository->CopyAssocProperties(from, to);
    to.SetProperty("isComposite", false);
  });
}

void CLSEditor::toCompositeAggregation(Association& morphed) {
  if (morphed.isAggregation()) return morphed.clsObject()->SetProperty("isComposite", true);
  // A generalization becomes a shared aggregation, on purpose: a sub class does not own its super
  // class.
  const bool composite = morphed.isAssociation();
  replace(morphed, types::kAggregation, [&](Node& from, Node& to) {
    m_repository->CopyAssocProperties(from, to);
    to.SetProperty("isComposite", composite);
  });
}

/// Roles, multiplicities and navigability are dropped.
void CLSEditor::toGeneralization(Association& morphed) {
  replace(morphed, types::kGeneralization, [](Node& from, Node& to) {
    to.name(from.name());
    to.SetProperty("Description", from.GetProperty("Description"));
  });
  const auto line = morphed.link();
  const ClassRef sub = drawnClass(line->source()->key());
  const ClassRef super = drawnClass(line->target()->key());
  const auto circle =
      repository::inheritanceRefusal(*sub->clsObject(), *super->clsObject(), line->key());
  if (!circle.empty()) {
    m_diagram->showHint(inheritsFromItself(*sub->clsObject()));
  }
}

void CLSEditor::toAttribute(Association& morphed) {
  const Ref<Node> aggregation = morphed.clsObject();
  const std::string key = aggregation->identifier();
  const auto end = [&](Text linkType) {
    return platform::as<platform::Link>(aggregation->outgoing(linkType)->Item(1))->Target();
  };
  const Ref<Node> whole = end(types::kAggregationSource);
  const std::string partName = end(types::kAggregationTarget)->name();
  std::string name = aggregation->GetProperty("SourceRoleName").text();
  if (name.empty()) name = whole->name() + "aggregate";
  Ref<Node> dataType = m_repository->SearchObject(types::kDataType, "Name", partName);
  if (!dataType) dataType = m_repository->MakeDataType(partName, "", "");
  Ref<platform::Link> ownership;
  Refill refill(*this);
  refill.add(*drawnClass(whole->identifier()));
  m_repository->AddAttribute(whole->identifier(), name, "", false, "private", false, false, "",
                             false, dataType->identifier(), ownership);
  try {
    deleteRelationship(*aggregation);
  } catch (...) {
    if (!controls::isInRepository(*aggregation)) m_diagram->deleteLink(key);
    throw;
  }
  m_diagram->deleteLink(key);
  refill.run();
}

/// Takes the relationship's place in the model, under its identifier and on its line.
void CLSEditor::replace(Association& morphed, Text kind, const CopyProperties& copy) {
  const Ref<Node> old = morphed.clsObject();
  const std::string key = old->identifier();
  const Ref<platform::MetaType> type = model().MetaNodes(kind);
  const bool isTaken = static_cast<bool>(type->find(key));
  Ref<platform::Link> stereotypeLink;
  const Ref<Node> stereotype = m_repository->GetStereotype(*old, stereotypeLink);
  Ref<Node> made;
  try {
    made = makeReplacement(morphed, kind);
    copy(*old, *made);
    if (stereotype) m_repository->SetStereotype(*made, stereotype.get());
  } catch (...) {
    const auto half = platform::as<Node>(type->find(key));
    if (half && !isTaken) repository::removeRest(*half);
    throw;
  }
  morphed.clsObject(made.get());
  takeRelationshipFromModel(*old);
  for (const auto& point : watch().geometryOf(key)) point->SetProperty("linkClass", kind);
}

Ref<Node> CLSEditor::makeReplacement(const Association& morphed, Text kind) {
  const auto line = morphed.link();
  const std::string key = line->key();
  const std::string source = line->source()->key();
  const std::string target = line->target()->key();
  if (kind == types::kGeneralization) {
    return m_repository->MakeGeneralization(key, target, source);  // the whole becomes the sub class
  }
  const std::string name = morphed.name();
  return kind == types::kAssociation ? m_repository->MakeAssociation(name, key, source, target)
                                     : m_repository->MakeAggregation(name, key, source, target);
}

}  // namespace brisel::editor
