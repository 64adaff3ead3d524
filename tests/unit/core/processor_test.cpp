// The effect of each instruction: a table of cases, the arithmetic over all operands, and every word on every
// device against the second machine.
#include <functional>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "core/step.h"
#include "files/disassembler.h"
#include "tests/model/second_reading.h"
#include "tests/support/differences.h"
#include "tests/unit/core/machine.h"

namespace estructura {
namespace {

using support::differences;
using support::execinst;
using support::machine;

using change = std::function<void(chipstate&)>;

std::int16_t word16(int value) {
  return static_cast<std::int16_t>(value);
}

// A case: what stands before, one word, and what stands after besides the cycle that every word costs.
struct row {
  const char* rule;
  const char* device;
  int word;
  change before;
  change after;
};

// Short forms for the rows.
void nothing(chipstate&) {}
change w(int value) {
  return [=](chipstate& c) { c.cpu.w = word16(value); };
}
change reg(int f, int value) {
  return [=](chipstate& c) { c.regs[f] = word16(value); };
}
change status(int value) {
  return reg(reg_status, value);
}
change banked(int i, int value) {
  return [=](chipstate& c) { c.bankregs[i] = word16(value); };
}
change pc(int value) {
  return [=](chipstate& c) { c.cpu.pc = word16(value); };
}
change pcl(int value) {
  return reg(reg_pcl, value);
}
change option(int value) {
  return [=](chipstate& c) { c.cpu.option = word16(value); };
}
change tris(int value_a, int value_b, int value_c) {
  return [=](chipstate& c) {
    c.cpu.trisa = word16(value_a);
    c.cpu.trisb = word16(value_b);
    c.cpu.trisc = word16(value_c);
  };
}
change stack(int top, int bottom) {
  return [=](chipstate& c) {
    c.stack[0] = word16(top);
    c.stack[1] = word16(bottom);
  };
}
change latches(int pd, int to) {
  return [=](chipstate& c) {
    c.pdlatch = word16(pd);
    c.tolatch = word16(to);
  };
}
change pins_b(int value) {
  return [=](chipstate& c) { c.pinb = word16(value); };
}
change wdtcount(int value) {
  return [=](chipstate& c) { c.wdtcount = value; };
}
change cycles(int value) {
  return [=](chipstate& c) { c.cycles = value; };
}
change prescount(int value) {
  return [=](chipstate& c) { c.prescount = word16(value); };
}
void asleep(chipstate& c) {
  c.sleeping = true;
}
// A second cycle without the timer (PCL written), and one that it sees (OPTION as reset: no T0CKI, no tick).
void second(chipstate& c) {
  ++c.cycles;
  ++c.wdtcount;
}
template <class... Changes>
change all(Changes... changes) {
  return [=](chipstate& c) { (static_cast<change>(changes)(c), ...); };
}
// A skip from `pc`, which the fetch has already advanced.
change skipped_to(int address) {
  return all(second, pc(address), pcl(address % 256));
}

// `machine` stands at pc 010 with W 5A, STATUS 18, regs[i] = 40+i, bankregs[i] = 80+i, in hexadecimal.
const std::vector<row> rows = {
    {"NOP does nothing", "16C57", 0x000, nothing, nothing},
    {"OPTION takes W whole", "16C57", 0x002, w(0xFF), option(0xFF)},
    {"SLEEP clears /PD, sets /TO and clears the watchdog", "16C57", 0x003, all(status(0x0F), latches(1, 0)),
     all(status(0x17), latches(0, 1), asleep, wdtcount(0))},
    {"SLEEP leaves the prescaler", "16C57", 0x003, prescount(7),
     all(status(0x10), latches(0, 1), asleep, wdtcount(0), prescount(7))},
    {"CLRWDT sets /TO and leaves /PD and STATUS", "16C57", 0x004, all(status(0x00), latches(0, 0)),
     all(latches(0, 1), wdtcount(0))},
    {"CLRWDT leaves the prescaler", "16C57", 0x004, prescount(7), all(wdtcount(0), prescount(7))},
    {"TRIS 5 takes W whole", "16C57", 0x005, w(0xFA), tris(0xFA, 255, 255)},
    {"TRIS 6", "16C57", 0x006, w(0xFA), tris(15, 0xFA, 255)},
    {"TRIS 7", "16C57", 0x007, w(0xFA), tris(15, 255, 0xFA)},
    {"TRIS 5 on a device without port A", "12C508", 0x005, w(0xFA), tris(0xFA, 63, 255)},
    {"TRIS 7 on a device without port C", "16C54", 0x007, w(0xFA), tris(15, 255, 0xFA)},
    {"MOVWF changes no flag", "16C57", 0x028, w(0), reg(8, 0)},
    {"MOVWF to a banked register", "16C57", 0x03F, nothing, banked(15, 0x5A)},
    {"MOVWF through INDF", "16C57", 0x020, reg(reg_fsr, 0x32), banked(18, 0x5A)},
    {"MOVWF TMR0 clears the prescaler", "16C57", 0x021, prescount(9), all(reg(1, 0x5A), prescount(0))},
    {"MOVWF PCL jumps within the page and costs a cycle", "16C57", 0x022, status(0x78),
     all(second, pc(0x65A), pcl(0x5A))},
    {"MOVWF PCL through INDF jumps too", "16C57", 0x020, reg(reg_fsr, 0x02),
     all(second, pc(0x05A), pcl(0x5A))},
    {"MOVWF STATUS stores W whole", "16C57", 0x023, w(0xFF), status(0xFF)},
    {"MOVWF FSR drops bit 7", "16C57", 0x024, w(0xFF), reg(reg_fsr, 0x7F)},
    {"CLRW leaves Z", "16C57", 0x040, nothing, w(0)},
    {"CLRW leaves Z set", "16C57", 0x040, status(0x1C), w(0)},
    {"CLRF leaves Z", "16C57", 0x068, nothing, reg(8, 0)},
    {"CLRF of a banked register", "16C57", 0x070, nothing, banked(0, 0)},
    {"SUBWF f - W", "16C57", 0x0A8, all(reg(8, 0x10), w(0x01)), all(reg(8, 0x0F), status(0x19))},
    {"SUBWF of equals: C, DC, Z", "16C57", 0x088, all(reg(8, 0x5A), w(0x5A)), all(w(0), status(0x1F))},
    {"SUBWF 0 - 1 borrows", "16C57", 0x0A8, all(reg(8, 0), w(1), status(0x1F)),
     all(reg(8, 255), status(0x18))},
    {"DECF 0 gives 255, Z clear", "16C57", 0x0E8, all(reg(8, 0), status(0x1C)),
     all(reg(8, 255), status(0x18))},
    {"DECF 1 gives 0, Z set", "16C57", 0x0C8, reg(8, 1), all(w(0), status(0x1C))},
    {"IORWF", "16C57", 0x128, all(reg(8, 0xA5), w(0x0F)), reg(8, 0xAF)},
    {"IORWF to zero", "16C57", 0x108, all(reg(8, 0), w(0)), status(0x1C)},
    {"ANDWF", "16C57", 0x148, all(reg(8, 0xA5), w(0x0F)), w(0x05)},
    {"ANDWF to zero", "16C57", 0x168, all(reg(8, 0xA0), w(0x0F)), all(reg(8, 0), status(0x1C))},
    {"XORWF", "16C57", 0x1A8, all(reg(8, 0xA5), w(0x0F)), reg(8, 0xAA)},
    {"XORWF of equals", "16C57", 0x188, all(reg(8, 0xA5), w(0xA5)), all(w(0), status(0x1C))},
    {"ADDWF half carry", "16C57", 0x1E8, all(reg(8, 0x01), w(0x0F)), all(reg(8, 0x10), status(0x1A))},
    {"ADDWF carry to zero", "16C57", 0x1C8, all(reg(8, 0x80), w(0x80)), all(w(0), status(0x1D))},
    {"ADDWF STATUS leaves the sum, not the flags", "16C57", 0x1E3, all(status(0x1F), w(0x20)), status(0x3F)},
    {"MOVF to itself tells zero", "16C57", 0x228, reg(8, 0), status(0x1C)},
    {"MOVF clears Z", "16C57", 0x208, status(0x1C), all(w(0x48), status(0x18))},
    {"MOVF of a port reads pins and overwrites the latch", "16C57", 0x206, nothing,
     all(w(0x23), reg(6, 0x23))},
    {"COMF", "16C57", 0x268, reg(8, 0x0F), reg(8, 0xF0)},
    {"COMF to zero", "16C57", 0x248, reg(8, 0xFF), all(w(0), status(0x1C))},
    {"INCF 255 gives 0, Z set", "16C57", 0x2A8, reg(8, 255), all(reg(8, 0), status(0x1C))},
    {"INCF clears Z and no other flag", "16C57", 0x288, all(reg(8, 0x0F), status(0x1F)),
     all(w(0x10), status(0x1B))},
    {"DECFSZ of 1 skips and stores 0, no flag", "16C57", 0x2E8, reg(8, 1), all(reg(8, 0), skipped_to(0x011))},
    {"DECFSZ of 2 goes on", "16C57", 0x2C8, reg(8, 2), w(1)},
    {"DECFSZ of 0 gives 255 and goes on", "16C57", 0x2E8, reg(8, 0), reg(8, 255)},
    {"RRF shifts C in and bit 0 out", "16C57", 0x328, all(reg(8, 0x02), status(0x19)),
     all(reg(8, 0x81), status(0x18))},
    {"RRF of 1", "16C57", 0x308, reg(8, 0x01), all(w(0), status(0x19))},
    {"RLF shifts C in and bit 7 out", "16C57", 0x368, all(reg(8, 0x40), status(0x19)),
     all(reg(8, 0x81), status(0x18))},
    {"RLF of 80", "16C57", 0x348, reg(8, 0x80), all(w(0), status(0x19))},
    {"SWAPF changes no flag", "16C57", 0x3A8, reg(8, 0xA5), reg(8, 0x5A)},
    {"INCFSZ of 255 skips and stores 0, no flag", "16C57", 0x3E8, reg(8, 255),
     all(reg(8, 0), skipped_to(0x011))},
    {"INCFSZ of 254 goes on", "16C57", 0x3C8, reg(8, 254), w(255)},
    {"BCF", "16C57", 0x4E8, reg(8, 0xFF), reg(8, 0x7F)},
    {"BCF of a port writes the pins back to the latch", "16C57", 0x406, nothing, reg(6, 0x22)},
    {"BSF", "16C57", 0x5E8, reg(8, 0x00), reg(8, 0x80)},
    {"BSF STATUS,Z", "16C57", 0x543, nothing, status(0x1C)},
    {"BTFSC of a 0 skips", "16C57", 0x608, reg(8, 0xFE), skipped_to(0x011)},
    {"BTFSC of a 1 goes on", "16C57", 0x608, reg(8, 0x01), nothing},
    {"BTFSS of a 1 skips", "16C57", 0x7E8, reg(8, 0x80), skipped_to(0x011)},
    {"BTFSS of a 0 goes on", "16C57", 0x7E8, reg(8, 0x7F), nothing},
    {"BTFSC of a port reads the pins", "16C57", 0x646, pins_b(0xFB), all(reg(6, 0xFB), skipped_to(0x011))},
    {"a skip to 800 goes on at 0", "16C57", 0x608, all(reg(8, 0), pc(0x7FF)), skipped_to(0)},
    {"a skip off a small device is not masked", "16C54", 0x608, all(reg(8, 0), pc(0x1FF)),
     all(second, pc(0x200), pcl(0))},
    {"RETLW", "16C57", 0x8A5, stack(0x123, 0x456),
     all(second, w(0xA5), pc(0x123), pcl(0x23), stack(0x456, 0x456))},
    {"CALL keeps the return address in PCL", "16C57", 0x923, all(pc(6), stack(0x111, 0x222)),
     all(second, pc(0x023), pcl(6), stack(6, 0x111))},
    {"CALL with page bit 6", "16C57", 0x923, all(pc(6), status(0x58)),
     all(second, pc(0x423), pcl(6), stack(6, 0))},
    {"GOTO has nine bits", "16C57", 0xBFF, nothing, all(second, pc(0x1FF), pcl(0xFF))},
    {"GOTO with both page bits", "16C57", 0xA12, status(0x78), all(second, pc(0x612), pcl(0x12))},
    {"GOTO ignores page bits that the device lacks", "16C54", 0xA12, status(0x78),
     all(second, pc(0x012), pcl(0x12))},
    {"MOVLW changes no flag", "16C57", 0xC00, nothing, w(0)},
    {"IORLW", "16C57", 0xDA5, status(0x1C), all(w(0xFF), status(0x18))},
    {"IORLW to zero", "16C57", 0xD00, w(0), status(0x1C)},
    {"ANDLW", "16C57", 0xE0F, nothing, w(0x0A)},
    {"ANDLW to zero", "16C57", 0xEA5, nothing, all(w(0), status(0x1C))},
    {"XORLW", "16C57", 0xFFF, nothing, w(0xA5)},
    {"XORLW to zero", "16C57", 0xF5A, nothing, all(w(0), status(0x1C))},
    // The harness counts the first cycle on top of what a row says.
    {"the cycle counter goes on at 0 after 999,999,999", "16C57", 0x000, cycles(999'999'999), cycles(-1)},
    {"a jump carries the cycle counter over by its second cycle", "16C57", 0xA00, cycles(999'999'999),
     all(
         cycles(0), [](chipstate& c) { ++c.wdtcount; }, pc(0), pcl(0))},
};

TEST(execinst, does_what_its_row_says) {
  for (const row& r : rows) {
    chipstate chip = machine(r.device);
    r.before(chip);
    chipstate wanted = chip;
    r.after(wanted);
    // The cycle that every word costs; one that clears the watchdog does so after it was counted.
    ++wanted.cycles;
    const bool clears_watchdog = r.word == 0x003 || r.word == 0x004;
    if (!clears_watchdog) ++wanted.wdtcount;
    execinst(chip, r.word);
    EXPECT_EQ(differences(wanted, chip), "") << r.rule << ": " << deshex(r.word);
  }
}

TEST(execinst, counts_a_second_cycle_for_the_timer_where_the_rule_has_one) {
  struct ticks {
    int word;
    int second_ticks;
  };
  // Ticks of the timer inside the instruction; the step makes the first cycle's own.
  const std::vector<ticks> cases = {{0xA05, 1}, {0x905, 1}, {0x805, 1}, {0x608, 1}, {0x708, 0},
                                    {0x2E9, 1}, {0x3EA, 1}, {0x022, 0}, {0x000, 0}, {0x1C8, 0}};
  for (const ticks& c : cases) {
    chipstate chip = machine("16C57");
    chip.cpu.option = 0x07;
    chip.regs[8] = 0;
    chip.regs[9] = 1;
    chip.regs[10] = 255;
    execinst(chip, c.word);
    EXPECT_EQ(chip.prescount, c.second_ticks) << deshex(c.word);
  }
}

TEST(execinst, three_calls_and_three_returns_go_back_to_the_second_caller_twice) {
  chipstate chip = machine("16C57");
  for (const int from : {0x010, 0x020, 0x030}) {
    chip.cpu.pc = word16(from + 1);
    execinst(chip, 0x940);
  }
  std::vector<int> returns;
  for (int i = 0; i < 3; ++i) {
    execinst(chip, 0x800);
    returns.push_back(chip.cpu.pc);
  }
  EXPECT_EQ(returns, (std::vector<int>{0x031, 0x021, 0x021}));
}

TEST(execinst, retlw_without_a_call_returns_to_0_after_a_reset) {
  chipstate chip = machine("16C57");
  chip.stack.fill(0);
  execinst(chip, 0x800);
  EXPECT_EQ(chip.cpu.pc, 0);
}

TEST(execinst, words_that_are_no_instruction_cost_one_cycle_and_do_nothing) {
  std::vector<int> words = {0x001, 0x041, 0x04F, 4096, 4097, 0x4A85, 0x7FFF, 0xFFFE, -2, -32768};
  for (int lo = 8; lo < 16; ++lo) words.push_back(lo);
  for (int lo = 0; lo < 16; ++lo) {
    words.push_back(0x010 + lo);
    words.push_back(0x050 + lo);
    if (lo != 0) words.push_back(0x040 + lo);
  }
  for (const int word : words) {
    chipstate chip = machine("16C57");
    chipstate wanted = chip;
    ++wanted.cycles;
    ++wanted.wdtcount;
    execinst(chip, word);
    EXPECT_EQ(differences(wanted, chip), "") << word;
  }
}

// Both machines execute a word on the same values; what the quick one makes of them, if the slow one
// disagrees.
struct operands {
  int file;
  int w;
  int flags;
};
std::string disagreement(chipstate& chip, second_model::model_machine& slow, int word,
                         const operands& given) {
  chip.regs[8] = word16(given.file);
  chip.cpu.w = word16(given.w);
  chip.regs[reg_status] = word16(0xF8 + given.flags);
  chip.cycles = 0;
  slow.regs[8] = given.file;
  slow.w = given.w;
  slow.regs[3] = 0xF8 + given.flags;
  slow.cycles = 0;
  execinst(chip, word);
  second_model::execinst(slow, word);
  if (chip.regs[8] == slow.regs[8] && chip.cpu.w == slow.w && chip.regs[reg_status] == slow.regs[3] &&
      chip.cycles == slow.cycles)
    return {};
  std::ostringstream out;
  out << deshex(word) << ": f " << given.file << ", W " << given.w << ", flags " << given.flags
      << ": wanted f " << slow.regs[8] << ", W " << slow.w << ", STATUS " << slow.regs[3] << ", cycles "
      << slow.cycles << ", got f " << chip.regs[8] << ", W " << chip.cpu.w << ", STATUS "
      << chip.regs[reg_status] << ", cycles " << chip.cycles;
  return out.str();
}

// All pairs of a file value and a W, with the flags all clear and all set, into W and into the file.
TEST(execinst, agrees_with_a_second_reading_on_all_operands) {
  chipstate chip = machine("16C57");
  second_model::second_reading second;
  second.load(chip);
  // ADDWF SUBWF INCF DECF, RRF RLF, SWAPF COMF MOVF, IORWF ANDWF XORWF
  for (const int base : {0x1C0, 0x080, 0x280, 0x0C0, 0x300, 0x340, 0x380, 0x240, 0x200, 0x100, 0x140, 0x180})
    for (const int flags : {0, 7})
      for (const int d : {0, 1})
        for (int file = 0; file < 256; ++file)
          for (int w_value = 0; w_value < 256; ++w_value) {
            const std::string shown =
                disagreement(chip, second.machine, base + 32 * d + 8, {file, w_value, flags});
            ASSERT_EQ(shown, "");
          }
}

TEST(execinst, agrees_with_a_second_reading_on_all_literals_and_W) {
  chipstate chip = machine("16C57");
  second_model::second_reading second;
  second.load(chip);
  for (const int base : {0xC00, 0xD00, 0xE00, 0xF00})
    for (const int flags : {0, 7})
      for (int k = 0; k < 256; ++k)
        for (int w_value = 0; w_value < 256; ++w_value)
          ASSERT_EQ(disagreement(chip, second.machine, base + k, {0x48, w_value, flags}), "");
}

// Every word on every device in machines chosen to reach the rules' corners.
TEST(execinst, every_word_on_every_device_agrees_with_a_second_reading) {
  second_model::second_reading second;
  const std::vector<change> corners = {
      nothing,
      all(status(0xFF), w(0), reg(reg_fsr, 0x02)),
      all(status(0x38), w(0xFF), reg(reg_fsr, 0x24), pc(0x7FF)),
      all(status(0x41), w(1), reg(reg_fsr, 0x76), pc(0x1FF), option(0x00), prescount(1)),
      all(w(0x40), reg(reg_fsr, 0x13), option(0x28), [](chipstate& c) { c.tockifreq = c.tockiperiod = 1; }),
      all(
          [](chipstate& c) {
            for (std::int16_t& cell : c.regs)
              cell = static_cast<std::int16_t>(&cell == &c.regs[3] ? 0x18 : 1);
            for (std::int16_t& cell : c.bankregs) cell = 255;
          },
          stack(0x7FF, 0x3FF), cycles(999'999'998), prescount(5)),
  };
  for (const catalogue_row& device : catalogue)
    for (std::size_t corner = 0; corner < corners.size(); ++corner)
      for (int word = 0; word < 4096; ++word) {
        chipstate chip = machine(device.name);
        corners[corner](chip);
        const chipstate wanted = second.after(chip, [word](auto& m) { second_model::execinst(m, word); });
        execinst(chip, word);
        ASSERT_EQ(differences(wanted, chip), "")
            << device.name << ", corner " << corner << ", word " << word << ": " << deshex(word);
      }
}

}  // namespace
}  // namespace estructura
