// Oscillator, watchdog, and the timer's own input.
#include <gtest/gtest.h>
#include <string>

#include "tests/support/differences.h"
#include "tests/support/test_window.h"

namespace estructura {
namespace {

using support::differences;
using support::test_window;

std::int16_t word16(int value) {
  return static_cast<std::int16_t>(value);
}

const std::vector<support::shown_text> texts = {
    {"16C57", [](chipstate& c) { c.cpu.option = 0x0F; }, "WATCHDOG", "WDT / 128"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x08; }, "WATCHDOG", "WDT / 1"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x0C; }, "WATCHDOG", "WDT / 16"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x07; }, "WATCHDOG", "WDT / 1"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x07; }, "divtim", "256"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x00; }, "divtim", "2"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x0F; }, "divtim", "1"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x30; }, "SENTIM", "Ext. Des."},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x20; }, "SENTIM", "Ext. Asc."},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x10; }, "SENTIM", "F/4"},
    {"16C57", [](chipstate& c) { c.wdtcount = 5; }, "contawdt", ""},
};

TEST(clocks_view, has_the_text_of_its_row) {
  support::expect_texts(texts);
}

TEST(clocks_view, of_the_watchdog_counts_down_while_it_is_on) {
  test_window w;
  w.view.click(id::WATCHDOG);
  EXPECT_EQ(w.text("contawdt"), "2304000");
  w.view.poke().wdtcount = 1000;
  w.view.refresh();
  EXPECT_EQ(w.text("contawdt"), "2303000");
  w.view.poke().wdtcount = 2304001;
  w.view.refresh();
  EXPECT_EQ(w.text("contawdt"), "-1");
  w.view.click(id::WATCHDOG);
  EXPECT_EQ(w.text("contawdt"), "");
  EXPECT_EQ(w.chip().wdtlimit, 2304000);
}

TEST(clocks_view, opens_what_the_timer_source_needs) {
  struct timer_row {
    const char* device;
    int option;
    const char* fr;
    bool fr_enabled, tocki_enabled, gp2_visible;
  };
  for (const timer_row& r :
       {timer_row{"16C57", 0x20, "0", true, true, true}, timer_row{"16C57", 0x20, "50", true, false, true},
        timer_row{"16C57", 0x00, "0", false, false, true}, timer_row{"16C57", 0x00, "50", false, false, true},
        timer_row{"12C508", 0x20, "0", true, true, false}, timer_row{"12C508", 0x00, "0", false, false, true},
        timer_row{"12C508", 0x20, "50", true, false, false}}) {
    test_window w(r.device);
    w.view.type(id::FR, r.fr);
    w.view.poke().cpu.option = word16(r.option);
    w.view.refresh();
    const std::string where = std::string(r.device) + ", OPTION " + std::to_string(r.option) + ", FR " + r.fr;
    EXPECT_EQ(w.enabled("FR"), r.fr_enabled) << where;
    EXPECT_EQ(w.enabled("TOCKI"), r.tocki_enabled) << where;
    EXPECT_EQ(w.visible("PB(2)"), r.gp2_visible) << where;
  }
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

}  // namespace
}  // namespace estructura
