#include "guion/machine_fields.h"

#include <limits>
#include <string>
#include <type_traits>

namespace estructura::guiones {

namespace {

[[noreturn]] void no_such_field(std::string_view name) {
  throw script_error("no such field of the machine: chip." + std::string(name));
}

/// Hands the field of a name to `use`, whatever its type. One list serves looking and storing.
template <class Chip, class Use>
void with_field(Chip& chip, std::string_view written, const Use& use) {
  std::int64_t index = -1;
  const std::string_view name = name_and_index(written, index);
  if (index >= 0) {
    const auto member = [&](auto& cells) {
      if (index >= cells.size()) throw script_error("no such member: chip." + std::string(written));
      use(cells[static_cast<int>(index)]);
    };
    if (name == "regs") return member(chip.regs);
    if (name == "bankregs") return member(chip.bankregs);
    if (name == "stack") return member(chip.stack);
    if (name == "progmem") return member(chip.progmem);
    if (name == "breakpts") return member(chip.breakpts);
    no_such_field(written);
  }
  if (name == "pc") return use(chip.cpu.pc);
  if (name == "w") return use(chip.cpu.w);
  if (name == "option") return use(chip.cpu.option);
  if (name == "trisa") return use(chip.cpu.trisa);
  if (name == "trisb") return use(chip.cpu.trisb);
  if (name == "trisc") return use(chip.cpu.trisc);
  if (name == "pdlatch") return use(chip.pdlatch);
  if (name == "tolatch") return use(chip.tolatch);
  if (name == "gpwuflatch") return use(chip.gpwuflatch);
  if (name == "sleeping") return use(chip.sleeping);
  if (name == "pina") return use(chip.pina);
  if (name == "pinb") return use(chip.pinb);
  if (name == "pinc") return use(chip.pinc);
  if (name == "cycles") return use(chip.cycles);
  if (name == "wdtcount") return use(chip.wdtcount);
  if (name == "wdtlimit") return use(chip.wdtlimit);
  if (name == "prescount") return use(chip.prescount);
  if (name == "tockicount") return use(chip.tockicount);
  if (name == "tockiperiod") return use(chip.tockiperiod);
  if (name == "tockifreq") return use(chip.tockifreq);
  if (name == "firststep") return use(chip.firststep);
  if (name == "running") return use(chip.running);
  if (name == "resumebp") return use(chip.resumebp);
  if (name == "devmodel.progmask") return use(chip.devmodel.progmask);
  if (name == "devmodel.datamask") return use(chip.devmodel.datamask);
  if (name == "devmodel.optmask") return use(chip.devmodel.optmask);
  if (name == "devmodel.mask5") return use(chip.devmodel.mask5);
  if (name == "devmodel.mask6") return use(chip.devmodel.mask6);
  if (name == "devmodel.hasportc") return use(chip.devmodel.hasportc);
  if (name == "devmodel.is16c5x") return use(chip.devmodel.is16c5x);
  no_such_field(written);
}

}  // namespace

std::string_view name_and_index(std::string_view written, std::int64_t& index) {
  index = -1;
  const std::size_t open = written.find('(');
  if (open == std::string_view::npos) return written;
  const bool closed = written.ends_with(')');
  const auto number =
      closed ? read_number(written.substr(open + 1, written.size() - open - 2)) : std::nullopt;
  if (!number || *number < 0) throw script_error("no such index: " + std::string(written));
  index = *number;
  return written.substr(0, open);
}

script_value machine_field(const chipstate& chip, std::string_view name) {
  script_value value;
  with_field(chip, name, [&](const auto& field) {
    if constexpr (std::is_same_v<std::remove_cvref_t<decltype(field)>, bool>)
      value = truth_value(field);
    else
      value = number_value(field);
  });
  return value;
}

void set_machine_field(chipstate& chip, std::string_view name, std::string_view written) {
  with_field(chip, name, [&](auto& field) {
    using type = std::remove_cvref_t<decltype(field)>;
    if constexpr (std::is_same_v<type, bool>) {
      if (written != "true" && written != "false")
        throw script_error("true or false is wanted: " + std::string(written));
      field = written == "true";
    } else {
      const auto number = read_number(written);
      if (!number) throw script_error("no number: " + std::string(written));
      using limits = std::numeric_limits<type>;
      if (*number < limits::min() || *number > limits::max())
        throw script_error("the field does not hold this number: " + std::string(written));
      field = static_cast<type>(*number);
    }
  });
}

}  // namespace estructura::guiones
