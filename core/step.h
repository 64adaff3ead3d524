// One instruction step, and the rules that every refresh of the views applies to the machine.
//
//   struct quiet final : pantalla {} view;
//   chip.progmem[chip.cpu.pc] = 0xC05;   // MOVLW 05
//   step(chip, view);                    // chip.cpu.w is 5
//
// Views are not worked out here: a step only says that they are due (core/pantalla.h).
#pragma once

#include "core/chipstate.h"
#include "core/pantalla.h"

namespace estructura {

/// Executes one word whose fetch has already advanced `pc`. Any word but `unprogrammed` is accepted; what is
/// no instruction costs one cycle and does nothing.
void execinst(chipstate& chip, int word);

/// One press of the step button.
void step(chipstate& chip, pantalla& view);

/// The refresh: cuts registers to the device, recomputes the watchdog's limit and the T0CKI period, lets
/// output pins follow their latches, and says that the views are due.
void regen(chipstate& chip, pantalla& view);

/// A pin box of port 0..2 took a new state: box and pin level, a refresh, and on the 12C50x the wake-up on
/// pin change.
void pin_click(chipstate& chip, pantalla& view, int port, int bit, bool on);

}  // namespace estructura
