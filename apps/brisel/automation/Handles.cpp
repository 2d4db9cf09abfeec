#include "automation/Handles.h"

#include <algorithm>

#include "platform/MemberTable.h"

namespace brisel::automation {

using platform::Member;
using platform::Object;
using platform::Ref;

std::int64_t Handles::of(const Ref<Object>& object) {
  const auto [at, isNew] = m_numbers.try_emplace(object.get(), m_last + 1);
  if (!isNew) return at->second;
  const std::int64_t handle = ++m_last;
  Entry& entry = m_entries[handle];
  entry.object = object;
  listen(handle, entry);
  return handle;
}

std::int64_t Handles::ofCreated(const Ref<Object>& object) {
  const std::int64_t handle = of(object);
  m_entries[handle].created = true;
  return handle;
}

void Handles::listen(std::int64_t handle, Entry& entry) {
  for (const Member& member : entry.object->memberTable().all()) {
    if (member.kind != Member::Kind::event) continue;
    const auto tell = [this, handle, name = member.name](const Arguments& arguments) {
      m_heard(handle, name, arguments);
    };
    entry.connections.push_back(member.listen(*entry.object, tell));
  }
}

Ref<Object> Handles::object(std::int64_t handle) const {
  const auto found = m_entries.find(handle);
  return found == m_entries.end() ? Ref<Object>() : found->second.object;
}

bool Handles::release(std::int64_t handle) {
  const auto found = m_entries.find(handle);
  if (found == m_entries.end()) return false;
  const Ref<Object> object = found->second.object;
  const bool created = found->second.created;
  // The events of the tear-down are still heard.
  const auto forget = [&] {
    m_numbers.erase(object.get());
    m_entries.erase(handle);
  };
  try {
    if (created) object->terminate();
  } catch (...) {
    forget();
    throw;
  }
  forget();
  return true;
}

void Handles::releaseAll() {
  std::vector<std::int64_t> numbers;
  for (const auto& [number, entry] : m_entries) numbers.push_back(number);
  std::sort(numbers.rbegin(), numbers.rend());
  for (const std::int64_t number : numbers) {
    try {
      release(number);
    } catch (...) {  // nobody is left to be told
    }
  }
}

}  // namespace brisel::automation
