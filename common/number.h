// Lenient conversion of typed text to numbers: the longest leading part that is a number counts, the rest is
// ignored, and a text without such a part is 0.
//
//   valdec("4000 kHz")  -> 4000
//   valhex("1FZ")       -> 31
//   valhex("FFFF")      -> -1        (16-bit two's complement)
//   valhex("12345")     throws machine_fault (does not fit 16 bits)
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace estructura {

/// A decimal number: sign, digits, ".", digits, exponent with "E" or "D". Blanks, tabs and line ends are
/// skipped wherever they stand. Also reads hexadecimal behind "&h". May be infinite for an absurd exponent.
double valdec(std::string_view text);

/// The leading hexadecimal digits as a signed 16-bit number; nothing when they exceed FFFF.
std::optional<std::int16_t> valhex_checked(std::string_view text);

/// As `valhex_checked`; `machine_fault` when the digits exceed FFFF.
std::int16_t valhex(std::string_view text);

}  // namespace estructura
