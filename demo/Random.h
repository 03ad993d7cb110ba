// A generator whose numbers are the same with every compiler, unlike the standard distributions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace veltramoor {

/// The SplitMix64 generator of Steele, Lea and Flood.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31U);
  }
  /// 0 to `bound` - 1; `bound` is at least 1.
  std::uint64_t below(std::uint64_t bound) { return (next() >> 11U) % bound; }
  bool oneIn(std::uint64_t n) { return below(n) == 0; }

  template <typename T>
  const T& pick(std::span<const T> from) {
    return from[static_cast<std::size_t>(below(from.size()))];
  }

 private:
  std::uint64_t state_;
};

}  // namespace veltramoor
