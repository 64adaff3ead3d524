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
#include "core/decoded_word.h"

namespace estructura {

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
