// The fault that ends an action: an index out of bounds or a 16- or 32-bit value that overflows.
//
//   throw_fault("índice 2048 fuera de 0..2047");
//
// Thrown only by the bounded array and the checked arithmetic of this room; caught only where an event enters
// the window. The text is for tests and debuggers: the person sees one generic box.
#pragma once

#include <stdexcept>

namespace estructura {

class machine_fault : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Throws `machine_fault`. Out of line, so that a check costs its caller one compare and a jump never taken.
[[noreturn]] void throw_fault(const char* what);

}  // namespace estructura
