#pragma once

#include "store/LinkLists.h"
#include "store/Pool.h"
#include "store/StoredElement.h"

namespace brisel::store {

class LinkType;
class StoredNode;

/// A link of the embedded store. Holds its type and both ends, so that it answers after its
/// removal too. A name of the form "source identifier.relation.target identifier" is not kept but
/// composed, until an identifier that it is composed of changes.
class StoredLink final : public StoredElement<platform::Link>, public Pooled<StoredLink> {
 public:
  /// Neighbours in the list of one end.
  struct Hook {
    StoredLink* previous = nullptr;
    StoredLink* next = nullptr;
  };

  StoredLink(LinkType& type, std::string_view name, const TextKey& identifier, StoredNode& source,
             StoredNode& target);
  ~StoredLink() override;

  [[nodiscard]] std::string identifier() const override { return m_identifier.str(); }
  void identifier(std::string_view identifier) override;
  [[nodiscard]] std::string name() const override;
  void name(std::string_view name) override;
  [[nodiscard]] platform::Ref<platform::MetaType> Parent() const override;
  [[nodiscard]] platform::Ref<platform::Node> source() const override;
  [[nodiscard]] platform::Ref<platform::Node> Target() const override;

  [[nodiscard]] LinkType& type() const { return *m_type; }
  [[nodiscard]] const platform::Ref<StoredNode>& end(Direction direction) const {
    return direction == Direction::outgoing ? m_source : m_target;
  }
  [[nodiscard]] Hook& hook(Direction direction) {
    return direction == Direction::outgoing ? m_atSource : m_atTarget;
  }
  /// Puts the link into, or takes it out of, the lists of its ends.
  void attach();
  void detach();
  /// Keeps a composed name as it is now.
  void keepName();

 private:
  [[nodiscard]] std::size_t composedSize() const;
  [[nodiscard]] std::string composedName() const;
  [[nodiscard]] bool isComposed(std::string_view name) const;
  [[nodiscard]] PackedText pack(std::string_view name) const;

  platform::Ref<LinkType> m_type;
  platform::Ref<StoredNode> m_source;
  platform::Ref<StoredNode> m_target;
  Hook m_atSource;
  Hook m_atTarget;
};

}  // namespace brisel::store
