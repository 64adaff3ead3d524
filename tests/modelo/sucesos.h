// What a person does between two steps: resets, pins, T0CKI pulses, typed registers and frequencies, the
// watchdog's box, breakpoints, instructions typed into the program, another device.
//
//   random_event(chance, two);     // "mclr", and has happened on both; two.faulted() when it ended in a
//   fault
#pragma once

#include <string_view>

#include "tests/modelo/azar.h"
#include "tests/modelo/pareja.h"

namespace estructura::modelo {

enum class suceso { any, pin };

/// The name of what has happened, or would have if the window let it.
std::string_view random_event(azar& chance, pareja& two, suceso kind = suceso::any);

}  // namespace estructura::modelo
