// The operands that each mnemonic wants, and the two small helpers of names and layout.
#include <array>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "asm/assembler.h"

namespace estructura {
namespace {

// What a mnemonic asks of its operands. Written down here once more: nothing comes from the table in use.
enum class wants { none, one, one_or_two, two, equ, org, end, label };

struct rule {
  std::string_view mnemonic;
  wants operands;
};

// clang-format off
constexpr std::array rules = {
    rule{"EQU", wants::equ},           rule{"ORG", wants::org},           rule{"END", wants::end},
    rule{"NOP", wants::none},          rule{"OPTION", wants::none},       rule{"SLEEP", wants::none},
    rule{"CLRWDT", wants::none},       rule{"CLRW", wants::none},
    rule{"TRIS", wants::one},          rule{"MOVWF", wants::one},         rule{"CLRF", wants::one},
    rule{"SUBWF", wants::one_or_two},  rule{"DECF", wants::one_or_two},   rule{"IORWF", wants::one_or_two},
    rule{"ANDWF", wants::one_or_two},  rule{"XORWF", wants::one_or_two},  rule{"ADDWF", wants::one_or_two},
    rule{"MOVF", wants::one_or_two},   rule{"COMF", wants::one_or_two},   rule{"INCF", wants::one_or_two},
    rule{"DECFSZ", wants::one_or_two}, rule{"RRF", wants::one_or_two},    rule{"RLF", wants::one_or_two},
    rule{"SWAPF", wants::one_or_two},  rule{"INCFSZ", wants::one_or_two},
    rule{"BCF", wants::two},           rule{"BSF", wants::two},           rule{"BTFSC", wants::two},
    rule{"BTFSS", wants::two},
    rule{"RETLW", wants::one},         rule{"CALL", wants::one},          rule{"GOTO", wants::one},
    rule{"MOVLW", wants::one},         rule{"IORLW", wants::one},         rule{"ANDLW", wants::one},
    rule{"XORLW", wants::one},
    rule{"", wants::label},            rule{"FOO", wants::label},         rule{"MOVFW", wants::label},
    rule{"nop", wants::label},         rule{"NOP,", wants::label},
};
// clang-format on

bool accepted(wants operands, bool label, bool op1, bool op2) {
  switch (operands) {
    case wants::none: return !op1 && !op2;
    case wants::one: return op1 && !op2;
    case wants::one_or_two: return op1;
    case wants::two: return op1 && op2;
    case wants::equ: return label && op1 && !op2;
    case wants::org: return op1 && !op2;
    case wants::end: return !label && !op1 && !op2;
    case wants::label: return label;
  }
  return false;
}

TEST(checkline, asks_of_each_mnemonic_the_operands_it_wants) {
  for (const rule& r : rules)
    for (const std::string_view label : {"", "AQUI"})
      for (const std::string_view op1 : {"", "5", "CUENTA"})
        for (const std::string_view op2 : {"", "1", "W", "*"}) {
          std::string second(op2);
          EXPECT_EQ(checkline(label, r.mnemonic, op1, second),
                    accepted(r.operands, !label.empty(), !op1.empty(), !op2.empty()))
              << "[" << label << "] [" << r.mnemonic << "] [" << op1 << "] [" << op2 << "]";
        }
}

TEST(checkline, rewrites_the_destination_w_and_nothing_else) {
  for (const rule& r : rules)
    for (const std::string_view op2 : {"", "0", "1", "F", "*", "W1", "W"}) {
      std::string second(op2);
      (void)checkline("AQUI", r.mnemonic, "5", second);
      const bool destination = r.operands == wants::one_or_two && op2 == "W";
      EXPECT_EQ(second, destination ? "0" : op2) << "[" << r.mnemonic << "] [" << op2 << "]";
    }
}

TEST(numlike, holds_for_a_leading_digit_a_lone_comma_and_a_lone_w) {
  for (const std::string_view text : {"0", "9", "1ABC", "5Ñ", ",", "W"}) EXPECT_TRUE(numlike(text)) << text;
  for (const std::string_view text : {"", "A", "A1", "WW", "W1", "w", ",,", "A,", "Ñ", "-1", "/", ":"})
    EXPECT_FALSE(numlike(text)) << text;
}

TEST(tabmnem, divides_mnemonic_and_operands_by_a_tab) {
  EXPECT_EQ(tabmnem(""), "\t");
  EXPECT_EQ(tabmnem("NOP"), "NOP\t");
  EXPECT_EQ(tabmnem("MOVLW 10"), "MOVLW\t10");
  EXPECT_EQ(tabmnem("addwf   5 , w"), "addwf\t5 , w");
  EXPECT_EQ(tabmnem("X EQU 10"), "X\tEQU 10");
  // A tab counts as a blank.
  EXPECT_EQ(tabmnem("MOVLW\t \t10"), "MOVLW\t10");
}

}  // namespace
}  // namespace estructura
