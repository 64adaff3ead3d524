// Runs in the window: captions, what whoever looks during a run sees, stops and restarts, time-outs.
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "common/text.h"
#include "core/devices.h"
#include "tests/support/differences.h"
#include "tests/support/test_window.h"
#include "ui/format.h"

namespace estructura {
namespace {

using support::differences;
using support::test_window;

// Counts register 08 up for ever: two instructions, three cycles.
void counting(test_window& w) {
  w.store(0, {0x2A8, 0xA00});
  w.stand_at(0);
}

TEST(run, shows_Parar_and_closes_the_single_step_until_it_is_stopped) {
  test_window w;
  counting(w);
  w.desktop.at_turn(1, [&] {
    EXPECT_EQ(w.text("ejecutar"), "&Parar");
    EXPECT_FALSE(w.enabled("eje1"));
    EXPECT_TRUE(w.chip().running);
    w.view.click(id::eje1);
    EXPECT_EQ(w.chip().cpu.pc, 1);
  });
  w.desktop.at_turn(9, [&] { w.view.click(id::ejecutar); });
  w.view.click(id::ejecutar);
  EXPECT_EQ(w.desktop.turns, 9);
  EXPECT_EQ(w.text("ejecutar"), "Ejecu&tar");
  EXPECT_TRUE(w.enabled("eje1"));
  EXPECT_FALSE(w.chip().running);
}

TEST(run, shows_the_current_instruction_when_it_is_stopped) {
  test_window w;
  counting(w);
  w.desktop.at_turn(8, [&] { w.view.click(id::ejecutar); });
  w.view.click(id::ejecutar);
  EXPECT_EQ(w.at("MP").row(), 0);
  EXPECT_EQ(w.text("direc"), "000");
  EXPECT_EQ(w.text("INS"), "INCF 08");
  EXPECT_EQ(w.text("codop"), "2A8");
  EXPECT_TRUE(w.enabled("Entrarins"));
}

TEST(run, clears_the_entry_at_its_first_step) {
  test_window w;
  counting(w);
  w.view.type(id::INS, "NOP");
  w.desktop.at_turn(1, [&] {
    EXPECT_EQ(w.text("INS"), "");
    EXPECT_EQ(w.text("codop"), "");
    EXPECT_FALSE(w.enabled("Entrarins"));
    w.view.click(id::ejecutar);
  });
  w.view.click(id::ejecutar);
}

TEST(run, is_right_for_whoever_looks_at_any_turn) {
  for (const int between : {1, 2, 7, 50}) {
    test_window w;
    counting(w);
    w.desktop.steps_between_turns = between;
    for (int turn = 1; turn <= 20; ++turn)
      w.desktop.at_turn(turn, [&w, turn, between] {
        const int steps = 1 + (turn - 1) * between;
        const int pc = steps % 2;
        const int count = (0 + (steps + 1) / 2) % 256;
        EXPECT_EQ(w.at("MDP").rows()[8], hexstr(count, 2)) << steps;
        EXPECT_EQ(w.text("ciclos"), ponpuntos(steps + steps / 2)) << steps;
        EXPECT_EQ(w.at("MP").row(), pc) << steps;
        EXPECT_EQ(w.text("direc"), hexstr(pc, 3)) << steps;
        EXPECT_EQ(w.at("RE").rows()[0], hexstr(pc, 3)) << steps;
        EXPECT_EQ(w.view.look_map().marker, pc) << steps;
        if (turn == 20) w.view.click(id::ejecutar);
      });
    w.view.click(id::ejecutar);
    EXPECT_EQ(w.desktop.turns, 20);
  }
}

TEST(run, shows_an_output_pin_whose_box_comes_to_light_with_its_level) {
  // GP2 is T0CKI and hidden until OPTION gives it back; then it is an output that shows its latch.
  test_window w("12C508");
  w.store(0, {0xC00, 0x002, 0x006, 0xC04, 0x026, 0xA05});
  w.stand_at(0);
  w.desktop.steps_between_turns = 10;
  w.desktop.at_turn(2, [&] {
    EXPECT_TRUE(w.visible("PB(2)"));
    EXPECT_FALSE(w.enabled("PB(2)"));
    EXPECT_TRUE(w.value("PB(2)"));
    EXPECT_EQ(w.text("BPB"), "--000100");
    w.view.click(id::ejecutar);
  });
  w.view.click(id::ejecutar);
  EXPECT_EQ(w.chip().pinb, 0x04);
}

std::vector<std::string> everything(test_window& w) {
  std::vector<std::string> all;
  for (const control& c : w.view.look_all()) {
    std::string line = c.name() + ": " + c.text() + "|" + c.tip() + (c.visible() ? "" : " hidden") +
                       (c.enabled() ? "" : " disabled") + (c.value() ? " checked" : "") + " row " +
                       std::to_string(c.row()) + (c.face_background() ? " face" : "");
    if (c.which() != id::MP)
      for (const std::string& row : c.rows()) line += " " + row;
    all.push_back(std::move(line));
  }
  const map_view& map = w.view.look_map();
  all.push_back("marker " + std::to_string(map.marker) + ", scale " + std::to_string(map.scale));
  return all;
}

// Random words, most of them around the pins: OPTION and TRIS, writes and bits of ports, values for them.
std::uint16_t random_word(std::mt19937& random) {
  const unsigned any = random() % 4096;
  const unsigned port = 5 + any % 3;
  switch (random() % 8) {
    case 0: return static_cast<std::uint16_t>(any % 4 == 0 ? unprogrammed : any);
    case 1: return 0x002;
    case 2: return static_cast<std::uint16_t>(port);
    case 3: return static_cast<std::uint16_t>(0x020 + port);
    case 4: return static_cast<std::uint16_t>(0x400 + any / 32 % 16 * 32 + port);
    case 5: return static_cast<std::uint16_t>(any);
    default: return static_cast<std::uint16_t>(0xC00 + any % 256);
  }
}

// Random programs, in one window looked at whole after every step, in another only at the end.
TEST(run, ends_in_the_same_window_whether_somebody_looked_or_not) {
  constexpr unsigned seed = 20260701;
  std::mt19937 random(seed);
  for (const catalogue_row& row : catalogue)
    for (int program = 0; program < 30; ++program) {
      const std::string_view device = row.name;
      test_window looked(device);
      test_window unseen(device);
      chipstate& chip = looked.view.poke();
      for (int a = 0; a <= chip.devmodel.progmask; ++a) chip.progmem[a] = random_word(random);
      unseen.view.poke() = chip;
      const bool watchdog = random() % 2 == 0;
      const int last = 20 + static_cast<int>(random() % 60);
      for (test_window* w : {&looked, &unseen}) {
        if (watchdog) w->view.click(id::WATCHDOG);
        w->view.type(id::FR, "250000");
        w->desktop.at_turn(10, [w] { w->view.click(id::MCLR); });
        w->desktop.at_turn(last, [w] { w->view.click(id::ejecutar); });
      }
      for (int turn = 1; turn < last; ++turn)
        if (turn != 10) looked.desktop.at_turn(turn, [&] { (void)everything(looked); });
      looked.view.click(id::ejecutar);
      unseen.view.click(id::ejecutar);
      EXPECT_EQ(differences(looked.chip(), unseen.chip()), "") << device << ", program " << program;
      const std::vector<std::string> wanted = everything(looked);
      const std::vector<std::string> got = everything(unseen);
      for (std::size_t i = 0; i < wanted.size(); ++i)
        EXPECT_EQ(wanted[i], got[i]) << device << ", program " << program << ", seed " << seed;
    }
}

TEST(run, stopped_and_started_within_one_turn_goes_on_in_the_same_loop) {
  test_window w;
  counting(w);
  w.desktop.at_turn(3, [&] {
    w.view.click(id::ejecutar);
    EXPECT_FALSE(w.chip().running);
    EXPECT_EQ(w.text("INS"), "GOTO 000");
    const int turns = w.desktop.turns;
    w.view.click(id::ejecutar);
    EXPECT_EQ(w.desktop.turns, turns);
    EXPECT_EQ(w.text("ejecutar"), "&Parar");
    EXPECT_FALSE(w.enabled("eje1"));
  });
  w.desktop.at_turn(6, [&] { w.view.click(id::ejecutar); });
  w.view.click(id::ejecutar);
  EXPECT_EQ(w.desktop.turns, 6);
  EXPECT_EQ(w.chip().regs[8], 3);
  EXPECT_FALSE(w.chip().running);
}

TEST(run, started_again_on_a_breakpoint_within_one_turn_stops_at_once) {
  test_window w;
  counting(w);
  w.desktop.at_turn(3, [&] {
    w.view.poke().breakpts[1] = 1;
    w.view.click(id::ejecutar);
    w.view.click(id::ejecutar);
  });
  w.view.click(id::ejecutar);
  EXPECT_EQ(w.desktop.turns, 3);
  EXPECT_FALSE(w.chip().running);
  EXPECT_TRUE(w.chip().resumebp);
}

TEST(run, at_a_breakpoint_shows_its_instruction_and_gives_the_buttons_back) {
  test_window w;
  counting(w);
  w.view.poke().breakpts[1] = 1;
  w.view.click(id::ejecutar);
  EXPECT_EQ(w.chip().cpu.pc, 1);
  EXPECT_EQ(w.text("ejecutar"), "Ejecu&tar");
  EXPECT_TRUE(w.enabled("eje1"));
  EXPECT_EQ(w.text("direc"), "001");
  EXPECT_EQ(w.text("INS"), "GOTO 000");
  w.view.click(id::ejecutar);
  EXPECT_EQ(w.chip().cpu.pc, 1);
  EXPECT_EQ(w.chip().regs[8], 2);
}

TEST(run, shows_the_last_whole_step_while_it_warns_of_a_time_out) {
  struct row {
    const char* rule;
    int address, word;
    std::int32_t before_limit;  // cycles that are left
    const char* pc;
  };
  // INCFSZ of the PCL that its own fetch loads with FF: one cycle, one for the skip, one for the jump.
  for (const row& r : {row{"NOP", 0x050, 0x000, 1, "050"}, row{"INCFSZ PCL", 0x0FE, 0x3E2, 3, "0FE"}}) {
    test_window w;
    w.store(r.address, {r.word});
    w.store(0x7FF, {0xA00 + r.address});
    w.view.click(id::WATCHDOG);
    std::string seen;
    int row_seen = -1;
    w.desktop.at_box = [&] {
      seen = w.view.look(id::RE).rows()[0];
      row_seen = w.view.look(id::MP).row();
    };
    w.desktop.at_turn(1, [&] { w.view.poke().wdtcount = w.chip().wdtlimit - r.before_limit; });
    w.desktop.at_turn(2, [&] { w.view.click(id::ejecutar); });
    w.view.click(id::ejecutar);
    EXPECT_EQ(w.desktop.boxes.size(), 1U) << r.rule;
    EXPECT_EQ(seen, r.pc) << r.rule;
    EXPECT_EQ(row_seen, r.address) << r.rule;
  }
}

TEST(run, warns_of_a_watchdog_time_out_and_carries_on_from_the_reset_vector) {
  test_window w;
  counting(w);
  w.view.click(id::WATCHDOG);
  w.view.poke().wdtcount = w.chip().wdtlimit - 30;
  int turns_at_box = 0;
  w.desktop.at_box = [&] { turns_at_box = w.desktop.turns; };
  w.desktop.at_turn(40, [&] { w.view.click(id::ejecutar); });
  w.view.click(id::ejecutar);
  ASSERT_EQ(w.desktop.boxes.size(), 1U);
  EXPECT_EQ(w.desktop.boxes[0].kind, box::ok_right);
  EXPECT_EQ(w.desktop.boxes[0].text, "Se ha desbordado el Watchdog.\rSe producirá un Reset.");
  EXPECT_EQ(turns_at_box, 19);  // thirty cycles are twenty steps
  EXPECT_EQ(w.desktop.turns, 40);
  EXPECT_EQ(w.text("STATUS"), "00001000");
}

TEST(run, rests_after_each_watchdog_box_between_two_steps) {
  test_window w;
  w.store(0, {0x000, 0xA00});
  w.stand_at(0);
  w.view.click(id::WATCHDOG);
  w.desktop.steps_between_turns = 1 << 20;
  w.view.poke().wdtcount = w.chip().wdtlimit - 1;
  w.desktop.at_box = [&] {
    if (w.desktop.boxes.size() > 3) w.view.poke().running = false;
  };
  w.desktop.at_rest = [&] {
    EXPECT_EQ(w.desktop.boxes.size(), static_cast<std::size_t>(w.desktop.rests));
    // The step is whole: reset, and its row shown.
    EXPECT_EQ(w.chip().cpu.pc, 2047);
    EXPECT_EQ(w.at("MP").row(), 2047);
    EXPECT_EQ(w.view.look_map().marker, 2047);
    EXPECT_EQ(w.chip().wdtcount, 0);
    if (w.desktop.rests == 3) w.view.click(id::ejecutar);
  };
  w.view.click(id::ejecutar);
  EXPECT_EQ(w.desktop.rests, 3);
  // Stopped in the rest, no further step is made.
  EXPECT_EQ(w.chip().cycles, 0);
  EXPECT_EQ(w.chip().cpu.pc, 2047);
  EXPECT_EQ(w.text("ejecutar"), "Ejecu&tar");
}

TEST(run, does_not_rest_after_a_watchdog_box_of_a_single_step_nor_of_a_run_that_its_box_stopped) {
  test_window w;
  w.store(0, {0x000, 0xA00});
  w.stand_at(0);
  w.view.click(id::WATCHDOG);
  w.view.poke().wdtcount = w.chip().wdtlimit - 1;
  w.view.click(id::eje1);
  ASSERT_EQ(w.desktop.boxes.size(), 1U);
  w.desktop.at_turn(5, [&] { w.view.click(id::ejecutar); });
  w.view.click(id::ejecutar);
  EXPECT_EQ(w.desktop.rests, 0);

  w.desktop.at_box = [&] { w.view.close_request(); };
  w.view.poke().wdtcount = w.chip().wdtlimit - 1;
  w.view.click(id::ejecutar);
  EXPECT_EQ(w.desktop.boxes.size(), 2U);
  EXPECT_TRUE(w.view.ended());
  EXPECT_EQ(w.desktop.rests, 0);
}

TEST(run, owes_no_rest_to_the_run_after_one_that_a_fault_ended) {
  test_window w;
  w.store(0, {0x000, 0xA00});
  w.stand_at(0);
  w.view.click(id::WATCHDOG);
  chipstate& chip = w.view.poke();
  chip.wdtcount = chip.wdtlimit - 1;
  // Edges are counted once the reset has chosen them.
  chip.tockifreq = 1;
  chip.tockicount = 32767;
  w.view.click(id::ejecutar);
  ASSERT_EQ(w.desktop.boxes.size(), 2U);
  ASSERT_EQ(w.desktop.boxes[1].kind, box::fault);
  w.view.poke().tockicount = 0;
  w.desktop.at_turn(w.desktop.turns + 2, [&] { w.view.click(id::ejecutar); });
  w.view.click(id::ejecutar);
  EXPECT_EQ(w.desktop.rests, 0);
}

TEST(run, counts_cycles_from_0_at_once_after_a_double_click) {
  test_window w;
  counting(w);
  w.desktop.at_turn(5, [&] {
    w.view.dblclick(id::ciclos);
    EXPECT_EQ(w.text("ciclos"), "0");
  });
  w.desktop.at_turn(7, [&] { w.view.click(id::ejecutar); });
  w.view.click(id::ejecutar);
  EXPECT_EQ(w.text("ciclos"), "3");
}

TEST(run, goes_on_by_itself_when_a_pin_wakes_the_chip) {
  test_window w("12C508");
  w.store(0, {0xC08, 0x002, 0x003, 0xA03});
  w.view.poke().progmem[511] = 0xC00;
  w.stand_at(0);
  w.desktop.at_turn(10, [&] {
    EXPECT_TRUE(w.value("estsleep"));
    w.view.click(id::PB, 2);
    EXPECT_TRUE(w.value("estsleep"));
    w.view.click(id::PB, 0);
    EXPECT_FALSE(w.value("estsleep"));
    EXPECT_EQ(w.text("STATUS"), "10010000");
    EXPECT_EQ(w.at("MP").row(), 511);
  });
  w.desktop.at_turn(11, [&] {
    EXPECT_EQ(w.chip().cpu.pc, 0);
    w.view.click(id::ejecutar);
  });
  w.view.click(id::ejecutar);
}

TEST(run, off_the_end_of_the_list_leaves_the_last_address_in_the_box_and_no_line) {
  test_window w("16C54");
  w.store(509, {0x000, 0x608});
  w.stand_at(509);
  w.desktop.at_turn(2, [&] {
    EXPECT_EQ(w.at("MP").row(), -1);
    EXPECT_EQ(w.text("direc"), "1FE");
    w.view.click(id::ejecutar);
    EXPECT_EQ(w.text("INS"), "");
  });
  w.view.click(id::ejecutar);
  EXPECT_EQ(w.chip().cpu.pc, 512);
  EXPECT_TRUE(w.desktop.boxes.empty());
}

TEST(run, of_a_hidden_list_still_moves_its_line) {
  test_window w;
  counting(w);
  w.view.click(id::VISMP);
  EXPECT_FALSE(w.visible("MP"));
  w.desktop.at_turn(3, [&] { w.view.click(id::ejecutar); });
  w.view.click(id::ejecutar);
  EXPECT_EQ(w.at("MP").row(), 1);
  w.view.click(id::VISMP);
  EXPECT_TRUE(w.visible("MP"));
}

}  // namespace
}  // namespace estructura
