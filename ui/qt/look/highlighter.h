// The colours of a source: which parts of a line are label, mnemonic, directive, number and comment, cut as
// the assembler cuts them, which operands are read as something else than they look, and in which colours all
// that is shown.
//
//   coloured_parts(u"BUCLE: MOVLW 0F ; cuenta")
//       -> {0, 6, label}, {7, 5, mnemonic}, {13, 2, number}, {16, 8, comment}
//   odd_parts(u"X EQU 0x10", names)
//       -> {6, 4, "EQU lee solo las cifras hexadecimales del principio: se lee como 0."}
//   const source_colours colours(palette);
//   colours.of(source_part::label)
//
// To be coloured a line needs no other line. What is a mnemonic is for the instruction table to say, what a
// directive or an odd operand for the assembler's room. Not told: operands that are read and do not fit.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include <QColor>
#include <QPalette>
#include <QString>
#include <QStringView>

#include "asm/odd_readings.h"
#include "ui/highlight.h"

namespace estructura {

inline constexpr std::size_t source_parts = 5;

/// A part of a line, in units of the widget's text.
struct coloured_part {
  int start;
  int length;
  source_part is;
  bool operator==(const coloured_part&) const = default;
};

/// The parts of one line, from left to right. A line longer than any statement, before its comment, has none,
/// no odd operands and no definition.
[[nodiscard]] std::vector<coloured_part> coloured_parts(QStringView line);

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
struct source_colours {
  explicit source_colours(const QPalette& palette);

  [[nodiscard]] const QColor& of(source_part what) const { return of_part[static_cast<std::size_t>(what)]; }

  std::array<QColor, source_parts> of_part;
  QColor error_ground;         ///< ground of the line with the error
  QColor error_number_ground;  ///< ground of its number, which is written in `error_number`
  QColor error_number;
  QColor margin_ground;  ///< ground of the line numbers
  QColor margin_number;
  QColor current_number;  ///< of the line with the caret
  QColor underline;       ///< of an operand that is read as something else
};

}  // namespace estructura
