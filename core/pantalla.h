// The seam from the machine to whoever shows it. The rules read a few plain values that the window keeps here
// and leave here what the window owes to the eye; only what is rare is a call.
//
//   struct quiet final : pantalla {};
//   quiet view;
//   step(chip, view);
//   view.due.marker          -> address of the map marker
//
// Nothing here is part of the machine: two machines need two of these, and a snapshot of a machine needs
// none.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

#include "common/bounded_array.h"

namespace estructura {

/// What the window tells the rules. Kept up to date by the window whenever one of its controls changes.
struct surroundings {
  bool config_open = true;      ///< `WATCHDOG` is enabled: the next step locks the configuration
  bool watchdog_on = false;     ///< `WATCHDOG` is checked
  bool entry_shown = false;     ///< the instruction box or its code label shows something to clear
  bool fr_set = false;          ///< the number in `FR` is not 0
  bool focus_at_stake = false;  ///< a refresh may close the control that has the focus
  /// Values of the pin boxes of ports A, B and C, bit by pin.
  bounded_array<std::uint8_t, 3> boxes{};
  /// Watchdog period in instruction cycles for each divisor 2^0..2^7; beyond 32 bits it is `too_large`.
  bounded_array<std::int64_t, 8> wdt_limits{};
  /// Instruction cycles of one T0CKI period while `fr_set`; beyond 32 bits `too_large`.
  std::int64_t tocki_period = 0;

  static constexpr std::int64_t too_large = std::numeric_limits<std::int64_t>::max();

  /// Works the periods out anew from the two frequencies as typed: `frec_khz` in kHz, `fr_hz` in Hz.
  void set_frequencies(double frec_khz, double fr_hz);
};

/// What the step leaves to be shown, worked out by the window before anybody looks.
struct owed {
  bool views = false;         ///< the register views are due
  bool row = false;           ///< a row of the program list was chosen
  bool row_in_list = false;   ///< the last choice was a line of the list; otherwise none is current
  std::int16_t clicked = -1;  ///< the last line chosen within the list, -1 none since the last look
  bool moved = false;         ///< another line was chosen before the last one, since the last look
  std::int16_t marker = 0;    ///< map position: where the marker was last drawn
  bool marker_drawn = false;
};

class pantalla {
 public:
  surroundings env;
  owed due;

  /// The first step since the configuration was unlocked.
  virtual void lock_configuration() {}
  /// Empties the instruction box and its code label; called only while `env.entry_shown`.
  virtual void clear_entry() {}
  /// The step that begins may run the watchdog out: its box shows what is owed by now and nothing of the
  /// step.
  virtual void foresee_warning() {}
  /// The watchdog has run out: a box with an OK button.
  virtual void warn_watchdog() {}
  /// The views were refreshed while `env.focus_at_stake`: a control that they close hands the focus on.
  virtual void guard_focus() {}
  /// The run button's click, performed by a run that meets a breakpoint.
  virtual void click_ejecutar() {}
  /// Handles pending events; how many further steps may pass before it wants to be asked again, at least 1.
  virtual int cede() { return 1 << 20; }

  /// Chooses the row of an address in the program list. Beyond the list no row is current, and nothing
  /// faults.
  void choose_program_row(std::int16_t address, std::int16_t progmask) {
    due.row = true;
    due.row_in_list = address <= progmask;
    if (!due.row_in_list) return;
    due.moved |= due.clicked >= 0 && due.clicked != address;
    due.clicked = address;
  }
  void erase_marker() { due.marker_drawn = false; }
  void draw_marker(std::int16_t address) {
    due.marker = address;
    due.marker_drawn = true;
  }

 protected:
  pantalla() { set_default_frequencies(); }
  ~pantalla() = default;
  pantalla(const pantalla&) = default;
  pantalla& operator=(const pantalla&) = default;

 private:
  void set_default_frequencies() { env.set_frequencies(4000, 0); }
};

inline void surroundings::set_frequencies(double frec_khz, double fr_hz) {
  const auto whole = [](double value) {
    const double rounded = std::nearbyint(value);
    const bool fits = rounded >= -2147483648.0 && rounded <= 2147483647.0;
    return fits ? static_cast<std::int64_t>(rounded) : too_large;
  };
  // 18 ms at frec_khz, in instruction cycles of four oscillator periods: 18 * frec_khz / 4.
  double cycles = frec_khz * 4.5;
  for (std::int64_t& limit : wdt_limits) {
    limit = whole(cycles);
    cycles *= 2;
  }
  fr_set = fr_hz != 0;
  tocki_period = fr_set ? whole(frec_khz * 250 / fr_hz) : 0;
}

}  // namespace estructura
