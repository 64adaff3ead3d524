// States from which to try an action: any that a person and a program can bring about, with the edges (masks,
// ratios, last words, counters about to overflow) far more often than chance would have them.
//
//   random_source chance(seed);
//   model_state start = random_state(chance, default_device);     // a 16C57 in the midst of something
#pragma once

#include "tests/model/model.h"
#include "tests/model/random_source.h"

namespace estructura::second_model {

[[nodiscard]] model_state random_state(random_source& chance, long device);

/// A word that is mostly an instruction, seldom SLEEP.
[[nodiscard]] int random_word(random_source& chance);

}  // namespace estructura::second_model
