// One line of a source cut into its parts, for the assembler and for whoever shows the line.
//
//   const line_parts parts = cut_line("BUCLE: ADDWF 5 , W ; suma");
//   parts.label.of(line)      -> "BUCLE"
//   parts.mnemonic.of(line)   -> "ADDWF"
//   parts.op2.of(line)        -> "W"
//   parts.comment.of(line)    -> "; suma"
//
// A part is a place in the line, without the blanks around it; a tab counts as a blank. A line needs no other
// line to be cut. Whether the parts make sense is for others to say.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace estructura {

/// The words that stand where a mnemonic does and are none.
namespace directive {
inline constexpr std::string_view equ = "EQU";
inline constexpr std::string_view org = "ORG";
inline constexpr std::string_view end = "END";
}  // namespace directive

/// Whether a word in upper case is one of them.
constexpr bool is_directive(std::string_view word) {
  return word == directive::equ || word == directive::org || word == directive::end;
}

/// The characters that count as blanks in a source.
inline constexpr std::string_view source_blanks = " \t";

/// Part of a line by its two ends, in bytes.
struct line_part {
  std::size_t from = 0;
  std::size_t to = 0;

  [[nodiscard]] bool empty() const { return from == to; }
  [[nodiscard]] std::string_view of(std::string_view line) const { return line.substr(from, to - from); }
  bool operator==(const line_part&) const = default;
};

struct line_parts {
  bool statement = false;  ///< neither blank nor a pure comment
  bool colon = false;      ///< a ":" ends the label
  bool comma = false;      ///< a "," divides the operands
  line_part label;         ///< without its ":"
  line_part mnemonic;
  line_part op1;
  line_part op2;             ///< all that stands behind the first comma
  line_part comment;         ///< with its ";"
  std::size_t colon_at = 0;  ///< where there is one
  std::size_t comma_at = 0;
};

/// Cuts one line, given without its line end. A label ends in ":"; the first word is one without it too where
/// the second is EQU and the first no word of the language: "X EQU 10" is "X: EQU 10", "MOVLW EQU" a MOVLW.
[[nodiscard]] line_parts cut_line(std::string_view line);

}  // namespace estructura
