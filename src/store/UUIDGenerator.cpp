#include "store/UUIDGenerator.h"

#include <bit>
#include <cstring>
#include <random>

#include "platform/MemberTableOf.h"
#include "store/PackedText.h"

namespace brisel::store {

UUIDGenerator::UUIDGenerator() {
  std::random_device device;
  for (std::uint64_t& word : m_state) word = std::uint64_t{device()} << 32 | device();
  m_state[0] |= 1U;  // a state of zeros would stay one
}

void UUIDGenerator::Init(std::string_view) {}

void UUIDGenerator::seed(std::uint64_t seed) {
  // SplitMix64 (Steele, Lea, Flood 2014) spreads the seed over the state.
  for (std::uint64_t& word : m_state) {
    seed += 0x9E3779B97F4A7C15U;
    word = (seed ^ (seed >> 30)) * 0xBF58476D1CE4E5B9U;
    word = (word ^ (word >> 27)) * 0x94D049BB133111EBU;
    word ^= word >> 31;
  }
}

/// xoshiro256** (Blackman, Vigna 2018).
std::uint64_t UUIDGenerator::next() {
  const std::uint64_t result = std::rotl(m_state[1] * 5, 7) * 9;
  const std::uint64_t shifted = m_state[1] << 17;
  m_state[2] ^= m_state[0];
  m_state[3] ^= m_state[1];
  m_state[1] ^= m_state[2];
  m_state[0] ^= m_state[3];
  m_state[2] ^= shifted;
  m_state[3] = std::rotl(m_state[3], 45);
  return result;
}

std::string UUIDGenerator::GetUUID() {
  const std::array<std::uint64_t, 2> words = {next(), next()};
  std::array<char, 16> bytes{};
  std::memcpy(bytes.data(), words.data(), bytes.size());
  bytes[6] = static_cast<char>((bytes[6] & 0x0F) | 0x40);                     // version 4
  bytes[8] = static_cast<char>((bytes[8] & 0x3F) | static_cast<char>(0x80));  // RFC 9562 variant
  std::string text(36, '\0');
  unpackUuid(bytes.data(), text.data());
  return text;
}

const platform::MemberTable& UUIDGenerator::memberTable() const {
  static const platform::MemberTable kTable = platform::MemberTableOf<UUIDGenerator>()
                                                  .method("Init", &UUIDGenerator::Init)
                                                  .method("GetUUID", &UUIDGenerator::GetUUID)
                                                  .build();
  return kTable;
}

}  // namespace brisel::store
