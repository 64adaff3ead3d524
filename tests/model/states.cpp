#include "tests/model/states.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace estructura::second_model {

namespace {

constexpr long greatest16 = 32767;
constexpr long greatest32 = 2147483647;

/// Bytes either of every value or of those at which carries, borrows and zeros happen.
template <class Cells>
void fill_bytes(random_source& chance, Cells& cells) {
  constexpr std::array<long, 8> edges = {0, 0, 1, 15, 16, 127, 128, 255};
  const bool plain = !chance.one_in(3);
  for (std::size_t i = 0; i < cells.size(); i += 8) {
    std::uint64_t bits = chance.next();
    for (std::size_t j = i; j < i + 8 && j < cells.size(); ++j, bits >>= 8)
      cells[j] = plain ? static_cast<long>(bits & 255) : edges[bits & 7];
  }
}

long random_pc(random_source& chance, const device& row) {
  constexpr std::array<long, 10> edges = {0, 255, 256, 510, 511, 512, 1023, 1024, 2046, 2047};
  switch (chance.below(8)) {
    case 0: return chance.one_of(edges);
    case 1: return row.progmask - chance.below(3);
    case 2: return std::min(row.progmask + chance.below(3), 2047L);
    case 3: return chance.below(2048);
    default: return chance.below(row.progmask + 1);
  }
}

long around(random_source& chance, long middle, long greatest) {
  return std::clamp(middle - 3 + chance.below(6), 0L, greatest);
}

long random_count32(random_source& chance, long limit) {
  switch (chance.below(8)) {
    case 0: return 0;
    case 1: return greatest32 - chance.below(4);
    case 2: return chance.below(greatest32);
    case 3: return chance.below(300);
    default: return around(chance, limit, greatest32);
  }
}

long random_count16(random_source& chance, long limit) {
  switch (chance.below(8)) {
    case 0: return 0;
    case 1: return greatest16 - chance.below(4);
    case 2: return chance.below(greatest16);
    case 3: return chance.below(300);
    default: return around(chance, limit, greatest16);
  }
}

long random_cycles(random_source& chance) {
  if (chance.one_in(3)) return 1000000000 - 6 + chance.below(6);
  return chance.one_in(2) ? 0 : chance.below(1000000000);
}

/// While the configuration stays open anything may be typed; later only what the lock let pass.
double random_frec(random_source& chance, bool open) {
  constexpr std::array<double, 8> locked = {4000, 4000, 32, 20000, 31.5, 33.3, 12345, 19999.5};
  constexpr std::array<double, 8> typed = {0, -4000, 31.4, 31.5, 20000.5, 20001, 1e9, 1e300};
  return open && chance.one_in(2) ? chance.one_of(typed) : chance.one_of(locked);
}

double random_fr(random_source& chance) {
  constexpr std::array<double, 8> typed = {1000, 1, 0.4, 0.6, 1000000, 300000, 77777, 0.0001};
  return chance.one_in(3) ? 0 : chance.one_of(typed);
}

void output_boxes_as_latches(model_state& m) {
  for (std::size_t port = 0; port < 3; ++port) {
    const long outputs = 255 & ~m.tris[port];
    m.boxes[port] = (m.boxes[port] & ~outputs) | (m.regs[5 + port] & outputs);
  }
}

void set_pins(random_source& chance, model_state& m) {
  fill_bytes(chance, m.boxes);
  m.boxes[0] &= 15;
  if (chance.one_in(2)) output_boxes_as_latches(m);
  m.boxes[0] &= 15;
  m.pins = m.boxes;
  if (chance.one_in(4)) fill_bytes(chance, m.pins);
}

void set_registers(random_source& chance, model_state& m) {
  const device& row = catalogue[static_cast<std::size_t>(m.device)].model;
  fill_bytes(chance, m.regs);
  fill_bytes(chance, m.bankregs);
  fill_bytes(chance, m.tris);
  if (chance.one_in(3)) m.tris = {row.mask5, row.mask6, 255};
  if (chance.one_in(3)) m.tris = {0, 0, 0};
  m.pc = random_pc(chance, row);
  m.w = chance.below(256);
  if (chance.one_in(8)) m.w = m.regs[static_cast<std::size_t>(chance.below(16))];
  m.option = chance.below(256);
  m.stack = {chance.below(2048), chance.below(2048)};
}

void set_clocks(random_source& chance, model_state& m) {
  m.config_open = chance.one_in(8) ? 1 : 0;
  m.watchdog = chance.below(2);
  m.frec = random_frec(chance, m.config_open == 1);
  m.fr = random_fr(chance);
  m.tockifreq = chance.one_in(8) ? chance.below(3) : static_cast<long>(std::nearbyint(m.fr));
  m.tockiperiod = chance.one_in(2) ? chance.below(1200) : around(chance, greatest16, greatest32);
  m.tockicount = random_count16(chance, m.tockiperiod);
  m.prescount = random_count16(chance, 1L << chance.below(9));
  // A negative frequency typed before the lock leaves a negative limit for the first step.
  m.wdtlimit = chance.one_in(8) ? -18000 * chance.below(2) : chance.below(3000000);
  m.wdtcount = random_count32(chance, m.wdtlimit);
  m.cycles = random_cycles(chance);
}

void set_runs(random_source& chance, model_state& m) {
  m.pdlatch = chance.below(2);
  m.tolatch = chance.below(2);
  m.gpwuflatch = chance.below(2);
  m.sleeping = chance.one_in(12) ? 1 : 0;
  m.firststep = chance.one_in(4) ? 1 : 0;
  m.resumebp = chance.below(2);
  m.entry_shown = chance.one_in(4) ? 1 : 0;
}

void set_pending_views(random_source& chance, model_state& m) {
  m.views = chance.below(2);
  m.row = chance.below(2);
  m.row_in_list = chance.below(2);
  m.clicked = chance.below(2048) - 1;
  m.marker = chance.below(2048);
  m.marker_drawn = chance.below(2);
}

}  // namespace

model_state random_state(random_source& chance, long device) {
  model_state m;
  m.device = device;
  set_registers(chance, m);
  set_pins(chance, m);
  set_clocks(chance, m);
  set_runs(chance, m);
  set_pending_views(chance, m);
  return m;
}

int random_word(random_source& chance) {
  constexpr std::array<int, 6> clocks = {0x002, 0x004, 0x005, 0x006, 0x007, 0x021};
  switch (chance.below(32)) {
    case 0: return chance.one_of(clocks);
    case 1: return chance.one_in(20) ? 0x003 : unprogrammed_word;
    case 2:
      return chance.one_in(8) ? static_cast<int>(chance.below(65536))
                              : 0xC00 + static_cast<int>(chance.below(256));
    default: return static_cast<int>(chance.below(4096));
  }
}

}  // namespace estructura::second_model
