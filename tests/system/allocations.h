// What this process has asked operator new for since it began: work that another machine does in the same
// number of steps, whatever its speed. Whoever copies the rest of a text for each of its lines asks for so
// much more the longer the text is.
//
//   const std::int64_t before = allocated_bytes();
//
// Under the address sanitizer, which has an operator new of its own, nothing is counted: always 0.
#pragma once

#include <cstdint>

#if defined(__SANITIZE_ADDRESS__)
#define ESTRUCTURA_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ESTRUCTURA_ADDRESS_SANITIZER 1
#endif
#endif

namespace estructura::support {

#ifdef ESTRUCTURA_ADDRESS_SANITIZER
inline constexpr bool sanitized = true;
#else
inline constexpr bool sanitized = false;
#endif

[[nodiscard]] std::int64_t allocated_bytes();

}  // namespace estructura::support
