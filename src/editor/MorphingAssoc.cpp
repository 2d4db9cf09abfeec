// One relationship turned into another kind, or into an attribute. Always in this order: the new
// is made, properties are copied, the old one is deleted, the line is repainted.

#include <array>

#include "editor/CLSEditor.h"
#include "editor/Refactoring.h"

namespace brisel::editor {

using platform::Node;
using platform::Ref;
using repository::Association;
namespace types = platform::types;

void CLSEditor::MorphingAssoc(Text key, Text typ) {
  struct Row {
    Text word;
    void (CLSEditor::*morph)(Association& morphed);
  };
  static constexpr std::array kRows = {
      Row{"ToAssociation", &CLSEditor::toAssociation},
      Row{"ToSharedAggregation", &CLSEditor::toSharedAggregation},
      Row{"ToCompositeAggregation", &CLSEditor::toCompositeAggregation},
      Row{"ToGeneralization", &CLSEditor::toGeneralization},
      Row{"ToAttribute", &CLSEditor::toAttribute},
  };
  trap("MorphingAssoc", [&] {
    const AssociationRef morphed = drawnAssociation(key);
    for (const Row& row : kRows) {
      if (row.word == typ) (this->*row.morph)(*morphed);
    }
    morphed->Populate();
  });
}

void CLSEditor::toAssociation(Association& morphed) {
  if (morphed.isAssociation()) return;
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
  if (!isComposite(morphed)) return;
  replace(morphed, types::kGeneralization, [](Node& from, Node& to) {
    to.name(from.name());
    to.SetProperty("Description", from.GetProperty("Description"));
  });
  const auto line = morphed.link();
  const std::string key = line->key();
  const std::string circle = refusal(key, line->source()->key(), line->target()->key());
  if (!circle.empty()) m_diagram->showHint(circle);
}

void CLSEditor::toAttribute(Association& morphed) {
  if (!isComposite(morphed)) return;
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
  deleteRelationship(*aggregation);
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
    // Half of a relationship would stand in the way of the next try.
    if (!isTaken && type->find(key)) type->extension()->Remove(key, false);
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
