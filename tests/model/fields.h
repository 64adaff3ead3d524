// Every field of the slow machine beside the field of the quick one that means the same, each named once.
//
//   each_field(slow, chip, window, [](const char* name, int index, auto& slow, auto& quick) { ... });
//
// `index` is -1 for a field that is no array. The device is not here: the slow machine
// knows it by its row.
#pragma once

#include <cstddef>

#include "tests/model/pair.h"

namespace estructura::second_model {

template <class Slow, class Quick, class F>
void each_cell(const char* name, Slow& slow, Quick& quick, F&& f) {
  for (std::size_t i = 0; i < slow.size(); ++i)
    f(name, static_cast<int>(i), slow[i], quick[static_cast<int>(i)]);
}

template <class Slow, class Chip, class Window, class F>
void each_field(Slow& m, Chip& chip, Window& window, F&& f) {
  each_cell("regs", m.regs, chip.regs, f);
  each_cell("bankregs", m.bankregs, chip.bankregs, f);
  f("cpu.pc", -1, m.pc, chip.cpu.pc);
  f("cpu.w", -1, m.w, chip.cpu.w);
  f("cpu.option", -1, m.option, chip.cpu.option);
  f("cpu.trisa", -1, m.tris[0], chip.cpu.trisa);
  f("cpu.trisb", -1, m.tris[1], chip.cpu.trisb);
  f("cpu.trisc", -1, m.tris[2], chip.cpu.trisc);
  each_cell("stack", m.stack, chip.stack, f);
  f("pdlatch", -1, m.pdlatch, chip.pdlatch);
  f("tolatch", -1, m.tolatch, chip.tolatch);
  f("gpwuflatch", -1, m.gpwuflatch, chip.gpwuflatch);
  f("sleeping", -1, m.sleeping, chip.sleeping);
  f("pina", -1, m.pins[0], chip.pina);
  f("pinb", -1, m.pins[1], chip.pinb);
  f("pinc", -1, m.pins[2], chip.pinc);
  f("cycles", -1, m.cycles, chip.cycles);
  f("wdtcount", -1, m.wdtcount, chip.wdtcount);
  f("wdtlimit", -1, m.wdtlimit, chip.wdtlimit);
  f("prescount", -1, m.prescount, chip.prescount);
  f("tockicount", -1, m.tockicount, chip.tockicount);
  f("tockiperiod", -1, m.tockiperiod, chip.tockiperiod);
  f("tockifreq", -1, m.tockifreq, chip.tockifreq);
  f("firststep", -1, m.firststep, chip.firststep);
  f("running", -1, m.running, chip.running);
  f("resumebp", -1, m.resumebp, chip.resumebp);
  f("WATCHDOG enabled", -1, m.config_open, window.runner.requests().configuration_open);
  f("WATCHDOG checked", -1, m.watchdog, window.in.watchdog_on);
  f("INS shown", -1, m.entry_shown, window.runner.requests().entry_shown);
  each_cell("pin boxes of port", m.boxes, window.in.pin_boxes, f);
  f("views pending", -1, m.views, window.runner.seen().refreshed);
  f("row chosen", -1, m.row, window.runner.seen().arrived);
  f("row in list", -1, m.row_in_list, window.runner.seen().inside);
  f("row clicked", -1, m.clicked, window.runner.seen().inner);
  f("marker", -1, m.marker, window.runner.seen().marker);
  f("marker drawn", -1, m.marker_drawn, window.runner.seen().marked);
  f("configuration locked, times", -1, m.locks, window.locks);
  f("watchdog warnings", -1, m.warnings, window.warnings);
  f("stops at breakpoints", -1, m.stops, window.stops);
}

}  // namespace estructura::second_model
