// Members of classifiers: attributes, literals, operations and parameters.
#include <algorithm>

#include "interchange/XmiReader.h"
#include "platform/Text.h"

namespace brisel::interchange {

namespace {

bool isFeatureRole(const XmiElement& element) {
  const std::string_view role = splitName(element.node.name()).local;
  return role == "ownedAttribute" || role == "attribute" || role == "ownedPort";
}

/// A bound as a file states it: "1" where it says nothing, "0" where a value is left out.
std::string bound(const XmiIndex& index, std::size_t element, const char* attribute,
                  const char* child) {
  const pugi::xml_node node = index[element].node;
  if (const pugi::xml_attribute stated = node.attribute(attribute)) return stated.value();
  const pugi::xml_node value = node.child(child);
  if (!value) return "1";
  if (const pugi::xml_attribute stated = value.attribute("value")) return stated.value();
  const std::string text = value.child("value").text().get();
  return text.empty() ? "0" : text;
}

}  // namespace

void XmiReader::readMembers(std::size_t element, DescribedClassifier& classifier) {
  for (const std::size_t member : m_index.children(element)) {
    switch (m_index[member].metaclass) {
      case Metaclass::property: {
        if (!isFeatureRole(m_index[member])) break;
        const std::vector<XmiReference> associations = m_index.references(member, "association");
        if (associations.empty()) {
          classifier.attributes.push_back(attribute(member));
        } else if (const std::size_t found = m_index.find(associations.front())) {
          m_ends[found].push_back(member);
          m_isTold[member] = true;
        }
        break;
      }
      case Metaclass::literal:
        classifier.attributes.push_back(literal(member, classifier.name));
        break;
      case Metaclass::operation:
        classifier.operations.push_back(operation(member));
        break;
      default:
        break;
    }
  }
}

void XmiReader::describeFeature(std::size_t element, DescribedFeature& feature) {
  describe(element, feature);
  feature.scope = m_index.value(element, "visibility");
  feature.isStatic = m_index.flag(element, "isStatic");
  feature.isFinal = m_index.flag(element, "isLeaf") || m_index.flag(element, "isReadOnly");
  feature.isDerived = m_index.flag(element, "isDerived");
}

DescribedAttribute XmiReader::attribute(std::size_t element) {
  DescribedAttribute result;
  describeFeature(element, result);
  result.type = typeName(element, "attribute");
  result.multiplicity = multiplicity(element);
  result.value = valueOf(element, "defaultValue");
  if (result.value.empty()) result.value = m_index.value(element, "default");
  return result;
}

DescribedAttribute XmiReader::literal(std::size_t element, const std::string& enumeration) {
  DescribedAttribute result;
  describeFeature(element, result);
  result.type = enumeration.empty() ? std::string(kUntyped) : enumeration;
  result.value = valueOf(element, "specification");
  return result;
}

DescribedOperation XmiReader::operation(std::size_t element) {
  DescribedOperation result;
  describeFeature(element, result);
  result.isAbstract = m_index.flag(element, "isAbstract");
  result.isSynchronized = m_index.value(element, "concurrency") == "guarded";
  result.isConstructor = std::any_of(
      result.stereotypes.begin(), result.stereotypes.end(),
      [](const StereotypeUse& use) { return platform::equalsIgnoringCase(use.name, "create"); });
  readResult(element, result);
  for (const std::size_t child : m_index.children(element, Metaclass::parameter)) {
    if (!m_isTold[child]) result.parameters.push_back(parameter(child));
  }
  return result;
}

void XmiReader::readResult(std::size_t element, DescribedOperation& operation) {
  bool hasResult = false;
  for (const std::size_t child : m_index.children(element, Metaclass::parameter)) {
    if (m_index.value(child, "direction") != "return") continue;
    Described result;
    describe(child, result);
    if (hasResult) {
      m_description.skip("parameter", result.id, result.place,
                         "the operation has another return parameter");
      continue;
    }
    hasResult = true;
    operation.type = typeName(child, "parameter");
    operation.multiplicity = multiplicity(child);
    if (!result.documentation.empty()) {
      if (!operation.documentation.empty()) operation.documentation.append("\n\n");
      operation.documentation.append(result.documentation);
    }
    for (const StereotypeUse& use : result.stereotypes) {
      m_description.skip(use, "the result of the operation \"" + operation.name + "\"");
    }
  }
  if (hasResult) return;
  const bool hasType = !m_index.references(element, "type").empty();
  operation.type = hasType ? typeName(element, "operation") : std::string(kVoid);
}

DescribedParameter XmiReader::parameter(std::size_t element) {
  DescribedParameter result;
  describe(element, result);
  result.type = typeName(element, "parameter");
  result.multiplicity = multiplicity(element);
  result.value = valueOf(element, "defaultValue");
  if (const std::string direction = m_index.value(element, "direction"); direction != "in") {
    result.direction = direction;
  }
  return result;
}

std::string XmiReader::typeName(std::size_t element, std::string_view kind) {
  const std::vector<XmiReference> references = m_index.references(element, "type");
  if (references.empty()) return std::string(kUntyped);
  const XmiReference& type = references.front();
  std::string name;
  if (const std::size_t found = m_index.find(type)) {
    name = m_index.value(found, "name");
  } else if (name = m_index.nameOfStub(type); name.empty()) {
    name = nameOfReference(type.text);
    if (type.file) {
      m_description.note(std::string(kind), std::string(m_index[element].id),
                         m_index.place(element),
                         "its type \"" + type.text + "\" is in none of the files");
    }
  }
  return name.empty() ? std::string(kUntyped) : name;
}

std::string XmiReader::multiplicity(std::size_t element) const {
  return multiplicityText(bound(m_index, element, "lower", "lowerValue"),
                          bound(m_index, element, "upper", "upperValue"));
}

std::string XmiReader::valueOf(std::size_t element, const char* role) const {
  const XmiElement& owner = m_index[element];
  const pugi::xml_node value = owner.node.child(role);
  if (!value) return {};
  for (const char* property : {"value", "body", "symbol"}) {
    if (const pugi::xml_attribute stated = value.attribute(property)) return stated.value();
    if (const pugi::xml_node stated = value.child(property)) return stated.text().get();
  }
  if (const XmiReference instance = m_index.referenceIn(value, *owner.file, "instance");
      !instance.text.empty()) {
    const std::size_t found = m_index.find(instance);
    return found ? m_index.value(found, "name") : nameOfReference(instance.text);
  }
  const std::string_view metaclass = splitName(owner.file->xmiAttribute(value, "type")).local;
  if (metaclass == "LiteralBoolean") return "false";
  if (metaclass == "LiteralInteger" || metaclass == "LiteralUnlimitedNatural") return "0";
  return metaclass == "LiteralNull" ? "null" : std::string();
}

}  // namespace brisel::interchange
