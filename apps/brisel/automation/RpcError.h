#pragma once

#include <optional>
#include <stdexcept>
#include <string>

namespace brisel::automation {

/// The error codes of an answer.
namespace codes {
inline constexpr int kParse = -32700;
inline constexpr int kInvalidRequest = -32600;
inline constexpr int kUnknownMethod = -32601;
inline constexpr int kInvalidParams = -32602;
inline constexpr int kMemberFailed = -32000;
}  // namespace codes

/// What an answer says instead of a result.
class RpcError : public std::runtime_error {
 public:
  RpcError(int code, const std::string& message, std::optional<int> number = {})
      : std::runtime_error(message), m_code(code), m_number(number) {}

  [[nodiscard]] int code() const { return m_code; }
  /// The number of the error that a member raised.
  [[nodiscard]] const std::optional<int>& number() const { return m_number; }

 private:
  int m_code;
  std::optional<int> m_number;
};

}  // namespace brisel::automation
