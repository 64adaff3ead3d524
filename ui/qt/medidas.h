// The measures of the instrument panel, all from font metrics so that it is the same panel at any font and
// scale.
//
//   const medidas m(font());
//   label->setFixedSize(m.celda(8), m.fila);
#pragma once

#include <algorithm>
#include <cmath>

#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>
#include <QString>

namespace estructura {

struct medidas {
  QFont mono;  ///< of values, lists and sources: the system's fixed font at the size of the rest
  int letra;   ///< width of one of its characters
  int fila;    ///< height of a list line, and of the labels that stand beside one
  int hueco;   ///< gap between neighbours
  int campo;   ///< height of an entry of one line, and of the labels framed like one

  explicit medidas(const QFont& base) : mono(QFontDatabase::systemFont(QFontDatabase::FixedFont)) {
    mono.setPointSizeF(base.pointSizeF());
    const QFontMetrics metrics(mono);
    letra = metrics.horizontalAdvance(QLatin1Char('0'));
    // Fonts differ much in the room they ask for above and below their letters; the panel is dense with all.
    constexpr double of_letter = 1.34;
    fila = static_cast<int>(std::lround(QFontInfo(mono).pixelSize() * of_letter));
    hueco = std::max(3, fila / 3);
    campo = fila + hueco + 1;
  }

  /// Width of so many characters of the fixed font; a character by itself may not be whole pixels wide.
  [[nodiscard]] int ancho(int characters) const {
    return QFontMetrics(mono).horizontalAdvance(QString(characters, QLatin1Char('0')));
  }
  /// The same with half a character of room at either side.
  [[nodiscard]] int celda(int characters) const { return ancho(characters) + letra; }
};

}  // namespace estructura
