// The slow machine and the quick one side by side: both take the same action, then every field is compared.
//
//   pareja two(start);                        // both machines in the state `start`
//   two.act({accion::paso});
//   EXPECT_EQ(two.differences(), "");
//
// The window that both need is here reduced to what the machine reads of it: the two frequencies, the lock,
// the pin boxes, and a count of what it was asked to do.
#pragma once

#include <functional>
#include <string>

#include "core/chipstate.h"
#include "core/inputs.h"
#include "tests/modelo/modelo.h"
#include "ui/run_control.h"

namespace estructura::modelo {

enum class accion { paso, carrera, refresco, pin, por, mclr, wdt, pulso };

struct acto {
  accion what = accion::paso;
  int port = 0;  ///< of `pin`, as the two below
  int bit = 0;
  bool on = false;
};

[[nodiscard]] std::string name_of(const acto& one);

/// The window as the quick machine sees it.
class ventana_minima final : public run_listener {
 public:
  explicit ventana_minima(chipstate& chip) : runner(chip, in, *this) {}

  void lock_configuration() override;
  void clear_entry() override;
  void warn_watchdog() override { ++warnings; }
  void click_ejecutar() override;
  int cede() override { return on_cede(); }

  void type_frequencies(double frec_khz, double fr_hz);

  inputs in;
  run_control runner;
  double frec = 4000;
  double fr = 0;
  long locks = 0;
  long warnings = 0;
  long stops = 0;
  chipstate* running_chip = nullptr;
  std::function<int()> on_cede;
  std::function<void()> on_stop;
};

class pareja {
 public:
  pareja() = default;
  explicit pareja(const maquina& start);
  pareja(const pareja&) = delete;
  pareja& operator=(const pareja&) = delete;

  /// Both machines take over a state; `load_state` leaves the programs and breakpoints as they are.
  void load(const maquina& start);
  void load_state(const estado& start);
  void set_word(int address, int word);
  void set_breakpoint(int address, bool on);

  /// Both act; a fault ends the action of the one that meets it.
  void act(const acto& one);
  /// Runs something on the slow machine alone or the quick one alone, noting a fault.
  void slowly(const std::function<void()>& action);
  void quickly(const std::function<void()>& action);
  [[nodiscard]] bool faulted() const { return slow_fault || quick_fault; }

  /// Whether all that an action may change is the same in both, and the program as `program_of_both` left it.
  [[nodiscard]] bool same() const;
  /// Every differing field, wanted (slow) and got (quick); empty when there is none.
  [[nodiscard]] std::string differences() const;

  maquina slow;
  chipstate chip;
  ventana_minima window{chip};
  bool slow_fault = false;
  bool quick_fault = false;

 private:
  void act_slowly(const acto& one);
  void act_quickly(const acto& one);

  chipstate program_;  ///< program and breakpoints as given, to see that no action writes there
};

}  // namespace estructura::modelo
