// The colours of a source: which parts of a line are label, mnemonic, directive, number and comment, cut as
// the assembler cuts them, and in which colours they are shown.
//
//   analiza(u"BUCLE: MOVLW 0F ; cuenta")
//       -> {0, 6, etiqueta}, {7, 5, mnemonico}, {13, 2, numero}, {16, 8, comentario}
//   const colores_fuente colours(palette);
//   colours.de(parte::etiqueta)
//
// A line needs no other line to be understood. What is a mnemonic is for the instruction table to say, and
// what a directive for the assembler. Not told: names that nobody defines, and operands that do not fit.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <QColor>
#include <QPalette>
#include <QStringView>

namespace estructura {

enum class parte : std::uint8_t { etiqueta, mnemonico, directiva, numero, comentario };
inline constexpr std::size_t partes = 5;

/// A part of a line, in units of the widget's text.
struct trozo {
  int start;
  int length;
  parte is;
  bool operator==(const trozo&) const = default;
};

/// The parts of one line, from left to right. A line longer than any statement has none.
[[nodiscard]] std::vector<trozo> analiza(QStringView line);

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
};

}  // namespace estructura
