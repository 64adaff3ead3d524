// What is said of an operand that is read as something else than it looks.
#include "ui/reading_tips.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace estructura {
namespace {

struct tip_row {
  std::string_view line;
  bool with_names;  // X, of value 40, and the label L are defined besides
  const char* tip;
};

TEST(tip_of, says_what_the_operand_is_read_as) {
  const std::vector<tip_row> rows = {
      {"K EQU 0x10", false, "EQU lee solo las cifras hexadecimales del principio: se lee como 0."},
      {"K EQU B+1", false, "EQU lee solo las cifras hexadecimales del principio: se lee como 0B."},
      {"K EQU 0F0h", false, "EQU lee solo las cifras hexadecimales del principio: se lee como 0F0."},
      {"K EQU H'08'", false,
       "EQU no mira nombres, y al principio no hay cifras hexadecimales: se lee como 0."},
      {"K EQU C", true, "EQU no mira nombres: se lee como el número 0C."},
      {"ORG 0x100", true, "No es un número ni un nombre definido: se lee como 0."},
      {"ORG B+1", true, "El código va a la dirección 0, y las etiquetas que siguen cuentan desde 0B."},
      {"ORG X", true, "El código va a la dirección 40, y las etiquetas que siguen cuentan desde 0."},
      {"ORG L", true, "El código va a donde dice la etiqueta, y las que siguen cuentan desde 0."},
      {"ADDWF X,F", true, "No es W, 0, 1 ni un nombre definido: no se lee, y el resultado va al registro."},
      {"ADDWF X,", true, "Detrás de la coma no hay nada: el resultado va al registro."},
      {"ADDWF 3,C", false, "Se lee como un bit de STATUS, el 0: el resultado va a W."},
      {"ADDWF 3,DC", false, "Se lee como un bit de STATUS, el 1: el resultado va al registro."},
      {"BCF 5,12", false, "Más de una cifra no es un bit: sale otra instrucción, BTFSC."},
      {"BCF 5,234", false, "Más de una cifra no es un bit: sale una palabra que no cabe en 12 bits."},
      {"MOVLW FF", true,
       "Empieza por letra y se busca como nombre, pero no está definido: al ensamblar dará un error. Como "
       "número "
       "llevaría un 0 delante."},
      {"GOTO FIN", false, "No está definido: no se lee, y al ensamblar dará un error."},
      {"MOVLW 10H", false, "No es un número hexadecimal: no se lee, y al ensamblar dará un error."},
  };
  for (const tip_row& row : rows) {
    name_table names;
    if (row.with_names)
      for (const char* const line : {"X EQU 40", "L: NOP", "C EQU 0"}) names.add(*definition_in(line));
    if (const auto made = definition_in(row.line)) names.add(*made);
    const auto found = odd_readings(row.line, names);
    ASSERT_EQ(found.size(), 1U) << row.line;
    EXPECT_EQ(tip_of(found[0]), row.tip) << row.line;
  }
}

}  // namespace
}  // namespace estructura
