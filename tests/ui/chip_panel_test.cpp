// Clocks, watchdog, resets, the configuration lock and the timer's own input.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/differences.h"
#include "tests/ui/test_window.h"

namespace estructura {
namespace {

using support::differences;
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

TEST(watchdog, click_recomputes_the_limit_on_and_off) {
  test_window w;
  w.view.click(id::WATCHDOG);
  EXPECT_EQ(w.chip().wdtlimit, 2'304'000);
  w.view.type(id::FREC, "32");
  EXPECT_EQ(w.chip().wdtlimit, 2'304'000);
  w.view.click(id::WATCHDOG);
  EXPECT_EQ(w.chip().wdtlimit, 18'432);
}

TEST(frequency, as_typed_is_what_the_next_refresh_reckons_with) {
  test_window w;
  w.view.click(id::WATCHDOG);
  w.view.type(id::FR, "1000");
  w.view.type(id::FREC, "33.4");
  w.view.refresh();
  EXPECT_EQ(w.chip().wdtlimit, 19'238);  // 33.4 * 4.5 * 128 = 19238.4
  EXPECT_EQ(w.chip().tockiperiod, 8);    // 33.4 * 250 / 1000 = 8.35
  w.view.type(id::FREC, "4000");
  w.view.refresh();
  EXPECT_EQ(w.chip().wdtlimit, 2'304'000);
  EXPECT_EQ(w.chip().tockiperiod, 1000);
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

TEST(fext, gives_GP4_and_GP5_to_the_oscillator) {
  test_window w("12C509");
  w.view.click(id::fext);
  EXPECT_FALSE(w.visible("PB(4)"));
  EXPECT_FALSE(w.visible("PB(5)"));
  EXPECT_TRUE(w.enabled("FREC"));
  w.view.click(id::fext);
  EXPECT_TRUE(w.visible("PB(4)"));
  EXPECT_TRUE(w.visible("PB(5)"));
  EXPECT_FALSE(w.enabled("FREC"));
}

TEST(FR, is_kept_as_typed_between_its_limits) {
  struct row {
    const char* typed;
    const char* kept;
    std::int32_t frequency;
    bool tocki;
  };
  // The button follows the text at once only at the limits; elsewhere the next refresh sees to it.
  for (const row& r :
       {row{"1000", "1000", 1000, true}, row{"0", "0", 0, true}, row{"-5", "0", 0, true},
        row{"abc", "0", 0, true}, row{"", "0", 0, true}, row{"1000000", "1000000", 1'000'000, true},
        row{"1000001", "1000000", 1'000'000, false}, row{"1e99", "1000000", 1'000'000, false},
        row{"2.5", "2.5", 2, true}, row{"3.5", "3.5", 4, true}, row{"7 Hz", "7 Hz", 7, true}}) {
    test_window w;
    w.view.poke().tockicount = 3;
    w.view.type(id::FR, "5");
    w.view.type(id::FR, r.typed);
    EXPECT_EQ(w.text("FR"), r.kept) << r.typed;
    EXPECT_EQ(w.chip().tockifreq, r.frequency) << r.typed;
    EXPECT_EQ(w.enabled("TOCKI"), r.tocki) << r.typed;
    EXPECT_EQ(w.chip().tockicount, r.tocki ? 3 : 0) << r.typed;
    w.view.refresh();
    EXPECT_EQ(w.enabled("TOCKI"), std::string(r.kept) == "0") << r.typed;
  }
}

TEST(TOCKI, makes_one_edge_and_shows_TMR0_when_it_advances) {
  test_window w;
  w.view.poke().cpu.option = 0x21;  // ratio 4
  w.view.refresh();
  for (int pulse = 1; pulse < 4; ++pulse) {
    w.view.click(id::TOCKI);
    EXPECT_EQ(w.chip().prescount, pulse);
    EXPECT_EQ(w.at("MDP").rows()[1], "00");
  }
  w.view.click(id::TOCKI);
  EXPECT_EQ(w.chip().prescount, 0);
  EXPECT_EQ(w.at("MDP").rows()[1], "01");
}

TEST(TOCKI, does_nothing_in_sleep) {
  test_window w;
  w.view.poke().sleeping = true;
  const chipstate before = w.chip();
  w.view.click(id::TOCKI);
  EXPECT_EQ(differences(before, w.chip()), "");
}

TEST(pin, takes_the_new_state_of_its_box) {
  test_window w;
  w.view.click(id::PA, 3);
  w.view.click(id::PB, 0);
  w.view.click(id::PB, 7);
  w.view.click(id::PC, 5);
  EXPECT_EQ(w.chip().pina, 0x08);
  EXPECT_EQ(w.chip().pinb, 0x81);
  EXPECT_EQ(w.chip().pinc, 0x20);
  w.view.click(id::PB, 0);
  EXPECT_EQ(w.chip().pinb, 0x80);
}

TEST(pin, of_an_output_cannot_be_clicked) {
  test_window w("12C508");
  chipstate& chip = w.view.poke();
  chip.cpu.trisb = 0xFE;
  chip.cpu.option = 0x00;
  w.view.refresh();
  w.view.poke().sleeping = true;
  w.view.focus(id::por);
  w.view.click(id::PB, 0);
  EXPECT_EQ(w.chip().pinb, 0);
  EXPECT_FALSE(w.value("PB(0)"));
  EXPECT_TRUE(w.chip().sleeping);
  EXPECT_EQ(w.focused(), "por");
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

TEST(load, the_file_is_named_before_its_errors_are_told) {
  test_window w;
  w.desktop.chosen = "/no/hay/Nada.hex";
  w.desktop.at_box = [&w] { EXPECT_EQ(w.text("FILHEX"), "nada.hex"); };
  w.view.click(id::cargar);
  EXPECT_EQ(w.desktop.boxes.size(), 1U);
}

}  // namespace
}  // namespace estructura
