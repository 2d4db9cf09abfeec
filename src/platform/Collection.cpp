#include "platform/Collection.h"

#include <string>

#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::platform {

Ref<Collection> Collection::copy() const {
  auto list = make<ObjectList>();
  list->reserve(static_cast<std::size_t>(Count()));
  Cursor cursor;
  for (advance(cursor); cursor.element; advance(cursor)) list->add(cursor.element);
  return list;
}

Ref<ValueArray> Collection::ToArray() const {
  std::vector<Value> values;
  values.reserve(static_cast<std::size_t>(Count()));
  Cursor cursor;
  for (advance(cursor); cursor.element; advance(cursor)) {
    values.emplace_back(Ref<Object>(cursor.element));
  }
  return make<ValueArray>(std::move(values));
}

const MemberTable& Collection::memberTable() const {
  static const MemberTable kTable = MemberTableOf<Collection>()
                                        .property("Count", &Collection::Count)
                                        .method("Item", &Collection::Item)
                                        .method("Remove", &Collection::Remove)
                                        .optional(1)
                                        .method("Clear", &Collection::Clear)
                                        .method("ToArray", &Collection::ToArray)
                                        .build();
  return kTable;
}

std::int64_t ObjectList::Count() const { return static_cast<std::int64_t>(m_elements.size()); }

Ref<Object> ObjectList::Item(std::int64_t index) const {
  if (index < 1 || index > Count()) {
    throw Error(ErrorNumber::subscript, "No item " + std::to_string(index) +
                                            " in a collection of " + std::to_string(Count()));
  }
  return m_elements[static_cast<std::size_t>(index - 1)];
}

void ObjectList::Remove(std::string_view identifier, bool) {
  const auto isIt = [&](const Ref<Object>& element) {
    for (const std::string_view name : {"identifier", "key"}) {
      if (!element->memberTable().find(name, Member::Kind::property)) continue;
      return element->get(name).text() == identifier;
    }
    return false;
  };
  std::erase_if(m_elements, isIt);
}

void ObjectList::Clear() { m_elements.clear(); }

void ObjectList::advance(Cursor& cursor) const {
  const std::size_t next = cursor.element ? cursor.position + 1 : 0;
  cursor.element = next < m_elements.size() ? m_elements[next].get() : nullptr;
  cursor.position = next;
}

}  // namespace brisel::platform
