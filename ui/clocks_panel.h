// The clocks: the oscillator's frequency, the watchdog that counts it, and what Timer0 counts.
//
//   clocks.show();                   // after a refresh: counts, divisors, the timer's signal
//   clocks.lock();                   // the first step: the configuration stands until power-on
#pragma once

#include <optional>

#include "ui/panel.h"
#include "ui/pins_panel.h"

namespace estructura {

class clocks_panel final : public panel {
 public:
  clocks_panel(const shared_parts& shared, pins_panel& pins);

  /// What the views show after a refresh.
  void show();
  /// The device is about to be another one: its oscillator is its own again.
  void leave_device();
  /// Another device: the internal oscillator where it has one.
  void show_device();
  /// The configuration can no longer be changed; a frequency that no oscillator has becomes 4000 kHz.
  void lock();
  /// Power-on: it can be changed again.
  void unlock();
  /// As for the pins (ui/pins_panel.h): the two controls of T0CKI.
  [[nodiscard]] std::optional<bool> open_after_refresh(control_place place) const;

  void touched(const control& source) override;

 private:
  struct handlers;
  [[nodiscard]] bool timer_counts_pulses() const;
  [[nodiscard]] bool timer_counts_single_pulses() const;
  void show_watchdog_count();
  void correct_pulse_frequency(const std::string& text);

  pins_panel& pins_;
  text_box& FREC = own<text_box>(id::FREC);
  check_box& fext = own<check_box>(id::fext);
  check_box& WATCHDOG = own<check_box>(id::WATCHDOG);
  button& WDT = own<button>(id::WDT);
  label& contawdt = own<label>(id::contawdt);
  text_box& FR = own<text_box>(id::FR);
  button& TOCKI = own<button>(id::TOCKI);
  label& SENTIM = own<label>(id::SENTIM);
  label& divtim = own<label>(id::divtim);
};

}  // namespace estructura
