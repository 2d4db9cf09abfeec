#include "platform/Object.h"

#include <string>

#include "platform/Error.h"
#include "platform/MemberTable.h"

namespace brisel::platform {

namespace {

const Member& memberOf(const Object& object, std::string_view name, Member::Kind kind) {
  if (const Member* member = object.memberTable().find(name, kind)) return *member;
  throw CallError(ErrorNumber::memberUnknown, "Unknown member: " + std::string(name));
}

}  // namespace

const MemberTable& Object::memberTable() const {
  static const MemberTable kNone;
  return kNone;
}

Value Object::invoke(std::string_view member, std::vector<Value>& arguments) {
  const MemberTable& table = memberTable();
  const Member* method = table.find(member, Member::Kind::method);
  const Member* property = table.find(member, Member::Kind::property);
  if (property && (!method || arguments.empty())) {
    if (!arguments.empty()) {
      throw CallError(ErrorNumber::argumentCount,
                      "Wrong number of arguments: " + std::string(member) + " takes none");
    }
    return property->call(*this, arguments);
  }
  return memberOf(*this, member, Member::Kind::method).callChecked(*this, arguments);
}

Value Object::get(std::string_view member) {
  std::vector<Value> none;
  const Member* method = memberTable().find(member, Member::Kind::method);
  if (method && method->arguments == 0 && !memberTable().find(member, Member::Kind::property)) {
    return method->call(*this, none);
  }
  return memberOf(*this, member, Member::Kind::property).call(*this, none);
}

void Object::set(std::string_view member, const Value& value) {
  const Member& property = memberOf(*this, member, Member::Kind::property);
  if (!property.assign) {
    throw CallError(ErrorNumber::memberUnknown, "Read-only property: " + std::string(member));
  }
  property.assign(*this, value);
}

Connection Object::listen(std::string_view event, EventListener listener) {
  return memberOf(*this, event, Member::Kind::event).listen(*this, std::move(listener));
}

Value Object::call(std::string_view member, std::vector<Value> arguments) {
  return invoke(member, arguments);
}

}  // namespace brisel::platform
