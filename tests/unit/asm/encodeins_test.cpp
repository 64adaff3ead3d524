// The text of one instruction to its word.
#include "asm/encodeins.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "tests/support/expected_instructions.h"

namespace estructura {
namespace {

using support::expected_instruction;
using support::expected_instructions;
using support::kind;

std::string hex_text(int value) {
  std::string text;
  do text.insert(text.begin(), "0123456789ABCDEF"[value % 16]);
  while ((value /= 16) != 0);
  return text;
}

std::string in_lower_case(std::string text) {
  for (char& c : text)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  return text;
}

struct text_row {
  std::string text;
  int word;
};

void check(const std::vector<text_row>& rows) {
  for (const text_row& r : rows) EXPECT_EQ(encodeins(r.text), r.word) << '"' << r.text << '"';
}

TEST(encodeins, takes_what_people_type) {
  check({
      {"movwf 1f", 0x03F},
      {"MOVWF 20", -1},
      {"MOVWF STATUS", 0x023},
      {"TRIS 6", 0x006},
      {"TRIS 4", -1},
      {"TRIS PB", -1},
      {"ADDWF 5,W", 0x1C5},
      {"ADDWF 5,0", 0x1C5},
      {"ADDWF 5,1", 0x1E5},
      {"ADDWF 5", 0x1E5},
      {"ADDWF 5,F", -1},
      {"ADDWF 5, W", -1},
      {"BSF STATUS,Z", 0x543},
      {"BSF 3,PS2", 0x5E3},
      {"BSF 4,Z", -1},
      {"BCF 5,12", 0x645},
      {"BCF 5,8", -1},
      {"GOTO 1FF", 0xBFF},
      {"GOTO 200", -1},
      {"CALL 100", -1},
      {"CLRW", 0x040},
      {"NOP 5", 0x000},
      {"", -1},
      {"FOO", -1},
      {" MOVWF 5", -1},
      {" NOP", 0x000},
      {"BCF 5,234", 0x4A85},
      {"BCF 5,456", -1},
      {"BCF 5,01234567", -1},
      {"INCF PCL", 0x2A0},
  });
}

TEST(encodeins, drops_blanks_before_the_operands_and_at_the_end_alone) {
  check({
      {"MOVWF  5", 0x025},
      {"MOVWF    5   ", 0x025},
      {"NOP ", 0x000},
      {"   NOP   ", 0x000},
      {"   ", -1},
      {"  MOVWF 5", -1},
      {" NOP 5", -1},
      {"BSF 3 ,Z", -1},
      {"BSF STATUS ,Z", -1},
      {"BSF 3, Z", -1},
      {"MOVWF\t5", -1},
      {"MOVWF 5\t", -1},
      {"\tNOP", -1},
      {"NOP\r\n", -1},
      {"MOVWF 5\r\n", -1},
      {"BSF   STATUS,Z  ", 0x543},
      {"MOVWF 5 5", -1},
      {"GOTO 1 0", -1},
  });
}

TEST(encodeins, wants_an_operand_where_the_instruction_has_one) {
  for (const expected_instruction& row : expected_instructions) {
    const std::string mnemonic(row.mnemonic);
    const int wanted = row.operands == kind::none ? row.base : -1;
    check({{mnemonic, wanted}, {mnemonic + " ", wanted}, {mnemonic + "  ", wanted}});
  }
}

TEST(encodeins, takes_operands_with_a_comma_only_for_two_operands) {
  check({
      {"MOVWF 5,1", -1},
      {"CLRF 5,", -1},
      {"TRIS 6,0", -1},
      {"MOVLW 5,0", -1},
      {"GOTO 5,0", -1},
      {"GOTO ,", -1},
      {"MOVWF ,5", -1},
      {"BSF 3", -1},
      {"BSF 3,", -1},
      {"BSF ,3", -1},
      {"BSF ,", -1},
      {"ADDWF 5,", -1},
      {"ADDWF ,", -1},
      {"ADDWF 5,1,1", -1},
      {"BSF 3,1,1", -1},
      // Nothing before the comma reads as 0.
      {"ADDWF ,1", 0x1E0},
      {"ADDWF ,W", 0x1C0},
  });
}

TEST(encodeins, looks_at_operands_of_an_instruction_without_any_only_if_there_is_a_comma) {
  check({
      {"NOP GG", 0x000},
      {"CLRW ???", 0x040},
      {"SLEEP ñ", 0x003},
      {"CLRWDT 5,1", 0x004},
      {"OPTION 5,W", 0x002},
      {"NOP ,", 0x000},
      {"NOP G,1", -1},
      {"NOP 1,G", -1},
      {"NOP STATUS,Z", 0x000},
      {"NOP 4,Z", -1},
      {"NOP 12345,1", -1},
  });
}

TEST(encodeins, reads_a_lone_operand_of_two_without_names_as_far_as_it_is_a_number) {
  check({
      {"INCF STATUS", 0x2A0},
      {"INCF FSR", 0x2AF},
      {"INCF DC", -1},
      {"INCF 5 1", 0x2A5},
      {"INCF 1G", 0x2A1},
      {"INCF ???", 0x2A0},
      {"INCF 1F", 0x2BF},
      {"INCF 20", -1},
      {"INCF ñ", 0x2A0},
      {"INCF FFFF", -1},
      {"INCF 12345", -1},
      {"INCF 0000005", 0x2A5},
  });
}

TEST(encodeins, takes_numbers_of_any_length_that_fit) {
  check({
      {"MOVLW 000000000000FF", 0xCFF},
      {"MOVLW 100", -1},
      {"MOVLW FFFF", -1},
      {"MOVLW 8000", -1},
      {"MOVLW 10000", -1},
      {"MOVLW -1", -1},
      {"MOVLW +1", -1},
      {"MOVLW &H1", -1},
      {"MOVLW 0x1", -1},
      {"MOVLW 1H", -1},
      {"MOVLW ñ", -1},
      {"MOVLW 1ñ", -1},
      {"GOTO 0001FF", 0xBFF},
      {"GOTO 0FF", 0xAFF},
      {"CALL 00FF", 0x9FF},
      {"TRIS 0007", 0x007},
      {"ADDWF 0001F,W", 0x1DF},
      {"ADDWF 10000,W", -1},
      {"ADDWF FFFF,W", -1},
      {"BCF FFFF,1", -1},
      {"MOVLW " + std::string(10000, 'F'), -1},
      {std::string(10000, 'M'), -1},
      {"MOVLW " + std::string(10000, '0') + "7", 0xC07},
  });
}

TEST(encodeins, every_literal_and_every_register_in_and_out_of_range) {
  for (const expected_instruction& row : expected_instructions) {
    int lowest = 0;
    int highest = 0;
    switch (row.operands) {
      case kind::none:
      case kind::file_bit: continue;
      case kind::port: lowest = 5, highest = 7; break;
      case kind::file:
      case kind::file_dest: highest = 0x1F; break;
      case kind::literal8: highest = 0xFF; break;
      case kind::literal9: highest = 0x1FF; break;
    }
    // Left without a destination, the result goes to the register.
    const int base = row.base + (row.operands == kind::file_dest ? 0x20 : 0);
    for (int value = 0; value <= 0x0FFF; ++value) {
      const int wanted = value >= lowest && value <= highest ? base + value : -1;
      const std::string text = std::string(row.mnemonic) + " " + hex_text(value);
      ASSERT_EQ(encodeins(text), wanted) << text;
      ASSERT_EQ(encodeins(in_lower_case(text)), wanted) << in_lower_case(text);
    }
  }
}

TEST(encodeins, every_destination_of_every_register) {
  for (const expected_instruction& row : expected_instructions) {
    if (row.operands != kind::file_dest) continue;
    for (int file = 0; file <= 0x40; ++file) {
      for (const std::string dest :
           {"0", "1", "W", "w", "2", "F", "f", "00", "01", "WW", "0W", "W0", "", "Z", "DC", "ñ"}) {
        int wanted = -1;
        if (file <= 0x1F && (dest == "0" || dest == "W" || dest == "w")) wanted = row.base + file;
        if (file <= 0x1F && dest == "1") wanted = row.base + 0x20 + file;
        // The bit names hold for the register 3 whatever the instruction: C is 0 and DC is 1.
        if (file == 3 && dest == "DC") wanted = row.base + 0x20 + file;
        const std::string text = std::string(row.mnemonic) + " " + hex_text(file) + "," + dest;
        ASSERT_EQ(encodeins(text), wanted) << text;
      }
    }
  }
}

TEST(encodeins, every_bit_of_every_register) {
  for (const expected_instruction& row : expected_instructions) {
    if (row.operands != kind::file_bit) continue;
    for (int file = 0; file <= 0x40; ++file) {
      for (int bit = 0; bit <= 15; ++bit) {
        int wanted = file <= 0x1F && bit <= 7 ? row.base + 32 * bit + file : -1;
        // A C is the bit name of register 3, not the number twelve.
        if (file == 3 && bit == 0xC) wanted = row.base + 3;
        const std::string text = std::string(row.mnemonic) + " " + hex_text(file) + "," + hex_text(bit);
        ASSERT_EQ(encodeins(text), wanted) << text;
        ASSERT_EQ(encodeins(in_lower_case(text)), wanted) << in_lower_case(text);
      }
    }
  }
}

TEST(encodeins, a_run_of_bit_digits_counts_with_its_whole_value_as_far_as_16_bits_go) {
  const std::string digits = "01234567";
  for (const expected_instruction& row : expected_instructions) {
    if (row.operands != kind::file_bit) continue;
    for (const int file : {0, 3, 5, 0x1F}) {
      for (std::size_t from = 0; from < digits.size(); ++from) {
        for (std::size_t length = 1; from + length <= digits.size(); ++length) {
          const std::string bits = digits.substr(from, length);
          const std::int64_t word = row.base + 32 * std::stoll(bits, nullptr, 16) + file;
          const std::string text = std::string(row.mnemonic) + " " + hex_text(file) + "," + bits;
          ASSERT_EQ(encodeins(text), word <= 32767 ? word : -1) << text;
        }
      }
    }
    for (const char* bits : {"00", "10", "13", "21", "77", "70", "012345678", "8", "W", "0W", "1 2"})
      EXPECT_EQ(encodeins(std::string(row.mnemonic) + " 5," + bits), -1) << row.mnemonic << " 5," << bits;
  }
}

struct name_row {
  const char* name;
  int digit;
};
const std::vector<name_row> register_names = {{"INDF", 0}, {"TMR0", 1}, {"PCL", 2},    {"STATUS", 3},
                                              {"FSR", 4},  {"PA", 5},   {"OSCCAL", 5}, {"PB", 6},
                                              {"GPIO", 6}, {"PC", 7}};
const std::vector<name_row> bit_names = {{"C", 0},   {"DC", 1},  {"Z", 2},   {"PD", 3},   {"TO", 4},
                                         {"PS0", 5}, {"PS1", 6}, {"PS2", 7}, {"GPWUF", 7}};

TEST(encodeins, every_register_name_in_every_instruction) {
  for (const expected_instruction& row : expected_instructions) {
    for (const name_row& name : register_names) {
      const std::string one = std::string(row.mnemonic) + " " + name.name;
      int alone = -1;
      int with_comma = -1;
      switch (row.operands) {
        case kind::none: alone = with_comma = row.base; break;
        case kind::port:
        case kind::literal8:
        case kind::literal9: break;
        case kind::file: alone = row.base + name.digit; break;
        // The lone operand of file_dest is read as a number; its own test says how.
        case kind::file_dest:
        case kind::file_bit: with_comma = row.base + 32 + name.digit; break;
      }
      for (const std::string& text : {one, in_lower_case(one)}) {
        if (row.operands != kind::file_dest) {
          EXPECT_EQ(encodeins(text), alone) << text;
        }
        EXPECT_EQ(encodeins(text + ",1"), with_comma) << text << ",1";
      }
    }
  }
}

TEST(encodeins, every_bit_name_of_register_3_in_every_bit_instruction_and_of_no_other) {
  for (const expected_instruction& row : expected_instructions) {
    if (row.operands != kind::file_bit) continue;
    for (const name_row& name : bit_names) {
      for (int file = 0; file <= 0x1F; ++file) {
        const std::string text = std::string(row.mnemonic) + " " + hex_text(file) + "," + name.name;
        const int wanted = file == 3 ? row.base + 32 * name.digit + 3 : -1;
        EXPECT_EQ(encodeins(text), wanted) << text;
        EXPECT_EQ(encodeins(in_lower_case(text)), wanted) << text;
      }
      const std::string text = std::string(row.mnemonic) + " STATUS," + name.name;
      EXPECT_EQ(encodeins(text), row.base + 32 * name.digit + 3) << text;
      EXPECT_EQ(encodeins(std::string(row.mnemonic) + " 0003," + name.name), row.base + 32 * name.digit + 3);
    }
  }
}

TEST(regnum, gives_the_digit_of_a_name_in_any_case_and_anything_else_back_as_it_is) {
  for (const name_row& row : register_names) {
    EXPECT_EQ(regnum(row.name), std::to_string(row.digit));
    EXPECT_EQ(regnum(in_lower_case(row.name)), std::to_string(row.digit));
  }
  for (const char* text : {"", "5", "Statu", "statuS ", " FSR", "Z", "W", "pd", "ñ", "PORTA"})
    EXPECT_EQ(regnum(text), text);
}

TEST(bitnum, gives_the_digit_of_a_name_in_any_case_and_anything_else_back_as_it_is) {
  for (const name_row& row : bit_names) {
    EXPECT_EQ(bitnum(row.name), std::to_string(row.digit));
    EXPECT_EQ(bitnum(in_lower_case(row.name)), std::to_string(row.digit));
  }
  for (const char* text : {"", "5", "ps3", "Z ", " z", "Status", "w", "ñ", "PA0"})
    EXPECT_EQ(bitnum(text), text);
}

TEST(encodeins, leaves_every_other_text_without_a_word) {
  constexpr unsigned seed = 12508;
  std::mt19937 random(seed);
  // Pieces that come close to instructions, so that the texts reach every check.
  const std::vector<std::string> pieces = {"MOVWF",    "addwf", "BSF", "goto", "NOP",    "TRIS", " ",
                                           "  ",       ",",     "W",   "3",    "STATUS", "Z",    "12",
                                           "1F",       "FFFFF", "ñ",   "\t",   "\xFF",   "&H",   "-1",
                                           "01234567", "GPWUF", "0",   "1",    "call",   "\r\n", "?"};
  for (int i = 0; i < 200000; ++i) {
    std::string text;
    for (auto n = random() % 6; n > 0; --n) text += pieces[random() % pieces.size()];
    const int word = encodeins(text);
    ASSERT_TRUE(word >= -1 && word <= 32767) << text << " of seed " << seed;
    if (word == -1) continue;
    // Only a text that begins with a mnemonic, perhaps behind blanks, has a word.
    const std::size_t begin = text.find_first_not_of(' ');
    const std::string upper = [&] {
      std::string out = text.substr(begin);
      for (char& c : out)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
      return out;
    }();
    ASSERT_TRUE(std::any_of(expected_instructions.begin(), expected_instructions.end(),
                            [&](const expected_instruction& row) { return upper.starts_with(row.mnemonic); }))
        << text;
  }
}

}  // namespace
}  // namespace estructura
