// How much of the chance-made work one run does: a share that fits every check, all of it with
// ESTRUCTURA_LARGO=1 in the environment, and a hint of it where sanitizers slow every step down.
#pragma once

#include <cstdlib>
#include <string_view>

namespace estructura::modelo {

struct cantidades {
  long states_per_word;
  long states_per_action;
  long program_steps;
};

inline cantidades how_much() {
  const char* const asked = std::getenv("ESTRUCTURA_LARGO");
  if (asked != nullptr && std::string_view(asked) == "1") return {200, 400000, 10'000'000};
#ifdef MODELO_REDUCIDO
  return {10, 20000, 600'000};
#else
  return {80, 100000, 3'000'000};
#endif
}

}  // namespace estructura::modelo
