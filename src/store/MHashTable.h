#pragma once

#include <list>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/Object.h"
#include "platform/ValueList.h"

namespace brisel::store {

/// "BriselDataStructures.MHashTable": values by key. Keys are compared exactly and walked in the
/// order in which they were added.
class MHashTable final : public platform::Object {
 public:
  MHashTable() = default;
  ~MHashTable() override;

  /// An Error (457) when the key is there.
  void Add(std::string_view key, const platform::Value& value);
  /// Nothing happens when the key is not there.
  void Remove(std::string_view key);
  [[nodiscard]] bool ContainsKey(std::string_view key) const;
  /// The keys as they are now.
  [[nodiscard]] platform::Ref<platform::ValueList> Keys() const;
  /// An Error (notFound) when the key is not there.
  [[nodiscard]] platform::Value Item(std::string_view key) const;
  [[nodiscard]] std::int64_t Count() const;
  void Clear();

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  struct Entry {
    std::string key;
    platform::Value value;
  };
  std::list<Entry> m_entries;
  std::unordered_map<std::string_view, std::list<Entry>::iterator> m_byKey;
};

}  // namespace brisel::store
