#include "ui/clocks_panel.h"

#include <cmath>
#include <string>

#include "common/checked.h"
#include "common/number.h"
#include "core/data_memory.h"
#include "core/resets.h"
#include "core/timer.h"

namespace estructura {

namespace {

/// What stands for a frequency that no oscillator has.
constexpr std::string_view default_khz = "4000";

}  // namespace

struct clocks_panel::handlers {
  static void FREC_GotFocus(clocks_panel& self, int) { self.FREC.select_all(); }

  static void fext_Click(clocks_panel& self, int) {
    const bool pins_are_oscillator = self.fext.value();
    self.FREC.set_enabled(pins_are_oscillator);
    // The internal oscillator runs at its own, whatever was typed for the external one.
    if (!pins_are_oscillator) self.FREC.set_text(std::to_string(self.chip_.devmodel.internal_khz));
    self.pins_.show_pin(4, !pins_are_oscillator);
    self.pins_.show_pin(5, !pins_are_oscillator);
  }

  static void WATCHDOG_Click(clocks_panel& self, int) {
    self.chip_.wdtlimit = round32(prescratio(self.chip_, 0) * valdec(self.FREC.text()) * 4.5);
    self.WDT.set_enabled(self.WATCHDOG.value());
    self.show_watchdog_count();
  }

  static void WDT_Click(clocks_panel& self, int) {
    wdt_reset(self.chip_);
    self.runner_.show_reset();
  }

  static void FR_GotFocus(clocks_panel& self, int) { self.FR.select_all(); }

  static void FR_Change(clocks_panel& self, int) {
    constexpr double highest_hz = 1'000'000;
    const double hz = valdec(self.FR.text());
    if (hz <= 0) {
      self.TOCKI.set_enabled(true);
      self.correct_pulse_frequency("0");
    } else if (hz > highest_hz) {
      self.correct_pulse_frequency("1000000");
      self.chip_.tockicount = 0;
      self.TOCKI.set_enabled(false);
    }
    self.chip_.tockifreq = round32(valdec(self.FR.text()));
  }

  static void TOCKI_Click(clocks_panel& self, int) {
    if (tocki_pulse(self.chip_)) self.runner_.regen();
  }

  // clang-format off
  static constexpr handler_row rows[] = {
      {id::FREC,     event::gotfocus, act<FREC_GotFocus>},
      {id::fext,     event::click,    act<fext_Click>},
      {id::WATCHDOG, event::click,    act<WATCHDOG_Click>},
      {id::WDT,      event::click,    act<WDT_Click>},
      {id::FR,       event::gotfocus, act<FR_GotFocus>},
      {id::FR,       event::change,   act<FR_Change>},
      {id::TOCKI,    event::click,    act<TOCKI_Click>},
  };
  // clang-format on
};

clocks_panel::clocks_panel(const shared_parts& shared, pins_panel& pins)
    : panel(shared, handlers::rows), pins_(pins) {}

void clocks_panel::touched(const control& source) {
  switch (source.which()) {
    case id::FREC:
    case id::FR: in_.set_frequencies(valdec(FREC.text()), valdec(FR.text())); break;
    case id::WATCHDOG:
      runner_.requests().configuration_open = WATCHDOG.enabled();
      in_.watchdog_on = WATCHDOG.value();
      break;
    default: break;
  }
}

// --- What a refresh shows ---

bool clocks_panel::timer_counts_pulses() const {
  return getbit(chip_.cpu.option, option_t0cs) != 0;
}

bool clocks_panel::timer_counts_single_pulses() const {
  return timer_counts_pulses() && !in_.pulse_train;
}

std::optional<bool> clocks_panel::open_after_refresh(control_place place) const {
  switch (place.which) {
    case id::FR: return timer_counts_pulses();
    case id::TOCKI: return timer_counts_single_pulses();
    default: return std::nullopt;
  }
}

void clocks_panel::show() {
  WATCHDOG.set_text("WDT / " + std::to_string(prescratio(chip_, 0)));
  show_watchdog_count();
  divtim.set_text(std::to_string(prescratio(chip_, 1)));
  const bool falling = getbit(chip_.cpu.option, option_t0se) != 0;
  SENTIM.set_text(!timer_counts_pulses() ? "F/4" : falling ? "Ext. Des." : "Ext. Asc.");
  FR.set_enabled(timer_counts_pulses());
  TOCKI.set_enabled(timer_counts_single_pulses());
}

void clocks_panel::show_watchdog_count() {
  const std::int64_t left = std::int64_t{chip_.wdtlimit} - chip_.wdtcount;
  contawdt.set_text(WATCHDOG.value() ? std::to_string(left) : std::string());
}

// Whoever goes on typing means another number, not more digits of this one.
void clocks_panel::correct_pulse_frequency(const std::string& text) {
  if (FR.text() == text) return;
  FR.set_text(text);
  FR.set_selection(0, static_cast<int>(text.size()));
}

// --- The configuration ---

void clocks_panel::leave_device() {
  fext.set_value(false);
}

void clocks_panel::show_device() {
  const device& model = chip_.devmodel;
  fext.set_visible(model.shares_pins);
  const bool has_oscillator = model.internal_khz != 0;
  FREC.set_enabled(!has_oscillator);
  if (has_oscillator) FREC.set_text(std::to_string(model.internal_khz));
}

void clocks_panel::lock() {
  constexpr double lowest_khz = 32;
  constexpr double highest_khz = 20000;
  const double khz = std::nearbyint(valdec(FREC.text()));
  if (khz < lowest_khz || khz > highest_khz) FREC.set_text(default_khz);
  FREC.set_enabled(false);
  WATCHDOG.set_enabled(false);
  fext.set_enabled(false);
}

void clocks_panel::unlock() {
  fext.set_enabled(true);
  WATCHDOG.set_enabled(true);
  // That of an oscillator inside stays closed, even with the external clock, until its box is clicked again.
  FREC.set_enabled(chip_.devmodel.internal_khz == 0);
}

}  // namespace estructura
