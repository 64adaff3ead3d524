// The body of a step, in a header of its own because both the single step and the loop of a run are made of
// it: the loop keeps it inline. Nothing else includes this.
//
// The order inside an instruction is the chip's: operand read, flags, skip, result written last, so that an
// instruction whose destination is STATUS leaves the result there and not the flags.
#pragma once

#include "common/checked.h"
#include "core/chipstate.h"
#include "core/datos.h"
#include "core/instrucciones.h"
#include "core/pantalla.h"
#include "core/resets.h"
#include "core/timer.h"

namespace estructura::detail {

inline void count_cycle(chipstate& chip) {
  add32(chip.cycles, 1);
  add32(chip.wdtcount, 1);
}

// The second cycle of a skip or a jump: the timer sees it too.
inline void extra_cycle(chipstate& chip) {
  count_cycle(chip);
  tmrtick(chip);
}

inline void set_pcl(chipstate& chip) {
  chip.regs[reg_pcl] = static_cast<std::int16_t>(chip.cpu.pc & 255);
}

inline void set_flags(chipstate& chip, int mask, int bits) {
  chip.regs[reg_status] = static_cast<std::int16_t>((chip.regs[reg_status] & (255 - mask)) | bits);
}

constexpr int bit_c = 1 << status_c;
constexpr int bit_dc = 1 << status_dc;
constexpr int bit_z = 1 << status_z;

inline void set_z(chipstate& chip, int result) {
  set_flags(chip, bit_z, result == 0 ? bit_z : 0);
}

inline void skip(chipstate& chip) {
  // The wrap is at 2048 on every device: a smaller one is left one past its memory for a step.
  chip.cpu.pc = static_cast<std::int16_t>(chip.cpu.pc + 1);
  extra_cycle(chip);
  if (chip.cpu.pc == program_words) chip.cpu.pc = 0;
  set_pcl(chip);
}

struct operands {
  int f;  // file address, bits 4..0
  int d;  // destination, bit 5
  int b;  // bit number, bits 7..5
  int k;  // literal, bits 7..0
  constexpr explicit operands(int word)
      : f(word & 31), d((word >> 5) & 1), b((word >> 5) & 7), k(word & 255) {}
};

inline void logic_to_file(chipstate& chip, const operands& o, int result) {
  set_z(chip, result);
  writereg(chip, o.f, o.d, result);
}

inline void logic_to_w(chipstate& chip, int result) {
  set_z(chip, result);
  chip.cpu.w = static_cast<std::int16_t>(result);
}

inline void subwf(chipstate& chip, const operands& o) {
  const int file = readreg(chip, o.f);
  const int w = chip.cpu.w;
  int result = file - w;
  int flags = (file & 15) - (w & 15) >= 0 ? bit_dc : 0;
  if (result < 0)
    result += 256;
  else
    flags |= bit_c;
  if (result == 0) flags |= bit_z;
  set_flags(chip, bit_c | bit_dc | bit_z, flags);
  writereg(chip, o.f, o.d, result);
}

inline void addwf(chipstate& chip, const operands& o) {
  const int file = readreg(chip, o.f);
  const int w = chip.cpu.w;
  int result = w + file;
  int flags = (w & 15) + (file & 15) >= 16 ? bit_dc : 0;
  if (result > 255) {
    result -= 256;
    flags |= bit_c;
  }
  if (result == 0) flags |= bit_z;
  set_flags(chip, bit_c | bit_dc | bit_z, flags);
  writereg(chip, o.f, o.d, result);
}

inline void count_and_skip(chipstate& chip, const operands& o, int by) {
  const int result = (readreg(chip, o.f) + by) & 255;
  if (result == 0) skip(chip);
  writereg(chip, o.f, o.d, result);
}

inline void rrf(chipstate& chip, const operands& o) {
  const int file = readreg(chip, o.f);
  const int result = getbit(chip.regs[reg_status], status_c) * 128 + file / 2;
  set_flags(chip, bit_c, file & 1);
  writereg(chip, o.f, o.d, result);
}

inline void rlf(chipstate& chip, const operands& o) {
  const int shifted = readreg(chip, o.f) * 2 + getbit(chip.regs[reg_status], status_c);
  set_flags(chip, bit_c, shifted > 255 ? bit_c : 0);
  writereg(chip, o.f, o.d, shifted & 255);
}

inline void jump(chipstate& chip, int target) {
  extra_cycle(chip);
  chip.cpu.pc = static_cast<std::int16_t>(pagebits(chip) + target);
  set_pcl(chip);
}

inline void call(chipstate& chip, int target) {
  chip.stack[1] = chip.stack[0];
  chip.stack[0] = chip.cpu.pc;
  extra_cycle(chip);
  // PCL keeps the return address until the next fetch.
  set_pcl(chip);
  chip.cpu.pc = static_cast<std::int16_t>(pagebits(chip) + target);
}

inline void retlw(chipstate& chip, int k) {
  chip.cpu.pc = chip.stack[0];
  extra_cycle(chip);
  set_pcl(chip);
  chip.stack[0] = chip.stack[1];
  chip.cpu.w = static_cast<std::int16_t>(k);
}

inline void sleep(chipstate& chip) {
  chip.pdlatch = 0;
  chip.tolatch = 1;
  set_flags(chip, (1 << status_pd) | (1 << status_to), 1 << status_to);
  chip.sleeping = true;
  chip.wdtcount = 0;
}

inline void tris(chipstate& chip, int port) {
  std::int16_t& direction = port == reg_5 ? chip.cpu.trisa : port == reg_6 ? chip.cpu.trisb : chip.cpu.trisc;
  direction = chip.cpu.w;
}

inline void execinst(chipstate& chip, int word) {
  constexpr std::int32_t cycles_modulus = 1'000'000'000;
  count_cycle(chip);
  const operands o(word);
  // Memory may hold more than 12 bits where a person stored them; such words do nothing either.
  const auto index = static_cast<std::size_t>(word);
  const op code = index < op_index.size() ? op_index[index] : op::nothing;
  switch (code) {
    case op::nothing:
    case op::nop: break;
    case op::option: chip.cpu.option = chip.cpu.w; break;
    case op::sleep: sleep(chip); break;
    case op::clrwdt:
      chip.tolatch = 1;
      chip.wdtcount = 0;
      break;
    case op::tris: tris(chip, word & 7); break;
    case op::movwf: writereg(chip, o.f, 1, chip.cpu.w); break;
    case op::clrw: chip.cpu.w = 0; break;
    case op::clrf: writereg(chip, o.f, 1, 0); break;
    case op::subwf: subwf(chip, o); break;
    case op::decf: logic_to_file(chip, o, (readreg(chip, o.f) - 1) & 255); break;
    case op::iorwf: logic_to_file(chip, o, readreg(chip, o.f) | chip.cpu.w); break;
    case op::andwf: logic_to_file(chip, o, readreg(chip, o.f) & chip.cpu.w); break;
    case op::xorwf: logic_to_file(chip, o, readreg(chip, o.f) ^ chip.cpu.w); break;
    case op::addwf: addwf(chip, o); break;
    case op::movf: logic_to_file(chip, o, readreg(chip, o.f)); break;
    case op::comf: logic_to_file(chip, o, ~readreg(chip, o.f) & 255); break;
    case op::incf: logic_to_file(chip, o, (readreg(chip, o.f) + 1) & 255); break;
    case op::decfsz: count_and_skip(chip, o, -1); break;
    case op::rrf: rrf(chip, o); break;
    case op::rlf: rlf(chip, o); break;
    case op::swapf: {
      const int file = readreg(chip, o.f);
      writereg(chip, o.f, o.d, (file & 15) * 16 + (file & 240) / 16);
      break;
    }
    case op::incfsz: count_and_skip(chip, o, 1); break;
    case op::bcf: writereg(chip, o.f, 1, setbit(readreg(chip, o.f), o.b, 0)); break;
    case op::bsf: writereg(chip, o.f, 1, setbit(readreg(chip, o.f), o.b, 1)); break;
    case op::btfsc:
      if (getbit(readreg(chip, o.f), o.b) == 0) skip(chip);
      break;
    case op::btfss:
      if (getbit(readreg(chip, o.f), o.b) == 1) skip(chip);
      break;
    case op::retlw: retlw(chip, o.k); break;
    case op::call: call(chip, o.k); break;
    case op::goto_: jump(chip, word & 511); break;
    case op::movlw: chip.cpu.w = static_cast<std::int16_t>(o.k); break;
    case op::iorlw: logic_to_w(chip, chip.cpu.w | o.k); break;
    case op::andlw: logic_to_w(chip, chip.cpu.w & o.k); break;
    case op::xorlw: logic_to_w(chip, chip.cpu.w ^ o.k); break;
  }
  if (chip.cycles >= cycles_modulus) [[unlikely]]
    chip.cycles -= cycles_modulus;
}

void wake_on_pin_change(chipstate& chip, pantalla& view);

inline std::int32_t within32(std::int64_t value) {
  if (value == surroundings::too_large) [[unlikely]]
    throw_fallo("32-bit overflow");
  return static_cast<std::int32_t>(value);
}

// Pins of one port whose box is an output that does not show its latch yet: box and pin follow. The bits
// changed.
inline int follow_latch(std::uint8_t& box, std::int16_t& pins, int tris, int latch, int width_mask) {
  const int changed = ~tris & (box ^ latch) & width_mask;
  if (changed != 0) [[unlikely]] {
    box = static_cast<std::uint8_t>(box ^ changed);
    pins = static_cast<std::int16_t>((pins & ~changed) | (latch & changed));
  }
  return changed;
}

inline void regen(chipstate& chip, pantalla& view) {
  const surroundings& env = view.env;
  normregs(chip);
  const int option = chip.cpu.option;
  if (env.watchdog_on) {
    const int ps = getbit(option, option_psa) != 0 ? option & 7 : 0;
    chip.wdtlimit = within32(env.wdt_limits[ps]);
  }
  if (getbit(option, option_t0cs) != 0 && env.fr_set) chip.tockiperiod = within32(env.tocki_period);

  if (chip.devmodel.is16c5x) follow_latch(view.env.boxes[0], chip.pina, chip.cpu.trisa, chip.regs[reg_5], 15);
  const int changed_b = follow_latch(view.env.boxes[1], chip.pinb, chip.cpu.trisb, chip.regs[reg_6], 255);
  if (chip.devmodel.hasportc)
    follow_latch(view.env.boxes[2], chip.pinc, chip.cpu.trisc, chip.regs[reg_7], 255);
  view.due.views = true;
  if (view.env.focus_at_stake) [[unlikely]]
    view.guard_focus();
  // A pin that its latch moves counts as clicked, so an output can wake the chip too.
  constexpr int waking_pins = 0b1011;
  if ((changed_b & waking_pins) != 0) [[unlikely]]
    wake_on_pin_change(chip, view);
}

inline void step(chipstate& chip, pantalla& view) {
  if (view.env.entry_shown) view.clear_entry();
  chip.resumebp = false;
  if (view.env.config_open) view.lock_configuration();
  if (chip.sleeping) return;
  if (chip.firststep) [[unlikely]] {
    chip.firststep = false;
    count_cycle(chip);
  }
  view.erase_marker();
  const int word = chip.progmem[chip.cpu.pc];
  chip.cpu.pc = static_cast<std::int16_t>((chip.cpu.pc + 1) & chip.devmodel.progmask);
  set_pcl(chip);
  const auto show_pc = [&] {
    view.choose_program_row(chip.cpu.pc, chip.devmodel.progmask);
    view.draw_marker(chip.cpu.pc);
  };
  if (word == unprogrammed) [[unlikely]] {
    show_pc();
    detail::regen(chip, view);
    return;
  }
  constexpr int most_cycles = 2;
  if (view.env.watchdog_on && chip.wdtcount >= std::int64_t{chip.wdtlimit} - most_cycles) [[unlikely]]
    view.foresee_warning();
  detail::execinst(chip, word);
  if (view.env.watchdog_on) wdtcal(chip, view);
  tmrtick(chip);
  detail::regen(chip, view);
  show_pc();
}

}  // namespace estructura::detail
