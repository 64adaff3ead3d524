// Program memory as source text, and the way back through the assembler.
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
#include "tests/support/memory.h"
#include "tests/support/temporary_folder.h"

namespace estructura {
namespace {

using support::empty_chip;
using support::temporary_folder;

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

TEST(source_there_and_back, every_instruction_word) {
  chipstate chip = empty_chip(default_device);
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

TEST(source_there_and_back, random_memories_of_every_device) {
  constexpr unsigned seed = 20240611;
  std::mt19937 random(seed);
  for (int device = 0; device < device_count; ++device)
    for (int round = 0; round < 40; ++round) {
      chipstate chip = empty_chip(device);
      const auto density = random() % 101;
      for (int a = 0; a <= chip.devmodel.progmask; ++a) {
        const auto word = static_cast<std::uint16_t>(random() % 4096);
        if (random() % 100 < density && is_instruction(word)) chip.progmem[a] = word;
      }
      ASSERT_EQ(lost_on_the_way(chip), "") << "seed " << seed << ", device " << device << ", round " << round;
    }
}

TEST(source_there_and_back, programs_of_another_assembler_through_hex_source_and_hex) {
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
  for (const auto& entry : std::filesystem::directory_iterator(PROGRAMS))
    if (entry.path().extension() == ".hex") ++found;
  EXPECT_EQ(found, static_cast<int>(programs.size())) << "a program that is not named here";

  for (const program& p : programs) {
    const temporary_folder folder;
    chipstate chip = empty_chip(p.device);
    const hex_reading read = carga(chip, std::string(PROGRAMS) + "/" + std::string(p.file));
    ASSERT_FALSE(read.failed) << p.file;
    ASSERT_TRUE(read.messages.empty()) << p.file;
    ASSERT_NE(chip.progmem[chip.devmodel.progmask], unprogrammed) << p.file;

    text_encoding encoding = text_encoding::utf8;
    ASSERT_TRUE(salvaasm(folder / "uno.asm", disassemble(chip), encoding));
    std::string source;
    ASSERT_TRUE(cargaasm(folder / "uno.asm", source, encoding));
    const assembly made = assemble(source, chip.devmodel.progmask);
    ASSERT_FALSE(made.error) << p.file << ": " << made.error->message;

    chipstate again = empty_chip(p.device);
    again.progmem = made.image;
    ASSERT_TRUE(salva(again, folder / "uno.hex"));
    chipstate reread = empty_chip(p.device);
    ASSERT_FALSE(carga(reread, folder / "uno.hex").failed);
    EXPECT_TRUE(reread == chip) << p.file;
  }
}

}  // namespace
}  // namespace estructura
