#include "ui/announcement.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <utility>

#include "common/text.h"
#include "core/data_memory.h"
#include "files/disassembler.h"
#include "ui/accessible_names.h"
#include "ui/device_texts.h"

namespace estructura {

namespace {

/// More than these are counted, not told: a run may have changed every register there is.
constexpr std::size_t most_told = 10;
constexpr std::string_view run_started = "En marcha.";

// --- reading ---

void read_documents(Estructura& window, view_reading& reading) {
  reading.values.push_back({"fichero ASM", window.look(id::FILASM).text()});
  reading.values.push_back({"fichero HEX", window.look(id::FILHEX).text()});
}

void read_core_registers(Estructura& window, view_reading& reading) {
  const std::vector<std::string>& names = window.look(id::nomre).rows();
  const std::vector<std::string>& shown = window.look(id::RE).rows();
  for (std::size_t i = 0; i < std::min(names.size(), shown.size()); ++i)
    reading.values.push_back({names[i], bare_value(shown[i])});
}

/// STATUS is told by its bits: that of them which changed is what the instruction said.
void read_flags(Estructura& window, view_reading& reading) {
  const auto& names = texts_of(window.chip().devmodel).status_bits;
  const std::string& bits = window.look(id::STATUS).text();
  for (std::size_t i = 0; i < std::min(names.size(), bits.size()); ++i)
    reading.values.push_back({std::string(names[i]), std::string(1, bits[i])});
}

void read_stack(Estructura& window, view_reading& reading) {
  const std::vector<std::string>& shown = window.look(id::PIL).rows();
  reading.values.push_back({"cabeza de la pila", shown[0]});
  reading.values.push_back({"segundo nivel de la pila", shown[1]});
}

/// The register at an address of 00..0F, empty where another value of the reading tells it.
std::string common_name(Estructura& window, int address) {
  const device& model = window.chip().devmodel;
  const auto& ports = texts_of(model).ports;
  switch (address) {
    case reg_indf:
    case reg_pcl:
    case reg_status: return {};
    case reg_tmr0:
    case reg_fsr: return std::string(register_name(model, address));
    case reg_5: return std::string(model.has_port_a() ? ports[0] : register_name(model, address));
    case reg_6: return std::string(ports[1]);
    case reg_7:
      // In the list it is "PC", which is the program counter's name too.
      if (model.hasportc) return std::string(ports[2]);
      break;
    default: break;
  }
  return "dirección " + hexstr(address, 2) + " valor";
}

void read_memory(Estructura& window, view_reading& reading) {
  const std::vector<std::string>& common = window.look(id::MDP).rows();
  for (std::size_t i = 0; i < common.size(); ++i)
    if (std::string name = common_name(window, static_cast<int>(i)); !name.empty())
      reading.values.push_back({std::move(name), bare_value(common[i])});
  for (int bank = 0; bank < declared(id::MD).count; ++bank) {
    const control& list = window.look(id::MD, bank);
    if (!list.visible()) continue;
    for (int i = 0; i < list.count(); ++i)
      reading.values.push_back(
          {"dirección " + hexstr(i + 16, 2) + " banco " + std::to_string(bank) + " valor",
           bare_value(list.rows()[static_cast<std::size_t>(i)])});
  }
}

void read_pins(Estructura& window, view_reading& reading) {
  constexpr std::array ports = {id::PA, id::PB, id::PC};
  const auto& names = texts_of(window.chip().devmodel).ports;
  for (std::size_t port = 0; port < ports.size(); ++port) {
    const std::string name(names[port]);
    for (int bit = 0; bit < declared(ports[port]).count; ++bit) {
      const control& box = window.look(ports[port], bit);
      if (box.visible()) reading.pins.push_back({name, bit, !box.enabled(), box.value()});
    }
  }
}

// --- telling ---

void tell_values(const view_reading& before, const view_reading& after, std::vector<std::string>& told) {
  for (std::size_t i = 0; i < after.values.size(); ++i)
    if (after.values[i].text != before.values[i].text)
      told.push_back(after.values[i].name + " " + after.values[i].text);
}

/// "Puerto B bit 3 a 1", "Puerto B bits 0, 1 y 2 a 0".
std::string pins_text(const std::string& port, const std::vector<int>& bits, bool high) {
  std::string text = port + (bits.size() == 1 ? " bit " : " bits ");
  for (std::size_t i = 0; i < bits.size(); ++i) {
    if (i > 0) text += i + 1 == bits.size() ? " y " : ", ";
    text += std::to_string(bits[i]);
  }
  return text + (high ? " a 1" : " a 0");
}

/// The outputs alone: an input is set by whoever listens.
void tell_pins(const view_reading& before, const view_reading& after, std::vector<std::string>& told) {
  for (std::size_t first = 0, last = 0; first < after.pins.size(); first = last) {
    const std::string& port = after.pins[first].port;
    while (last < after.pins.size() && after.pins[last].port == port) ++last;
    for (const bool high : {true, false}) {
      std::vector<int> bits;
      for (std::size_t i = first; i < last; ++i)
        if (after.pins[i].output && after.pins[i].high == high && before.pins[i].high != high)
          bits.push_back(after.pins[i].bit);
      if (!bits.empty()) told.push_back(pins_text(port, bits, high));
    }
  }
}

template <class Array>
std::vector<int> places_of_change(const Array& before, const Array& after) {
  std::vector<int> places;
  for (int a = 0; a < Array::size(); ++a)
    if (before[a] != after[a]) places.push_back(a);
  return places;
}

std::string instruction_at(const view_reading& reading, int address) {
  if (reading.program[address] == unprogrammed) return "sin programar";
  chipstate chip{};
  chip.progmem = reading.program;
  const std::string line = lineaprog(chip, address);
  return line.substr(line.rfind('\t') + 1);
}

void tell_program(const view_reading& before, const view_reading& after, std::vector<std::string>& told) {
  const std::vector<int> changed = places_of_change(before.program, after.program);
  if (changed.empty()) return;
  if (changed.size() == 1) {
    const int address = changed.front();
    told.push_back("dirección " + hexstr(address, 3) + " " + instruction_at(after, address));
    return;
  }
  const auto words =
      after.program.size() - std::count(after.program.begin(), after.program.end(), unprogrammed);
  told.push_back(words == 0   ? "programa borrado"
                 : words == 1 ? "programa de 1 palabra"
                              : "programa de " + std::to_string(words) + " palabras");
}

void tell_breakpoints(const view_reading& before, const view_reading& after, std::vector<std::string>& told) {
  const std::vector<int> changed = places_of_change(before.breakpoints, after.breakpoints);
  if (changed.size() == 1) {
    const int address = changed.front();
    told.push_back((after.breakpoints[address] ? "punto de parada en " : "sin punto de parada en ") +
                   hexstr(address, 3));
  } else if (!changed.empty()) {
    const auto count = std::count(after.breakpoints.begin(), after.breakpoints.end(), true);
    told.push_back(count == 0 ? "sin puntos de parada" : std::to_string(count) + " puntos de parada");
  }
}

std::string sentence(std::vector<std::string> parts, std::size_t most) {
  if (parts.empty()) return {};
  std::string text;
  const std::size_t shown = parts.size() <= most ? parts.size() : most;
  for (std::size_t i = 0; i < shown; ++i) text += (i == 0 ? "" : ", ") + parts[i];
  if (const std::size_t rest = parts.size() - shown; rest > 0)
    text += " y " + std::to_string(rest) + (rest == 1 ? " cambio más" : " cambios más");
  // Every part starts with a letter or digit of ASCII.
  text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
  return text + ".";
}

}  // namespace

view_reading read_views(Estructura& window) {
  view_reading reading;
  window.bring_up_to_date();
  reading.device = window.look(id::PIC).text();
  reading.running = window.chip().running;
  reading.at_breakpoint = window.chip().resumebp;
  reading.asleep = window.chip().sleeping;
  reading.pc = window.chip().cpu.pc;
  reading.cycles = window.look(id::ciclos).text();
  read_documents(window, reading);
  read_core_registers(window, reading);
  read_flags(window, reading);
  read_stack(window, reading);
  read_memory(window, reading);
  read_pins(window, reading);
  reading.program = window.chip().progmem;
  for (int a = 0; a < program_words; ++a) reading.breakpoints[a] = window.chip().breakpts[a] != 0;
  return reading;
}

std::string announcement(const view_reading& before, const view_reading& after) {
  if (after.running) return before.running ? std::string() : std::string(run_started);
  // The other device has other registers; nothing here is the former thing changed.
  if (before.device != after.device || before.values.size() != after.values.size() ||
      before.pins.size() != after.pins.size())
    return {};
  std::vector<std::string> told;
  // From one breakpoint to the next, or round to the same, something was executed.
  if (after.at_breakpoint && (!before.at_breakpoint || before.cycles != after.cycles))
    told.emplace_back("parado en un punto de parada");
  else if (before.running)
    told.emplace_back("parado");
  if (before.asleep != after.asleep) told.emplace_back(after.asleep ? "dormido" : "despierto");
  tell_program(before, after, told);
  tell_breakpoints(before, after, told);
  tell_values(before, after, told);
  tell_pins(before, after, told);
  if (told.empty() && before.cycles != after.cycles) told.push_back("ciclos " + after.cycles);
  // What the program list puts before the eyes of whoever sees it.
  if (before.pc != after.pc) told.push_back("sigue " + instruction_at(after, after.pc));
  return sentence(std::move(told), most_told);
}

std::string announcer::news(Estructura& window) {
  const bool first = last_.device.empty();
  if (window.chip().running && !first) {
    // The values stay those before the run, with which they are compared at its end.
    return std::exchange(last_.running, true) ? std::string() : std::string(run_started);
  }
  view_reading now = read_views(window);
  std::string text = first ? std::string() : announcement(last_, now);
  last_ = std::move(now);
  return text;
}

}  // namespace estructura
