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
  std::string_view t0cki_hz = "0";  ///< as typed into `FR`
};

/// What the benchmarks in real time run: the mixed program first, delay loops, a GOTO to itself.
std::span<const bench_program> bench_programs();

/// Those and one for each further shape of what students write, whose cost is counted in host instructions.
std::span<const bench_program> bench_shapes();

/// Puts the program into the window of a 16C57 just loaded, checks WATCHDOG where the program clears it, and
/// sets the frequency at T0CKI.
void load_program(Estructura& window, const bench_program& program);

}  // namespace estructura
