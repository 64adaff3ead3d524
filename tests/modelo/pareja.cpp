#include "tests/modelo/pareja.h"

#include <cmath>
#include <cstddef>
#include <cstring>
#include <sstream>
#include <type_traits>

#include "common/fallo.h"
#include "core/resets.h"
#include "core/timer.h"
#include "tests/modelo/campos.h"

namespace estructura::modelo {

namespace {

const dispositivo& row_of(const estado& m) {
  return dispositivos[static_cast<std::size_t>(m.device)];
}

constexpr auto take_over = [](const char*, int, const auto& slow, auto& quick) {
  quick = static_cast<std::remove_reference_t<decltype(quick)>>(slow);
};

bool same_program(const chipstate& a, const chipstate& b) {
  return std::memcmp(&a.progmem, &b.progmem, sizeof a.progmem) == 0 &&
         std::memcmp(&a.breakpts, &b.breakpts, sizeof a.breakpts) == 0;
}

}  // namespace

std::string name_of(const acto& one) {
  switch (one.what) {
    case accion::paso: return "step";
    case accion::carrera: return "a run of one step";
    case accion::refresco: return "refresh";
    case accion::pin:
      return "pin box " + std::string(1, static_cast<char>('A' + one.port)) + std::to_string(one.bit) +
             (one.on ? " on" : " off");
    case accion::por: return "power-on reset";
    case accion::mclr: return "MCLR reset";
    case accion::wdt: return "WDT reset";
    case accion::pulso: return "T0CKI pulse";
  }
  return "?";
}

void ventana_minima::lock_configuration() {
  ++locks;
  const double whole = std::nearbyint(frec);
  if (whole < 32 || whole > 20000) type_frequencies(4000, fr);
  runner.requests().configuration_open = false;
}

void ventana_minima::clear_entry() {
  runner.requests().entry_shown = false;
}

void ventana_minima::click_ejecutar() {
  ++stops;
  running_chip->running = false;
  if (on_stop) on_stop();
}

void ventana_minima::type_frequencies(double frec_khz, double fr_hz) {
  frec = frec_khz;
  fr = fr_hz;
  in.set_frequencies(frec_khz, fr_hz);
}

pareja::pareja(const maquina& start) {
  load(start);
}

void pareja::load(const maquina& start) {
  slow = start;
  for (int i = 0; i < program_words; ++i) {
    const auto at = static_cast<std::size_t>(i);
    set_word(i, start.progmem[at]);
    set_breakpoint(i, start.breakpts[at] != 0);
  }
  load_state(start);
}

void pareja::load_state(const estado& start) {
  static_cast<estado&>(slow) = start;
  each_field(slow, chip, window, take_over);
  each_device_field(row_of(slow), chip, take_over);
  window.type_frequencies(slow.frec, slow.fr);
  slow_fault = false;
  quick_fault = false;
}

void pareja::set_word(int address, int word) {
  slow.progmem[static_cast<std::size_t>(address)] = word;
  chip.progmem[address] = static_cast<std::uint16_t>(word);
  program_.progmem[address] = static_cast<std::uint16_t>(word);
}

void pareja::set_breakpoint(int address, bool on) {
  slow.breakpts[static_cast<std::size_t>(address)] = on ? 1 : 0;
  chip.breakpts[address] = on ? 1 : 0;
  program_.breakpts[address] = on ? 1 : 0;
}

void pareja::slowly(const std::function<void()>& action) {
  try {
    action();
  } catch (const desborde&) {
    slow_fault = true;
  }
}

void pareja::quickly(const std::function<void()>& action) {
  try {
    action();
  } catch (const fallo&) {
    quick_fault = true;
  }
}

void pareja::act(const acto& one) {
  slowly([&] { act_slowly(one); });
  quickly([&] { act_quickly(one); });
}

void pareja::act_slowly(const acto& one) {
  switch (one.what) {
    case accion::paso: step(slow); return;
    case accion::carrera:
      slow.running = 1;
      turn(slow);
      slow.running = 0;
      return;
    case accion::refresco: regen(slow); return;
    case accion::pin: pin_click(slow, one.port, one.bit, one.on); return;
    case accion::por: por_click(slow); return;
    case accion::mclr: mclr_click(slow); return;
    case accion::wdt: wdt_click(slow); return;
    case accion::pulso: tocki_click(slow); return;
  }
}

void pareja::act_quickly(const acto& one) {
  switch (one.what) {
    case accion::paso: window.runner.step(); return;
    case accion::carrera:
      window.running_chip = &chip;
      window.on_stop = nullptr;
      window.on_cede = [this] {
        chip.running = false;
        return 1;
      };
      chip.running = true;
      window.runner.run();
      return;
    case accion::refresco: window.runner.regen(); return;
    case accion::pin: window.runner.pin_click(one.port, one.bit, one.on); return;
    case accion::por:
      power_on(chip);
      window.runner.regen();
      return;
    case accion::mclr:
      mclr_reset(chip);
      window.runner.regen();
      return;
    case accion::wdt:
      wdt_reset(chip);
      window.runner.regen();
      return;
    case accion::pulso:
      if (tocki_pulse(chip)) window.runner.regen();
      return;
  }
}

bool pareja::same() const {
  if (slow_fault != quick_fault || slow.frec != window.frec || slow.fr != window.fr) return false;
  bool equal = true;
  const auto compare = [&equal](const char*, int, const auto& wanted, const auto& got) {
    equal &= static_cast<long>(wanted) == static_cast<long>(got);
  };
  each_field(slow, chip, window, compare);
  each_device_field(row_of(slow), chip, compare);
  return equal && same_program(program_, chip);
}

std::string pareja::differences() const {
  std::ostringstream out;
  const auto compare = [&out](const char* name, int index, const auto& wanted, const auto& got) {
    if (static_cast<long>(wanted) == static_cast<long>(got)) return;
    out << "\n  " << name;
    if (index >= 0) out << "[" << index << "]";
    out << ": wanted " << static_cast<long>(wanted) << ", got " << static_cast<long>(got);
  };
  compare("fault", -1, slow_fault, quick_fault);
  each_field(slow, chip, window, compare);
  each_device_field(row_of(slow), chip, compare);
  if (slow.frec != window.frec) out << "\n  FREC: wanted " << slow.frec << ", got " << window.frec;
  if (slow.fr != window.fr) out << "\n  FR: wanted " << slow.fr << ", got " << window.fr;
  if (!same_program(program_, chip)) out << "\n  program memory or breakpoints were written to";
  return out.str();
}

}  // namespace estructura::modelo
