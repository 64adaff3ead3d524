// How much of the chance-made work one run does: all of it, which takes some ten seconds in a Release build,
// and a hint of it where sanitizers or a Debug build slow every step down, unless ESTRUCTURA_LONG=1 is in
// the environment.
#pragma once

#include <cstdlib>
#include <string_view>

namespace estructura::second_model {

struct amounts {
  long states_per_word;
  long states_per_action;
  long program_steps;
};

inline amounts how_much() {
  constexpr amounts all = {200, 400000, 10'000'000};
#ifdef MODEL_REDUCED
  const char* const asked = std::getenv("ESTRUCTURA_LONG");
  if (asked == nullptr || std::string_view(asked) != "1") return {10, 20000, 600'000};
#endif
  return all;
}

}  // namespace estructura::second_model
