// The instruction table of the 12-bit core: one row per instruction, read by the step, the encoder, the
// assembler, the disassembler and the tests.
//
//   row_of(0x1C5).mnemonic   -> "ADDWF"
//   row_of(0x001).code       -> op::nothing
//   find_mnemonic("GOTO")    -> pointer to its row
//
// A pattern is read from bit 11 down: 0 and 1 are fixed, f is the file address, d the destination, b the bit
// number, k a literal, x anything. The words that are no instruction are rows too, so that every one of the
// 4096 words has exactly one row, which the compiler proves.
//
//   bit   11 10 9 8   7 6 5 4   3 2 1 0
//         o  o  o o   o o d f   f f f f     file register and destination
//         o  o  o o   b b b f   f f f f     file register and bit
//         o  o  o o   k k k k   k k k k     literal
//         1  0  1 k   k k k k   k k k k     GOTO
//
// Encodings: the data sheets of the baseline 12-bit family.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace estructura {

/// What a word does, and which flags it changes; those that are not named stay.
enum class op : std::uint8_t {
  nothing,  ///< a word that is no instruction: one cycle, and nothing else
  nop,      ///< no flag
  option,   ///< W to OPTION; no flag
  sleep,    ///< /PD 0, /TO 1, and the watchdog's count to 0
  clrwdt,   ///< /TO 1, and the watchdog's count to 0; /PD stays
  tris,     ///< W to the directions of a port; no flag
  movwf,    ///< W to f; no flag
  clrw,     ///< 0 to W; no flag, Z neither
  clrf,     ///< 0 to f; no flag, Z neither
  subwf,    ///< f - W; C and DC are 1 where nothing is borrowed, Z where the result is 0
  decf,     ///< Z; neither C nor DC
  iorwf,    ///< Z
  andwf,    ///< Z
  xorwf,    ///< Z
  addwf,    ///< C carries out of bit 7, DC out of bit 3; Z
  movf,     ///< Z
  comf,     ///< Z
  incf,     ///< Z; neither C nor DC
  decfsz,   ///< skips where the result is 0; no flag
  rrf,      ///< C comes in at bit 7, bit 0 goes to C; no other flag
  rlf,      ///< C comes in at bit 0, bit 7 goes to C; no other flag
  swapf,    ///< exchanges the two halves; no flag
  incfsz,   ///< skips where the result is 0; no flag
  bcf,      ///< no flag, but a bit of STATUS where f is that
  bsf,      ///< the same
  btfsc,    ///< skips where the bit is 0; no flag
  btfss,    ///< skips where the bit is 1; no flag
  retlw,    ///< k to W and back to the caller; no flag
  call,     ///< no flag; the page bits of STATUS give the rest of the address, and its bit 8 is 0
  goto_,    ///< no flag; the page bits of STATUS give the rest of the address
  movlw,    ///< no flag
  iorlw,    ///< Z
  andlw,    ///< Z
  xorlw,    ///< Z
  blank,    ///< no instruction: an unprogrammed word, which only moves on
  stop      ///< nor this: where a run that decodes ahead has to stop
};

/// What stands behind the mnemonic.
enum class form : std::uint8_t { none, port, file, file_dest, file_bit, literal8, literal9 };

struct instruction {
  std::string_view pattern;
  std::string_view mnemonic;  ///< empty for the words that are no instruction
  form operands;
  op code;

  /// The word with every operand bit 0.
  [[nodiscard]] constexpr int base() const {
    int word = 0;
    for (const char c : pattern)
      if (c != ' ') word = word * 2 + (c == '1' ? 1 : 0);
    return word;
  }
  [[nodiscard]] constexpr bool matches(int word) const {
    int bit = 11;
    for (const char c : pattern) {
      if (c == ' ') continue;
      const int value = (word >> bit--) & 1;
      if ((c == '0' && value != 0) || (c == '1' && value != 1)) return false;
    }
    return bit == -1;
  }
};

// clang-format off
inline constexpr std::array instructions = {
    instruction{"0000 0000 0000", "NOP",    form::none,      op::nop},
    instruction{"0000 0000 0010", "OPTION", form::none,      op::option},
    instruction{"0000 0000 0011", "SLEEP",  form::none,      op::sleep},
    instruction{"0000 0000 0100", "CLRWDT", form::none,      op::clrwdt},
    instruction{"0000 0000 0101", "TRIS",   form::port,      op::tris},
    instruction{"0000 0000 011k", "TRIS",   form::port,      op::tris},
    instruction{"0000 001f ffff", "MOVWF",  form::file,      op::movwf},
    instruction{"0000 0100 0000", "CLRW",   form::none,      op::clrw},
    instruction{"0000 011f ffff", "CLRF",   form::file,      op::clrf},
    instruction{"0000 10df ffff", "SUBWF",  form::file_dest, op::subwf},
    instruction{"0000 11df ffff", "DECF",   form::file_dest, op::decf},
    instruction{"0001 00df ffff", "IORWF",  form::file_dest, op::iorwf},
    instruction{"0001 01df ffff", "ANDWF",  form::file_dest, op::andwf},
    instruction{"0001 10df ffff", "XORWF",  form::file_dest, op::xorwf},
    instruction{"0001 11df ffff", "ADDWF",  form::file_dest, op::addwf},
    instruction{"0010 00df ffff", "MOVF",   form::file_dest, op::movf},
    instruction{"0010 01df ffff", "COMF",   form::file_dest, op::comf},
    instruction{"0010 10df ffff", "INCF",   form::file_dest, op::incf},
    instruction{"0010 11df ffff", "DECFSZ", form::file_dest, op::decfsz},
    instruction{"0011 00df ffff", "RRF",    form::file_dest, op::rrf},
    instruction{"0011 01df ffff", "RLF",    form::file_dest, op::rlf},
    instruction{"0011 10df ffff", "SWAPF",  form::file_dest, op::swapf},
    instruction{"0011 11df ffff", "INCFSZ", form::file_dest, op::incfsz},
    instruction{"0100 bbbf ffff", "BCF",    form::file_bit,  op::bcf},
    instruction{"0101 bbbf ffff", "BSF",    form::file_bit,  op::bsf},
    instruction{"0110 bbbf ffff", "BTFSC",  form::file_bit,  op::btfsc},
    instruction{"0111 bbbf ffff", "BTFSS",  form::file_bit,  op::btfss},
    instruction{"1000 kkkk kkkk", "RETLW",  form::literal8,  op::retlw},
    instruction{"1001 kkkk kkkk", "CALL",   form::literal8,  op::call},
    instruction{"101k kkkk kkkk", "GOTO",   form::literal9,  op::goto_},
    instruction{"1100 kkkk kkkk", "MOVLW",  form::literal8,  op::movlw},
    instruction{"1101 kkkk kkkk", "IORLW",  form::literal8,  op::iorlw},
    instruction{"1110 kkkk kkkk", "ANDLW",  form::literal8,  op::andlw},
    instruction{"1111 kkkk kkkk", "XORLW",  form::literal8,  op::xorlw},
    instruction{"0000 0000 0001", "",       form::none,      op::nothing},
    instruction{"0000 0000 1xxx", "",       form::none,      op::nothing},
    instruction{"0000 0001 xxxx", "",       form::none,      op::nothing},
    instruction{"0000 0100 0001", "",       form::none,      op::nothing},
    instruction{"0000 0100 001x", "",       form::none,      op::nothing},
    instruction{"0000 0100 01xx", "",       form::none,      op::nothing},
    instruction{"0000 0100 1xxx", "",       form::none,      op::nothing},
    instruction{"0000 0101 xxxx", "",       form::none,      op::nothing},
};
// clang-format on

namespace detail {

// Walks the rows and fills in the words that each covers, by counting through its free bits. A word met twice
// or never is marked 255.
constexpr std::array<std::uint8_t, 4096> make_row_index() {
  std::array<std::uint8_t, 4096> index{};
  index.fill(254);
  for (std::size_t row = 0; row < instructions.size(); ++row) {
    int free_bits = 0;
    int fixed = 0;
    int bit = 11;
    for (const char c : instructions[row].pattern) {
      if (c == ' ') continue;
      if (c == '1') fixed |= 1 << bit;
      if (c != '0' && c != '1') free_bits |= 1 << bit;
      --bit;
    }
    for (int part = free_bits;; part = (part - 1) & free_bits) {
      auto& cell = index[static_cast<std::size_t>(fixed | part)];
      cell = cell == 254 ? static_cast<std::uint8_t>(row) : std::uint8_t{255};
      if (part == 0) break;
    }
  }
  return index;
}

constexpr bool every_word_has_exactly_one_row(const std::array<std::uint8_t, 4096>& index) {
  for (const std::uint8_t row : index)
    if (row >= 254) return false;
  return true;
}

inline constexpr std::array<std::uint8_t, 4096> row_index = make_row_index();
static_assert(every_word_has_exactly_one_row(row_index));

constexpr std::array<op, 4096> make_op_index() {
  std::array<op, 4096> ops{};
  for (std::size_t word = 0; word < ops.size(); ++word) ops[word] = instructions[row_index[word]].code;
  return ops;
}

}  // namespace detail

/// What each word 0..4095 does; most are looked up once a step.
inline constexpr std::array<op, 4096> op_index = detail::make_op_index();

/// The row of a word 0..4095; only the low 12 bits are looked at.
constexpr const instruction& row_of(int word) {
  return instructions[detail::row_index[static_cast<std::size_t>(word & 0xFFF)]];
}

/// The row of a mnemonic in upper case; null when there is none. TRIS is found by its first row.
constexpr const instruction* find_mnemonic(std::string_view mnemonic) {
  if (mnemonic.empty()) return nullptr;
  for (const instruction& row : instructions)
    if (row.mnemonic == mnemonic) return &row;
  return nullptr;
}

}  // namespace estructura
