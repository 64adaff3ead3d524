// A program word taken apart.
//
//   decoded(0x1E8).code      // op::addwf
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/instructions.h"

namespace estructura {

/// Aligned, so that a whole program is indexed without a multiplication.
struct alignas(8) decoded_word {
  op code = op::stop;
  std::uint8_t file = 0;  ///< file address, bits 4..0
  std::uint16_t word = 0;
  std::uint16_t variant = 0;  ///< in a decoded program: the index of its variant (core/variant.h)

  /// 0 is W, anything else the file register.
  [[gnu::always_inline, nodiscard]] constexpr int destination() const { return word & 32; }
  [[gnu::always_inline, nodiscard]] int bit() const { return (word >> 5) & 7; }
  [[gnu::always_inline, nodiscard]] int literal() const { return word & 255; }
};

/// Memory may hold more than 12 bits where a person stored them; such words do nothing.
constexpr decoded_word decoded(int word) {
  const auto index = static_cast<std::size_t>(word);
  const op code = index < op_index.size() ? op_index[index] : op::nothing;
  return {code, static_cast<std::uint8_t>(word & 31), static_cast<std::uint16_t>(word), 0};
}

}  // namespace estructura
