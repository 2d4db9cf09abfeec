#pragma once

#include <cstdint>
#include <vector>

#include "platform/Object.h"
#include "platform/ValueArray.h"

namespace brisel::platform {

/// An ordered list of plain values (the keys of a hash table, the columns of a row) that answers
/// like a collection: `Count`, `Item` from 1, `ToArray`.
class ValueList : public Object {
 public:
  ValueList() = default;
  explicit ValueList(std::vector<Value> values) : m_values(std::move(values)) {}

  [[nodiscard]] std::int64_t Count() const { return static_cast<std::int64_t>(m_values.size()); }
  /// An Error (subscript) outside of the list.
  [[nodiscard]] Value Item(std::int64_t index) const;
  [[nodiscard]] const std::vector<Value>& values() const { return m_values; }

  [[nodiscard]] const MemberTable& memberTable() const override;

 private:
  [[nodiscard]] Ref<ValueArray> toArray() const { return make<ValueArray>(m_values); }

  std::vector<Value> m_values;
};

}  // namespace brisel::platform
