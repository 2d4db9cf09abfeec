#include "automation/Values.h"

#include "automation/JsonText.h"
#include "automation/RpcError.h"
#include "platform/ValueArray.h"
#include "platform/ValueRecord.h"

namespace brisel::automation {

using platform::Object;
using platform::Ref;
using platform::Value;
using platform::ValueArray;
using platform::ValueRecord;
using simdjson::dom::element;
using simdjson::dom::element_type;

namespace {

[[noreturn]] void noHandle(const element& json) {
  throw RpcError(codes::kInvalidParams, "Not a handle: " + simdjson::minify(json).substr(0, 80));
}

/// The handle in {"ref": 7}, nothing else beside it.
std::int64_t handleOf(const element& json) {
  const simdjson::dom::object fields = json;
  std::int64_t handle = 0;
  if (fields.size() != 1 || fields["ref"].get(handle)) noHandle(json);
  return handle;
}

}  // namespace

Ref<Object> Values::objectOf(std::int64_t handle) const {
  if (auto object = m_handles.object(handle)) return object;
  throw RpcError(codes::kInvalidParams, "Unknown handle: " + std::to_string(handle));
}

Ref<Object> Values::readObject(const element& json) const {
  std::int64_t handle = 0;
  if (json.is_object()) {
    handle = handleOf(json);
  } else if (json.get(handle)) {
    noHandle(json);
  }
  return objectOf(handle);
}

Value Values::read(const element& json) const {
  switch (json.type()) {
    case element_type::BOOL:
      return bool{json};
    case element_type::INT64:
      return std::int64_t{json};
    case element_type::UINT64:  // beyond what an integer holds
    case element_type::DOUBLE:
      return double{json};
    case element_type::STRING:
      return std::string_view(json);
    case element_type::OBJECT:
      return readObject(json);
    case element_type::ARRAY:
      break;
    case element_type::NULL_VALUE:
      return {};
  }
  std::vector<Value> values;
  for (const element item : simdjson::dom::array(json)) values.push_back(read(item));
  return Value(platform::make<ValueArray>(std::move(values)));
}

void Values::writeHandle(std::int64_t handle, std::string& out) {
  out += "{\"ref\":";
  out += std::to_string(handle);
  out += '}';
}

void Values::write(const std::vector<Value>& values, std::string& out) {
  out += '[';
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (i > 0) out += ',';
    write(values[i], out);
  }
  out += ']';
}

void Values::writeObject(const Ref<Object>& object, std::string& out) {
  if (const auto array = platform::as<ValueArray>(object)) {
    write(array->values(), out);
    return;
  }
  const auto record = platform::as<ValueRecord>(object);
  if (!record) {
    writeHandle(m_handles.of(object), out);
    return;
  }
  out += '{';
  for (const auto& [name, value] : record->fields()) {
    if (out.back() != '{') out += ',';
    appendJsonString(out, name);
    out += ':';
    write(value, out);
  }
  out += '}';
}

void Values::write(const Value& value, std::string& out) {
  if (value.isEmpty()) {
    out += "null";
  } else if (value.isBoolean()) {
    out += value.boolean() ? "true" : "false";
  } else if (value.isInteger()) {
    out += std::to_string(value.integer());
  } else if (value.isDouble()) {
    appendJsonNumber(out, value.number());
  } else if (value.isString()) {
    appendJsonString(out, value.string());
  } else {
    writeObject(value.object(), out);
  }
}

}  // namespace brisel::automation
