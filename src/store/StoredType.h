#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Repository.h"
#include "store/Extension.h"
#include "store/StoredLink.h"
#include "store/StoredNode.h"

namespace brisel::store {

class Meta;

/// What node types and link types have alike: a name, and the instances. Owned by the repository;
/// one that outlives it, or its `Init`, has no instances and no repository any more.
template <class T, class Self>
class StoredType : public platform::MetaType {
 public:
  StoredType(Meta& repository, std::string_view name) : m_repository(&repository), m_name(name) {}

  [[nodiscard]] std::string name() const override { return m_name; }
  [[nodiscard]] platform::Ref<platform::Collection> extension() const override;
  [[nodiscard]] platform::Ref<platform::Element> extension(
      std::string_view identifier) const override;
  [[nodiscard]] platform::Ref<platform::Element> find(std::string_view identifier) const override {
    return m_instances.find(identifier);
  }
  [[nodiscard]] platform::Ref<platform::Element> findByName(std::string_view name) const override {
    return m_instances.findByName(name);
  }

  [[nodiscard]] std::string_view typeName() const { return m_name; }
  [[nodiscard]] Meta* repository() const { return m_repository; }
  void forgetRepository() { m_repository = nullptr; }
  [[nodiscard]] Extension<T>& instances() { return m_instances; }
  [[nodiscard]] const Extension<T>& instances() const { return m_instances; }
  /// An Error (457) when an instance has the identifier.
  void requireFree(const TextKey& identifier) const;

  /// What `identifier` and `name` of an instance do.
  void identify(T& element, PackedText& at, std::string_view identifier);
  template <class Pack>
  void rename(T& element, PackedText& at, std::string_view name, Pack pack);

 protected:
  void tellRenamed(T& element, const std::string& before, std::string_view name);

  Meta* m_repository;
  std::string m_name;
  Extension<T> m_instances;
};

template <class T, class Self>
template <class Pack>
void StoredType<T, Self>::rename(T& element, PackedText& at, std::string_view name, Pack pack) {
  if (!element.isStored()) {
    at = PackedText(name);
    return;
  }
  const std::string before = element.name();
  if (before == name) return;
  m_instances.rename(element, [&] { at = pack(); });
  tellRenamed(element, before, name);
}

class LinkType;

/// A type of nodes, with the properties that its nodes may have and the link types that meet them.
class NodeType final : public StoredType<StoredNode, NodeType> {
 public:
  /// Numbers of properties: those that every node has, and none.
  static constexpr std::uint16_t kIdentifier = 0;
  static constexpr std::uint16_t kName = 1;
  static constexpr std::uint16_t kUnknown = 0xFFFF;

  NodeType(Meta& repository, std::string_view name);

  using StoredType::extension;
  [[nodiscard]] platform::Ref<platform::Collection> outgoing() const override;
  [[nodiscard]] platform::Ref<platform::Collection> Incoming() const override;
  [[nodiscard]] platform::Ref<platform::Collection> properties() const override;

  void addLinkType(LinkType& type, Direction direction);
  /// The number of a property; kUnknown for one that was neither declared nor set.
  [[nodiscard]] std::uint16_t property(std::string_view key) const;
  /// The number of a property, which is made known when it is not.
  std::uint16_t declare(std::string_view key);
  [[nodiscard]] const std::string& propertyName(std::uint16_t number) const {
    return m_keys[number];
  }

 private:
  std::vector<std::string> m_keys;
  std::vector<platform::Ref<platform::PropertyDefinition>> m_definitions;
  mutable std::uint16_t m_guess = 0;  ///< properties are mostly asked for in their order
  std::array<std::vector<platform::Ref<LinkType>>, 2> m_linkTypes;  ///< by direction
};

/// A type of links between nodes of two types.
class LinkType final : public StoredType<StoredLink, LinkType> {
 public:
  LinkType(Meta& repository, std::string_view name, std::uint16_t number);

  using StoredType::extension;
  [[nodiscard]] platform::Ref<platform::Collection> outgoing() const override;
  [[nodiscard]] platform::Ref<platform::Collection> Incoming() const override;
  [[nodiscard]] platform::Ref<platform::Collection> properties() const override;

  [[nodiscard]] std::uint16_t number() const { return m_number; }
  /// The three words of the name, and ".relation.".
  [[nodiscard]] std::string_view sourceType() const { return typeName().substr(0, m_first); }
  [[nodiscard]] std::string_view targetType() const { return typeName().substr(m_second + 1); }
  [[nodiscard]] std::string_view dottedRelation() const {
    return typeName().substr(m_first, m_second + 1 - m_first);
  }

  /// The link at a position from 0 in a list of this type. Cheap near the one asked for last.
  [[nodiscard]] StoredLink& linkAt(const LinkList& list, std::size_t position);
  void forgetMark() { m_mark = {}; }

 private:
  struct Mark {
    const StoredLink* list = nullptr;  ///< the first link of the list
    Direction direction = Direction::outgoing;
    std::size_t position = 0;
    StoredLink* link = nullptr;
  };

  Mark m_mark;
  std::uint16_t m_number;
  std::size_t m_first;  ///< where the dots are
  std::size_t m_second;
};

}  // namespace brisel::store
