// The resets. All share one sequence; they differ in what they latch and in what they clear before.
//
//   resetchip(chip, 1, 1, 0);    // /PD, /TO, GPWUF
//   power_on(chip);              // clears the registers too
//
// Whoever calls these refreshes the views and shows `pc` afterwards.
#pragma once

#include "core/chipstate.h"

namespace estructura {

/// The sequence of every reset: `pc` on the reset vector, TRIS and OPTION at their reset values, an empty
/// stack, the cycle counter at 0. W, the general registers, the latches of the ports and the prescaler stay.
/// The page bits are cleared only when both `pd` and `to` are 1.
void resetchip(chipstate& chip, int pd, int to, int gpwuf);

/// Power-on: clears all registers and the prescaler count (a stalled TMR0 counts again), then resets.
void power_on(chipstate& chip);

/// The MCLR pin, and the watchdog button: both wake the chip.
void mclr_reset(chipstate& chip);
void wdt_reset(chipstate& chip);

}  // namespace estructura
