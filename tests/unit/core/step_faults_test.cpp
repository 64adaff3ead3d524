// Faults: which values may not overflow, and what stands at the fault.
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

#include "core/data_memory.h"
#include "core/step.h"
#include "core/timer.h"
#include "tests/support/differences.h"
#include "tests/unit/core/machine.h"

namespace estructura {
namespace {

using support::differences;
using support::machine;
using support::quiet;

constexpr std::int32_t most32 = std::numeric_limits<std::int32_t>::max();

// One step in a machine about to overflow, and what it has already done then.
struct row {
  const char* rule;
  int word;
  std::function<void(chipstate&)> before;
  std::function<void(chipstate&)> at_the_fault;
  bool marker_erased = true;
  bool watchdog_on = false;
};

void fetched(chipstate& chip) {
  chip.cpu.pc = 0x011;
  chip.regs[reg_pcl] = 0x11;
}
void counted(chipstate& chip) {
  ++chip.cycles;
  ++chip.wdtcount;
}

const std::vector<row> rows = {
    {"a stalled prescaler faults past 32767 and the instruction stands", 0xC77,
     [](chipstate& c) {
       c.cpu.option = 0x00;
       c.prescount = 32767;
     },
     [](chipstate& c) {
       fetched(c);
       counted(c);
       c.cpu.w = 0x77;
     }},
    {"the tick of a second cycle faults with the jump made and PCL not yet loaded", 0xA20,
     [](chipstate& c) {
       c.cpu.option = 0x00;
       c.prescount = 32767;
     },
     [](chipstate& c) {
       fetched(c);
       counted(c);
       counted(c);
       c.cpu.pc = 0x020;
     }},
    {"the T0CKI count faults past 32767", 0x000,
     [](chipstate& c) {
       c.cpu.option = 0x20;
       c.tockifreq = 1;
       c.tockiperiod = 5'000'000;
       c.tockicount = 32767;
     },
     [](chipstate& c) {
       fetched(c);
       counted(c);
     }},
    {"a T0CKI edge faults in a stalled prescaler", 0x000,
     [](chipstate& c) {
       c.cpu.option = 0x20;
       c.tockifreq = 1;
       c.tockiperiod = 1;
       c.prescount = 32767;
     },
     [](chipstate& c) {
       fetched(c);
       counted(c);
     }},
    {"the watchdog count faults past 31 bits with the cycle counted", 0x000,
     [](chipstate& c) { c.wdtcount = most32; },
     [](chipstate& c) {
       fetched(c);
       ++c.cycles;
     },
     true, true},
    {"the first cycle after a reset can fault before the fetch", 0x000,
     [](chipstate& c) {
       c.wdtcount = most32;
       c.firststep = true;
     },
     [](chipstate& c) {
       c.firststep = false;
       ++c.cycles;
     },
     false, true},
    {"the cycle counter faults past 31 bits", 0x000, [](chipstate& c) { c.cycles = most32; }, fetched},
    {"the cycle of a computed jump faults with PCL written", 0x022,
     [](chipstate& c) { c.cycles = most32 - 1; },
     [](chipstate& c) {
       c.cpu.pc = 0x05A;
       c.regs[reg_pcl] = 0x5A;
       counted(c);
     }},
    {"a pc outside program memory faults before anything is fetched", 0x000,
     [](chipstate& c) { c.cpu.pc = 2048; }, [](chipstate&) {}},
    {"a negative pc faults", 0x000, [](chipstate& c) { c.cpu.pc = -1; }, [](chipstate&) {}},
};

TEST(step, faults_where_its_row_says_and_leaves_the_state_of_the_fault) {
  for (const row& r : rows) {
    chipstate chip = machine("16C57");
    // What no refresh has reached shows that none ran.
    chip.regs[reg_5] = 0xFF;
    chip.progmem[0x010] = static_cast<std::uint16_t>(r.word);
    r.before(chip);
    chipstate wanted = chip;
    r.at_the_fault(wanted);
    quiet view;
    view.seen.marked = true;
    view.in.watchdog_on = r.watchdog_on;
    EXPECT_TRUE(support::faults([&] { step(chip, view); })) << r.rule;
    EXPECT_EQ(differences(wanted, chip), "") << r.rule;
    EXPECT_EQ(view.seen.marked, !r.marker_erased) << r.rule;
  }
}

TEST(step, lets_the_count_of_a_watchdog_that_is_off_stand_still_at_its_greatest_value) {
  struct still {
    const char* rule;
    int word;
    std::int32_t before, after;
  };
  const std::vector<still> cases = {{"NOP", 0x000, most32, most32},
                                    {"NOP up to it", 0x000, most32 - 1, most32},
                                    {"GOTO past it", 0xA20, most32 - 1, most32},
                                    {"MOVWF PCL past it", 0x022, most32 - 1, most32},
                                    {"CLRWDT from it", 0x004, most32, 0},
                                    {"SLEEP from it", 0x003, most32, 0}};
  for (const still& c : cases) {
    chipstate chip = machine("16C57");
    chip.progmem[0x010] = static_cast<std::uint16_t>(c.word);
    chip.wdtcount = c.before;
    quiet view;
    EXPECT_FALSE(support::faults([&] { step(chip, view); })) << c.rule;
    EXPECT_EQ(chip.wdtcount, c.after) << c.rule;
    EXPECT_EQ(view.warnings, 0) << c.rule;
  }
}

TEST(tocki_pulse, faults_past_32767) {
  chipstate chip = machine("16C57");
  chip.cpu.option = 0x00;
  chip.prescount = 32767;
  const chipstate before = chip;
  EXPECT_TRUE(support::faults([&] { tocki_pulse(chip); }));
  EXPECT_EQ(differences(before, chip), "");
}

TEST(regen, faults_where_a_period_does_not_fit_32_bits) {
  struct too_much {
    double frec, fr;
    bool fault;
  };
  // Watchdog divisor 128: 576 cycles a kHz. T0CKI: 250 FREC / FR.
  const std::vector<too_much> cases = {{3'728'270, 0, false}, {3'728'271, 0, true}, {1e300, 0, true},
                                       {4000, 0.001, false},  {4000, 0.0001, true}, {-3'728'270, 0, false},
                                       {-3'728'271, 0, true}};
  for (const too_much& c : cases) {
    chipstate chip = machine("16C57");
    chip.cpu.option = 0x2F;
    quiet view;
    view.in.watchdog_on = true;
    view.in.set_frequencies(c.frec, c.fr);
    EXPECT_EQ(support::faults([&] { regen(chip, view); }), c.fault) << "FREC " << c.frec << ", FR " << c.fr;
  }
}

TEST(regen, takes_a_period_up_to_the_very_edge_of_32_bits) {
  struct edge {
    double cycles;
    bool fault;
  };
  for (const edge& e :
       {edge{2147483647, false}, edge{2147483648, true}, edge{-2147483648, false}, edge{-2147483649, true}}) {
    chipstate chip = machine("16C57");
    chip.cpu.option = 0x20;
    quiet view;
    view.in.set_frequencies(e.cycles, 250);
    EXPECT_EQ(support::faults([&] { regen(chip, view); }), e.fault) << e.cycles;
    if (!e.fault) {
      EXPECT_EQ(chip.tockiperiod, e.cycles);
    }
  }
}

}  // namespace
}  // namespace estructura
