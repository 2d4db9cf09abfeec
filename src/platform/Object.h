#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "platform/Event.h"
#include "platform/Value.h"

namespace brisel::platform {

class MemberTable;

/// Hears an event by name: its arguments as values.
using EventListener = std::function<void(const std::vector<Value>&)>;

/// Everything that answers to its name: components, their parts, nodes and links of the store.
/// Lives as long as a Ref holds it; belongs to the thread of the user interface.
class Object {
 public:
  Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object() = default;

  /// The members that every instance answers to, by their exact names.
  [[nodiscard]] virtual const MemberTable& memberTable() const;

  /// Calls a method. Arguments left away at the end are empty; out arguments are written back into
  /// `arguments`, which grows to hold them. A property is read when there are no arguments.
  /// Raises a CallError for an unknown member or arguments of the wrong number or kind.
  virtual Value invoke(std::string_view member, std::vector<Value>& arguments);
  /// Reads a property, or calls a method without arguments; a CallError when there is none of that
  /// name.
  virtual Value get(std::string_view member);
  /// Writes a property; a CallError when there is none of that name or it is read-only.
  virtual void set(std::string_view member, const Value& value);
  /// Connects to an event by name; a CallError when there is none.
  [[nodiscard]] virtual Connection listen(std::string_view event, EventListener listener);

  /// Ends a component: whoever made it calls this before dropping it, whatever other references
  /// remain. Does nothing a second time, and nothing where there is nothing to end.
  virtual void terminate() {}

  /// `invoke` for callers that take nothing out.
  Value call(std::string_view member, std::vector<Value> arguments = {});

 private:
  friend void retain(const Object* object) noexcept;
  friend void release(const Object* object) noexcept;

  mutable std::uint32_t m_references = 0;
};

inline void retain(const Object* object) noexcept { ++object->m_references; }
inline void release(const Object* object) noexcept {
  if (--object->m_references == 0) delete object;
}

}  // namespace brisel::platform
