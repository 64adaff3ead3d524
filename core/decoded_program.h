// Program memory decoded ahead of a run: what each address does, and where a run has to stop.
//
//   decoded_program decoded;
//   decoded.follow(chip);            // cheap while neither program nor breakpoints have changed
//   decoded[chip.cpu.pc].code        // op::goto_, or op::stop in front of a breakpoint
//
// Working memory of whoever runs a machine, and no part of it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/chipstate.h"
#include "core/instructions.h"

namespace estructura {

struct decoded_word {
  op code = op::stop;
  std::uint8_t file = 0;  ///< file address, bits 4..0
  std::uint16_t word = 0;

  /// 0 is W, anything else the file register.
  [[gnu::always_inline, nodiscard]] int destination() const { return word & 32; }
  [[gnu::always_inline, nodiscard]] int bit() const { return (word >> 5) & 7; }
  [[gnu::always_inline, nodiscard]] int literal() const { return word & 255; }
};

/// Memory may hold more than 12 bits where a person stored them; such words do nothing.
constexpr decoded_word decoded(int word) {
  const auto index = static_cast<std::size_t>(word);
  const op code = index < op_index.size() ? op_index[index] : op::nothing;
  return {code, static_cast<std::uint8_t>(word & 31), static_cast<std::uint16_t>(word)};
}

/// A word is `op::stop` where a run may not go on by itself: in front of a breakpoint, and of the
/// instructions that change what time means.
class decoded_program {
 public:
  /// Takes over what has changed in program memory and breakpoints.
  void follow(const chipstate& chip);
  [[gnu::always_inline]] const decoded_word& operator[](std::size_t address) const {
    return words_.cells[address];
  }

 private:
  bounded_array<decoded_word, program_words> words_{};
  bounded_array<std::uint16_t, program_words> progmem_{};
  bounded_array<std::uint8_t, program_words> breakpts_{};
};

}  // namespace estructura
