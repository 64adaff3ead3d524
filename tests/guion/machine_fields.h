// The fields of the simulated machine by the names that scripts use behind "chip.".
//
//   machine_field(chip, "regs(3)")                    -> the number in STATUS
//   machine_field(chip, "devmodel.hasportc")          -> true or false
//   set_machine_field(chip, "pc", "0x1FF");
#pragma once

#include <string_view>

#include "core/chipstate.h"
#include "guion/words.h"

namespace estructura::guiones {

/// The value of a field; throws when there is no such field or member.
script_value machine_field(const chipstate& chip, std::string_view name);

/// Stores a value written as a word: `true` or `false` for booleans, a number that fits for the rest.
void set_machine_field(chipstate& chip, std::string_view name, std::string_view written);

/// "regs(3)" cut into its name and its index, -1 when it has none; throws on anything else behind a bracket.
std::string_view name_and_index(std::string_view written, std::int64_t& index);

}  // namespace estructura::guiones
