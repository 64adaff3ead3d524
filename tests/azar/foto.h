// Everything that can be seen of a window at one moment, and where two windows differ.
//
//   const foto wanted = toma(free_driver, free_desk);
//   const foto got = toma(window_driver, window_desk);
//   if (const auto what = diferencia_entre(wanted, got)) std::cerr << what->name << '\n';
//
// The machine is part of it, and what was asked and sounded since the desk's lists were last emptied. Of a
// window that has closed only the machine, the documents and the boxes are compared: nobody sees its
// controls.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "guion/conductor.h"
#include "guion/escritorio.h"

namespace estructura::azar {

struct foto {
  chipstate chip;
  document hex;
  document source;
  bool ended = false;
  std::string focus;
  std::string clipboard;
  std::vector<guiones::aspecto> controls;  ///< in the order of Estructura::look_all()
  map_view map;
  std::vector<std::string> boxes;
  std::vector<std::string> dialogs;
  int beeps = 0;
};

/// What a difference is called in a guion, and both values as it writes them. The name is empty for what no
/// `expect` can look at.
struct diferencia {
  std::string name;
  std::string wanted;
  std::string got;
};

foto toma(guiones::in_process_conductor& driver, const guiones::escritorio& desk);

/// The first difference, if there is one.
std::optional<diferencia> diferencia_entre(const foto& wanted, const foto& got);

}  // namespace estructura::azar
