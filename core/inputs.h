// What reaches the chip from outside: the clocks as somebody set them, and the levels at its pins.
//
//   inputs in;
//   in.set_frequencies(4000, 0);     // oscillator in kHz, T0CKI in Hz
//   in.watchdog_on = true;
//   step(chip, in, seen);
//
// No part of the machine: a snapshot of a machine needs none, and two machines need two of these. Whoever
// owns the machine sets the clocks between two steps. `pin_boxes` is written by the core: by `pin_click` for
// the person, and by every refresh, that of a step too, for the outputs.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "common/bounded_array.h"

namespace estructura {

struct inputs {
  bool watchdog_on = false;
  bool pulse_train = false;  ///< the frequency at T0CKI is not 0
  /// What the boxes of ports A, B and C show, bit by pin: an input's as somebody set it, an output's as its
  /// latch has it. They are the pins' levels, but for a machine whose state was stored from outside.
  bounded_array<std::uint8_t, 3> pin_boxes{};
  /// Watchdog period in instruction cycles for each divisor 2^0..2^7; beyond 32 bits it is `too_large`.
  bounded_array<std::int64_t, 8> wdt_limits{};
  /// Instruction cycles of one T0CKI period while there is a `pulse_train`; beyond 32 bits `too_large`.
  std::int64_t tocki_period = 0;

  static constexpr std::int64_t too_large = std::numeric_limits<std::int64_t>::max();

  inputs() { set_frequencies(4000, 0); }
  /// Works the periods out anew from the two frequencies as typed: `frec_khz` in kHz, `fr_hz` in Hz.
  void set_frequencies(double frec_khz, double fr_hz);
};

inline void inputs::set_frequencies(double frec_khz, double fr_hz) {
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
  pulse_train = fr_hz != 0;
  tocki_period = pulse_train ? whole(frec_khz * 250 / fr_hz) : 0;
}

}  // namespace estructura
