// The pins: outputs follow their latches, inputs keep what the person set, and the 12C50x wakes.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "core/step.h"
#include "tests/support/differences.h"
#include "tests/unit/core/machine.h"

namespace estructura {
namespace {

using support::differences;
using support::machine;
using support::quiet;
using support::show_pins_of;

std::int16_t word16(int value) {
  return static_cast<std::int16_t>(value);
}

// The bits of `latch` where `tris` is 0, those of `pins` elsewhere, within the port's width.
int followed(int pins, int tris, int latch, int width) {
  int out = 0;
  for (int i = 0; i < 8; ++i) {
    const int weight = 1 << i;
    const bool output = tris / weight % 2 == 0 && weight <= width;
    out += (output ? latch : pins) / weight % 2 * weight;
  }
  return out;
}

TEST(regen, lets_the_outputs_of_every_present_port_follow_their_latches) {
  for (const catalogue_row& device : catalogue)
    for (const int pattern : {0x00, 0xFF, 0x55, 0xA6, 0x0F})
      for (int tris = 0; tris < 256; ++tris) {
        chipstate chip = machine(device.name);
        chip.pina = 0x0A;
        chip.pinb = 0x2C;
        chip.pinc = 0x99;
        quiet view;
        show_pins_of(chip, view);
        chip.cpu.trisa = chip.cpu.trisb = chip.cpu.trisc = word16(tris);
        chip.regs[5] = chip.regs[6] = chip.regs[7] = word16(pattern);
        const int a = device.model.is16c5x ? followed(0x0A, tris, pattern, 8) : 0x0A;
        const int b = followed(0x2C, tris & device.model.mask6, pattern & device.model.mask6, 128);
        const int c = device.model.hasportc ? followed(0x99, tris, pattern, 128) : 0x99;
        regen(chip, view);
        const std::string where = std::string(device.name) + ", TRIS " + std::to_string(tris);
        ASSERT_EQ(chip.pina, a) << where;
        ASSERT_EQ(chip.pinb, b) << where;
        ASSERT_EQ(chip.pinc, c) << where;
        ASSERT_EQ(view.in.pin_boxes[0], a) << where;
        ASSERT_EQ(view.in.pin_boxes[1], b) << where;
        ASSERT_EQ(view.in.pin_boxes[2], c) << where;
      }
}

TEST(step, that_writes_an_output_port_is_read_back_as_written) {
  chipstate chip = machine("16C57");
  chip.cpu.trisb = 0x00;
  chip.cpu.w = 0x55;
  chip.progmem[0x010] = 0x026;  // MOVWF 06
  chip.progmem[0x011] = 0x206;  // MOVF 06,W
  quiet view;
  show_pins_of(chip, view);
  step(chip, view);
  EXPECT_EQ(chip.pinb, 0x55);
  EXPECT_EQ(view.in.pin_boxes[1], 0x55);
  chip.cpu.w = 0;
  step(chip, view);
  EXPECT_EQ(chip.cpu.w, 0x55);
}

TEST(step, that_writes_an_input_port_changes_the_latch_only) {
  chipstate chip = machine("16C57");
  chip.cpu.w = 0x55;
  chip.progmem[0x010] = 0x026;
  chip.progmem[0x011] = 0x206;
  quiet view;
  show_pins_of(chip, view);
  step(chip, view);
  EXPECT_EQ(chip.regs[reg_6], 0x55);
  EXPECT_EQ(chip.pinb, 0x23);
  step(chip, view);
  EXPECT_EQ(chip.cpu.w, 0x23);
}

TEST(pin_click, sets_or_clears_the_bit_of_its_port_and_refreshes) {
  for (int port = 0; port < 3; ++port)
    for (int bit = 0; bit < (port == 0 ? 4 : 8); ++bit)
      for (const bool on : {false, true}) {
        chipstate chip = machine("16C57");
        chip.regs[reg_5] = 0x05;
        chip.pina = chip.pinb = chip.pinc = word16(on ? 0 : 255);
        quiet view;
        show_pins_of(chip, view);
        chipstate wanted = chip;
        std::int16_t& pins = port == 0 ? wanted.pina : port == 1 ? wanted.pinb : wanted.pinc;
        pins = word16(on ? 1 << bit : 255 - (1 << bit));
        pin_click(chip, view, port, bit, on);
        EXPECT_EQ(differences(wanted, chip), "") << port << "(" << bit << ")";
        EXPECT_EQ(view.in.pin_boxes[port], pins) << port << "(" << bit << ")";
        EXPECT_TRUE(view.seen.refreshed);
      }
}

struct wake_row {
  const char* device;
  int bit;
  bool sleeping;
  int option;
  bool wakes;
};

TEST(pin_click, on_GP0_GP1_or_GP3_wakes_a_sleeping_12C50x_unless_OPTION_7_forbids_it) {
  std::vector<wake_row> rows;
  for (int bit = 0; bit < 6; ++bit) {
    const bool waking_pin = bit == 0 || bit == 1 || bit == 3;
    rows.push_back({"12C508", bit, true, 0x7F, waking_pin});
    rows.push_back({"12C509", bit, true, 0x00, waking_pin});
    rows.push_back({"12C508", bit, true, 0x80, false});
    rows.push_back({"12C508", bit, false, 0x7F, false});
    rows.push_back({"16C57", bit, true, 0x3F, false});
  }
  for (const wake_row& r : rows)
    for (const bool on : {false, true})
      for (const int tris : {0xFF, 0x00}) {
        chipstate chip = machine(r.device);
        chip.sleeping = r.sleeping;
        chip.cpu.option = word16(r.option & chip.devmodel.optmask);
        chip.pdlatch = 0;
        chip.regs[reg_status] = 0x10;
        chip.pinb = word16(on ? 0 : 0x3F);
        chip.cpu.trisb = word16(tris & chip.devmodel.mask6);
        // An output whose latch agrees with the click, so that the refresh moves nothing by itself.
        chip.regs[reg_6] = word16(on ? 1 << r.bit : 0x3F - (1 << r.bit));
        quiet view;
        show_pins_of(chip, view);
        view.in.pin_boxes[1] = static_cast<std::uint8_t>(chip.regs[reg_6]);
        pin_click(chip, view, 1, r.bit, on);
        const std::string where = std::string(r.device) + ", bit " + std::to_string(r.bit) + ", OPTION " +
                                  std::to_string(r.option) + (on ? ", on" : ", off");
        EXPECT_EQ(chip.sleeping, r.sleeping && !r.wakes) << where;
        EXPECT_EQ(chip.gpwuflatch, r.wakes ? 1 : 0) << where;
        EXPECT_EQ(chip.cpu.pc, r.wakes ? chip.devmodel.progmask : 0x010) << where;
        EXPECT_EQ(chip.regs[reg_status], r.wakes ? 0x90 : 0x10) << where;
        EXPECT_EQ(view.seen.arrived, r.wakes) << where;
        EXPECT_EQ(view.seen.inner, r.wakes ? chip.devmodel.progmask : -1) << where;
      }
}

TEST(pin_click, that_wakes_the_chip_refreshes_after_the_reset) {
  chipstate chip = machine("12C508");
  chip.sleeping = true;
  chip.cpu.option = 0x00;
  quiet view;
  show_pins_of(chip, view);
  view.in.watchdog_on = true;
  pin_click(chip, view, 1, 0, false);
  EXPECT_FALSE(chip.sleeping);
  // OPTION as reset divides by 128.
  EXPECT_EQ(chip.wdtlimit, 2'304'000);
}

TEST(pin_click, of_a_port_that_is_not_GPIO_wakes_nothing) {
  for (const int port : {0, 2}) {
    chipstate chip = machine("12C508");
    chip.sleeping = true;
    chip.cpu.option = 0x00;
    quiet view;
    show_pins_of(chip, view);
    pin_click(chip, view, port, 0, true);
    EXPECT_TRUE(chip.sleeping);
  }
}

TEST(regen, wakes_the_chip_when_a_latch_moves_a_waking_output) {
  struct row {
    int latch;
    bool wakes;
  };
  for (const row& r :
       {row{0x01, true}, row{0x02, true}, row{0x04, false}, row{0x08, true}, row{0x30, false}}) {
    chipstate chip = machine("12C508");
    chip.sleeping = true;
    chip.cpu.option = 0x00;
    chip.cpu.trisb = 0;
    chip.pinb = 0;
    chip.regs[reg_6] = word16(r.latch);
    quiet view;
    show_pins_of(chip, view);
    regen(chip, view);
    EXPECT_EQ(chip.pinb, r.latch);
    EXPECT_EQ(chip.sleeping, !r.wakes) << r.latch;
    EXPECT_EQ(chip.cpu.trisb, r.wakes ? 0x3F : 0) << r.latch;
  }
}

}  // namespace
}  // namespace estructura
