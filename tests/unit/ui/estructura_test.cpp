// The window at its start and its end; its door, where what cannot be used is not used, and where the focus
// goes.
#include <functional>
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

TEST(start, finds_a_reset_16C57_with_nothing_programmed) {
  test_window w;
  const chipstate& chip = w.chip();
  EXPECT_EQ(chip.devmodel.progmask, 2047);
  EXPECT_TRUE(chip.devmodel.hasportc);
  for (int a = 0; a < 2048; ++a) {
    ASSERT_EQ(chip.progmem[a], 65535);
    ASSERT_EQ(chip.breakpts[a], 0);
  }
  EXPECT_EQ(chip.cpu.pc, 2047);
  EXPECT_TRUE(chip.firststep);
  EXPECT_EQ(w.text("ciclos"), "0");
  EXPECT_EQ(w.at("MP").row(), 2047);
  EXPECT_EQ(w.at("MP").selected(), std::vector<int>{2047});
  EXPECT_FALSE(w.view.hex().modified);
  EXPECT_FALSE(w.view.source().modified);
  EXPECT_TRUE(w.value("VISMP"));
  EXPECT_EQ(w.view.look_map().marker, -1);
}

TEST(start, offers_the_devices_in_order) {
  test_window w;
  std::vector<std::string> names;
  for (const catalogue_row& row : catalogue) names.emplace_back(row.name);
  EXPECT_EQ(w.at("PIC").rows(), names);
  EXPECT_EQ(w.text("PIC"), "16C57");
}

TEST(start, fills_the_address_columns) {
  test_window w;
  for (int half = 0; half < 2; ++half)
    for (int i = 0; i < 16; ++i)
      EXPECT_EQ(w.view.look(id::dirmd, half).rows()[static_cast<std::size_t>(i)], hexstr(half * 16 + i, 2));
}

TEST(door, ignores_a_disabled_control) {
  test_window w;
  w.view.focus(id::FREC);
  const chipstate before = w.chip();
  w.view.click(id::WDT);
  w.view.type(id::dat, "12");
  w.view.click(id::entrardat);
  EXPECT_EQ(differences(before, w.chip()), "");
  EXPECT_EQ(w.text("dat"), "");
  EXPECT_EQ(w.focused(), "FREC");
}

TEST(door, ignores_a_hidden_control) {
  test_window w;
  w.view.focus(id::FREC);
  w.view.click(id::fext);
  w.view.click_text(id::lst, 0);
  EXPECT_FALSE(w.value("fext"));
  EXPECT_EQ(w.focused(), "FREC");
}

TEST(door, ignores_a_control_in_a_hidden_frame) {
  test_window w;
  w.view.click(id::sl, 1);
  EXPECT_FALSE(w.visible("clip"));
  EXPECT_TRUE(w.visible("tab"));
  w.view.click(id::tab);
  EXPECT_EQ(w.text("source"), "");
  EXPECT_EQ(w.focused(), "sl(1)");
}

TEST(door, ignores_what_a_control_of_the_kind_cannot_take) {
  test_window w;
  w.view.focus(id::FREC);
  const std::string title = w.text("Label14");
  w.view.type(id::Label14, "x");
  w.view.type(id::eje1, "x");
  w.view.type(id::lst, "x");
  w.view.select(id::Label14, 0, 1);
  w.view.enter(id::ciclos);
  w.view.click_text(id::Label14, 0);
  w.view.keyup_text(id::eje1, 0);
  w.view.pick(id::MP, "x");
  w.view.pick(id::PIC, "16C84");
  w.view.choose_rows(id::PIC, 0, 6, {6});
  w.view.click_row(id::MP, 0, 2048);
  w.view.click_row(id::MP, 0, -1);
  w.view.focus(id::Label14);
  w.view.focus(id::Frame3);
  w.view.focus(id::mapa);
  w.view.click(id::ciclos);
  EXPECT_EQ(w.text("Label14"), title);
  EXPECT_EQ(w.text("eje1"), "Ejec. &1");
  EXPECT_EQ(w.text("lst"), "");
  EXPECT_EQ(w.text("PIC"), "16C57");
  EXPECT_EQ(w.at("MP").row(), 2047);
  EXPECT_EQ(w.focused(), "FREC");
}

TEST(door, turns_a_check_box_before_its_click) {
  test_window w;
  EXPECT_FALSE(w.enabled("WDT"));
  w.view.click(id::WATCHDOG);
  EXPECT_TRUE(w.value("WATCHDOG"));
  EXPECT_TRUE(w.enabled("WDT"));
  w.view.click(id::WATCHDOG);
  EXPECT_FALSE(w.value("WATCHDOG"));
  EXPECT_FALSE(w.enabled("WDT"));
}

TEST(door, lets_one_option_of_a_pair_stand) {
  test_window w;
  w.view.click(id::sl, 1);
  EXPECT_FALSE(w.value("sl(0)"));
  EXPECT_TRUE(w.value("sl(1)"));
  EXPECT_FALSE(w.visible("source"));
  EXPECT_TRUE(w.visible("lst"));
  w.view.click(id::sl, 0);
  EXPECT_TRUE(w.value("sl(0)"));
  EXPECT_FALSE(w.value("sl(1)"));
  EXPECT_TRUE(w.visible("source"));
  EXPECT_TRUE(w.visible("clip"));
  EXPECT_FALSE(w.visible("lst"));
}

TEST(door, leaves_the_sleep_box_as_the_chip_has_it) {
  test_window w;
  w.view.click(id::estsleep);
  EXPECT_FALSE(w.value("estsleep"));
  w.view.poke().sleeping = true;
  w.view.refresh();
  EXPECT_TRUE(w.value("estsleep"));
  w.view.click(id::estsleep);
  EXPECT_TRUE(w.value("estsleep"));
  EXPECT_TRUE(w.chip().sleeping);
}

TEST(door, adds_a_line_to_the_selection_and_takes_it_away_again) {
  test_window w;
  w.view.click_row(id::MP, 0, 5);
  w.view.click_row(id::MP, 0, 9, true);
  w.view.click_row(id::MP, 0, 2, true);
  EXPECT_EQ(w.at("MP").selected(), (std::vector<int>{2, 5, 9}));
  EXPECT_EQ(w.at("MP").row(), 2);
  EXPECT_EQ(w.text("direc"), "002");
  w.view.click_row(id::MP, 0, 5, true);
  EXPECT_EQ(w.at("MP").selected(), (std::vector<int>{2, 9}));
  w.view.click_row(id::MP, 0, 7);
  EXPECT_EQ(w.at("MP").selected(), (std::vector<int>{7}));
}

TEST(focus, goes_to_whatever_is_used_but_labels_and_the_map) {
  test_window w;
  struct row {
    std::function<void()> use;
    const char* focused;
  };
  const std::vector<row> rows = {
      {[&] { w.view.click(id::eje1); }, "eje1"},       {[&] { w.view.click(id::PB, 3); }, "PB(3)"},
      {[&] { w.view.dblclick(id::ciclos); }, "PB(3)"}, {[&] { w.view.press_map(3); }, "PB(3)"},
      {[&] { w.view.click(id::sl, 1); }, "sl(1)"},     {[&] { w.view.type(id::direc, "123"); }, "direc"},
      {[&] { w.view.click_row(id::MP, 0, 3); }, "MP"}, {[&] { w.view.click_row(id::PIL, 0, 1); }, "PIL"},
      {[&] { w.view.enter(id::INS); }, "INS"},         {[&] { w.view.select(id::FR, 0, 1); }, "FR"},
      {[&] { w.view.click_text(id::lst, 0); }, "lst"}, {[&] { w.view.click(id::por); }, "por"},
      {[&] { w.view.pick(id::PIC, "16C54"); }, "PIC"}, {[&] { w.view.blur(); }, ""},
  };
  for (const row& r : rows) {
    r.use();
    EXPECT_EQ(w.focused(), r.focused);
  }
}

TEST(focus, got_selects_the_whole_text_and_only_when_it_comes_from_elsewhere) {
  test_window w;
  for (const id box : {id::FREC, id::FR, id::direc, id::INS}) {
    w.view.focus(id::por);
    w.view.focus(box);
    const std::string name = w.view.look(box).name();
    const int size = static_cast<int>(w.view.look(box).text().size());
    EXPECT_EQ(w.view.look(box).sel_start(), 0) << name;
    EXPECT_EQ(w.view.look(box).sel_length(), size) << name;
    w.view.select(box, size, 0);
    w.view.focus(box);
    EXPECT_EQ(w.view.look(box).sel_length(), 0) << name;
  }
}

TEST(focus, lost_takes_the_selection_from_the_register_lists_so_that_a_line_clicks_again) {
  test_window w;
  struct row {
    id which;
    int index;
  };
  for (const row& r : {row{id::MDP, 0}, row{id::MD, 0}, row{id::MD, 3}, row{id::RE, 0}}) {
    w.view.click_row(r.which, r.index, 2);
    EXPECT_EQ(w.view.look(r.which, r.index).row(), -1);
    EXPECT_EQ(w.view.look(r.which, r.index).selected(), std::vector<int>{});
    EXPECT_EQ(w.focused(), "dat");
    w.view.type(id::dat, "");
    w.view.click_row(r.which, r.index, 2);
    EXPECT_NE(w.text("dat"), "");
  }
}

TEST(focus, does_not_stay_on_a_control_that_can_no_longer_be_used) {
  test_window w;
  const auto on_usable = [&] {
    const control_place place = w.view.focused();
    return place.which != id::none && w.view.usable(place.which, place.index);
  };
  w.view.click_row(id::MDP, 0, 8);
  w.view.click(id::entrardat);
  EXPECT_FALSE(w.enabled("entrardat"));
  EXPECT_TRUE(on_usable()) << w.focused();
  w.view.click_row(id::MDP, 0, 8);
  w.view.enter(id::dat);
  EXPECT_FALSE(w.enabled("dat"));
  EXPECT_TRUE(on_usable()) << w.focused();
  w.view.pick(id::PIC, "12C508");
  w.view.click(id::CMCLR);
  w.view.focus(id::MCLR);
  w.desktop.at_turn(1, [&] {
    w.view.focus(id::MCLR);
    w.view.click(id::por);
    w.view.click(id::CMCLR);
    w.view.focus(id::MCLR);
    w.view.click(id::ejecutar);
  });
  w.view.click(id::ejecutar);
  EXPECT_TRUE(on_usable()) << w.focused();
}

// A function key leaves the focus where it is, so that the step's own effects are what withdraws it.
TEST(focus, that_is_withdrawn_by_a_step_never_lands_on_what_ends_or_erases) {
  struct row {
    const char* device;
    id where;
    id key;
    const char* expected;
  };
  for (const row& r :
       {row{"16C57", id::FREC, id::eje1, "eje1"}, row{"16C57", id::PIC, id::eje1, "eje1"},
        row{"12C508", id::PIC, id::eje1, "eje1"}, row{"12C508", id::fext, id::eje1, "eje1"},
        row{"12C508", id::CMCLR, id::eje1, "eje1"}, row{"16C57", id::WATCHDOG, id::eje1, "estsleep"},
        row{"16C57", id::FREC, id::ejecutar, "ejecutar"}}) {
    test_window w(r.device);
    w.store(w.chip().cpu.pc, {0x000});
    w.view.focus(r.where);
    std::string during;
    w.desktop.at_turn(1, [&] {
      during = w.focused();
      w.view.press(id::ejecutar);
    });
    w.view.press(r.key);
    EXPECT_EQ(r.key == id::eje1 ? w.focused() : during, r.expected)
        << r.device << ", " << declared(r.where).name;
  }
}

TEST(focus, that_the_step_takes_from_the_entry_button_goes_to_the_instruction) {
  test_window w;
  w.view.type(id::INS, "NOP");
  w.view.focus(id::Entrarins);
  ASSERT_EQ(w.focused(), "Entrarins");
  w.view.press(id::eje1);
  EXPECT_EQ(w.text("INS"), "");
  EXPECT_EQ(w.focused(), "INS");
}

TEST(end, comes_once_and_nothing_works_behind_it) {
  test_window w;
  w.view.click(id::fin);
  EXPECT_TRUE(w.view.ended());
  EXPECT_EQ(w.desktop.ends, 1);
  const chipstate before = w.chip();
  w.view.click(id::fin);
  w.view.close_request();
  w.view.click(id::eje1);
  w.view.type(id::FREC, "32");
  w.view.pick(id::PIC, "16C54");
  EXPECT_EQ(w.desktop.ends, 1);
  EXPECT_EQ(differences(before, w.chip()), "");
  EXPECT_EQ(w.text("FREC"), "4000");
}

TEST(end, stops_a_run_before_it_asks_about_documents) {
  test_window w;
  w.view.type(id::source, "NOP");
  w.store(0, {0x000, 0xA00});
  w.stand_at(0);
  std::vector<bool> running;
  w.desktop.at_box = [&] { running.push_back(w.chip().running); };
  w.desktop.at_turn(4, [&] { w.view.close_request(); });
  w.view.click(id::ejecutar);
  EXPECT_EQ(running, std::vector<bool>{false});
}

TEST(end, stops_a_run_after_its_step) {
  for (const bool by_button : {false, true}) {
    test_window w;
    w.store(0, {0x000, 0xA00});
    w.stand_at(0);
    w.desktop.at_turn(4, [&] { by_button ? w.view.click(id::fin) : w.view.close_request(); });
    w.view.click(id::ejecutar);
    EXPECT_EQ(w.desktop.turns, 4);
    EXPECT_EQ(w.desktop.ends, 1);
    EXPECT_FALSE(w.chip().running);
  }
}

}  // namespace
}  // namespace estructura
