#include "ui/run_control.h"

#include <algorithm>

namespace estructura {

// At least one step and at most `most`, with the reset of a time-out.
stretch_end run_control::advance(std::int64_t most) {
  if (time_out_is_near(chip_, in_)) listener_.show_whole_step();
  if (requests_.entry_shown) listener_.clear_entry();
  if (requests_.configuration_open) listener_.lock_configuration();
  const stretch_end end = run_stretch(chip_, in_, seen_, decoded_, most, requests_.focus_at_stake);
  if (end.last == step_end::time_out) {
    listener_.warn_watchdog();
    finish_time_out(chip_, in_, seen_);
  }
  after_refresh();
  return end;
}

void run_control::after_refresh() {
  if (requests_.focus_at_stake) listener_.guard_focus();
}

void run_control::step() {
  advance(1);
}

void run_control::run() {
  std::int64_t free_turns = 0;
  for (;;) {
    if (chip_.breakpts[chip_.cpu.pc] == 1 && !chip_.resumebp) {
      chip_.resumebp = true;
      listener_.click_ejecutar();
      return;
    }
    const stretch_end end = advance(std::max<std::int64_t>(free_turns, 1));
    if (end.last == step_end::time_out && chip_.running) listener_.rest();
    free_turns -= end.steps;
    // The window said how many turns it does not need; only then is it asked again.
    if (free_turns <= 0) free_turns = listener_.yield();
    if (!chip_.running) return;
  }
}

void run_control::regen() {
  estructura::regen(chip_, in_, seen_);
  after_refresh();
}

void run_control::show_reset() {
  regen();
  seen_.arrive(chip_.cpu.pc, chip_.devmodel.progmask);
}

void run_control::pin_click(int port, int bit, bool on) {
  estructura::pin_click(chip_, in_, seen_, port, bit, on);
  after_refresh();
}

}  // namespace estructura
