// Continuous execution: a step, a turn for the window's events, and again, until a breakpoint or a stop.
//
//   chip.running = true;
//   ejecuta(chip, view);      // returns once chip.running is false, or at a breakpoint
#pragma once

#include "core/chipstate.h"
#include "core/pantalla.h"

namespace estructura {

/// The loop of the run button. At a breakpoint not just left it sets `resumebp`, performs the run button's
/// click (which clears `running`) and returns.
void ejecuta(chipstate& chip, pantalla& view);

}  // namespace estructura
