#include "tools/TemplateKeys.h"

#include <algorithm>

#include "tools/Literals.h"

namespace brisel::tools {

namespace {

using Keys = std::vector<KeyTable::Key>;

const KeyTable& classKeys();
const KeyTable& typeKeys();

/// A key of T: the expression sees the object as `self` and the model as `model`.
#define BRISEL_KEY(T, name, expression)                                        \
  KeyTable::Key {                                                              \
    name, [](const void* object, [[maybe_unused]] CodeModel& model) -> Field { \
      [[maybe_unused]] const auto& self = *static_cast<const T*>(object);      \
      return expression;                                                       \
    }                                                                          \
  }

Item itemOf(const KeyTable& keys, const void* object) { return {&keys, object, {}}; }

/// False in the place of what there is not.
Field classField(const CodeClass* cls) {
  return cls ? Field(itemOf(classKeys(), cls)) : Field(false);
}

Field textList(const std::vector<std::string>& lines) {
  std::vector<Item> items;
  for (const std::string& line : lines) items.push_back({nullptr, nullptr, line});
  return items;
}

Field textList(const std::set<std::string>& words) {
  return textList(std::vector<std::string>(words.begin(), words.end()));
}

template <class T>
const T* addressOf(const T& element) {
  return &element;
}
template <class T>
const T* addressOf(const T* element) {
  return element;
}
template <class T>
const T* addressOf(const std::unique_ptr<T>& element) {
  return element.get();
}

template <class List>
Field listOf(const KeyTable& keys, const List& elements) {
  std::vector<Item> items;
  items.reserve(elements.size());
  for (const auto& element : elements) items.push_back(itemOf(keys, addressOf(element)));
  return items;
}

/// The parts of "a::b" one by one.
Field packagesOf(const std::string& category) {
  std::vector<std::string> parts;
  for (std::size_t start = 0; start < category.size();) {
    const auto end = std::min(category.find("::", start), category.size());
    if (end > start) parts.push_back(category.substr(start, end - start));
    start = end + 2;
  }
  return textList(parts);
}

Keys joined(Keys keys, const Keys& more) {
  keys.insert(keys.end(), more.begin(), more.end());
  return keys;
}

template <class T>
Keys nameKeys() {
  return {
      BRISEL_KEY(T, "name", self.name),
      BRISEL_KEY(T, "cppName", self.cpp),
      BRISEL_KEY(T, "javaName", self.java),
      BRISEL_KEY(T, "sqlName", self.sql),
  };
}

template <class T>
Keys elementKeys() {
  return joined(nameKeys<T>(), {
                                   BRISEL_KEY(T, "identifier", self.identifier),
                                   BRISEL_KEY(T, "stereotype", self.stereotype),
                                   BRISEL_KEY(T, "description", textList(self.description)),
                               });
}

template <class T>
Keys typedKeys() {
  return joined(elementKeys<T>(), {
                                      BRISEL_KEY(T, "type", itemOf(typeKeys(), self.type)),
                                      BRISEL_KEY(T, "cppType", self.cppType),
                                      BRISEL_KEY(T, "javaType", self.javaType),
                                      BRISEL_KEY(T, "sqlType", self.type->sql),
                                      BRISEL_KEY(T, "multiplicity", self.multiplicity),
                                      BRISEL_KEY(T, "isMany", self.isMany),
                                      BRISEL_KEY(T, "isOptional", self.isOptional),
                                      BRISEL_KEY(T, "value", self.value),
                                      BRISEL_KEY(T, "cppValue", self.cppValue),
                                      BRISEL_KEY(T, "javaValue", self.javaValue),
                                      BRISEL_KEY(T, "sqlValue", self.sqlValue),
                                  });
}

const KeyTable& typeKeys() {
  static const KeyTable kTable(
      "type", {
                  BRISEL_KEY(CodeType, "name", self.name),
                  BRISEL_KEY(CodeType, "class", classField(self.cls)),
                  BRISEL_KEY(CodeType, "isClass", self.cls && !self.cls->isEnumeration),
                  BRISEL_KEY(CodeType, "isEnumeration", self.cls && self.cls->isEnumeration),
                  BRISEL_KEY(CodeType, "isUnknown", self.isUnknown()),
                  BRISEL_KEY(CodeType, "isVoid", self.kind == TypeKind::nothing),
                  BRISEL_KEY(CodeType, "isAny", self.kind == TypeKind::any),
                  BRISEL_KEY(CodeType, "isText", self.kind == TypeKind::text),
                  BRISEL_KEY(CodeType, "isBoolean", self.kind == TypeKind::boolean),
                  BRISEL_KEY(CodeType, "isTime", self.kind == TypeKind::time),
                  BRISEL_KEY(CodeType, "isNumber",
                             self.kind >= TypeKind::byte && self.kind <= TypeKind::float64),
                  BRISEL_KEY(CodeType, "isContainer",
                             self.kind == TypeKind::list || self.kind == TypeKind::map),
              });
  return kTable;
}

const KeyTable& dataTypeKeys() {
  static const KeyTable kTable("data type", nameKeys<CodeDataType>());
  return kTable;
}

const KeyTable& attributeKeys() {
  using A = CodeAttribute;
  static const KeyTable kTable(
      "attribute",
      joined(typedKeys<A>(),
             {
                 BRISEL_KEY(A, "owner", classField(self.owner)),
                 BRISEL_KEY(A, "scope", self.scope),
                 BRISEL_KEY(A, "isStatic", self.isStatic),
                 BRISEL_KEY(A, "isFinal", self.isFinal),
                 BRISEL_KEY(A, "isTransient", self.isTransient),
                 BRISEL_KEY(A, "isVolatile", self.isVolatile),
                 BRISEL_KEY(A, "isDerived", self.isDerived),
                 BRISEL_KEY(A, "isPlain", self.isPlain),
                 BRISEL_KEY(A, "hasManyValues", self.isMany || self.type->kind == TypeKind::list),
                 BRISEL_KEY(A, "sqlText", sqlText(self.name)),
             }));
  return kTable;
}

const KeyTable& parameterKeys() {
  using P = CodeParameter;
  static const KeyTable kTable(
      "parameter",
      joined(typedKeys<P>(), {
                                 BRISEL_KEY(P, "direction", self.direction),
                                 BRISEL_KEY(P, "cppParameterType", self.cppParameterType),
                             }));
  return kTable;
}

const KeyTable& operationKeys() {
  using O = CodeOperation;
  static const KeyTable kTable(
      "operation", joined(typedKeys<O>(),
                          {
                              BRISEL_KEY(O, "owner", classField(self.owner)),
                              BRISEL_KEY(O, "scope", self.scope),
                              BRISEL_KEY(O, "category", self.category),
                              BRISEL_KEY(O, "parameters", listOf(parameterKeys(), self.parameters)),
                              BRISEL_KEY(O, "hasOneParameter", self.parameters.size() == 1),
                              BRISEL_KEY(O, "isConstructor", self.isConstructor),
                              BRISEL_KEY(O, "isStatic", self.isStatic),
                              BRISEL_KEY(O, "isAbstract", self.isAbstract),
                              BRISEL_KEY(O, "isFinal", self.isFinal),
                              BRISEL_KEY(O, "isSynchronized", self.isSynchronized),
                              BRISEL_KEY(O, "isNative", self.isNative),
                              BRISEL_KEY(O, "overrides", self.overrides),
                          }));
  return kTable;
}

const KeyTable& endKeys() {
  using E = CodeEnd;
  static const KeyTable kTable("end", {
                                          BRISEL_KEY(E, "class", classField(self.cls)),
                                          BRISEL_KEY(E, "role", self.role),
                                          BRISEL_KEY(E, "multiplicity", self.multiplicity),
                                          BRISEL_KEY(E, "isMany", self.isMany),
                                          BRISEL_KEY(E, "isRequired", self.isRequired),
                                          BRISEL_KEY(E, "isNavigable", self.isNavigable),
                                          BRISEL_KEY(E, "description", textList(self.description)),
                                      });
  return kTable;
}

const KeyTable& associationKeys() {
  using A = CodeAssociation;
  static const KeyTable kTable(
      "association",
      joined(elementKeys<A>(), {
                                   BRISEL_KEY(A, "source", itemOf(endKeys(), &self.source)),
                                   BRISEL_KEY(A, "target", itemOf(endKeys(), &self.target)),
                                   BRISEL_KEY(A, "isShared", self.isShared),
                                   BRISEL_KEY(A, "isComposite", self.isComposite),
                               }));
  return kTable;
}

const KeyTable& roleKeys() {
  using R = CodeRole;
  static const KeyTable kTable(
      "role", joined(elementKeys<R>(),
                     {
                         BRISEL_KEY(R, "class", classField(self.end->cls)),
                         BRISEL_KEY(R, "owner", classField(self.near->cls)),
                         BRISEL_KEY(R, "association", itemOf(associationKeys(), self.association)),
                         BRISEL_KEY(R, "cppType", self.cppType),
                         BRISEL_KEY(R, "javaType", self.javaType),
                         BRISEL_KEY(R, "multiplicity", self.end->multiplicity),
                         BRISEL_KEY(R, "isMany", self.end->isMany),
                         BRISEL_KEY(R, "isRequired", self.end->isRequired),
                         BRISEL_KEY(R, "isNavigable", self.end->isNavigable),
                         BRISEL_KEY(R, "isMember", self.isMember),
                         BRISEL_KEY(R, "isPointer", self.cppType.ends_with('*')),
                         BRISEL_KEY(R, "ownsParts", self.isSource && self.association->isComposite),
                         BRISEL_KEY(R, "sharesParts", self.isSource && self.association->isShared),
                         BRISEL_KEY(R, "isOwner", !self.isSource && self.association->isComposite),
                     }));
  return kTable;
}

const KeyTable& groupKeys() {
  using G = CodeGroup;
  static const KeyTable kTable(
      "group", {
                   BRISEL_KEY(G, "scope", self.scope),
                   BRISEL_KEY(G, "isPublic", self.scope == "public"),
                   BRISEL_KEY(G, "attributes", listOf(attributeKeys(), self.attributes)),
                   BRISEL_KEY(G, "roles", listOf(roleKeys(), self.roles)),
                   BRISEL_KEY(G, "constructors", listOf(operationKeys(), self.constructors)),
                   BRISEL_KEY(G, "operations", listOf(operationKeys(), self.operations)),
               });
  return kTable;
}

const KeyTable& classKeys() {
  using C = CodeClass;
  static const KeyTable kTable(
      "class",
      joined(
          nameKeys<C>(),
          {
              BRISEL_KEY(C, "identifier", self.identifier),
              BRISEL_KEY(C, "stereotype", self.stereotype),
              BRISEL_KEY(C, "isInterface", self.isInterface),
              BRISEL_KEY(C, "isEnumeration", self.isEnumeration),
              BRISEL_KEY(C, "hasSubclasses", self.hasSubclasses),
              BRISEL_KEY(C, "description", textList(model.complete(self).description)),
              BRISEL_KEY(C, "category", model.complete(self).category),
              BRISEL_KEY(C, "packages", packagesOf(model.complete(self).category)),
              BRISEL_KEY(C, "scope", model.complete(self).scope),
              BRISEL_KEY(C, "isAbstract", model.complete(self).isAbstract),
              BRISEL_KEY(C, "isFinal", model.complete(self).isFinal && !self.hasSubclasses),
              BRISEL_KEY(C, "attributes", listOf(attributeKeys(), model.complete(self).attributes)),
              BRISEL_KEY(C, "constructors",
                         listOf(operationKeys(), model.complete(self).constructors)),
              BRISEL_KEY(C, "operations", listOf(operationKeys(), model.complete(self).operations)),
              BRISEL_KEY(C, "roles", listOf(roleKeys(), model.complete(self).roles)),
              BRISEL_KEY(C, "groups", listOf(groupKeys(), model.complete(self).groups)),
              BRISEL_KEY(C, "bases", listOf(classKeys(), model.complete(self).bases)),
              BRISEL_KEY(C, "ancestors", listOf(classKeys(), model.complete(self).ancestors)),
              BRISEL_KEY(C, "includes", listOf(classKeys(), model.complete(self).includes)),
              BRISEL_KEY(C, "forwards", listOf(classKeys(), model.complete(self).forwards)),
              BRISEL_KEY(C, "cppHeaders", textList(model.complete(self).cppHeaders)),
              BRISEL_KEY(C, "usesDataTypes", model.complete(self).usesDataTypes),
              BRISEL_KEY(C, "needsCppConstructor", model.complete(self).needsCppConstructor),
              BRISEL_KEY(C, "references", listOf(roleKeys(), model.complete(self).references)),
              BRISEL_KEY(C, "joins", listOf(roleKeys(), model.complete(self).joins)),
          }));
  return kTable;
}

Field selectedClasses(const TemplateRoot& root, bool enumerations) {
  std::vector<Item> items;
  for (const CodeClass* cls : root.selected) {
    if (cls->isEnumeration == enumerations) items.push_back(itemOf(classKeys(), cls));
  }
  return items;
}

/// Told once, at their sources.
Field associationsOf(const TemplateRoot& root, CodeModel& model) {
  std::vector<Item> items;
  for (const CodeClass* cls : root.selected) {
    for (const CodeRole& role : model.complete(*cls).roles) {
      if (role.isSource) items.push_back(itemOf(associationKeys(), role.association));
    }
  }
  return items;
}

const KeyTable& rootKeys() {
  using R = TemplateRoot;
  static const KeyTable kTable(
      "model", {
                   BRISEL_KEY(R, "modelName", self.modelName),
                   BRISEL_KEY(R, "classes", selectedClasses(self, false)),
                   BRISEL_KEY(R, "enumerations", selectedClasses(self, true)),
                   BRISEL_KEY(R, "associations", associationsOf(self, model)),
                   BRISEL_KEY(R, "dataTypes", listOf(dataTypeKeys(), model.dataTypes())),
                   BRISEL_KEY(R, "hasDataTypes", !model.dataTypes().empty()),
               });
  return kTable;
}

#undef BRISEL_KEY

}  // namespace

KeyTable::KeyTable(std::string_view kind, std::vector<Key> keys)
    : m_kind(kind), m_keys(std::move(keys)) {
  std::sort(m_keys.begin(), m_keys.end(),
            [](const Key& a, const Key& b) { return a.name < b.name; });
}

KeyTable::Getter KeyTable::find(std::string_view name) const {
  const auto found = std::lower_bound(m_keys.begin(), m_keys.end(), name,
                                      [](const Key& key, auto word) { return key.name < word; });
  return found == m_keys.end() || found->name != name ? nullptr : found->get;
}

Item rootItem(const TemplateRoot& root) { return itemOf(rootKeys(), &root); }

const std::vector<const KeyTable*>& allKeyTables() {
  static const std::vector<const KeyTable*> kTables = {
      &rootKeys(),        &classKeys(),     &groupKeys(),   &attributeKeys(),
      &operationKeys(),   &parameterKeys(), &roleKeys(),    &endKeys(),
      &associationKeys(), &typeKeys(),      &dataTypeKeys()};
  return kTables;
}

}  // namespace brisel::tools
