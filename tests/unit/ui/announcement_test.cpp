// The sentence that tells by itself what an action changed.
#include "ui/announcement.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/test_window.h"

namespace estructura {
namespace {

using support::test_window;

struct change {
  const char* rule;
  const char* device;
  std::function<void(chipstate&)> before;
  std::function<void(chipstate&)> after;
  const char* sentence;
};

void nothing(chipstate&) {}

// clang-format off
const std::vector<change> changes = {
    {"nothing", "16C57", nothing, nothing, ""},
    {"a core register", "16C57", nothing, [](chipstate& c) { c.cpu.w = 0x05; }, "W 05."},
    {"OPTION", "16C57", nothing, [](chipstate& c) { c.cpu.option = 0x2A; }, "OPTION 2A."},
    {"a register of four bits", "16C57", nothing, [](chipstate& c) { c.cpu.trisa = 0x0A; }, "TRISA A."},
    {"the direction register of the one port", "12C508", nothing, [](chipstate& c) { c.cpu.trisb = 0x0F; }, "TRIS 0F."},
    {"PC, and what follows", "16C57", [](chipstate& c) { c.progmem[0x12] = 0xC05; },
     [](chipstate& c) { c.cpu.pc = 0x12; }, "PC 012, sigue MOVLW 05."},
    {"what follows is not programmed", "16C57", nothing, [](chipstate& c) { c.cpu.pc = 0x12; },
     "PC 012, sigue sin programar."},
    {"flags that change, by their names", "16C57", nothing, [](chipstate& c) { c.regs[3] |= 0x05; }, "Z 1, C 1."},
    {"a flag that falls", "16C57", [](chipstate& c) { c.regs[3] |= 0x02; }, [](chipstate& c) { c.regs[3] &= ~0x02; },
     "DC 0."},
    {"the page bits", "16C57", nothing, [](chipstate& c) { c.regs[3] |= 0xE0; }, "PS2 1, PS1 1, PS0 1."},
    {"/TO and /PD", "16C57", nothing, [](chipstate& c) { c.tolatch = c.pdlatch = 0; }, "TO 0, PD 0."},
    {"the wake-up flag", "12C508", nothing, [](chipstate& c) { c.regs[3] |= 0x80; }, "GPWUF 1."},
    {"the stack", "16C57", nothing, [](chipstate& c) { c.stack[0] = 0x123, c.stack[1] = 0x7FF; },
     "Cabeza de la pila 123, segundo nivel de la pila 7FF."},
    {"TMR0 and FSR", "16C57", nothing, [](chipstate& c) { c.regs[1] = 0x3F, c.regs[4] = 0x35; }, "TMR0 3F, FSR 35."},
    {"a register without a name", "16C57", nothing, [](chipstate& c) { c.regs[8] = 0xA5; }, "Dirección 08 valor A5."},
    {"a banked register", "16C57", nothing, [](chipstate& c) { c.bankregs[1 * 16 + 5] = 0x12; },
     "Dirección 15 banco 1 valor 12."},
    {"port C is not taken for the program counter", "16C57", nothing, [](chipstate& c) { c.regs[7] = 0x80; },
     "Puerto C 80."},
    {"without port C its address is a register", "16C56", nothing, [](chipstate& c) { c.regs[7] = 0x80; },
     "Dirección 07 valor 80."},
    {"port A has four bits", "16C57", nothing, [](chipstate& c) { c.regs[5] = 0x09; }, "Puerto A 9."},
    {"the ports of a 12C50x", "12C508", nothing, [](chipstate& c) { c.regs[5] = 0xFC, c.regs[6] = 0x15; },
     "OSCCAL FC, GPIO 15."},
    {"an output pin", "16C57", [](chipstate& c) { c.cpu.trisb = 0; }, [](chipstate& c) { c.regs[6] = 0x08; },
     "Puerto B 08, Puerto B bit 3 a 1."},
    {"output pins both ways", "16C57", [](chipstate& c) { c.cpu.trisb = 0, c.regs[6] = 0x70; },
     [](chipstate& c) { c.regs[6] = 0x03; },
     "Puerto B 03, Puerto B bits 0 y 1 a 1, Puerto B bits 4, 5 y 6 a 0."},
    {"an output of the one port", "12C508", [](chipstate& c) { c.cpu.trisb = 0; },
     [](chipstate& c) { c.regs[6] = 0x01; }, "GPIO 01, GPIO bit 0 a 1."},
    {"SLEEP", "16C57", nothing, [](chipstate& c) { c.sleeping = true; }, "Dormido."},
    {"awake", "16C57", [](chipstate& c) { c.sleeping = true; }, [](chipstate& c) { c.sleeping = false; }, "Despierto."},
    {"the cycles, where nothing else changed", "16C57", nothing, [](chipstate& c) { c.cycles = 1234; }, "Ciclos 1.234."},
    {"not the cycles with anything else", "16C57", nothing, [](chipstate& c) { c.cycles = 4, c.cpu.w = 1; }, "W 01."},
    {"a word of the program", "16C57", nothing, [](chipstate& c) { c.progmem[0x10] = 0x024; }, "Dirección 010 MOVWF 04."},
    {"a word erased", "16C57", [](chipstate& c) { c.progmem[0x10] = 0x024; }, [](chipstate& c) { c.progmem[0x10] = 65535; },
     "Dirección 010 sin programar."},
    {"another program", "16C57", nothing, [](chipstate& c) { for (int a = 0; a < 25; ++a) c.progmem[a] = 0; },
     "Programa de 25 palabras."},
    {"a program erased", "16C57", [](chipstate& c) { c.progmem[1] = c.progmem[2] = 0; },
     [](chipstate& c) { c.progmem.fill(65535); }, "Programa borrado."},
    {"a breakpoint set", "16C57", nothing, [](chipstate& c) { c.breakpts[0x0A] = 1; }, "Punto de parada en 00A."},
    {"a breakpoint removed", "16C57", [](chipstate& c) { c.breakpts[0x0A] = 1; }, [](chipstate& c) { c.breakpts[0x0A] = 0; },
     "Sin punto de parada en 00A."},
    {"several breakpoints", "16C57", nothing, [](chipstate& c) { c.breakpts[1] = c.breakpts[2] = 1; }, "2 puntos de parada."},
    {"no breakpoint left", "16C57", [](chipstate& c) { c.breakpts[1] = c.breakpts[2] = 1; },
     [](chipstate& c) { c.breakpts.fill(0); }, "Sin puntos de parada."},
    {"the order of the window", "16C57", nothing,
     [](chipstate& c) { c.bankregs[0] = 1, c.regs[8] = 2, c.cpu.w = 3, c.stack[0] = 4; },
     "W 03, cabeza de la pila 004, dirección 08 valor 02, dirección 10 banco 0 valor 01."},
    {"ten at the most", "16C57", nothing, [](chipstate& c) { for (int a = 8; a < 16; ++a) c.regs[a] = 1;
                                                              for (int i = 0; i < 3; ++i) c.bankregs[i] = 1; },
     "Dirección 08 valor 01, dirección 09 valor 01, dirección 0A valor 01, dirección 0B valor 01, "
     "dirección 0C valor 01, dirección 0D valor 01, dirección 0E valor 01, dirección 0F valor 01, "
     "dirección 10 banco 0 valor 01, dirección 11 banco 0 valor 01 y 1 cambio más."},
};
// clang-format on

TEST(announcement, tells_what_differs_between_two_readings) {
  for (const change& row : changes) {
    SCOPED_TRACE(row.rule);
    test_window w(row.device);
    row.before(w.view.poke());
    w.view.refresh();
    const view_reading before = read_views(w.view);
    row.after(w.view.poke());
    w.view.refresh();
    EXPECT_EQ(announcement(before, read_views(w.view)), row.sentence);
  }
}

TEST(announcement, an_input_is_set_by_whoever_listens) {
  test_window w;
  const view_reading before = read_views(w.view);
  w.view.click(id::PB, 3);
  EXPECT_TRUE(w.value("PB(3)"));
  EXPECT_EQ(announcement(before, read_views(w.view)), "");
}

TEST(announcement, a_pin_that_becomes_an_output_at_its_level_is_no_news) {
  test_window w;
  const view_reading before = read_views(w.view);
  w.view.poke().cpu.trisb = 0;
  w.view.refresh();
  EXPECT_EQ(announcement(before, read_views(w.view)), "TRISB 00.");
}

TEST(announcement, another_device_is_no_list_of_changes) {
  test_window w;
  const view_reading before = read_views(w.view);
  w.view.pick(id::PIC, "16C54");
  EXPECT_EQ(announcement(before, read_views(w.view)), "");
  w.view.pick(id::PIC, "12C508");
  EXPECT_EQ(announcement(before, read_views(w.view)), "");
}

TEST(announcement, nor_is_one_with_the_same_registers) {
  test_window w("16C56");
  const view_reading before = read_views(w.view);
  w.view.pick(id::PIC, "16C54");
  EXPECT_EQ(w.chip().cpu.pc, 511);  // was 1023
  EXPECT_EQ(announcement(before, read_views(w.view)), "");
}

TEST(announcer, the_first_look_says_nothing) {
  test_window w;
  announcer ear;
  EXPECT_EQ(ear.news(w.view), "");
  EXPECT_EQ(ear.news(w.view), "");
}

TEST(announcer, each_step_is_told_once) {
  test_window w;
  w.store(0, {0xC05, 0x028});  // MOVLW 05, MOVWF 08
  w.stand_at(0);
  announcer ear;
  EXPECT_EQ(ear.news(w.view), "");
  w.view.click(id::eje1);
  EXPECT_EQ(ear.news(w.view), "PC 001, W 05, sigue MOVWF 08.");
  EXPECT_EQ(ear.news(w.view), "");
  w.view.press(id::eje1);
  EXPECT_EQ(ear.news(w.view), "PC 002, dirección 08 valor 05, sigue sin programar.");
}

TEST(announcer, a_run_says_that_it_starts_and_at_its_end_all_that_it_changed) {
  test_window w;
  w.store(0, {0xC05, 0x028, 0xA01});  // MOVLW 05, MOVWF 08, GOTO 001
  w.stand_at(0);
  announcer ear;
  EXPECT_EQ(ear.news(w.view), "");
  std::vector<std::string> during;
  for (const int turn : {2, 3, 50}) w.desktop.at_turn(turn, [&] { during.push_back(ear.news(w.view)); });
  w.desktop.at_turn(60, [&] { w.view.click(id::ejecutar); });
  w.view.click(id::ejecutar);
  EXPECT_EQ(during, (std::vector<std::string>{"En marcha.", "", ""}));
  // Sixty steps: two, and then the loop of two twenty-nine times.
  EXPECT_EQ(ear.news(w.view), "Parado, PC 002, W 05, dirección 08 valor 05, sigue GOTO 001.");
}

TEST(announcer, a_run_that_ends_at_a_breakpoint_says_so_each_time) {
  test_window w;
  w.store(0, {0xC05, 0x028, 0xA01});  // MOVLW 05, MOVWF 08, GOTO 001
  w.stand_at(0);
  w.view.poke().breakpts[1] = 1;
  announcer ear;
  EXPECT_EQ(ear.news(w.view), "");
  w.view.click(id::ejecutar);
  EXPECT_EQ(ear.news(w.view), "Parado en un punto de parada, PC 001, W 05, sigue MOVWF 08.");
  w.view.click(id::ejecutar);
  EXPECT_EQ(ear.news(w.view), "Parado en un punto de parada, dirección 08 valor 05.");
  // Nothing differs but the cycles.
  w.view.click(id::ejecutar);
  EXPECT_EQ(ear.news(w.view), "Parado en un punto de parada.");
}

}  // namespace
}  // namespace estructura
