// Export of program memory for the 16C84: every 12-bit instruction as the 14-bit one that does the same.
//
//   hex84(0x465)                     -> 0x1185       (BCF 5,3)
//   if (!salvahxx(chip, "uno.hex")) ...              // "Error en escritura"
//
// The file is that of files/hex.h with translated words; no configuration word and no data memory is written.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/chipstate.h"

namespace estructura {

/// The 14-bit word 0..3FFF for a 12-bit word; higher bits of `word` are not looked at. A word that is no
/// instruction stays as it is or becomes one of the 16C84's control words, as its digits give.
[[nodiscard]] int hex84(int word);

/// As `crealin`, with each word translated.
void crealinhxx(int address, const std::array<std::uint16_t, 8>& words, std::string& line);

/// As `salva`, with each word translated.
[[nodiscard]] bool salvahxx(const chipstate& chip, const std::string& path);

}  // namespace estructura
