#include "interchange/XmiIndex.h"

#include <algorithm>
#include <array>
#include <utility>

namespace brisel::interchange {

namespace {

using namespace std::string_view_literals;

constexpr std::array kMetaclasses = {
    std::pair{"Package"sv, Metaclass::package},
    std::pair{"Model"sv, Metaclass::package},
    std::pair{"Profile"sv, Metaclass::package},
    std::pair{"Class"sv, Metaclass::plainClass},
    std::pair{"Component"sv, Metaclass::plainClass},
    std::pair{"Node"sv, Metaclass::plainClass},
    std::pair{"Device"sv, Metaclass::plainClass},
    std::pair{"ExecutionEnvironment"sv, Metaclass::plainClass},
    std::pair{"Interface"sv, Metaclass::interface},
    std::pair{"Enumeration"sv, Metaclass::enumeration},
    std::pair{"DataType"sv, Metaclass::dataType},
    std::pair{"PrimitiveType"sv, Metaclass::dataType},
    std::pair{"Signal"sv, Metaclass::dataType},
    std::pair{"Association"sv, Metaclass::association},
    std::pair{"AssociationClass"sv, Metaclass::associationClass},
    std::pair{"Property"sv, Metaclass::property},
    std::pair{"Port"sv, Metaclass::property},
    std::pair{"Operation"sv, Metaclass::operation},
    std::pair{"Parameter"sv, Metaclass::parameter},
    std::pair{"EnumerationLiteral"sv, Metaclass::literal},
    std::pair{"Generalization"sv, Metaclass::generalization},
    std::pair{"InterfaceRealization"sv, Metaclass::realization},
    std::pair{"Realization"sv, Metaclass::realization},
    std::pair{"ComponentRealization"sv, Metaclass::realization},
    std::pair{"Substitution"sv, Metaclass::realization},
    std::pair{"Dependency"sv, Metaclass::dependency},
    std::pair{"Usage"sv, Metaclass::usage},
    std::pair{"Abstraction"sv, Metaclass::abstraction},
    std::pair{"Comment"sv, Metaclass::comment},
};

/// The metaclass where the role says it all and the file leaves it out.
constexpr std::array kRoles = {
    std::pair{"ownedAttribute"sv, "Property"sv},
    std::pair{"ownedEnd"sv, "Property"sv},
    std::pair{"navigableOwnedEnd"sv, "Property"sv},
    std::pair{"attribute"sv, "Property"sv},
    std::pair{"ownedOperation"sv, "Operation"sv},
    std::pair{"ownedParameter"sv, "Parameter"sv},
    std::pair{"ownedLiteral"sv, "EnumerationLiteral"sv},
    std::pair{"ownedComment"sv, "Comment"sv},
    std::pair{"generalization"sv, "Generalization"sv},
    std::pair{"interfaceRealization"sv, "InterfaceRealization"sv},
    std::pair{"substitution"sv, "Substitution"sv},
    std::pair{"nestedPackage"sv, "Package"sv},
    std::pair{"ownedRule"sv, "Constraint"sv},
    std::pair{"ownedStereotype"sv, "Stereotype"sv},
    std::pair{"packageImport"sv, "PackageImport"sv},
    std::pair{"elementImport"sv, "ElementImport"sv},
    std::pair{"profileApplication"sv, "ProfileApplication"sv},
    std::pair{"templateBinding"sv, "TemplateBinding"sv},
    std::pair{"ownedReception"sv, "Reception"sv},
    std::pair{"ownedConnector"sv, "Connector"sv},
};

/// Values that belong to their element and are read with it.
constexpr std::array kValueRoles = {"lowerValue"sv, "upperValue"sv, "defaultValue"sv,
                                    "specification"sv};

template <class Table, class Found>
Found lookUp(const Table& table, std::string_view key, Found otherwise) {
  const auto row = std::find_if(table.begin(), table.end(),
                                [&](const auto& entry) { return entry.first == key; });
  return row == table.end() ? otherwise : row->second;
}

bool isReference(pugi::xml_node node, const XmlFile& file) {
  return node.attribute("href") || !file.xmiAttribute(node, "idref").empty();
}

/// "%20" and its kind, as references to files write them.
std::string decoded(std::string_view text) {
  const auto digit = [](char c) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    return kDigits.find(static_cast<char>(c >= 'A' && c <= 'F' ? c - 'A' + 'a' : c));
  };
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && digit(text[i + 1]) < 16 &&
        digit(text[i + 2]) < 16) {
      result.push_back(static_cast<char>(digit(text[i + 1]) * 16 + digit(text[i + 2])));
      i += 2;
    } else {
      result.push_back(text[i]);
    }
  }
  return result;
}

}  // namespace

XmiIndex::XmiIndex(std::vector<const XmlFile*> files) : m_files(std::move(files)), m_elements(1) {
  for (const XmlFile* file : m_files) {
    std::size_t last = kNone;
    if (splitName(file->root().name()).local != "XMI") {
      walk(file->root(), *file, kNone, last);
      continue;
    }
    for (const pugi::xml_node child : file->root().children()) walk(child, *file, kNone, last);
  }
}

std::vector<std::size_t> XmiIndex::children(std::size_t at) const {
  std::vector<std::size_t> found;
  for (std::size_t child = m_elements[at].firstChild; child != kNone;
       child = m_elements[child].nextSibling) {
    found.push_back(child);
  }
  return found;
}

std::vector<std::size_t> XmiIndex::children(std::size_t at, Metaclass metaclass) const {
  std::vector<std::size_t> found = children(at);
  std::erase_if(found, [&](std::size_t child) { return m_elements[child].metaclass != metaclass; });
  return found;
}

std::string XmiIndex::value(std::size_t at, const char* property) const {
  const pugi::xml_node node = m_elements[at].node;
  if (const pugi::xml_attribute attribute = node.attribute(property)) return attribute.value();
  return node.child(property).text().get();
}

bool XmiIndex::flag(std::size_t at, const char* property) const {
  const std::string text = value(at, property);
  return text == "true" || text == "True" || text == "1";
}

std::vector<XmiReference> XmiIndex::references(std::size_t at, const char* property,
                                               bool isManyValued) const {
  const XmiElement& element = m_elements[at];
  std::vector<XmiReference> found;
  std::string_view text = element.node.attribute(property).value();
  while (!text.empty()) {
    const std::size_t end = isManyValued ? text.find_first_of(" \t\r\n") : std::string_view::npos;
    const std::string_view word = text.substr(0, end);
    if (!word.empty()) found.push_back(reference(word, *element.file));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  for (const pugi::xml_node child : element.node.children(property)) {
    if (isReference(child, *element.file)) found.push_back(referenceOf(child, *element.file));
  }
  return found;
}

XmiReference XmiIndex::referenceIn(pugi::xml_node node, const XmlFile& file,
                                   const char* property) const {
  if (const pugi::xml_attribute attribute = node.attribute(property)) {
    return reference(attribute.value(), file);
  }
  const pugi::xml_node child = node.child(property);
  return child ? referenceOf(child, file) : XmiReference();
}

std::size_t XmiIndex::find(const XmiReference& reference) const {
  const auto ids = m_ids.find(reference.file);
  if (ids == m_ids.end()) return kNone;
  const auto entry = ids->second.find(reference.id);
  return entry == ids->second.end() ? kNone : entry->second;
}

std::string XmiIndex::nameOfStub(const XmiReference& reference) const {
  const auto stubs = m_stubs.find(reference.file);
  if (stubs == m_stubs.end()) return {};
  const auto entry = stubs->second.find(reference.id);
  return entry == stubs->second.end() ? std::string() : entry->second;
}

void XmiIndex::walk(pugi::xml_node node, const XmlFile& file, std::size_t parent,
                    std::size_t& last) {
  if (node.type() != pugi::node_element) return;
  const QualifiedName name = splitName(node.name());
  if (file.isXmiPrefix(name.prefix)) {
    if (name.local == "Extension") readExtension(node, file);
    return;
  }
  if (name.local == "eAnnotations" || isReference(node, file)) return;
  if (std::find(kValueRoles.begin(), kValueRoles.end(), name.local) != kValueRoles.end()) return;
  if (!name.prefix.empty() && !file.isUmlPrefix(name.prefix)) {
    if (!isApplication(node, file)) add(node, file, name.local, parent, last);
    return;
  }
  const std::string_view metaclass = metaclassOf(node, file);
  if (metaclass.empty()) {
    for (const pugi::xml_node child : node.children()) walk(child, file, parent, last);
    return;
  }
  const std::size_t element = add(node, file, metaclass, parent, last);
  std::size_t lastChild = kNone;
  for (const pugi::xml_node child : node.children()) walk(child, file, element, lastChild);
}

std::size_t XmiIndex::add(pugi::xml_node node, const XmlFile& file, std::string_view metaclass,
                          std::size_t parent, std::size_t& last) {
  const std::size_t at = m_elements.size();
  XmiElement element;
  element.node = node;
  element.file = &file;
  element.metaclass = lookUp(kMetaclasses, metaclass, Metaclass::other);
  element.metaclassName = metaclass;
  element.id = file.xmiAttribute(node, "id");
  element.parent = parent;
  m_elements.push_back(element);
  if (last != kNone) {
    m_elements[last].nextSibling = at;
  } else if (parent != kNone) {
    m_elements[parent].firstChild = at;
  }
  last = at;
  if (!element.id.empty() && !m_ids[&file].try_emplace(element.id, at).second) {
    m_duplicates.push_back(at);
  }
  return at;
}

/// "Class" for an element of type "uml:Class"; empty for what is no element of its own. Types of
/// other languages than UML keep their name: no row of the table has it.
std::string_view XmiIndex::metaclassOf(pugi::xml_node node, const XmlFile& file) const {
  std::string_view type = file.xmiAttribute(node, "type");
  if (type.empty()) type = node.attribute("xsi:type").value();
  if (!type.empty()) return splitName(type).local;
  const QualifiedName name = splitName(node.name());
  if (!name.prefix.empty()) return name.local;
  return lookUp(kRoles, name.local, std::string_view());
}

bool XmiIndex::isApplication(pugi::xml_node node, const XmlFile& file) {
  constexpr std::string_view kBase = "base_";
  XmiSideNote application{{}, node, &file};
  bool isOne = false;
  const auto take = [&](XmiReference target) {
    if (!isOne || find(application.target) == kNone) application.target = std::move(target);
    isOne = true;
  };
  for (const pugi::xml_attribute attribute : node.attributes()) {
    if (std::string_view(attribute.name()).starts_with(kBase)) {
      take(reference(attribute.value(), file));
    }
  }
  for (const pugi::xml_node child : node.children()) {
    if (std::string_view(child.name()).starts_with(kBase)) take(referenceOf(child, file));
  }
  if (isOne) m_applications.push_back(std::move(application));
  return isOne;
}

void XmiIndex::readExtension(pugi::xml_node extension, const XmlFile& file) {
  for (const pugi::xml_node node : extension.children()) {
    const std::string_view name = node.name();
    if (name == "EAStub") {
      m_stubs[&file].try_emplace(file.xmiAttribute(node, "id"), node.attribute("name").value());
    }
    const bool holdsText = (name == "properties" && *node.attribute("documentation").value()) ||
                           (name == "documentation" && *node.attribute("value").value());
    const std::string_view owner = file.xmiAttribute(extension, "idref");
    if (holdsText && !owner.empty()) {
      m_documentation.push_back({reference(owner, file), node, &file});
    }
    if (name != "diagrams") readExtension(node, file);
  }
}

XmiReference XmiIndex::reference(std::string_view text, const XmlFile& file) const {
  XmiReference result;
  result.text = text;
  const std::size_t hash = text.find('#');
  if (hash == std::string_view::npos || hash == 0) {
    result.id = hash == 0 ? text.substr(1) : text;
    result.file = &file;
    return result;
  }
  result.id = text.substr(hash + 1);
  const std::string path = decoded(text.substr(0, hash));
  const std::string name = path.substr(path.find_last_of("/\\") + 1);
  const auto given = std::find_if(m_files.begin(), m_files.end(),
                                  [&](const XmlFile* other) { return other->name() == name; });
  if (given != m_files.end()) result.file = *given;
  return result;
}

XmiReference XmiIndex::referenceOf(pugi::xml_node node, const XmlFile& file) const {
  const std::string_view id = file.xmiAttribute(node, "idref");
  const std::string_view href = node.attribute("href").value();
  const std::string_view text = node.text().get();
  XmiReference result = reference(!id.empty() ? id : !href.empty() ? href : text, file);
  result.metaclass = splitName(file.xmiAttribute(node, "type")).local;
  return result;
}

}  // namespace brisel::interchange
