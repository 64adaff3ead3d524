// A person who does anything at all, by chance, at the window without a toolkit; what was done is kept as a
// script, so that the same can be done elsewhere and done again.
//
//   second_model::random_source chance(seed);
//   person someone(chance);
//   const recorded_event one = someone.act();
//   one.script          -> "answer no\n@3 click PA(2)\n@40 click ejecutar\nclick ejecutar\n"
//   one.after           -> the window afterwards
//
// Questions and dialogs are answered by chance too, and a continuous run is interrupted by further gestures
// until one of them stops it.
#pragma once

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "guion/guion.h"
#include "guion/toolkit_free_driver.h"
#include "tests/model/random_source.h"
#include "tests/random/snapshot.h"
#include "tests/support/gestures.h"

namespace estructura::random_events {

/// One event, with all that was answered and done before it was over.
struct recorded_event {
  struct moment {
    std::int64_t yield;  ///< of the run, after which something was done in it
    snapshot seen;       ///< just after that
  };
  std::string script;
  std::vector<moment> during;
  snapshot after;
};

class person {
 public:
  /// The window is just loaded; files are those of the current folder.
  explicit person(second_model::random_source& chance);

  /// What is done before anything else: files to load, a program to run.
  recorded_event prepare();
  recorded_event act();
  [[nodiscard]] bool ended() { return driver_.window().ended(); }

 private:
  /// Chance as the gestures ask for it.
  class luck {
   public:
    explicit luck(second_model::random_source& chance) : chance_(chance) {}
    int below(int limit) { return static_cast<int>(chance_.below(limit)); }
    bool one_in(int times) { return below(times) == 0; }
    std::string text(int longest);

   private:
    second_model::random_source& chance_;
  };

  recorded_event perform(const std::vector<std::string>& statements);
  void answer_question(box kind);
  void answer_dialog(std::string_view proposed);
  int yielded(int passed);
  int pause();

  std::string next_statement();
  std::string as_statement(const support::gesture& one);
  support::gesture source_selection();
  id random_control();
  std::string text_for(id which);
  std::string random_program();

  luck chance_;
  guiones::scripted_desktop desk_;
  guiones::toolkit_free_driver driver_;
  std::ostringstream shown_;
  guiones::guion interpreter_;
  recorded_event now_;
  std::string answers_;
  std::string inside_;       ///< lines of what was done in the run
  std::int64_t yields_ = 0;  ///< of the event
  std::int64_t next_ = 0;    ///< yield after which something is done
  std::int64_t last_ = 0;    ///< yield after which the run is stopped
};

}  // namespace estructura::random_events
