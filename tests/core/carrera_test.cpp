// Continuous execution: breakpoints, the stop, and how often the screen is asked for a turn.
#include "core/carrera.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "core/resets.h"
#include "core/step.h"
#include "tests/apoyo/diferencias.h"
#include "tests/core/maquina.h"

namespace estructura {
namespace {

using apoyo::machine;

// A screen for runs: notes the cycle count at every turn and at the run button's click, answers each turn
// from a list (its last entry again and again), and stops the run at a turn of its own choice.
class runner final : public pantalla {
 public:
  explicit runner(chipstate& chip, std::vector<int> answers = {1})
      : chip_(chip), answers_(std::move(answers)) {
    env.config_open = false;
  }
  int cede() override {
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

TEST(ejecuta, stops_after_the_step_in_whose_turn_running_fell) {
  chipstate chip = looping();
  runner view(chip);
  view.at_turn = [&](int turn) { chip.running = turn < 5; };
  ejecuta(chip, view);
  EXPECT_EQ(chip.cpu.pc, 5);
  EXPECT_EQ(chip.cycles, 5);
  EXPECT_EQ(view.clicks, 0);
}

TEST(ejecuta, asks_after_the_first_step_and_then_after_as_many_as_it_was_told) {
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
    ejecuta(chip, view);
    EXPECT_EQ(view.turns, r.turns);
  }
}

TEST(ejecuta, started_anew_asks_after_its_first_step_again) {
  chipstate chip = looping();
  runner view(chip, {1000});
  chip.breakpts[2] = 1;
  ejecuta(chip, view);
  EXPECT_EQ(view.turns, (std::vector<std::int32_t>{1}));
  chip.running = true;
  chip.breakpts[4] = 1;
  ejecuta(chip, view);
  EXPECT_EQ(view.turns, (std::vector<std::int32_t>{1, 3}));
}

TEST(ejecuta, at_a_breakpoint_clicks_the_run_button_and_executes_nothing) {
  chipstate chip = looping();
  chip.breakpts[3] = 1;
  runner view(chip);
  ejecuta(chip, view);
  EXPECT_EQ(chip.cpu.pc, 3);
  EXPECT_EQ(chip.cycles, 3);
  EXPECT_TRUE(chip.resumebp);
  EXPECT_FALSE(chip.running);
  EXPECT_EQ(view.clicks, 1);
  EXPECT_EQ(view.turns.size(), 3U);
}

TEST(ejecuta, goes_on_from_the_breakpoint_that_stopped_it) {
  chipstate chip = looping();
  chip.breakpts[3] = 1;
  runner view(chip);
  ejecuta(chip, view);
  chip.running = true;
  ejecuta(chip, view);
  EXPECT_EQ(chip.cpu.pc, 3);
  EXPECT_EQ(chip.cycles, 3 + 17);
  EXPECT_EQ(view.clicks, 2);
}

TEST(ejecuta, with_two_breakpoints_in_a_row_executes_one_instruction_a_press) {
  chipstate chip = looping();
  chip.breakpts[3] = chip.breakpts[4] = 1;
  runner view(chip);
  ejecuta(chip, view);
  EXPECT_EQ(chip.cpu.pc, 3);
  chip.running = true;
  ejecuta(chip, view);
  EXPECT_EQ(chip.cpu.pc, 4);
  EXPECT_EQ(chip.cycles, 4);
}

TEST(ejecuta, on_a_breakpoint_that_was_stepped_onto_stops_at_once_and_then_proceeds) {
  chipstate chip = looping();
  chip.breakpts[0] = 1;
  runner view(chip);
  ejecuta(chip, view);
  EXPECT_EQ(chip.cycles, 0);
  EXPECT_TRUE(view.turns.empty());
  chip.running = true;
  ejecuta(chip, view);
  EXPECT_EQ(chip.cycles, 17);
}

TEST(ejecuta, looks_at_the_one_mark_of_a_breakpoint) {
  chipstate chip = looping();
  chip.breakpts[3] = 2;  // no breakpoint: those are 1
  runner view(chip);
  view.at_turn = [&](int turn) { chip.running = turn < 6; };
  ejecuta(chip, view);
  EXPECT_EQ(chip.cpu.pc, 6);
}

TEST(ejecuta, stops_at_a_breakpoint_on_the_reset_vector_after_a_reset_in_the_run) {
  chipstate chip = looping();
  chip.breakpts[2047] = 1;
  runner view(chip);
  view.at_turn = [&](int turn) {
    if (turn == 4) mclr_reset(chip);
  };
  ejecuta(chip, view);
  EXPECT_EQ(chip.cpu.pc, 2047);
  EXPECT_EQ(chip.cycles, 0);
  EXPECT_EQ(view.turns.size(), 4U);
  EXPECT_EQ(view.clicks, 1);
}

TEST(ejecuta, asleep_keeps_taking_turns_until_a_reset_lets_it_go_on) {
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
  ejecuta(chip, view);
  EXPECT_FALSE(chip.sleeping);
  EXPECT_EQ(chip.cycles, 3);  // the first cycle after the reset and two instructions
  EXPECT_EQ(chip.cpu.pc, 1);
}

TEST(ejecuta, carries_on_after_a_watchdog_time_out_from_the_reset_vector) {
  chipstate chip = looping();
  chip.wdtcount = 0;
  chip.wdtlimit = 10;
  runner view(chip);
  view.env.watchdog_on = true;
  view.env.set_frequencies(10.0 / 4.5 / 128, 0);  // ten cycles with the divisor of OPTION as reset
  view.at_turn = [&](int turn) {
    if (turn == 10) {
      EXPECT_EQ(chip.cpu.pc, 2047);
      EXPECT_EQ(chip.tolatch, 0);
    }
    chip.running = turn < 12;
  };
  ejecuta(chip, view);
  EXPECT_EQ(view.warnings, 1);
  EXPECT_EQ(chip.cpu.pc, 1);
}

TEST(ejecuta, counts_from_0_at_once_when_the_cycles_are_cleared_in_a_turn) {
  chipstate chip = looping();
  runner view(chip);
  view.at_turn = [&](int turn) {
    if (turn == 5) chip.cycles = 0;
    chip.running = turn < 8;
  };
  ejecuta(chip, view);
  EXPECT_EQ(chip.cycles, 3);
}

TEST(ejecuta, lets_a_fault_through_with_the_run_still_marked) {
  chipstate chip = looping();
  chip.cpu.option = 0x00;
  chip.prescount = 32765;
  runner view(chip);
  EXPECT_TRUE(apoyo::faults([&] { ejecuta(chip, view); }));
  EXPECT_EQ(chip.cpu.pc, 3);
  EXPECT_EQ(view.turns.size(), 2U);
  EXPECT_TRUE(chip.running);
}

TEST(ejecuta, executes_the_same_as_single_steps) {
  chipstate run = looping();
  run.progmem[7] = 0x2A9;
  chipstate stepped = run;
  runner view(run);
  view.at_turn = [&](int turn) { run.running = turn < 1000; };
  ejecuta(run, view);
  apoyo::quiet other;
  for (int i = 0; i < 1000; ++i) step(stepped, other);
  stepped.running = false;
  EXPECT_EQ(apoyo::differences(stepped, run), "");
}

}  // namespace
}  // namespace estructura
