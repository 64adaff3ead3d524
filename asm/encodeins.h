// The text of one instruction to its word, and the two name tables that go with it.
//
//   encodeins("movwf 1f")     -> 0x03F
//   encodeins("BSF STATUS,Z") -> 0x543
//   encodeins("ADDWF 5,F")    -> -1       (the file destination is written 1, or left out)
//   regnum("status")          -> "3"
//   bitnum("Z")               -> "2"
//
// Numbers are hexadecimal, with neither prefix nor suffix. Symbols, labels and directives are not known here:
// the source assembler has put numbers in their place before it calls.
#pragma once

#include <string>
#include <string_view>

namespace estructura {

inline constexpr int no_instruction = -1;

/// The word of an instruction, `no_instruction` for any other text. Normally 0..4095; a bit operand of
/// several digits ("BCF 5,234") spills beyond 12 bits, up to 15.
[[nodiscard]] int encodeins(std::string_view text);

/// The address digit of a register name in any case; any other text comes back as it is.
[[nodiscard]] std::string regnum(std::string_view text);

/// The bit digit of a STATUS bit name in any case; any other text comes back as it is.
[[nodiscard]] std::string bitnum(std::string_view text);

}  // namespace estructura
