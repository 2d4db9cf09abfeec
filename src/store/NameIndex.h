#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

namespace brisel::store {

/// Finds the first of the elements that share a name, by their order in the extension. Many may:
/// finding costs O(1), a change the logarithm of how many share the name. Owns no element.
template <class T>
class NameIndex {
 public:
  [[nodiscard]] T* first(std::string_view name) const {
    const auto found = m_bearers.find(name);
    return found == m_bearers.end() ? nullptr : found->second.first;
  }

  void insert(std::string_view name, T& element) {
    auto found = m_bearers.find(name);
    if (found == m_bearers.end()) found = m_bearers.emplace(std::string(name), Bearers{}).first;
    Bearers& bearers = found->second;
    if (!bearers.first) {
      bearers.first = &element;
      return;
    }
    T* later = &element;
    if (element.slot() < bearers.first->slot()) std::swap(later, bearers.first);
    if (!bearers.others) bearers.others = std::make_unique<Ordered>();
    bearers.others->insert(bearers.others->end(), later);
  }

  /// The element must be in the index under the name.
  void erase(std::string_view name, T& element) {
    const auto found = m_bearers.find(name);
    Bearers& bearers = found->second;
    if (bearers.first != &element) {
      bearers.others->erase(&element);
    } else if (bearers.others && !bearers.others->empty()) {
      bearers.first = *bearers.others->begin();
      bearers.others->erase(bearers.others->begin());
    } else {
      m_bearers.erase(found);
    }
  }

 private:
  struct BySlot {
    bool operator()(const T* a, const T* b) const { return a->slot() < b->slot(); }
  };
  using Ordered = std::set<T*, BySlot>;
  struct Bearers {
    T* first = nullptr;
    std::unique_ptr<Ordered> others;
  };
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>()(text);
    }
  };

  std::unordered_map<std::string, Bearers, Hash, std::equal_to<>> m_bearers;
};

}  // namespace brisel::store
