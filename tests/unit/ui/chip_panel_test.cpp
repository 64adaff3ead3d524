// The single step with the configuration lock, resets, and the cycles.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/test_window.h"

namespace estructura {
namespace {

using support::test_window;

const std::vector<std::string> configuration = {"FREC", "WATCHDOG", "CMCLR", "fext", "PIC"};

TEST(first_step, locks_the_configuration_until_power_on) {
  test_window w;
  w.view.click(id::eje1);
  for (const std::string& name : configuration) EXPECT_FALSE(w.enabled(name)) << name;
  w.view.click(id::MCLR);
  for (const std::string& name : configuration) EXPECT_FALSE(w.enabled(name)) << name;
  w.view.click(id::por);
  for (const std::string& name : configuration) EXPECT_TRUE(w.enabled(name)) << name;
}

TEST(first_step, replaces_a_frequency_outside_32_to_20000) {
  struct row {
    const char* typed;
    const char* kept;
  };
  for (const row& r : {row{"32", "32"}, row{"20000", "20000"}, row{"31", "4000"}, row{"20001", "4000"},
                       row{"31.5", "31.5"}, row{"31.49", "4000"}, row{"20000.5", "20000.5"},
                       row{"20000.51", "4000"}, row{"", "4000"}, row{"abc", "4000"}, row{"-100", "4000"},
                       row{"8000 kHz", "8000 kHz"}, row{"1e4", "1e4"}, row{"1e99", "4000"}}) {
    test_window w;
    w.view.type(id::FREC, r.typed);
    EXPECT_EQ(w.text("FREC"), r.typed);
    w.view.click(id::eje1);
    EXPECT_EQ(w.text("FREC"), r.kept) << r.typed;
  }
}

TEST(first_step, in_sleep_locks_too) {
  test_window w;
  w.view.poke().sleeping = true;
  w.view.click(id::eje1);
  EXPECT_FALSE(w.enabled("WATCHDOG"));
}

TEST(por, leaves_the_frequency_of_a_12C50x_closed_until_its_clock_is_clicked) {
  test_window w("12C508");
  EXPECT_FALSE(w.enabled("FREC"));
  w.view.click(id::fext);
  EXPECT_TRUE(w.enabled("FREC"));
  w.view.click(id::eje1);
  w.view.click(id::por);
  EXPECT_TRUE(w.value("fext"));
  EXPECT_TRUE(w.enabled("fext"));
  EXPECT_FALSE(w.enabled("FREC"));
  w.view.click(id::fext);
  w.view.click(id::fext);
  EXPECT_TRUE(w.enabled("FREC"));
}

TEST(por, clears_the_registers_and_keeps_program_and_pins) {
  test_window w;
  w.store(0, {0xC77});
  w.view.click(id::PB, 3);
  chipstate& chip = w.view.poke();
  chip.regs.fill(0x11);
  chip.bankregs.fill(0x22);
  chip.cpu.w = 0x33;
  chip.tockicount = 4;
  w.view.click(id::por);
  EXPECT_EQ(w.at("RE").rows()[1], " 00");
  for (int i = 6; i < 16; ++i) EXPECT_EQ(w.at("MDP").rows()[static_cast<std::size_t>(i)], "00");
  EXPECT_EQ(w.at("MD(3)").rows()[15], "00");
  EXPECT_EQ(w.text("STATUS"), "00011000");
  EXPECT_TRUE(w.value("PB(3)"));
  EXPECT_EQ(w.chip().pinb, 0x08);
  EXPECT_EQ(w.chip().progmem[0], 0xC77);
  EXPECT_EQ(w.chip().tockicount, 4);
}

TEST(por, repaints_the_map_without_a_marker) {
  test_window w;
  w.store(0, {0xC77});
  w.stand_at(0);
  w.view.click(id::eje1);
  EXPECT_EQ(w.view.look_map().marker, 1);
  EXPECT_EQ(w.view.look_map().rows[0], map_colour::none);
  w.view.click(id::por);
  EXPECT_EQ(w.view.look_map().marker, -1);
  EXPECT_EQ(w.view.look_map().rows[0], map_colour::yellow);
}

TEST(reset, of_any_kind_shows_the_reset_vector) {
  for (const id button : {id::por, id::MCLR, id::WDT}) {
    test_window w;
    w.view.click(id::WATCHDOG);
    w.store(0, {0x003});
    w.stand_at(0);
    w.view.click(id::eje1);
    EXPECT_TRUE(w.value("estsleep"));
    w.view.click(button);
    EXPECT_FALSE(w.value("estsleep"));
    EXPECT_EQ(w.at("MP").row(), 2047);
    EXPECT_EQ(w.text("direc"), "7FF");
    EXPECT_EQ(w.at("RE").rows()[0], "7FF");
    EXPECT_EQ(w.text("STATUS"), button == id::por    ? "00011000"
                                : button == id::MCLR ? "00010000"
                                                     : "00000000");
    EXPECT_EQ(w.text("ciclos"), "0");
  }
}

TEST(watchdog, button_forces_a_time_out_without_a_box) {
  test_window w;
  w.view.click(id::WATCHDOG);
  w.view.click(id::WDT);
  EXPECT_TRUE(w.desktop.boxes.empty());
  EXPECT_EQ(w.text("STATUS"), "00001000");
}

TEST(CMCLR, gives_GP3_to_the_reset_button) {
  test_window w("12C508");
  EXPECT_FALSE(w.enabled("MCLR"));
  w.view.click(id::CMCLR);
  EXPECT_TRUE(w.enabled("MCLR"));
  EXPECT_FALSE(w.visible("PB(3)"));
  w.view.click(id::CMCLR);
  EXPECT_FALSE(w.enabled("MCLR"));
  EXPECT_TRUE(w.visible("PB(3)"));
}

TEST(ciclos, is_cleared_by_a_double_click) {
  test_window w;
  w.view.poke().cycles = 1000;
  w.view.refresh();
  w.view.dblclick(id::ciclos);
  EXPECT_EQ(w.text("ciclos"), "0");
  EXPECT_EQ(w.chip().cycles, 0);
}

TEST(eje1, of_a_first_instruction_shows_two_cycles) {
  test_window w;
  w.view.poke().progmem[2047] = 0xC05;
  w.view.click(id::eje1);
  EXPECT_EQ(w.text("ciclos"), "2");
  EXPECT_EQ(w.at("RE").rows()[1], " 05");
  EXPECT_EQ(w.at("MP").row(), 0);
  EXPECT_EQ(w.text("direc"), "000");
}

TEST(eje1, clears_the_code_of_an_empty_instruction_too) {
  test_window w;
  w.view.type(id::INS, "FOO");
  w.view.type(id::INS, "");
  EXPECT_EQ(w.text("codop"), "???");
  w.view.click(id::eje1);
  EXPECT_EQ(w.text("codop"), "");
}

TEST(eje1, over_the_end_of_the_list_selects_no_line_until_the_next_step) {
  test_window w("16C54");
  w.store(510, {0x608});
  w.stand_at(510);
  w.view.click_row(id::MP, 0, 3);
  w.view.click(id::eje1);
  EXPECT_EQ(w.chip().cpu.pc, 512);
  EXPECT_EQ(w.at("MP").row(), -1);
  EXPECT_EQ(w.at("MP").selected(), std::vector<int>{});
  EXPECT_EQ(w.view.look_map().marker, 512);
  w.view.click(id::eje1);
  EXPECT_EQ(w.at("MP").row(), 1);
}

TEST(eje1, in_sleep_leaves_marker_and_line) {
  test_window w;
  w.store(0, {0x003});
  w.stand_at(0);
  w.view.click(id::eje1);
  w.view.click_row(id::MP, 0, 77);
  w.view.click(id::eje1);
  EXPECT_EQ(w.at("MP").row(), 77);
  EXPECT_EQ(w.view.look_map().marker, 1);
}

TEST(watchdog, says_so_before_it_resets) {
  test_window w;
  w.store(0, {0x000});
  w.view.click(id::WATCHDOG);
  w.stand_at(0);
  w.view.poke().wdtcount = 2'304'000;
  w.desktop.at_box = [&w] {
    EXPECT_EQ(w.chip().wdtcount, 0);
    EXPECT_EQ(w.chip().tolatch, 1);
    EXPECT_EQ(w.chip().cpu.pc, 1);
  };
  w.view.click(id::eje1);
  EXPECT_EQ(w.desktop.boxes.size(), 1U);
  EXPECT_EQ(w.chip().tolatch, 0);
}

TEST(cycles_view, has_the_text_of_its_row) {
  support::expect_texts({
      {"16C57", [](chipstate& c) { c.cycles = 1000; }, "ciclos", "1.000"},
      {"16C57", [](chipstate& c) { c.cycles = 1234567; }, "ciclos", "1.234.567"},
  });
}

TEST(cycles_view, stays_as_it_was_until_the_refresh) {
  test_window w;
  w.view.poke().cycles = 1000;
  EXPECT_EQ(w.text("ciclos"), "0");
  w.view.refresh();
  EXPECT_EQ(w.text("ciclos"), "1.000");
}

}  // namespace
}  // namespace estructura
