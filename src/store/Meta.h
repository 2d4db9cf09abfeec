#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/Repository.h"
#include "store/StoredType.h"

namespace brisel::store {

/// The embedded meta repository, "BriselCLS.Meta". Owns its types, which own their instances.
/// Every change of the model, whichever object it is asked of, ends in one of the operations under
/// the last heading; each of them makes one change record. Listeners may change the repository
/// while they are told.
class Meta final : public platform::MetaRepository {
 public:
  using Value = platform::Value;

  Meta() = default;
  ~Meta() override;

  void Init() override;
  [[nodiscard]] platform::Ref<platform::MetaType> MetaNodes(std::string_view type) const override;
  [[nodiscard]] platform::Ref<platform::MetaType> MetaLinks(std::string_view type) const override;
  platform::Ref<platform::Node> MakeNode(std::string_view type, std::string_view name,
                                         std::string_view identifier) override;
  platform::Ref<platform::Link> MakeLink(std::string_view type, std::string_view name,
                                         std::string_view identifier, platform::Node& source,
                                         platform::Node& target) override;
  void RemoveAssoc(platform::Link& link) override;
  [[nodiscard]] platform::Ref<platform::Collection> nodeTypes() const override;
  [[nodiscard]] platform::Ref<platform::Collection> linkTypes() const override;
  [[nodiscard]] platform::Connection onChange(
      std::function<void(const platform::Change&)> listener) override;
  [[nodiscard]] std::uint64_t changeCount() const override { return m_changes; }

  /// Room for so many more instances of a type, before many are made.
  void reserveNodes(std::string_view type, std::size_t more);
  void reserveLinks(std::string_view type, std::size_t more);

  /// Nothing for a type that is not known.
  [[nodiscard]] NodeType* findNodeType(std::string_view name) const;
  [[nodiscard]] LinkType* findLinkType(std::string_view name) const;

  // What the nodes, links and collections of the store do through the repository.
  /// The links that leave the node go first.
  void remove(StoredNode& node);
  void remove(StoredLink& link);
  [[nodiscard]] bool isListenedTo() const { return m_listeners.use_count() > 1; }
  void tell(platform::Change::Kind kind, platform::Element& element, std::string_view key = {},
            const Value& before = {}, const Value& after = {});

 private:
  template <class Type>
  class Types {
   public:
    [[nodiscard]] Type* find(std::string_view name) const;
    Type& add(platform::Ref<Type> type);
    [[nodiscard]] const std::vector<platform::Ref<Type>>& all() const { return m_all; }
    void forget();

   private:
    std::vector<platform::Ref<Type>> m_all;
    std::unordered_map<std::string_view, Type*> m_byName;
    mutable Type* m_last = nullptr;  ///< mostly the next one asked for, too
  };

  NodeType& nodeType(std::string_view name);
  LinkType& linkType(std::string_view name);
  LinkType& linkTypeBetween(std::string_view name, const StoredNode& source,
                            const StoredNode& target);
  [[nodiscard]] StoredNode& ownNode(platform::Node& node) const;
  void clear();
  void requireOpen() const;

  Types<NodeType> m_nodeTypes;
  Types<LinkType> m_linkTypes;
  bool m_isClearing = false;
  std::uint64_t m_changes = 0;
  platform::Event<const platform::Change&> m_changed;
  /// Every connected listener holds a copy, so that nothing is prepared when nobody listens.
  std::shared_ptr<void> m_listeners = std::make_shared<char>();
};

}  // namespace brisel::store
