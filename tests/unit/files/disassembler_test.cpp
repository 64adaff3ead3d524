// The text of every word, and the lines of the program list.
#include "files/disassembler.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/memory.h"

namespace estructura {
namespace {

std::string figures(int value, int digits) {
  std::string text;
  for (; digits > 0; --digits, value /= 16) text.insert(text.begin(), "0123456789ABCDEF"[value % 16]);
  return text;
}

// The text as the list of encodings gives it, from the three nibbles of the word. Written apart from the
// instruction table on purpose.
std::string text_of_nibbles(int h, int m, int l) {
  const std::string f = figures((m % 2) * 16 + l, 2);
  const std::string fd = f + ((m / 2) % 2 == 0 ? ",W" : "");
  const std::string fb = f + "," + figures(m / 2, 1);
  const std::string k = figures(m * 16 + l, 2);
  switch (h) {
    case 0:
      if (m == 0 && l == 0) return "NOP";
      if (m == 0 && l == 2) return "OPTION";
      if (m == 0 && l == 3) return "SLEEP";
      if (m == 0 && l == 4) return "CLRWDT";
      if (m == 0 && l >= 5 && l <= 7) return "TRIS " + figures(l, 1);
      if (m == 2 || m == 3) return "MOVWF " + f;
      if (m == 4 && l == 0) return "CLRW";
      if (m == 6 || m == 7) return "CLRF " + f;
      if (m >= 8 && m <= 11) return "SUBWF " + fd;
      if (m >= 12) return "DECF " + fd;
      return "???";
    case 1:
      return std::vector<std::string>{"IORWF ", "ANDWF ", "XORWF ", "ADDWF "}.at(
                 static_cast<std::size_t>(m / 4)) +
             fd;
    case 2:
      return std::vector<std::string>{"MOVF ", "COMF ", "INCF ", "DECFSZ "}.at(
                 static_cast<std::size_t>(m / 4)) +
             fd;
    case 3:
      return std::vector<std::string>{"RRF ", "RLF ", "SWAPF ", "INCFSZ "}.at(
                 static_cast<std::size_t>(m / 4)) +
             fd;
    case 4: return "BCF " + fb;
    case 5: return "BSF " + fb;
    case 6: return "BTFSC " + fb;
    case 7: return "BTFSS " + fb;
    case 8: return "RETLW " + k;
    case 9: return "CALL 0" + k;
    case 10:
    case 11: return "GOTO " + figures((h % 2) * 256 + m * 16 + l, 3);
    case 12: return "MOVLW " + k;
    case 13: return "IORLW " + k;
    case 14: return "ANDLW " + k;
    default: return "XORLW " + k;
  }
}

TEST(deshex, gives_every_word_its_text) {
  for (int word = 0; word < 4096; ++word)
    EXPECT_EQ(deshex(word), text_of_nibbles(word / 256, word / 16 % 16, word % 16)) << std::hex << word;
}

TEST(deshex, writes_words_as_people_read_them) {
  struct row {
    int word;
    const char* text;
  };
  const std::vector<row> rows = {
      {0x1C5, "ADDWF 05,W"}, {0x1E5, "ADDWF 05"}, {0x5A3, "BSF 03,5"}, {0x905, "CALL 005"},
      {0xBFF, "GOTO 1FF"},   {0xCFF, "MOVLW FF"}, {0x006, "TRIS 6"},   {0x001, "???"},
      {0x8A0, "RETLW A0"},   {0x46A, "BCF 0A,3"}, {0x000, "NOP"},      {0x040, "CLRW"},
      {0x03F, "MOVWF 1F"},   {0x041, "???"},      {0x010, "???"},
  };
  for (const row& r : rows) EXPECT_EQ(deshex(r.word), r.text) << std::hex << r.word;
}

TEST(deshex, has_no_text_for_a_word_of_more_than_12_bits) {
  // BCF 5,234 typed into a source makes such a word; the machine does nothing with it either.
  for (const int word : {0x1000, 0x1CFF, 0x4A85, 0x7FFF}) EXPECT_EQ(deshex(word), "???") << std::hex << word;
}

TEST(lineaprog, shows_mark_address_word_and_text) {
  struct row {
    int address;
    int word;
    bool breakpoint;
    const char* line;
  };
  const std::vector<row> rows = {
      {0x01F, 0xA05, false, " 01F\tA05\tGOTO 005"}, {0x01F, 0xA05, true, "*01F\tA05\tGOTO 005"},
      {0x000, 0x000, false, " 000\t000\tNOP"},      {0x7FF, unprogrammed, false, " 7FF\t???"},
      {0x000, unprogrammed, true, "*000\t???"},     {0x100, 0x001, false, " 100\t001\t???"},
      {0x2AB, 0xCFF, false, " 2AB\tCFF\tMOVLW FF"}, {0x005, 0x4A85, false, " 005\tA85\t???"},
  };
  for (const row& r : rows) {
    chipstate chip = support::empty_chip();
    support::put(chip, r.address, {r.word});
    chip.breakpts[r.address] = r.breakpoint ? 1 : 0;
    const chipstate before = chip;
    EXPECT_EQ(lineaprog(chip, r.address), r.line);
    EXPECT_EQ(chip, before);
  }
}

TEST(lineaprog, faults_beyond_program_memory) {
  const chipstate chip = support::empty_chip();
  EXPECT_THROW((void)lineaprog(chip, 2048), machine_fault);
  EXPECT_THROW((void)lineaprog(chip, -1), machine_fault);
}

}  // namespace
}  // namespace estructura
