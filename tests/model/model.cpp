#include "tests/model/model.h"

#include "tests/model/rules.h"

namespace estructura::second_model {

namespace {

// --- Timer0 and watchdog

long ps(const model_machine& m) {
  return getbit(m.option, 2) * 4 + getbit(m.option, 1) * 2 + getbit(m.option, 0);
}

long timer_ratio(const model_machine& m) {
  return getbit(m.option, 3) == 0 ? 1L << (ps(m) + 1) : 1;
}

long watchdog_ratio(const model_machine& m) {
  return getbit(m.option, 3) == 1 ? 1L << ps(m) : 1;
}

bool prescaler_full(model_machine& m) {
  if (m.prescount != timer_ratio(m)) return false;
  m.regs[1] = m.regs[1] + 1 == 256 ? 0 : m.regs[1] + 1;
  m.prescount = 0;
  return true;
}

void tick_from_cycles(model_machine& m) {
  m.prescount = fits16(m.prescount + 1);
  prescaler_full(m);
}

void tick_from_pulses(model_machine& m) {
  if (m.sleeping == 0) {
    m.tockicount = fits16(m.tockicount + 1);
    if (m.tockicount >= m.tockiperiod) {
      m.tockicount = 0;
      m.prescount = fits16(m.prescount + 1);
    }
  }
  prescaler_full(m);
}

void select_row(model_machine& m) {
  m.row = 1;
  m.row_in_list = m.pc <= dev(m).progmask ? 1 : 0;
  if (m.row_in_list == 1) m.clicked = m.pc;
}

void wdtcal(model_machine& m) {
  if (m.sleeping != 0 || m.wdtcount < m.wdtlimit) return;
  m.wdtcount = 0;
  m.warnings += 1;
  resetchip(m, m.pdlatch, 0, m.gpwuflatch);
  regen(m);
  select_row(m);
}

// --- Pins

void wake_up(model_machine& m) {
  resetchip(m, m.pdlatch, m.tolatch, 1);
  regen(m);
  select_row(m);
}

bool wakes(const model_machine& m, int port, int bit) {
  const bool pin = port == 1 && getbit(dev(m).waking_pins, bit) == 1;
  return pin && m.sleeping != 0 && getbit(m.option, 7) == 0;
}

bool port_present(const model_machine& m, int port) {
  return is_port(m, port + 5);
}

void follow_latch(model_machine& m, int port, int bit) {
  if (!port_present(m, port) || (port == 0 && getbit(dev(m).port_a_pins, bit) == 0)) return;
  const bool input = getbit(cell(m.tris, port), bit) == 1;
  const long latch = getbit(cell(m.regs, port + 5), bit);
  if (!input && getbit(cell(m.boxes, port), bit) != latch) pin_click(m, port, bit, latch == 1);
}

// --- The step

void lock_configuration(model_machine& m) {
  const double whole = nearest(m.frec);
  if (whole < 32 || whole > 20000) m.frec = 4000;
  m.config_open = 0;
  m.locks += 1;
}

void first_step_after_reset(model_machine& m) {
  m.firststep = 0;
  count_cycle(m);
}

long fetch(model_machine& m) {
  const long word = cell(m.progmem, m.pc);
  m.pc = (m.pc + 1) & dev(m).progmask;
  load_pcl(m);
  return word;
}

void draw_marker(model_machine& m) {
  m.marker = m.pc;
  m.marker_drawn = 1;
}

void show_unprogrammed(model_machine& m) {
  select_row(m);
  draw_marker(m);
  regen(m);
}

void watchdog_period(model_machine& m) {
  m.wdtlimit = nearest32(static_cast<double>(watchdog_ratio(m)) * m.frec * 4.5);
}

void tocki_period(model_machine& m) {
  if (m.fr != 0) m.tockiperiod = nearest32(m.frec * 250 / m.fr);
}

}  // namespace

void tmrtick(model_machine& m) {
  const bool external = getbit(m.option, 5) == 1;
  if (!external)
    tick_from_cycles(m);
  else if (m.tockifreq != 0)
    tick_from_pulses(m);
}

void resetchip(model_machine& m, long pd, long to, long gpwuf) {
  m.resumebp = 0;
  m.cycles = 0;
  m.firststep = 1;
  m.wdtcount = 0;
  m.pdlatch = pd;
  m.tolatch = to;
  m.sleeping = 0;
  m.pc = dev(m).progmask;
  m.tris = {dev(m).mask5, dev(m).mask6, 255};
  m.option = dev(m).optmask;
  m.stack = {0, 0};
  m.regs[2] = 255;
  if (pd == 1 && to == 1) m.regs[3] &= 31;
  m.regs[3] = setbit(m.regs[3], 3, pd);
  m.regs[3] = setbit(m.regs[3], 4, to);
  if (dev(m).waking_pins != 0) {
    m.gpwuflatch = gpwuf;
    m.regs[3] = setbit(m.regs[3], 7, gpwuf);
  }
  if (!is_port(m, 5)) m.regs[5] = dev(m).osccal_at_reset;
}

void regen(model_machine& m) {
  normregs(m);
  if (m.watchdog != 0) watchdog_period(m);
  if (getbit(m.option, 5) == 1) tocki_period(m);
  for (int bit = 0; bit < 8; ++bit)
    for (int port = 0; port < 3; ++port) follow_latch(m, port, bit);
  m.views = 1;  // last: after a fault it is the window that has everything shown anew
}

void pin_click(model_machine& m, int port, int bit, bool on) {
  cell(m.boxes, port) = setbit(cell(m.boxes, port), bit, on ? 1 : 0);
  cell(m.pins, port) = setbit(cell(m.pins, port), bit, on ? 1 : 0);
  regen(m);
  if (wakes(m, port, bit)) wake_up(m);
}

void step(model_machine& m) {
  m.entry_shown = 0;
  m.resumebp = 0;
  if (m.config_open != 0) lock_configuration(m);
  if (m.sleeping != 0) return;
  if (m.firststep != 0) first_step_after_reset(m);
  m.marker_drawn = 0;
  const long word = fetch(m);
  if (word == unprogrammed_word) {
    show_unprogrammed(m);
    return;
  }
  execinst(m, word);
  if (m.watchdog != 0) wdtcal(m);
  tmrtick(m);
  regen(m);
  select_row(m);
  draw_marker(m);
}

bool turn(model_machine& m) {
  if (cell(m.breakpts, m.pc) == 1 && m.resumebp == 0) {
    m.resumebp = 1;
    m.stops += 1;
    m.running = 0;
    return false;
  }
  step(m);
  return true;
}

void por_click(model_machine& m) {
  m.regs = {};
  m.bankregs = {};
  m.pc = 0;
  m.w = 0;
  m.option = 0;
  m.tris = {};
  m.prescount = 0;
  resetchip(m, 1, 1, 0);
  regen(m);
}

void mclr_click(model_machine& m) {
  m.sleeping = 0;
  resetchip(m, m.pdlatch, m.tolatch, m.gpwuflatch);
  regen(m);
}

void wdt_click(model_machine& m) {
  m.sleeping = 0;
  resetchip(m, m.pdlatch, 0, m.gpwuflatch);
  regen(m);
}

void tocki_click(model_machine& m) {
  if (m.sleeping != 0) return;
  m.prescount = fits16(m.prescount + 1);
  if (prescaler_full(m)) regen(m);
}

}  // namespace estructura::second_model
