#include "tools/ClassReader.h"

#include <algorithm>
#include <array>
#include <unordered_set>
#include <utility>

#include "platform/Text.h"
#include "repository/Class.h"
#include "tools/Literals.h"

namespace brisel::tools {

using platform::each;
using platform::Link;
using platform::Node;
using platform::Ref;
namespace types = platform::types;

namespace {

std::string textOf(const Node& node, std::string_view key) { return node.GetProperty(key).text(); }
bool flagOf(const Node& node, std::string_view key) { return node.GetProperty(key).isTrue(); }

std::string scopeOf(const Node& node) {
  for (const std::string_view scope : {"protected", "private"}) {
    if (platform::equalsIgnoringCase(textOf(node, "scope"), scope)) return std::string(scope);
  }
  return "public";
}

void readElement(CodeElement& element, const Node& node) {
  element.identifier = node.identifier();
  element.name = plainLine(node.name());
  element.stereotype = plainLine(repository::stereotypeName(node));
  element.description = commentLines(textOf(node, "Description"));
}

CodeEnd readEnd(const Node& node, const CodeClass* cls, const std::string& end,
                std::string_view role) {
  CodeEnd made;
  made.cls = cls;
  made.role = plainLine(textOf(node, role));
  made.multiplicity = textOf(node, end + "Multiplicity");
  if (made.multiplicity.empty()) made.multiplicity = textOf(node, end + "Cardinality");
  const Multiplicity multiplicity = parseMultiplicity(made.multiplicity);
  made.multiplicity = plainLine(made.multiplicity);
  made.isMany = multiplicity.isMany;
  made.isRequired = made.multiplicity == "1" || made.multiplicity == "1..1";
  made.isNavigable = flagOf(node, end + "Navigable");
  made.description = commentLines(textOf(node, end + "Description"));
  return made;
}

/// "Order" is called "order" where an end has no name.
std::string withSmallStart(const std::string& name) {
  std::string word = asciiWord(name);
  if (!word.empty()) word[0] = platform::lowerCase(word[0]);
  return word;
}

/// Passed as it is; everything else by reference.
bool isSmall(const CodeType& type) {
  if (type.cls) return type.cls->isEnumeration;
  switch (type.kind) {
    case TypeKind::any:
    case TypeKind::text:
    case TypeKind::list:
    case TypeKind::map:
    case TypeKind::optional:
    case TypeKind::named:
      return false;
    default:
      return true;
  }
}

}  // namespace

void readAssociation(const Node& node, CodeAssociation& association) {
  readElement(association, node);
  association.cpp = NameScope(Language::cpp).free(association.name, "");
  association.java = NameScope(Language::java).free(association.name, "");
  association.sql = NameScope(Language::sql).free(association.name, "");
  association.source = readEnd(node, association.source.cls, "Source", "SourceRoleName");
  association.target = readEnd(node, association.target.cls, "Target", "TargetRolename");
  if (node.Parent()->name() == types::kAggregation) {
    association.isComposite = flagOf(node, "isComposite");
    association.isShared = !association.isComposite;
  }
  constexpr std::array<std::string_view, 4> kDependencies = {"dependency", "use", "abstraction",
                                                             "realize"};
  association.isDependency = std::find(kDependencies.begin(), kDependencies.end(),
                                       association.stereotype) != kDependencies.end();
}

ClassReader::ClassReader(CodeModel& model, CodeClass& cls) : m_model(model), m_class(cls) {
  m_cpp.refuse(&m_model.m_cppTypeNames);
  m_sql.take("id");
}

void ClassReader::read() {
  const Node& node = *m_class.node;
  m_class.description = commentLines(textOf(node, "Description"));
  m_class.category = plainLine(textOf(node, "category"));
  m_class.scope = scopeOf(node);
  m_class.isFinal = flagOf(node, "final");
  readBases();
  readAttributes();
  if (!m_class.isEnumeration) {
    readRoles();
    readOperations();
    chooseColumns();
  }
  const bool isOpen = std::any_of(m_class.operations.begin(), m_class.operations.end(),
                                  [](const CodeOperation& o) { return o.isAbstract; });
  m_class.isAbstract = isOpen || flagOf(node, "abstract") || m_class.isInterface;
  makeGroups();
  findNeeds();
  m_class.isComplete = true;
}

void ClassReader::readBases() {
  std::unordered_set<const CodeClass*> ancestors;
  std::unordered_set<const CodeClass*> indirect;
  for (const CodeClass* base : m_class.allBases) {
    ancestors.insert(base);
    ancestors.insert(base->ancestors.begin(), base->ancestors.end());
    indirect.insert(base->ancestors.begin(), base->ancestors.end());
  }
  for (const CodeClass* base : m_class.allBases) {
    if (!indirect.contains(base)) m_class.bases.push_back(base);
  }
  m_class.ancestors.assign(ancestors.begin(), ancestors.end());
  std::sort(m_class.ancestors.begin(), m_class.ancestors.end(),
            [](const auto* a, const auto* b) { return a->position < b->position; });
}

void ClassReader::nameMember(Names& names, const std::string& name, std::string_view fallback) {
  names.cpp = m_cpp.unique(name, fallback);
  names.java = m_java.unique(name, fallback);
  names.sql = m_sql.unique(name, fallback);
}

void ClassReader::readTyped(CodeTyped& typed, const Node& node, std::string_view linkType) {
  readElement(typed, node);
  typed.type = &m_model.typeOf(node, linkType);
  typed.multiplicity = textOf(node, "Multiplicity");
  const Multiplicity multiplicity = parseMultiplicity(typed.multiplicity);
  typed.multiplicity = plainLine(typed.multiplicity);
  typed.isMany = multiplicity.isMany;
  typed.isOptional = multiplicity.isOptional;
  typed.value = textOf(node, "value");
  const bool isReturn = linkType == types::kOperationHasDataType;
  if (typed.type->kind == TypeKind::nothing && (!isReturn || typed.isMany || typed.isOptional)) {
    typed.type = &m_model.typeNamed({});
  }
  const bool isReference = typed.type->cls && !typed.type->cls->isEnumeration;
  typed.cppType = typed.type->cpp;
  typed.javaType = typed.type->java;
  if (typed.isMany) {
    typed.cppType = "std::vector<" + typed.cppType + ">";
    typed.javaType = "List<" + typed.type->javaBoxed + ">";
  } else if (typed.isOptional) {
    if (!isReference) typed.cppType = "std::optional<" + typed.cppType + ">";
    typed.javaType = typed.type->javaBoxed;
  }
  makeLiterals(typed);
  makeEnumerationLiteral(typed);
  typed.value = plainLine(typed.value);
}

void ClassReader::makeEnumerationLiteral(CodeTyped& typed) {
  const CodeClass* enumeration = typed.type->cls;
  if (!enumeration || !enumeration->isEnumeration || typed.isMany || m_class.isEnumeration) return;
  const auto dot = typed.value.find_last_of(":.");
  const std::string word =
      plainLine(dot == std::string::npos ? typed.value : typed.value.substr(dot + 1));
  for (const CodeAttribute& literal : m_model.complete(*enumeration).attributes) {
    if (literal.name != word) continue;
    typed.cppValue = enumeration->cpp + "::" + literal.cpp;
    typed.javaValue = enumeration->java + "." + literal.java;
    typed.sqlValue = sqlText(literal.name);
    return;
  }
}

void ClassReader::readAttributes() {
  for (Link& link : each<Link>(m_class.node->outgoing(types::kClassHasAttrib))) {
    const Ref<Node> node = link.Target();
    CodeAttribute attribute;
    readTyped(attribute, *node, types::kAttribHasDataType);
    nameMember(attribute, node->name(), "unnamed");
    attribute.owner = &m_class;
    attribute.scope = scopeOf(*node);
    attribute.isStatic = flagOf(*node, "static_");
    attribute.isFinal = flagOf(*node, "final");
    attribute.isTransient = flagOf(*node, "transient");
    attribute.isPlain = isSmall(*attribute.type) && !attribute.isMany && !attribute.isOptional;
    attribute.isVolatile =
        flagOf(*node, "volatile") && attribute.isPlain && attribute.type->kind != TypeKind::time;
    attribute.isDerived = flagOf(*node, "IsDerived");
    if (m_class.isEnumeration) attribute.cppValue = smallInteger(attribute.value);
    m_class.attributes.push_back(std::move(attribute));
  }
}

void ClassReader::readRoles() {
  for (const std::string_view kind : {types::kAssociation, types::kAggregation}) {
    for (const bool isSource : {true, false}) {
      const std::string linkType =
          std::string(kind) + (isSource ? ".Source.Class" : ".Target.Class");
      for (Link& link : each<Link>(m_class.node->Incoming(linkType))) {
        const CodeAssociation* association = m_model.association(*link.source());
        if (association && !association->isDependency) readRole(*association, isSource);
      }
    }
  }
}

void ClassReader::readRole(const CodeAssociation& association, bool isSource) {
  CodeRole role;
  role.identifier = association.identifier;
  role.stereotype = association.stereotype;
  role.association = &association;
  role.isSource = isSource;
  role.end = isSource ? &association.target : &association.source;
  role.near = isSource ? &association.source : &association.target;
  role.name = role.end->role;
  role.description = role.end->description;
  const bool isWhole = association.isComposite || association.isShared;
  // Where no direction is told, both ends know each other, and a whole knows its parts.
  const bool isOpen = !role.end->isNavigable && !role.near->isNavigable;
  role.isMember = role.end->isNavigable || (isOpen && (isSource || !isWhole));
  const std::string small = withSmallStart(role.end->cls->name);
  const std::string& word = role.name.empty() ? small : role.name;
  role.cpp = role.isMember ? m_cpp.unique(word, "unnamed") : m_cpp.free(word, "unnamed");
  role.java = role.isMember ? m_java.unique(word, "unnamed") : m_java.free(word, "unnamed");
  const CodeClass& other = *role.end->cls;
  std::string cpp = other.cpp;
  if (!other.isEnumeration) {
    if (isSource && association.isComposite) {
      cpp = "std::unique_ptr<" + cpp + ">";
    } else if (isSource && association.isShared) {
      cpp = "std::shared_ptr<" + cpp + ">";
    } else {
      cpp.push_back('*');
    }
  }
  role.cppType = role.end->isMany ? "std::vector<" + cpp + ">" : cpp;
  role.javaType = role.end->isMany ? "List<" + other.java + ">" : other.java;
  m_class.roles.push_back(std::move(role));
}

void ClassReader::readOperations() {
  for (Link& link : each<Link>(m_class.node->outgoing(types::kClassHasOperation))) {
    const Ref<Node> node = link.Target();
    const std::string name = node->name();
    if (!name.starts_with('~')) addOperation(readOperation(*node), name);
  }
  const auto takesNothing = [](const CodeOperation& made) { return made.parameters.empty(); };
  m_class.needsCppConstructor =
      std::none_of(m_class.constructors.begin(), m_class.constructors.end(), takesNothing);
}

void ClassReader::addOperation(CodeOperation operation, const std::string& name) {
  if (!operation.isConstructor) {
    nameOperation(operation, name);
    m_class.operations.push_back(std::move(operation));
    return;
  }
  // A second one of the same parameters could not be told apart and cannot be renamed.
  if (!m_signatures.emplace(operation.cppSignature, true).second) return;
  if (operation.parameters.empty() && operation.scope == "private" && m_class.hasSubclasses) {
    operation.scope = "protected";
  }
  operation.cpp = m_class.cpp;
  operation.java = m_class.java;
  operation.sql = m_class.sql;
  m_class.constructors.push_back(std::move(operation));
}

CodeOperation ClassReader::readOperation(const Node& node) {
  CodeOperation operation;
  readTyped(operation, node, types::kOperationHasDataType);
  operation.owner = &m_class;
  operation.scope = scopeOf(node);
  operation.category = plainLine(textOf(node, "category"));
  operation.isConstructor = flagOf(node, "constructor") || node.name() == m_class.node->name();
  operation.isStatic = flagOf(node, "static_") && !operation.isConstructor;
  operation.isFinal = flagOf(node, "final");
  operation.isSynchronized = flagOf(node, "synchronized");
  operation.isNative = flagOf(node, "native");
  operation.isAbstract = (flagOf(node, "abstract") || m_class.isInterface) && !operation.isStatic &&
                         !operation.isConstructor;
  NameScope cpp(Language::cpp);
  cpp.refuse(&m_model.m_cppTypeNames);
  NameScope java(Language::java);
  NameScope sql(Language::sql, NameScope::Case::ignored);
  for (Link& link : each<Link>(node.outgoing(types::kOperationHasParameter))) {
    const Ref<Node> parameterNode = link.Target();
    CodeParameter parameter;
    readTyped(parameter, *parameterNode, types::kParameterHasDataType);
    const std::string name = parameterNode->name();
    parameter.cpp = cpp.unique(name, "unnamed");
    parameter.java = java.unique(name, "unnamed");
    parameter.sql = sql.unique(name, "unnamed");
    parameter.direction = plainLine(textOf(*parameterNode, "direction"));
    if (parameter.direction.empty()) parameter.direction = "in";
    const bool isOut = parameter.direction == "out" || parameter.direction == "inout";
    const bool byValue = isSmall(*parameter.type) && !parameter.isMany && !parameter.isOptional;
    parameter.cppParameterType = isOut     ? parameter.cppType + "&"
                                 : byValue ? parameter.cppType
                                           : "const " + parameter.cppType + "&";
    operation.cppSignature.append(parameter.cppParameterType).append(",");
    operation.parameters.push_back(std::move(parameter));
  }
  return operation;
}

void ClassReader::nameOperation(CodeOperation& operation, const std::string& name) {
  const std::string parameters = operation.cppSignature;
  std::string& shared = m_operationNames[m_cpp.free(name, "unnamed")];
  if (shared.empty()) shared = m_cpp.unique(name, "unnamed");
  operation.cpp = shared;
  const auto fits = [&] {
    operation.cppSignature = operation.cpp + "(" + parameters + ")";
    operation.overrides = false;
    if (m_signatures.contains(operation.cppSignature)) return false;
    for (const CodeClass* ancestor : m_class.ancestors) {
      for (const CodeOperation& other : ancestor->operations) {
        const bool isVirtual = other.isAbstract || other.overrides;
        if (!isVirtual || other.cppSignature != operation.cppSignature) continue;
        if (operation.isStatic || other.isFinal || other.cppType != operation.cppType) return false;
        operation.overrides = true;
      }
    }
    return true;
  };
  while (!fits()) operation.cpp = m_cpp.unique(name, "unnamed");
  m_signatures.emplace(operation.cppSignature, false);
  operation.java = m_java.unique(name, "unnamed");
  operation.sql = m_sql.free(name, "unnamed");
}

/// An association is a column of the side that has at most one other, or a table of its own.
void ClassReader::chooseColumns() {
  for (CodeRole& role : m_class.roles) {
    const bool toOne = !role.end->isMany;
    const bool fromOne = !role.near->isMany;
    const std::string& word = role.name.empty() ? role.end->cls->name : role.name;
    if (role.end->cls->isEnumeration || role.end->cls->isInterface || m_class.isInterface) continue;
    // One to one: the part knows its whole, otherwise the source its target.
    const bool chosenOfTwo = role.association->isComposite ? !role.isSource : role.isSource;
    if (toOne && (!fromOne || chosenOfTwo)) {
      role.sql = m_sql.unique(asciiWord(word) + "_id", "unnamed_id");
      m_class.references.push_back(&role);
    } else if (!toOne && !fromOne && role.isSource) {
      role.sql = m_sql.unique(word, "unnamed");
      m_class.joins.push_back(&role);
    }
  }
}

void ClassReader::makeGroups() {
  if (m_class.isEnumeration) return;
  for (const char* scope : {"public", "protected", "private"}) {
    CodeGroup group{scope, {}, {}, {}, {}};
    for (const CodeAttribute& member : m_class.attributes) {
      if (member.scope == scope) group.attributes.push_back(&member);
    }
    for (const CodeOperation& member : m_class.constructors) {
      if (member.scope == scope) group.constructors.push_back(&member);
    }
    for (const CodeOperation& member : m_class.operations) {
      if (member.scope == scope) group.operations.push_back(&member);
    }
    if (group.scope == "public") {
      for (const CodeRole& member : m_class.roles) {
        if (member.isMember) group.roles.push_back(&member);
      }
    }
    if (!group.attributes.empty() || !group.roles.empty() || !group.constructors.empty() ||
        !group.operations.empty()) {
      m_class.groups.push_back(std::move(group));
    }
  }
}

void ClassReader::need(const CodeType& type) {
  m_class.cppHeaders.insert(type.headers.begin(), type.headers.end());
  m_class.usesDataTypes = m_class.usesDataTypes || type.usesDataTypes;
  for (const CodeClass* cls : type.classes) {
    (cls->isEnumeration ? m_class.includes : m_class.forwards).push_back(cls);
  }
}

void ClassReader::findNeeds() {
  if (m_class.isEnumeration) return;
  const auto needTyped = [this](const CodeTyped& typed) {
    need(*typed.type);
    if (typed.isMany) m_class.cppHeaders.insert("vector");
    if (typed.isOptional) m_class.cppHeaders.insert("optional");
  };
  m_class.includes = m_class.bases;
  for (const CodeAttribute& attribute : m_class.attributes) needTyped(attribute);
  for (const auto* operations : {&m_class.constructors, &m_class.operations}) {
    for (const CodeOperation& operation : *operations) {
      needTyped(operation);
      for (const CodeParameter& parameter : operation.parameters) needTyped(parameter);
    }
  }
  for (const CodeRole& role : m_class.roles) {
    if (!role.isMember) continue;
    if (role.end->isMany) m_class.cppHeaders.insert("vector");
    if (role.cppType.find("_ptr<") != std::string::npos) m_class.cppHeaders.insert("memory");
    (role.end->cls->isEnumeration ? m_class.includes : m_class.forwards).push_back(role.end->cls);
  }
  const auto tidy = [](std::vector<const CodeClass*>& classes) {
    std::sort(classes.begin(), classes.end(),
              [](const auto* a, const auto* b) { return a->position < b->position; });
    classes.erase(std::unique(classes.begin(), classes.end()), classes.end());
  };
  tidy(m_class.includes);
  tidy(m_class.forwards);
  std::erase_if(m_class.forwards, [this](const CodeClass* cls) {
    return cls == &m_class || std::find(m_class.includes.begin(), m_class.includes.end(), cls) !=
                                  m_class.includes.end();
  });
}

}  // namespace brisel::tools
