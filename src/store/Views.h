#pragma once

#include <string>
#include <vector>

#include "platform/Repository.h"
#include "store/LinkLists.h"
#include "store/StoredType.h"

/// The live collections that the store hands out. Each holds what it looks at.
namespace brisel::store {

/// An Error (subscript) for a position outside of 1 to `count`.
void requireItem(std::int64_t index, std::int64_t count);

/// All instances of a type.
template <class Type, class T>
class ExtensionView final : public platform::Collection {
 public:
  explicit ExtensionView(Type& type) : m_type(&type) {}

  [[nodiscard]] std::int64_t Count() const override;
  [[nodiscard]] platform::Ref<platform::Object> Item(std::int64_t index) const override;
  void Remove(std::string_view identifier, bool flag) override;
  void Clear() override;
  void advance(Cursor& cursor) const override;

 private:
  platform::Ref<Type> m_type;
};

/// The links of one type that leave or enter one node; the type need not be known yet.
class LinkView final : public platform::Collection, public Pooled<LinkView> {
 public:
  LinkView(const StoredNode& node, std::string_view linkType, Direction direction);

  [[nodiscard]] std::int64_t Count() const override;
  [[nodiscard]] platform::Ref<platform::Object> Item(std::int64_t index) const override;
  void Remove(std::string_view identifier, bool flag) override;
  void Clear() override;
  void advance(Cursor& cursor) const override;

 private:
  /// Nothing while the type is not known.
  [[nodiscard]] LinkType* type() const;
  [[nodiscard]] const LinkList* list() const;

  platform::Ref<const StoredNode> m_node;
  mutable platform::Ref<LinkType> m_type;
  std::string m_typeName;  ///< only while the type is not known
  Direction m_direction;
};

/// What an owner lists in a vector of references: types, property definitions. Its elements cannot
/// be removed.
template <class T>
class FixedView final : public platform::Collection {
 public:
  FixedView(const platform::Object& owner, const std::vector<platform::Ref<T>>& elements)
      : m_owner(&owner), m_elements(elements) {}

  [[nodiscard]] std::int64_t Count() const override {
    return static_cast<std::int64_t>(m_elements.size());
  }
  [[nodiscard]] platform::Ref<platform::Object> Item(std::int64_t index) const override {
    requireItem(index, Count());
    return m_elements[static_cast<std::size_t>(index - 1)];
  }
  void Remove(std::string_view, bool) override { refuse(); }
  void Clear() override { refuse(); }
  void advance(Cursor& cursor) const override {
    const std::size_t at = cursor.element ? cursor.position + 1 : 0;
    cursor.element = at < m_elements.size() ? m_elements[at].get() : nullptr;
    cursor.position = at;
  }

 private:
  [[noreturn]] static void refuse();

  platform::Ref<const platform::Object> m_owner;
  const std::vector<platform::Ref<T>>& m_elements;
};

}  // namespace brisel::store
