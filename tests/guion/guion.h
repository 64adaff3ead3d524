// One script run from its first line to its last or to its first failure.
//
//   scripted_desktop desk;
//   toolkit_free_driver driver(desk);
//   guion script(driver, desk, std::cout);
//   if (const auto failure = script.run("click eje1\nexpect chip.cycles 2\n"))
//     std::cerr << failure->line << ": " << failure->what << '\n';
//
// A statement behind @N is kept, and done inside the yield it waits for. A failure there cannot be thrown
// through the run that yields (it may come from deep within a toolkit): it is kept too, and the run is
// stopped.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "guion/scripted_desktop.h"
#include "guion/window_driver.h"
#include "guion/words.h"

namespace estructura::guiones {

/// Where and why a script stopped.
struct script_failure {
  int line = 0;
  std::string what;
};

class guion {
 public:
  /// A run that has yielded so often with no @ statement left is taken to be endless.
  static constexpr std::int64_t most_yields = 50'000'000;

  guion(window_driver& driver, scripted_desktop& desk, std::ostream& shown);

  /// Runs the script; the failure that stopped it, or nothing.
  std::optional<script_failure> run(std::string_view script);

 private:
  struct waiting_statement {
    std::int64_t at_yield;  ///< the yield, counted from the start of the script, after which it is done
    int line;
    std::string text;
  };
  struct verb;
  static const verb verbs[];

  void run_line(int line, std::string_view text);
  /// Does a statement; a failure is kept, not thrown.
  void perform(int line, std::string_view statement);
  void dispatch(script_line& words);
  void fail(const std::string& what);
  int yielded(int passed);
  [[nodiscard]] std::int64_t yields_to_next() const;
  bool do_next_waiting();

  script_place next_place(script_line& words);
  script_place next_place(script_line& words, kind wanted);
  /// Whether the statement is to be done: the control can be used and the line is there.
  bool can_click_row(const script_place& place, std::int64_t row);

  void click(script_line& words);
  void keyup(script_line& words);
  void dblclick(script_line& words);
  void row(script_line& words);
  void rows(script_line& words);
  void pick(script_line& words);
  void type(script_line& words);
  void select(script_line& words);
  void enter(script_line& words);
  void focus(script_line& words);
  void press(script_line& words);
  void close(script_line& words);
  void clipboard(script_line& words);
  void queue_answers(script_line& words);
  void choose(script_line& words);
  void write(script_line& words);
  void program(script_line& words);
  void poke(script_line& words);
  void refresh(script_line& words);
  void show(script_line& words);
  void expect(script_line& words);

  window_driver& driver_;
  scripted_desktop& desk_;
  std::ostream& shown_;
  std::optional<script_failure> failure_;
  std::vector<waiting_statement> waiting_;  ///< in the order of their lines
  std::int64_t yields_ = 0;                 ///< of the whole script; exact while statements wait
  std::int64_t run_yields_ = 0;             ///< of the run in progress
  int line_ = 0;                            ///< of the statement being done
};

}  // namespace estructura::guiones
