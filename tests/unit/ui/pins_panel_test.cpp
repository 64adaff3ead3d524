// The boxes of the ports: inputs that the person sets, outputs that follow their latches.
#include <gtest/gtest.h>
#include <string>

#include "tests/support/test_window.h"

namespace estructura {
namespace {

using support::test_window;

std::int16_t word16(int value) {
  return static_cast<std::int16_t>(value);
}

TEST(pins_view, of_the_pins_opens_inputs_and_lets_outputs_follow_the_latch) {
  for (const int tris : {0x00, 0xFF, 0xA5, 0x5A}) {
    test_window w;
    for (int i = 0; i < 8; i += 2) {
      if (i < 4) w.view.click(id::PA, i);
      w.view.click(id::PB, i);
      w.view.click(id::PC, i);
    }
    chipstate& chip = w.view.poke();
    chip.cpu.trisa = word16(tris % 16);
    chip.cpu.trisb = chip.cpu.trisc = word16(tris);
    chip.regs[5] = 0x06;
    chip.regs[6] = chip.regs[7] = 0x66;
    w.view.refresh();
    for (int i = 0; i < 8; ++i) {
      const bool input = tris / (1 << i) % 2 == 1;
      const bool level = input ? i % 2 == 0 : 0x66 / (1 << i) % 2 == 1;
      for (const id port : {id::PA, id::PB, id::PC}) {
        if (port == id::PA && i > 3) continue;
        const control& box = w.view.look(port, i);
        EXPECT_EQ(box.enabled(), input) << box.name() << ", TRIS " << tris;
        EXPECT_EQ(box.value(), level) << box.name() << ", TRIS " << tris;
      }
    }
  }
}

TEST(pins_view, of_an_output_port_shows_what_the_program_wrote) {
  test_window w;
  w.store(0, {0xC00, 0x006, 0xC55, 0x026, 0x206});
  w.stand_at(0);
  for (int i = 0; i < 4; ++i) w.view.click(id::eje1);
  std::string boxes;
  for (int i = 7; i >= 0; --i) boxes += w.view.look(id::PB, i).value() ? '1' : '0';
  EXPECT_EQ(boxes, "01010101");
  w.view.click(id::eje1);
  EXPECT_EQ(w.chip().cpu.w, 0x55);
}

TEST(pin, takes_the_new_state_of_its_box) {
  test_window w;
  w.view.click(id::PA, 3);
  w.view.click(id::PB, 0);
  w.view.click(id::PB, 7);
  w.view.click(id::PC, 5);
  EXPECT_EQ(w.chip().pina, 0x08);
  EXPECT_EQ(w.chip().pinb, 0x81);
  EXPECT_EQ(w.chip().pinc, 0x20);
  w.view.click(id::PB, 0);
  EXPECT_EQ(w.chip().pinb, 0x80);
}

TEST(pin, of_an_output_cannot_be_clicked) {
  test_window w("12C508");
  chipstate& chip = w.view.poke();
  chip.cpu.trisb = 0xFE;
  chip.cpu.option = 0x00;
  w.view.refresh();
  w.view.poke().sleeping = true;
  w.view.focus(id::por);
  w.view.click(id::PB, 0);
  EXPECT_EQ(w.chip().pinb, 0);
  EXPECT_FALSE(w.value("PB(0)"));
  EXPECT_TRUE(w.chip().sleeping);
  EXPECT_EQ(w.focused(), "por");
}

}  // namespace
}  // namespace estructura
