#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <simdjson.h>

#include "automation/RpcError.h"

namespace brisel::automation {

/// The parameters of a request: a JSON object, or nothing at all. Each reader raises an RpcError
/// (invalid parameters) that names what is missing or of the wrong kind.
class Params {
 public:
  using Json = simdjson::dom::element;

  Params() = default;
  explicit Params(const Json& json) {
    simdjson::dom::object fields;
    if (json.get(fields)) throw RpcError(codes::kInvalidParams, "params must be an object");
    m_fields = fields;
  }

  /// Nothing when it is absent.
  [[nodiscard]] std::optional<Json> find(std::string_view name) const {
    Json json;
    if (!m_fields || (*m_fields)[name].get(json)) return {};
    return json;
  }
  [[nodiscard]] Json need(std::string_view name) const {
    if (auto json = find(name)) return *json;
    throw RpcError(codes::kInvalidParams, "Missing parameter: " + std::string(name));
  }
  /// Lives as long as the document that was parsed.
  [[nodiscard]] std::string_view text(std::string_view name) const {
    std::string_view text;
    if (need(name).get(text)) {
      throw RpcError(codes::kInvalidParams, "Parameter " + std::string(name) + " must be a string");
    }
    return text;
  }

 private:
  std::optional<simdjson::dom::object> m_fields;
};

}  // namespace brisel::automation
