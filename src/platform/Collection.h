#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <vector>

#include "platform/Object.h"
#include "platform/ValueArray.h"

namespace brisel::platform {

/// An ordered collection of objects. Most are live: walk a copy (ObjectList) while removing.
class Collection : public Object {
 public:
  [[nodiscard]] virtual std::int64_t Count() const = 0;
  /// The element at the position, from 1; an Error (subscript) outside of it.
  [[nodiscard]] virtual Ref<Object> Item(std::int64_t index) const = 0;
  /// Removes the element with the identifier; nothing happens when there is none. The flag is
  /// accepted for the sake of callers by name and has no effect.
  virtual void Remove(std::string_view identifier, bool flag) = 0;
  virtual void Clear() = 0;

  /// Where a walk stands; made by the collection, opaque to others.
  struct Cursor {
    Object* element = nullptr;  ///< nothing before the first step and behind the last
    std::size_t position = 0;
  };
  /// Steps to the first or the next element; `element` becomes nothing at the end. The element at
  /// the cursor must still be in the collection.
  virtual void advance(Cursor& cursor) const = 0;

  /// All elements, by value to a caller by name.
  [[nodiscard]] Ref<ValueArray> ToArray() const;

  /// All elements as a collection of its own, element by element shared.
  [[nodiscard]] Ref<Collection> copy() const;

  [[nodiscard]] const MemberTable& memberTable() const override;
};

/// A collection of its own: what CopyList and the queries of the canvas give.
class ObjectList : public Collection {
 public:
  ObjectList() = default;
  explicit ObjectList(std::vector<Ref<Object>> elements) : m_elements(std::move(elements)) {}

  [[nodiscard]] std::int64_t Count() const override;
  [[nodiscard]] Ref<Object> Item(std::int64_t index) const override;
  /// Elements are found by their property "identifier" or, failing that, "key".
  void Remove(std::string_view identifier, bool flag) override;
  void Clear() override;
  void advance(Cursor& cursor) const override;

  void add(Ref<Object> element) { m_elements.push_back(std::move(element)); }
  void reserve(std::size_t count) { m_elements.reserve(count); }

 private:
  std::vector<Ref<Object>> m_elements;
};

/// `for (Node& node : each<Node>(collection))`: the elements as a C++ type that all of them have.
/// Holds the collection; the element of the current step must stay in it until the next.
template <class T>
class Each {
 public:
  explicit Each(Ref<Collection> collection) : m_collection(std::move(collection)) {}

  class Iterator {
   public:
    explicit Iterator(const Collection* collection) : m_collection(collection) { ++*this; }
    T& operator*() const { return static_cast<T&>(*m_cursor.element); }
    Iterator& operator++() {
      m_collection->advance(m_cursor);
      return *this;
    }
    bool operator==(std::default_sentinel_t) const { return m_cursor.element == nullptr; }

   private:
    const Collection* m_collection;
    Collection::Cursor m_cursor;
  };

  [[nodiscard]] Iterator begin() const { return Iterator(m_collection.get()); }
  [[nodiscard]] std::default_sentinel_t end() const { return {}; }

 private:
  Ref<Collection> m_collection;
};

template <class T>
[[nodiscard]] Each<T> each(Ref<Collection> collection) {
  return Each<T>(std::move(collection));
}

}  // namespace brisel::platform
