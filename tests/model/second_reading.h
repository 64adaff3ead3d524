// What the second machine makes of a state of the quick one, for tests of single rules.
//
//   second_model::second_reading second;
//   chipstate wanted = second.after(chip, [](auto& m) { second_model::execinst(m, 0x1E8); });    // ADDWF 08
//
// The program is not taken over unless it is asked for: most rules do not look at it.
#pragma once

#include <stdexcept>
#include <type_traits>

#include "core/chipstate.h"
#include "core/devices.h"
#include "tests/model/machine_fields.h"
#include "tests/model/model.h"
#include "tests/model/rules.h"

namespace estructura::second_model {

class second_reading {
 public:
  template <class Action>
  chipstate after(const chipstate& chip, Action action) {
    load(chip);
    action(machine);
    chipstate wanted = chip;
    each_machine_field(machine, wanted, [](const char*, int, const auto& slow, auto& quick) {
      quick = static_cast<std::remove_reference_t<decltype(quick)>>(slow);
    });
    return wanted;
  }

  void load(const chipstate& chip) {
    machine.device = row_of(chip.devmodel);
    each_machine_field(machine, chip, [](const char*, int, auto& slow, const auto& quick) {
      slow = static_cast<long>(quick);
    });
  }
  void load_program(const chipstate& chip) {
    for (int address = 0; address < program_words; ++address)
      machine.progmem[static_cast<std::size_t>(address)] = chip.progmem[address];
  }

  model_machine machine;

 private:
  static long row_of(const device& model) {
    for (std::size_t row = 0; row < catalogue.size(); ++row)
      if (catalogue[row].model == model) return static_cast<long>(row);
    throw std::logic_error("a machine of no device");
  }
};

}  // namespace estructura::second_model
