// Every message of the assembler, which of several is the one reported, and the place it names.
#include <array>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "asm/assembler.h"
#include "tests/unit/asm/result.h"

namespace estructura {
namespace {

using namespace support;

TEST(assembly_errors, operands_that_do_not_suit_the_mnemonic) {
  for (const std::string_view line :
       {"FOO",    "FOO 5",     "5",           ":",       " : ",      ",",        "*",       "NOP 5",
        "NOP ,5", "NOP ,",     "OPTION 1",    "SLEEP 0", "CLRWDT W", "CLRW 5",   "TRIS",    "TRIS 5,6",
        "MOVWF",  "MOVWF 5,1", "MOVWF 5,",    "CLRF",    "ADDWF",    "ADDWF ,",  "INCF ,1", "BCF",
        "BCF 3",  "BSF ,3",    "BTFSS 3 ;,4", "MOVLW",   "MOVLW 5,", "MOVLW ,5", "GOTO",    "GOTO 5,1",
        "CALL",   "ORG",       "ORG ,5",      "ORG 5,5", "L: ORG",   "L: NOP 5", "L: MOVLW"})
    EXPECT_EQ(outcome(line), "1: Instrucción incorrecta.") << line;
}

TEST(assembly_errors, names_that_a_label_cannot_have) {
  expect_outcomes(std::to_array<source_row>({
      {"1ABC: NOP", "1: Nombre de etiqueta erróneo."},
      {"0:", "1: Nombre de etiqueta erróneo."},
      {"9 EQU 1", "1: Nombre de etiqueta erróneo."},
      {"W: NOP", "1: Nombre de etiqueta erróneo."},
      {"w:EQU 5", "1: Nombre de etiqueta erróneo."},
      {"W EQU 5", "1: Nombre de etiqueta erróneo."},
      {",: NOP", "1: Nombre de etiqueta erróneo."},
      {"NOP\nNOP\n7: NOP", "3: Nombre de etiqueta erróneo."},
      {"W1: NOP", "000=000"},
      {"ABC: NOP", "000=000"},
  }));
}

TEST(assembly_errors, labels_that_stand_twice) {
  expect_outcomes(std::to_array<source_row>({
      {"A: NOP\nA: NOP", "2: Etiqueta repetida."},
      {"A: NOP\na:", "2: Etiqueta repetida."},
      {"A EQU 1\nNOP\nA EQU 1", "3: Etiqueta repetida."},
      {"A EQU 1\nNOP\nA: NOP", "3: Etiqueta repetida."},
      {"A: NOP\nEND\nA: NOP", "3: Etiqueta repetida."},
      {"A: NOP\nAA: NOP", "000=000 001=000"},
  }));
}

TEST(assembly_errors, unknown_names_without_and_with_symbols) {
  expect_outcomes(std::to_array<source_row>({
      {"MOVWF STATUS", "1: Operando incorrecto."},
      {"MOVLW 10H", "1: Operando incorrecto."},
      {"MOVLW 1 0", "1: Operando incorrecto."},
      {"MOVLW W", "1: Operando incorrecto."},
      {"ADDWF W", "1: Operando incorrecto."},
      {"BSF 3,Z", "1: Operando incorrecto."},
      {"BSF STATUS,2", "1: Operando incorrecto."},
      {"ORG AQUI", "1: Operando incorrecto."},
      {"BCF 3,", "1: Operando incorrecto."},
      // W passes for a second operand there, and is no bit for the encoder.
      {"BCF 3,W", "1: Error en dirección."},
      {"X EQU 1\nMOVLW FF", "2: Error en dirección."},
      {"X EQU 1\nMOVWF STATUS", "2: Error en dirección."},
      {"X EQU 1\nMOVLW 10H", "2: Error en dirección."},
      {"X EQU 1\nBSF 3,Z", "2: Error en dirección."},
      {"X EQU 1\nBCF 3,", "2: Error en dirección."},
      {"X EQU 1\nBCF 3,W", "2: Error en dirección."},
      {"MOVWF STATUS\nX EQU 1", "1: Error en dirección."},
  }));
}

TEST(assembly_errors, what_the_encoder_refuses) {
  expect_outcomes(std::to_array<source_row>({
      {"L: FOO", "1: Error en dirección."},
      {"L: FOO 5,6", "1: Error en dirección."},
      {"NOP:5", "1: Error en dirección."},
      {"A:B: NOP", "1: Error en dirección."},
      {"MOVWF 20", "1: Error en dirección."},
      {"TRIS 4", "1: Error en dirección."},
      {"TRIS 8", "1: Error en dirección."},
      {"MOVLW 100", "1: Error en dirección."},
      {"CALL 100", "1: Error en dirección."},
      {"GOTO 200", "1: Error en dirección."},
      {"ADDWF 5,2", "1: Error en dirección."},
      {"MOVLW 123456", "1: Error en dirección."},
      {"NOP\nNOP\nL: GOTO M\nM EQU 200", "3: Error en dirección."},
  }));
}

TEST(assembly_errors, an_origin_outside_every_memory) {
  expect_outcomes(std::to_array<source_row>({
      {"ORG 1FF\nNOP\nNOP", "3: Alcanzado el final de la memoria.", mask_512},
      {"ORG 200\nNOP", "2: Alcanzado el final de la memoria.", mask_512},
      {"ORG 200\nNOP", "200=000", mask_1024},
      {"ORG 800\nNOP", "2: Alcanzado el final de la memoria."},
      {"ORG 7FFF\nNOP", "2: Alcanzado el final de la memoria."},
      // Sixteen bits with the top one set read as a negative number.
      {"ORG FFFF\nNOP", "2: Error en dirección."},
      {"ORG 8000\nL:\n\n\nNOP", "5: Error en dirección."},
      // The end of memory is looked at before the instruction.
      {"ORG 800\nMOVLW 100", "2: Alcanzado el final de la memoria."},
  }));
}

TEST(assembly_errors, numbers_of_more_than_16_bits_in_a_directive) {
  expect_outcomes(std::to_array<source_row>({
      {"X EQU 12345", "1: Operando incorrecto."},
      {"ORG 12345", "1: Operando incorrecto."},
      {"NOP\nORG 10000\nNOP", "2: Operando incorrecto."},
      {"X EQU 1\nORG 12345", "2: Operando incorrecto."},
      {"L: ORG 12345\nNOP", "1: Operando incorrecto."},
      // Its leading digits are what counts, whatever they stand before, and END ends no pass but the last.
      {"X EQU 1\nORG 12345H", "2: Operando incorrecto."},
      {"ABCDEF: NOP\nORG ABCDEF", "2: Operando incorrecto."},
      {"END\nORG 12345", "2: Operando incorrecto."},
      {"ORG 0000001F\nNOP", "01F=000"},
      // As EQU's it is met before any operand is resolved, and after the shapes of all lines.
      {"MOVLW Q\nORG 12345", "2: Operando incorrecto."},
      {"ORG 12345\nFOO", "2: Instrucción incorrecta."},
      {"ORG 12345\nA: NOP\nA: NOP", "1: Operando incorrecto."},
  }));
}

TEST(assembly_errors, a_word_of_the_language_is_no_name_before_EQU) {
  expect_outcomes(std::to_array<source_row>({
      {"MOVLW EQU", "1: Operando incorrecto."},
      {"X EQU 1\nmovlw equ", "2: Error en dirección."},
      {"EQU: NOP\nGOTO EQU", "000=000 001=A00"},
      {"MOVLW EQU 10", "1: Operando incorrecto."},
      {"NOP EQU 1", "1: Instrucción incorrecta."},
      {"ORG EQU 1", "1: Operando incorrecto."},
      {"EQU EQU 1", "1: Instrucción incorrecta."},
      {"END EQU 1", "1: Instrucción incorrecta."},
      // With its colon any word is one.
      {"NOP: EQU 10\nMOVLW NOP", "000=C10"},
      {"MOVLWS EQU 10\nMOVLW MOVLWS", "000=C10"},
  }));
}

TEST(assembly_errors, an_earlier_pass_wins_whatever_the_lines) {
  expect_outcomes(std::to_array<source_row>({
      {"W: NOP\nFOO", "2: Instrucción incorrecta."},
      {"MOVWF STATUS\n1A: NOP", "2: Nombre de etiqueta erróneo."},
      {"MOVWF STATUS\nA: NOP\nA: NOP", "3: Etiqueta repetida."},
      {"ORG 7FF\nNOP\nNOP\nMOVWF STATUS", "4: Operando incorrecto."},
      {"MOVLW 100\nMOVWF STATUS", "2: Operando incorrecto."},
      {"MOVLW 100\nORG 800\nNOP", "1: Error en dirección."},
  }));
}

TEST(assembly_errors, of_one_pass_the_first_line_wins) {
  expect_outcomes(std::to_array<source_row>({
      {"\nFOO\nBAR", "2: Instrucción incorrecta."},
      {"A: NOP\nA: NOP\nW: NOP", "2: Etiqueta repetida."},
      {"MOVLW Q\nMOVLW R", "1: Operando incorrecto."},
      {"L: MOVLW 100\nGOTO 200", "1: Error en dirección."},
  }));
}

// --- Places: characters from the start of the text, a line end being two of them.

struct place_row {
  std::string_view lines;
  std::size_t line;
  std::size_t start;
  std::size_t length;
};

TEST(assembly_errors, name_the_whole_line_as_typed) {
  constexpr auto rows = std::to_array<place_row>({
      {"FOO", 1, 0, 3},
      {"FOO\n", 1, 0, 3},
      {"NOP\nFOO\nNOP", 2, 5, 3},
      {"\n\n\n  foo 5 ; y más \n", 4, 6, 16},
      {"; cabecera\n\nNOP ; uno\nMOVLW Q ; dos\n", 4, 25, 13},
      // Letters of two, three and four bytes count one each, before the line and in it.
      {"; ñandú €😀\nÁÉ: NOP\nMOVLW ZZ ; ó\n", 3, 21, 12},
      {"; ááááááááá\nFOO ñ", 2, 13, 5},
      {"; 😀😀\nA: NOP\nA: NOP ; 😀", 3, 14, 10},
      // So does every byte of what is no letter at all.
      {"; \xFF\xFE\x80\nFOO\xC3", 2, 7, 4},
      {"\t;\t\n\tFOO\t", 2, 5, 5},
  });
  for (const place_row& row : rows) {
    const assembly made = assemble(crlf(row.lines), mask_2048);
    ASSERT_TRUE(made.error) << row.lines;
    EXPECT_EQ(made.error->line, row.line) << row.lines;
    EXPECT_EQ(made.error->start, row.start) << row.lines;
    EXPECT_EQ(made.error->length, row.length) << row.lines;
  }
}

TEST(assembly_errors, each_message_has_its_place) {
  struct message_row {
    std::string_view lines;
    std::string_view message;
  };
  // The third line is the wrong one, 13 characters into the text, 9 long.
  constexpr auto rows = std::to_array<message_row>({
      {"É: NOP\nNOP\nFOO ; oh!\n", "Instrucción incorrecta."},
      {"É: NOP\nNOP\n1: NOP ;Ñ\n", "Nombre de etiqueta erróneo."},
      {"É: NOP\nNOP\né: NOP ;Ñ\n", "Etiqueta repetida."},
      {"; ó ñú\nNOP\nMOVLW  ÑQ\n", "Operando incorrecto."},
      {"É: NOP\nNOP\nMOVLW  ÑQ\n", "Error en dirección."},
      {"ÉÉ:NOP\nNOP\nMOVLW 0FF\n", "Alcanzado el final de la memoria."},
  });
  for (const message_row& row : rows) {
    // Only two words fit the last row's memory.
    const int mask = row.message == "Alcanzado el final de la memoria." ? 1 : mask_2048;
    const assembly made = assemble(crlf(row.lines), mask);
    ASSERT_TRUE(made.error) << row.message;
    EXPECT_EQ(made.error->message, row.message);
    EXPECT_EQ(made.error->line, 3U) << row.message;
    EXPECT_EQ(made.error->start, 13U) << row.message;
    EXPECT_EQ(made.error->length, 9U) << row.message;
  }
}

TEST(assembly_errors, tell_whether_the_listing_was_empty_by_then) {
  const auto while_encoding = [](std::string_view lines) {
    const assembly made = assemble(crlf(lines), mask_512);
    return made.error && made.error->while_encoding;
  };
  EXPECT_FALSE(while_encoding("FOO"));
  EXPECT_FALSE(while_encoding("W: NOP"));
  EXPECT_FALSE(while_encoding("A:\nA:"));
  EXPECT_FALSE(while_encoding("MOVLW Q"));
  EXPECT_TRUE(while_encoding("MOVLW 100"));
  EXPECT_TRUE(while_encoding("ORG 200\nNOP"));
  EXPECT_TRUE(while_encoding("ORG FFFF\nNOP"));
}

TEST(assembly_errors, places_go_beyond_16_bits) {
  const assembly empty_lines = assemble(crlf(std::string(40'000, '\n') + "FOO"), mask_2048);
  ASSERT_TRUE(empty_lines.error);
  EXPECT_EQ(empty_lines.error->line, 40'001U);
  EXPECT_EQ(empty_lines.error->start, 80'000U);
  const assembly accents = assemble("; " + std::string(1'000'000, 'a') + "ñ\r\nFOO\r\n", mask_2048);
  ASSERT_TRUE(accents.error);
  EXPECT_EQ(accents.error->start, 1'000'005U);
}

TEST(assembly_errors, leave_no_listing_behind) {
  for (const std::string_view lines : {"NOP\nFOO", "A: NOP\nA: NOP", "NOP\nMOVLW Q", "NOP\nMOVLW 100"})
    EXPECT_EQ(assemble(crlf(lines), mask_2048).listing, "") << lines;
}

}  // namespace
}  // namespace estructura
