#include "platform/MemberTable.h"

#include <algorithm>

#include "platform/Error.h"

namespace brisel::platform {

Value Member::callChecked(Object& object, std::vector<Value>& given) const {
  if (given.size() < required || given.size() > arguments) {
    const std::string wanted = required == arguments
                                   ? std::to_string(arguments)
                                   : std::to_string(required) + " to " + std::to_string(arguments);
    throw CallError(ErrorNumber::argumentCount, "Wrong number of arguments: " + name + " takes " +
                                                    wanted + ", " + std::to_string(given.size()) +
                                                    " given");
  }
  given.resize(arguments);
  return call(object, given);
}

void MemberTable::add(Member member) {
  const auto same = std::find_if(m_members.begin(), m_members.end(), [&](const Member& other) {
    return other.name == member.name && other.kind == member.kind;
  });
  if (same == m_members.end()) {
    m_members.push_back(std::move(member));
  } else {
    *same = std::move(member);
  }
}

const Member* MemberTable::find(std::string_view name, Member::Kind kind) const {
  const auto found = std::find_if(m_members.begin(), m_members.end(), [&](const Member& member) {
    return member.kind == kind && member.name == name;
  });
  return found == m_members.end() ? nullptr : &*found;
}

}  // namespace brisel::platform
