// Program memories for tests.
//
//   chipstate chip = empty_chip(device_index("16C54"));      // a 16C54 with nothing programmed
//   put(chip, 0x1FF, {0xA00});
//   fill_at_random(chip, 0x1FF, 60, random);
#pragma once

#include <array>
#include <initializer_list>
#include <random>

#include "core/chipstate.h"
#include "core/devices.h"

namespace estructura::support {

inline chipstate empty_chip(int device_index = default_device) {
  chipstate chip;
  select_device(chip, device_index);
  chip.progmem.fill(unprogrammed);
  return chip;
}

inline void put(chipstate& chip, int address, std::initializer_list<int> words) {
  for (const int word : words) chip.progmem[address++] = static_cast<std::uint16_t>(word);
}

/// Fills about `percent` of the addresses 0..`last` with words of 12 bits, in runs and alone.
inline void fill_at_random(chipstate& chip, int last, unsigned percent, std::mt19937& random) {
  bool programmed = false;
  for (int a = 0; a <= last; ++a) {
    if (random() % 4 == 0) programmed = random() % 100 < percent;
    chip.progmem[a] = programmed ? static_cast<std::uint16_t>(random() % 4096) : unprogrammed;
  }
}

}  // namespace estructura::support
