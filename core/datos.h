// The data memory as the chip sees it: banks, indirect access, ports, and the limits of the device.
//
//   chip.regs[reg_fsr] = 0x35;
//   readreg(chip, 0)            // INDF: bank 1, address 0x15 on a 16C57
//   writereg(chip, 0x1F, 1, 7)  // the same bank, address 0x1F
//
// readreg reads as the chip reads, with effects (a port read stores the pins into the latch). Whoever only
// looks takes regs and bankregs as they are.
#pragma once

#include <cstdint>

#include "common/checked.h"
#include "core/chipstate.h"

namespace estructura {

/// Data bank 0..3 that FSR points into, as far as the device has banks.
inline int fsrbank(const chipstate& chip) {
  return (chip.regs[reg_fsr] & chip.devmodel.datamask) / 32;
}

/// Page bits of STATUS as a program address offset: bit 5 becomes address bit 9, bit 6 address bit 10, each
/// only where the device's program memory reaches that far.
inline int pagebits(const chipstate& chip) {
  return (((chip.devmodel.progmask / 16) & chip.regs[reg_status] & 96) >> 5) << 9;
}

/// `value` with bit `n` set, or cleared and then limited to 8 bits.
constexpr int setbit(int value, int n, int on) {
  return on != 0 ? value | (1 << n) : value & (255 - (1 << n)) & 255;
}

/// 1 when bit `n` of `value` is set, else 0.
constexpr int getbit(int value, int n) {
  return (value >> n) & 1;
}

namespace detail {

inline std::int16_t& banked(chipstate& chip, int address) {
  return chip.bankregs[fsrbank(chip) * 16 + address - 16];
}

// Addresses 1..15 except FSR, whose two forms of reading differ.
inline int read_low(chipstate& chip, int f) {
  switch (f) {
    case reg_5:
      if (chip.devmodel.is16c5x) chip.regs[reg_5] = chip.pina;
      break;
    case reg_6: chip.regs[reg_6] = chip.pinb; break;
    case reg_7:
      if (chip.devmodel.hasportc) chip.regs[reg_7] = chip.pinc;
      break;
    default: break;
  }
  return chip.regs[f];
}

inline void write_low(chipstate& chip, int f, int value) {
  chip.regs[f] = static_cast<std::int16_t>(value);
  switch (f) {
    case reg_tmr0: chip.prescount = 0; break;
    case reg_pcl:
      // A computed jump costs a second cycle, but the timer does not see it.
      chip.cpu.pc = static_cast<std::int16_t>(pagebits(chip) + value);
      add32(chip.cycles, 1);
      add32(chip.wdtcount, 1);
      break;
    case reg_fsr: chip.regs[reg_fsr] = static_cast<std::int16_t>(value & 127); break;
    default: break;
  }
}

}  // namespace detail

/// The value 0..255 of data address 0..31, read as the chip reads.
inline int readreg(chipstate& chip, int f) {
  if (f >= 16) return detail::banked(chip, f);
  if (f == reg_fsr) return chip.regs[reg_fsr] | (~chip.devmodel.datamask & 255);
  if (f != reg_indf) return detail::read_low(chip, f);
  const int a = chip.regs[reg_fsr] & 31;
  if (a >= 16) return detail::banked(chip, a);
  if (a == reg_indf) return 0;
  if (a == reg_fsr) return chip.regs[reg_fsr] | 128;
  return detail::read_low(chip, a);
}

/// Writes 0..255 to W (`tofile` 0) or to data address 0..31, with the effects that the address has.
inline void writereg(chipstate& chip, int f, int tofile, int value) {
  if (tofile == 0) {
    chip.cpu.w = static_cast<std::int16_t>(value);
    return;
  }
  const int a = f == reg_indf ? chip.regs[reg_fsr] & 31 : f;
  if (a >= 16)
    detail::banked(chip, a) = static_cast<std::int16_t>(value);
  else if (a != reg_indf)
    detail::write_low(chip, a, value);
}

/// Cuts the registers to the device's implemented bits and puts the read-only STATUS bits back.
inline void normregs(chipstate& chip) {
  const device& model = chip.devmodel;
  const auto cut = [](std::int16_t& value, int mask) { value = static_cast<std::int16_t>(value & mask); };
  cut(chip.regs[reg_fsr], model.datamask);
  cut(chip.regs[reg_5], model.mask5);
  cut(chip.regs[reg_6], model.mask6);
  cut(chip.cpu.option, model.optmask);
  cut(chip.cpu.trisa, model.mask5);
  cut(chip.cpu.trisb, model.mask6);
  int status = setbit(chip.regs[reg_status], status_pd, chip.pdlatch);
  status = setbit(status, status_to, chip.tolatch);
  if (!model.is16c5x) status &= 191;
  chip.regs[reg_status] = static_cast<std::int16_t>(status);
}

}  // namespace estructura
