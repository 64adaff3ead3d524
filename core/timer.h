// Timer0 with its prescaler, the T0CKI input, and the watchdog's count. Everything counts in instruction
// cycles.
//
//   chip.cpu.option = 0x02;      // prescaler of TMR0, ratio 8
//   tmrtick(chip);               // eight of these advance TMR0 by one
//   tmrticks(chip, 8);           // so does this
//
// The prescaler compares for equality: a ratio lowered below the count stalls TMR0 until it is written or the
// chip is powered on; a count past 32767 is a fault.
#pragma once

#include <cstdint>

#include "core/chipstate.h"
#include "core/data_memory.h"

namespace estructura {

/// The prescaler's ratio as TMR0 (`which` not 0: 2..256, or 1) or the watchdog (`which` 0: 1..128) sees it.
constexpr int prescratio(const chipstate& chip, int which) {
  const int option = chip.cpu.option;
  const int ps = option & 7;
  const bool to_watchdog = getbit(option, option_psa) != 0;
  if (which != 0) return to_watchdog ? 1 : 2 << ps;
  return to_watchdog ? 1 << ps : 1;
}

/// The watchdog's divisor as a power of two, 0..7.
constexpr int watchdog_divisor(const chipstate& chip) {
  return getbit(chip.cpu.option, option_psa) != 0 ? chip.cpu.option & 7 : 0;
}

/// One instruction cycle for the prescaler and TMR0.
void tmrtick(chipstate& chip);

/// How many ticks may come before one that `tmrticks` does not foresee: a fault, or the edge of a stall.
/// `unforeseen_never` when there is none in sight.
std::int64_t ticks_foreseen(const chipstate& chip);
inline constexpr std::int64_t unforeseen_never = std::int64_t{1} << 62;

/// So many ticks of a waking chip at once, at most `ticks_foreseen`; TMR0 and its counts end as they do after
/// as many calls of `tmrtick`.
void tmrticks(chipstate& chip, std::int64_t count);

/// One edge on T0CKI made by hand; true when TMR0 advanced. A sleeping chip does not see it.
bool tocki_pulse(chipstate& chip);

/// The watchdog's check after an executed instruction; true when it has run out, with its count back at 0. A
/// reset follows.
[[nodiscard]] bool wdtcal(chipstate& chip);

}  // namespace estructura
