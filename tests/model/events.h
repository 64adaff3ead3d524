// What a person does between two steps: resets, pins, T0CKI pulses, typed registers and frequencies, the
// watchdog's box, breakpoints, instructions typed into the program, another device.
//
//   random_event(chance, two);     // "mclr", and has happened on both; two.faulted() when it ended in a
//   fault
#pragma once

#include <string_view>

#include "tests/model/pair.h"
#include "tests/model/random_source.h"

namespace estructura::second_model {

enum class event_kind { any, pin };

/// The name of what has happened, or would have if the window let it.
std::string_view random_event(random_source& chance, machine_pair& two, event_kind kind = event_kind::any);

}  // namespace estructura::second_model
