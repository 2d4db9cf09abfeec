#include "interchange/ModelBuilder.h"

#include <array>

#include "repository/ViewDefaults.h"

namespace brisel::interchange {

namespace {

using platform::Value;
namespace types = platform::types;

std::string_view stereotypeOf(ClassifierKind kind) {
  switch (kind) {
    case ClassifierKind::interface:
      return "COM::Interface";
    case ClassifierKind::enumeration:
      return "COM::Enum";
    case ClassifierKind::structuredType:
      return "COM::TypeDef";
    default:
      return {};
  }
}

std::string_view stereotypeOf(RelationshipKind kind) {
  switch (kind) {
    case RelationshipKind::dependency:
      return "dependency";
    case RelationshipKind::use:
      return "use";
    case RelationshipKind::abstraction:
      return "abstraction";
    case RelationshipKind::realization:
      return "realize";
    default:
      return {};
  }
}

void setIfStated(platform::Node& node, std::string_view key, const std::string& text) {
  if (!text.empty()) node.SetProperty(key, text);
}

void setIfTrue(platform::Node& node, std::string_view key, bool flag) {
  if (flag) node.SetProperty(key, true);
}

/// One instance is what UML assumes where nothing is stated, so it is not stored.
void setMultiplicity(platform::Node& node, const std::string& multiplicity) {
  if (multiplicity != "1") setIfStated(node, "Multiplicity", multiplicity);
}

/// "Profiled.key=value", one a line: the values that applied stereotypes carry.
std::string taggedValues(const std::vector<StereotypeUse>& uses) {
  std::string text;
  for (const StereotypeUse& use : uses) {
    for (const auto& [key, value] : use.tags) {
      if (!text.empty()) text.push_back('\n');
      text.append(use.name).append(".").append(key).append("=").append(value);
    }
  }
  return text;
}

}  // namespace

ModelBuilder::ModelBuilder(repository::CLSRepository& repository, ModelDescription& description)
    : m_repository(repository), m_description(description) {}

void ModelBuilder::build() {
  m_classIds.resize(m_description.classifiers.size());
  for (std::size_t i = 0; i < m_description.classifiers.size(); ++i) {
    const DescribedClassifier& classifier = m_description.classifiers[i];
    if (classifier.kind == ClassifierKind::plainType) {
      makeDataType(classifier);
    } else {
      makeClass(classifier, i);
    }
  }
  for (std::size_t i = 0; i < m_description.classifiers.size(); ++i) {
    const DescribedClassifier& classifier = m_description.classifiers[i];
    for (const DescribedAttribute& attribute : classifier.attributes) {
      makeAttribute(m_classIds[i], attribute);
    }
    for (const DescribedOperation& operation : classifier.operations) {
      makeOperation(m_classIds[i], operation);
    }
  }
  for (const DescribedRelationship& relationship : m_description.relationships) {
    makeRelationship(relationship);
  }
  repository::makeLayoutNode(m_repository);
}

void ModelBuilder::makeClass(const DescribedClassifier& classifier, std::size_t position) {
  const std::string id = freshOrOwn(classifier, "class");
  m_classIds[position] = id;
  const NodeRef node = m_repository.MakeClass(classifier.name, id, classifier.documentation,
                                              classifier.category, "", classifier.scope);
  setIfTrue(*node, "abstract", classifier.isAbstract);
  setIfTrue(*node, "final", classifier.isFinal);
  finish(*node, classifier, "class", stereotypeOf(classifier.kind));
  if (classifier.kind == ClassifierKind::stub) {
    m_description.report.stubs.push_back({id, classifier.name});
  }
}

void ModelBuilder::makeDataType(const DescribedClassifier& classifier) {
  if (!m_plainTypes.insert(classifier.name).second) {
    m_description.skip("dataType", classifier.id, classifier.place,
                       "a data type named \"" + classifier.name + "\" was made before");
    if (!classifier.documentation.empty()) {
      m_description.skip("comment", classifier.id, classifier.place,
                         "it documents the data type \"" + classifier.name + "\", made before");
    }
    for (const StereotypeUse& use : classifier.stereotypes) {
      m_description.skip(use, "the data type \"" + classifier.name + "\", made before");
    }
    return;
  }
  const NodeRef node =
      m_repository.MakeDataType(classifier.name, classifier.documentation, classifier.category);
  m_dataTypes.try_emplace(classifier.name, node->identifier());
  finish(*node, classifier, "dataType", {});
}

const std::string& ModelBuilder::dataTypeId(const std::string& name) {
  const auto [entry, isNew] = m_dataTypes.try_emplace(name);
  if (isNew) {
    NodeRef node = m_repository.SearchObject(types::kDataType, "Name", name);
    if (!node) node = m_repository.MakeDataType(name, "", "");
    entry->second = node->identifier();
  }
  return entry->second;
}

void ModelBuilder::makeAttribute(const std::string& classId, const DescribedAttribute& attribute) {
  platform::Ref<platform::Link> link;
  const NodeRef node =
      m_repository.AddAttribute(classId, attribute.name, "", attribute.isFinal, attribute.scope,
                                attribute.isStatic, attribute.isTransient, attribute.value,
                                attribute.isVolatile, dataTypeId(attribute.type), link);
  setIfStated(*node, "Description", attribute.documentation);
  setMultiplicity(*node, attribute.multiplicity);
  setIfTrue(*node, "IsDerived", attribute.isDerived);
  finish(*node, attribute, "attribute", {});
}

void ModelBuilder::makeOperation(const std::string& classId, const DescribedOperation& operation) {
  platform::Ref<platform::Link> link;
  const NodeRef node =
      m_repository.AddOperation(classId, operation.name, "", "", operation.isConstructor,
                                operation.isFinal, false, operation.scope, operation.isStatic,
                                operation.isSynchronized, dataTypeId(operation.type), link);
  setIfStated(*node, "Description", operation.documentation);
  setMultiplicity(*node, operation.multiplicity);
  setIfTrue(*node, "abstract", operation.isAbstract);
  finish(*node, operation, "operation", {});
  const std::string id = node->identifier();
  for (const DescribedParameter& parameter : operation.parameters) makeParameter(id, parameter);
}

void ModelBuilder::makeParameter(const std::string& operationId,
                                 const DescribedParameter& parameter) {
  platform::Ref<platform::Link> link;
  const NodeRef node =
      m_repository.AddParameter(operationId, parameter.name, "", dataTypeId(parameter.type), link);
  setIfStated(*node, "Description", parameter.documentation);
  setIfStated(*node, "direction", parameter.direction);
  setIfStated(*node, "value", parameter.value);
  setMultiplicity(*node, parameter.multiplicity);
  finish(*node, parameter, "parameter", {});
}

void ModelBuilder::makeRelationship(const DescribedRelationship& relationship) {
  const std::string id = freshOrOwn(relationship, "relationship");
  const std::string& source = m_classIds[relationship.source.classifier];
  const std::string& target = m_classIds[relationship.target.classifier];
  NodeRef node;
  switch (relationship.kind) {
    case RelationshipKind::generalization:
    case RelationshipKind::realization:
      node = m_repository.MakeGeneralization(id, target, source);
      if (!relationship.name.empty()) {
        m_description.note("generalization", relationship.id, relationship.place,
                           "its name \"" + relationship.name + "\" is not kept");
      }
      break;
    case RelationshipKind::sharedAggregation:
    case RelationshipKind::compositeAggregation:
      node = m_repository.MakeAggregation(relationship.name, id, source, target);
      node->SetProperty("isComposite", relationship.kind == RelationshipKind::compositeAggregation);
      setEnds(*node, relationship);
      break;
    default:
      node = m_repository.MakeAssociation(relationship.name, id, source, target);
      setEnds(*node, relationship);
  }
  setIfStated(*node, "Description", relationship.documentation);
  finish(*node, relationship, "relationship", stereotypeOf(relationship.kind));
}

void ModelBuilder::setEnds(Node& node, const DescribedRelationship& relationship) {
  const DescribedEnd& source = relationship.source;
  const DescribedEnd& target = relationship.target;
  setIfStated(node, "SourceRoleName", source.role);
  setIfStated(node, "SourceMultiplicity", source.multiplicity);
  setIfStated(node, "SourceCardinality", source.multiplicity);
  node.SetProperty("SourceNavigable", source.isNavigable);
  setIfStated(node, "TargetRolename", target.role);
  setIfStated(node, "TargetMultiplicity", target.multiplicity);
  setIfStated(node, "TargetCardinality", target.multiplicity);
  node.SetProperty("TargetNavigable", target.isNavigable);
  setIfStated(node, "SourceDescription", source.documentation);
  setIfStated(node, "TargetDescription", target.documentation);
  node.SetProperty("IsDerived", relationship.isDerived);
}

std::string ModelBuilder::freshOrOwn(const Described& described, std::string_view kind) {
  if (!described.id.empty() && m_identifiers.insert(described.id).second) return described.id;
  if (!described.id.empty()) {
    m_description.note(std::string(kind), described.id, described.place,
                       "its identifier is taken; it has a new one");
  }
  return m_repository.UUID();
}

void ModelBuilder::finish(Node& node, const Described& described, std::string_view kind,
                          std::string_view ownStereotype) {
  const std::vector<StereotypeUse>& uses = described.stereotypes;
  std::string name(ownStereotype);
  if (name.empty() && !uses.empty()) name = uses.front().name;
  if (!name.empty()) setStereotype(node, name);
  for (std::size_t i = ownStereotype.empty() ? 1 : 0; i < uses.size(); ++i) {
    m_description.skip(uses[i], "the " + std::string(kind) + " \"" + described.name +
                                    "\", which has \"" + name + "\"");
  }
  setIfStated(node, "TaggedValues", taggedValues(uses));
}

void ModelBuilder::setStereotype(Node& node, const std::string& name) {
  NodeRef& stereotype = m_stereotypes[name];
  if (!stereotype) stereotype = m_repository.SearchObject(types::kStereotype, "Name", name);
  if (!stereotype) stereotype = m_repository.MakeStereotype(name, m_repository.UUID(), "");
  m_repository.SetStereotype(node, stereotype.get());
}

}  // namespace brisel::interchange
