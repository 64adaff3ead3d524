#include "tests/model/events.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "core/devices.h"
#include "core/resets.h"
#include "tests/model/states.h"

namespace estructura::second_model {

namespace {

const device& device_of(const machine_pair& two) {
  return catalogue[static_cast<std::size_t>(two.slow.device)].model;
}

template <class Quick>
void store(long& slow, Quick& quick, long value) {
  slow = value;
  quick = static_cast<Quick>(value);
}

void open_configuration(machine_pair& two) {
  store(two.slow.config_open, two.window.runner.requests().configuration_open, 1);
}

void type_frequencies(machine_pair& two, double frec, double fr) {
  two.slow.frec = frec;
  two.slow.fr = fr;
  two.window.type_frequencies(frec, fr);
}

void power_on(random_source& /*chance*/, machine_pair& two) {
  open_configuration(two);
  two.act({action_kind::por});
}

void mclr(random_source& /*chance*/, machine_pair& two) {
  two.act({action_kind::mclr});
}

void wdt(random_source& /*chance*/, machine_pair& two) {
  two.act({action_kind::wdt});
}

/// A box that is an input takes its other state.
void click_pin(random_source& chance, machine_pair& two) {
  const int port = device_of(two).port_a_pins != 0 ? static_cast<int>(chance.below(3)) : 1;
  const int bit = static_cast<int>(chance.below(port == 0 ? 4 : 8));
  const auto at = static_cast<std::size_t>(port);
  const bool present = port < 2 || device_of(two).hasportc;
  if (!present || (two.slow.tris[at] >> bit) % 2 == 0) return;
  two.act({action_kind::pin, port, bit, (two.slow.boxes[at] >> bit) % 2 == 0});
}

void pulse(random_source& /*chance*/, machine_pair& two) {
  two.act({action_kind::pulse});
}

void type_file_register(random_source& chance, machine_pair& two) {
  const int address = static_cast<int>(chance.below(16));
  long value = chance.below(256);
  if (address == 4) value &= device_of(two).datamask;
  if (address == 5) value &= device_of(two).mask5;
  store(two.slow.regs[static_cast<std::size_t>(address)], two.chip.regs[address], value);
  two.act({action_kind::refresh});
}

void type_bank_register(random_source& chance, machine_pair& two) {
  const int at = static_cast<int>(chance.below(64));
  store(two.slow.bankregs[static_cast<std::size_t>(at)], two.chip.bankregs[at], chance.below(256));
  two.act({action_kind::refresh});
}

void type_core_register(random_source& chance, machine_pair& two) {
  model_state& m = two.slow;
  core_registers& cpu = two.chip.cpu;
  const device& row = device_of(two);
  switch (chance.below(6)) {
    case 0: store(m.pc, cpu.pc, chance.below(row.progmask + 1)); break;
    case 1: store(m.w, cpu.w, chance.below(256)); break;
    case 2: store(m.option, cpu.option, chance.below(row.optmask + 1)); break;
    case 3: store(m.tris[0], cpu.trisa, chance.below(row.mask5 + 1)); break;
    case 4: store(m.tris[1], cpu.trisb, chance.below(row.mask6 + 1)); break;
    default: store(m.tris[2], cpu.trisc, chance.below(256)); break;
  }
  two.act({action_kind::refresh});
}

/// Typing into `FR` refreshes nothing: the new period holds from the next refresh.
void type_fr(random_source& chance, machine_pair& two) {
  constexpr std::array<double, 8> typed = {0, 0, 0.4, 100, 25000, 333333, 1000000, 2000000};
  double fr = chance.one_in(200) ? 0.0001 : chance.one_of(typed);
  if (fr > 1000000) {
    fr = 1000000;
    store(two.slow.tockicount, two.chip.tockicount, 0);
  }
  type_frequencies(two, two.slow.frec, fr);
  store(two.slow.tockifreq, two.chip.tockifreq, static_cast<long>(std::nearbyint(fr)));
}

void type_frec(random_source& chance, machine_pair& two) {
  constexpr std::array<double, 8> typed = {32, 32, 33.3, 100, 4000, 20000, 31, 0};
  if (two.slow.config_open == 1) type_frequencies(two, chance.one_of(typed), two.slow.fr);
}

void click_watchdog(random_source& /*chance*/, machine_pair& two) {
  if (two.slow.config_open == 0) return;
  store(two.slow.watchdog, two.window.in.watchdog_on, 1 - two.slow.watchdog);
  two.act({action_kind::refresh});
}

void double_click_ciclos(random_source& /*chance*/, machine_pair& two) {
  store(two.slow.cycles, two.chip.cycles, 0);
}

void click_break(random_source& chance, machine_pair& two) {
  const int address = static_cast<int>(chance.below(device_of(two).progmask + 1));
  two.set_breakpoint(address, two.slow.breakpts[static_cast<std::size_t>(address)] == 0 && chance.one_in(2));
}

void type_instruction(random_source& chance, machine_pair& two) {
  const long address = chance.one_in(2) ? two.slow.pc : chance.below(2048);
  two.set_word(static_cast<int>(address), random_word(chance));
  store(two.slow.entry_shown, two.window.runner.requests().entry_shown, 1);
}

void choose_device(random_source& chance, machine_pair& two) {
  if (two.slow.config_open == 0 || !chance.one_in(4)) return;
  two.slow.device = chance.below(device_count);
  select_device(two.chip, static_cast<int>(two.slow.device));
  const double internal_khz = device_of(two).internal_khz;
  if (internal_khz != 0) type_frequencies(two, internal_khz, two.slow.fr);
  resetchip(two.slow, 1, 1, 0);
  estructura::resetchip(two.chip, 1, 1, 0);
  two.act({action_kind::refresh});
}

}  // namespace

std::string_view random_event(random_source& chance, machine_pair& two, event_kind kind) {
  struct row {
    std::string_view name;
    void (*act)(random_source&, machine_pair&);
  };
  static constexpr row pin = {"click_pin", click_pin};
  static constexpr std::array<row, 24> all = {{
      {"power_on", power_on},
      {"mclr", mclr},
      {"wdt", wdt},
      {"wdt", wdt},
      {"click_pin", click_pin},
      {"click_pin", click_pin},
      {"click_pin", click_pin},
      {"click_pin", click_pin},
      {"pulse", pulse},
      {"pulse", pulse},
      {"type_file_register", type_file_register},
      {"type_file_register", type_file_register},
      {"type_bank_register", type_bank_register},
      {"type_core_register", type_core_register},
      {"type_core_register", type_core_register},
      {"type_fr", type_fr},
      {"type_fr", type_fr},
      {"type_frec", type_frec},
      {"type_frec", type_frec},
      {"click_watchdog", click_watchdog},
      {"click_break", click_break},
      {"type_instruction", type_instruction},
      {"choose_device", choose_device},
      {"double_click_ciclos", double_click_ciclos},
  }};
  const row chosen = kind == event_kind::pin ? pin : chance.one_of(all);
  chosen.act(chance, two);
  return chosen.name;
}

}  // namespace estructura::second_model
