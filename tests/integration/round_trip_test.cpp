// There and back: text and word, memory and file.
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "asm/encodeins.h"
#include "files/disassembler.h"
#include "files/hex.h"
#include "tests/support/differences.h"
#include "tests/support/memory.h"
#include "tests/support/temporary_folder.h"

namespace estructura {
namespace {

TEST(there_and_back, the_text_of_every_instruction_encodes_to_its_word) {
  int instructions_met = 0;
  for (int word = 0; word < 4096; ++word) {
    const std::string text = deshex(word);
    if (text == "???") {
      EXPECT_EQ(encodeins(text), -1);
      continue;
    }
    ++instructions_met;
    EXPECT_EQ(encodeins(text), word) << text;
  }
  // 4 words without operands in the first row, 3 ports, 32 MOVWF, CLRW, 32 CLRF, 2 times 64 of row 0, and all
  // of rows 1 to F.
  EXPECT_EQ(instructions_met, 4 + 3 + 32 + 1 + 32 + 128 + 15 * 256);
}

TEST(there_and_back, a_saved_memory_loads_again_on_every_device) {
  const support::temporary_folder folder;
  constexpr unsigned seed = 19980712;
  std::mt19937 random(seed);
  for (int index = 0; index < device_count; ++index) {
    for (const unsigned percent : {0U, 5U, 50U, 95U, 100U}) {
      chipstate chip = support::empty_chip(index);
      support::fill_at_random(chip, chip.devmodel.progmask, percent, random);
      ASSERT_TRUE(salva(chip, folder / "m.hex"));
      chipstate back = support::empty_chip(index);
      const hex_reading met = carga(back, folder / "m.hex");
      EXPECT_FALSE(met.failed);
      EXPECT_TRUE(met.messages.empty());
      EXPECT_EQ(support::differences(chip, back), "")
          << "device " << index << ", " << percent << " %, seed " << seed;
      // And what was saved is what is saved again.
      ASSERT_TRUE(salva(back, folder / "n.hex"));
      EXPECT_EQ(support::lee(folder / "n.hex"), support::lee(folder / "m.hex"));
    }
  }
}

}  // namespace
}  // namespace estructura
