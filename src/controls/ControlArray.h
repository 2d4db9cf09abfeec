#pragma once

#include <cstdint>
#include <vector>

#include "platform/Object.h"

namespace brisel::controls {

/// Controls of one name, told apart by an index from 0. Fixed once it is made.
class ControlArray : public platform::Object {
 public:
  explicit ControlArray(std::vector<platform::Ref<platform::Object>> items)
      : m_items(std::move(items)) {}

  [[nodiscard]] std::int64_t Count() const { return static_cast<std::int64_t>(m_items.size()); }
  /// From 0; an Error (subscript) outside of the array.
  [[nodiscard]] platform::Ref<platform::Object> Item(std::int64_t index) const;
  /// The same as the C++ type that the item is known to have.
  template <class T>
  [[nodiscard]] T& at(std::int64_t index) const {
    return dynamic_cast<T&>(*Item(index));
  }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::vector<platform::Ref<platform::Object>> m_items;
};

}  // namespace brisel::controls
