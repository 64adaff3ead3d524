#include "tests/model/rules.h"

namespace estructura::second_model {

namespace {

long fsrbank(const model_machine& m) {
  return (cell(m.regs, 4) & dev(m).datamask) / 32;
}

long& banked(model_machine& m, long address) {
  return cell(m.bankregs, fsrbank(m) * 16 + address - 16);
}

long read_pins(model_machine& m, long address) {
  const long level = cell(m.pins, address - 5);
  cell(m.regs, address) = level;
  return level;
}

long read_low(model_machine& m, long address) {
  if (is_port(m, address)) return read_pins(m, address);
  if (address == 4) return cell(m.regs, 4) | (255 - dev(m).datamask);
  return cell(m.regs, address);
}

long read_indirect(model_machine& m) {
  const long a = cell(m.regs, 4) & 31;
  if (a == 0) return 0;
  if (a == 4) return cell(m.regs, 4) | 128;
  if (a <= 15) return read_low(m, a);
  return banked(m, a);
}

void write_low(model_machine& m, long address, long value) {
  cell(m.regs, address) = value;
  if (address == 2) {
    m.pc = pagebits(m) + value;
    count_cycle(m);
  }
  if (address == 1) m.prescount = 0;
  if (address == 4) m.regs[4] = setbit(m.regs[4], 7, 0);
}

void write_indirect(model_machine& m, long value) {
  const long a = cell(m.regs, 4) & 31;
  if (a == 0) return;
  if (a >= 16)
    banked(m, a) = value;
  else
    write_low(m, a, value);
}

}  // namespace

long pagebits(const model_machine& m) {
  return (((dev(m).progmask / 16) & cell(m.regs, 3) & 96) >> 5) << 9;
}

bool is_port(const model_machine& m, long address) {
  switch (address) {
    case 5: return dev(m).port_a_pins != 0;
    case 6: return true;
    case 7: return dev(m).hasportc;
    default: return false;
  }
}

long readreg(model_machine& m, long f) {
  if (f == 0) return read_indirect(m);
  if (f <= 15) return read_low(m, f);
  return banked(m, f);
}

void count_cycle(model_machine& m) {
  m.cycles = fits32(m.cycles + 1);
  // Off, the watchdog's count stands still at its greatest value; on, it never comes so far unnoticed.
  const bool stands_still = m.watchdog == 0 && m.wdtcount == 2147483647L;
  if (!stands_still) m.wdtcount = fits32(m.wdtcount + 1);
}

void writereg(model_machine& m, long f, long tofile, long value) {
  if (tofile == 0)
    m.w = value;
  else if (f == 0)
    write_indirect(m, value);
  else if (f <= 15)
    write_low(m, f, value);
  else
    banked(m, f) = value;
}

void normregs(model_machine& m) {
  m.regs[4] &= dev(m).datamask;
  m.regs[5] &= dev(m).mask5;
  m.regs[6] &= dev(m).mask6;
  m.option &= dev(m).optmask;
  m.tris[0] &= dev(m).mask5;
  m.tris[1] &= dev(m).mask6;
  m.regs[3] = setbit(m.regs[3], 3, m.pdlatch);
  m.regs[3] = setbit(m.regs[3], 4, m.tolatch);
  m.regs[3] &= dev(m).status_mask;
}

}  // namespace estructura::second_model
