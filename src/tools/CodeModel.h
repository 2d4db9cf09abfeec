#pragma once

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "platform/Repository.h"
#include "tools/TypeName.h"
#include "tools/Words.h"

/// A class model as templates see it: everything has a name that each language accepts, types are
/// resolved, and what no language could express (classes that are their own bases) is gone.
namespace brisel::tools {

struct CodeClass;

/// What something is called: in the model, in one line, and in each language.
struct Names {
  std::string name;
  std::string cpp;
  std::string java;
  std::string sql;
};

/// A data type of the model, resolved.
struct CodeType {
  std::string name;  ///< as the model has it
  TypeKind kind = TypeKind::any;
  std::string cpp;
  std::string java;
  std::string javaBoxed;  ///< as an argument of a template
  std::string sql;
  const CodeClass* cls = nullptr;         ///< of a named type that is a class of the model
  std::vector<const CodeClass*> classes;  ///< that the type names, in arguments too
  std::set<std::string> headers;          ///< of the C++ library
  bool usesDataTypes = false;             ///< names a type that the model tells nothing about

  [[nodiscard]] bool isUnknown() const { return kind == TypeKind::named && !cls; }
};

struct CodeDataType : Names {};

struct CodeElement : Names {
  std::string identifier;
  std::string stereotype;
  std::vector<std::string> description;  ///< lines that are safe in a comment
};

/// Something of a type, once or several times.
struct CodeTyped : CodeElement {
  const CodeType* type = nullptr;
  std::string multiplicity;
  bool isMany = false;
  bool isOptional = false;
  std::string cppType;
  std::string javaType;
  std::string value;     ///< as the model has it
  std::string cppValue;  ///< a literal of the type, empty where the value is none
  std::string javaValue;
  std::string sqlValue;
};

struct CodeAttribute : CodeTyped {
  const CodeClass* owner = nullptr;
  std::string scope;  ///< "public", "protected" or "private"
  bool isStatic = false;
  bool isFinal = false;
  bool isTransient = false;
  bool isVolatile = false;
  bool isDerived = false;
  bool isPlain = false;  ///< one number, flag or literal: nothing until it is set
};

struct CodeParameter : CodeTyped {
  std::string direction;         ///< "in", "out" or "inout"
  std::string cppParameterType;  ///< by value, by const reference, or by reference
};

struct CodeOperation : CodeTyped {
  const CodeClass* owner = nullptr;
  std::string scope;
  std::string category;
  std::vector<CodeParameter> parameters;
  bool isConstructor = false;
  bool isStatic = false;
  bool isAbstract = false;
  bool isFinal = false;
  bool isSynchronized = false;
  bool isNative = false;
  bool overrides = false;    ///< an operation of a base, in C++
  std::string cppSignature;  ///< name and parameter types
};

/// An end of a relationship.
struct CodeEnd {
  const CodeClass* cls = nullptr;
  std::string role;
  std::string multiplicity;
  bool isMany = false;
  bool isRequired = false;
  bool isNavigable = false;
  std::vector<std::string> description;
};

struct CodeAssociation : CodeElement {
  CodeEnd source;
  CodeEnd target;
  bool isShared = false;      ///< the source is a whole, the target a part of it
  bool isComposite = false;   ///< a part of it alone
  bool isDependency = false;  ///< no objects are joined
};

/// An association as a class at one of its ends sees it.
struct CodeRole : CodeElement {
  const CodeAssociation* association = nullptr;
  const CodeEnd* end = nullptr;   ///< the other one
  const CodeEnd* near = nullptr;  ///< the class's own
  bool isSource = false;          ///< the class is the association's source
  bool isMember = false;          ///< can be reached from the class
  std::string cppType;
  std::string javaType;
};

/// The members of one visibility, in the order of the model.
struct CodeGroup {
  std::string scope;
  std::vector<const CodeAttribute*> attributes;
  std::vector<const CodeRole*> roles;
  std::vector<const CodeOperation*> constructors;
  std::vector<const CodeOperation*> operations;
};

struct CodeClass : CodeElement {
  platform::Ref<platform::Node> node;
  std::size_t position = 0;  ///< in the list in which every base comes before its sub classes
  bool isInterface = false;
  bool isEnumeration = false;
  std::vector<const CodeClass*> allBases;  ///< without those that would close a circle
  bool hasSubclasses = false;

  // Of a completed class.
  bool isComplete = false;
  std::string category;
  std::string scope;
  bool isAbstract = false;
  bool isFinal = false;
  std::vector<const CodeClass*> bases;      ///< not told by another base already
  std::vector<const CodeClass*> ancestors;  ///< all of them, bases first
  std::vector<CodeAttribute> attributes;    ///< literals of an enumeration
  std::vector<CodeRole> roles;
  std::vector<CodeOperation> constructors;
  std::vector<CodeOperation> operations;
  std::vector<CodeGroup> groups;  ///< those that are not empty
  std::set<std::string> cppHeaders;
  std::vector<const CodeClass*> includes;  ///< needed in full: bases, enumerations
  std::vector<const CodeClass*> forwards;  ///< needed by name
  bool usesDataTypes = false;
  bool needsCppConstructor = false;         ///< none of its own takes no arguments
  std::vector<const CodeRole*> references;  ///< a column of its table each
  std::vector<const CodeRole*> joins;       ///< a table each
};

/// Reads a model when it is made, as far as names go; the rest of a class when it is asked for. The
/// model must not change meanwhile: whoever holds it makes another after a change. Costs: names of
/// all classes, then what the classes asked for and their bases cost.
class CodeModel {
 public:
  explicit CodeModel(platform::MetaRepository& model);
  ~CodeModel();
  CodeModel(const CodeModel&) = delete;
  CodeModel& operator=(const CodeModel&) = delete;

  /// All classes, bases first, otherwise in the order of the model.
  [[nodiscard]] const std::vector<std::unique_ptr<CodeClass>>& classes() const { return m_classes; }
  /// Classes of the identifier, otherwise those of the name; empty without any.
  [[nodiscard]] std::vector<const CodeClass*> find(std::string_view identifierOrName) const;
  /// Types that the model names and tells nothing about, in its order.
  [[nodiscard]] const std::vector<std::unique_ptr<CodeDataType>>& dataTypes() const {
    return m_dataTypes;
  }
  /// The class with all that is told of it.
  const CodeClass& complete(const CodeClass& cls);

 private:
  friend class ClassReader;

  void readClasses();
  void readBases();
  void orderBasesFirst();
  void readDataTypes();
  [[nodiscard]] const CodeType& typeOf(const platform::Node& member, std::string_view linkType);
  [[nodiscard]] const CodeType& typeNamed(const std::string& name);
  [[nodiscard]] CodeType resolve(const TypeName& parsed, std::string_view text);
  [[nodiscard]] const CodeClass* classNamed(std::string_view name) const;
  [[nodiscard]] const CodeDataType& dataType(std::string_view name);
  [[nodiscard]] const CodeAssociation* association(const platform::Node& node);
  [[nodiscard]] const CodeClass* classOf(const platform::Node& node) const;

  platform::Ref<platform::MetaRepository> m_model;
  std::vector<std::unique_ptr<CodeClass>> m_classes;
  std::unordered_map<std::string, CodeClass*> m_byIdentifier;
  std::unordered_multimap<std::string, CodeClass*> m_byName;
  std::unordered_set<std::string> m_cppTypeNames;
  NameScope m_cppNames{Language::cpp, NameScope::Case::ignored};
  NameScope m_javaNames{Language::java, NameScope::Case::ignored};
  NameScope m_sqlNames{Language::sql, NameScope::Case::ignored};
  std::vector<std::unique_ptr<CodeDataType>> m_dataTypes;
  std::unordered_map<std::string, CodeDataType*> m_dataTypeByName;
  std::unordered_map<std::string, std::unique_ptr<CodeType>> m_types;
  std::unordered_map<std::string, std::unique_ptr<CodeAssociation>> m_associations;
};

}  // namespace brisel::tools
