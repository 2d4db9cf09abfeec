#pragma once

#include "store/LinkLists.h"
#include "store/Pool.h"
#include "store/PropertyBag.h"
#include "store/StoredElement.h"

namespace brisel::store {

class NodeType;

/// A node of the embedded store. After its removal it still answers for what it holds.
class StoredNode final : public StoredElement<platform::Node>, public Pooled<StoredNode> {
 public:
  StoredNode(NodeType& type, std::string_view name, const TextKey& identifier);
  ~StoredNode() override;

  [[nodiscard]] std::string identifier() const override { return m_identifier.str(); }
  void identifier(std::string_view identifier) override;
  [[nodiscard]] std::string name() const override { return m_name.str(); }
  void name(std::string_view name) override;
  [[nodiscard]] platform::Ref<platform::MetaType> Parent() const override;
  [[nodiscard]] platform::Ref<platform::Collection> outgoing(
      std::string_view linkType) const override;
  [[nodiscard]] platform::Ref<platform::Collection> Incoming(
      std::string_view linkType) const override;
  [[nodiscard]] platform::Value Prop_(std::string_view name) const override;
  [[nodiscard]] platform::Value GetProperty(std::string_view key) const override;
  void SetProperty(std::string_view key, const platform::Value& value) override;

  [[nodiscard]] NodeType& type() const { return *m_type; }
  [[nodiscard]] LinkLists& links() { return m_links; }
  [[nodiscard]] const LinkLists& links() const { return m_links; }

 private:
  void keepLinkNames();

  platform::Ref<NodeType> m_type;
  PropertyBag m_properties;
  LinkLists m_links;
};

}  // namespace brisel::store
