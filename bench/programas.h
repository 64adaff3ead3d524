// The programs that the benchmarks run, as instruction texts with absolute addresses, encoded when asked for.
//
//   const bench_program& mixed = bench_programs()[0];
//   load_program(window, mixed);      // typed in at address 0, a GOTO 000 on the reset vector
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "ui/estructura.h"

namespace estructura {

struct bench_program {
  std::string_view name;
  bool watchdog = false;
  std::vector<std::string_view> lines;
};

std::span<const bench_program> bench_programs();

/// Puts the program into the window of a 16C57 just loaded, and checks WATCHDOG where the program clears it.
void load_program(Estructura& window, const bench_program& program);

}  // namespace estructura
