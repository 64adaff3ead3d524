// Times for ratios between two things in the same run: what else the machine does is no matter to them.
//
//   state.counters["growth"] = seconds_of(twice) / seconds_of(once);
#pragma once

#include <algorithm>
#include <ctime>
#include <limits>

namespace estructura {

/// The least processor time that something took in a few attempts.
template <class Action>
double seconds_of(const Action& action) {
  constexpr int attempts = 3;
  std::clock_t least = std::numeric_limits<std::clock_t>::max();
  for (int i = 0; i < attempts; ++i) {
    const std::clock_t start = std::clock();
    action();
    least = std::min(least, std::clock() - start);
  }
  return static_cast<double>(std::max<std::clock_t>(least, 1)) / CLOCKS_PER_SEC;
}

}  // namespace estructura
