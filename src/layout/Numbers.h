#pragma once

#include <cstdint>

namespace brisel::layout {

/// Random numbers that are the same on every machine (Steele, Lea, Flood: Fast splittable
/// pseudorandom number generators, 2014).
class Numbers {
 public:
  explicit Numbers(std::uint64_t seed) : m_state(seed) {}

  std::uint64_t next() {
    std::uint64_t z = m_state += 0x9e3779b97f4a7c15;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
    z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
    return z ^ (z >> 31);
  }
  /// From 0 to below "end", which is above 0.
  int below(int end) {
    return static_cast<int>(((next() >> 32) * static_cast<std::uint64_t>(end)) >> 32);
  }
  /// From 0 to below 1.
  double part() { return static_cast<double>(next() >> 11) * 0x1.0p-53; }

 private:
  std::uint64_t m_state;
};

}  // namespace brisel::layout
