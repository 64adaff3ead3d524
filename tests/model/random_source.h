// Repeatable chance: the same numbers from the same seed on every machine and library.
//
//   random_source chance(20240501);
//   chance.below(6);          // 0..5
//   chance.one_in(16);        // true once in sixteen
#pragma once

#include <cstddef>
#include <cstdint>

namespace estructura::second_model {

class random_source {
 public:
  explicit random_source(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31);
  }

  /// 0..limit-1, of a limit that fits 32 bits.
  long below(long limit) {
    return static_cast<long>(((next() >> 32) * static_cast<std::uint64_t>(limit)) >> 32);
  }
  bool one_in(long times) { return below(times) == 0; }

  template <class Values>
  auto one_of(const Values& values) {
    return values[static_cast<std::size_t>(below(static_cast<long>(values.size())))];
  }

 private:
  std::uint64_t state_;
};

}  // namespace estructura::second_model
