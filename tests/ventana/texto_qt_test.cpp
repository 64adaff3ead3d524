#include "ui/qt/texto_qt.h"

#include <gtest/gtest.h>

namespace estructura {
namespace {

struct lugar_de_texto {
  const char* text;
  int character;
  int unit;
};

// The letter of four bytes takes two units of a widget.
constexpr lugar_de_texto places[] = {
    {"", 0, 0},
    {"uno", 0, 0},
    {"uno", 3, 3},
    {"uno\r\ndos", 3, 3},
    {"uno\r\ndos", 5, 4},
    {"uno\r\ndos", 8, 7},
    {"\r\n\r\n", 2, 1},
    {"\r\n\r\n", 4, 2},
    {"añó\r\nb", 3, 3},
    {"añó\r\nb", 5, 4},
    {"a\xF0\x9D\x84\x9E"
     "b",
     1, 1},
    {"a\xF0\x9D\x84\x9E"
     "b",
     2, 3},
    {"a\xF0\x9D\x84\x9E"
     "b",
     3, 4},
    {"a\nb", 2, 2},
    {"a\rb", 2, 2},
};

TEST(texto_qt, a_character_and_its_unit_name_the_same_place) {
  for (const lugar_de_texto& place : places) {
    EXPECT_EQ(unidad_de_caracter(place.text, place.character), place.unit)
        << place.text << " at " << place.character;
    EXPECT_EQ(caracter_de_unidad(place.text, place.unit), place.character)
        << place.text << " unit " << place.unit;
  }
}

TEST(texto_qt, a_character_within_a_line_end_is_the_place_before_it) {
  EXPECT_EQ(unidad_de_caracter("uno\r\ndos", 4), 3);
}

TEST(texto_qt, a_place_past_the_end_is_the_end) {
  EXPECT_EQ(unidad_de_caracter("a\r\nb", 99), 3);
  EXPECT_EQ(caracter_de_unidad("a\r\nb", 99), 4);
}

TEST(texto_qt, every_line_end_of_a_widget_becomes_cr_lf) {
  EXPECT_EQ(de_qt(QStringLiteral("a\nb")), "a\r\nb");
  EXPECT_EQ(de_qt(QStringLiteral("a\r\nb\rc")), "a\r\nb\r\nc");
  EXPECT_EQ(de_qt(QStringLiteral("a\u2029b\u2028c")), "a\r\nb\r\nc");
}

TEST(texto_qt, a_text_comes_back_as_it_went) {
  for (const char* text : {"", "uno", "uno\r\ndos\r\n", "\r\n", "año 'ñ' \xF0\x9D\x84\x9E\r\n fin"})
    EXPECT_EQ(de_qt(a_qt(text)), text);
}

}  // namespace
}  // namespace estructura
