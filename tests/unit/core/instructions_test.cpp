// The instruction table against the data sheets, on all 4096 words.
#include "core/instructions.h"

#include <array>
#include <gtest/gtest.h>
#include <set>
#include <string_view>
#include <vector>

#include "tests/support/expected_instructions.h"

namespace estructura {
namespace {

using support::expected_instruction;
using support::expected_instructions;
using support::kind;

std::vector<int> words_of(const expected_instruction& row) {
  int first = 0;
  int count = 1;
  switch (row.operands) {
    case kind::none: break;
    case kind::port: first = 5, count = 3; break;
    case kind::file: count = 32; break;
    case kind::file_dest: count = 64; break;
    case kind::file_bit:
    case kind::literal8: count = 256; break;
    case kind::literal9: count = 512; break;
  }
  std::vector<int> words;
  for (int i = 0; i < count; ++i) words.push_back(row.base + first + i);
  return words;
}

TEST(instruction_table, says_of_every_word_what_the_data_sheets_say) {
  std::array<std::string_view, 4096> wanted{};
  for (const expected_instruction& row : expected_instructions)
    for (const int word : words_of(row)) wanted[static_cast<std::size_t>(word)] = row.mnemonic;
  for (int word = 0; word < 4096; ++word) {
    const std::string_view mnemonic = wanted[static_cast<std::size_t>(word)];
    EXPECT_EQ(row_of(word).mnemonic, mnemonic) << std::hex << word;
    EXPECT_EQ(row_of(word).code == op::nothing, mnemonic.empty()) << std::hex << word;
    for (const instruction& row : instructions)
      EXPECT_EQ(row.matches(word), &row == &row_of(word)) << row.pattern << ' ' << std::hex << word;
  }
}

TEST(instruction_table, finds_every_mnemonic_in_upper_case_alone) {
  for (const expected_instruction& row : expected_instructions) {
    const instruction* found = find_mnemonic(row.mnemonic);
    ASSERT_NE(found, nullptr) << row.mnemonic;
    EXPECT_EQ(found->mnemonic, row.mnemonic);
    EXPECT_EQ(static_cast<int>(found->operands), static_cast<int>(row.operands)) << row.mnemonic;
    EXPECT_EQ(found->base(), row.operands == kind::port ? 5 : row.base) << row.mnemonic;
  }
  for (const std::string_view text : {"", "nop", "Nop", "NOP ", " NOP", "NO", "NOPE", "RETURN", "???", "ORG"})
    EXPECT_EQ(find_mnemonic(text), nullptr) << text;
}

TEST(instruction_table, has_a_code_of_its_own_for_every_mnemonic) {
  std::set<op> codes;
  std::set<std::string_view> mnemonics;
  for (const instruction& row : instructions) {
    codes.insert(row.code);
    mnemonics.insert(row.mnemonic);
  }
  EXPECT_EQ(codes.size(), 34U) << "33 and the words that are none";
  EXPECT_EQ(mnemonics.size(), 34U);
}

}  // namespace
}  // namespace estructura
