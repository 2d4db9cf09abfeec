// Associations, generalizations, realizations and dependencies.
#include <algorithm>
#include <array>
#include <utility>

#include "interchange/XmiReader.h"

namespace brisel::interchange {

namespace {

/// Whether a reference into a file that was not given may lead to a class.
bool mayBeClass(std::string_view metaclass) {
  constexpr std::array<std::string_view, 11> kClassifiers = {
      "Class",    "Component", "Node",   "Device",           "ExecutionEnvironment", "Interface",
      "DataType", "Signal",    "EClass", "AssociationClass", "Enumeration"};
  return metaclass.empty() ||
         std::find(kClassifiers.begin(), kClassifiers.end(), metaclass) != kClassifiers.end();
}

bool isAssociation(Metaclass metaclass) {
  return metaclass == Metaclass::association || metaclass == Metaclass::associationClass;
}

}  // namespace

void XmiReader::readRelationships() {
  for (std::size_t at = 1; at < m_index.size(); ++at) {
    switch (m_index[at].metaclass) {
      case Metaclass::association:
      case Metaclass::associationClass:
        readAssociation(at);
        break;
      case Metaclass::generalization:
        readGeneralization(at);
        break;
      case Metaclass::realization:
        readRealization(at);
        break;
      case Metaclass::dependency:
        readDependency(at, RelationshipKind::dependency);
        break;
      case Metaclass::usage:
        readDependency(at, RelationshipKind::use);
        break;
      case Metaclass::abstraction:
        readDependency(at, RelationshipKind::abstraction);
        break;
      default:
        break;
    }
  }
}

std::vector<XmiReader::End> XmiReader::endsOf(std::size_t association) {
  std::vector<End> ends;
  const auto addProperty = [&](std::size_t property) {
    const bool isKnown = std::any_of(ends.begin(), ends.end(),
                                     [&](const End& end) { return end.property == property; });
    m_isTold[property] = true;
    if (!isKnown) ends.push_back({property, {}});
  };
  for (const XmiReference& reference : m_index.references(association, "memberEnd", true)) {
    const std::size_t property = m_index.find(reference);
    if (property != XmiIndex::kNone) {
      addProperty(property);
    } else {
      ends.push_back({XmiIndex::kNone, reference});
    }
  }
  for (const std::size_t child : m_index.children(association, Metaclass::property)) {
    const std::string_view role = splitName(m_index[child].node.name()).local;
    if (role == "ownedEnd" || role == "navigableOwnedEnd") addProperty(child);
  }
  for (const std::size_t property : m_ends[association]) addProperty(property);
  return ends;
}

void XmiReader::readAssociation(std::size_t element) {
  std::vector<End> ends = endsOf(element);
  if (ends.size() == 1) ends.emplace_back();
  if (ends.size() == 2) {
    addAssociation(element, ends[0], ends[1]);
    return;
  }
  m_isTold[element] = true;
  m_description.skip("association", std::string(m_index[element].id), m_index.place(element),
                     "it has " + std::to_string(ends.size()) + " ends, not two");
}

void XmiReader::addAssociation(std::size_t element, const End& first, const End& second) {
  const std::string firstAggregation = aggregationOf(first);
  const std::string secondAggregation = aggregationOf(second);
  // The part is what the property of an aggregation is typed by, so it is the target; without an
  // aggregation the target is the one end that can be navigated to.
  const bool isComposite = firstAggregation == "composite" || secondAggregation == "composite";
  const bool isShared = firstAggregation == "shared" || secondAggregation == "shared";
  bool isTurned = false;
  if (isComposite || isShared) {
    isTurned = secondAggregation != (isComposite ? "composite" : "shared");
  } else {
    isTurned = isNavigable(first, element) && !isNavigable(second, element);
  }
  const End& source = isTurned ? second : first;
  const End& target = isTurned ? first : second;

  const std::string kind = "association";
  const std::string id(m_index[element].id);
  const std::string place = m_index.place(element);
  m_isTold[element] = true;
  const Found sourceClass = classOf(source, target);
  const Found targetClass = classOf(target, source);
  for (const Found* found : {&sourceClass, &targetClass}) {
    if (found->problem.empty()) continue;
    m_description.skip(kind, id, place, found->problem);
    return;
  }
  DescribedRelationship relationship;
  if (m_index[element].metaclass == Metaclass::association) {
    describe(element, relationship);
  } else {
    relationship.id = id + "::association";  // the class has the identifier
    relationship.name = m_index.value(element, "name");
    relationship.place = place;
  }
  relationship.kind = isComposite ? RelationshipKind::compositeAggregation
                      : isShared  ? RelationshipKind::sharedAggregation
                                  : RelationshipKind::association;
  relationship.isDerived = m_index.flag(element, "isDerived");
  relationship.source.classifier = positionOf(sourceClass);
  relationship.target.classifier = positionOf(targetClass);
  describeEnd(source, relationship.source, relationship);
  describeEnd(target, relationship.target, relationship);
  relationship.source.isNavigable = isNavigable(source, element);
  relationship.target.isNavigable = isNavigable(target, element);
  if (!firstAggregation.empty() && !secondAggregation.empty()) {
    m_description.note(kind, id, place, "both ends are aggregations; the second is not kept");
  }
  m_description.relationships.push_back(std::move(relationship));
}

XmiReader::Found XmiReader::classOf(const End& end, const End& opposite) const {
  if (end.property != XmiIndex::kNone) {
    const std::vector<XmiReference> types = m_index.references(end.property, "type");
    if (!types.empty()) return classOf(types.front());
  }
  // An end of another file, or one without a type: whoever owns the opposite end is its class.
  if (opposite.property != XmiIndex::kNone) {
    const std::size_t owner = m_index[opposite.property].parent;
    if (owner != XmiIndex::kNone && !isAssociation(m_index[owner].metaclass)) {
      return classOf(owner);
    }
  }
  if (end.property == XmiIndex::kNone && !end.reference.text.empty()) {
    return {0, {}, {}, "its end \"" + end.reference.text + "\" is in none of the files"};
  }
  return {0, {}, {}, "an end has no class"};
}

void XmiReader::describeEnd(const End& end, DescribedEnd& described,
                            DescribedRelationship& relationship) {
  if (end.property == XmiIndex::kNone) return;
  described.role = m_index.value(end.property, "name");
  described.multiplicity = multiplicity(end.property);
  described.documentation = documentationOf(end.property);
  if (m_index.flag(end.property, "isDerived")) relationship.isDerived = true;
  const std::string id(m_index[end.property].id);
  const auto tell = [&](const std::string& text) {
    m_description.note("associationEnd", id, m_index.place(end.property), text);
  };
  for (const StereotypeUse& use : stereotypesOf(end.property)) {
    m_description.skip(use, "an end of the association \"" + relationship.name + "\"");
  }
  if (const std::string value = valueOf(end.property, "defaultValue"); !value.empty()) {
    tell("the initial value \"" + value + "\" of an end is not kept");
  }
}

bool XmiReader::isNavigable(const End& end, std::size_t association) const {
  // An end that only a reference names is owned by a class of another file.
  if (end.property == XmiIndex::kNone) return !end.reference.text.empty();
  const XmiElement& property = m_index[end.property];
  if (!isAssociation(m_index[property.parent].metaclass)) return true;
  if (splitName(property.node.name()).local == "navigableOwnedEnd") return true;
  if (splitName(property.node.name()).local == "ownedAttribute") return true;
  for (const XmiReference& reference : m_index.references(association, "navigableOwnedEnd", true)) {
    if (m_index.find(reference) == end.property) return true;
  }
  return false;
}

std::string XmiReader::aggregationOf(const End& end) const {
  if (end.property == XmiIndex::kNone) return {};
  const std::string aggregation = m_index.value(end.property, "aggregation");
  return aggregation == "none" ? std::string() : aggregation;
}

void XmiReader::readGeneralization(std::size_t element) {
  addDirected(element, RelationshipKind::generalization,
              firstOf(element, {"specific"}, m_index[element].parent),
              firstOf(element, {"general"}, XmiIndex::kNone));
}

void XmiReader::readRealization(std::size_t element) {
  const std::size_t owner = m_index[element].parent;
  const bool isOwned = m_index[owner].metaclass != Metaclass::package;
  const std::size_t classifier = isOwned ? owner : XmiIndex::kNone;
  const bool isOfComponent = m_index[element].metaclassName == "ComponentRealization";
  addDirected(element, RelationshipKind::realization,
              firstOf(element, {"client", "realizingClassifier", "substitutingClassifier"},
                      isOfComponent ? XmiIndex::kNone : classifier),
              firstOf(element, {"contract", "supplier", "abstraction"},
                      isOfComponent ? classifier : XmiIndex::kNone));
}

void XmiReader::readDependency(std::size_t element, RelationshipKind kind) {
  addDirected(element, kind, firstOf(element, {"client"}, XmiIndex::kNone),
              firstOf(element, {"supplier"}, XmiIndex::kNone));
}

std::vector<XmiReference> XmiReader::firstOf(std::size_t element,
                                             std::initializer_list<const char*> properties,
                                             std::size_t otherwise) const {
  for (const char* property : properties) {
    std::vector<XmiReference> found = m_index.references(element, property, true);
    if (!found.empty()) return found;
  }
  if (otherwise == XmiIndex::kNone) return {};
  XmiReference owner;
  owner.element = otherwise;
  return {owner};
}

void XmiReader::addDirected(std::size_t element, RelationshipKind kind,
                            const std::vector<XmiReference>& sources,
                            const std::vector<XmiReference>& targets) {
  const std::string word = reportKind(m_index[element]);
  const std::string id(m_index[element].id);
  const std::string place = m_index.place(element);
  m_isTold[element] = true;
  if (sources.empty() || targets.empty()) {
    m_description.skip(word, id, place,
                       sources.empty() ? "the end that it starts at is not stated"
                                       : "the end that it leads to is not stated");
    return;
  }
  std::vector<std::pair<Found, Found>> pairs;
  for (const XmiReference& source : sources) {
    for (const XmiReference& target : targets) {
      const Found sourceClass = classOf(source);
      const Found targetClass = classOf(target);
      const std::string& problem =
          sourceClass.problem.empty() ? targetClass.problem : sourceClass.problem;
      if (problem.empty()) {
        pairs.emplace_back(sourceClass, targetClass);
      } else {
        m_description.skip(word, id, place, problem);
      }
    }
  }
  if (pairs.empty()) return;
  DescribedRelationship relationship;
  describe(element, relationship);
  relationship.kind = kind;
  relationship.target.isNavigable = true;
  std::size_t count = 0;
  for (const auto& [source, target] : pairs) {
    if (++count > 1) relationship.id = id + "::" + std::to_string(count);
    relationship.source.classifier = positionOf(source);
    relationship.target.classifier = positionOf(target);
    m_description.relationships.push_back(relationship);
  }
  if (count > 1) {
    m_description.note(word, id, place,
                       "it has several ends; " + std::to_string(count) + " were made of it");
  }
}

XmiReader::Found XmiReader::classOf(const XmiReference& reference) const {
  if (reference.element != XmiIndex::kNone) return classOf(reference.element);
  if (const std::size_t element = m_index.find(reference)) return classOf(element);
  if (const std::string name = m_index.nameOfStub(reference); !name.empty()) {
    return {0, reference.id, name, {}};
  }
  if (reference.file) {
    return {0, {}, {}, "its end \"" + reference.text + "\" is in none of the files"};
  }
  if (!mayBeClass(reference.metaclass)) {
    return {
        0,
        {},
        {},
        "its end \"" + reference.text + "\" is " + withArticle(reference.metaclass) + ", no class"};
  }
  return {0, reference.text, nameOfReference(reference.text), {}};
}

XmiReader::Found XmiReader::classOf(std::size_t element) const {
  const auto classifier = m_classifiers.find(element);
  const std::string name = "its end \"" + m_index.value(element, "name") + "\" is ";
  if (classifier == m_classifiers.end()) {
    return {0, {}, {}, name + withArticle(m_index[element].metaclassName) + ", no class"};
  }
  if (m_description.classifiers[classifier->second].kind == ClassifierKind::plainType) {
    return {0, {}, {}, name + "a data type without members, no class"};
  }
  return {classifier->second, {}, {}, {}};
}

std::size_t XmiReader::positionOf(const Found& found) {
  return found.stubId.empty() ? found.position : m_description.stub(found.stubId, found.stubName);
}

}  // namespace brisel::interchange
