// What a person does between two steps: resets, pins, T0CKI pulses, typed registers and frequencies, the
// watchdog's box, breakpoints, instructions typed into the program, another device.
//
//   random_event(chance, two);     // the same on both machines; two.faulted() when it ended in a fault
#pragma once

#include "tests/modelo/azar.h"
#include "tests/modelo/pareja.h"

namespace estructura::modelo {

enum class suceso { any, pin };

void random_event(azar& chance, pareja& two, suceso kind = suceso::any);

}  // namespace estructura::modelo
