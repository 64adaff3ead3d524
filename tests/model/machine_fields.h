// Every field of the slow machine beside the field of the quick one that means the same, each named once.
//
//   each_machine_field(slow, chip, [](const char* name, int index, auto& slow, auto& quick) { ... });
//
// `index` is -1 for a field that is no array. The device is not here: the slow machine knows it by its row.
#pragma once

#include <cstddef>

namespace estructura::second_model {

template <class Slow, class Quick, class F>
void each_cell(const char* name, Slow& slow, Quick& quick, F&& f) {
  for (std::size_t i = 0; i < slow.size(); ++i)
    f(name, static_cast<int>(i), slow[i], quick[static_cast<int>(i)]);
}

template <class Slow, class Chip, class F>
void each_machine_field(Slow& m, Chip& chip, F&& f) {
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
}

}  // namespace estructura::second_model
