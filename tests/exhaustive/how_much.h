// How much of a space is walked: all of it, or where the build is slow (sanitizers, debug, coverage) a part
// that still meets every class of values.
//
//   for (int value = 0; value <= 0xFFFF; value += value < dense ? 1 : stride) ...
#pragma once

namespace estructura::support {

#ifdef SPACES_REDUCED
inline constexpr bool whole_space = false;
inline constexpr int dense = 0x110;
inline constexpr int stride = 211;  // a prime, so that no bit pattern is met alone
#else
inline constexpr bool whole_space = true;
inline constexpr int dense = 0;
inline constexpr int stride = 1;
#endif

}  // namespace estructura::support
