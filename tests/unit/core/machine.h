// Machines and what stands around them, for the tests of this room.
//
//   chipstate chip = machine("12C508");    // reset, past its first step, every cell telling itself apart
//   quiet view;                            // its inputs, and what it leaves to be seen
//   chip.progmem[chip.cpu.pc] = 0xC05;
//   step(chip, view);
//
// Values that a test does not set are chosen so that reading the wrong cell shows: regs[i] is 40+i, bankregs
// 80+i (hexadecimal), each port's pins are of their own. Even regs[0], which only a hand edit fills, holds
// one.
#pragma once

#include <gtest/gtest.h>
#include <string_view>

#include "common/fault.h"
#include "core/chipstate.h"
#include "core/devices.h"
#include "core/each_cycle.h"
#include "core/step.h"

namespace estructura::support {

inline chipstate machine(std::string_view name) {
  chipstate chip;
  select_device(chip, device_index(name));
  chip.progmem.fill(unprogrammed);
  for (int i = 0; i < chip.regs.size(); ++i) chip.regs[i] = static_cast<std::int16_t>(0x40 + i);
  for (int i = 0; i < chip.bankregs.size(); ++i) chip.bankregs[i] = static_cast<std::int16_t>(0x80 + i);
  chip.regs[reg_status] = 0x18;
  chip.regs[reg_fsr] = 0;
  chip.cpu.pc = 0x010;
  chip.regs[reg_pcl] = 0x10;
  chip.cpu.w = 0x5A;
  chip.cpu.option = chip.devmodel.optmask;
  chip.cpu.trisa = chip.devmodel.mask5;
  chip.cpu.trisb = chip.devmodel.mask6;
  chip.cpu.trisc = 255;
  chip.pdlatch = 1;
  chip.tolatch = 1;
  chip.pina = 0x05;
  chip.pinb = 0x23;
  chip.pinc = 0x3C;
  chip.cycles = 100;
  chip.wdtcount = 50;
  chip.wdtlimit = 18000;
  return chip;
}

/// What stands around a machine, and what it leaves to be seen.
struct quiet {
  inputs in;
  trail seen;
  int warnings = 0;  ///< times the watchdog ran out
};

/// A step to its end, with nobody who has to be told of a time-out first.
inline void step(chipstate& chip, quiet& view) {
  if (estructura::step(chip, view.in, view.seen) == step_end::whole) return;
  ++view.warnings;
  finish_time_out(chip, view.in, view.seen);
}
inline void regen(chipstate& chip, quiet& view) {
  estructura::regen(chip, view.in, view.seen);
}
inline void pin_click(chipstate& chip, quiet& view, int port, int bit, bool on) {
  estructura::pin_click(chip, view.in, view.seen, port, bit, on);
}
/// With the watchdog off.
inline void execinst(chipstate& chip, int word) {
  estructura::execinst(chip, {}, word);
}

// Data memory as an instruction sees it.
inline int readreg(chipstate& chip, int f) {
  return each_cycle(chip, inputs{}).readreg(static_cast<std::size_t>(f));
}
inline void writereg(chipstate& chip, int f, int tofile, int value) {
  each_cycle(chip, inputs{}).writereg(static_cast<std::size_t>(f), tofile, value);
}

/// Pin boxes that stand as the machine's pins do.
inline void show_pins_of(const chipstate& chip, quiet& view) {
  view.in.pin_boxes[0] = static_cast<std::uint8_t>(chip.pina);
  view.in.pin_boxes[1] = static_cast<std::uint8_t>(chip.pinb);
  view.in.pin_boxes[2] = static_cast<std::uint8_t>(chip.pinc);
}

/// Whether an action ends in a fault.
template <class Action>
bool faults(Action action) {
  try {
    action();
  } catch (const machine_fault&) {
    return true;
  }
  return false;
}

}  // namespace estructura::support
