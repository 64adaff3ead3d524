// The fields of the simulated machine by the names that scripts use behind "chip.".
//
//   campo(chip, "regs(3)")                    -> the number in STATUS
//   campo(chip, "devmodel.hasportc")          -> true or false
//   pon_campo(chip, "pc", "0x1FF");
#pragma once

#include <string_view>

#include "core/chipstate.h"
#include "guion/palabras.h"

namespace estructura::guiones {

/// The value of a field; throws when there is no such field or member.
valor campo(const chipstate& chip, std::string_view name);

/// Stores a value written as a word: `true` or `false` for booleans, a number that fits for the rest.
void pon_campo(chipstate& chip, std::string_view name, std::string_view written);

/// "regs(3)" cut into its name and its index, -1 when it has none; throws on anything else behind a bracket.
std::string_view nombre_e_indice(std::string_view written, std::int64_t& index);

}  // namespace estructura::guiones
