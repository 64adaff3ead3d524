// The colours of a source: which parts of a line are label, mnemonic, directive, number and comment, cut as
// the assembler cuts them, which operands are read as something else than they look, and in which colours all
// that is shown.
//
//   analiza(u"BUCLE: MOVLW 0F ; cuenta")
//       -> {0, 6, etiqueta}, {7, 5, mnemonico}, {13, 2, numero}, {16, 8, comentario}
//   odd_parts(u"X EQU 0x10", names)
//       -> {6, 4, "EQU lee solo las cifras hexadecimales del principio: se lee como 0."}
//   const colores_fuente colours(palette);
//   colours.de(parte::etiqueta)
//
// To be coloured a line needs no other line. What is a mnemonic is for the instruction table to say, what a
// directive or an odd operand for the assembler's room. Not told: operands that are read and do not fit.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include <QColor>
#include <QPalette>
#include <QString>
#include <QStringView>

#include "asm/odd_readings.h"

namespace estructura {

/// In the order of source_part.
enum class parte : std::uint8_t { etiqueta, mnemonico, directiva, numero, comentario };
inline constexpr std::size_t partes = 5;

/// A part of a line, in units of the widget's text.
struct trozo {
  int start;
  int length;
  parte is;
  bool operator==(const trozo&) const = default;
};

/// The parts of one line, from left to right. A line longer than any statement, before its comment, has none,
/// no odd operands and no definition.
[[nodiscard]] std::vector<trozo> analiza(QStringView line);

/// An operand to be underlined, in units of the widget's text, and what is to be said of it.
struct odd_part {
  int start;
  int length;
  QString tip;
  bool operator==(const odd_part&) const = default;
};

/// The operands of one line that are read as something else than they look, beside the names of the source.
[[nodiscard]] std::vector<odd_part> odd_parts(QStringView line, const name_table& names);

/// What a line of the widget's text defines.
[[nodiscard]] std::optional<definition> definition_in(QStringView line);

/// Every colour of the editor, from the palette's. Each can be read on the text's ground and on that of the
/// line with the error.
struct colores_fuente {
  explicit colores_fuente(const QPalette& palette);

  [[nodiscard]] const QColor& de(parte what) const { return letras[static_cast<std::size_t>(what)]; }

  std::array<QColor, partes> letras;
  QColor fondo_error;  ///< ground of the line with the error
  QColor sello_error;  ///< ground of its number, which is written in `numero_error`
  QColor numero_error;
  QColor fondo_margen;  ///< ground of the line numbers
  QColor numero_margen;
  QColor numero_actual;  ///< of the line with the caret
  QColor underline;      ///< of an operand that is read as something else
};

}  // namespace estructura
