#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Object.h"

namespace brisel::store {

/// "BriselUtility.UUIDGenerator": fresh identifiers, random (version 4) UUIDs in lower case. Good
/// enough never to meet again, not meant to be unguessable.
class UUIDGenerator final : public platform::Object {
 public:
  UUIDGenerator();

  /// Accepts the name of whoever draws identifiers; it has no influence on them.
  void Init(std::string_view name);
  std::string GetUUID();

  /// The same seed gives the same identifiers.
  void seed(std::uint64_t seed);

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::uint64_t next();

  std::array<std::uint64_t, 4> m_state{};
};

}  // namespace brisel::store
