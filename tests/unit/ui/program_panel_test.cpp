// Program memory in the window: list, map, address box, breakpoints, and instructions entered by hand.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "common/text.h"
#include "tests/support/differences.h"
#include "tests/support/test_window.h"

namespace estructura {
namespace {

using support::differences;
using support::test_window;

std::string line(test_window& w, int address) {
  return w.at("MP").rows()[static_cast<std::size_t>(address)];
}

TEST(list, has_a_line_for_every_address) {
  test_window w("16C54");
  EXPECT_EQ(w.at("MP").count(), 512);
  for (int a = 0; a < 512; ++a) ASSERT_EQ(line(w, a), " " + hexstr(a, 3) + "\t???");
  w.store(0x1F, {0xA05});
  w.view.poke().breakpts[0x1F] = 1;
  w.view.poke().breakpts[0x20] = 1;
  w.view.pick(id::PIC, "16C54");
  EXPECT_EQ(line(w, 0x1F), "*01F\tA05\tGOTO 005");
  EXPECT_EQ(line(w, 0x20), "*020\t???");
}

TEST(list, click_puts_its_address_into_the_address_box) {
  test_window w;
  w.view.click_row(id::MP, 0, 0x2A);
  EXPECT_EQ(w.text("direc"), "02A");
  EXPECT_EQ(w.text("INS"), "");
}

TEST(list, double_click_shows_the_instruction_or_nothing) {
  test_window w;
  w.store(0, {0x1C5, 0x001});
  w.view.dblclick_row(id::MP, 0, 0);
  EXPECT_EQ(w.text("INS"), "ADDWF 05,W");
  EXPECT_EQ(w.text("codop"), "1C5");
  EXPECT_EQ(w.text("direc"), "000");
  w.view.dblclick_row(id::MP, 0, 1);
  EXPECT_EQ(w.text("INS"), "");
  w.view.dblclick_row(id::MP, 0, 0);
  w.view.dblclick_row(id::MP, 0, 2);
  EXPECT_EQ(w.text("INS"), "");
  EXPECT_EQ(w.text("direc"), "002");
}

TEST(list, double_click_beside_its_lines_or_on_the_hidden_list_does_nothing) {
  test_window w;
  w.store(0, {0x1C5});
  w.view.click_row(id::MP, 0, 0);
  w.view.type(id::INS, "NOP");
  for (const int row : {-1, w.at("MP").count()}) {
    w.view.dblclick_row(id::MP, 0, row);
    EXPECT_EQ(w.text("INS"), "NOP") << row;
  }
  w.view.click(id::VISMP);
  w.view.dblclick_row(id::MP, 0, 0);
  EXPECT_EQ(w.text("INS"), "NOP") << "hidden";
  w.view.click(id::VISMP);
  w.view.dblclick_row(id::MP, 0, 0);
  EXPECT_EQ(w.text("INS"), "ADDWF 05,W");
}

TEST(direc, selects_its_line_when_it_is_an_address_of_three_digits) {
  struct row {
    const char* device;
    const char* text;
    bool good;
    int line;
  };
  for (const row& r :
       {row{"16C54", "1FF", true, 0x1FF}, row{"16C54", "200", false, 5}, row{"16C54", "7FF", false, 5},
        row{"16C54", "12", false, 5}, row{"16C54", "0012", false, 5}, row{"16C54", "", false, 5},
        row{"16C54", "00G", false, 5}, row{"16C54", "-01", false, 5}, row{"16C54", " 12", false, 5},
        row{"16C57", "7FF", true, 0x7FF}, row{"16C57", "800", false, 5}, row{"16C57", "0ab", true, 0x0AB},
        row{"16C57", "00ñ", false, 5}}) {
    test_window w(r.device);
    w.view.click_row(id::MP, 0, 5);
    w.view.type(id::direc, r.text);
    EXPECT_EQ(w.enabled("borrarins"), r.good) << r.text;
    EXPECT_EQ(w.enabled("break"), r.good) << r.text;
    EXPECT_EQ(w.at("MP").row(), r.line) << r.text;
  }
}

TEST(direc, leaves_the_list_alone_when_its_line_is_already_current) {
  test_window w;
  w.view.click_row(id::MP, 0, 5);
  w.view.click_row(id::MP, 0, 9, true);
  w.view.type(id::direc, "01");
  w.view.type(id::direc, "009");
  EXPECT_EQ(w.at("MP").selected(), (std::vector<int>{5, 9}));
  EXPECT_TRUE(w.enabled("break"));
}

TEST(map, colours_programmed_words_and_breakpoints) {
  test_window w("16C54");
  w.store(0, {0x000, 0x000});
  w.store(511, {0x000, 0x000});
  chipstate& chip = w.view.poke();
  chip.breakpts[1] = chip.breakpts[2] = chip.breakpts[512] = 1;
  w.view.pick(id::PIC, "16C54");
  const map_view& map = w.view.look_map();
  EXPECT_EQ(map.rows[0], map_colour::yellow);
  EXPECT_EQ(map.rows[1], map_colour::blue);
  EXPECT_EQ(map.rows[2], map_colour::blue);
  EXPECT_EQ(map.rows[3], map_colour::none);
  EXPECT_EQ(map.rows[511], map_colour::yellow);
  EXPECT_EQ(map.rows[512], map_colour::none);
}

TEST(map, click_selects_the_nearest_line_that_is_there) {
  struct row {
    double y;
    int line;
  };
  for (const row& r : {row{0, 0}, row{10.4, 10}, row{10.6, 11}, row{10.5, 10}, row{11.5, 12}, row{511, 511},
                       row{513, 511}, row{9999, 511}, row{-0.7, 0}}) {
    test_window w("16C54");
    w.view.press_map(r.y);
    EXPECT_EQ(w.at("MP").row(), r.line) << r.y;
    EXPECT_EQ(w.text("direc"), hexstr(r.line, 3)) << r.y;
  }
}

TEST(map, keeps_the_marker_where_the_last_step_drew_it_until_a_repaint) {
  test_window w;
  EXPECT_EQ(w.view.look_map().marker, -1);
  w.view.click(id::eje1);
  EXPECT_EQ(w.view.look_map().marker, 0);
  w.view.press_map(100);
  EXPECT_EQ(w.view.look_map().marker, 0);
  w.view.click(id::MCLR);
  EXPECT_EQ(w.view.look_map().marker, 0);
  w.view.type(id::direc, "123");
  w.view.click(id::break_);
  EXPECT_EQ(w.view.look_map().marker, -1);
  w.view.click(id::eje1);
  EXPECT_EQ(w.view.look_map().marker, 0);
}

// Whoever shows the list brings the line into sight again.
TEST(address, typed_again_shows_its_line_again_and_leaves_the_selection) {
  test_window w;
  w.view.type(id::direc, "123");
  const unsigned shown = w.at("MP").shown_rows();
  w.view.type(id::direc, "12");
  EXPECT_EQ(w.at("MP").shown_rows(), shown);
  w.view.type(id::direc, "123");
  EXPECT_EQ(w.at("MP").shown_rows(), shown + 1);

  w.view.click_row(id::MP, 0, 5);
  w.view.click_row(id::MP, 0, 9, true);
  w.view.type(id::direc, "0");
  w.view.type(id::direc, "009");
  EXPECT_EQ(w.at("MP").selected(), (std::vector<int>{5, 9}));
}

TEST(breakpoint, is_set_and_cleared_at_the_address_of_the_box) {
  test_window w;
  w.store(0x123, {0xA05});
  w.view.type(id::direc, "123");
  w.view.click(id::break_);
  EXPECT_EQ(w.chip().breakpts[0x123], 1);
  EXPECT_EQ(line(w, 0x123), "*123\tA05\tGOTO 005");
  EXPECT_EQ(w.at("MP").row(), 0x123);
  EXPECT_EQ(w.at("MP").selected(), std::vector<int>{0x123});
  EXPECT_EQ(w.view.look_map().rows[0x123], map_colour::blue);
  w.view.click(id::break_);
  EXPECT_EQ(w.chip().breakpts[0x123], 0);
  EXPECT_EQ(line(w, 0x123), " 123\tA05\tGOTO 005");
  EXPECT_EQ(w.view.look_map().rows[0x123], map_colour::yellow);
  EXPECT_FALSE(w.view.hex().modified);
}

TEST(breakpoint, beeps_with_several_lines_selected_and_changes_nothing) {
  test_window w;
  w.view.click_row(id::MP, 0, 5);
  w.view.click_row(id::MP, 0, 9, true);
  const chipstate before = w.chip();
  w.view.click(id::break_);
  EXPECT_EQ(w.desktop.beeps, 1);
  EXPECT_EQ(differences(before, w.chip()), "");
  EXPECT_EQ(w.at("MP").selected(), (std::vector<int>{5, 9}));
}

TEST(erase, unprograms_the_word_and_keeps_its_breakpoint) {
  test_window w;
  w.store(0x10, {0xA05, 0xA06});
  w.view.poke().breakpts[0x10] = 1;
  w.view.type(id::direc, "010");
  w.view.click(id::borrarins);
  EXPECT_EQ(w.chip().progmem[0x10], 65535);
  EXPECT_EQ(w.chip().progmem[0x11], 0xA06);
  EXPECT_EQ(line(w, 0x10), "*010\t???");
  EXPECT_EQ(w.view.look_map().rows[0x10], map_colour::blue);
  EXPECT_EQ(w.view.look_map().rows[0x11], map_colour::yellow);
  EXPECT_EQ(w.at("MP").row(), 0x10);
  EXPECT_TRUE(w.view.hex().modified);
}

TEST(entry, shows_the_code_and_opens_its_button_for_an_instruction) {
  struct row {
    const char* text;
    const char* code;
    bool open;
  };
  test_window w;
  for (const row& r :
       {row{"movwf 1f", "03F", true}, row{"movwf 20", "???", false}, row{"BCF 5,234", "A85", true},
        row{"FOO", "???", false}, row{"NOP", "000", true}, row{"NOP\r\n", "???", false}}) {
    w.view.type(id::INS, r.text);
    EXPECT_EQ(w.text("codop"), r.code) << r.text;
    EXPECT_EQ(w.enabled("Entrarins"), r.open) << r.text;
  }
  EXPECT_EQ(w.text("INS"), "");
}

TEST(entry, stores_the_code_and_goes_on_to_the_next_address) {
  for (const bool by_key : {false, true}) {
    test_window w;
    w.view.type(id::direc, "7FE");
    w.view.type(id::INS, "BCF 5,234");
    const auto go = [&] { by_key ? w.view.enter(id::INS) : w.view.click(id::Entrarins); };
    go();
    EXPECT_EQ(w.chip().progmem[0x7FE], 0xA85);
    EXPECT_EQ(line(w, 0x7FE), " 7FE\tA85\tGOTO 085");
    EXPECT_EQ(w.view.look_map().rows[0x7FE], map_colour::yellow);
    EXPECT_EQ(w.text("direc"), "7FF");
    EXPECT_EQ(w.focused(), "INS");
    EXPECT_EQ(w.text("INS"), "BCF 5,234");
    EXPECT_TRUE(w.view.hex().modified);
    go();
    EXPECT_EQ(w.chip().progmem[0x7FF], 0xA85);
    EXPECT_EQ(w.at("MP").row(), 0);
    EXPECT_EQ(w.text("direc"), "000");
  }
}

TEST(entry, does_nothing_on_Enter_while_the_text_is_no_instruction) {
  test_window w;
  w.view.type(id::INS, "FOO");
  const chipstate before = w.chip();
  w.view.enter(id::INS);
  EXPECT_EQ(differences(before, w.chip()), "");
  EXPECT_EQ(w.text("INS"), "FOO");
}

}  // namespace
}  // namespace estructura
