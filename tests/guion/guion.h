// One script run from its first line to its last or to its first failure.
//
//   escritorio desk;
//   conductor_libre driver(desk);
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

#include "guion/conductor.h"
#include "guion/escritorio.h"
#include "guion/palabras.h"

namespace estructura::guiones {

/// Where and why a script stopped.
struct falla {
  int line = 0;
  std::string what;
};

class guion {
 public:
  /// A run that has yielded so often with no @ statement left is taken to be endless.
  static constexpr std::int64_t most_yields = 50'000'000;

  guion(conductor& driver, escritorio& desk, std::ostream& shown);

  /// Runs the script; the failure that stopped it, or nothing.
  std::optional<falla> run(std::string_view script);

 private:
  struct waiting_statement {
    std::int64_t due;  ///< the yield, counted from the start of the script, after which it is done
    int line;
    std::string text;
  };
  struct verb;
  static const verb verbs[];

  void run_line(int line, std::string_view text);
  /// Does a statement; a failure is kept, not thrown.
  void perform(int line, std::string_view statement);
  void dispatch(renglon& words);
  void fail(const std::string& what);
  int yielded(int passed);
  [[nodiscard]] std::int64_t yields_to_next() const;
  bool do_next_due();

  lugar next_place(renglon& words);
  lugar next_place(renglon& words, kind wanted);
  /// Whether the statement is to be done: the control can be used and the line is there.
  bool can_click_row(const lugar& place, std::int64_t row);

  void click(renglon& words);
  void keyup(renglon& words);
  void dblclick(renglon& words);
  void row(renglon& words);
  void rows(renglon& words);
  void pick(renglon& words);
  void type(renglon& words);
  void select(renglon& words);
  void enter(renglon& words);
  void focus(renglon& words);
  void press(renglon& words);
  void close(renglon& words);
  void clipboard(renglon& words);
  void queue_answers(renglon& words);
  void choose(renglon& words);
  void write(renglon& words);
  void program(renglon& words);
  void poke(renglon& words);
  void refresh(renglon& words);
  void show(renglon& words);
  void expect(renglon& words);

  conductor& driver_;
  escritorio& desk_;
  std::ostream& shown_;
  std::optional<falla> failure_;
  std::vector<waiting_statement> waiting_;  ///< in the order of their lines
  std::int64_t yields_ = 0;                 ///< of the whole script; exact while statements wait
  std::int64_t run_yields_ = 0;             ///< of the run in progress
  int line_ = 0;                            ///< of the statement being done
};

}  // namespace estructura::guiones
