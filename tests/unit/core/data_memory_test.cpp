// Data memory: banks, pages, bits, the two ways of access, and the limits of the device. The spaces are small
// and walked whole.
#include "core/data_memory.h"

#include <gtest/gtest.h>
#include <string>

#include "tests/support/differences.h"
#include "tests/unit/core/machine.h"

namespace estructura {
namespace {

using support::differences;
using support::machine;
using support::readreg;
using support::writereg;

std::string at(const catalogue_row& device, int f, int fsr) {
  return std::string(device.name) + ", f " + std::to_string(f) + ", FSR " + std::to_string(fsr);
}

std::int16_t word(int value) {
  return static_cast<std::int16_t>(value);
}

// Bank 0..3 by the bits of FSR that the device has.
int bank_of(const catalogue_row& device, int fsr) {
  const bool has_bit5 = device.model.datamask >= 63;
  const bool has_bit6 = device.model.datamask >= 127;
  return (has_bit5 && (fsr & 0x20) != 0 ? 1 : 0) + (has_bit6 && (fsr & 0x40) != 0 ? 2 : 0);
}

int page_of(const catalogue_row& device, int status) {
  const bool reaches_bit9 = device.model.progmask >= 1023;
  const bool reaches_bit10 = device.model.progmask >= 2047;
  return (reaches_bit9 && (status & 0x20) != 0 ? 0x200 : 0) +
         (reaches_bit10 && (status & 0x40) != 0 ? 0x400 : 0);
}

TEST(fsrbank, is_bits_5_and_6_of_FSR_as_far_as_the_device_has_them) {
  for (const catalogue_row& device : catalogue) {
    chipstate chip = machine(device.name);
    for (int fsr = 0; fsr < 256; ++fsr) {
      chip.regs[reg_fsr] = word(fsr);
      EXPECT_EQ(fsrbank(chip), bank_of(device, fsr)) << at(device, 0, fsr);
    }
  }
}

TEST(pagebits, are_STATUS_5_and_6_as_far_as_program_memory_reaches) {
  for (const catalogue_row& device : catalogue) {
    chipstate chip = machine(device.name);
    for (int status = 0; status < 256; ++status) {
      chip.regs[reg_status] = word(status);
      EXPECT_EQ(pagebits(chip.devmodel, chip.regs[reg_status]), page_of(device, status))
          << device.name << ", STATUS " << status;
    }
  }
}

TEST(setbit, sets_or_clears_one_bit_and_clearing_keeps_eight) {
  for (int value = 0; value < 1024; ++value)
    for (int n = 0; n < 8; ++n) {
      const int weight = 1 << n;
      const bool was_set = value / weight % 2 == 1;
      const int low = value % 256;
      EXPECT_EQ(setbit(value, n, 1), was_set ? value : value + weight) << value << " bit " << n;
      EXPECT_EQ(setbit(value, n, -1), setbit(value, n, 1)) << value << " bit " << n;
      EXPECT_EQ(setbit(value, n, 0), was_set ? low - weight : low) << value << " bit " << n;
    }
}

TEST(getbit, is_1_exactly_where_the_bit_is_set) {
  for (int value = 0; value < 256; ++value)
    for (int n = 0; n < 8; ++n) EXPECT_EQ(getbit(value, n), value / (1 << n) % 2) << value << " bit " << n;
}

// What a read gives and what it does, by the rules of the data address map.
int expect_low_read(const catalogue_row& device, chipstate& chip, int a, int fsr_as_read) {
  if (a == 4) return fsr_as_read;
  if (a == 5 && device.model.is16c5x) chip.regs[5] = chip.pina;
  if (a == 6) chip.regs[6] = chip.pinb;
  if (a == 7 && device.model.hasportc) chip.regs[7] = chip.pinc;
  return chip.regs[a];
}

int expect_read(const catalogue_row& device, chipstate& chip, int f) {
  const int fsr = chip.regs[4];
  const int bank = bank_of(device, fsr);
  if (f >= 16) return chip.bankregs[bank * 16 + f - 16];
  if (f > 0) return expect_low_read(device, chip, f, fsr | (255 - device.model.datamask));
  const int a = fsr % 32;
  if (a == 0) return 0;
  if (a >= 16) return chip.bankregs[bank * 16 + a - 16];
  return expect_low_read(device, chip, a, fsr | 128);
}

TEST(readreg, reads_every_address_through_every_FSR_on_every_device) {
  for (const catalogue_row& device : catalogue)
    for (int fsr = 0; fsr < 256; ++fsr)
      for (int f = 0; f < 32; ++f) {
        chipstate chip = machine(device.name);
        chip.regs[reg_fsr] = word(fsr);
        chipstate wanted = chip;
        const int value = expect_read(device, wanted, f);
        ASSERT_EQ(readreg(chip, f), value) << at(device, f, fsr);
        ASSERT_EQ(differences(wanted, chip), "") << at(device, f, fsr);
      }
}

void expect_write(const catalogue_row& device, chipstate& chip, int f, int value) {
  const int fsr = chip.regs[4];
  const int a = f == 0 ? fsr % 32 : f;
  if (a == 0) return;
  if (a >= 16) {
    chip.bankregs[bank_of(device, fsr) * 16 + a - 16] = word(value);
    return;
  }
  chip.regs[a] = word(a == 4 ? value % 128 : value);
  if (a == 1) chip.prescount = 0;
  if (a == 2) {
    chip.cpu.pc = word(page_of(device, chip.regs[3]) + value);
    chip.cycles += 1;
    chip.wdtcount += 1;
  }
}

TEST(writereg, writes_every_address_through_every_FSR_on_every_device) {
  for (const catalogue_row& device : catalogue)
    for (int fsr = 0; fsr < 256; ++fsr)
      for (int f = 0; f < 32; ++f) {
        chipstate chip = machine(device.name);
        chip.regs[reg_fsr] = word(fsr);
        chip.regs[reg_status] = 0x78;
        chip.prescount = 9;
        chipstate wanted = chip;
        const int value = (fsr * 7 + f * 13 + 0x90) % 256;
        expect_write(device, wanted, f, value);
        writereg(chip, f, 1, value);
        ASSERT_EQ(differences(wanted, chip), "") << at(device, f, fsr) << ", value " << value;
      }
}

TEST(writereg, writes_every_value_to_every_low_address) {
  for (const catalogue_row& device : catalogue)
    for (int f = 1; f < 16; ++f)
      for (int value = 0; value < 256; ++value) {
        chipstate chip = machine(device.name);
        chip.prescount = 9;
        chipstate wanted = chip;
        expect_write(device, wanted, f, value);
        writereg(chip, f, 1, value);
        ASSERT_EQ(differences(wanted, chip), "") << at(device, f, 0) << ", value " << value;
      }
}

TEST(writereg, with_W_as_destination_changes_W_alone) {
  for (const catalogue_row& device : catalogue)
    for (int f = 0; f < 32; ++f)
      for (int value = 0; value < 256; ++value) {
        chipstate chip = machine(device.name);
        chip.prescount = 9;
        chipstate wanted = chip;
        wanted.cpu.w = word(value);
        writereg(chip, f, 0, value);
        ASSERT_EQ(differences(wanted, chip), "") << at(device, f, 0) << ", value " << value;
      }
}

TEST(readreg, of_INDF_pointing_at_5_gives_the_pins_of_port_A_or_OSCCAL) {
  chipstate chip = machine("16C54");
  chip.regs[reg_fsr] = 0x05;
  EXPECT_EQ(readreg(chip, reg_indf), chip.pina);
  chip = machine("12C508");
  chip.regs[reg_fsr] = 0x05;
  chip.regs[reg_5] = 0x70;
  EXPECT_EQ(readreg(chip, reg_indf), 0x70);
}

TEST(readreg, of_FSR_has_one_form_direct_and_another_through_INDF) {
  chipstate chip = machine("16C54");
  chip.regs[reg_fsr] = 0x05;
  EXPECT_EQ(readreg(chip, reg_fsr), 0xE5);
  chip.regs[reg_fsr] = 0x04;
  EXPECT_EQ(readreg(chip, reg_indf), 0x84);
}

TEST(readreg, reaches_bank_3_and_the_common_registers_with_FSR_70) {
  chipstate chip = machine("16C57");
  chip.regs[reg_fsr] = 0x70;
  EXPECT_EQ(readreg(chip, 0x10), chip.bankregs[48]);
  for (int f = 0x08; f <= 0x0F; ++f)
    for (const int fsr : {0x00, 0x20, 0x40, 0x60}) {
      chip.regs[reg_fsr] = word(fsr);
      EXPECT_EQ(readreg(chip, f), chip.regs[f]) << f << " with FSR " << fsr;
    }
}

TEST(writereg, of_INDF_pointing_at_itself_changes_nothing_and_reads_0) {
  chipstate chip = machine("16C57");
  const chipstate before = chip;
  writereg(chip, reg_indf, 1, 0x77);
  EXPECT_EQ(differences(before, chip), "");
  EXPECT_EQ(readreg(chip, reg_indf), 0);
}

TEST(writereg, of_PCL_takes_the_page_bits_that_the_device_has) {
  struct row {
    const char* device;
    int pc;
  };
  for (const row& r : {row{"16C57", 0x634}, row{"16C54", 0x034}, row{"16C56", 0x234}, row{"12C508", 0x034}}) {
    chipstate chip = machine(r.device);
    chip.regs[reg_status] = 0x60;
    writereg(chip, reg_pcl, 1, 0x34);
    EXPECT_EQ(chip.cpu.pc, r.pc) << r.device;
  }
}

TEST(writereg, of_FSR_stores_seven_bits_and_the_refresh_cuts_them_to_the_device) {
  chipstate chip = machine("12C509");
  writereg(chip, reg_fsr, 1, 0xFF);
  EXPECT_EQ(chip.regs[reg_fsr], 0x7F);
  normregs(chip);
  EXPECT_EQ(chip.regs[reg_fsr], 0x3F);
}

TEST(writereg, of_a_port_changes_its_latch_and_not_the_pins) {
  chipstate chip = machine("16C57");
  const chipstate before = chip;
  for (const int f : {5, 6, 7}) writereg(chip, f, 1, 0x99);
  EXPECT_EQ(chip.regs[5], 0x99);
  EXPECT_EQ(chip.regs[6], 0x99);
  EXPECT_EQ(chip.regs[7], 0x99);
  EXPECT_EQ(chip.pina, before.pina);
  EXPECT_EQ(chip.pinb, before.pinb);
  EXPECT_EQ(chip.pinc, before.pinc);
}

TEST(normregs, cuts_every_value_to_the_device_and_shows_the_latches) {
  for (const catalogue_row& device : catalogue)
    for (int value = 0; value < 256; ++value)
      for (int latches = 0; latches < 4; ++latches) {
        chipstate chip = machine(device.name);
        chip.regs[reg_fsr] = chip.regs[reg_5] = chip.regs[reg_6] = chip.regs[reg_7] = word(value);
        chip.cpu.option = chip.cpu.trisa = chip.cpu.trisb = chip.cpu.trisc = word(value);
        chip.regs[reg_status] = word(value);
        chip.pdlatch = word(latches % 2);
        chip.tolatch = word(latches / 2);
        chipstate wanted = chip;
        wanted.regs[reg_fsr] = word(value & device.model.datamask);
        wanted.regs[reg_5] = word(value & device.model.mask5);
        wanted.regs[reg_6] = word(value & device.model.mask6);
        wanted.cpu.option = word(value & device.model.optmask);
        wanted.cpu.trisa = word(value & device.model.mask5);
        wanted.cpu.trisb = word(value & device.model.mask6);
        const int other_bits = value & (device.model.is16c5x ? 0xE7 : 0xA7);
        wanted.regs[reg_status] = word(other_bits + 8 * chip.pdlatch + 16 * chip.tolatch);
        normregs(chip);
        ASSERT_EQ(differences(wanted, chip), "") << device.name << ", value " << value;
      }
}

}  // namespace
}  // namespace estructura
