// States from which to try an action: any that a person and a program can bring about, with the edges (masks,
// ratios, last words, counters about to overflow) far more often than chance would have them.
//
//   azar chance(seed);
//   estado start = random_state(chance, 6);     // a 12C508 in the midst of something
#pragma once

#include "tests/modelo/azar.h"
#include "tests/modelo/modelo.h"

namespace estructura::modelo {

[[nodiscard]] estado random_state(azar& chance, long device);

/// A word that is mostly an instruction, seldom SLEEP.
[[nodiscard]] int random_word(azar& chance);

}  // namespace estructura::modelo
