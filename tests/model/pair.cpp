#include "tests/model/pair.h"

#include <cmath>
#include <cstddef>
#include <cstring>
#include <sstream>
#include <type_traits>

#include "common/fault.h"
#include "core/resets.h"
#include "core/timer.h"
#include "tests/model/fields.h"

namespace estructura::second_model {

namespace {

const catalogue_row& row_of(const model_state& m) {
  return catalogue[static_cast<std::size_t>(m.device)];
}

constexpr auto take_over = [](const char*, int, const auto& slow, auto& quick) {
  quick = static_cast<std::remove_reference_t<decltype(quick)>>(slow);
};

bool same_program(const chipstate& a, const chipstate& b) {
  return std::memcmp(&a.progmem, &b.progmem, sizeof a.progmem) == 0 &&
         std::memcmp(&a.breakpts, &b.breakpts, sizeof a.breakpts) == 0;
}

}  // namespace

std::string name_of(const machine_action& one) {
  switch (one.what) {
    case action_kind::step: return "step";
    case action_kind::run: return "a run of one step";
    case action_kind::refresh: return "refresh";
    case action_kind::pin:
      return "pin box " + std::string(1, static_cast<char>('A' + one.port)) + std::to_string(one.bit) +
             (one.on ? " on" : " off");
    case action_kind::por: return "power-on reset";
    case action_kind::mclr: return "MCLR reset";
    case action_kind::wdt: return "WDT reset";
    case action_kind::pulse: return "T0CKI pulse";
  }
  return "?";
}

void minimal_window::lock_configuration() {
  ++locks;
  const double whole = std::nearbyint(frec);
  if (whole < 32 || whole > 20000) type_frequencies(4000, fr);
  runner.requests().configuration_open = false;
}

void minimal_window::clear_entry() {
  runner.requests().entry_shown = false;
}

void minimal_window::click_ejecutar() {
  ++stops;
  running_chip->running = false;
  if (on_stop) on_stop();
}

void minimal_window::type_frequencies(double frec_khz, double fr_hz) {
  frec = frec_khz;
  fr = fr_hz;
  in.set_frequencies(frec_khz, fr_hz);
}

machine_pair::machine_pair(const model_machine& start) {
  load(start);
}

void machine_pair::load(const model_machine& start) {
  slow = start;
  for (int i = 0; i < program_words; ++i) {
    const auto at = static_cast<std::size_t>(i);
    set_word(i, start.progmem[at]);
    set_breakpoint(i, start.breakpts[at] != 0);
  }
  load_state(start);
}

void machine_pair::load_state(const model_state& start) {
  static_cast<model_state&>(slow) = start;
  each_field(slow, chip, window, take_over);
  chip.devmodel = row_of(slow).model;
  window.type_frequencies(slow.frec, slow.fr);
  slow_fault = false;
  quick_fault = false;
}

void machine_pair::set_word(int address, int word) {
  slow.progmem[static_cast<std::size_t>(address)] = word;
  chip.progmem[address] = static_cast<std::uint16_t>(word);
  program_.progmem[address] = static_cast<std::uint16_t>(word);
}

void machine_pair::set_breakpoint(int address, bool on) {
  slow.breakpts[static_cast<std::size_t>(address)] = on ? 1 : 0;
  chip.breakpts[address] = on ? 1 : 0;
  program_.breakpts[address] = on ? 1 : 0;
}

void machine_pair::slowly(const std::function<void()>& action) {
  try {
    action();
  } catch (const overflow&) {
    slow_fault = true;
  }
}

void machine_pair::quickly(const std::function<void()>& action) {
  try {
    action();
  } catch (const machine_fault&) {
    quick_fault = true;
  }
}

void machine_pair::act(const machine_action& one) {
  slowly([&] { act_slowly(one); });
  quickly([&] { act_quickly(one); });
}

void machine_pair::act_slowly(const machine_action& one) {
  switch (one.what) {
    case action_kind::step: step(slow); return;
    case action_kind::run:
      slow.running = 1;
      turn(slow);
      slow.running = 0;
      return;
    case action_kind::refresh: regen(slow); return;
    case action_kind::pin: pin_click(slow, one.port, one.bit, one.on); return;
    case action_kind::por: por_click(slow); return;
    case action_kind::mclr: mclr_click(slow); return;
    case action_kind::wdt: wdt_click(slow); return;
    case action_kind::pulse: tocki_click(slow); return;
  }
}

void machine_pair::act_quickly(const machine_action& one) {
  switch (one.what) {
    case action_kind::step: window.runner.step(); return;
    case action_kind::run:
      window.running_chip = &chip;
      window.on_stop = nullptr;
      window.on_yield = [this] {
        chip.running = false;
        return 1;
      };
      chip.running = true;
      window.runner.run();
      return;
    case action_kind::refresh: window.runner.regen(); return;
    case action_kind::pin: window.runner.pin_click(one.port, one.bit, one.on); return;
    case action_kind::por:
      power_on(chip);
      window.runner.regen();
      return;
    case action_kind::mclr:
      mclr_reset(chip);
      window.runner.regen();
      return;
    case action_kind::wdt:
      wdt_reset(chip);
      window.runner.regen();
      return;
    case action_kind::pulse:
      if (tocki_pulse(chip)) window.runner.regen();
      return;
  }
}

bool machine_pair::same() const {
  if (slow_fault != quick_fault || slow.frec != window.frec || slow.fr != window.fr) return false;
  bool equal = true;
  const auto compare = [&equal](const char*, int, const auto& wanted, const auto& got) {
    equal &= static_cast<long>(wanted) == static_cast<long>(got);
  };
  each_field(slow, chip, window, compare);
  return equal && chip.devmodel == row_of(slow).model && same_program(program_, chip);
}

std::string machine_pair::differences() const {
  std::ostringstream out;
  const auto compare = [&out](const char* name, int index, const auto& wanted, const auto& got) {
    if (static_cast<long>(wanted) == static_cast<long>(got)) return;
    out << "\n  " << name;
    if (index >= 0) out << "[" << index << "]";
    out << ": wanted " << static_cast<long>(wanted) << ", got " << static_cast<long>(got);
  };
  compare("fault", -1, slow_fault, quick_fault);
  each_field(slow, chip, window, compare);
  if (chip.devmodel != row_of(slow).model) out << "\n  devmodel is not that of the " << row_of(slow).name;
  if (slow.frec != window.frec) out << "\n  FREC: wanted " << slow.frec << ", got " << window.frec;
  if (slow.fr != window.fr) out << "\n  FR: wanted " << slow.fr << ", got " << window.fr;
  if (!same_program(program_, chip)) out << "\n  program memory or breakpoints were written to";
  return out.str();
}

}  // namespace estructura::second_model
