// Machines and screens for the tests of this room.
//
//   chipstate chip = machine("12C508");    // reset, past its first step, every cell telling itself apart
//   quiet view;                            // a screen that does nothing
//   chip.progmem[chip.cpu.pc] = 0xC05;
//   step(chip, view);
//
// Values that a test does not set are chosen so that reading the wrong cell shows: regs[i] is 40+i, bankregs
// 80+i (hexadecimal), each port's pins are of their own. Even regs[0], which only a hand edit fills, holds
// one.
#pragma once

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "common/fallo.h"
#include "core/chipstate.h"
#include "core/pantalla.h"

namespace estructura::apoyo {

/// The device table once more, so that no test compares the table with itself.
struct expected_device {
  std::string_view name;
  int progmask, datamask, optmask, mask5, mask6;
  bool hasportc, is16c5x;
};
inline constexpr std::array<expected_device, 7> expected_devices = {{
    {"16C58", 2047, 127, 63, 15, 255, false, true},
    {"16C57", 2047, 127, 63, 15, 255, true, true},
    {"16C56", 1023, 31, 63, 15, 255, false, true},
    {"16C55", 1023, 31, 63, 15, 255, true, true},
    {"16C54", 511, 31, 63, 15, 255, false, true},
    {"12C509", 1023, 63, 255, 252, 63, false, false},
    {"12C508", 511, 31, 255, 252, 63, false, false},
}};

inline device model_of(const expected_device& row) {
  device model;
  model.progmask = static_cast<std::int16_t>(row.progmask);
  model.datamask = static_cast<std::int16_t>(row.datamask);
  model.optmask = static_cast<std::int16_t>(row.optmask);
  model.mask5 = static_cast<std::int16_t>(row.mask5);
  model.mask6 = static_cast<std::int16_t>(row.mask6);
  model.hasportc = row.hasportc;
  model.is16c5x = row.is16c5x;
  return model;
}

inline chipstate machine(std::string_view name) {
  chipstate chip;
  for (const expected_device& row : expected_devices)
    if (row.name == name) chip.devmodel = model_of(row);
  EXPECT_NE(chip.devmodel.progmask, 0) << "no device " << name;
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

/// A screen that does nothing, whose configuration is already locked.
class quiet final : public pantalla {
 public:
  quiet() { env.config_open = false; }
};

/// A screen that writes down what the machine asks of it, in order.
class noting final : public pantalla {
 public:
  noting() { env.config_open = false; }
  void lock_configuration() override {
    env.config_open = false;
    asked.emplace_back("lock");
  }
  void clear_entry() override {
    env.entry_shown = false;
    asked.emplace_back("clear");
  }
  void warn_watchdog() override { asked.emplace_back("watchdog"); }
  std::vector<std::string> asked;
};

/// A screen whose pin boxes and pins stand as the machine's pins do.
inline void show_pins_of(const chipstate& chip, pantalla& view) {
  view.env.boxes[0] = static_cast<std::uint8_t>(chip.pina);
  view.env.boxes[1] = static_cast<std::uint8_t>(chip.pinb);
  view.env.boxes[2] = static_cast<std::uint8_t>(chip.pinc);
}

/// Whether an action ends in a fault.
template <class Action>
bool faults(Action action) {
  try {
    action();
  } catch (const fallo&) {
    return true;
  }
  return false;
}

}  // namespace estructura::apoyo
