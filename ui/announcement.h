// What an action changed, as one short Spanish sentence for whoever listens to the window and does not see
// it.
//
//   announcer ear;
//   ear.news(window);               // "", the first look
//   window.click(id::eje1);
//   ear.news(window);               // "PC 000, W 05, sigue MOVWF 08."
//
// Every front end says it where its screen reader speaks by itself. While a program runs nothing is said;
// when it stops, all that changed since it started is. The comparison is a pure function of two readings.
//
// Left out on purpose: what only repeats another value (PCL, INDF, the binary views, the counters that go on
// at every step), what the person has just set (an input pin, a check box: the reader says it anyway), and
// everything when another device is chosen.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "ui/estructura.h"

namespace estructura {

/// A value under the name that it is told by; "dirección 15 banco 1 valor" is one too.
struct spoken_value {
  std::string name;
  std::string text;
};

struct spoken_pin {
  std::string port;
  int bit = 0;
  bool output = false;
  bool high = false;
};

/// What of the views is told when it changes, at one moment.
struct view_reading {
  std::string device;
  bool running = false;
  bool at_breakpoint = false;  ///< a run has just stopped there
  bool asleep = false;
  int pc = 0;
  std::string cycles;
  std::vector<spoken_value> values;  ///< in the order in which they are told
  std::vector<spoken_pin> pins;      ///< port after port
  bounded_array<std::uint16_t, program_words> program{};
  bounded_array<bool, program_words> breakpoints{};
};

[[nodiscard]] view_reading read_views(Estructura& window);

/// The sentence; empty where there is nothing to say.
[[nodiscard]] std::string announcement(const view_reading& before, const view_reading& after);

/// Remembers the last reading.
class announcer {
 public:
  /// To be asked after each action, and as often as one likes during a run.
  [[nodiscard]] std::string news(Estructura& window);

 private:
  view_reading last_;
};

}  // namespace estructura
