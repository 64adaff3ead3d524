// The step button and continuous execution: what they ask of the window, breakpoints, the stop, and how often
// a turn is asked for.
#include "ui/run_control.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "core/resets.h"
#include "tests/support/differences.h"
#include "tests/unit/core/machine.h"

namespace estructura {
namespace {

using support::machine;

// A screen for runs: notes the cycle count at every turn and at the run button's click, answers each turn
// from a list (its last entry again and again), and stops the run at a turn of its own choice.
class runner final : public run_listener {
 public:
  explicit runner(chipstate& chip, std::vector<int> answers = {1})
      : control(chip, in, *this), chip_(chip), answers_(std::move(answers)) {
    control.requests().configuration_open = false;
  }
  int yield() override {
    turns.push_back(chip_.cycles);
    const std::size_t turn = turns.size();
    if (at_turn) at_turn(static_cast<int>(turn));
    if (turn >= 10'000) {
      ADD_FAILURE() << "the run was not stopped";
      chip_.running = false;
    }
    return answers_[std::min(turn, answers_.size()) - 1];
  }
  void click_ejecutar() override {
    ++clicks;
    chip_.running = false;
  }
  void warn_watchdog() override { ++warnings; }

  inputs in;
  run_control control;
  std::function<void(int)> at_turn;
  std::vector<std::int32_t> turns;
  int clicks = 0;
  int warnings = 0;

 private:
  chipstate& chip_;
  std::vector<int> answers_;
};

// NOPs from 000 on and a jump back at 00F, one cycle each but for the jump.
chipstate looping() {
  chipstate chip = machine("16C57");
  for (int a = 0; a < 15; ++a) chip.progmem[a] = 0x000;
  chip.progmem[15] = 0xA00;
  chip.cpu.pc = 0;
  chip.cycles = 0;
  chip.running = true;
  return chip;
}

TEST(run, stops_after_the_step_in_whose_turn_running_fell) {
  chipstate chip = looping();
  runner view(chip);
  view.at_turn = [&](int turn) { chip.running = turn < 5; };
  view.control.run();
  EXPECT_EQ(chip.cpu.pc, 5);
  EXPECT_EQ(chip.cycles, 5);
  EXPECT_EQ(view.clicks, 0);
}

TEST(run, asks_after_the_first_step_and_then_after_as_many_as_it_was_told) {
  struct row {
    std::vector<int> answers;
    std::vector<std::int32_t> turns;
  };
  const std::vector<row> rows = {
      {{1}, {1, 2, 3, 4, 5}}, {{3}, {1, 4, 7, 10, 13}}, {{2, 1, 5}, {1, 3, 4, 9, 14}},
      {{0}, {1, 2, 3, 4, 5}}, {{-4}, {1, 2, 3, 4, 5}},
  };
  for (const row& r : rows) {
    chipstate chip = looping();
    runner view(chip, r.answers);
    view.at_turn = [&](int turn) { chip.running = turn < 5; };
    view.control.run();
    EXPECT_EQ(view.turns, r.turns);
  }
}

TEST(run, started_anew_asks_after_its_first_step_again) {
  chipstate chip = looping();
  runner view(chip, {1000});
  chip.breakpts[2] = 1;
  view.control.run();
  EXPECT_EQ(view.turns, (std::vector<std::int32_t>{1}));
  chip.running = true;
  chip.breakpts[4] = 1;
  view.control.run();
  EXPECT_EQ(view.turns, (std::vector<std::int32_t>{1, 3}));
}

TEST(run, at_a_breakpoint_clicks_the_run_button_and_executes_nothing) {
  chipstate chip = looping();
  chip.breakpts[3] = 1;
  runner view(chip);
  view.control.run();
  EXPECT_EQ(chip.cpu.pc, 3);
  EXPECT_EQ(chip.cycles, 3);
  EXPECT_TRUE(chip.resumebp);
  EXPECT_FALSE(chip.running);
  EXPECT_EQ(view.clicks, 1);
  EXPECT_EQ(view.turns.size(), 3U);
}

TEST(run, goes_on_from_the_breakpoint_that_stopped_it) {
  chipstate chip = looping();
  chip.breakpts[3] = 1;
  runner view(chip);
  view.control.run();
  chip.running = true;
  view.control.run();
  EXPECT_EQ(chip.cpu.pc, 3);
  EXPECT_EQ(chip.cycles, 3 + 17);
  EXPECT_EQ(view.clicks, 2);
}

TEST(run, with_two_breakpoints_in_a_row_executes_one_instruction_a_press) {
  chipstate chip = looping();
  chip.breakpts[3] = chip.breakpts[4] = 1;
  runner view(chip);
  view.control.run();
  EXPECT_EQ(chip.cpu.pc, 3);
  chip.running = true;
  view.control.run();
  EXPECT_EQ(chip.cpu.pc, 4);
  EXPECT_EQ(chip.cycles, 4);
}

TEST(run, on_a_breakpoint_that_was_stepped_onto_stops_at_once_and_then_proceeds) {
  chipstate chip = looping();
  chip.breakpts[0] = 1;
  runner view(chip);
  view.control.run();
  EXPECT_EQ(chip.cycles, 0);
  EXPECT_TRUE(view.turns.empty());
  chip.running = true;
  view.control.run();
  EXPECT_EQ(chip.cycles, 17);
}

TEST(run, looks_at_the_one_mark_of_a_breakpoint) {
  chipstate chip = looping();
  chip.breakpts[3] = 2;  // no breakpoint: those are 1
  runner view(chip);
  view.at_turn = [&](int turn) { chip.running = turn < 6; };
  view.control.run();
  EXPECT_EQ(chip.cpu.pc, 6);
}

TEST(run, stops_at_a_breakpoint_on_the_reset_vector_after_a_reset_in_the_run) {
  chipstate chip = looping();
  chip.breakpts[2047] = 1;
  runner view(chip);
  view.at_turn = [&](int turn) {
    if (turn == 4) mclr_reset(chip);
  };
  view.control.run();
  EXPECT_EQ(chip.cpu.pc, 2047);
  EXPECT_EQ(chip.cycles, 0);
  EXPECT_EQ(view.turns.size(), 4U);
  EXPECT_EQ(view.clicks, 1);
}

TEST(run, asleep_keeps_taking_turns_until_a_reset_lets_it_go_on) {
  chipstate chip = looping();
  chip.progmem[2] = 0x003;
  chip.progmem[2047] = 0x000;
  runner view(chip);
  view.at_turn = [&](int turn) {
    if (turn == 50) {
      EXPECT_TRUE(chip.sleeping);
      EXPECT_EQ(chip.cycles, 3);
      wdt_reset(chip);
    }
    chip.running = turn < 52;
  };
  view.control.run();
  EXPECT_FALSE(chip.sleeping);
  EXPECT_EQ(chip.cycles, 3);  // the first cycle after the reset and two instructions
  EXPECT_EQ(chip.cpu.pc, 1);
}

TEST(run, carries_on_after_a_watchdog_time_out_from_the_reset_vector) {
  chipstate chip = looping();
  chip.wdtcount = 0;
  chip.wdtlimit = 10;
  runner view(chip);
  view.in.watchdog_on = true;
  view.in.set_frequencies(10.0 / 4.5 / 128, 0);  // ten cycles with the divisor of OPTION as reset
  view.at_turn = [&](int turn) {
    if (turn == 10) {
      EXPECT_EQ(chip.cpu.pc, 2047);
      EXPECT_EQ(chip.tolatch, 0);
    }
    chip.running = turn < 12;
  };
  view.control.run();
  EXPECT_EQ(view.warnings, 1);
  EXPECT_EQ(chip.cpu.pc, 1);
}

TEST(run, counts_from_0_at_once_when_the_cycles_are_cleared_in_a_turn) {
  chipstate chip = looping();
  runner view(chip);
  view.at_turn = [&](int turn) {
    if (turn == 5) chip.cycles = 0;
    chip.running = turn < 8;
  };
  view.control.run();
  EXPECT_EQ(chip.cycles, 3);
}

TEST(run, lets_a_fault_through_with_the_run_still_marked) {
  chipstate chip = looping();
  chip.cpu.option = 0x00;
  chip.prescount = 32765;
  runner view(chip);
  EXPECT_TRUE(support::faults([&] { view.control.run(); }));
  EXPECT_EQ(chip.cpu.pc, 3);
  EXPECT_EQ(view.turns.size(), 2U);
  EXPECT_TRUE(chip.running);
}

TEST(run, executes_the_same_as_single_steps) {
  chipstate run = looping();
  run.progmem[7] = 0x2A9;
  chipstate stepped = run;
  runner view(run);
  view.at_turn = [&](int turn) { run.running = turn < 1000; };
  view.control.run();
  support::quiet other;
  for (int i = 0; i < 1000; ++i) step(stepped, other);
  stepped.running = false;
  EXPECT_EQ(support::differences(stepped, run), "");
}

// A window that writes down what the machine asks of it, in order, and where `pc` stood.
class noting final : public run_listener {
 public:
  explicit noting(chipstate& chip) : control(chip, in, *this), chip_(chip) {
    control.requests().configuration_open = false;
  }
  void lock_configuration() override {
    control.requests().configuration_open = false;
    note("lock");
  }
  void clear_entry() override {
    control.requests().entry_shown = false;
    note("clear");
  }
  void show_whole_step() override { note("show"); }
  void warn_watchdog() override { note("watchdog"); }
  void guard_focus() override { note("guard"); }

  inputs in;
  run_control control;
  std::vector<std::string> asked;

 private:
  void note(const char* what) { asked.push_back(std::string(what) + " " + std::to_string(chip_.cpu.pc)); }
  const chipstate& chip_;
};

using asked = std::vector<std::string>;

TEST(step_button, asleep_only_clears_the_entry_and_locks_the_configuration) {
  chipstate chip = looping();
  chip.sleeping = true;
  noting view(chip);
  view.control.requests().configuration_open = true;
  view.control.requests().entry_shown = true;
  view.control.step();
  EXPECT_EQ(view.asked, (asked{"clear 0", "lock 0"}));
}

TEST(step_button, locks_the_configuration_only_while_it_is_open) {
  chipstate chip = looping();
  noting view(chip);
  view.control.requests().configuration_open = true;
  view.control.step();
  view.control.step();
  EXPECT_EQ(view.asked, (asked{"lock 0"}));
}

TEST(step_button, has_what_there_is_to_see_shown_before_a_step_that_may_run_the_watchdog_out) {
  struct row {
    const char* rule;
    int word;
    bool first;
    std::int32_t limit;
    asked wanted;
  };
  // Cycles of the step: one, of INCFSZ PCL three, and one more after a reset.
  const std::vector<row> rows = {
      {"NOP in time", 0x000, false, 5, {}},
      {"NOP at the limit", 0x000, false, 1, {"show 14", "watchdog 15"}},
      {"INCFSZ PCL that skips and is written", 0x3E2, false, 3, {"show 14", "watchdog 0"}},
      {"the same after a reset", 0x3E2, true, 4, {"show 14", "watchdog 0"}},
  };
  for (const row& r : rows) {
    chipstate chip = looping();
    chip.cpu.pc = 14;
    // Behind it PCL reads FF.
    if (r.word != 0) chip.cpu.pc = 0xFE;
    chip.progmem[chip.cpu.pc] = static_cast<std::uint16_t>(r.word);
    chip.firststep = r.first;
    chip.wdtcount = 0;
    chip.wdtlimit = r.limit;
    noting view(chip);
    view.in.watchdog_on = true;
    asked wanted = r.wanted;
    if (r.word != 0) wanted = {"show 254", "watchdog 0"};
    view.control.step();
    EXPECT_EQ(view.asked, wanted) << r.rule;
  }
}

TEST(run, hands_the_focus_on_behind_the_very_step_that_closes_a_control) {
  chipstate chip = looping();
  chip.progmem[5] = 0x006;  // TRIS 6
  runner view(chip, {1000});
  struct guard final : run_listener {
    explicit guard(chipstate& c) : control(c, in, *this), chip(c) {
      control.requests().configuration_open = false;
      control.requests().focus_at_stake = true;
    }
    void guard_focus() override {
      if (chip.cpu.trisb == 0x5A && closed_at < 0) closed_at = chip.cpu.pc;
    }
    int yield() override {
      chip.running = ++turns < 2;
      return 10;
    }
    inputs in;
    run_control control;
    chipstate& chip;
    int closed_at = -1;
    int turns = 0;
  } guarding(chip);
  guarding.control.run();
  EXPECT_EQ(guarding.closed_at, 6);
}

}  // namespace
}  // namespace estructura
