#include "core/step.h"

#include "common/checked.h"
#include "core/each_cycle.h"
#include "core/pins.h"
#include "core/resets.h"
#include "core/timer.h"

namespace estructura {

namespace {

std::int32_t within32(std::int64_t value) {
  if (value == inputs::too_large) throw_fault("32-bit overflow");
  return static_cast<std::int32_t>(value);
}

void wake_on_pin_change(chipstate& chip, inputs& in, trail& seen) {
  const bool armed = getbit(chip.cpu.option, option_gpwu) == 0;
  if (!chip.sleeping || !armed) return;
  resetchip(chip, chip.pdlatch, chip.tolatch, 1);
  regen(chip, in, seen);
  seen.arrive(chip.cpu.pc, chip.devmodel.progmask);
}

// What every step that executed an instruction ends with.
void finish(chipstate& chip, inputs& in, trail& seen) {
  tmrtick(chip);
  regen(chip, in, seen);
  seen.arrive(chip.cpu.pc, chip.devmodel.progmask);
  seen.mark(chip.cpu.pc);
}

int fetch(chipstate& chip) {
  const int word = chip.progmem[chip.cpu.pc];
  chip.cpu.pc = static_cast<std::int16_t>((chip.cpu.pc + 1) & chip.devmodel.progmask);
  chip.regs[reg_pcl] = static_cast<std::int16_t>(chip.cpu.pc & 255);
  return word;
}

}  // namespace

void execinst(chipstate& chip, const inputs& in, int word) {
  each_cycle(chip, in).execinst(word);
}

void regen(chipstate& chip, inputs& in, trail& seen) {
  normregs(chip);
  if (in.watchdog_on) chip.wdtlimit = within32(in.wdt_limits[watchdog_divisor(chip)]);
  if (getbit(chip.cpu.option, option_t0cs) != 0 && in.pulse_train)
    chip.tockiperiod = within32(in.tocki_period);

  const device& model = chip.devmodel;
  auto& boxes = in.pin_boxes;
  follow_latch(boxes[0], chip.pina, chip.cpu.trisa, chip.regs[reg_5], model.port_a_pins);
  const int changed_b = follow_latch(boxes[1], chip.pinb, chip.cpu.trisb, chip.regs[reg_6], 255);
  if (model.hasportc) follow_latch(boxes[2], chip.pinc, chip.cpu.trisc, chip.regs[reg_7], 255);
  seen.refreshed = true;
  // A pin that its latch moves counts as clicked, so an output can wake the chip too.
  if ((changed_b & model.waking_pins) != 0) wake_on_pin_change(chip, in, seen);
}

step_end step(chipstate& chip, inputs& in, trail& seen) {
  chip.resumebp = false;
  if (chip.sleeping) return step_end::whole;
  if (chip.firststep) {
    chip.firststep = false;
    each_cycle(chip, in).count_cycle();
  }
  seen.marked = false;
  const int word = fetch(chip);
  if (word == unprogrammed) {
    seen.arrive(chip.cpu.pc, chip.devmodel.progmask);
    seen.mark(chip.cpu.pc);
    regen(chip, in, seen);
    return step_end::whole;
  }
  execinst(chip, in, word);
  if (in.watchdog_on && wdtcal(chip)) return step_end::time_out;
  finish(chip, in, seen);
  return step_end::whole;
}

void finish_time_out(chipstate& chip, inputs& in, trail& seen) {
  resetchip(chip, chip.pdlatch, 0, chip.gpwuflatch);
  regen(chip, in, seen);
  seen.arrive(chip.cpu.pc, chip.devmodel.progmask);
  finish(chip, in, seen);
}

bool time_out_is_near(const chipstate& chip, const inputs& in) {
  // After a reset a cycle of its own, then the instruction's, that of a skip, and that of a write to PCL.
  constexpr int most_cycles = 4;
  return in.watchdog_on && chip.wdtcount >= std::int64_t{chip.wdtlimit} - most_cycles;
}

void pin_click(chipstate& chip, inputs& in, trail& seen, int port, int bit, bool on) {
  std::uint8_t& boxes = in.pin_boxes[port];
  boxes = static_cast<std::uint8_t>(setbit(boxes, bit, on ? 1 : 0));
  std::int16_t& pins = port == 0 ? chip.pina : port == 1 ? chip.pinb : chip.pinc;
  pins = static_cast<std::int16_t>(setbit(pins, bit, on ? 1 : 0));
  regen(chip, in, seen);
  if (port == 1 && getbit(chip.devmodel.waking_pins, bit) != 0) wake_on_pin_change(chip, in, seen);
}

}  // namespace estructura
