// A second machine, slow and plain, to hold the quick one of core/ against. Every rule of the chip is one
// small function that reads as the rule is told; of core/ it takes the columns of the device catalogue and
// nothing else, no function and no type.
//
//   second_model::model_machine m;
//   m.device = 6;                     // row of the catalogue: 12C508
//   m.progmem[511] = 0xC05;
//   second_model::resetchip(m, 1, 1, 0);
//   second_model::step(m);                  // m.w is 5
//
// Every number is a `long`, so that a width is never kept by accident: what must fit 16 or 32 bits is checked
// where it grows. Left out on purpose: texts, and all that only shows.
#pragma once

#include <array>
#include <stdexcept>

#include "core/devices.h"

namespace estructura::second_model {

/// A counter or an index has left its range; the machine stays as it was at that moment.
struct overflow : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// All that an action may change. A copy is cheap next to that of the program.
struct model_state {
  long device = default_device;  ///< row of `catalogue`

  std::array<long, 16> regs{};
  std::array<long, 64> bankregs{};
  long pc = 0;
  long w = 0;
  long option = 0;
  std::array<long, 3> tris{};
  std::array<long, 2> stack{};
  long pdlatch = 0;
  long tolatch = 0;
  long gpwuflatch = 0;
  long sleeping = 0;
  std::array<long, 3> pins{};
  long cycles = 0;
  long wdtcount = 0;
  long wdtlimit = 0;
  long prescount = 0;
  long tockicount = 0;
  long tockiperiod = 0;
  long tockifreq = 0;
  long firststep = 0;
  long running = 0;
  long resumebp = 0;

  // What stands in the window's controls.
  double frec = 4000;    ///< kHz, as typed
  double fr = 0;         ///< Hz, as typed
  long config_open = 0;  ///< `WATCHDOG` is enabled
  long watchdog = 0;     ///< `WATCHDOG` is checked
  long entry_shown = 0;  ///< the instruction box or its code shows something
  std::array<long, 3> boxes{};

  // What the window owes to the eye, and how often it was called.
  long views = 0;
  long row = 0;
  long row_in_list = 0;
  long clicked = -1;
  long marker = 0;
  long marker_drawn = 0;
  long locks = 0;
  long warnings = 0;
  long stops = 0;
};

struct model_machine : model_state {
  std::array<int, 2048> progmem{};
  std::array<int, 2048> breakpts{};
};

inline constexpr int unprogrammed_word = 65535;

void step(model_machine& m);
void regen(model_machine& m);
void resetchip(model_machine& m, long pd, long to, long gpwuf);

/// One turn of the continuous run; false when it stopped at a breakpoint instead of stepping.
bool turn(model_machine& m);

void por_click(model_machine& m);
void mclr_click(model_machine& m);
void wdt_click(model_machine& m);
void tocki_click(model_machine& m);
/// Pin box of port 0..2, bit 0..7, takes a new state.
void pin_click(model_machine& m, int port, int bit, bool on);

}  // namespace estructura::second_model
