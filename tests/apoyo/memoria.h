// Program memories for tests, and what differs between two of them.
//
//   chipstate chip = empty_chip(4);                       // a 16C54 with nothing programmed
//   put(chip, 0x1FF, {0xA00});
//   EXPECT_EQ(differences(chip, wanted), "");             // "1FF: 0A00, wanted unprogrammed\n" when they
//   differ
#pragma once

#include <array>
#include <initializer_list>
#include <random>
#include <string>

#include "common/texto.h"
#include "core/chipstate.h"
#include "core/dispositivos.h"

namespace estructura::apoyo {

inline chipstate empty_chip(int device_index = default_device) {
  chipstate chip;
  select_device(chip, device_index);
  chip.progmem.fill(unprogrammed);
  return chip;
}

inline void put(chipstate& chip, int address, std::initializer_list<int> words) {
  for (const int word : words) chip.progmem[address++] = static_cast<std::uint16_t>(word);
}

inline std::string differences(const chipstate& got, const chipstate& wanted) {
  const auto text = [](int word) {
    return word == unprogrammed ? std::string("unprogrammed") : hexstr(word, 4);
  };
  std::string out;
  for (int a = 0; a < program_words; ++a)
    if (got.progmem[a] != wanted.progmem[a])
      out += hexstr(a, 3) + ": " + text(got.progmem[a]) + ", wanted " + text(wanted.progmem[a]) + "\n";
  chipstate rest = got;
  rest.progmem = wanted.progmem;
  if (!(rest == wanted)) out += "something besides program memory\n";
  return out;
}

/// Fills about `percent` of the addresses 0..`last` with words of 12 bits, in runs and alone.
inline void fill_at_random(chipstate& chip, int last, unsigned percent, std::mt19937& random) {
  bool programmed = false;
  for (int a = 0; a <= last; ++a) {
    if (random() % 4 == 0) programmed = random() % 100 < percent;
    chip.progmem[a] = programmed ? static_cast<std::uint16_t>(random() % 4096) : unprogrammed;
  }
}

}  // namespace estructura::apoyo
