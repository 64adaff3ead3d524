// The chip's panel: run and step, resets, the clocks, and the pins.
#include <cmath>
#include <string>

#include "common/checked.h"
#include "common/number.h"
#include "core/data_memory.h"
#include "core/resets.h"
#include "core/timer.h"
#include "ui/estructura.h"

namespace estructura {

namespace {

constexpr std::string_view run_caption = "Ejecu&tar";
constexpr std::string_view stop_caption = "&Parar";

}  // namespace

void Estructura::show_pc() {
  runner_.seen().arrive(chip_.cpu.pc, chip_.devmodel.progmask);
}

// --- Run ---

void Estructura::eje1_Click(int) {
  runner_.step();
}

void Estructura::ejecutar_Click(int) {
  if (at(id::ejecutar).text() != run_caption) {
    stop_run();
    bring_up_to_date();
    MP_DblClick(0);
    return;
  }
  at(id::ejecutar).set_text(stop_caption);
  at(id::eje1).set_enabled(false);
  chip_.running = true;
  // Stopped and started again within one turn of the loop: that loop simply goes on.
  if (run_on_stack_) return;
  struct on_stack {
    explicit on_stack(bool& flag) : flag_(flag) { flag_ = true; }
    ~on_stack() { flag_ = false; }
    on_stack(const on_stack&) = delete;
    on_stack& operator=(const on_stack&) = delete;
    on_stack(on_stack&&) = delete;
    on_stack& operator=(on_stack&&) = delete;
    bool& flag_;
  };
  const on_stack loop(run_on_stack_);
  runner_.run();
}

void Estructura::stop_run() {
  at(id::ejecutar).set_text(run_caption);
  at(id::eje1).set_enabled(true);
  chip_.running = false;
}

void Estructura::lock_configuration() {
  constexpr double lowest_khz = 32;
  constexpr double highest_khz = 20000;
  const double khz = std::nearbyint(valdec(at(id::FREC).text()));
  if (khz < lowest_khz || khz > highest_khz) at(id::FREC).set_text("4000");
  for (const id locked : {id::FREC, id::WATCHDOG, id::CMCLR, id::fext, id::PIC})
    at(locked).set_enabled(false);
}

void Estructura::clear_entry() {
  at(id::INS).set_text("");
  at(id::codop).set_text("");
}

void Estructura::ciclos_DblClick(int) {
  chip_.cycles = 0;
  at(id::ciclos).set_text("0");
}

void Estructura::VISMP_Click(int) {
  at(id::MP).set_visible(at(id::VISMP).value());
}

// --- Resets ---

void Estructura::por_Click(int) {
  for (const id freed : {id::fext, id::CMCLR, id::WATCHDOG, id::PIC}) at(freed).set_enabled(true);
  // On a 12C50x the frequency stays closed, even with the external clock, until its box is clicked again.
  at(id::FREC).set_enabled(chip_.devmodel.is16c5x);
  power_on(chip_);
  runner_.regen();
  show_pc();
  pintamapa();
}

void Estructura::MCLR_Click(int) {
  mclr_reset(chip_);
  runner_.regen();
  show_pc();
}

void Estructura::WDT_Click(int) {
  wdt_reset(chip_);
  runner_.regen();
  show_pc();
}

// --- Watchdog and clocks ---

void Estructura::warn_watchdog() {
  ask(box::ok_right, "Se ha desbordado el Watchdog.\rSe producirá un Reset.");
}

void Estructura::WATCHDOG_Click(int) {
  chip_.wdtlimit = round32(prescratio(chip_, 0) * valdec(at(id::FREC).text()) * 4.5);
  at(id::WDT).set_enabled(at(id::WATCHDOG).value());
  show_watchdog_count();
}

void Estructura::show_watchdog_count() {
  const std::int64_t left = std::int64_t{chip_.wdtlimit} - chip_.wdtcount;
  at(id::contawdt).set_text(at(id::WATCHDOG).value() ? std::to_string(left) : std::string());
}

void Estructura::CMCLR_Click(int) {
  const bool pin_is_mclr = at(id::CMCLR).value();
  at(id::MCLR).set_enabled(pin_is_mclr);
  at(id::PB, 3).set_visible(!pin_is_mclr);
}

void Estructura::fext_Click(int) {
  const bool pins_are_oscillator = at(id::fext).value();
  at(id::FREC).set_enabled(pins_are_oscillator);
  // The internal oscillator runs at 4 MHz, whatever was typed for the external one.
  if (!pins_are_oscillator) at(id::FREC).set_text("4000");
  at(id::PB, 4).set_visible(!pins_are_oscillator);
  at(id::PB, 5).set_visible(!pins_are_oscillator);
}

void Estructura::TOCKI_Click(int) {
  if (tocki_pulse(chip_)) runner_.regen();
}

void Estructura::FR_Change(int) {
  constexpr double highest_hz = 1'000'000;
  control& fr = at(id::FR);
  // Whoever goes on typing means another number, not more digits of this one.
  const auto replace = [&fr](const std::string& text) {
    if (fr.text() == text) return;
    fr.set_text(text);
    fr.set_selection(0, static_cast<int>(text.size()));
  };
  const double hz = valdec(fr.text());
  if (hz <= 0) {
    at(id::TOCKI).set_enabled(true);
    replace("0");
  } else if (hz > highest_hz) {
    replace("1000000");
    chip_.tockicount = 0;
    at(id::TOCKI).set_enabled(false);
  }
  chip_.tockifreq = round32(valdec(fr.text()));
}

// --- Pins ---

void Estructura::PA_Click(int bit) {
  runner_.pin_click(0, bit, at(id::PA, bit).value());
}
void Estructura::PB_Click(int bit) {
  runner_.pin_click(1, bit, at(id::PB, bit).value());
}
void Estructura::PC_Click(int bit) {
  runner_.pin_click(2, bit, at(id::PC, bit).value());
}

}  // namespace estructura
