// The parts of a line of source, for whoever shows them in colours: label, mnemonic, directive, number and
// comment, cut as the assembler cuts them.
//
//   highlight("BUCLE: MOVLW 0F ; cuenta")
//       -> {0, 6, label}, {7, 5, mnemonic}, {13, 2, number}, {16, 8, comment}
//
// A line needs no other line to be understood. What is a mnemonic is for the instruction table to say, and
// what a directive for the assembler. Not told: names that nobody defines, and operands that do not fit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace estructura {

enum class source_part : std::uint8_t { label, mnemonic, directive, number, comment };

/// A part of a line, in bytes.
struct source_piece {
  std::size_t start;
  std::size_t length;
  source_part is;
  bool operator==(const source_piece&) const = default;
};

/// The parts of one line, from left to right.
[[nodiscard]] std::vector<source_piece> highlight(std::string_view line);

}  // namespace estructura
