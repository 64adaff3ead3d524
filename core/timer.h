// Timer0 with its prescaler, the T0CKI input, and the watchdog. Everything counts in instruction cycles.
//
//   chip.cpu.option = 0x02;      // prescaler of TMR0, ratio 8
//   tmrtick(chip);               // eight of these advance TMR0 by one
//
// The prescaler compares for equality: a ratio lowered below the count stalls TMR0 until it is written or the
// chip is powered on; a count past 32767 is a fault.
#pragma once

#include "common/checked.h"
#include "core/chipstate.h"
#include "core/datos.h"
#include "core/pantalla.h"
#include "core/resets.h"

namespace estructura {

/// The prescaler's ratio as TMR0 (`which` not 0: 2..256, or 1) or the watchdog (`which` 0: 1..128) sees it.
constexpr int prescratio(const chipstate& chip, int which) {
  const int option = chip.cpu.option;
  const int ps = option & 7;
  const bool to_watchdog = getbit(option, option_psa) != 0;
  if (which != 0) return to_watchdog ? 1 : 2 << ps;
  return to_watchdog ? 1 << ps : 1;
}

namespace detail {

// TMR0 advances when the count meets the ratio; whether it did.
inline bool carry_prescaler(chipstate& chip) {
  if (chip.prescount != prescratio(chip, 1)) return false;
  chip.regs[reg_tmr0] = static_cast<std::int16_t>((chip.regs[reg_tmr0] + 1) & 255);
  chip.prescount = 0;
  return true;
}

}  // namespace detail

/// One instruction cycle for the prescaler and TMR0.
inline void tmrtick(chipstate& chip) {
  if (getbit(chip.cpu.option, option_t0cs) == 0) {
    chip.prescount = checked16(chip.prescount + 1);
  } else {
    if (chip.tockifreq == 0) return;
    if (!chip.sleeping) {
      chip.tockicount = checked16(chip.tockicount + 1);
      if (chip.tockicount >= chip.tockiperiod) {
        chip.tockicount = 0;
        chip.prescount = checked16(chip.prescount + 1);
      }
    }
  }
  detail::carry_prescaler(chip);
}

/// One edge on T0CKI made by hand; true when TMR0 advanced. A sleeping chip does not see it.
inline bool tocki_pulse(chipstate& chip) {
  if (chip.sleeping) return false;
  chip.prescount = checked16(chip.prescount + 1);
  return detail::carry_prescaler(chip);
}

/// The watchdog's time-out check after an executed instruction: a box, then a reset that shows /TO = 0.
inline void wdtcal(chipstate& chip, pantalla& view) {
  if (chip.sleeping || chip.wdtcount < chip.wdtlimit) [[likely]]
    return;
  chip.wdtcount = 0;
  view.warn_watchdog();
  resetchip(chip, chip.pdlatch, 0, chip.gpwuflatch);
}

}  // namespace estructura
