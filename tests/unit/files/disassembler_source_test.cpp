// Program memory as source text.
#include <cstdint>
#include <gtest/gtest.h>
#include <string>

#include "asm/assembler.h"
#include "common/text.h"
#include "core/devices.h"
#include "files/disassembler.h"
#include "tests/support/memory.h"

namespace estructura {
namespace {

using support::empty_chip;

TEST(disassemble, an_empty_memory_gives_an_empty_text) {
  for (int device = 0; device < device_count; ++device) EXPECT_EQ(disassemble(empty_chip(device)), "");
}

TEST(disassemble, each_run_of_words_begins_with_its_org) {
  chipstate chip = empty_chip(default_device);
  chip.progmem[0] = 0xC10;
  chip.progmem[1] = 0x026;
  chip.progmem[4] = 0xA00;
  chip.progmem[0x7FF] = 0xA00;
  EXPECT_EQ(disassemble(chip),
            "          ORG 000\r\n"
            "          MOVLW 10\r\n"
            "          MOVWF 06\r\n"
            "          ORG 004\r\n"
            "          GOTO 000\r\n"
            "          ORG 7FF\r\n"
            "          GOTO 000\r\n");
}

TEST(disassemble, a_number_that_begins_with_a_letter_gets_a_zero) {
  struct row {
    std::uint16_t word;
    std::string_view text;
  };
  constexpr auto rows = std::to_array<row>({
      {0x8A0, "RETLW 0A0"},  {0xCFF, "MOVLW 0FF"}, {0xDB1, "IORLW 0B1"}, {0xEC0, "ANDLW 0C0"},
      {0xFD0, "XORLW 0D0"},  {0xCE9, "MOVLW 0E9"}, {0xC9F, "MOVLW 9F"},  {0x56A, "BSF 0A,3"},
      {0x9FF, "CALL 0FF"},   {0xBFF, "GOTO 1FF"},  {0xAAB, "GOTO 0AB"},  {0x02F, "MOVWF 0F"},
      {0x1C5, "ADDWF 05,W"}, {0x1FF, "ADDWF 1F"},  {0x5A3, "BSF 03,5"},  {0x006, "TRIS 6"},
      {0x000, "NOP"},        {0x001, "???"},       {0x04F, "???"},       {0xFFF, "XORLW 0FF"},
  });
  for (const row& r : rows) {
    chipstate chip = empty_chip(default_device);
    chip.progmem[0] = r.word;
    EXPECT_EQ(disassemble(chip), "          ORG 000\r\n          " + std::string(r.text) + "\r\n")
        << hexstr(r.word, 3);
  }
}

TEST(disassemble, words_above_the_devices_memory_are_left_out) {
  chipstate chip = empty_chip(device_index("16C54"));
  chip.progmem[0x1FF] = 0x003;
  chip.progmem[0x200] = 0x003;
  EXPECT_EQ(disassemble(chip), "          ORG 1FF\r\n          SLEEP\r\n");
}

TEST(disassemble, breakpoints_do_not_show) {
  chipstate chip = empty_chip(default_device);
  chip.progmem[0] = 0x003;
  chip.breakpts.fill(1);
  EXPECT_EQ(disassemble(chip), "          ORG 000\r\n          SLEEP\r\n");
}

}  // namespace
}  // namespace estructura
