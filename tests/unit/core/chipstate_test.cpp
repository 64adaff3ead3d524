// The arrays of the machine and the numbers of its core registers.
#include "core/chipstate.h"

#include <gtest/gtest.h>
#include <vector>

#include "tests/unit/core/machine.h"

namespace estructura {
namespace {

using support::machine;

TEST(chipstate, has_no_cell_outside_its_arrays) {
  chipstate chip = machine("16C57");
  EXPECT_TRUE(support::faults([&] { chip.progmem[2048] = 0; }));
  EXPECT_TRUE(support::faults([&] { chip.progmem[-1] = 0; }));
  EXPECT_TRUE(support::faults([&] { chip.breakpts[2048] = 1; }));
  EXPECT_TRUE(support::faults([&] { chip.regs[16] = 0; }));
  EXPECT_TRUE(support::faults([&] { chip.bankregs[64] = 0; }));
  EXPECT_TRUE(support::faults([&] { chip.cpu[6] = 0; }));
  EXPECT_TRUE(support::faults([&] { chip.cpu[-1] = 0; }));
  EXPECT_TRUE(support::faults([&] { chip.stack[2] = 0; }));
  EXPECT_FALSE(support::faults([&] { chip.progmem[2047] = chip.breakpts[2047] = 0; }));
}

TEST(chipstate, numbers_its_core_registers_in_the_order_of_their_codes) {
  chipstate chip;
  for (int i = 0; i < core_registers::size(); ++i) chip.cpu[i] = static_cast<std::int16_t>(i + 1);
  const core_registers& cpu = chip.cpu;
  EXPECT_EQ((std::vector<int>{cpu.pc, cpu.w, cpu.option, cpu.trisa, cpu.trisb, cpu.trisc}),
            (std::vector<int>{1, 2, 3, 4, 5, 6}));
}

}  // namespace
}  // namespace estructura
