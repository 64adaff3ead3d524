#include "core/resets.h"

#include "core/data_memory.h"

namespace estructura {

void resetchip(chipstate& chip, int pd, int to, int gpwuf) {
  const device& model = chip.devmodel;
  chip.resumebp = false;
  chip.cycles = 0;
  chip.firststep = true;
  chip.wdtcount = 0;
  chip.pdlatch = static_cast<std::int16_t>(pd);
  chip.tolatch = static_cast<std::int16_t>(to);
  chip.sleeping = false;
  chip.cpu.pc = model.progmask;
  chip.cpu.trisa = model.mask5;
  chip.cpu.trisb = model.mask6;
  chip.cpu.trisc = 255;
  chip.cpu.option = model.optmask;
  chip.stack.fill(0);
  chip.regs[reg_pcl] = 255;
  int status = chip.regs[reg_status];
  if (pd == 1 && to == 1) status &= 31;
  status = setbit(status, status_pd, pd);
  status = setbit(status, status_to, to);
  if (model.wakes_on_pins()) {
    chip.gpwuflatch = static_cast<std::int16_t>(gpwuf);
    status = setbit(status, status_gpwuf, gpwuf);
  }
  if (!model.has_port_a()) chip.regs[reg_5] = model.osccal_at_reset;
  chip.regs[reg_status] = static_cast<std::int16_t>(status);
}

void power_on(chipstate& chip) {
  chip.regs.fill(0);
  chip.bankregs.fill(0);
  chip.cpu = {};
  chip.prescount = 0;
  resetchip(chip, 1, 1, 0);
}

void mclr_reset(chipstate& chip) {
  chip.sleeping = false;
  resetchip(chip, chip.pdlatch, chip.tolatch, chip.gpwuflatch);
}

void wdt_reset(chipstate& chip) {
  chip.sleeping = false;
  resetchip(chip, chip.pdlatch, 0, chip.gpwuflatch);
}

}  // namespace estructura
