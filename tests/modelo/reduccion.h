// From a state that shows a difference to the smallest one that still does, and its account for a person.
//
//   caso one{two.slow, {accion::paso}};      // the machine before the action
//   if (differs(one)) FAIL() << explain(reduce(one));
//
// A field goes back to its neutral value (mostly 0) when the difference survives that; what remains is
// needed.
#pragma once

#include <string>

#include "tests/modelo/pareja.h"

namespace estructura::modelo {

struct caso {
  maquina before;
  acto action;
};

[[nodiscard]] bool differs(const caso& one);
[[nodiscard]] caso reduce(caso one);
/// Device, disassembled instruction at the program counter, and what is not neutral.
[[nodiscard]] std::string describe(const maquina& one);
/// The action, the state before it, and each differing field.
[[nodiscard]] std::string explain(const caso& one);

}  // namespace estructura::modelo
