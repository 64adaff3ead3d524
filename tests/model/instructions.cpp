#include <array>

#include "tests/model/rules.h"

namespace estructura::second_model {

namespace {

struct fields {
  long hi, mid, lo;
  long f, d, b, k, target;
};

fields split(long word) {
  fields c{};
  c.hi = word / 256;
  c.mid = (word - c.hi * 256) / 16;
  c.lo = word % 16;
  c.f = (c.mid % 2) * 16 + c.lo;
  c.d = (c.mid / 2) % 2;
  c.b = c.mid / 2;
  c.k = c.mid * 16 + c.lo;
  c.target = c.k + (c.hi % 2) * 256;
  return c;
}

void flag(model_machine& m, long bit, bool on) {
  m.regs[3] = setbit(m.regs[3], bit, on ? 1 : 0);
}
void flag_c(model_machine& m, bool on) {
  flag(m, 0, on);
}
void flag_dc(model_machine& m, bool on) {
  flag(m, 1, on);
}
void flag_z(model_machine& m, long result) {
  flag(m, 2, result == 0);
}

void second_cycle(model_machine& m) {
  count_cycle(m);
  tmrtick(m);
}

void skip(model_machine& m) {
  m.pc = m.pc + 1;
  second_cycle(m);
  if (m.pc == 2048) m.pc = 0;
  load_pcl(m);
}

void sleep(model_machine& m) {
  m.pdlatch = 0;
  m.tolatch = 1;
  m.regs[3] = setbit(m.regs[3], 3, 0);
  m.regs[3] = setbit(m.regs[3], 4, 1);
  m.sleeping = 1;
  m.wdtcount = 0;
}

void clrwdt(model_machine& m) {
  m.tolatch = 1;
  m.wdtcount = 0;
}

void subwf(model_machine& m, const fields& c) {
  const long value = readreg(m, c.f);
  flag_dc(m, value % 16 - m.w % 16 >= 0);
  long r = value - m.w;
  flag_c(m, r >= 0);
  if (r < 0) r += 256;
  flag_z(m, r);
  writereg(m, c.f, c.d, r);
}

void addwf(model_machine& m, const fields& c) {
  const long value = readreg(m, c.f);
  flag_dc(m, m.w % 16 + value % 16 >= 16);
  long r = m.w + value;
  flag_c(m, r > 255);
  if (r > 255) r -= 256;
  flag_z(m, r);
  writereg(m, c.f, c.d, r);
}

/// The instructions that change Z alone.
void store_with_z(model_machine& m, const fields& c, long r) {
  flag_z(m, r);
  writereg(m, c.f, c.d, r);
}

long less_one(long value) {
  return value == 0 ? 255 : value - 1;
}
long plus_one(long value) {
  return value == 255 ? 0 : value + 1;
}

void decf(model_machine& m, const fields& c) {
  store_with_z(m, c, less_one(readreg(m, c.f)));
}
void incf(model_machine& m, const fields& c) {
  store_with_z(m, c, plus_one(readreg(m, c.f)));
}
void iorwf(model_machine& m, const fields& c) {
  store_with_z(m, c, readreg(m, c.f) | m.w);
}
void andwf(model_machine& m, const fields& c) {
  store_with_z(m, c, readreg(m, c.f) & m.w);
}
void xorwf(model_machine& m, const fields& c) {
  store_with_z(m, c, readreg(m, c.f) ^ m.w);
}
void movf(model_machine& m, const fields& c) {
  store_with_z(m, c, readreg(m, c.f));
}
void comf(model_machine& m, const fields& c) {
  store_with_z(m, c, 255 - readreg(m, c.f));
}

void store_and_skip_on_zero(model_machine& m, const fields& c, long r) {
  if (r == 0) skip(m);
  writereg(m, c.f, c.d, r);
}

void decfsz(model_machine& m, const fields& c) {
  store_and_skip_on_zero(m, c, less_one(readreg(m, c.f)));
}
void incfsz(model_machine& m, const fields& c) {
  store_and_skip_on_zero(m, c, plus_one(readreg(m, c.f)));
}

void rrf(model_machine& m, const fields& c) {
  const long value = readreg(m, c.f);
  const long r = getbit(m.regs[3], 0) * 128 + value / 2;
  flag_c(m, value % 2 == 1);
  writereg(m, c.f, c.d, r);
}

void rlf(model_machine& m, const fields& c) {
  long r = readreg(m, c.f) * 2 + getbit(m.regs[3], 0);
  flag_c(m, r > 255);
  if (r > 255) r -= 256;
  writereg(m, c.f, c.d, r);
}

void swapf(model_machine& m, const fields& c) {
  const long value = readreg(m, c.f);
  writereg(m, c.f, c.d, (value & 15) * 16 + (value & 240) / 16);
}

void bcf(model_machine& m, const fields& c) {
  writereg(m, c.f, 1, setbit(readreg(m, c.f), c.b, 0));
}
void bsf(model_machine& m, const fields& c) {
  writereg(m, c.f, 1, setbit(readreg(m, c.f), c.b, 1));
}

void btfsc(model_machine& m, const fields& c) {
  if (getbit(readreg(m, c.f), c.b) == 0) skip(m);
}

void btfss(model_machine& m, const fields& c) {
  if (getbit(readreg(m, c.f), c.b) == 1) skip(m);
}

void retlw(model_machine& m, const fields& c) {
  m.pc = m.stack[0];
  second_cycle(m);
  load_pcl(m);
  m.stack[0] = m.stack[1];
  m.w = c.k;
}

void call(model_machine& m, const fields& c) {
  m.stack[1] = m.stack[0];
  m.stack[0] = m.pc;
  second_cycle(m);
  load_pcl(m);
  m.pc = pagebits(m) + c.k;
}

void go_to(model_machine& m, const fields& c) {
  m.pc = pagebits(m) + c.target;
  second_cycle(m);
  load_pcl(m);
}

void literal_with_z(model_machine& m, long r) {
  flag_z(m, r);
  m.w = r;
}

void exec_000(model_machine& m, const fields& c) {
  switch (c.lo) {
    case 2: m.option = m.w; return;
    case 3: sleep(m); return;
    case 4: clrwdt(m); return;
    case 5: m.tris[0] = m.w; return;
    case 6: m.tris[1] = m.w; return;
    case 7: m.tris[2] = m.w; return;
    default: return;
  }
}

void exec_0(model_machine& m, const fields& c) {
  switch (c.mid) {
    case 0: exec_000(m, c); return;
    case 2:
    case 3: writereg(m, c.f, 1, m.w); return;
    case 4:
      if (c.lo == 0) m.w = 0;
      return;
    case 6:
    case 7: writereg(m, c.f, 1, 0); return;
    case 8:
    case 9:
    case 10:
    case 11: subwf(m, c); return;
    case 12:
    case 13:
    case 14:
    case 15: decf(m, c); return;
    default: return;
  }
}

using operation = void (*)(model_machine&, const fields&);

/// The quarters of `mid` in the rows `hi` 1, 2 and 3.
void exec_quarter(model_machine& m, const fields& c, std::array<operation, 4> quarters) {
  cell(quarters, c.mid / 4)(m, c);
}

void decode(model_machine& m, const fields& c) {
  switch (c.hi) {
    case 0: exec_0(m, c); return;
    case 1: exec_quarter(m, c, {iorwf, andwf, xorwf, addwf}); return;
    case 2: exec_quarter(m, c, {movf, comf, incf, decfsz}); return;
    case 3: exec_quarter(m, c, {rrf, rlf, swapf, incfsz}); return;
    case 4: bcf(m, c); return;
    case 5: bsf(m, c); return;
    case 6: btfsc(m, c); return;
    case 7: btfss(m, c); return;
    case 8: retlw(m, c); return;
    case 9: call(m, c); return;
    case 10:
    case 11: go_to(m, c); return;
    case 12: m.w = c.k; return;
    case 13: literal_with_z(m, m.w | c.k); return;
    case 14: literal_with_z(m, m.w & c.k); return;
    case 15: literal_with_z(m, m.w ^ c.k); return;
    default: return;  // beyond 12 bits
  }
}

}  // namespace

void load_pcl(model_machine& m) {
  m.regs[2] = m.pc % 256;
}

void execinst(model_machine& m, long word) {
  count_cycle(m);
  decode(m, split(word));
  if (m.cycles >= 1000000000) m.cycles -= 1000000000;
}

}  // namespace estructura::second_model
