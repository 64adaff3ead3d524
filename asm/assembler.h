// The source assembler: a whole text to a memory image with its listing, or to the first error with its
// place.
//
//   const assembly made = assemble("START: MOVLW 10\r\n GOTO START\r\n", progmask);
//   if (made.error) ...          // made.error->message, made.error->line
//   else ...                     // made.image, made.listing, made.symbols
//
// One statement a line: an optional label ending in ":", a mnemonic or EQU, ORG, END, at most two operands
// divided by ",", a comment behind ";" (asm/source_line.h). Numbers are hexadecimal. Three passes and a
// resolution between the last two; an earlier pass's error always wins over a later one's, whatever the
// lines. Register and bit names are not known: sources define theirs with EQU. Nothing outlives one call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/bounded_array.h"
#include "core/chipstate.h"

namespace estructura {

struct assembly_symbol {
  std::string name;
  std::int16_t value = 0;
};

struct assembly_error {
  std::string_view message;
  std::size_t line = 0;         ///< from 1
  std::size_t start = 0;        ///< of the line, in characters from the start of the text
  std::size_t length = 0;       ///< in characters, without line end
  bool while_encoding = false;  ///< met in the last pass, which has emptied the listing by then
};

struct assembly {
  std::optional<assembly_error> error;
  bounded_array<std::uint16_t, program_words> image{};
  std::string listing;                   ///< lines end in CR LF
  std::vector<assembly_symbol> symbols;  ///< in order of definition
};

/// Assembles a text whose lines end in CR LF (a missing last one is added) for a device whose highest program
/// address is `progmask`.
[[nodiscard]] assembly assemble(std::string_view source, int progmask);

/// Lays a mnemonic and its operands out in two columns: what stands before the first blank, a tab, the rest.
[[nodiscard]] std::string tabmnem(std::string_view text);

/// Whether a text looks like a number where a name is wanted: a decimal digit first, or just "," or "W".
[[nodiscard]] bool numlike(std::string_view text);

/// Whether an operand in upper case is a number: hexadecimal digits, the first of them decimal. Any other
/// operand is looked up as a name in a source that defines one.
[[nodiscard]] bool is_number(std::string_view text);

/// The value of a name as it takes the name's place in an operand: hexadecimal without leading zeros.
[[nodiscard]] std::string symbol_text(std::int16_t value);

/// Whether a statement has the operands that its mnemonic wants. Rewrites a second operand "W" to "0" where
/// it names a destination.
[[nodiscard]] bool checkline(std::string_view label, std::string_view mnemonic, std::string_view op1,
                             std::string& op2);

}  // namespace estructura
