// Scripts, files, exit status, and statements that wait for a yield.
#include <gmock/gmock.h>

#include "script_runner.h"

using testing::HasSubstr;

namespace {

class guion_script : public EachMode {
 protected:
  /// A script behind one that fills the memory's vector and its first words with NOP.
  told run_among_nops(std::string_view script) {
    std::string whole = "program 2047 0\nprogram 0";
    for (int address = 0; address < 1000; ++address) whole += " 0";
    return runner.run_text(whole + '\n' + std::string(script));
  }
};
IN_EACH_MODE(guion_script);

TEST_P(guion_script, an_empty_script_passes) {
  const told said = runner.run_text("");
  EXPECT_EQ(said.out, "");
  EXPECT_EQ(said.err, "1 passed, 0 failed\n");
  EXPECT_EQ(said.status, 0);
}

TEST_P(guion_script, blank_lines_and_lines_behind_a_hash_are_skipped) {
  const told said = runner.run_text("\n   \n# click nothing\n   # nor this\r\n\t\nexpect chip.cycles 0");
  EXPECT_EQ(said.err, "1 passed, 0 failed\n");
}

TEST_P(guion_script, files_are_counted_and_the_count_is_the_last_line_of_standard_output) {
  runner.file("good", "show chip.pc\n");
  runner.file("bad", "show chip.w\nexpect chip.pc 1\nshow chip.w\n");
  const told said = runner.run({"good", "bad", "good"});
  EXPECT_EQ(said.out, "chip.pc = 2047\nchip.w = 0\nchip.pc = 2047\n2 passed, 1 failed\n");
  EXPECT_EQ(said.err, "bad:2: chip.pc: wanted 1, got 2047\n");
  EXPECT_EQ(said.status, 1);
}

TEST_P(guion_script, from_standard_input_the_count_goes_to_standard_error) {
  const told said = runner.run_text("show chip.pc\nexpect chip.pc 3\n");
  EXPECT_EQ(said.out, "chip.pc = 2047\n");
  EXPECT_EQ(said.err, "-:2: chip.pc: wanted 3, got 2047\n0 passed, 1 failed\n");
  EXPECT_EQ(said.status, 1);
}

TEST_P(guion_script, a_script_that_is_not_there_fails) {
  const told said = runner.run({"nowhere.guion"});
  EXPECT_THAT(said.err, HasSubstr("nowhere.guion:"));
  EXPECT_EQ(said.out, "0 passed, 1 failed\n");
  EXPECT_EQ(said.status, 1);
}

TEST_P(guion_script, every_script_starts_from_a_fresh_window_and_an_empty_folder) {
  runner.file("one",
              "write \"left.txt\" \"x\"\nclipboard \"kept\"\nclick eje1\nexpect exists(\"left.txt\") true\n");
  runner.file(
      "two",
      "expect exists(\"left.txt\") false\nexpect clipboard \"\"\nexpect chip.cycles 0\nexpect focus \"\"\n");
  const told said = runner.run({"one", "two"});
  EXPECT_EQ(said.out, "2 passed, 0 failed\n");
  EXPECT_EQ(said.err, "");
}

TEST_P(guion_script, a_statement_waits_for_its_yield) {
  // One cycle each; the first step after a reset counts one more.
  const told said = run_among_nops("@1000 click ejecutar\nclick ejecutar\nexpect chip.cycles 1001\n");
  EXPECT_EQ(said.err, "1 passed, 0 failed\n");
}

TEST_P(guion_script, statements_of_one_yield_run_in_the_order_of_their_lines) {
  const told said = run_among_nops(
      "@3 show chip.cycles\n@2 show chip.pc\n@3 show chip.w\n@3 click ejecutar\nclick ejecutar\n"
      "show ejecutar.caption\n");
  EXPECT_EQ(said.out, "chip.pc = 1\nchip.cycles = 4\nchip.w = 0\nejecutar.caption = \"Ejecu&tar\"\n");
  EXPECT_EQ(said.status, 0);
}

TEST_P(guion_script, yields_are_counted_from_the_line_on_and_over_several_runs) {
  const told said = run_among_nops(
      "@2 click ejecutar\nclick ejecutar\nexpect chip.cycles 3\n"
      "@5 click ejecutar\n@2 click ejecutar\nclick ejecutar\nexpect chip.cycles 5\n"
      "click ejecutar\nexpect chip.cycles 8\n");
  EXPECT_EQ(said.err, "1 passed, 0 failed\n");
}

TEST_P(guion_script, a_statement_may_wait_for_a_run_that_never_comes) {
  EXPECT_EQ(runner.run_text("@1 click eje1\nexpect chip.cycles 0\n").err, "1 passed, 0 failed\n");
}

TEST_P(guion_script, a_run_ends_at_a_breakpoint_by_itself) {
  const told said = runner.run_text(
      "poke chip.breakpts(7) 1\nclick ejecutar\nexpect chip.pc 7\n"
      "@3 click ejecutar\nclick ejecutar\nexpect chip.pc 10\n");
  EXPECT_EQ(said.err, "1 passed, 0 failed\n");
}

TEST_P(guion_script, a_waiting_statement_acts_in_the_window_between_two_steps) {
  const told said = run_among_nops(
      "@5 dblclick ciclos\n@5 expect ciclos.caption \"0\"\n@8 click ejecutar\nclick ejecutar\n"
      "expect ciclos.caption \"3\"\n");
  EXPECT_EQ(said.err, "1 passed, 0 failed\n");
}

TEST_P(guion_script, the_usage_is_told_when_there_is_nothing_to_run) {
  const told said = runner.run({});
  EXPECT_EQ(said.status, 2);
  EXPECT_THAT(said.err, HasSubstr("guion [--ventana | --navegador] FILE..."));
}

#ifndef GUION_WINDOW
TEST(script_runner_itself, says_so_when_the_window_was_not_built) {
  const told said = script_runner("--ventana").run_text("");
  EXPECT_EQ(said.status, 2);
  EXPECT_THAT(said.err, HasSubstr("built without the window"));
}
#endif

}  // namespace
