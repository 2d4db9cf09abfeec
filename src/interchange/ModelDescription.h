#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "interchange/ImportReport.h"

/// What a reader found in its files, in terms of the class model and free of any dialect: the
/// readers write it, ModelBuilder turns it into nodes and links. Types of members are names; ends
/// of relationships are positions in the list of classifiers.
namespace brisel::interchange {

/// A stereotype that is applied to an element, and the values that the application carries.
struct StereotypeUse {
  std::string id;
  std::string place;
  std::string name;
  std::vector<std::pair<std::string, std::string>> tags;
};

struct Described {
  std::string id;  ///< as the file has it; empty where it has none
  std::string name;
  std::string documentation;
  std::string place;  ///< "file:line"
  std::vector<StereotypeUse> stereotypes;
};

struct DescribedParameter : Described {
  std::string type;
  std::string direction;  ///< "out" or "inout"; empty for the usual direction
  std::string value;
  std::string multiplicity;
};

struct DescribedFeature : Described {
  std::string type;
  std::string scope;  ///< empty where the file states none
  std::string multiplicity;
  bool isStatic = false;
  bool isFinal = false;
  bool isDerived = false;
};

struct DescribedAttribute : DescribedFeature {
  std::string value;
  bool isTransient = false;
  bool isVolatile = false;
};

struct DescribedOperation : DescribedFeature {
  bool isAbstract = false;
  bool isConstructor = false;
  bool isSynchronized = false;
  std::vector<DescribedParameter> parameters;
};

enum class ClassifierKind : std::uint8_t {
  plainClass,
  interface,
  enumeration,
  structuredType,  ///< a data type or signal with members of its own
  plainType,       ///< a data type without: no class
  stub,            ///< a class of a file that was not given
};

struct DescribedClassifier : Described {
  ClassifierKind kind = ClassifierKind::plainClass;
  std::string category;  ///< names of the packages around it, joined by "::"
  std::string scope;
  bool isAbstract = false;
  bool isFinal = false;
  std::vector<DescribedAttribute> attributes;
  std::vector<DescribedOperation> operations;
};

enum class RelationshipKind : std::uint8_t {
  association,
  sharedAggregation,     ///< source is the whole
  compositeAggregation,  ///< source is the whole
  dependency,            ///< source is the client
  use,
  abstraction,
  generalization,  ///< source is the sub class
  realization,     ///< source is the class that realizes
};

struct DescribedEnd {
  std::size_t classifier = 0;
  std::string role;
  std::string multiplicity;
  std::string documentation;
  bool isNavigable = false;
};

struct DescribedRelationship : Described {
  RelationshipKind kind = RelationshipKind::association;
  DescribedEnd source;
  DescribedEnd target;
  bool isDerived = false;
};

struct ModelDescription {
  std::vector<DescribedClassifier> classifiers;
  std::vector<DescribedRelationship> relationships;
  ImportReport report;

  /// The position of the stub of that identifier, made and told at its first use.
  std::size_t stub(const std::string& id, const std::string& name);

  void skip(std::string kind, std::string id, const std::string& place, std::string_view cause);
  /// Tells of a stereotype that its element, "the parameter \"x\"", has no place for.
  void skip(const StereotypeUse& use, std::string_view element);
  void note(std::string kind, std::string id, const std::string& place, std::string_view text);

 private:
  std::map<std::string, std::size_t, std::less<>> m_stubs;
};

/// The data type of a member whose file names none that can be read.
inline constexpr std::string_view kUntyped = "<untyped>";
/// The return type of an operation that returns nothing.
inline constexpr std::string_view kVoid = "void";

/// The multiplicity as UML writes it: "1", "0..1", "*", "1..*". Bounds are as a file states them;
/// "-1", "-2" and "*" mean no limit.
[[nodiscard]] std::string multiplicityText(std::string_view lower, std::string_view upper);

/// "a class", "an attribute".
[[nodiscard]] std::string withArticle(std::string_view word);

/// What a person can call an element of another file: the last name of a reference such as
/// "library.uml#String" or "other.ecore#//sub/Shape"; a file name and the identifier where the
/// identifier tells nothing.
[[nodiscard]] std::string nameOfReference(std::string_view reference);

}  // namespace brisel::interchange
