// Every way in which a script can fail: where it is reported, why, and that the script stops there.
#include <gmock/gmock.h>

#include "script_runner.h"

using testing::HasSubstr;

namespace {

/// A script whose last line is wrong, and what must be said of it.
struct test_case {
  const char* script;
  const char* wrong;
};

int lines_of(std::string_view script) {
  int lines = 1;
  for (const char c : script) lines += c == '\n' ? 1 : 0;
  return lines;
}

class failures : public EachMode {
 protected:
  void expect_failure(const test_case& c) {
    SCOPED_TRACE(c.script);
    const told said = runner.run_text(std::string(c.script) + "\nshow chip.pc\n");
    EXPECT_EQ(said.out, "");
    EXPECT_THAT(said.err, testing::StartsWith("-:" + std::to_string(lines_of(c.script)) + ": "));
    EXPECT_THAT(said.err, HasSubstr(c.wrong));
    EXPECT_THAT(said.err, testing::EndsWith("\n0 passed, 1 failed\n"));
    EXPECT_EQ(said.status, 1);
  }
};
IN_EACH_MODE(failures);

TEST_P(failures, words_that_mean_nothing) {
  const test_case cases[] = {
      {"jump eje1", "no such statement: jump"},
      {"click nobody", "no such control: nobody"},
      {"click PB", "no such control: PB"},
      {"click PB(8)", "no such control: PB(8)"},
      {"click eje1(0)", "no such control: eje1(0)"},
      {"click PB(x)", "no such index: PB(x)"},
      {"click", "a word is missing"},
      {"click eje1 eje1", "too many words: eje1"},
      {"type direc \"12", "a closing quote is missing"},
      {"type direc \"1\\2\"", "no such escape: \\2"},
      {"type direc \"1\"2", "a blank is missing after a closing quote"},
      {"press mapa high", "no number: high"},
      {"row MP 1x", "no number: 1x"},
      {"row MP -1", "the number must lie in 0.."},
      {"answer perhaps", "yes, no or cancel is wanted: perhaps"},
      {"@0 click eje1", "a number from 1 on is wanted behind @: @0"},
      {"@ click eje1", "a number from 1 on is wanted behind @: @"},
      {"@3", "the statement is missing behind @3"},
      {"click \xFF", "the line is not UTF-8"},
  };
  for (const test_case& c : cases) expect_failure(c);
}

TEST_P(failures, statements_for_another_kind_of_control) {
  const test_case cases[] = {
      {"click ciclos", "not for a label: ciclos"},
      {"click MP", "not for a list: MP"},
      {"click source", "not for a text box: source"},
      {"keyup source 0", "nothing listens to keys let go in source"},
      {"dblclick eje1", "not for a button: eje1"},
      {"row eje1 0", "not for a button: eje1"},
      {"rows PIC 0", "not for a combo: PIC"},
      {"pick MP x", "not for a list: MP"},
      {"type eje1 x", "not for a button: eje1"},
      {"select MP 0 1", "not for a list: MP"},
      {"enter eje1", "not for a button: eje1"},
      {"press MP 1", "not for a list: MP"},
  };
  for (const test_case& c : cases) expect_failure(c);
}

TEST_P(failures, lines_entries_files_and_fields_that_are_not_there) {
  const test_case cases[] = {
      {"row MP 2048", "no such line in MP: 2048"},
      {"rows MP 3 2048", "no such line in MP: 2048"},
      {"dblclick MP 2048", "no such line in MP: 2048"},
      {"pick PIC 16C99", "no such entry in PIC: 16C99"},
      {"show MP.row(2048)", "no such line: 2048"},
      {"show file(\"none.txt\")", "no such file: none.txt"},
      {"show file(\".\")", "no such file: ."},
      {"show chip.speed", "no such field of the machine: chip.speed"},
      {"show chip.regs", "no such field of the machine: chip.regs"},
      {"show chip.pc(0)", "no such field of the machine: chip.pc(0)"},
      {"show chip.regs(16)", "no such member: chip.regs(16)"},
      {"show mapa.row(2048)", "no such address: mapa.row(2048)"},
      {"show eje1.text", "nothing of this name to look at: eje1.text"},
      {"show eje1", "nothing of this name to look at: eje1"},
      {"show MP.caption", "nothing of this name to look at: MP.caption"},
      {"show weather", "nothing of this name to look at: weather"},
      {"show ghost.caption", "no such control: ghost"},
      {"poke pc 1", "only a field of the machine can be poked: pc"},
      {"poke chip.pc high", "no number: high"},
      {"poke chip.pc 32768", "the field does not hold this number: 32768"},
      {"poke chip.sleeping 1", "true or false is wanted: 1"},
      {"program 2047 1 2", "the program memory ends at address 2047"},
      {"program 0", "a word is missing"},
      {"program 0 65536", "the number must lie in 0..65535"},
      {"write \"../out\" \"x\"", "files are made in the scratch folder only: ../out"},
      {"write \"/out\" \"x\"", "files are made in the scratch folder only: /out"},
      {"write \".\" \"x\"", "the file cannot be made"},
  };
  for (const test_case& c : cases) expect_failure(c);
}

TEST_P(failures, an_expectation_shows_what_was_wanted_and_what_was_there) {
  const test_case cases[] = {
      {"expect chip.pc 0x7fe", "chip.pc: wanted 2046, got 2047"},
      {"expect ciclos.caption \"1\"", "ciclos.caption: wanted \"1\", got \"0\""},
      {"expect ciclos.caption 0", "ciclos.caption: wanted 0, got \"0\""},
      {"expect chip.sleeping true", "chip.sleeping: wanted true, got false"},
      {"expect MP.selected [1, 2]", "MP.selected: wanted [1, 2], got [2047]"},
      {"expect boxes [\"ok x\"]", "boxes: wanted [\"ok x\"], got []"},
      {"expect chip.pc", "the expected value is missing"},
      {"expect chip.pc 2047 2047", "the expected value ends before: 2047"},
      {"expect eje1.caption Ejec", "texts stand in double quotes"},
      {"expect MP.selected [1", "a list in brackets is not closed"},
  };
  for (const test_case& c : cases) expect_failure(c);
}

TEST_P(failures, questions_and_file_dialogs_that_nobody_answers) {
  const test_case cases[] = {
      {"program 0 1\nchoose \"\"\nclick cargar", "a question with no answer waiting: \"yesno ¿Desea borrar"},
      {"click cargar", "a file dialog with no path waiting: \"open|Archivos hexadecimales"},
      {"click salvar", "a file dialog with no path waiting: \"save|Archivos hexadecimales"},
      {"program 0 1\nchoose \"\"\nanswer cancel\nclick cargar", "this question has no Cancel: \"yesno"},
  };
  for (const test_case& c : cases) expect_failure(c);
}

TEST_P(failures, after_the_end_of_the_program_only_looking_is_allowed) {
  const test_case cases[] = {
      {"click fin\nexpect ended true\nclick eje1", "the program has ended; only looking is allowed: click"},
      {"close\nexpect chip.pc 2047\nanswer yes", "the program has ended; only looking is allowed: answer"},
  };
  for (const test_case& c : cases) expect_failure(c);
}

TEST_P(failures, a_waiting_statement_fails_at_its_own_line_and_stops_the_run) {
  const told said = runner.run_text("@4 expect chip.pc 77\n@5 show chip.pc\nclick ejecutar\nshow chip.pc\n");
  EXPECT_EQ(said.out, "");
  EXPECT_EQ(said.err, "-:1: chip.pc: wanted 77, got 3\n0 passed, 1 failed\n");
  EXPECT_EQ(said.status, 1);
}

TEST_P(failures, a_question_met_by_a_waiting_statement_is_reported_at_its_line) {
  const told said = runner.run_text("@2 program 0 1\n@2 click cargar\nclick ejecutar\nshow chip.pc\n");
  EXPECT_EQ(said.out, "");
  EXPECT_THAT(said.err, HasSubstr("-:2: a question with no answer waiting: \"yesno"));
}

TEST_P(failures, a_run_that_the_last_waiting_statement_stops_is_none) {
  const told said =
      runner.run_text("program 0x7FF 0\n@50000001 click ejecutar\nclick ejecutar\nshow chip.pc\n");
  EXPECT_EQ(said.err, "1 passed, 0 failed\n");
  EXPECT_EQ(said.status, 0);
}

TEST_P(failures, a_run_without_end_is_an_error) {
  const told said = runner.run_text("@2 show chip.pc\nclick ejecutar\nshow chip.w\n");
  EXPECT_EQ(said.out, "chip.pc = 1\n");
  EXPECT_THAT(said.err, HasSubstr("-:2: the run has yielded 50000000 times and no @ statement is left\n"));
  EXPECT_EQ(said.status, 1);
}

}  // namespace
