// A fault ends one action with one box.
#include <gtest/gtest.h>

#include "tests/support/differences.h"
#include "tests/support/test_window.h"

namespace estructura {
namespace {

using support::differences;
using support::test_window;

// A machine whose next step overflows the prescaler.
void about_to_fault(test_window& w) {
  w.store(0, {0xC77, 0xA00});
  w.stand_at(0);
  w.view.poke().cpu.option = 0x00;
  w.view.poke().prescount = 32767;
}

void expect_one_fault(const test_window& w) {
  ASSERT_EQ(w.desktop.boxes.size(), 1U);
  EXPECT_EQ(w.desktop.boxes[0].kind, box::fault);
  EXPECT_NE(w.desktop.boxes[0].text, "");
}

TEST(fault, ends_a_single_step_with_one_box_and_the_state_of_the_fault) {
  test_window w;
  about_to_fault(w);
  w.view.click(id::eje1);
  expect_one_fault(w);
  EXPECT_EQ(w.chip().cpu.w, 0x77);
  EXPECT_EQ(w.chip().cpu.pc, 1);
  EXPECT_EQ(w.chip().prescount, 32767);
  EXPECT_TRUE(w.enabled("eje1"));
}

TEST(fault, stops_a_run_and_gives_its_buttons_back) {
  test_window w;
  about_to_fault(w);
  w.view.poke().prescount = 32700;
  bool run_seen_by_box = true;
  w.desktop.at_box = [&] { run_seen_by_box = w.chip().running || w.text("ejecutar") != "Ejecu&tar"; };
  w.view.click(id::ejecutar);
  expect_one_fault(w);
  EXPECT_FALSE(run_seen_by_box);
  EXPECT_FALSE(w.chip().running);
  EXPECT_EQ(w.text("ejecutar"), "Ejecu&tar");
  EXPECT_TRUE(w.enabled("eje1"));
  EXPECT_EQ(w.chip().prescount, 32767);
}

TEST(fault, in_an_event_during_a_run_stops_the_run_with_one_box) {
  test_window w;
  w.store(0, {0x000, 0xA00});
  w.stand_at(0);
  w.desktop.at_turn(5, [&] {
    w.view.poke().prescount = 32767;
    w.view.click(id::TOCKI);
  });
  w.view.click(id::ejecutar);
  expect_one_fault(w);
  EXPECT_EQ(w.desktop.turns, 5);
  EXPECT_FALSE(w.chip().running);
  EXPECT_EQ(w.text("ejecutar"), "Ejecu&tar");
}

TEST(fault, leaves_the_window_ready_for_the_next_action) {
  test_window w;
  about_to_fault(w);
  w.view.click(id::ejecutar);
  w.view.click(id::por);
  w.view.click(id::eje1);
  EXPECT_EQ(w.desktop.boxes.size(), 1U);
  EXPECT_EQ(w.chip().cpu.pc, 0);
  w.desktop.at_turn(w.desktop.turns + 2, [&] { w.view.click(id::ejecutar); });
  w.view.click(id::ejecutar);
  EXPECT_EQ(w.desktop.boxes.size(), 1U);
  EXPECT_EQ(w.chip().cpu.w, 0x77);
}

TEST(fault, is_an_address_beyond_program_memory) {
  test_window w;
  w.view.type(id::INS, "NOP");
  w.view.type(id::direc, "FFF");
  const chipstate before = w.chip();
  w.view.click(id::Entrarins);
  expect_one_fault(w);
  EXPECT_EQ(differences(before, w.chip()), "");
}

TEST(fault, is_a_frequency_that_does_not_fit) {
  test_window w;
  w.view.type(id::FREC, "9999999999");
  w.view.click(id::WATCHDOG);
  expect_one_fault(w);
}

TEST(fault, in_a_view_is_told_to_whoever_looks) {
  test_window w;
  // A machine that no device is: FSR points past the banks.
  w.view.poke().devmodel.datamask = 0x7FF;
  w.view.poke().regs[reg_fsr] = 0x7FF;
  w.view.refresh();
  (void)w.view.look(id::INDF);
  expect_one_fault(w);
}

}  // namespace
}  // namespace estructura
