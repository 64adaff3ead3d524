#include "core/step.h"

#include "core/step_inline.h"

namespace estructura {

void execinst(chipstate& chip, int word) {
  detail::execinst(chip, word);
}
void step(chipstate& chip, pantalla& view) {
  detail::step(chip, view);
}
void regen(chipstate& chip, pantalla& view) {
  detail::regen(chip, view);
}

void pin_click(chipstate& chip, pantalla& view, int port, int bit, bool on) {
  std::uint8_t& boxes = view.env.boxes[port];
  boxes = static_cast<std::uint8_t>(setbit(boxes, bit, on ? 1 : 0));
  std::int16_t& pins = port == 0 ? chip.pina : port == 1 ? chip.pinb : chip.pinc;
  pins = static_cast<std::int16_t>(setbit(pins, bit, on ? 1 : 0));
  detail::regen(chip, view);
  const bool waking_pin = port == 1 && (bit == 0 || bit == 1 || bit == 3);
  if (waking_pin) detail::wake_on_pin_change(chip, view);
}

namespace detail {

void wake_on_pin_change(chipstate& chip, pantalla& view) {
  const bool armed = getbit(chip.cpu.option, option_gpwu) == 0;
  if (chip.devmodel.is16c5x || !chip.sleeping || !armed) return;
  resetchip(chip, chip.pdlatch, chip.tolatch, 1);
  detail::regen(chip, view);
  view.choose_program_row(chip.cpu.pc, chip.devmodel.progmask);
}

}  // namespace detail

}  // namespace estructura
