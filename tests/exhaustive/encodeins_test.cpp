// Every short operand text of every kind of instruction, against the rules of the encoder written down once
// more, one after the other, with nothing shared but the mnemonics and their words.
#include "asm/encodeins.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tests/exhaustive/how_much.h"
#include "tests/support/expected_instructions.h"

namespace estructura {
namespace {

using support::expected_instruction;
using support::expected_instructions;
using support::kind;

const std::map<std::string, std::string> register_digit = {
    {"INDF", "0"}, {"TMR0", "1"},   {"PCL", "2"}, {"STATUS", "3"}, {"FSR", "4"},
    {"PA", "5"},   {"OSCCAL", "5"}, {"PB", "6"},  {"GPIO", "6"},   {"PC", "7"}};
const std::map<std::string, std::string> bit_digit = {{"C", "0"},   {"DC", "1"},  {"Z", "2"},
                                                      {"PD", "3"},  {"TO", "4"},  {"PS0", "5"},
                                                      {"PS1", "6"}, {"PS2", "7"}, {"GPWUF", "7"}};

std::string named(const std::map<std::string, std::string>& names, const std::string& text) {
  const auto found = names.find(text);
  return found == names.end() ? text : found->second;
}

std::string without_blanks_around(const std::string& text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string upper(std::string text) {
  for (char& c : text)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return text;
}

bool only(const std::string& text, std::string_view allowed) {
  return text.find_first_not_of(allowed) == std::string::npos;
}

constexpr std::string_view hexadecimal = "0123456789ABCDEF";

// The leading digits; the texts here are too short for more than 16 bits.
int number(const std::string& text) {
  const std::string digits = text.substr(0, text.find_first_not_of(hexadecimal));
  return digits.empty() ? 0 : std::stoi(digits, nullptr, 16);
}

int word_of(const expected_instruction& row, const std::string& operand, std::string first,
            std::string second) {
  const auto literal = [&](const std::string& text, int lowest, int highest) {
    if (text.empty() || !only(text, hexadecimal)) return -1;
    return number(text) >= lowest && number(text) <= highest ? row.base + number(text) : -1;
  };
  switch (row.operands) {
    case kind::none: return row.base;
    case kind::port: return literal(operand, 5, 7);
    case kind::literal8: return literal(operand, 0, 0xFF);
    case kind::literal9: return literal(operand, 0, 0x1FF);
    case kind::file: return literal(named(register_digit, operand), 0, 0x1F);
    case kind::file_dest:
      if (first.empty() && !operand.empty()) {
        first = operand;
        second = "1";
      }
      if (second == "W") second = "0";
      if (number(first) > 0x1F || (second != "0" && second != "1")) return -1;
      return row.base + 32 * number(second) + number(first);
    case kind::file_bit: {
      if (first.empty() || second.empty() || number(first) > 0x1F) return -1;
      if (std::string_view("01234567").find(second) == std::string_view::npos) return -1;
      const int word = row.base + 32 * number(second) + number(first);
      return word <= 32767 ? word : -1;
    }
  }
  return -1;
}

// What stands behind the mnemonic and its blank; `typed` may begin or end with further blanks.
int expected_word(const expected_instruction& row, const std::string& typed) {
  const std::string operand = upper(without_blanks_around(typed));
  const auto comma = operand.find(',');
  // Nothing behind the blank: it is trimmed away, and the mnemonic stands alone.
  if (comma == std::string::npos) return word_of(row, operand, "", "");
  const std::string first = named(register_digit, operand.substr(0, comma));
  std::string second = operand.substr(comma + 1);
  if (number(first) == 3) second = named(bit_digit, second);
  if (!only(first, hexadecimal) || !only(second, std::string(hexadecimal) + "W")) return -1;
  return word_of(row, "", first, second);
}

// Every text of `shortest` to `longest` characters of an alphabet.
std::vector<std::string> texts(const std::vector<std::string>& alphabet, int shortest, int longest) {
  std::vector<std::string> all;
  std::vector<std::string> of_length = {""};
  for (int length = 0;; ++length) {
    if (length >= shortest) all.insert(all.end(), of_length.begin(), of_length.end());
    if (length == longest) return all;
    std::vector<std::string> longer;
    longer.reserve(of_length.size() * alphabet.size());
    for (const std::string& text : of_length)
      for (const std::string& next : alphabet) longer.push_back(text + next);
    of_length = std::move(longer);
  }
}

std::vector<std::string> letters(std::string_view characters) {
  std::vector<std::string> out;
  out.reserve(characters.size());
  for (const char c : characters) out.emplace_back(1, c);
  return out;
}

// One mnemonic of each kind of operands.
const expected_instruction& row_of_kind(kind which) {
  for (const expected_instruction& row : expected_instructions)
    if (row.operands == which) return row;
  throw std::logic_error("no instruction of that kind");
}
constexpr std::array all_kinds = {kind::none,     kind::port,     kind::file,    kind::file_dest,
                                  kind::file_bit, kind::literal8, kind::literal9};

TEST(encodeins_space, every_operand_text_of_up_to_three_characters_in_every_kind_of_instruction) {
  std::string printable;
  for (char c = ' '; c <= '~'; ++c) printable.push_back(c);
  std::vector<std::string> alphabet = letters(support::whole_space ? printable : "0157 8aFWz,CDP&");
  for (const char* more : {"\t", "\r", "\n", "ñ"}) alphabet.emplace_back(more);
  int words = 0;
  for (const std::string& operand : texts(alphabet, 0, 3)) {
    for (const kind which : all_kinds) {
      const expected_instruction& row = row_of_kind(which);
      const std::string text = std::string(row.mnemonic) + " " + operand;
      const int wanted = expected_word(row, operand);
      ASSERT_EQ(encodeins(text), wanted) << '"' << text << '"';
      words += wanted >= 0 ? 1 : 0;
    }
  }
  EXPECT_GT(words, 1000) << "the space met too few instructions to mean anything";
}

TEST(encodeins_space, one_character_of_each_class_in_each_place_of_every_mnemonic) {
  std::vector<std::string> alphabet = letters("01578F gWZC,\tP-");
  alphabet.emplace_back("ñ");
  for (const std::string& operand : texts(alphabet, 0, 3)) {
    for (const expected_instruction& row : expected_instructions) {
      const std::string text = std::string(row.mnemonic) + " " + operand;
      ASSERT_EQ(encodeins(text), expected_word(row, operand)) << '"' << text << '"';
    }
  }
}

TEST(encodeins_space, two_operands_of_up_to_three_characters_each) {
  // The characters let every register and bit name of three letters and fewer occur, and numbers in and out
  // of range.
  const auto firsts = texts(letters(support::whole_space ? "013FSRPAC " : "013FPC"), 0, 3);
  const auto seconds = texts(letters(support::whole_space ? "017wW8CDZ," : "017wCD"), 0, 3);
  for (const kind which : {kind::file_dest, kind::file_bit}) {
    const expected_instruction& row = row_of_kind(which);
    for (const std::string& first : firsts) {
      const std::string begin = first + ",";
      for (const std::string& second : seconds) {
        const std::string operand = begin + second;
        const std::string text = std::string(row.mnemonic) + " " + operand;
        ASSERT_EQ(encodeins(text), expected_word(row, operand)) << '"' << text << '"';
      }
    }
  }
}

}  // namespace
}  // namespace estructura
