#include "tools/CodeModel.h"

#include <algorithm>
#include <utility>

#include "platform/Text.h"
#include "repository/Class.h"
#include "tools/ClassReader.h"

namespace brisel::tools {

using platform::each;
using platform::Link;
using platform::Node;
using platform::Ref;
namespace types = platform::types;

namespace {

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
  return std::any_of(words.begin(), words.end(), [word](std::string_view other) {
    return platform::equalsIgnoringCase(word, other);
  });
}

/// The node at the far end of the first link, or nothing.
Ref<Node> first(const Node& node, std::string_view linkType) {
  const auto links = node.outgoing(linkType);
  return links->Count() == 0 ? Ref<Node>() : static_cast<Link&>(*links->Item(1)).Target();
}

}  // namespace

CodeModel::CodeModel(platform::MetaRepository& model) : m_model(&model) {
  // Names of files that lie beside those of the classes, and of files that no Windows has.
  for (NameScope* scope : {&m_cppNames, &m_javaNames, &m_sqlNames}) {
    for (const char* word : {"data_types", "con", "prn", "aux", "nul"}) scope->take(word);
    for (char digit = '1'; digit <= '9'; ++digit) {
      scope->take(std::string("com") + digit);
      scope->take(std::string("lpt") + digit);
    }
  }
  readClasses();
  readBases();
  orderBasesFirst();
  readDataTypes();
}

CodeModel::~CodeModel() = default;

void CodeModel::readClasses() {
  const auto extension = m_model->MetaNodes(types::kClass)->extension();
  m_classes.reserve(static_cast<std::size_t>(extension->Count()));
  for (Node& node : each<Node>(extension)) {
    auto cls = std::make_unique<CodeClass>();
    cls->node = Ref<Node>(&node);
    cls->identifier = node.identifier();
    const std::string name = node.name();
    cls->name = plainLine(name);
    cls->cpp = m_cppNames.unique(name, "Unnamed");
    cls->java = m_javaNames.unique(name, "Unnamed");
    cls->sql = m_sqlNames.unique(name, "Unnamed");
    cls->stereotype = plainLine(repository::stereotypeName(node));
    cls->isInterface = isOneOf(cls->stereotype, {"COM::Interface", "interface"});
    cls->isEnumeration = isOneOf(cls->stereotype, {"COM::Enum", "enumeration", "enum"});
    m_cppTypeNames.insert(cls->cpp);
    m_byIdentifier.emplace(cls->identifier, cls.get());
    m_byName.emplace(name, cls.get());
    m_classes.push_back(std::move(cls));
  }
}

void CodeModel::readBases() {
  for (Node& node : each<Node>(m_model->MetaNodes(types::kGeneralization)->extension())) {
    const Ref<Node> superNode = first(node, types::kGeneralizationSuper);
    const Ref<Node> subNode = first(node, types::kGeneralizationSub);
    if (!superNode || !subNode) continue;
    const auto base = m_byIdentifier.find(superNode->identifier());
    const auto sub = m_byIdentifier.find(subNode->identifier());
    if (base == m_byIdentifier.end() || sub == m_byIdentifier.end()) continue;
    if (base->second == sub->second || base->second->isEnumeration || sub->second->isEnumeration) {
      continue;
    }
    auto& bases = sub->second->allBases;
    if (std::find(bases.begin(), bases.end(), base->second) == bases.end()) {
      bases.push_back(base->second);
    }
  }
}

/// A walk in depth over the bases: a class is put into the list when all its bases are, and a base
/// that is still being walked closes a circle. The stack is a list, since chains may be long.
void CodeModel::orderBasesFirst() {
  enum class State { untouched, walked, done };
  std::unordered_map<const CodeClass*, State> states;
  std::vector<const CodeClass*> order;
  std::unordered_map<const CodeClass*, std::size_t> positions;
  for (const auto& start : m_classes) {
    std::vector<std::pair<const CodeClass*, std::size_t>> stack;
    if (states[start.get()] == State::untouched) stack.emplace_back(start.get(), 0);
    while (!stack.empty()) {
      auto& [cls, next] = stack.back();
      CodeClass& own = *m_byIdentifier.at(cls->identifier);
      states[cls] = State::walked;
      if (next == own.allBases.size()) {
        states[cls] = State::done;
        positions[cls] = order.size();
        order.push_back(cls);
        stack.pop_back();
        continue;
      }
      const CodeClass* base = own.allBases[next];
      if (states[base] == State::walked) {
        own.allBases.erase(own.allBases.begin() + static_cast<std::ptrdiff_t>(next));
        continue;
      }
      ++next;
      m_byIdentifier.at(base->identifier)->hasSubclasses = true;
      if (states[base] == State::untouched) stack.emplace_back(base, 0);
    }
  }
  for (const auto& cls : m_classes) cls->position = positions.at(cls.get());
  std::sort(m_classes.begin(), m_classes.end(),
            [](const auto& a, const auto& b) { return a->position < b->position; });
}

void CodeModel::readDataTypes() {
  for (Node& node : each<Node>(m_model->MetaNodes(types::kDataType)->extension())) {
    static_cast<void>(typeNamed(node.name()));
  }
  static_cast<void>(typeNamed({}));
}

std::vector<const CodeClass*> CodeModel::find(std::string_view identifierOrName) const {
  const std::string key(identifierOrName);
  if (const auto found = m_byIdentifier.find(key); found != m_byIdentifier.end()) {
    return {found->second};
  }
  std::vector<const CodeClass*> found;
  const auto [begin, end] = m_byName.equal_range(key);
  for (auto entry = begin; entry != end; ++entry) found.push_back(entry->second);
  std::sort(found.begin(), found.end(),
            [](const auto* a, const auto* b) { return a->position < b->position; });
  return found;
}

const CodeClass* CodeModel::classNamed(std::string_view name) const {
  auto found = find(name);
  const auto at = name.find_last_of(":.");
  if (found.empty() && at != std::string_view::npos) found = find(name.substr(at + 1));
  return found.empty() ? nullptr : found.front();
}

const CodeClass* CodeModel::classOf(const Node& node) const {
  const auto found = m_byIdentifier.find(node.identifier());
  return found == m_byIdentifier.end() ? nullptr : found->second;
}

const CodeType& CodeModel::typeOf(const Node& member, std::string_view linkType) {
  const Ref<Node> node = first(member, linkType);
  return typeNamed(node ? node->name() : std::string());
}

const CodeType& CodeModel::typeNamed(const std::string& name) {
  std::unique_ptr<CodeType>& type = m_types[name];
  if (!type) {
    TypeName parsed = parseTypeName(name);
    if (classNamed(name)) parsed = {TypeKind::named, name, {}};
    type = std::make_unique<CodeType>(resolve(parsed, name));
    type->name = plainLine(name);
  }
  return *type;
}

CodeType CodeModel::resolve(const TypeName& parsed, std::string_view text) {
  CodeType type;
  type.kind = parsed.kind;
  const CodeClass* cls = parsed.name.empty() ? nullptr : classNamed(parsed.name);
  if (cls) {
    type.kind = TypeKind::named;
    type.cls = cls;
    type.classes = {cls};
    type.cpp = cls->isEnumeration ? cls->cpp : "std::shared_ptr<" + cls->cpp + ">";
    if (!cls->isEnumeration) type.headers.insert("memory");
    type.java = type.javaBoxed = cls->java;
    type.sql = cls->isEnumeration ? "TEXT" : "INTEGER";
  } else if (parsed.kind == TypeKind::named) {
    const CodeDataType& unknown = dataType(parsed.name.empty() ? text : parsed.name);
    type.cpp = unknown.cpp;
    type.java = type.javaBoxed = unknown.java;
    type.sql = "TEXT";
    type.usesDataTypes = true;
  } else if (parsed.arguments.empty()) {
    const TypeWords& words = wordsOf(parsed.kind);
    type.cpp = words.cpp;
    if (!words.cppHeader.empty()) type.headers.emplace(words.cppHeader);
    type.java = words.java;
    type.javaBoxed = words.javaBoxed;
    type.sql = words.sql;
  } else {
    std::string cpp;
    std::string java;
    for (const TypeName& argument : parsed.arguments) {
      CodeType inner = resolve(argument, {});
      if (inner.kind == TypeKind::nothing) inner = resolve({TypeKind::any, {}, {}}, {});
      cpp.append(cpp.empty() ? "" : ", ").append(inner.cpp);
      java.append(java.empty() ? "" : ", ").append(inner.javaBoxed);
      type.classes.insert(type.classes.end(), inner.classes.begin(), inner.classes.end());
      type.headers.insert(inner.headers.begin(), inner.headers.end());
      type.usesDataTypes = type.usesDataTypes || inner.usesDataTypes;
      type.sql = inner.sql;
    }
    const bool isMap = parsed.kind == TypeKind::map;
    const bool isList = parsed.kind == TypeKind::list;
    const std::string name = isMap ? "map" : isList ? "vector" : "optional";
    type.cpp = "std::" + name + "<" + cpp + ">";
    type.headers.insert(name);
    type.java = isMap ? "Map<" + java + ">" : isList ? "List<" + java + ">" : java;
    type.javaBoxed = type.java;
    if (isMap) type.sql = "TEXT";
  }
  return type;
}

const CodeDataType& CodeModel::dataType(std::string_view name) {
  CodeDataType*& known = m_dataTypeByName[std::string(name)];
  if (!known) {
    auto made = std::make_unique<CodeDataType>();
    made->name = plainLine(name);
    made->cpp = m_cppNames.unique(name, "Untyped");
    made->java = m_javaNames.unique(name, "Untyped");
    made->sql = m_sqlNames.unique(name, "Untyped");
    m_cppTypeNames.insert(made->cpp);
    known = made.get();
    m_dataTypes.push_back(std::move(made));
  }
  return *known;
}

const CodeAssociation* CodeModel::association(const Node& node) {
  std::unique_ptr<CodeAssociation>& known = m_associations[node.identifier()];
  if (!known) {
    const std::string kind = node.Parent()->name();
    const Ref<Node> source = first(node, kind + ".Source.Class");
    const Ref<Node> target = first(node, kind + ".Target.Class");
    known = std::make_unique<CodeAssociation>();
    if (source) known->source.cls = classOf(*source);
    if (target) known->target.cls = classOf(*target);
    if (known->source.cls && known->target.cls) readAssociation(node, *known);
  }
  const bool isWhole = known->source.cls && known->target.cls;
  return isWhole ? known.get() : nullptr;
}

const CodeClass& CodeModel::complete(const CodeClass& wanted) {
  if (wanted.isComplete) return wanted;
  std::vector<CodeClass*> open = {m_byIdentifier.at(wanted.identifier)};
  std::unordered_set<const CodeClass*> seen = {open.front()};
  for (std::size_t i = 0; i < open.size(); ++i) {
    for (const CodeClass* base : open[i]->allBases) {
      if (seen.insert(base).second) open.push_back(m_byIdentifier.at(base->identifier));
    }
  }
  std::sort(open.begin(), open.end(),
            [](const auto* a, const auto* b) { return a->position < b->position; });
  for (CodeClass* cls : open) {
    if (!cls->isComplete) ClassReader(*this, *cls).read();
  }
  return wanted;
}

}  // namespace brisel::tools
