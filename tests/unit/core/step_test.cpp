// One step: what it asks of the screen and in which order, the fetch, the first step after a reset, sleep.
#include "core/step.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "core/resets.h"
#include "files/disassembler.h"
#include "tests/model/second_reading.h"
#include "tests/support/differences.h"
#include "tests/unit/core/machine.h"

namespace estructura {
namespace {

using support::differences;
using support::machine;
using support::quiet;

std::int16_t word16(int value) {
  return static_cast<std::int16_t>(value);
}

// A machine whose pins stand as its outputs want them, so that a refresh moves nothing.
chipstate at_rest(std::string_view name) {
  chipstate chip = machine(name);
  chip.cpu.trisa = chip.devmodel.mask5;
  chip.cpu.trisb = chip.devmodel.mask6;
  return chip;
}

TEST(step, fetches_the_word_at_pc_and_goes_on_behind_it) {
  for (const catalogue_row& device : catalogue) {
    const int last = device.model.progmask;
    for (const int address : {0, 0x0FF, 0x100, last - 1, last}) {
      chipstate chip = at_rest(device.name);
      chip.progmem[address] = 0xC77;
      chip.cpu.pc = word16(address);
      quiet view;
      step(chip, view);
      const int next = address == last ? 0 : address + 1;
      EXPECT_EQ(chip.cpu.pc, next) << device.name << " from " << address;
      EXPECT_EQ(chip.regs[reg_pcl], next % 256) << device.name << " from " << address;
      EXPECT_EQ(chip.cpu.w, 0x77) << device.name << " from " << address;
    }
  }
}

TEST(step, is_the_instruction_the_watchdog_the_timer_and_the_refresh_in_this_order) {
  // PCL written, timer from the instruction clock with a prescaler of 2, watchdog just run out.
  chipstate chip = at_rest("16C57");
  chip.progmem[0x010] = 0x022;
  chip.cpu.option = 0x00;
  chip.wdtcount = 17'999 - 1;
  chip.prescount = 0;
  chip.regs[reg_status] = 0x78;
  quiet view;
  view.in.watchdog_on = true;
  view.in.set_frequencies(4000, 0);
  step(chip, view);
  EXPECT_EQ(view.warnings, 1);
  // The reset precedes the tick, and OPTION as reset counts T0CKI, of which there is none.
  EXPECT_EQ(chip.cpu.pc, 0x7FF);
  EXPECT_EQ(chip.prescount, 0);
  EXPECT_EQ(chip.wdtcount, 0);
  EXPECT_EQ(chip.regs[reg_status], 0x68);
}

TEST(step, ticks_the_timer_once_and_the_first_cycle_of_a_reset_not_at_all) {
  chipstate chip = at_rest("16C57");
  chip.progmem[0x010] = 0x000;
  chip.cpu.option = 0x07;
  chip.firststep = true;
  quiet view;
  step(chip, view);
  EXPECT_EQ(chip.cycles, 102);
  EXPECT_EQ(chip.wdtcount, 52);
  EXPECT_EQ(chip.prescount, 1);
  EXPECT_FALSE(chip.firststep);
  chip.progmem[0x011] = 0x000;
  step(chip, view);
  EXPECT_EQ(chip.cycles, 103);
  EXPECT_EQ(chip.prescount, 2);
}

TEST(step, after_any_reset_counts_two_cycles_for_a_one_cycle_instruction) {
  const std::vector<std::function<void(chipstate&)>> resets = {
      power_on, mclr_reset, wdt_reset, [](chipstate& chip) { resetchip(chip, 1, 1, 0); }};
  for (const auto& reset : resets) {
    chipstate chip = at_rest("16C54");
    chip.progmem[511] = 0x000;
    reset(chip);
    quiet view;
    step(chip, view);
    EXPECT_EQ(chip.cycles, 2);
  }
}

TEST(step, of_an_unprogrammed_cell_only_moves_on) {
  chipstate chip = at_rest("16C57");
  chip.cpu.option = 0x08;
  chip.wdtcount = 100'000;
  quiet view;
  view.in.watchdog_on = true;
  chipstate wanted = chip;
  wanted.cpu.pc = 0x011;
  wanted.regs[reg_pcl] = 0x11;
  wanted.wdtlimit = 18000;
  wanted.regs[reg_5] = 0x05;  // the refresh cuts port A to its four bits
  step(chip, view);
  EXPECT_EQ(differences(wanted, chip), "");
  EXPECT_EQ(view.warnings, 0);
  EXPECT_TRUE(view.seen.refreshed);
  EXPECT_EQ(view.seen.inner, 0x011);
  EXPECT_TRUE(view.seen.marked);
  EXPECT_EQ(view.seen.marker, 0x011);
}

TEST(step, of_an_unprogrammed_cell_after_a_reset_still_counts_the_first_cycle) {
  chipstate chip = at_rest("16C57");
  resetchip(chip, 1, 1, 0);
  quiet view;
  step(chip, view);
  EXPECT_EQ(chip.cycles, 1);
  EXPECT_EQ(chip.wdtcount, 1);
}

TEST(step, of_an_unprogrammed_cell_shows_its_row_before_a_refresh_that_faults) {
  for (const bool programmed : {false, true}) {
    chipstate chip = at_rest("16C57");
    if (programmed) chip.progmem[0x010] = 0x000;
    quiet view;
    view.in.set_frequencies(4000, 0.0001);
    EXPECT_TRUE(support::faults([&] { step(chip, view); }));
    EXPECT_EQ(view.seen.arrived, !programmed);
    EXPECT_EQ(view.seen.marked, !programmed);
  }
}

TEST(step, over_the_last_word_of_a_small_device_leaves_its_memory_for_a_step) {
  chipstate chip = at_rest("16C54");
  chip.regs[8] = 0;
  chip.cpu.pc = 510;
  chip.progmem[510] = 0x608;
  quiet view;
  step(chip, view);
  EXPECT_EQ(chip.cpu.pc, 512);
  EXPECT_EQ(chip.regs[reg_pcl], 0);
  EXPECT_FALSE(view.seen.inside);
  const std::int32_t cycles = chip.cycles;
  step(chip, view);
  EXPECT_EQ(chip.cpu.pc, 1);
  EXPECT_EQ(chip.cycles, cycles);
  EXPECT_TRUE(view.seen.inside);
}

TEST(step, with_a_skip_in_the_last_word_goes_on_at_1) {
  for (const catalogue_row& device : catalogue) {
    chipstate chip = at_rest(device.name);
    chip.regs[8] = 0;
    chip.cpu.pc = word16(device.model.progmask);
    chip.progmem[device.model.progmask] = 0x608;
    quiet view;
    step(chip, view);
    EXPECT_EQ(chip.cpu.pc, 1) << device.name;
  }
}

TEST(step, with_a_skip_in_the_last_word_but_one_leaves_pc_behind_the_memory) {
  for (const catalogue_row& device : catalogue) {
    chipstate chip = at_rest(device.name);
    chip.regs[8] = 0;
    chip.cpu.pc = word16(device.model.progmask - 1);
    chip.progmem[device.model.progmask - 1] = 0x608;
    quiet view;
    step(chip, view);
    EXPECT_EQ(chip.cpu.pc, device.model.progmask == 2047 ? 0 : device.model.progmask + 1) << device.name;
  }
}

TEST(step, asleep_only_leaves_a_breakpoint_behind) {
  chipstate chip = at_rest("16C57");
  chip.sleeping = true;
  chip.firststep = true;
  chip.resumebp = true;
  quiet view;
  view.seen.marked = true;
  chipstate wanted = chip;
  wanted.resumebp = false;
  step(chip, view);
  EXPECT_EQ(differences(wanted, chip), "");
  EXPECT_FALSE(view.seen.refreshed);
  EXPECT_FALSE(view.seen.arrived);
  EXPECT_TRUE(view.seen.marked);
}

TEST(step, leaves_a_breakpoint_behind) {
  chipstate chip = at_rest("16C57");
  chip.resumebp = true;
  quiet view;
  step(chip, view);
  EXPECT_FALSE(chip.resumebp);
}

TEST(step, masks_registers_at_its_end_and_restores_the_latches_of_STATUS) {
  chipstate chip = at_rest("16C54");
  chip.progmem[0x010] = 0x1E3;  // ADDWF 03
  chip.regs[reg_status] = 0x18;
  chip.cpu.w = 0x07;
  quiet view;
  step(chip, view);
  EXPECT_EQ(chip.regs[reg_status], 0x1F);
  chip.progmem[0x011] = 0x063;  // CLRF 03
  step(chip, view);
  EXPECT_EQ(chip.regs[reg_status], 0x18);
  chip.progmem[0x012] = 0x002;  // OPTION
  chip.cpu.w = 0xFF;
  step(chip, view);
  EXPECT_EQ(chip.cpu.option, 0x3F);
}

TEST(step, with_clrwdt_shows_the_new_TO_after_a_time_out) {
  chipstate chip = at_rest("16C57");
  chip.tolatch = 0;
  chip.pdlatch = 0;
  chip.regs[reg_status] = 0x00;
  chip.progmem[0x010] = 0x004;
  quiet view;
  step(chip, view);
  EXPECT_EQ(chip.regs[reg_status], 0x10);
  EXPECT_EQ(chip.wdtcount, 0);
}

TEST(step, of_sleep_lets_the_timer_count_a_last_cycle_but_no_pulse) {
  chipstate chip = at_rest("16C57");
  chip.progmem[0x010] = 0x003;
  chip.cpu.option = 0x00;
  quiet view;
  step(chip, view);
  EXPECT_TRUE(chip.sleeping);
  EXPECT_EQ(chip.prescount, 1);
  chip = at_rest("16C57");
  chip.progmem[0x010] = 0x003;
  chip.cpu.option = 0x27;
  chip.tockifreq = 1;
  chip.tockiperiod = 1;
  step(chip, view);
  EXPECT_EQ(chip.tockicount, 0);
  EXPECT_EQ(chip.prescount, 0);
}

// A program walked whole against the second reading of the rules: every state after every step.
TEST(step, walks_a_program_as_the_second_reading_does) {
  const std::vector<int> program = {0xC05, 0x028, 0xC02, 0x002, 0x2E8, 0xA04, 0x930, 0x1C8,
                                    0xC35, 0x024, 0x3A0, 0x2A4, 0x020, 0x749, 0xA09, 0x3E9};
  for (const catalogue_row& device : catalogue) {
    chipstate chip = at_rest(device.name);
    for (std::size_t i = 0; i < program.size(); ++i)
      chip.progmem[static_cast<int>(i)] = static_cast<std::uint16_t>(program[i]);
    chip.progmem[0x030] = 0x880;
    chip.cpu.pc = 0;
    chip.regs[reg_5] = word16(device.model.mask5 & 0x70);
    chip.regs[reg_6] = 0;
    quiet view;
    support::show_pins_of(chip, view);
    second_model::second_reading second;
    second.load_program(chip);
    for (int port = 0; port < 3; ++port)
      second.machine.boxes[static_cast<std::size_t>(port)] = view.in.pin_boxes[port];
    for (int i = 0; i < 400; ++i) {
      const int word = chip.progmem[chip.cpu.pc];
      const chipstate wanted = second.after(chip, [](auto& m) { second_model::step(m); });
      step(chip, view);
      ASSERT_EQ(differences(wanted, chip), "") << device.name << ", step " << i << ": " << deshex(word);
    }
  }
}

}  // namespace
}  // namespace estructura
