// Program memory as source text, and the way back through the assembler.
#include <array>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "asm/assembler.h"
#include "common/text.h"
#include "core/devices.h"
#include "files/disassembler.h"
#include "files/hex.h"
#include "files/source_file.h"
#include "tests/support/expected_instructions.h"
#include "tests/support/temporary_folder.h"

namespace estructura {
namespace {

using support::temporary_folder;

chipstate chip_of(int device_index) {
  chipstate chip;
  select_device(chip, device_index);
  chip.progmem.fill(unprogrammed);
  return chip;
}

TEST(disassemble, an_empty_memory_gives_an_empty_text) {
  for (int device = 0; device < device_count; ++device) EXPECT_EQ(disassemble(chip_of(device)), "");
}

TEST(disassemble, each_run_of_words_begins_with_its_org) {
  chipstate chip = chip_of(default_device);
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
    chipstate chip = chip_of(default_device);
    chip.progmem[0] = r.word;
    EXPECT_EQ(disassemble(chip), "          ORG 000\r\n          " + std::string(r.text) + "\r\n")
        << hexstr(r.word, 3);
  }
}

TEST(disassemble, words_above_the_devices_memory_are_left_out) {
  chipstate chip = chip_of(device_index("16C54"));
  chip.progmem[0x1FF] = 0x003;
  chip.progmem[0x200] = 0x003;
  EXPECT_EQ(disassemble(chip), "          ORG 1FF\r\n          SLEEP\r\n");
}

TEST(disassemble, breakpoints_do_not_show) {
  chipstate chip = chip_of(default_device);
  chip.progmem[0] = 0x003;
  chip.breakpts.fill(1);
  EXPECT_EQ(disassemble(chip), "          ORG 000\r\n          SLEEP\r\n");
}

// --- There and back

// Whether a word is one of the 33 instructions, from the words written down for the tests.
bool is_instruction(int word) {
  using support::kind;
  for (const support::expected_instruction& row : support::expected_instructions) {
    const int rest = word - row.base;
    switch (row.operands) {
      case kind::none:
        if (rest == 0) return true;
        break;
      case kind::port:
        if (rest >= 5 && rest <= 7) return true;
        break;
      case kind::file:
        if (rest >= 0 && rest < 0x20) return true;
        break;
      case kind::file_dest:
        if (rest >= 0 && rest < 0x40) return true;
        break;
      case kind::file_bit:
      case kind::literal8:
        if (rest >= 0 && rest < 0x100) return true;
        break;
      case kind::literal9:
        if (rest >= 0 && rest < 0x200) return true;
        break;
    }
  }
  return false;
}

// What differs when the text of a memory is assembled again; empty when nothing does.
std::string lost_on_the_way(const chipstate& chip) {
  const assembly back = assemble(disassemble(chip), chip.devmodel.progmask);
  if (back.error) return "line " + std::to_string(back.error->line) + ": " + std::string(back.error->message);
  for (int a = 0; a <= chip.devmodel.progmask; ++a)
    if (back.image[a] != chip.progmem[a])
      return hexstr(a, 3) + ": " + hexstr(back.image[a], 4) + ", wanted " + hexstr(chip.progmem[a], 4);
  return {};
}

TEST(there_and_back, every_instruction_word) {
  chipstate chip = chip_of(default_device);
  int met = 0;
  for (int word = 0; word < 4096; ++word) {
    chip.progmem[0] = static_cast<std::uint16_t>(word);
    if (!is_instruction(word)) {
      EXPECT_EQ(lost_on_the_way(chip), "line 2: Instrucción incorrecta.") << hexstr(word, 3);
      continue;
    }
    ++met;
    EXPECT_EQ(lost_on_the_way(chip), "") << hexstr(word, 3);
  }
  // All words but 001, 008 to 00F, 010 to 01F, 041 to 04F and 050 to 05F.
  EXPECT_EQ(met, 4096 - 1 - 8 - 16 - 15 - 16);
}

TEST(there_and_back, random_memories_of_every_device) {
  constexpr unsigned seed = 20240611;
  std::mt19937 random(seed);
  for (int device = 0; device < device_count; ++device)
    for (int round = 0; round < 40; ++round) {
      chipstate chip = chip_of(device);
      const auto density = random() % 101;
      for (int a = 0; a <= chip.devmodel.progmask; ++a) {
        const auto word = static_cast<std::uint16_t>(random() % 4096);
        if (random() % 100 < density && is_instruction(word)) chip.progmem[a] = word;
      }
      ASSERT_EQ(lost_on_the_way(chip), "") << "seed " << seed << ", device " << device << ", round " << round;
    }
}

TEST(there_and_back, programs_of_another_assembler_through_hex_source_and_hex) {
  struct program {
    std::string_view file;
    int device;
  };
  constexpr auto programs = std::to_array<program>({
      {"parpadeo-16c54.hex", device_index("16C54")},
      {"reloj-16c56.hex", device_index("16C56")},
      {"tabla-16c57.hex", device_index("16C57")},
      {"despertar-12c508.hex", device_index("12C508")},
  });
  int found = 0;
  for (const auto& entry : std::filesystem::directory_iterator(PROGRAMS_FOLDER))
    if (entry.path().extension() == ".hex") ++found;
  EXPECT_EQ(found, static_cast<int>(programs.size())) << "a program that is not named here";

  for (const program& p : programs) {
    const temporary_folder folder;
    chipstate chip = chip_of(p.device);
    const hex_reading read = carga(chip, std::string(PROGRAMS_FOLDER) + "/" + std::string(p.file));
    ASSERT_FALSE(read.failed) << p.file;
    ASSERT_TRUE(read.messages.empty()) << p.file;
    ASSERT_NE(chip.progmem[chip.devmodel.progmask], unprogrammed) << p.file;

    text_encoding encoding = text_encoding::utf8;
    ASSERT_TRUE(salvaasm(folder / "uno.asm", disassemble(chip), encoding));
    std::string source;
    ASSERT_TRUE(cargaasm(folder / "uno.asm", source, encoding));
    const assembly made = assemble(source, chip.devmodel.progmask);
    ASSERT_FALSE(made.error) << p.file << ": " << made.error->message;

    chipstate again = chip_of(p.device);
    again.progmem = made.image;
    ASSERT_TRUE(salva(again, folder / "uno.hex"));
    chipstate reread = chip_of(p.device);
    ASSERT_FALSE(carga(reread, folder / "uno.hex").failed);
    EXPECT_TRUE(reread == chip) << p.file;
  }
}

}  // namespace
}  // namespace estructura
