// Instruction words back to text.
//
//   deshex(0x1C5)          -> "ADDWF 05,W"
//   deshex(0x001)          -> "???"
//   lineaprog(chip, 0x1F)  -> " 01F\tA05\tGOTO 005", "*01F\t???" where it is unprogrammed and has a
//   breakpoint
#pragma once

#include <string>

#include "core/chipstate.h"

namespace estructura {

/// The text of one word, "???" when it is no instruction; beyond 12 bits there is none, as for the machine.
[[nodiscard]] std::string deshex(int word);

/// The line of one address in the program list: mark of its breakpoint, address, word and text.
[[nodiscard]] std::string lineaprog(const chipstate& chip, int address);

/// Program memory as a source text that assembles to the same words: an ORG line before each run of
/// programmed words, one instruction a line, no labels, lines ending in CR LF. Numbers that begin with a
/// letter get a 0 in front, so that the assembler does not take them for names.
[[nodiscard]] std::string disassemble(const chipstate& chip);

}  // namespace estructura
