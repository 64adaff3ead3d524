// The source that the benchmarks time_assembling.
#pragma once

#include <string>

#include "core/chipstate.h"

namespace estructura {

/// 2048 instructions, every line with its label and a comment; each jumps to the label of another.
inline std::string labelled_source() {
  std::string source;
  for (int a = 0; a < program_words; ++a) {
    const std::string number = std::to_string(a);
    source += "L" + number + ":\tGOTO\tL" + std::to_string(a * 7 % 512) + "\t; línea " + number + "\r\n";
  }
  return source;
}

}  // namespace estructura
