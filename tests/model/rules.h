// What the rules of the slow machine are written with: checked numbers and bits, and the rules that others
// call.
//
//   m.prescount = fits16(m.prescount + 1);     // 32767 + 1 throws `overflow`
//   cell(m.regs, 16)                           // throws too
#pragma once

#include <cmath>
#include <cstddef>

#include "tests/model/model.h"

namespace estructura::second_model {

template <class Cells>
auto& cell(Cells& cells, long index) {
  if (index < 0 || index >= static_cast<long>(cells.size())) throw overflow("index");
  return cells[static_cast<std::size_t>(index)];
}

inline long fits16(long value) {
  if (value > 32767 || value < -32768) throw overflow("16 bits");
  return value;
}

inline long fits32(long value) {
  if (value > 2147483647L || value < -2147483648L) throw overflow("32 bits");
  return value;
}

/// Nearest whole number, halves to the even one.
inline double nearest(double value) {
  const double below = std::floor(value);
  const double rest = value - below;
  if (rest < 0.5) return below;
  if (rest > 0.5) return below + 1;
  return std::fmod(below, 2) == 0 ? below : below + 1;
}

inline long nearest32(double value) {
  const double whole = nearest(value);
  if (!(whole >= -2147483648.0 && whole <= 2147483647.0)) throw overflow("32 bits");
  return static_cast<long>(whole);
}

inline long getbit(long value, long n) {
  return (value / (1L << n)) % 2;
}

inline long setbit(long value, long n, long on) {
  return on != 0 ? (value | (1L << n)) : (value & (255 - (1L << n)));
}

inline const device& dev(const model_machine& m) {
  return cell(catalogue, m.device).model;
}

// Data memory and cycles.
long pagebits(const model_machine& m);
bool is_port(const model_machine& m, long address);
long readreg(model_machine& m, long f);
void writereg(model_machine& m, long f, long tofile, long value);
void normregs(model_machine& m);
void count_cycle(model_machine& m);

// Timer0.
void tmrtick(model_machine& m);

// Instructions.
void load_pcl(model_machine& m);
void execinst(model_machine& m, long word);

}  // namespace estructura::second_model
