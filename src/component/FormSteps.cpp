#include "component/FormSteps.h"

#include <charconv>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/Error.h"
#include "platform/MemberTable.h"

namespace brisel::component {

using platform::CallError;
using platform::Error;
using platform::ErrorNumber;
using platform::Member;
using platform::Object;
using platform::Ref;
using platform::Value;
using platform::ValueArray;

namespace {

constexpr std::string_view kCancel = "Cancel";

/// The values of one step, or nothing when it is not of the right shape.
const std::vector<Value>* partsOf(const Value& step) {
  if (!step.isObject()) return nullptr;
  const auto* array = dynamic_cast<const ValueArray*>(step.object().get());
  if (!array || array->values().size() < 2) return nullptr;
  const auto& parts = array->values();
  return parts[0].isString() && parts[1].isString() ? &parts : nullptr;
}

[[noreturn]] void noControl(std::string_view name) {
  throw Error(ErrorNumber::notFound, "No control " + std::string(name));
}

/// The control of one part of a path: "Name" or "Name(2)".
Ref<Object> childOf(Object& parent, std::string_view part) {
  const std::size_t open = part.find('(');
  Ref<Object> child = parent.get(part.substr(0, open)).object();
  if (!child) noControl(part);
  if (open == std::string_view::npos) return child;
  std::int64_t index = 0;
  const char* const begin = part.data() + open + 1;
  const auto [end, error] = std::from_chars(begin, part.data() + part.size(), index);
  if (error != std::errc() || std::string_view(end, part.data() + part.size()) != ")") {
    noControl(part);
  }
  child = child->call("Item", {index}).object();
  if (!child) noControl(part);
  return child;
}

Ref<Object> controlOf(Object& form, std::string_view path) {
  Ref<Object> control(&form);
  while (true) {
    const std::size_t dot = path.find('.');
    control = childOf(*control, path.substr(0, dot));
    if (dot == std::string_view::npos) return control;
    path.remove_prefix(dot + 1);
  }
}

bool isOpen(Object& form) { return form.get("Visible").isTrue(); }

void cancel(Object& form) {
  if (form.memberTable().find(kCancel, Member::Kind::property)) {
    form.get(kCancel).object()->call("Click");
  }
  if (isOpen(form)) form.set("Visible", false);
}

}  // namespace

void checkFormSteps(const ValueArray& steps) {
  for (std::size_t i = 0; i < steps.values().size(); ++i) {
    if (partsOf(steps.values()[i])) continue;
    throw CallError(ErrorNumber::typeMismatch, "Wrong kind of step " + std::to_string(i + 1) +
                                                   ": [control, member, argument...] expected");
  }
}

FormResult runFormSteps(Object& form, const ValueArray* steps) {
  FormResult result{std::string(kCancel), {}};
  try {
    for (const Value& step : steps ? steps->values() : std::vector<Value>()) {
      const std::vector<Value>& parts = *partsOf(step);
      const Ref<Object> control = controlOf(form, parts[0].string());
      std::vector<Value> arguments(parts.begin() + 2, parts.end());
      control->invoke(parts[1].string(), arguments);
      if (isOpen(form)) continue;
      result.answer = parts[0].string();
      return result;
    }
  } catch (const std::exception& error) {
    result.error = error.what();
  }
  if (isOpen(form)) cancel(form);
  return result;
}

}  // namespace brisel::component
