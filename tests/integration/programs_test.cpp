// Programs that another assembler wrote load as they are meant, and are written back as they came.
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "files/disassembler.h"
#include "files/hex.h"
#include "tests/support/differences.h"
#include "tests/support/memory.h"
#include "tests/support/temporary_folder.h"

namespace estructura {
namespace {

struct program {
  const char* file;
  int device_index;
  std::vector<std::pair<int, std::vector<int>>> runs;  // address, words from there
  std::vector<std::pair<int, const char*>> texts;      // address, instruction
};

const std::vector<program> programs = {
    {"parpadeo-16c54.hex",
     device_index("16C54"),
     {{0x000,
       {0x06A, 0xC00, 0x006, 0x066, 0xC01, 0x1A6, 0x2AA, 0x909, 0xA04, 0xC03, 0x029, 0xCFA, 0x028, 0x2E8,
        0xA0D, 0x2E9, 0xA0B, 0x800}},
      {0x1FF, {0xA00}}},
     {{0, "CLRF 0A"},
      {2, "TRIS 6"},
      {5, "XORWF 06"},
      {6, "INCF 0A"},
      {7, "CALL 009"},
      {0x0D, "DECFSZ 08"},
      {0x0F, "DECFSZ 09"},
      {0x11, "RETLW 00"},
      {0x1FF, "GOTO 000"}}},
    {"tabla-16c57.hex",
     device_index("16C57"),
     {{0x000, {0xC00, 0x006, 0x068, 0x069, 0x208, 0x921, 0x026, 0x1E9, 0x2A8, 0xC0A, 0x088,
               0x743, 0xA04, 0xC10, 0x024, 0x204, 0xE7F, 0x020, 0x2A4, 0x684, 0xA0F, 0x204,
               0xE60, 0x643, 0xA1B, 0x584, 0xA0F, 0x5A3, 0x5C3, 0x900, 0x4A3, 0x4C3, 0xA20,
               0x1E2, 0x83F, 0x806, 0x85B, 0x84F, 0x866, 0x86D, 0x87D, 0x807, 0x87F, 0x86F}},
      {0x600, {0xCA5, 0x026, 0x842}},
      {0x7FF, {0xA00}}},
     {{4, "MOVF 08,W"},
      {5, "CALL 021"},
      {0x0A, "SUBWF 08,W"},
      {0x0B, "BTFSS 03,2"},
      {0x11, "MOVWF 00"},
      {0x13, "BTFSC 04,4"},
      {0x1B, "BSF 03,5"},
      {0x21, "ADDWF 02"},
      {0x22, "RETLW 3F"},
      {0x602, "RETLW 42"}}},
    {"reloj-16c56.hex",
     device_index("16C56"),
     {{0x000, {0xC02, 0x002, 0xC00, 0x005, 0x006, 0x061, 0x068, 0x069, 0x06A, 0x004, 0x201, 0x088,
               0x643, 0xA09, 0x201, 0x028, 0xE0F, 0x743, 0xA09, 0x2A9, 0xC0A, 0x089, 0x743, 0xA1E,
               0x069, 0x2AA, 0xC06, 0x08A, 0x643, 0x06A, 0x38A, 0x109, 0x026, 0xA09}},
      {0x3FF, {0xA00}}},
     {{1, "OPTION"},
      {3, "TRIS 5"},
      {5, "CLRF 01"},
      {9, "CLRWDT"},
      {0x1E, "SWAPF 0A,W"},
      {0x1F, "IORWF 09,W"},
      {0x10, "ANDLW 0F"}}},
    {"despertar-12c508.hex",
     device_index("12C508"),
     {{0x000,
       {0x6E3, 0xA06, 0x067, 0xC55, 0x028, 0xA08, 0x4E3, 0x2A7, 0xC4F, 0x002, 0xC0B, 0x006, 0x207, 0x026,
        0x206, 0x003, 0xA00}},
      {0x1FF, {0xC70}}},
     {{0, "BTFSC 03,7"}, {6, "BCF 03,7"}, {0x0F, "SLEEP"}, {0x1FF, "MOVLW 70"}}},
};

std::string path_of(const program& p) {
  return std::string(PROGRAMS) + "/" + p.file;
}

TEST(programs_of_another_assembler, load_word_by_word_without_a_message) {
  for (const program& p : programs) {
    chipstate chip = support::empty_chip(p.device_index);
    chipstate wanted = chip;
    for (const auto& [address, words] : p.runs)
      for (int i = 0; i < static_cast<int>(words.size()); ++i)
        support::put(wanted, address + i, {words[static_cast<std::size_t>(i)]});
    const hex_reading met = carga(chip, path_of(p));
    EXPECT_FALSE(met.failed) << p.file;
    EXPECT_TRUE(met.messages.empty()) << p.file;
    EXPECT_EQ(support::differences(wanted, chip), "") << p.file;
    for (const auto& [address, text] : p.texts)
      EXPECT_EQ(deshex(chip.progmem[address]), text) << p.file << " at " << address;
  }
}

TEST(programs_of_another_assembler, are_written_back_as_they_came_with_our_line_ends) {
  const support::temporary_folder folder;
  for (const program& p : programs) {
    std::string wanted;
    for (const char c : support::lee(path_of(p)))
      wanted += c == '\n' ? std::string("\r\n") : std::string(1, c);
    chipstate chip = support::empty_chip(p.device_index);
    ASSERT_FALSE(carga(chip, path_of(p)).failed) << p.file;
    ASSERT_TRUE(salva(chip, folder / "copia.hex"));
    EXPECT_EQ(support::lee(folder / "copia.hex"), wanted) << p.file;
  }
}

TEST(programs_of_another_assembler, do_not_fit_a_smaller_device) {
  chipstate chip = support::empty_chip(device_index("16C54"));
  const hex_reading met = carga(chip, path_of(programs[1]));
  EXPECT_EQ(met.messages, std::vector<std::string>{"Dirección no valida."});
  EXPECT_EQ(chip.progmem[0x2B], 0x86F);
  EXPECT_EQ(chip.progmem[0x600], unprogrammed);
}

}  // namespace
}  // namespace estructura
