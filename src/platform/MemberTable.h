#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Object.h"

namespace brisel::platform {

/// One member of a component: how it is called, read, written or listened to by name.
struct Member {
  enum class Kind { method, property, event };

  std::string name;
  Kind kind = Kind::method;
  std::size_t arguments = 0;                                ///< all of them, out arguments included
  std::size_t required = 0;                                 ///< those that may not be left away
  std::size_t outArguments = 0;                             ///< the last ones
  std::function<Value(Object&, std::vector<Value>&)> call;  ///< method, or the property's getter
  std::function<void(Object&, const Value&)> assign;        ///< unset for a read-only property
  std::function<Connection(Object&, EventListener)> listen;

  /// `call` after the number of arguments was checked; what was left away is filled with empty.
  Value callChecked(Object& object, std::vector<Value>& arguments) const;
};

/// The members of one class under their exact names, those of its base class included.
/// Built once with MemberTableOf (MemberTableOf.h), then constant.
class MemberTable {
 public:
  /// Adds a member; one of the same name and kind (from a base class) is replaced.
  void add(Member member);
  [[nodiscard]] const Member* find(std::string_view name, Member::Kind kind) const;
  /// In the order of declaration.
  [[nodiscard]] const std::vector<Member>& all() const { return m_members; }

 private:
  std::vector<Member> m_members;
};

}  // namespace brisel::platform
