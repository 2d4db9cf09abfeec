#include "component/HostObject.h"

#include <utility>

#include "platform/MemberTableOf.h"

namespace brisel::component {

using platform::Member;
using platform::Value;

HostCall::HostCall(std::string member, std::vector<Value> arguments)
    : m_member(std::move(member)),
      m_arguments(platform::make<platform::ValueArray>(std::move(arguments))) {}

const platform::MemberTable& HostCall::memberTable() const {
  static const platform::MemberTable kTable = platform::MemberTableOf<HostCall>()
                                                  .property("member", &HostCall::member)
                                                  .property("arguments", &HostCall::arguments)
                                                  .build();
  return kTable;
}

void HostObject::Returns(std::string_view member, const Value& value) {
  m_returns.insert_or_assign(std::string(member), value);
}

bool HostObject::isOwn(std::string_view member) const {
  return memberTable().find(member, Member::Kind::method) ||
         memberTable().find(member, Member::Kind::property);
}

Value HostObject::invoke(std::string_view member, std::vector<Value>& arguments) {
  if (isOwn(member)) return Object::invoke(member, arguments);
  m_calls->add(platform::make<HostCall>(std::string(member), arguments));
  const auto told = m_returns.find(member);
  if (told != m_returns.end()) return told->second;
  const auto held = m_values.find(member);
  return held == m_values.end() ? Value() : held->second;
}

Value HostObject::get(std::string_view member) {
  if (isOwn(member)) return Object::get(member);
  const auto held = m_values.find(member);
  if (held != m_values.end()) return held->second;
  const auto told = m_returns.find(member);
  return told == m_returns.end() ? Value() : told->second;
}

void HostObject::set(std::string_view member, const Value& value) {
  if (isOwn(member)) return Object::set(member, value);
  m_values.insert_or_assign(std::string(member), value);
}

void HostObject::terminate() {
  // What is dropped may call back: it finds the object empty already.
  const Members values = std::exchange(m_values, {});
  const Members returns = std::exchange(m_returns, {});
  const auto calls = m_calls->copy();
  m_calls->Clear();
}

const platform::MemberTable& HostObject::memberTable() const {
  static const platform::MemberTable kTable = platform::MemberTableOf<HostObject>()
                                                  .property("Calls", &HostObject::Calls)
                                                  .method("Returns", &HostObject::Returns)
                                                  .build();
  return kTable;
}

}  // namespace brisel::component
