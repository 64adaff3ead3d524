// The resets: what each sets, what it latches, and what it leaves alone, on every device.
#include "core/resets.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "core/data_memory.h"
#include "tests/support/differences.h"
#include "tests/unit/core/machine.h"

namespace estructura {
namespace {

using support::differences;
using support::machine;

std::int16_t word16(int value) {
  return static_cast<std::int16_t>(value);
}

// A machine in the middle of everything.
chipstate busy(const catalogue_row& device, int pd, int to) {
  chipstate chip = machine(device.name);
  chip.regs[reg_status] = 0xE7;
  chip.regs[reg_fsr] = 0x1F;
  chip.cpu.option = 0x05;
  chip.cpu.trisa = chip.cpu.trisb = chip.cpu.trisc = 0;
  chip.stack[0] = 0x12;
  chip.stack[1] = 0x34;
  chip.pdlatch = word16(pd);
  chip.tolatch = word16(to);
  chip.gpwuflatch = 1;
  chip.sleeping = true;
  chip.resumebp = true;
  chip.running = true;
  chip.prescount = 9;
  chip.tockicount = 8;
  chip.tockiperiod = 70;
  chip.tockifreq = 60;
  chip.progmem[3] = 0xABC;
  chip.breakpts[3] = 1;
  return chip;
}

// What the sequence leaves, field by field.
chipstate after_reset(const catalogue_row& device, chipstate chip, int pd, int to, int gpwuf) {
  chip.resumebp = false;
  chip.cycles = 0;
  chip.firststep = true;
  chip.wdtcount = 0;
  chip.pdlatch = word16(pd);
  chip.tolatch = word16(to);
  chip.sleeping = false;
  chip.cpu.pc = word16(device.model.progmask);
  chip.cpu.trisa = word16(device.model.mask5);
  chip.cpu.trisb = word16(device.model.mask6);
  chip.cpu.trisc = 255;
  chip.cpu.option = word16(device.model.optmask);
  chip.stack[0] = chip.stack[1] = 0;
  chip.regs[2] = 255;
  const int page_bits = pd == 1 && to == 1 ? 0 : chip.regs[3] & 0xE0;
  int status = page_bits + (chip.regs[3] & 7) + 8 * pd + 16 * to;
  if (!device.model.is16c5x) {
    chip.gpwuflatch = word16(gpwuf);
    status = (status & 0x7F) + 128 * gpwuf;
    chip.regs[5] = 0x70;
  }
  chip.regs[3] = word16(status);
  return chip;
}

std::string named(const catalogue_row& device, int pd, int to) {
  return std::string(device.name) + ", /PD " + std::to_string(pd) + ", /TO " + std::to_string(to);
}

TEST(resetchip, leaves_every_device_as_the_sequence_says_for_all_its_arguments) {
  for (const catalogue_row& device : catalogue)
    for (int bits = 0; bits < 8; ++bits) {
      const int pd = bits % 2, to = bits / 2 % 2, gpwuf = bits / 4;
      chipstate chip = busy(device, 0, 0);
      const chipstate wanted = after_reset(device, chip, pd, to, gpwuf);
      resetchip(chip, pd, to, gpwuf);
      EXPECT_EQ(differences(wanted, chip), "") << named(device, pd, to);
    }
}

TEST(mclr_reset, keeps_both_latches_and_GPWUF) {
  for (const catalogue_row& device : catalogue)
    for (int bits = 0; bits < 4; ++bits) {
      const int pd = bits % 2, to = bits / 2;
      chipstate chip = busy(device, pd, to);
      const chipstate wanted = after_reset(device, chip, pd, to, 1);
      mclr_reset(chip);
      EXPECT_EQ(differences(wanted, chip), "") << named(device, pd, to);
    }
}

TEST(wdt_reset, clears_TO_and_keeps_PD) {
  for (const catalogue_row& device : catalogue)
    for (int bits = 0; bits < 4; ++bits) {
      const int pd = bits % 2, to = bits / 2;
      chipstate chip = busy(device, pd, to);
      const chipstate wanted = after_reset(device, chip, pd, 0, 1);
      wdt_reset(chip);
      EXPECT_EQ(differences(wanted, chip), "") << named(device, pd, to);
    }
}

TEST(power_on, clears_registers_and_prescaler_and_keeps_pins_and_the_T0CKI_count) {
  for (const catalogue_row& device : catalogue) {
    chipstate chip = busy(device, 0, 0);
    chipstate cleared = chip;
    cleared.regs.fill(0);
    cleared.bankregs.fill(0);
    cleared.cpu.w = 0;
    cleared.prescount = 0;
    const chipstate wanted = after_reset(device, cleared, 1, 1, 0);
    power_on(chip);
    EXPECT_EQ(differences(wanted, chip), "") << device.name;
  }
}

TEST(wdt_reset, out_of_sleep_keeps_the_page_bits_and_shows_neither_TO_nor_PD) {
  chipstate chip = machine("16C57");
  chip.regs[reg_status] = 0x78;
  chip.pdlatch = 0;
  chip.sleeping = true;
  wdt_reset(chip);
  normregs(chip);
  EXPECT_EQ(chip.regs[reg_status], 0x60);
  EXPECT_EQ(chip.cpu.pc, 2047);
  EXPECT_FALSE(chip.sleeping);
}

TEST(mclr_reset, in_normal_running_clears_the_page_bits) {
  chipstate chip = machine("16C57");
  chip.regs[reg_status] = 0x78;
  mclr_reset(chip);
  EXPECT_EQ(chip.regs[reg_status], 0x18);
}

}  // namespace
}  // namespace estructura
