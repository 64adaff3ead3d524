#include "core/decoded_program.h"

#include <cstring>

#include "core/variant.h"

namespace estructura {

namespace {

decoded_word decoded_for_run(int word, bool breakpoint) {
  decoded_word result = decoded(word);
  const bool changes_time = result.code == op::option || result.code == op::sleep;
  if (word == unprogrammed) result.code = op::blank;
  if (breakpoint || changes_time) result.code = op::stop;
  result.variant = static_cast<std::uint16_t>(variant_of(result).index());
  return result;
}

}  // namespace

void decoded_program::follow(const chipstate& chip) {
  const bool same = std::memcmp(&progmem_, &chip.progmem, sizeof progmem_) == 0 &&
                    std::memcmp(&breakpts_, &chip.breakpts, sizeof breakpts_) == 0;
  if (same) return;
  progmem_ = chip.progmem;
  breakpts_ = chip.breakpts;
  for (int a = 0; a < program_words; ++a) words_[a] = decoded_for_run(progmem_[a], breakpts_[a] == 1);
}

}  // namespace estructura
