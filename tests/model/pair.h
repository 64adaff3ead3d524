// The slow machine and the quick one side by side: both take the same action, then every field is compared.
//
//   machine_pair two(start);                        // both machines in the state `start`
//   two.act({action_kind::step});
//   EXPECT_EQ(two.differences(), "");
//
// The window that both need is here reduced to what the machine reads of it: the two frequencies, the lock,
// the pin boxes, and a count of what it was asked to do.
#pragma once

#include <functional>
#include <string>

#include "core/chipstate.h"
#include "core/inputs.h"
#include "tests/model/model.h"
#include "ui/run_control.h"

namespace estructura::second_model {

enum class action_kind { step, run, refresh, pin, por, mclr, wdt, pulse };

struct machine_action {
  action_kind what = action_kind::step;
  int port = 0;  ///< of `pin`, as the two below
  int bit = 0;
  bool on = false;
};

[[nodiscard]] std::string name_of(const machine_action& one);

/// The window as the quick machine sees it.
class minimal_window final : public run_listener {
 public:
  explicit minimal_window(chipstate& chip) : runner(chip, in, *this) {}

  void lock_configuration() override;
  void clear_entry() override;
  void warn_watchdog() override { ++warnings; }
  void click_ejecutar() override;
  int yield() override { return on_yield(); }

  void type_frequencies(double frec_khz, double fr_hz);

  inputs in;
  run_control runner;
  double frec = 4000;
  double fr = 0;
  long locks = 0;
  long warnings = 0;
  long stops = 0;
  chipstate* running_chip = nullptr;
  std::function<int()> on_yield;
  std::function<void()> on_stop;
};

class machine_pair {
 public:
  machine_pair() = default;
  explicit machine_pair(const model_machine& start);
  machine_pair(const machine_pair&) = delete;
  machine_pair& operator=(const machine_pair&) = delete;

  /// Both machines take over a state; `load_state` leaves the programs and breakpoints as they are.
  void load(const model_machine& start);
  void load_state(const model_state& start);
  void set_word(int address, int word);
  void set_breakpoint(int address, bool on);

  /// Both act; a fault ends the action of the one that meets it.
  void act(const machine_action& one);
  /// Runs something on the slow machine alone or the quick one alone, noting a fault.
  void slowly(const std::function<void()>& action);
  void quickly(const std::function<void()>& action);
  [[nodiscard]] bool faulted() const { return slow_fault || quick_fault; }

  /// Whether all that an action may change is the same in both, and the program as it was given.
  [[nodiscard]] bool same() const;
  /// Every differing field, wanted (slow) and got (quick); empty when there is none.
  [[nodiscard]] std::string differences() const;

  model_machine slow;
  chipstate chip;
  minimal_window window{chip};
  bool slow_fault = false;
  bool quick_fault = false;

 private:
  void act_slowly(const machine_action& one);
  void act_quickly(const machine_action& one);

  chipstate program_;  ///< program and breakpoints as given, to see that no action writes there
};

}  // namespace estructura::second_model
