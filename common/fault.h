// The fault that ends an action: an index out of bounds or a 16- or 32-bit value that overflows.
//
//   throw_fault("index out of bounds");
//
// Thrown where a value meets its limits, by the helpers that check: bounded_array.h, checked.h and number.h
// of this room, and in core/ the core registers, the catalogue of devices and the periods of a refresh.
// Caught where an event enters the window and where its views are worked out (ui/estructura.cpp), and by the
// reader and the writer of HEX files, which answer with a result of their own. The text is for tests and
// debuggers: the person sees one generic box.
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
