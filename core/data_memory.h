// The shape of the data memory: which bank FSR points into, single bits, and the limits of the device.
//
//   chip.regs[reg_fsr] = 0x35;
//   fsrbank(chip)                // 1 on a 16C57
//   setbit(0x10, 3, 1)           // 0x18
//
// How the chip reads and writes an address, with all the effects that has, is core/processor.h. Whoever only
// looks takes regs and bankregs as they are.
#pragma once

#include <cstdint>

#include "core/chipstate.h"

namespace estructura {

/// Data bank 0..3 that FSR points into, as far as the device has banks.
inline int fsrbank(const chipstate& chip) {
  return (chip.regs[reg_fsr] & chip.devmodel.datamask) / 32;
}

/// Data banks of the device: 1, 2 or 4.
constexpr int bank_count(const device& model) {
  return model.datamask / 32 + 1;
}

/// Page bits of STATUS as a program address offset: bit 5 becomes address bit 9, bit 6 address bit 10, each
/// only where the device's program memory reaches that far.
constexpr int page_mask(const device& model) {
  return (model.progmask / 16) & 96;
}
constexpr int pagebits(const device& model, int status) {
  return (status & page_mask(model)) << 4;
}

/// `value` with bit `n` set, or cleared and then limited to 8 bits.
constexpr int setbit(int value, int n, int on) {
  return on != 0 ? value | (1 << n) : value & (255 - (1 << n)) & 255;
}

/// 1 when bit `n` of `value` is set, else 0.
constexpr int getbit(int value, int n) {
  return (value >> n) & 1;
}

/// STATUS as it must read: bits 3 and 4 are the latches, and what the device lacks is 0.
constexpr int normalized_status(const chipstate& chip, int status) {
  status = setbit(status, status_pd, chip.pdlatch);
  status = setbit(status, status_to, chip.tolatch);
  return status & chip.devmodel.status_mask;
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
  chip.regs[reg_status] = static_cast<std::int16_t>(normalized_status(chip, chip.regs[reg_status]));
}

}  // namespace estructura
