#include "automation/Server.h"

#include <array>
#include <utility>

#include "automation/JsonText.h"
#include "automation/RpcError.h"
#include "platform/ComponentRegistry.h"
#include "platform/Error.h"
#include "platform/MemberTable.h"
#include "platform/ValueRecord.h"

namespace brisel::automation {

using platform::ErrorNumber;
using platform::Member;
using platform::Object;
using platform::Ref;
using platform::Value;
using simdjson::dom::element;

namespace {

const std::string kNoId = "null";

struct Request {
  std::string_view method;
  std::optional<element> params;
};

/// The request's id as it is echoed; nothing for a notification. An RpcError when it is of a kind
/// that an id must not have.
std::optional<std::string> idOf(const simdjson::dom::object& request) {
  element id;
  if (request["id"].get(id)) return {};
  std::string text;
  if (id.is_string()) {
    appendJsonString(text, std::string_view(id));
  } else if (id.is_number() || id.is_null()) {
    text = simdjson::minify(id);
  } else {
    throw RpcError(codes::kInvalidRequest, "Invalid request: id must be a string or a number");
  }
  return text;
}

/// Reads the parts of a request; `id` is set as soon as it is known. Raises an RpcError (invalid
/// request).
Request requestOf(const element& json, std::optional<std::string>& id) {
  const auto refuse = [](const char* reason) {
    return RpcError(codes::kInvalidRequest, std::string("Invalid request: ") + reason);
  };
  simdjson::dom::object fields;
  if (json.get(fields)) throw refuse("not an object");
  id = idOf(fields);
  std::string_view version;
  if (fields["jsonrpc"].get(version) || version != "2.0") throw refuse("jsonrpc must be \"2.0\"");
  Request request;
  if (fields["method"].get(request.method)) throw refuse("method must be a string");
  element params;
  if (!fields["params"].get(params)) request.params = params;
  return request;
}

std::string resultAnswer(std::string_view id, std::string_view result) {
  std::string answer = R"({"jsonrpc":"2.0","id":)";
  return answer.append(id).append(",\"result\":").append(result).append("}");
}

std::string errorAnswer(std::string_view id, const RpcError& error) {
  std::string answer = R"({"jsonrpc":"2.0","id":)";
  answer.append(id).append(",\"error\":{\"code\":").append(std::to_string(error.code()));
  answer.append(",\"message\":");
  appendJsonString(answer, error.what());
  if (error.number()) {
    answer.append(",\"data\":{\"number\":").append(std::to_string(*error.number())).append("}");
  }
  return answer.append("}}");
}

/// The answer for the exception being handled, which came out of a component.
RpcError failure() {
  try {
    throw;
  } catch (const RpcError& error) {
    return error;
  } catch (const platform::Error& error) {
    return {codes::kMemberFailed, error.what(), error.number()};
  } catch (const std::exception& error) {
    return {codes::kMemberFailed, error.what(), static_cast<int>(ErrorNumber::invalidCall)};
  } catch (...) {
    return {codes::kMemberFailed, "Unknown failure", static_cast<int>(ErrorNumber::invalidCall)};
  }
}

/// The same for a call of the member `name`; a call that was wrong in itself is told apart from one
/// that failed further down.
RpcError callFailure(std::string_view name) {
  try {
    throw;
  } catch (const platform::CallError& error) {
    const bool missing = error.number() == static_cast<int>(ErrorNumber::memberUnknown) ||
                         error.number() == static_cast<int>(ErrorNumber::componentUnknown);
    const bool isOwn = error.what() == "Unknown member: " + std::string(name) ||
                       error.what() == "Read-only property: " + std::string(name);
    if (missing && !isOwn) return failure();
    return {codes::kInvalidParams, error.what()};
  } catch (...) {
    return failure();
  }
}

/// Runs what a member does; what it throws becomes an RpcError.
template <class Body>
auto guarded(std::string_view member, Body&& body) {
  try {
    return body();
  } catch (...) {
    throw callFailure(member);
  }
}

/// How many of the arguments of a call come back; none when the call reads a property.
std::size_t outArguments(const Object& object, std::string_view name, bool hasArguments) {
  const auto& table = object.memberTable();
  const Member* method = table.find(name, Member::Kind::method);
  if (!method) return 0;
  const bool readsProperty = !hasArguments && table.find(name, Member::Kind::property);
  return readsProperty ? 0 : method->outArguments;
}

std::string_view kindText(Member::Kind kind) {
  switch (kind) {
    case Member::Kind::method:
      return "method";
    case Member::Kind::property:
      return "property";
    case Member::Kind::event:
      return "event";
  }
  return {};
}

}  // namespace

Server::Server(platform::ComponentRegistry& registry, Write write)
    : m_registry(registry),
      m_write(std::move(write)),
      m_handles(
          [this](std::int64_t handle, const std::string& name,
                 const Handles::Arguments& arguments) { tellEvent(handle, name, arguments); }),
      m_values(m_handles) {}

Server::~Server() {
  m_write = [](std::string_view) {};  // nobody listens to the tear-down
  m_handles.releaseAll();
}

void Server::handle(std::string_view line) {
  try {
    answerLine(line);
  } catch (const RpcError& error) {
    m_write(errorAnswer(kNoId, error));
  } catch (const std::exception& error) {  // memory ran out
    m_write(errorAnswer(kNoId, {codes::kMemberFailed, error.what()}));
  }
}

void Server::refuse(std::string_view reason) {
  m_write(errorAnswer(kNoId, {codes::kParse, "Parse error: " + std::string(reason)}));
}

void Server::answerLine(std::string_view line) {
  simdjson::dom::parser parser;
  element message;
  if (const auto error = parser.parse(line.data(), line.size()).get(message)) {
    throw RpcError(codes::kParse, std::string("Parse error: ") + simdjson::error_message(error));
  }
  simdjson::dom::array batch;
  const std::string answer = message.get(batch) ? answerOf(message) : answersOf(batch);
  if (!answer.empty()) m_write(answer);
}

std::string Server::answersOf(const simdjson::dom::array& batch) {
  if (batch.begin() == batch.end()) {
    throw RpcError(codes::kInvalidRequest, "Invalid request: an empty batch");
  }
  std::string answers;
  for (const element request : batch) {
    const std::string answer = answerOf(request);
    if (answer.empty()) continue;
    answers.append(answers.empty() ? "[" : ",").append(answer);
  }
  if (!answers.empty()) answers += ']';
  return answers;
}

/// Empty for a notification.
std::string Server::answerOf(const element& json) {
  std::optional<std::string> id;
  try {
    const Request request = requestOf(json, id);
    const std::string result =
        call(request.method, request.params ? Params(*request.params) : Params());
    return id ? resultAnswer(*id, result) : std::string();
  } catch (const RpcError& error) {
    // What is no request at all is answered even without an id: it may have been meant as one.
    if (!id && error.code() != codes::kInvalidRequest) return {};
    return errorAnswer(id.value_or(kNoId), error);
  }
}

std::string Server::call(std::string_view method, const Params& params) {
  using Method = std::string (Server::*)(const Params&);
  static constexpr std::array<std::pair<std::string_view, Method>, 6> kMethods = {{
      {"create", &Server::create},
      {"invoke", &Server::invoke},
      {"get", &Server::get},
      {"set", &Server::set},
      {"members", &Server::members},
      {"release", &Server::release},
  }};
  for (const auto& [name, function] : kMethods) {
    if (name == method) return (this->*function)(params);
  }
  throw RpcError(codes::kUnknownMethod, "Unknown method: " + std::string(method));
}

std::string Server::create(const Params& params) {
  const std::string_view progId = params.text("progId");
  if (!m_registry.contains(progId)) {
    throw RpcError(codes::kInvalidParams, "Unknown component: " + std::string(progId));
  }
  try {
    std::string result;
    Values::writeHandle(m_handles.ofCreated(m_registry.create(progId)), result);
    return result;
  } catch (...) {
    throw failure();
  }
}

std::string Server::invoke(const Params& params) {
  const Ref<Object> object = m_values.readObject(params.need("object"));
  const std::string_view member = params.text("member");
  std::vector<Value> arguments;
  if (const auto given = params.find("arguments"); given && !given->is_null()) {
    simdjson::dom::array items;
    if (given->get(items)) throw RpcError(codes::kInvalidParams, "arguments must be an array");
    for (const element item : items) arguments.push_back(m_values.read(item));
  }
  const std::size_t out = outArguments(*object, member, !arguments.empty());
  const Value value = guarded(member, [&] { return object->invoke(member, arguments); });

  std::string result;
  if (out == 0) {
    m_values.write(value, result);
    return result;
  }
  result = "{\"result\":";
  m_values.write(value, result);
  result += ",\"out\":";
  m_values.write({arguments.end() - static_cast<std::ptrdiff_t>(out), arguments.end()}, result);
  return result += '}';
}

std::string Server::get(const Params& params) {
  const Ref<Object> object = m_values.readObject(params.need("object"));
  const std::string_view member = params.text("member");
  const Value value = guarded(member, [&] { return object->get(member); });
  std::string result;
  m_values.write(value, result);
  return result;
}

std::string Server::set(const Params& params) {
  const Ref<Object> object = m_values.readObject(params.need("object"));
  const std::string_view member = params.text("member");
  const Value value = m_values.read(params.need("value"));
  guarded(member, [&] { object->set(member, value); });
  return "null";
}

std::string Server::members(const Params& params) {
  const Ref<Object> object = m_values.readObject(params.need("object"));
  std::string result = "[";
  for (const Member& member : object->memberTable().all()) {
    if (result.size() > 1) result += ',';
    result += "{\"name\":";
    appendJsonString(result, member.name);
    result.append(",\"kind\":\"").append(kindText(member.kind));
    result.append("\",\"arguments\":").append(std::to_string(member.arguments)).append("}");
  }
  return result += ']';
}

std::string Server::release(const Params& params) {
  const element given = params.need("object");
  const Ref<Object> object = m_values.readObject(given);
  guarded({}, [&] { m_handles.release(m_handles.of(object)); });
  return "null";
}

void Server::tellEvent(std::int64_t handle, const std::string& name,
                       const Handles::Arguments& arguments) {
  std::string message = R"({"jsonrpc":"2.0","method":"event","params":{"object":)";
  Values::writeHandle(handle, message);
  message += ",\"name\":";
  appendJsonString(message, name);
  message += ",\"arguments\":";
  m_values.write(arguments, message);
  m_write(message += "}}");
}

void Server::notify(std::string_view method, const Ref<platform::ValueRecord>& params) {
  std::string message = R"({"jsonrpc":"2.0","method":)";
  appendJsonString(message, method);
  message += ",\"params\":";
  m_values.write(Value(params), message);
  m_write(message += "}");
}

}  // namespace brisel::automation
