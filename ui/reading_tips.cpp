#include "ui/reading_tips.h"

#include "asm/assembler.h"
#include "core/instructions.h"

namespace estructura {

namespace {

std::string number(int value) {
  const std::string digits = symbol_text(static_cast<std::int16_t>(value));
  return digits.front() >= 'A' ? "0" + digits : digits;
}

std::string tip_of_origin(const odd_reading& reading) {
  const std::string labels = number(reading.value);
  if (!reading.code)
    return "El código va a donde dice la etiqueta, y las que siguen cuentan desde " + labels + ".";
  if (*reading.code == reading.value)
    return "No es un número ni un nombre definido: se lee como " + labels + ".";
  return "El código va a la dirección " + number(*reading.code) +
         ", y las etiquetas que siguen cuentan desde " + labels + ".";
}

std::string tip_of_bit(int word) {
  constexpr int highest_word = 0xFFF;
  const std::string start = "Más de una cifra no es un bit: sale otra instrucción, ";
  return word > highest_word ? "Más de una cifra no es un bit: sale una palabra que no cabe en 12 bits."
                             : start + std::string(row_of(word).mnemonic) + ".";
}

}  // namespace

std::string tip_of(const odd_reading& reading) {
  switch (reading.what) {
    case odd::leading_digits:
      return "EQU lee solo las cifras hexadecimales del principio: se lee como " + number(reading.value) +
             ".";
    case odd::no_digits:
      return "EQU no mira nombres, y al principio no hay cifras hexadecimales: se lee como 0.";
    case odd::name_as_number:
      return "EQU no mira nombres: se lee como el número " + number(reading.value) + ".";
    case odd::origin: return tip_of_origin(reading);
    case odd::no_destination:
      return "No es W, 0, 1 ni un nombre definido: no se lee, y el resultado va al registro.";
    case odd::missing_destination: return "Detrás de la coma no hay nada: el resultado va al registro.";
    case odd::status_bit:
      return std::string("Se lee como un bit de STATUS, ") +
             (reading.value == 0 ? "el 0: el resultado va a W." : "el 1: el resultado va al registro.");
    case odd::other_instruction: return tip_of_bit(reading.value);
    case odd::unknown_number:
      return "Empieza por letra y se busca como nombre, pero no está definido: al ensamblar dará un error. "
             "Como número llevaría un 0 delante.";
    case odd::unknown_name: return "No está definido: no se lee, y al ensamblar dará un error.";
    case odd::unreadable: return "No es un número hexadecimal: no se lee, y al ensamblar dará un error.";
  }
  return {};
}

}  // namespace estructura
