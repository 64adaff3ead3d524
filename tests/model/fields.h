// The fields of the two machines, and those of the windows that they stand in.
//
//   each_field(slow, chip, window, [](const char* name, int index, auto& slow, auto& quick) { ... });
#pragma once

#include "tests/model/machine_fields.h"
#include "tests/model/pair.h"

namespace estructura::second_model {

template <class Slow, class Chip, class Window, class F>
void each_field(Slow& m, Chip& chip, Window& window, F&& f) {
  each_machine_field(m, chip, f);
  f("WATCHDOG enabled", -1, m.config_open, window.runner.requests().configuration_open);
  f("WATCHDOG checked", -1, m.watchdog, window.in.watchdog_on);
  f("INS shown", -1, m.entry_shown, window.runner.requests().entry_shown);
  each_cell("pin boxes of port", m.boxes, window.in.pin_boxes, f);
  f("views pending", -1, m.views, window.runner.seen().refreshed);
  f("row chosen", -1, m.row, window.runner.seen().arrived);
  f("row in list", -1, m.row_in_list, window.runner.seen().inside);
  f("row clicked", -1, m.clicked, window.runner.seen().inner);
  f("marker", -1, m.marker, window.runner.seen().marker);
  f("marker drawn", -1, m.marker_drawn, window.runner.seen().marked);
  f("configuration locked, times", -1, m.locks, window.locks);
  f("watchdog warnings", -1, m.warnings, window.warnings);
  f("stops at breakpoints", -1, m.stops, window.stops);
}

}  // namespace estructura::second_model
