#include "files/disassembler.h"

#include "common/text.h"
#include "core/instructions.h"

namespace estructura {

namespace {

constexpr const char* no_text = "???";

std::string operand_text(const instruction& row, int word) {
  std::string file = hexstr(word & 0x1F, 2);
  switch (row.operands) {
    case form::none: return {};
    case form::port: return hexstr(word & 7, 1);
    case form::file: return file;
    case form::file_dest: return (word & 0x20) == 0 ? file + ",W" : file;
    case form::file_bit: return file + "," + hexstr((word >> 5) & 7, 1);
    // The operand of CALL is a program address, and those have three digits.
    case form::literal8: return hexstr(word & 0xFF, row.code == op::call ? 3 : 2);
    case form::literal9: return hexstr(word & 0x1FF, 3);
  }
  return {};
}

// The first operand with a 0 in front where it begins with a letter.
std::string with_leading_digit(std::string text) {
  const std::size_t operand = text.find(' ') + 1;
  const bool letter = operand > 0 && text[operand] >= 'A' && text[operand] <= 'F';
  if (letter) text.insert(operand, "0");
  return text;
}

}  // namespace

std::string deshex(int word) {
  constexpr int highest_word = 0xFFF;
  const instruction& row = row_of(word);
  if (word > highest_word || row.code == op::nothing) return no_text;
  std::string text(row.mnemonic);
  const std::string operand = operand_text(row, word);
  if (!operand.empty()) text += " " + operand;
  return text;
}

std::string lineaprog(const chipstate& chip, int address) {
  std::string line = (chip.breakpts[address] != 0 ? "*" : " ") + hexstr(address, 3) + "\t";
  const int word = chip.progmem[address];
  if (word == unprogrammed) return line + no_text;
  return line + hexstr(word, 3) + "\t" + deshex(word);
}

std::string disassemble(const chipstate& chip) {
  const std::string margin(10, ' ');
  std::string source;
  bool new_block = true;
  for (int a = 0; a <= chip.devmodel.progmask; ++a) {
    if (chip.progmem[a] == unprogrammed) {
      new_block = true;
      continue;
    }
    if (new_block) source.append(margin).append("ORG ").append(hexstr(a, 3)).append("\r\n");
    new_block = false;
    source.append(margin).append(with_leading_digit(deshex(chip.progmem[a]))).append("\r\n");
  }
  return source;
}

}  // namespace estructura
