// Everything that can be seen of a window at one moment, and where two windows differ.
//
//   const snapshot wanted = take_snapshot(free_driver, free_desk);
//   const snapshot got = take_snapshot(window_driver, window_desk);
//   if (const auto what = difference_between(wanted, got)) std::cerr << what->name << '\n';
//
// The machine is part of it, and what was asked and sounded since the desk's lists were last emptied. Of a
// window that has closed only the machine, the documents and the boxes are compared: nobody sees its
// controls.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "guion/scripted_desktop.h"
#include "guion/window_driver.h"

namespace estructura::random_events {

struct snapshot {
  chipstate chip;
  document hex;
  document source;
  bool ended = false;
  std::string focus;
  std::string clipboard;
  std::vector<guiones::appearance> controls;  ///< in the order of Estructura::look_all()
  map_view map;
  std::vector<std::string> boxes;
  std::vector<std::string> dialogs;
  int beeps = 0;
};

/// What a difference is called in a guion, and both values as it writes them. The name is empty for what no
/// `expect` can look at.
struct difference {
  std::string name;
  std::string wanted;
  std::string got;
};

snapshot take_snapshot(guiones::in_process_driver& driver, const guiones::scripted_desktop& desk);

/// The first difference, if there is one.
std::optional<difference> difference_between(const snapshot& wanted, const snapshot& got);

}  // namespace estructura::random_events
