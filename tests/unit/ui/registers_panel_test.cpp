// Registers edited by hand: which target a click chooses, which values its box takes, and where they go.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "common/text.h"
#include "core/devices.h"
#include "tests/support/differences.h"
#include "tests/support/test_window.h"

namespace estructura {
namespace {

using support::differences;
using support::test_window;

std::int16_t word16(int value) {
  return static_cast<std::int16_t>(value);
}

// The panel after a click on a register.
void expect_panel(test_window& w, int code, const std::string& caption, const std::string& value) {
  EXPECT_EQ(w.at("dirdat").tag(), std::to_string(code));
  EXPECT_EQ(w.text("dirdat"), caption);
  EXPECT_EQ(w.text("dat"), value) << caption;
  EXPECT_TRUE(w.enabled("dat")) << caption;
  EXPECT_TRUE(w.enabled("entrardat")) << caption;
  EXPECT_EQ(w.focused(), "dat") << caption;
  EXPECT_EQ(w.at("dat").sel_start(), 0) << caption;
  EXPECT_EQ(w.at("dat").sel_length(), static_cast<int>(value.size())) << caption;
}

TEST(edit, of_a_common_register_names_it_and_shows_its_value) {
  for (const auto& [device, model] : catalogue) {
    test_window w(device);
    const bool is16c5x = model.is16c5x;
    for (int k = 0; k < 16; ++k) {
      w.view.poke().regs[k] = word16(0x80 + k);
      if (k == 5) w.view.poke().regs[k] = 0x0C;
      const std::vector<std::string> names = {
          "00", "TMR0", "PCL", "STATUS", "FSR", is16c5x ? "PA" : "OSCCAL", is16c5x ? "PB" : "GPIO", "PC"};
      const std::string name = k < 8 ? names[static_cast<std::size_t>(k)] : hexstr(k, 2);
      const std::string value = k != 5 ? hexstr(0x80 + k, 2) : is16c5x ? "C" : "0C";
      w.view.click_row(id::MDP, 0, k);
      expect_panel(w, k, name, value);
    }
  }
}

TEST(edit, of_a_banked_register_names_address_bank_and_absolute_address) {
  test_window w;
  for (int b = 0; b < 4; ++b)
    for (int k = 0; k < 16; ++k) {
      w.view.poke().bankregs[b * 16 + k] = word16(b * 16 + k + 0x90);
      const std::string name =
          hexstr(16 + k, 2) + "." + std::to_string(b) + " (" + hexstr(b * 32 + k + 16, 2) + ")";
      w.view.click_row(id::MD, b, k);
      expect_panel(w, b * 32 + k + 16, name, hexstr(b * 16 + k + 0x90, 2));
    }
  w.view.click_row(id::MD, 1, 5);
  EXPECT_EQ(w.text("dirdat"), "15.1 (35)");
}

TEST(edit, of_a_core_register_has_the_digits_that_it_needs) {
  struct row {
    const char* device;
    int line;
    int code;
    const char* caption;
    const char* value;
  };
  for (const row& r : {row{"16C57", 0, 128, "PC", "7FF"}, row{"16C57", 1, 129, "W", "00"},
                       row{"16C57", 2, 130, "OPTION", "3F"}, row{"16C57", 3, 131, "TRISA", "F"},
                       row{"16C57", 4, 132, "TRISB", "FF"}, row{"16C57", 5, 133, "TRISC", "FF"},
                       row{"16C54", 0, 128, "PC", "1FF"}, row{"16C54", 4, 132, "TRISB", "FF"},
                       row{"12C508", 2, 130, "OPTION", "FF"}, row{"12C508", 3, 132, "TRIS", "3F"}}) {
    test_window w(r.device);
    w.view.click_row(id::RE, 0, r.line);
    expect_panel(w, r.code, r.caption, r.value);
  }
}

// The highest value that a target takes; 255 where the register has no limit of its own.
int limit_of(int code, const device& model) {
  switch (code) {
    case 128: return model.progmask;
    case 130: return model.optmask;
    case 131: return model.mask5;
    case 132: return model.mask6;
    case 5: return model.mask5;
    case 4: return model.datamask;
    default: return 255;
  }
}

TEST(edit, takes_exactly_the_values_within_the_limit_of_the_register) {
  for (const catalogue_row& row : catalogue) {
    test_window w(row.name);
    const auto try_values = [&](int code) {
      ASSERT_EQ(w.at("dirdat").tag(), std::to_string(code));
      for (int value = 0; value <= 0x900; value += value < 0x140 ? 1 : 7) {
        bool takes = value <= limit_of(code, row.model);
        if (code == 5 && !row.model.is16c5x && value % 4 != 0) takes = false;
        w.view.type(id::dat, hexstr(value, 3));
        ASSERT_EQ(w.enabled("entrardat"), takes) << row.name << ", target " << code << ", value " << value;
      }
    };
    for (const int k : {0, 3, 4, 5, 6, 8}) {
      w.view.click_row(id::MDP, 0, k);
      try_values(k);
    }
    w.view.click_row(id::MD, 0, 2);
    try_values(18);
    for (int line = 0; line < w.at("RE").count(); ++line) {
      w.view.click_row(id::RE, 0, line);
      const bool tris = !row.model.is16c5x && line == 3;
      try_values(128 + (tris ? 4 : line));
    }
  }
}

TEST(edit, takes_no_text_that_is_no_hexadecimal_number_of_the_register) {
  test_window w;
  w.view.click_row(id::MDP, 0, 8);
  for (const char* text : {"", "G", "1 ", "-1", "0x1", "8000", "FFFF", "12345", "100", "ñ"}) {
    w.view.type(id::dat, "7F");
    ASSERT_TRUE(w.enabled("entrardat"));
    w.view.type(id::dat, text);
    EXPECT_FALSE(w.enabled("entrardat")) << text;
  }
  for (const char* text : {"0", "ff", "FF", "0000ff"}) {
    w.view.type(id::dat, text);
    EXPECT_TRUE(w.enabled("entrardat")) << text;
  }
}

TEST(edit, empties_a_text_with_a_line_end) {
  test_window w;
  w.view.click_row(id::MDP, 0, 8);
  w.view.type(id::dat, "7\r\n");
  EXPECT_EQ(w.text("dat"), "");
  EXPECT_FALSE(w.enabled("entrardat"));
}

// What a stored value leaves of the panel.
void expect_empty_panel(test_window& w) {
  EXPECT_EQ(w.text("dirdat"), "");
  EXPECT_EQ(w.text("dat"), "");
  EXPECT_FALSE(w.enabled("dat"));
  EXPECT_FALSE(w.enabled("entrardat"));
}

TEST(edit, stores_the_value_in_its_register_and_nothing_else) {
  test_window w;
  chipstate& chip = w.view.poke();
  chip.prescount = 9;
  chip.cycles = 77;
  for (const int k : {0, 1, 2, 4, 5, 6, 7, 8, 15}) {
    chipstate wanted = w.chip();
    const int value = k == 5 ? 0x0D : 0x29 + k;
    wanted.regs[k] = word16(value);
    w.view.click_row(id::MDP, 0, k);
    w.view.type(id::dat, hexstr(value, 2));
    w.view.click(id::entrardat);
    EXPECT_EQ(differences(wanted, w.chip()), "") << "register " << k;
    EXPECT_EQ(w.at("MDP").rows()[static_cast<std::size_t>(k)], k == 0   ? "**"
                                                               : k == 5 ? "-D"
                                                                        : hexstr(value, 2));
    expect_empty_panel(w);
  }
  for (int b = 0; b < 4; ++b)
    for (int k = 0; k < 16; ++k) {
      chipstate wanted = w.chip();
      wanted.bankregs[b * 16 + k] = word16(200 + k + b);
      w.view.click_row(id::MD, b, k);
      w.view.type(id::dat, hexstr(200 + k + b, 2));
      w.view.click(id::entrardat);
      EXPECT_EQ(differences(wanted, w.chip()), "") << "bank " << b << ", line " << k;
    }
  for (int line = 0; line < 6; ++line) {
    if (line == 2) continue;
    chipstate wanted = w.chip();
    wanted.cpu[line] = line == 0 ? 0x3A5 : 0x0F;
    w.view.click_row(id::RE, 0, line);
    w.view.type(id::dat, line == 0 ? "3A5" : "0F");
    w.view.click(id::entrardat);
    if (line > 2) wanted.pina = w.chip().pina, wanted.pinb = w.chip().pinb, wanted.pinc = w.chip().pinc;
    EXPECT_EQ(differences(wanted, w.chip()), "") << "core register " << line;
  }
}

TEST(edit, of_STATUS_cannot_change_TO_and_PD) {
  test_window w;
  w.view.click_row(id::MDP, 0, 3);
  w.view.type(id::dat, "00");
  w.view.click(id::entrardat);
  EXPECT_EQ(w.text("STATUS"), "00011000");
}

TEST(edit, stores_TRIS_of_the_12C50x_from_the_fourth_line) {
  test_window w("12C508");
  w.view.click_row(id::RE, 0, 3);
  w.view.type(id::dat, "15");
  w.view.click(id::entrardat);
  EXPECT_EQ(w.chip().cpu.trisb, 0x15);
  EXPECT_EQ(w.chip().cpu.trisa, 0xFC);
}

TEST(edit, ends_with_the_Enter_key_only_while_the_button_is_open) {
  test_window w;
  w.view.click_row(id::MDP, 0, 8);
  w.view.type(id::dat, "100");
  w.view.enter(id::dat);
  EXPECT_EQ(w.chip().regs[8], 0);
  EXPECT_EQ(w.text("dirdat"), "08");
  w.view.type(id::dat, "1F");
  w.view.enter(id::dat);
  EXPECT_EQ(w.chip().regs[8], 0x1F);
  expect_empty_panel(w);
}

TEST(edit, is_dropped_for_another_register) {
  test_window w;
  w.view.poke().regs[9] = 0x44;
  w.view.click_row(id::MDP, 0, 8);
  w.view.type(id::dat, "1F");
  w.view.click_row(id::MDP, 0, 9);
  w.view.click(id::entrardat);
  EXPECT_EQ(w.chip().regs[8], 0);
  EXPECT_EQ(w.chip().regs[9], 0x44);
}

TEST(edit, of_a_latch_moves_its_output_pin_and_can_wake_the_chip) {
  test_window w("12C508");
  chipstate& chip = w.view.poke();
  chip.cpu.trisb = 0;
  chip.cpu.option = 0;
  w.view.refresh();
  w.view.poke().sleeping = true;
  w.view.click_row(id::MDP, 0, 6);
  w.view.type(id::dat, "04");
  w.view.click(id::entrardat);
  EXPECT_TRUE(w.chip().sleeping);
  EXPECT_EQ(w.chip().pinb, 0x04);
  w.view.click_row(id::MDP, 0, 6);
  w.view.type(id::dat, "05");
  w.view.click(id::entrardat);
  EXPECT_FALSE(w.chip().sleeping);
  EXPECT_EQ(w.chip().pinb, 0x05);
  EXPECT_EQ(w.at("MP").row(), 511);
}

}  // namespace
}  // namespace estructura
