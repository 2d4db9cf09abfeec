#include "store/MHashTable.h"

#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::store {

using platform::Error;
using platform::ErrorNumber;
using platform::Value;

MHashTable::~MHashTable() = default;

void MHashTable::Add(std::string_view key, const Value& value) {
  if (ContainsKey(key)) {
    throw Error(ErrorNumber::duplicateKey,
                "The hash table has the key '" + std::string(key) + "' already");
  }
  const auto added = m_entries.insert(m_entries.end(), {std::string(key), value});
  m_byKey.emplace(added->key, added);
}

void MHashTable::Remove(std::string_view key) {
  const auto found = m_byKey.find(key);
  if (found == m_byKey.end()) return;
  const auto entry = found->second;
  m_byKey.erase(found);
  m_entries.erase(entry);
}

bool MHashTable::ContainsKey(std::string_view key) const { return m_byKey.contains(key); }

platform::Ref<platform::ValueList> MHashTable::Keys() const {
  std::vector<Value> keys;
  keys.reserve(m_entries.size());
  for (const Entry& entry : m_entries) keys.emplace_back(entry.key);
  return platform::make<platform::ValueList>(std::move(keys));
}

Value MHashTable::Item(std::string_view key) const {
  const auto found = m_byKey.find(key);
  if (found != m_byKey.end()) return found->second->value;
  throw Error(ErrorNumber::notFound, "The hash table has no key '" + std::string(key) + "'");
}

std::int64_t MHashTable::Count() const { return static_cast<std::int64_t>(m_entries.size()); }

void MHashTable::Clear() {
  m_byKey.clear();
  m_entries.clear();
}

const platform::MemberTable& MHashTable::memberTable() const {
  static const platform::MemberTable kTable = platform::MemberTableOf<MHashTable>()
                                                  .method("Add", &MHashTable::Add)
                                                  .method("Remove", &MHashTable::Remove)
                                                  .method("ContainsKey", &MHashTable::ContainsKey)
                                                  .property("Keys", &MHashTable::Keys)
                                                  .method("Item", &MHashTable::Item)
                                                  .property("Count", &MHashTable::Count)
                                                  .method("Clear", &MHashTable::Clear)
                                                  .build();
  return kTable;
}

}  // namespace brisel::store
