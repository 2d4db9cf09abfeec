#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Collection.h"
#include "platform/Event.h"
#include "platform/Object.h"

/// The meta repository as the rest of the system sees it: typed nodes, typed links, properties.
/// The embedded store implements it; a host may hand over a repository of its own.
namespace brisel::platform {

class MetaType;
class Node;

/// What nodes and links have in common. One that was removed from the repository still answers for
/// its properties to whoever holds it.
class Element : public Object {
 public:
  [[nodiscard]] virtual std::string identifier() const = 0;
  /// An Error (457) when another instance of the type has the identifier.
  virtual void identifier(std::string_view identifier) = 0;
  [[nodiscard]] virtual std::string name() const = 0;
  virtual void name(std::string_view name) = 0;
  /// The meta type; its `name` is the type name.
  [[nodiscard]] virtual Ref<MetaType> Parent() const = 0;
};

/// A typed link from a node to a node.
class Link : public Element {
 public:
  [[nodiscard]] virtual Ref<Node> source() const = 0;
  [[nodiscard]] virtual Ref<Node> Target() const = 0;

  [[nodiscard]] const MemberTable& memberTable() const override;
};

/// A typed node. Property keys are found ignoring case and kept as first written; "Name" and
/// "Identifier" reach the node's own. Every key also answers as a member of the node by name.
class Node : public Element {
 public:
  /// The links of the type that leave or enter the node, in the order in which they were made; a
  /// live collection, empty for a type without links here.
  [[nodiscard]] virtual Ref<Collection> outgoing(std::string_view linkType) const = 0;
  [[nodiscard]] virtual Ref<Collection> Incoming(std::string_view linkType) const = 0;
  /// The value of a property; empty when it was never set.
  [[nodiscard]] virtual Value Prop_(std::string_view name) const = 0;
  [[nodiscard]] virtual Value GetProperty(std::string_view key) const = 0;
  virtual void SetProperty(std::string_view key, const Value& value) = 0;

  [[nodiscard]] const MemberTable& memberTable() const override;
  Value get(std::string_view member) override;
  void set(std::string_view member, const Value& value) override;
};

/// A property that nodes of a type may have.
class PropertyDefinition : public Object {
 public:
  explicit PropertyDefinition(std::string name) : m_name(std::move(name)) {}
  [[nodiscard]] std::string name() const { return m_name; }
  [[nodiscard]] const MemberTable& memberTable() const override;

 private:
  std::string m_name;
};

/// A type of nodes or of links.
class MetaType : public Object {
 public:
  [[nodiscard]] virtual std::string name() const = 0;
  /// All instances, in the order in which they were made; a live collection.
  [[nodiscard]] virtual Ref<Collection> extension() const = 0;
  /// The instance with the identifier; an Error (notFound) naming type and identifier without one.
  [[nodiscard]] virtual Ref<Element> extension(std::string_view identifier) const = 0;
  /// The same, nothing where there is none.
  [[nodiscard]] virtual Ref<Element> find(std::string_view identifier) const = 0;
  /// The first instance in the order of `extension` whose name is the one given, or nothing.
  /// Costs O(1) expected.
  [[nodiscard]] virtual Ref<Element> findByName(std::string_view name) const = 0;
  /// On a node type: the link types that may leave or enter its nodes.
  [[nodiscard]] virtual Ref<Collection> outgoing() const = 0;
  [[nodiscard]] virtual Ref<Collection> Incoming() const = 0;
  /// PropertyDefinition objects: what was declared for the type and what was set on its nodes.
  [[nodiscard]] virtual Ref<Collection> properties() const = 0;

  [[nodiscard]] const MemberTable& memberTable() const override;
};

/// One change of a repository, told after it was made. The views live during the call only.
struct Change {
  enum class Kind {
    nodeMade,
    nodeRemoved,
    linkMade,
    linkRemoved,
    propertySet,
    renamed,
    identified,
  };
  Kind kind;
  std::uint64_t number;  ///< counts from 1, one a change
  Element& element;
  std::string_view key;  ///< propertySet: the property
  const Value& before;   ///< propertySet, renamed, identified: what it was
  const Value& after;    ///< and what it is now
};

class MetaRepository : public Object {
 public:
  /// Prepares an empty repository; what it held is gone.
  virtual void Init() = 0;
  /// The type of that name; an Error (notFound) when no such type is known. Types are known from
  /// Init on (those of the class model) or since a node or link of theirs was first made.
  [[nodiscard]] virtual Ref<MetaType> MetaNodes(std::string_view type) const = 0;
  [[nodiscard]] virtual Ref<MetaType> MetaLinks(std::string_view type) const = 0;
  /// An Error (457) when the type has an instance of that identifier.
  virtual Ref<Node> MakeNode(std::string_view type, std::string_view name,
                             std::string_view identifier) = 0;
  /// The type is three words joined by ".", the first and the last the types of the end nodes; an
  /// Error (invalidCall) when they are not, or when an end is not in the repository.
  virtual Ref<Link> MakeLink(std::string_view type, std::string_view name,
                             std::string_view identifier, Node& source, Node& target) = 0;
  virtual void RemoveAssoc(Link& link) = 0;

  /// All known types, in the order in which they became known.
  [[nodiscard]] virtual Ref<Collection> nodeTypes() const = 0;
  [[nodiscard]] virtual Ref<Collection> linkTypes() const = 0;
  /// Tells of every change from now on.
  [[nodiscard]] virtual Connection onChange(std::function<void(const Change&)> listener) = 0;
  /// How many changes were made since the repository was created.
  [[nodiscard]] virtual std::uint64_t changeCount() const = 0;

  [[nodiscard]] const MemberTable& memberTable() const override;
};

/// The names of the class model's node and link types.
namespace types {
inline constexpr std::string_view kClass = "Class";
inline constexpr std::string_view kAttrib = "Attrib";
inline constexpr std::string_view kOperation = "Operation";
inline constexpr std::string_view kParameter = "Parameter";
inline constexpr std::string_view kDataType = "DataType";
inline constexpr std::string_view kStereotype = "Stereotype";
inline constexpr std::string_view kAssociation = "Association";
inline constexpr std::string_view kAggregation = "Aggregation";
inline constexpr std::string_view kGeneralization = "Generalization";
inline constexpr std::string_view kGeomArea = "GeomArea";
inline constexpr std::string_view kGeomPoint = "GeomPoint";
inline constexpr std::string_view kLayout = "Layout";

inline constexpr std::string_view kClassHasAttrib = "Class.Has.Attrib";
inline constexpr std::string_view kClassHasOperation = "Class.Has.Operation";
inline constexpr std::string_view kOperationHasParameter = "Operation.Has.Parameter";
inline constexpr std::string_view kAttribHasDataType = "Attrib.Has.DataType";
inline constexpr std::string_view kOperationHasDataType = "Operation.Has.DataType";
inline constexpr std::string_view kParameterHasDataType = "Parameter.Has.DataType";
inline constexpr std::string_view kAssociationSource = "Association.Source.Class";
inline constexpr std::string_view kAssociationTarget = "Association.Target.Class";
inline constexpr std::string_view kAggregationSource = "Aggregation.Source.Class";
inline constexpr std::string_view kAggregationTarget = "Aggregation.Target.Class";
inline constexpr std::string_view kGeneralizationSuper = "Generalization.Super.Class";
inline constexpr std::string_view kGeneralizationSub = "Generalization.Sub.Class";
}  // namespace types

}  // namespace brisel::platform
