// How a line of source is cut for its colours, in bytes.
#include "ui/highlight.h"

#include <gtest/gtest.h>
#include <ostream>
#include <vector>

namespace estructura {

void PrintTo(const source_piece& piece, std::ostream* out) {
  *out << '{' << piece.start << ", " << piece.length << ", " << static_cast<int>(piece.is) << '}';
}

namespace {

using enum source_part;

struct cut_line {
  const char* line;
  std::vector<source_piece> pieces;
};

const cut_line lines[] = {
    {"", {}},
    {"   \t ", {}},
    {"  movlw 1f", {{2, 5, mnemonic}, {8, 2, number}}},
    {"BUCLE: GOTO BUCLE", {{0, 6, label}, {7, 4, mnemonic}}},
    // A letter beyond ASCII takes two bytes.
    {"a\xC3\xB1o : NOP ; \xC3\xB1", {{0, 6, label}, {7, 3, mnemonic}, {11, 4, comment}}},
    {"BSF 3 , 2", {{0, 3, mnemonic}, {4, 1, number}, {8, 1, number}}},
    {"ORG 7FF", {{0, 3, directive}, {4, 3, number}}},
    // EQU defines the word before it, with or without a colon.
    {"X EQU 10", {{0, 1, label}, {2, 3, directive}, {6, 2, number}}},
    {"X: EQU 10", {{0, 2, label}, {3, 3, directive}, {7, 2, number}}},
    // A number begins with a decimal digit and holds nothing but hexadecimal ones.
    {"MOVLW FF", {{0, 5, mnemonic}}},
    {"MOVLW 1G", {{0, 5, mnemonic}}},
    // A colon in the comment makes no label.
    {"NOP ; a: b", {{0, 3, mnemonic}, {4, 6, comment}}},
    {"NOP", {{0, 3, mnemonic}}},
    {"\tMOVLW\t0FF\t; todo", {{1, 5, mnemonic}, {7, 3, number}, {11, 6, comment}}},
    {"SOLA:", {{0, 5, label}}},
    {"ADDWF 5 , W", {{0, 5, mnemonic}, {6, 1, number}}},
    {"BSF 3,2", {{0, 3, mnemonic}, {4, 1, number}, {6, 1, number}}},
    // The first comma alone divides.
    {"BSF 3,2,1", {{0, 3, mnemonic}, {4, 1, number}}},
    {"end", {{0, 3, directive}}},
    // A word of the language is no name there.
    {"  nop equ 1", {{2, 3, mnemonic}}},
    {"MOVLW EQU", {{0, 5, mnemonic}}},
    {"equ equ 1", {{0, 3, directive}}},
    {": NOP", {{0, 1, label}, {2, 3, mnemonic}}},
    {"MOVLW 0x10", {{0, 5, mnemonic}}},
    // What is no instruction is left as it is: nothing tells that it is one.
    {"MOVLV 10", {{6, 2, number}}},
    {"ETIQ NOP", {}},
    {"; MOVLW 10 : x", {{0, 14, comment}}},
    {"NOP;x", {{0, 3, mnemonic}, {3, 2, comment}}},
};

TEST(highlight, cuts_a_line_as_the_assembler_does) {
  for (const cut_line& row : lines) EXPECT_EQ(highlight(row.line), row.pieces) << row.line;
}

}  // namespace

}  // namespace estructura
