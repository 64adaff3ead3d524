// Running the machine: the step button, the loop of the run button, and what both do to the window around
// the machine, without knowing the window.
//
//   struct quiet final : run_listener {} nobody;
//   run_control runner(chip, in, nobody);
//   runner.step();
//   runner.seen().marker             // address of the map's marker
//
//   chip.running = true;
//   runner.run();                    // returns once chip.running is false, or at a breakpoint
//
// What the controls stand at is said here in `requests`, by the panels that own them (the instruction box,
// the watchdog's) and by the window for the focus. What there is to show is read here in `seen`, by the same.
#pragma once

#include <cstdint>

#include "core/chipstate.h"
#include "core/decoded_program.h"
#include "core/inputs.h"
#include "core/step.h"

namespace estructura {

/// What running asks of the window. All of it is rare.
class run_listener {
 public:
  /// The first step since the configuration was unlocked.
  virtual void lock_configuration() {}
  /// Empties the instruction box and its code label; called only while the entry is shown.
  virtual void clear_entry() {}
  /// The step that is about to begin may run the watchdog out: its box shows what there is to see now and
  /// nothing of that step.
  virtual void show_whole_step() {}
  /// The watchdog has run out: a box with an OK button.
  virtual void warn_watchdog() {}
  /// The views were refreshed while the focus is at stake: a control that they close hands the focus on.
  virtual void guard_focus() {}
  /// The run button's click, performed by a run that meets a breakpoint.
  virtual void click_ejecutar() {}
  /// A run stands between two steps after a box of the watchdog, which may come back in a few milliseconds:
  /// the person gets a moment. No turn that `yield` has granted.
  virtual void rest() {}
  /// Handles pending events; how many further steps may pass before it wants to be asked again, at least 1.
  virtual int yield() { return 1 << 20; }

 protected:
  run_listener() = default;
  ~run_listener() = default;
  run_listener(const run_listener&) = default;
  run_listener& operator=(const run_listener&) = default;
};

/// What the window and its panels want to be asked for.
struct run_requests {
  bool configuration_open = true;  ///< the next step locks the configuration
  bool entry_shown = false;        ///< the instruction box or its code label shows something to clear
  bool focus_at_stake = false;     ///< a refresh may close the control that has the focus
};

class run_control {
 public:
  run_control(chipstate& chip, inputs& in, run_listener& listener)
      : chip_(chip), in_(in), listener_(listener) {}

  /// The step button.
  void step();
  /// The loop of the run button: a step, a turn for the window's events, and again. At a breakpoint not just
  /// left it sets `resumebp`, performs the run button's click (which clears `running`) and returns.
  void run();
  /// The refresh that follows every change of the machine.
  void regen();
  /// What follows a reset: a refresh, and the program list at the reset vector.
  void show_reset();
  /// A pin box of port 0..2 took a new state.
  void pin_click(int port, int bit, bool on);

  [[nodiscard]] run_requests& requests() { return requests_; }
  [[nodiscard]] const run_requests& requests() const { return requests_; }
  /// What the window has to show. Whoever has shown something clears it.
  [[nodiscard]] trail& seen() { return seen_; }
  [[nodiscard]] const trail& seen() const { return seen_; }

 private:
  stretch_end advance(std::int64_t most);
  void after_refresh();

  chipstate& chip_;
  inputs& in_;
  run_listener& listener_;
  run_requests requests_;
  trail seen_;
  decoded_program decoded_;
};

}  // namespace estructura
