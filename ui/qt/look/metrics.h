// The measures of the instrument panel, all from font metrics so that it is the same panel at any font and
// scale.
//
//   const panel_metrics m(font());
//   label->setFixedSize(m.cell_width(8), m.row_height);
#pragma once

#include <algorithm>
#include <cmath>

#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>
#include <QString>

namespace estructura {

struct panel_metrics {
  QFont mono;        ///< of values, lists and sources: the system's fixed font at the size of the rest
  int char_width;    ///< width of one of its characters
  int row_height;    ///< height of a list line, and of the labels that stand beside one
  int gap;           ///< gap between neighbours
  int field_height;  ///< height of an entry of one line, and of the labels framed like one

  explicit panel_metrics(const QFont& base) : mono(QFontDatabase::systemFont(QFontDatabase::FixedFont)) {
    mono.setPointSizeF(base.pointSizeF());
    const QFontMetrics metrics(mono);
    char_width = metrics.horizontalAdvance(QLatin1Char('0'));
    // Fonts differ much in the room they ask for above and below their letters; the panel is dense with all.
    constexpr double of_letter = 1.34;
    row_height = static_cast<int>(std::lround(QFontInfo(mono).pixelSize() * of_letter));
    gap = std::max(3, row_height / 3);
    field_height = row_height + gap + 1;
  }

  /// Width of so many characters of the fixed font; a character by itself may not be whole pixels wide.
  [[nodiscard]] int text_width(int characters) const {
    return QFontMetrics(mono).horizontalAdvance(QString(characters, QLatin1Char('0')));
  }
  /// The same with half a character of room at either side.
  [[nodiscard]] int cell_width(int characters) const { return text_width(characters) + char_width; }
};

}  // namespace estructura
