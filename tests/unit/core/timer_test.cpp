// Timer0, its prescaler, T0CKI, and the watchdog.
#include "core/timer.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "core/resets.h"
#include "core/step.h"
#include "tests/model/second_reading.h"
#include "tests/support/differences.h"
#include "tests/unit/core/machine.h"

namespace estructura {
namespace {

using support::differences;
using support::machine;
using support::quiet;
using support::writereg;

std::int16_t word16(int value) {
  return static_cast<std::int16_t>(value);
}

TEST(prescratio, follows_PS_and_PSA_for_every_OPTION) {
  constexpr std::array<int, 8> powers = {1, 2, 4, 8, 16, 32, 64, 128};
  chipstate chip = machine("12C508");
  for (int option = 0; option < 256; ++option) {
    chip.cpu.option = word16(option);
    const bool to_watchdog = option / 8 % 2 == 1;
    const int power = powers[static_cast<std::size_t>(option % 8)];
    EXPECT_EQ(prescratio(chip, 0), to_watchdog ? power : 1) << option;
    EXPECT_EQ(prescratio(chip, 1), to_watchdog ? 1 : 2 * power) << option;
    EXPECT_EQ(prescratio(chip, -1), prescratio(chip, 1)) << option;
  }
}

TEST(tmrtick, advances_TMR0_once_every_ratio_cycles_of_the_instruction_clock) {
  for (int option = 0; option < 256; ++option) {
    if (option / 32 % 2 == 1) continue;
    chipstate chip = machine("12C508");
    chip.cpu.option = word16(option);
    chip.regs[reg_tmr0] = 0xFE;
    const int ratio = prescratio(chip, 1);
    int advanced = 0;
    for (int cycle = 1; cycle <= 3 * ratio; ++cycle) {
      const int before = chip.regs[reg_tmr0];
      tmrtick(chip);
      if (chip.regs[reg_tmr0] != before) {
        ++advanced;
        ASSERT_EQ(cycle % ratio, 0) << option;
        ASSERT_EQ(chip.regs[reg_tmr0], (before + 1) % 256) << option;
      }
    }
    EXPECT_EQ(advanced, 3) << option;
    EXPECT_EQ(chip.regs[reg_tmr0], 1) << "wraps at 256, option " << option;
  }
}

TEST(tmrtick, agrees_with_a_second_reading_for_every_OPTION_and_source) {
  second_model::second_reading second;
  struct source {
    int tockifreq, tockiperiod, tockicount;
    bool sleeping;
  };
  const std::vector<source> sources = {{0, 0, 0, false},    {1000, 1, 0, false}, {1000, 5, 3, false},
                                       {1000, 5, 4, false}, {1000, 5, 5, true},  {0, 1, 9, true}};
  for (int option = 0; option < 256; ++option)
    for (const source& s : sources) {
      chipstate chip = machine("12C508");
      chip.cpu.option = word16(option);
      chip.tockifreq = s.tockifreq;
      chip.tockiperiod = s.tockiperiod;
      chip.tockicount = word16(s.tockicount);
      chip.sleeping = s.sleeping;
      chip.regs[reg_tmr0] = 0xFF;
      for (int i = 0; i < 40; ++i) {
        const chipstate wanted = second.after(chip, [](auto& m) { second_model::tmrtick(m); });
        tmrtick(chip);
        ASSERT_EQ(differences(wanted, chip), "") << "option " << option << ", tick " << i;
      }
    }
}

TEST(tmrtick, stalls_when_the_ratio_falls_below_the_count_until_TMR0_is_written) {
  chipstate chip = machine("16C57");
  chip.cpu.option = 0x07;
  for (int i = 0; i < 10; ++i) tmrtick(chip);
  chip.cpu.option = 0x00;
  const int stalled = chip.regs[reg_tmr0];
  for (int i = 0; i < 1000; ++i) tmrtick(chip);
  EXPECT_EQ(chip.regs[reg_tmr0], stalled);
  EXPECT_EQ(chip.prescount, 1010);
  writereg(chip, reg_tmr0, 1, 0);
  tmrtick(chip);
  EXPECT_EQ(chip.regs[reg_tmr0], 0);
  tmrtick(chip);
  EXPECT_EQ(chip.regs[reg_tmr0], 1);
}

TEST(tmrtick, stalled_goes_on_after_power_on) {
  chipstate chip = machine("16C57");
  chip.prescount = 1010;
  power_on(chip);
  chip.cpu.option = 0x00;
  tmrtick(chip);
  tmrtick(chip);
  EXPECT_EQ(chip.regs[reg_tmr0], 1);
}

TEST(tmrtick, counts_a_goto_twice) {
  chipstate chip = machine("16C57");
  chip.cpu.option = 0x07;
  chip.progmem[0x010] = 0xA20;
  quiet view;
  step(chip, view);
  EXPECT_EQ(chip.prescount, 2);
}

TEST(tmrtick, leaves_both_counts_alone_without_a_pulse_train) {
  chipstate chip = machine("16C57");
  chip.cpu.option = 0x20;
  chip.tockifreq = 0;
  chip.tockiperiod = 1;
  const chipstate before = chip;
  for (int i = 0; i < 10; ++i) tmrtick(chip);
  EXPECT_EQ(differences(before, chip), "");
}

TEST(tmrtick, advances_TMR0_once_a_period_of_the_pulse_train) {
  chipstate chip = machine("16C57");
  chip.cpu.option = 0x28;  // ratio 1
  chip.tockifreq = 1000;
  chip.tockiperiod = 1000;
  chip.regs[reg_tmr0] = 0;
  for (int i = 0; i < 2999; ++i) tmrtick(chip);
  EXPECT_EQ(chip.regs[reg_tmr0], 2);
  tmrtick(chip);
  EXPECT_EQ(chip.regs[reg_tmr0], 3);
}

TEST(tmrtick, takes_no_notice_of_the_source_edge) {
  for (const int edge : {0x00, 0x10}) {
    chipstate chip = machine("16C57");
    chip.cpu.option = word16(0x28 + edge);
    chip.tockifreq = 1;
    chip.tockiperiod = 1;
    chip.regs[reg_tmr0] = 0;
    for (int i = 0; i < 5; ++i) tmrtick(chip);
    EXPECT_EQ(chip.regs[reg_tmr0], 5) << edge;
  }
}

TEST(tocki_pulse, is_one_edge_whatever_the_source) {
  for (int option = 0; option < 256; ++option) {
    chipstate chip = machine("12C508");
    chip.cpu.option = word16(option);
    chip.regs[reg_tmr0] = 0xFF;
    const int ratio = prescratio(chip, 1);
    for (int pulse = 1; pulse < ratio; ++pulse) {
      ASSERT_FALSE(tocki_pulse(chip)) << option;
      ASSERT_EQ(chip.prescount, pulse) << option;
    }
    EXPECT_TRUE(tocki_pulse(chip)) << option;
    EXPECT_EQ(chip.regs[reg_tmr0], 0) << option;
    EXPECT_EQ(chip.prescount, 0) << option;
  }
}

TEST(tocki_pulse, is_not_seen_in_sleep) {
  chipstate chip = machine("16C57");
  chip.sleeping = true;
  const chipstate before = chip;
  EXPECT_FALSE(tocki_pulse(chip));
  EXPECT_EQ(differences(before, chip), "");
}

TEST(wdtcal, has_run_out_from_the_limit_on_with_its_count_cleared) {
  struct row {
    std::int32_t count;
    bool out;
  };
  for (const row& r : {row{17'999, false}, row{18'000, true}, row{18'001, true}}) {
    chipstate chip = machine("12C508");
    chip.wdtcount = r.count;
    chipstate wanted = chip;
    if (r.out) wanted.wdtcount = 0;
    EXPECT_EQ(wdtcal(chip), r.out) << r.count;
    EXPECT_EQ(differences(wanted, chip), "") << r.count;
  }
}

TEST(wdtcal, does_nothing_in_sleep) {
  chipstate chip = machine("16C57");
  chip.sleeping = true;
  chip.wdtcount = 20'000;
  const chipstate before = chip;
  EXPECT_FALSE(wdtcal(chip));
  EXPECT_EQ(differences(before, chip), "");
}

TEST(finish_time_out, resets_with_TO_clear_and_keeps_what_the_latches_hold) {
  chipstate chip = machine("12C508");
  chip.pdlatch = 0;
  chip.gpwuflatch = 1;
  chip.wdtcount = 0;
  quiet view;
  show_pins_of(chip, view);
  finish_time_out(chip, view.in, view.seen);
  EXPECT_EQ(chip.tolatch, 0);
  EXPECT_EQ(chip.pdlatch, 0);
  EXPECT_EQ(chip.gpwuflatch, 1);
  EXPECT_EQ(chip.cpu.pc, 511);
  EXPECT_EQ(chip.cycles, 0);
}

TEST(finish_time_out, refreshes_before_the_tick_so_that_the_pulse_train_has_its_period) {
  // 1000 cycles a pulse, of which no refresh has told the machine yet.
  chipstate chip = machine("16C57");
  chip.tockifreq = 1000;
  chip.tockiperiod = 0;
  chip.tockicount = 0;
  chip.regs[reg_tmr0] = 0;
  quiet view;
  view.in.set_frequencies(4000, 1000);
  finish_time_out(chip, view.in, view.seen);
  EXPECT_EQ(chip.tockicount, 1);
  EXPECT_EQ(chip.regs[reg_tmr0], 0);
  EXPECT_EQ(chip.tockiperiod, 1000);
}

TEST(step, checks_the_watchdog_only_while_it_is_on) {
  for (const bool on : {false, true}) {
    chipstate chip = machine("16C57");
    chip.progmem[0x010] = 0x000;
    chip.wdtcount = 20'000;
    quiet view;
    view.in.watchdog_on = on;
    step(chip, view);
    EXPECT_EQ(view.warnings, on ? 1 : 0);
  }
}

TEST(regen, recomputes_the_watchdog_limit_while_it_is_on) {
  struct row {
    int option;
    double frec;
    std::int32_t limit;
  };
  // 4.5 cycles a kHz and step of the divisor; halves go to the even neighbour.
  const std::vector<row> rows = {
      {0x08, 4000, 18'000},      {0x0F, 4000, 2'304'000},
      {0x00, 4000, 18'000},      {0x07, 4000, 18'000},
      {0x09, 4000, 36'000},      {0x0F, 32, 18'432},
      {0x0F, 20000, 11'520'000}, {0x08, 33, 148},
      {0x08, 35, 158},           {0x08, 0, 0},
      {0x08, 33.4, 150},         {0x08, -2, -9},
  };
  for (const row& r : rows) {
    chipstate chip = machine("16C57");
    chip.cpu.option = word16(r.option);
    quiet view;
    view.in.set_frequencies(r.frec, 0);
    chip.wdtlimit = 7;
    regen(chip, view);
    EXPECT_EQ(chip.wdtlimit, 7) << "off, FREC " << r.frec;
    view.in.watchdog_on = true;
    regen(chip, view);
    EXPECT_EQ(chip.wdtlimit, r.limit) << "OPTION " << r.option << ", FREC " << r.frec;
  }
}

TEST(regen, recomputes_the_T0CKI_period_while_edges_count_and_FR_is_set) {
  struct row {
    int option;
    double frec, fr;
    std::int32_t period;
  };
  constexpr std::int32_t kept = 7;
  const std::vector<row> rows = {
      {0x20, 4000, 1000, 1000}, {0x20, 4000, 0, kept},
      {0x00, 4000, 1000, kept}, {0x20, 20000, 1, 5'000'000},
      {0x20, 1, 100, 2},        {0x20, 3, 500, 2},
      {0x20, 5, 500, 2},        {0x20, 4000, 1e6, 1},
      {0x20, 32, 1e6, 0},       {0x20, 4000, 0.5, 2'000'000},
  };
  for (const row& r : rows) {
    chipstate chip = machine("16C57");
    chip.cpu.option = word16(r.option);
    chip.tockiperiod = kept;
    quiet view;
    view.in.set_frequencies(r.frec, r.fr);
    regen(chip, view);
    EXPECT_EQ(chip.tockiperiod, r.period) << "FREC " << r.frec << ", FR " << r.fr;
  }
}

}  // namespace
}  // namespace estructura
