// Arithmetic that notices when a value no longer fits its stated width: `machine_fault` instead of a silent
// wrap.
//
//   chip.prescount = checked16(chip.prescount + 1);   // 32767 + 1 throws
//   add32(chip.cycles, 1);
//   chip.wdtlimit = round32(128 * 4000 * 4.5);        // halves go to the even neighbour
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "common/fault.h"

namespace estructura {

/// The value as a signed 16-bit number, -32768..32767; `machine_fault` outside.
constexpr std::int16_t checked16(int value) {
  if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max())
      [[unlikely]]
    throw_fault("16-bit overflow");
  return static_cast<std::int16_t>(value);
}

/// Adds to a signed 32-bit counter; `machine_fault`, with the counter unchanged, when the sum does not fit.
constexpr void add32(std::int32_t& counter, std::int32_t amount) {
  std::int32_t sum = 0;
  if (__builtin_add_overflow(counter, amount, &sum)) [[unlikely]]
    throw_fault("32-bit overflow");
  counter = sum;
}

/// The difference of two 32-bit values; `machine_fault` when it does not fit.
constexpr std::int32_t sub32(std::int32_t a, std::int32_t b) {
  std::int32_t difference = 0;
  if (__builtin_sub_overflow(a, b, &difference)) [[unlikely]]
    throw_fault("32-bit overflow");
  return difference;
}

/// Whether a real number, rounded, fits a signed 32-bit value.
inline bool fits32(double value) {
  return value >= -2147483648.5 && value < 2147483647.5;
}

/// The nearest whole number, halves to the even neighbour (the processor's default rounding mode);
/// `machine_fault` when it does not fit 32 bits or is no number.
inline std::int32_t round32(double value) {
  if (!fits32(value)) throw_fault("32-bit overflow");
  return static_cast<std::int32_t>(std::nearbyint(value));
}

}  // namespace estructura
