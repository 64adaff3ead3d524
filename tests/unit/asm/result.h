// What assembling a short source gives, as one line of text, so that a test is a row.
//
//   outcome("MOVLW 10\nNOP")   -> "000=C10 001=000"
//   outcome("NOP\nFOO")        -> "2: Instrucción incorrecta."
//   outcome("")                -> ""
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "asm/assembler.h"
#include "common/text.h"

namespace estructura::support {

inline constexpr int mask_2048 = 0x7FF;
inline constexpr int mask_1024 = 0x3FF;
inline constexpr int mask_512 = 0x1FF;

/// The rows are written with "\n" between their lines, a source has CR LF.
inline std::string crlf(std::string_view text) {
  std::string out;
  for (const char c : text) out += c == '\n' ? std::string("\r\n") : std::string(1, c);
  return out;
}

inline std::string words_of(const assembly& made) {
  std::string out;
  for (int a = 0; a < program_words; ++a) {
    if (made.image[a] == unprogrammed) continue;
    if (!out.empty()) out += ' ';
    // A word beyond 12 bits shows all its digits.
    out += hexstr(a, 3) + "=" + hexstr(made.image[a], made.image[a] > 0xFFF ? 4 : 3);
  }
  return out;
}

inline std::string outcome(std::string_view lines, int progmask = mask_2048) {
  const assembly made = assemble(crlf(lines), progmask);
  if (made.error) return std::to_string(made.error->line) + ": " + std::string(made.error->message);
  return words_of(made);
}

struct source_row {
  std::string_view lines;
  std::string_view wanted;
  int progmask = mask_2048;
};

template <class Rows>
void expect_outcomes(const Rows& rows) {
  for (const source_row& row : rows) EXPECT_EQ(outcome(row.lines, row.progmask), row.wanted) << row.lines;
}

}  // namespace estructura::support
