// One instruction step, many of them at once, and the rules that every refresh of the views applies to the
// machine.
//
//   inputs in;
//   trail seen;
//   chip.progmem[chip.cpu.pc] = 0xC05;               // MOVLW 05
//   if (step(chip, in, seen) == step_end::time_out)  // chip.cpu.w is 5
//     finish_time_out(chip, in, seen);               // once the person has been told
//
//   const stretch_end many = run_stretch(chip, in, seen, decoded, 1000);
//
// Nothing is shown from here and nobody is asked: the machine and its inputs go in, and what happened comes
// out. A value that leaves its width is a `machine_fault`, with machine and trail as they stood at that
// moment.
#pragma once

#include <cstdint>

#include "core/chipstate.h"
#include "core/decoded_program.h"
#include "core/inputs.h"

namespace estructura {

/// Where the program has been since somebody last looked, for whoever shows it. A step adds to it; the one
/// who looks clears it.
struct trail {
  bool refreshed = false;   ///< registers may have changed
  bool arrived = false;     ///< a step ended at an address
  bool inside = false;      ///< the last such address is one of the device's memory
  std::int16_t inner = -1;  ///< the last one inside; -1 for none
  bool moved = false;       ///< before it there was another one inside
  std::int16_t marker = 0;  ///< where the marker of the next instruction was last put
  bool marked = false;      ///< and whether it is there; a step takes it away with its fetch

  bool operator==(const trail&) const = default;

  /// A step ends at `address` of a device whose highest one is `progmask`.
  void arrive(int address, int progmask) {
    arrived = true;
    inside = address <= progmask;
    if (!inside) return;
    moved |= inner >= 0 && inner != address;
    inner = static_cast<std::int16_t>(address);
  }
  void mark(int address) {
    marker = static_cast<std::int16_t>(address);
    marked = true;
  }
};

/// How a step ended: whole, or within it, where the watchdog has run out and its reset is still to come.
enum class step_end : std::uint8_t { whole, time_out };

/// One press of the step button, or one turn of the run.
[[nodiscard]] step_end step(chipstate& chip, inputs& in, trail& seen);

/// What is left of a step in which the watchdog ran out: the reset, and the end that every step has.
void finish_time_out(chipstate& chip, inputs& in, trail& seen);

/// How a stretch of steps ended, and how many it had, the last one included.
struct stretch_end {
  step_end last = step_end::whole;
  std::int64_t steps = 0;
};

/// At least one step and at most `most`, with the same end as so many calls of `step`. It stops in front of a
/// breakpoint (but for the first step), of a step in which the watchdog may run out, and in sleep; and, where
/// `stop_when_redirected`, behind one that wrote to TRIS or OPTION.
[[nodiscard]] stretch_end run_stretch(chipstate& chip, inputs& in, trail& seen, decoded_program& decoded,
                                      std::int64_t most, bool stop_when_redirected = false);

/// Whether the watchdog may run out in the next step, which takes four cycles at the most.
[[nodiscard]] bool time_out_is_near(const chipstate& chip, const inputs& in);

/// The refresh: cuts registers to the device, recomputes the watchdog's limit and the T0CKI period, and lets
/// output pins follow their latches.
void regen(chipstate& chip, inputs& in, trail& seen);

/// A pin box of port 0..2 took a new state: box and pin level, a refresh, and on families that have it
/// the wake-up on pin change.
void pin_click(chipstate& chip, inputs& in, trail& seen, int port, int bit, bool on);

/// Executes one word whose fetch has already advanced `pc`, cycle by cycle. Any word but `unprogrammed` is
/// accepted; what is no instruction costs one cycle and does nothing.
void execinst(chipstate& chip, const inputs& in, int word);

}  // namespace estructura
