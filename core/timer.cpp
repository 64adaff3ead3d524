#include "core/timer.h"

#include <algorithm>
#include <bit>

#include "common/checked.h"

namespace estructura {

namespace {

bool counts_pulses(const chipstate& chip) {
  return getbit(chip.cpu.option, option_t0cs) != 0;
}

void advance_tmr0(chipstate& chip, std::int64_t by) {
  chip.regs[reg_tmr0] = static_cast<std::int16_t>((chip.regs[reg_tmr0] + by) & 255);
}

// TMR0 advances when the count meets the ratio; whether it did.
bool carry_prescaler(chipstate& chip) {
  if (chip.prescount != prescratio(chip, 1)) return false;
  advance_tmr0(chip, 1);
  chip.prescount = 0;
  return true;
}

// So many counts of the prescaler, each followed by its comparison. A count from below meets the ratio again
// and again; one that has passed it never does.
void count_prescaler(chipstate& chip, std::int64_t counts) {
  // A power of two, on every path: nothing is divided while a program polls TMR0.
  const auto ratio = static_cast<unsigned>(prescratio(chip, 1));
  const std::int64_t counted = chip.prescount + counts;
  const bool meets = chip.prescount < static_cast<int>(ratio) && counted >= ratio;
  if (meets) advance_tmr0(chip, counted >> std::countr_zero(ratio));
  chip.prescount = checked16(static_cast<int>(meets ? counted & (ratio - 1) : counted));
}

// Edges of the pulse train in so many ticks. There is one whenever the count has reached the period, so one
// at each tick where the period is a cycle or less.
std::int64_t count_pulses(chipstate& chip, std::int64_t ticks) {
  const std::int64_t period = std::max<std::int64_t>(chip.tockiperiod, 1);
  const std::int64_t first = std::max<std::int64_t>(std::int64_t{chip.tockiperiod} - chip.tockicount, 1);
  if (ticks < first) {
    chip.tockicount = checked16(static_cast<int>(chip.tockicount + ticks));
    return 0;
  }
  const std::int64_t behind = ticks - first;
  chip.tockicount = checked16(static_cast<int>(behind % period));
  return 1 + behind / period;
}

}  // namespace

void tmrtick(chipstate& chip) {
  if (!counts_pulses(chip)) {
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
  carry_prescaler(chip);
}

std::int64_t ticks_foreseen(const chipstate& chip) {
  constexpr std::int64_t greatest = 32767;
  const int ratio = prescratio(chip, 1);
  if (!counts_pulses(chip)) return chip.prescount < ratio ? unforeseen_never : greatest - chip.prescount;
  if (chip.tockifreq == 0) return unforeseen_never;
  // A count that stands on the ratio, as a change of OPTION leaves it, is met without an edge.
  if (chip.prescount == ratio) return 0;
  const std::int64_t prescaler = chip.prescount < ratio ? unforeseen_never : greatest - chip.prescount;
  const bool resets_in_time = chip.tockiperiod <= greatest && chip.tockicount < greatest;
  const std::int64_t pulses = resets_in_time ? unforeseen_never : greatest - chip.tockicount;
  return std::min(prescaler, pulses);
}

void tmrticks(chipstate& chip, std::int64_t count) {
  if (!counts_pulses(chip))
    count_prescaler(chip, count);
  else if (chip.tockifreq != 0)
    count_prescaler(chip, count_pulses(chip, count));
}

bool tocki_pulse(chipstate& chip) {
  if (chip.sleeping) return false;
  chip.prescount = checked16(chip.prescount + 1);
  return carry_prescaler(chip);
}

bool wdtcal(chipstate& chip) {
  if (chip.sleeping || chip.wdtcount < chip.wdtlimit) return false;
  chip.wdtcount = 0;
  return true;
}

}  // namespace estructura
