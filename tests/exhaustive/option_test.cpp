// Every value of OPTION on every device: each view that it decides, and the two periods that a refresh works
// out from it.
#include <gtest/gtest.h>
#include <string>

#include "common/text.h"
#include "core/devices.h"
#include "tests/support/test_window.h"

namespace estructura {
namespace {

using support::test_window;

std::string binary(int value, int digits) {
  std::string text;
  for (int bit = digits - 1; bit >= 0; --bit) text += (value & (1 << bit)) != 0 ? "1" : "0";
  return text;
}

void set_option(test_window& w, int value) {
  w.view.poke().cpu.option = static_cast<std::int16_t>(value);
  w.view.refresh();
}

// The two divisors: powers of two from 1 for the watchdog, from 2 for the timer, and 1 for who has none.
struct divisors {
  int watchdog;
  int timer;
};
divisors divisors_of(int option) {
  int power = 1;
  for (int i = 0; i < option % 8; ++i) power *= 2;
  return (option & 8) != 0 ? divisors{power, 1} : divisors{1, 2 * power};
}

TEST(option_space, every_value_has_its_binary_view_and_its_line_in_the_list_of_core_registers) {
  for (const auto& [device, model] : catalogue) {
    test_window w(device);
    for (int value = 0; value < 256; ++value) {
      set_option(w, value);
      const int option = value & (model.is16c5x ? 0x3F : 0xFF);
      ASSERT_EQ(w.chip().cpu.option, option);
      ASSERT_EQ(w.text("OPT"), model.is16c5x ? "--" + binary(option, 6) : binary(option, 8));
      ASSERT_EQ(w.at("RE").rows().at(2), " " + hexstr(option, 2));
    }
  }
}

TEST(option_space, every_value_gives_the_divisors_and_the_watchdogs_period) {
  for (const auto& [device, model] : catalogue) {
    test_window w(device);
    w.view.click(id::WATCHDOG);
    w.view.poke().wdtcount = 7;
    for (int value = 0; value < 256; ++value) {
      set_option(w, value);
      const divisors by = divisors_of(value);
      ASSERT_EQ(w.text("WATCHDOG"), "WDT / " + std::to_string(by.watchdog)) << value;
      ASSERT_EQ(w.text("divtim"), std::to_string(by.timer)) << value;
      // 18 ms of 4 MHz are 18,000 instruction cycles.
      ASSERT_EQ(w.chip().wdtlimit, 18000 * by.watchdog) << value;
      ASSERT_EQ(w.text("contawdt"), std::to_string(18000 * by.watchdog - 7)) << value;
    }
    // Unchecked, the period stays as it was and the count is not shown.
    w.view.click(id::WATCHDOG);
    const int before = w.chip().wdtlimit;
    for (int value = 0; value < 256; ++value) {
      set_option(w, value);
      ASSERT_EQ(w.chip().wdtlimit, before) << value;
      ASSERT_EQ(w.text("contawdt"), "") << value;
    }
  }
}

TEST(option_space, every_value_names_the_source_of_the_timer_and_opens_what_it_needs) {
  for (const auto& [device, model] : catalogue) {
    for (const bool with_frequency : {false, true}) {
      test_window w(device);
      set_option(w, 0x20);
      // 4,000 kHz * 250 / 500 Hz
      if (with_frequency) w.view.type(id::FR, "500");
      const int wanted_period = with_frequency ? 2000 : 0;
      for (int value = 0; value < 256; ++value) {
        w.view.poke().tockiperiod = 9;
        set_option(w, value);
        const bool edges = (value & 0x20) != 0;
        const std::string source = !edges ? "F/4" : (value & 0x10) != 0 ? "Ext. Des." : "Ext. Asc.";
        ASSERT_EQ(w.text("SENTIM"), source) << value;
        ASSERT_EQ(w.enabled("FR"), edges) << value;
        ASSERT_EQ(w.enabled("TOCKI"), edges && !with_frequency) << value;
        // GP2 of the 12C50x is the timer's input; on the 16C5x that has a pin of its own.
        ASSERT_EQ(w.visible("PB(2)"), model.is16c5x || !edges) << device << ' ' << value;
        ASSERT_EQ(w.chip().tockiperiod, edges && with_frequency ? wanted_period : 9) << value;
      }
    }
  }
}

}  // namespace
}  // namespace estructura
