// From a state that shows a difference to the smallest one that still does, and its account for a person.
//
//   test_case one{two.slow, {action_kind::step}};      // the machine before the action
//   if (differs(one)) FAIL() << explain(reduce(one));
//
// A field goes back to its neutral value (mostly 0) when the difference survives that; what remains is
// needed.
#pragma once

#include <string>

#include "tests/model/pair.h"

namespace estructura::second_model {

struct test_case {
  model_machine before;
  machine_action action;
};

[[nodiscard]] bool differs(const test_case& one);
[[nodiscard]] test_case reduce(test_case one);
/// Device, disassembled instruction at the program counter, and what is not neutral.
[[nodiscard]] std::string describe(const model_machine& one);
/// The action, the state before it, and each differing field.
[[nodiscard]] std::string explain(const test_case& one);

}  // namespace estructura::second_model
