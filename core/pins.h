// How the pins of a port follow its latch.
//
//   follow_latch(in.pin_boxes[1], chip.pinb, chip.cpu.trisb, chip.regs[reg_6], 255);
#pragma once

#include <cstdint>

namespace estructura {

/// Pins of one port whose box is an output that does not show its latch yet: box and pin follow. `width_mask`
/// has a bit for each pin of the port. The bits that changed.
inline int follow_latch(std::uint8_t& box, std::int16_t& pins, int tris, int latch, int width_mask) {
  const int changed = ~tris & (box ^ latch) & width_mask;
  box = static_cast<std::uint8_t>(box ^ changed);
  pins = static_cast<std::int16_t>((pins & ~changed) | (latch & changed));
  return changed;
}

}  // namespace estructura
