// The listing, to the byte.
#include <array>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "asm/assembler.h"
#include "tests/unit/asm/result.h"

namespace estructura {
namespace {

using namespace support;

constexpr std::string_view rule = "------------------------------------------------------------------\r\n";

std::string listing(std::string_view lines) {
  return assemble(crlf(lines), mask_2048).listing;
}

// The two sections between their rules; each of the texts with "\n" for a line end.
std::string sections(std::string_view code, std::string_view symbols = "") {
  const std::string r(rule);
  return r + "\tCÓDIGO\r\n" + r + crlf(code) + r + "\tSIMBOLOS\r\n" + r + crlf(symbols) + r;
}

TEST(listing, the_rule_is_66_long) {
  EXPECT_EQ(rule.size(), 66U + 2U);
}

TEST(listing, of_an_empty_source_holds_a_tab) {
  EXPECT_EQ(listing(""), sections("\t\n"));
  EXPECT_EQ(listing("\n\n"), sections("\t\n\t\n"));
}

struct code_row {
  std::string_view line;
  std::string_view listed;
};

TEST(listing, of_one_line) {
  constexpr auto rows = std::to_array<code_row>({
      // address, code, then label, mnemonic and operands in columns
      {"NOP", "000  000\t\tNOP\t\n"},
      {"  movlw   10  ", "000  C10\t\tmovlw\t10\n"},
      {"addwf 5 , w", "000  1C5\t\taddwf\t5 , w\n"},
      {"\tADDWF\t5,\tW", "000  1C5\t\tADDWF\t5,\tW\n"},
      // the comment behind a tab, beginning with its ";"
      {"NOP ;  nada ", "000  000\t\tNOP\t\t;  nada\n"},
      {"NOP;;x", "000  000\t\tNOP\t\t;;x\n"},
      {"MOVLW 5   ; más", "000  C05\t\tMOVLW\t5\t; más\n"},
      // a label alone, in each of its looks, has its address and no code
      // (checked with symbols below)
      // directives have neither
      {"ORG 10", "\t\tORG\t10\n"},
      {"END", "\t\tEND\t\n"},
      {"END ; ya", "\t\tEND\t\t; ya\n"},
      // lines without statement keep the blanks at their end
      {"; uno", "\t; uno\n"},
      {"   ; uno  ", "\t; uno  \n"},
      {"  \t  ", "\t\n"},
      {" \t ;\t ", "\t;\t \n"},
      // a colon in a comment divides the line too
      {"NOP ; nota: x y z", "000  000\tNOP ; nota:\tx\ty z\n"},
      {"NOP ; nota:", "000  000\tNOP ; nota:\t\t\n"},
      {"NOP ; a: b ; c", "000  000\tNOP ; a:\tb\t\t; c\n"},
      // a code beyond 12 bits shows its low digits
      {"BCF 5,234", "000  A85\t\tBCF\t5,234\n"},
  });
  for (const code_row& row : rows) EXPECT_EQ(listing(row.line), sections(row.listed)) << row.line;
}

TEST(listing, of_lines_with_labels) {
  EXPECT_EQ(listing("Aquí:"), sections("000  \tAquí:\t\t\n", "\tAQUÍ\t= 000\n"));
  EXPECT_EQ(listing("  Aquí : ; yo"), sections("000  \tAquí :\t\t\t; yo\n", "\tAQUÍ\t= 000\n"));
  EXPECT_EQ(listing("a:nop"), sections("000  000\ta:\tnop\t\n", "\tA\t= 000\n"));
  EXPECT_EQ(listing("a:  goto  a;b"), sections("000  A00\ta:\tgoto\ta\t;b\n", "\tA\t= 000\n"));
  EXPECT_EQ(listing("x: equ 1f"), sections("\tx:\tequ\t1f\n", "\tX\t= 01F\n"));
  // Without a colon the name is no label for the layout.
  EXPECT_EQ(listing("x equ 1f ; n"), sections("\t\tx\tequ 1f\t; n\n", "\tX\t= 01F\n"));
  EXPECT_EQ(listing("l: org 20"), sections("\tl:\torg\t20\n", "\tL\t= 000\n"));
}

TEST(listing, symbols_show_three_digits_in_order_of_definition) {
  EXPECT_EQ(listing("Z EQU FFFF\nA EQU 1234\nM EQU 5\nÑ: NOP"),
            sections("\t\tZ\tEQU FFFF\n\t\tA\tEQU 1234\n\t\tM\tEQU 5\n000  000\tÑ:\tNOP\t\n",
                     "\tZ\t= FFF\n\tA\t= 234\n\tM\t= 005\n\tÑ\t= 000\n"));
}

TEST(listing, nothing_behind_end_has_address_or_code) {
  EXPECT_EQ(listing("NOP\nEND\nNOP\nL:\n; fin"),
            sections("000  000\t\tNOP\t\n\t\tEND\t\n\t\tNOP\t\n\tL:\t\t\n\t; fin\n", "\tL\t= 002\n"));
}

TEST(listing, of_a_whole_program) {
  EXPECT_EQ(listing("; Parpadeo\n"
                    "\n"
                    "puertob EQU 6\n"
                    "        ORG 7ff\n"
                    "        goto Inicio\n"
                    "        ORG 0\n"
                    "Inicio: movlw 0      ; todo salidas\n"
                    "        tris 6\n"
                    "bucle:\n"
                    "        comf puertob\n"
                    "        goto bucle   ; sin fin\n"
                    "   \n"
                    "        end\n"),
            sections("\t; Parpadeo\n"
                     "\t\n"
                     "\t\tpuertob\tEQU 6\n"
                     "\t\tORG\t7ff\n"
                     "7FF  A00\t\tgoto\tInicio\n"
                     "\t\tORG\t0\n"
                     "000  C00\tInicio:\tmovlw\t0\t; todo salidas\n"
                     "001  006\t\ttris\t6\n"
                     "002  \tbucle:\t\t\n"
                     "002  266\t\tcomf\tpuertob\n"
                     "003  A02\t\tgoto\tbucle\t; sin fin\n"
                     "\t\n"
                     "\t\tend\t\n",
                     "\tPUERTOB\t= 006\n"
                     "\tINICIO\t= 000\n"
                     "\tBUCLE\t= 002\n"));
}

TEST(listing, a_missing_last_line_end_makes_no_difference) {
  EXPECT_EQ(assemble("NOP", mask_2048).listing, assemble("NOP\r\n", mask_2048).listing);
}

}  // namespace
}  // namespace estructura
