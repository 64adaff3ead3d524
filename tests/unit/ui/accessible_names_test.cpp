// What a screen reader says of controls, lines and map, whatever the front end.
#include "ui/accessible_names.h"

#include <gtest/gtest.h>
#include <string>

#include "core/devices.h"
#include "tests/support/test_window.h"

namespace estructura {
namespace {

using support::test_window;

std::string name_of(test_window& w, std::string_view control_name) {
  return accessible_name(w.at(control_name), w.chip().devmodel);
}
std::string description_of(test_window& w, std::string_view control_name) {
  return accessible_description(w.at(control_name), w.chip().devmodel);
}

TEST(accessible_names, everything_that_is_filled_in_is_filled_in) {
  for (const catalogue_row& row : catalogue) {
    const std::string_view device = row.name;
    test_window w(device);
    for (const control& one : w.view.look_all()) {
      const std::string texts = name_of(w, one.name()) + "\n" + description_of(w, one.name());
      EXPECT_EQ(texts.find_first_of("%&"), std::string::npos) << device << " " << one.name() << ": " << texts;
      EXPECT_NE(texts.front(), '\n') << device << " " << one.name();
      EXPECT_NE(texts.back(), '\n') << device << " " << one.name();
    }
  }
}

TEST(accessible_names, a_pin_says_port_bit_and_direction) {
  test_window w;
  EXPECT_EQ(name_of(w, "PA(3)"), "Puerto A, bit 3");
  EXPECT_EQ(name_of(w, "PC(0)"), "Puerto C, bit 0");
  EXPECT_EQ(name_of(w, "BPB"), "Puerto B en binario");
  EXPECT_EQ(description_of(w, "PB(7)"), "Pin de entrada. Marcada, está a 1.");
  w.view.poke().cpu.trisb = 0x7F;
  w.view.refresh();
  EXPECT_EQ(description_of(w, "PB(7)"), "Pin de salida, lo pone el programa.");
  test_window small("12C508");
  EXPECT_EQ(name_of(small, "PB(3)"), "GPIO, bit 3");
  EXPECT_EQ(name_of(small, "TRISB"), "TRIS en binario");
}

TEST(accessible_names, a_caption_is_said_without_the_mark_of_its_key) {
  test_window w;
  EXPECT_EQ(name_of(w, "cargarasm"), "Cargar ASM");
  EXPECT_EQ(name_of(w, "eje1"), "Ejec. 1");
  EXPECT_EQ(description_of(w, "lstatus"), "Nombres de los bits, del 7 al 0: PS2-PS1-PS0-/TO-/PD-Z-D-C.");
}

TEST(accessible_names, only_texts_that_follow_the_record_vary) {
  EXPECT_TRUE(accessible_texts_vary(id::PB));
  EXPECT_TRUE(accessible_texts_vary(id::ejecutar));
  EXPECT_FALSE(accessible_texts_vary(id::ciclos));
  EXPECT_FALSE(accessible_texts_vary(id::RE));
}

TEST(accessible_names, a_line_says_what_it_is_and_its_value) {
  test_window w;
  w.store(0x10, {0xC05});  // MOVLW 05
  w.view.poke().breakpts[0x10] = 1;
  w.view.poke().bankregs[1 * 16 + 2] = 0x3F;
  w.view.poke().cpu.pc = 0x11;
  w.view.refresh();
  EXPECT_EQ(accessible_row(w.view, id::RE, 0, 0), "PC, valor 011");
  EXPECT_EQ(accessible_row(w.view, id::RE, 0, 3), "TRISA, valor F");
  EXPECT_EQ(accessible_row(w.view, id::PIL, 0, 0), "cabeza de la pila, valor 000");
  EXPECT_EQ(accessible_row(w.view, id::PIL, 0, 1), "segundo nivel, valor 000");
  EXPECT_EQ(accessible_row(w.view, id::MDP, 0, 0), "INDF, dirección 00, sin valor propio");
  EXPECT_EQ(accessible_row(w.view, id::MDP, 0, 3), "STATUS, dirección 03, valor 18");
  EXPECT_EQ(accessible_row(w.view, id::MDP, 0, 15), "dirección 0F, valor 00");
  EXPECT_EQ(accessible_row(w.view, id::MD, 1, 2), "dirección 12, banco 1, valor 3F");
  EXPECT_EQ(accessible_row(w.view, id::nombres, 0, 2), "PCL, dirección 02");
  EXPECT_EQ(accessible_row(w.view, id::dirmd, 1, 15), "dirección 1F");
  EXPECT_EQ(accessible_row(w.view, id::nomre, 0, 2), "");
  EXPECT_EQ(accessible_row(w.view, id::RE, 0, -1), "");
  EXPECT_EQ(accessible_row(w.view, id::RE, 0, 6), "");
}

TEST(accessible_names, a_line_of_the_program_says_its_breakpoint_and_whether_it_is_next) {
  test_window w;
  w.view.type(id::direc, "010");
  w.view.type(id::INS, "MOVLW 05");
  w.view.click(id::Entrarins);
  w.view.type(id::direc, "010");
  w.view.click(id::break_);
  EXPECT_EQ(accessible_row(w.view, id::MP, 0, 0x10), "dirección 010, código C05, MOVLW 05, punto de parada");
  EXPECT_EQ(accessible_row(w.view, id::MP, 0, 0x7FF),
            "dirección 7FF, sin programar, la siguiente que se ejecuta");
}

TEST(accessible_names, the_map_says_where_the_program_is_and_how_much_of_it_there_is) {
  map_view map;
  map.scale = 512;
  map.rows[0] = map.rows[1] = map.rows[2] = map_colour::yellow;
  map.rows[3] = map_colour::blue;
  EXPECT_EQ(accessible_map(map),
            "Sin marca de la dirección actual; puntos de parada: 1; otras direcciones programadas: 3.");
  map.marker = 0x1F;
  map.rows[600] = map_colour::yellow;  // below the end of the scale
  EXPECT_EQ(accessible_map(map),
            "Dirección actual 01F; puntos de parada: 1; otras direcciones programadas: 3.");
}

}  // namespace
}  // namespace estructura
