// What the source editor says of an operand that is read as something else than it looks, in Spanish.
//
//   for (const odd_reading& r : odd_readings("X EQU 0x10", names))
//     tip_of(r)   -> "EQU lee solo las cifras hexadecimales del principio: se lee como 0."
//
// Numbers are shown as a source has them: hexadecimal, with a 0 before a letter.
#pragma once

#include <string>

#include "asm/odd_readings.h"

namespace estructura {

/// What the operand is read as, in one or two sentences of plain text.
[[nodiscard]] std::string tip_of(const odd_reading& reading);

}  // namespace estructura
