// Sources and the words they give: lines, labels, EQU, ORG, END, symbols.
#include "asm/assembler.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "tests/support/expected_instructions.h"
#include "tests/unit/asm/result.h"

namespace estructura {
namespace {

using namespace support;
using testing::SizeIs;

TEST(assemble, an_empty_source_leaves_memory_unprogrammed) {
  for (const std::string_view source : {"", "\n", "\n\n", "   ", "; solo un comentario", "  \n;\n\t;x"}) {
    const assembly made = assemble(crlf(source), mask_2048);
    EXPECT_FALSE(made.error) << source;
    EXPECT_EQ(words_of(made), "") << source;
    EXPECT_THAT(made.symbols, SizeIs(0)) << source;
  }
}

TEST(assemble, every_mnemonic_encodes_its_base_word) {
  for (const expected_instruction& row : expected_instructions) {
    std::string line(row.mnemonic);
    int word = row.base;
    switch (row.operands) {
      case kind::none: break;
      case kind::port: line += " 6", word += 6; break;
      case kind::file: line += " 1B", word += 0x1B; break;
      case kind::file_dest: line += " 1B,W", word += 0x1B; break;
      case kind::file_bit: line += " 1B,5", word += 0x1B + 5 * 32; break;
      case kind::literal8: line += " 0A5", word += 0xA5; break;
      case kind::literal9: line += " 1A5", word += 0x1A5; break;
    }
    EXPECT_EQ(outcome(line), "000=" + hexstr(word, 3)) << line;
  }
}

TEST(assemble, labels_constants_and_numbers) {
  expect_outcomes(std::to_array<source_row>({
      {"START:\nGOTO START", "000=A00"},
      {"START: GOTO START", "000=A00"},
      {"NOP\nSTART:\n\n; nada\nGOTO START", "000=000 001=A01"},
      {"A:\nB:\nC: NOP\nGOTO A\nGOTO B\nGOTO C", "000=000 001=A00 002=A00 003=A00"},
      {"GOTO FIN\nNOP\nFIN: SLEEP", "000=A02 001=000 002=003"},
      {"X EQU 10\nMOVLW X", "000=C10"},
      {"X: EQU 10\nMOVLW X", "000=C10"},
      {"MOVLW X\nX EQU 10", "000=C10"},
      {"MOVLW 10", "000=C10"},
      {"MOVLW FF", "000=CFF"},
      {"MOVLW 0FF", "000=CFF"},
      {"X EQU 1\nMOVLW 0FF", "000=CFF"},
      {"CUENTA EQU 8\nMOVWF CUENTA\nDECFSZ CUENTA\nDECFSZ CUENTA,W\nDECFSZ CUENTA,1",
       "000=028 001=2E8 002=2C8 003=2E8"},
      {"PORTB EQU 6\nLED EQU 3\nBSF PORTB,LED", "000=566"},
      // A symbol that looks like a hexadecimal number is found where it does not begin with a digit.
      {"A EQU 5\nMOVLW A\nMOVLW 0A", "000=C05 001=C0A"},
  }));
}

TEST(assemble, an_operand_is_a_symbol_before_it_is_a_register_name) {
  expect_outcomes(std::to_array<source_row>({
      {"STATUS EQU 3\nZ EQU 2\nBSF STATUS,Z", "000=543"},
      // The names of the chip mean nothing by themselves; a source may give them any value.
      {"PCL EQU 9\nMOVWF PCL", "000=029"},
  }));
}

TEST(assemble, equ_takes_its_value_as_written) {
  expect_outcomes(std::to_array<source_row>({
      {"X EQU 10\nY EQU X\nMOVLW Y", "000=C00"},
      {"A EQU 5\nY EQU A\nMOVLW Y", "000=C0A"},
      {"X EQU 1FG\nMOVLW X", "000=C1F"},
      {"X EQU FF\nMOVLW X", "000=CFF"},
      {"X EQU 0A5\nMOVLW X", "000=CA5"},
      // EQU takes no address.
      {"NOP\nX EQU 10\nAQUI: GOTO AQUI", "000=000 001=A01"},
  }));
}

TEST(assemble, equ_takes_its_name_with_or_without_colon) {
  expect_outcomes(std::to_array<source_row>({
      {"X:EQU 10\nMOVLW X", "000=C10"},
      {"\tX\tEQU\t10\nMOVLW X", "000=C10"},
      {"EQU: EQU 7\nADDWF EQU,W", "000=1C7"},
      // With a colon the first word of the rest is no name.
      {"Y: X EQU 10", "1: Error en dirección."},
      {"X EQU", "1: Instrucción incorrecta."},
      {"X EQU ;10", "1: Instrucción incorrecta."},
      {"EQU 10", "1: Instrucción incorrecta."},
      {"X EQU 10,1", "1: Instrucción incorrecta."},
      {"X Y EQU 10", "1: Instrucción incorrecta."},
  }));
}

TEST(assemble, org_moves_the_address_counter) {
  expect_outcomes(std::to_array<source_row>({
      {"ORG 10\nNOP", "010=000"},
      {"ORG 7FF\nGOTO 0\nORG 0\nSLEEP", "000=003 7FF=A00"},
      {"ORG 10\nA: NOP\nORG 20\nGOTO A", "010=000 020=A10"},
      // A later statement at the same address wins.
      {"NOP\nORG 0\nSLEEP", "000=003"},
      // A label on an ORG line names the address before it.
      {"NOP\nL: ORG 20\nGOTO L", "000=000 020=A01"},
      // The first pass reads the operand as written, the last one as resolved.
      {"X EQU 10\nORG X\nA: NOP\nGOTO A", "010=000 011=A00"},
      {"X EQU 10\nORG Y\nNOP", "000=000"},
      // An ORG that nothing follows may stand anywhere.
      {"NOP\nORG 0FFF", "000=000"},
      {"NOP\nORG FFFF", "000=000"},
  }));
}

TEST(assemble, end_stops_the_words_but_not_the_checks) {
  expect_outcomes(std::to_array<source_row>({
      {"NOP\nEND\nNOP", "000=000"},
      {"END", ""},
      {"END ; hasta aquí", ""},
      // Labels behind it have their address; END itself takes none, what follows does.
      {"GOTO L\nEND\nL: NOP", "000=A01"},
      {"GOTO L\nEND\nNOP\nL: NOP", "000=A02"},
      {"MOVLW X\nEND\nX EQU 12", "000=C12"},
      // Not encoded, so not looked at by the encoder.
      {"NOP\nEND\nMOVLW 100", "000=000"},
      {"NOP\nEND\nL: FOO", "000=000"},
      {"NOP\nEND\nFOO", "3: Instrucción incorrecta."},
      {"NOP\nEND\n1A: NOP", "3: Nombre de etiqueta erróneo."},
      {"NOP\nEND\nMOVWF STATUS", "3: Operando incorrecto."},
      {"L: END", "1: Instrucción incorrecta."},
      {"END 5", "1: Instrucción incorrecta."},
      {"END 5,6", "1: Instrucción incorrecta."},
  }));
}

TEST(assemble, the_destination) {
  expect_outcomes(std::to_array<source_row>({
      {"ADDWF 5,W", "000=1C5"},
      {"ADDWF 5,0", "000=1C5"},
      {"ADDWF 5,1", "000=1E5"},
      {"ADDWF 5", "000=1E5"},
      {"ADDWF 5 , w ; a W", "000=1C5"},
      {"X EQU 1\nADDWF 5,W", "000=1C5"},
      {"ADDWF 5,F", "1: Error en dirección."},
      // An unknown name becomes nothing as soon as there is a symbol, and nothing means the file.
      {"X EQU 1\nADDWF 5,F", "000=1E5"},
      {"X EQU 1\nADDWF 5,", "000=1E5"},
      {"ADDWF 5,", "1: Operando incorrecto."},
      {"ADDWF 5,W,1", "1: Operando incorrecto."},
      {"X EQU 1\nADDWF 5,W,1", "000=1E5"},
      {"D EQU 0\nADDWF 5,D", "000=1C5"},
      {"ADDWF ,W", "1: Instrucción incorrecta."},
  }));
}

TEST(assemble, bits_of_several_digits_count_whole) {
  expect_outcomes(std::to_array<source_row>({
      {"BCF 5,12", "000=645"},
      {"BCF 5,234", "000=4A85"},
      {"BCF 5,8", "1: Error en dirección."},
      {"BCF 5,456", "1: Error en dirección."},
  }));
}

TEST(assemble, blanks_and_tabs_may_stand_between_the_parts) {
  expect_outcomes(std::to_array<source_row>({
      {"   MOVLW    10   ", "000=C10"},
      {"\tMOVLW\t10\t", "000=C10"},
      {" \t L \t : \t ADDWF \t 5 \t , \t W \t ; x", "000=1C5"},
      {"L:NOP", "000=000"},
      {"L:;nada\nGOTO L", "000=A00"},
      {"NOP;pegado", "000=000"},
      {"MOVLW 10;pegado", "000=C10"},
      {": NOP", "000=000"},
      {"NOP ; un : y una , detrás", "000=000"},
      // Blanks within a name are part of it.
      {"DOS PALABRAS: NOP\nGOTO DOS PALABRAS", "000=000 001=A00"},
  }));
}

TEST(assemble, case_does_not_matter_and_spanish_letters_have_both) {
  expect_outcomes(std::to_array<source_row>({
      {"start: goto Start", "000=A00"},
      {"x equ 0a\nmovlw X", "000=C0A"},
      {"addwf 1f,w", "000=1DF"},
      {"añoüíóúéá: nop\ngoto AÑOÜÍÓÚÉÁ", "000=000 001=A00"},
      {"AÑO EQU 5\nMOVLW año", "000=C05"},
      {"ÁRBOL: NOP\nárbol: NOP", "2: Etiqueta repetida."},
      {"end\nnop", ""},
  }));
}

TEST(assemble, the_last_line_needs_no_end) {
  EXPECT_EQ(words_of(assemble("NOP\r\nMOVLW 5", mask_2048)), "000=000 001=C05");
  EXPECT_EQ(words_of(assemble("NOP\r\nMOVLW 5\r\n", mask_2048)), "000=000 001=C05");
}

TEST(assemble, symbols_stand_in_order_of_definition_with_their_values) {
  const assembly made = assemble(crlf("X EQU 1F\nNOP\nb:\nA: NOP\nL: ORG 40\nÑ: NOP\nM EQU FFFF"), mask_2048);
  ASSERT_FALSE(made.error) << made.error->message;
  ASSERT_THAT(made.symbols, SizeIs(6));
  const std::array<std::pair<std::string, int>, 6> wanted = {
      {{"X", 0x1F}, {"B", 1}, {"A", 1}, {"L", 2}, {"Ñ", 0x40}, {"M", -1}}};
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    EXPECT_EQ(made.symbols[i].name, wanted[i].first);
    EXPECT_EQ(made.symbols[i].value, wanted[i].second) << wanted[i].first;
  }
}

TEST(assemble, the_value_of_a_symbol_is_written_without_leading_zeros) {
  expect_outcomes(std::to_array<source_row>({
      // A bit must be one digit to be that bit: 05 would be none.
      {"B EQU 05\nBSF 3,B", "000=5A3"},
      {"B EQU 0\nBSF 3,B", "000=503"},
      {"X EQU FFFF\nMOVLW X", "2: Error en dirección."},
      {"X EQU 8000\nMOVLW X", "2: Error en dirección."},
  }));
}

TEST(assemble, memory_ends_at_the_last_word_of_the_device) {
  for (const int mask : {mask_512, mask_1024, mask_2048}) {
    const std::string last = hexstr(mask, 3);
    EXPECT_EQ(outcome("ORG " + last + "\nNOP", mask), last + "=000");
    EXPECT_EQ(outcome("ORG " + last + "\nNOP\nNOP", mask), "3: Alcanzado el final de la memoria.");
    EXPECT_EQ(outcome("ORG " + last + "\nNOP\nL:\nEND", mask), last + "=000");
  }
}

TEST(assemble, a_full_memory_of_labelled_lines) {
  std::string source;
  for (int a = 0; a <= mask_2048; ++a)
    source +=
        "L" + std::to_string(a) + ": MOVLW " + hexstr(a & 0xFF, 3) + " ; línea " + std::to_string(a) + "\r\n";
  const assembly made = assemble(source, mask_2048);
  ASSERT_FALSE(made.error) << made.error->message;
  for (int a = 0; a <= mask_2048; ++a) ASSERT_EQ(made.image[a], 0xC00 + (a & 0xFF)) << a;
  ASSERT_THAT(made.symbols, SizeIs(2048));
  EXPECT_EQ(made.symbols.back().value, 0x7FF);
}

TEST(assemble, twenty_thousand_symbols) {
  std::string source;
  for (int i = 0; i < 20000; ++i) source += "S" + std::to_string(i) + " EQU " + hexstr(i, 4) + "\r\n";
  source += "MOVLW S255\r\nGOTO S511\r\n";
  const assembly made = assemble(source, mask_2048);
  ASSERT_FALSE(made.error) << made.error->message;
  EXPECT_EQ(words_of(made), "000=CFF 001=BFF");
  EXPECT_THAT(made.symbols, SizeIs(20000));
}

TEST(assemble, a_source_of_any_bytes_gives_words_or_an_error) {
  EXPECT_EQ(outcome(std::string("NOP\0", 4)), "1: Instrucción incorrecta.");
  EXPECT_EQ(outcome(std::string("L\0: NOP\nGOTO L\0", 15)), "000=000 001=A00");
  EXPECT_EQ(outcome("\xFF\xFE\x80"), "1: Instrucción incorrecta.");
  EXPECT_EQ(outcome("\xC3: NOP\nGOTO \xC3"), "000=000 001=A00");
  EXPECT_EQ(outcome(std::string(1'000'000, 'X')), "1: Instrucción incorrecta.");
  EXPECT_EQ(outcome(std::string(1'000'000, ':')), "1: Instrucción incorrecta.");
  EXPECT_EQ(outcome("L:" + std::string(1'000'000, ' ') + "NOP"), "000=000");
  EXPECT_EQ(outcome("ADDWF 5" + std::string(1'000'000, ',')), "1: Operando incorrecto.");
}

}  // namespace
}  // namespace estructura
