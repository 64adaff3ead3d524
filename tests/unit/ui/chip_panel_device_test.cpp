// The change of device.
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "common/text.h"
#include "core/devices.h"
#include "tests/support/test_window.h"

namespace estructura {
namespace {

using support::test_window;

TEST(device, shows_what_it_has_whatever_was_shown_before) {
  for (const catalogue_row& from : catalogue)
    for (const auto& [device, model] : catalogue) {
      test_window w(from.name);
      w.view.pick(id::PIC, device);
      const int words = model.progmask + 1;
      std::set<std::string> hidden = {"lst"};
      const auto hide = [&](bool when, std::initializer_list<const char*> names) {
        if (when) hidden.insert(names.begin(), names.end());
      };
      hide(!model.hasportc,
           {"PC(0)", "PC(1)", "PC(2)", "PC(3)", "PC(4)", "PC(5)", "PC(6)", "PC(7)", "lp(2)", "BPC", "TRISC"});
      // OPTION as reset counts T0CKI, and on the 12C50x that is GP2.
      hide(!model.is16c5x,
           {"PB(2)", "PB(6)", "PB(7)", "lp(0)", "PA(0)", "PA(1)", "PA(2)", "PA(3)", "BPA", "TRISA"});
      hide(model.is16c5x, {"fext", "CMCLR"});
      hide(model.datamask < 127, {"MD(2)", "MD(3)", "lpag(2)", "lpag(3)"});
      hide(model.datamask < 63, {"MD(1)", "lpag(1)", "PAGFSR"});
      std::set<std::string> found;
      for (const control& c : w.view.look_all())
        if (!c.visible()) found.insert(c.name());
      EXPECT_EQ(found, hidden) << device << " after " << from.name;

      EXPECT_EQ(w.at("MP").count(), words) << device;
      EXPECT_EQ(w.at("MP").row(), words - 1) << device;
      EXPECT_EQ(w.text("direc"), hexstr(words - 1, 3)) << device;
      EXPECT_EQ(w.view.look_map().scale, words == 512 ? 513 : words + 2) << device;
      EXPECT_EQ(w.text("lp(1)"), model.is16c5x ? "PB" : "GPIO");
      EXPECT_EQ(w.text("lstatus"), model.is16c5x ? "210odZDC" : "G-0odZDC");
      EXPECT_EQ(w.at("lstatus").tip(),
                model.is16c5x ? "PS2-PS1-PS0-/TO-/PD-Z-D-C" : "GPWUF-*-PS0-/TO-/PD-Z-D-C");
      EXPECT_EQ(w.text("loption"), model.is16c5x ? "--CSA210" : "WPCSA210");
      EXPECT_EQ(w.at("loption").tip(),
                model.is16c5x ? "*-*-TOCS-TOSE-PSA-PS2-PS1-PS0" : "/GPWU-/GPPU-TOCS-TOSE-PSA-PS2-PS1-PS0");
      std::vector<std::string> names = {"INDF",
                                        "TMR0",
                                        "PCL",
                                        "STATUS",
                                        "FSR",
                                        model.is16c5x ? "PA" : "OSCCAL",
                                        model.is16c5x ? "PB" : "GPIO"};
      if (model.hasportc) names.emplace_back("PC");
      EXPECT_EQ(w.at("nombres").rows(), names) << device;
      EXPECT_EQ(w.enabled("MCLR"), model.is16c5x) << device;
      EXPECT_EQ(w.enabled("FREC"), model.is16c5x) << device;
    }
}

TEST(device, change_keeps_program_breakpoints_and_registers_cut_to_the_new_limits) {
  test_window w;
  chipstate& chip = w.view.poke();
  for (int a = 0; a < 2048; ++a) chip.progmem[a] = static_cast<std::uint16_t>(a);
  chip.breakpts[2047] = 1;
  for (int i = 0; i < 16; ++i) chip.regs[i] = static_cast<std::int16_t>(0xF0 + i);
  for (int i = 0; i < 64; ++i) chip.bankregs[i] = static_cast<std::int16_t>(0x80 + i);
  chip.cpu.w = 0x77;
  const chipstate before = chip;
  w.view.pick(id::PIC, "12C508");
  const chipstate& after = w.chip();
  EXPECT_EQ(after.progmem, before.progmem);
  EXPECT_EQ(after.breakpts, before.breakpts);
  EXPECT_EQ(after.bankregs, before.bankregs);
  EXPECT_EQ(after.cpu.w, 0x77);
  EXPECT_EQ(after.cpu.pc, 511);
  EXPECT_EQ(after.regs[1], 0xF1);
  EXPECT_EQ(after.regs[2], 0xFF);
  EXPECT_EQ(after.regs[4], 0x14);
  EXPECT_EQ(after.regs[5], 0x70);
  EXPECT_EQ(after.regs[6], 0x36);
  for (int i = 7; i < 16; ++i) EXPECT_EQ(after.regs[i], 0xF0 + i);
}

TEST(device, change_empties_the_entry_panel_but_not_its_tag) {
  test_window w;
  w.view.click_row(id::MDP, 0, 8);
  w.view.pick(id::PIC, "16C54");
  EXPECT_EQ(w.text("dat"), "");
  EXPECT_EQ(w.text("dirdat"), "");
  EXPECT_FALSE(w.enabled("dat"));
  EXPECT_FALSE(w.enabled("entrardat"));
  EXPECT_EQ(w.at("dirdat").tag(), "8");
}

TEST(device, change_unchecks_the_pin_options_and_shows_their_pins) {
  test_window w("12C508");
  w.view.click(id::fext);
  w.view.click(id::CMCLR);
  EXPECT_FALSE(w.visible("PB(3)"));
  EXPECT_FALSE(w.visible("PB(4)"));
  EXPECT_FALSE(w.visible("PB(5)"));
  w.view.pick(id::PIC, "16C57");
  for (const char* pin : {"PB(2)", "PB(3)", "PB(4)", "PB(5)", "PB(6)", "PB(7)"})
    EXPECT_TRUE(w.visible(pin)) << pin;
  EXPECT_FALSE(w.value("fext"));
  EXPECT_FALSE(w.value("CMCLR"));
  EXPECT_TRUE(w.enabled("MCLR"));
  EXPECT_TRUE(w.enabled("FREC"));
}

TEST(device, of_12_bits_and_eight_pins_runs_at_4000_kHz_to_begin_with) {
  test_window w;
  w.view.type(id::FREC, "20000");
  w.view.pick(id::PIC, "16C54");
  EXPECT_EQ(w.text("FREC"), "20000");
  w.view.pick(id::PIC, "12C509");
  EXPECT_EQ(w.text("FREC"), "4000");
}

TEST(device, change_clears_both_modified_flags) {
  test_window w;
  w.view.type(id::direc, "000");
  w.view.click(id::borrarins);
  w.view.type(id::source, "NOP");
  EXPECT_TRUE(w.view.hex().modified);
  EXPECT_TRUE(w.view.source().modified);
  w.view.pick(id::PIC, "16C57");
  EXPECT_FALSE(w.view.hex().modified);
  EXPECT_FALSE(w.view.source().modified);
}

}  // namespace
}  // namespace estructura
