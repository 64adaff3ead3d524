#include "ui/qt/resaltado.h"

#include <QByteArray>
#include <QString>

#include "ui/highlight.h"
#include "ui/qt/colores.h"
#include "ui/reading_tips.h"

namespace estructura {

namespace {

/// More than this before the comment is no line of a program, and not worth the time to cut it.
constexpr qsizetype longest_code = 2000;

/// A line of the widget in UTF-8, and the way back from its bytes to the widget's units. What belongs to no
/// program line is left out: the text is empty then.
class utf8_line {
 public:
  explicit utf8_line(QStringView line) {
    // A comment that begins any later makes no difference.
    const bool has_comment = line.left(longest_code + 1).contains(QLatin1Char(';'));
    if (line.size() > longest_code && !has_comment) return;
    text_ = line.toUtf8();
    ascii_ = text_.size() == line.size();
  }

  [[nodiscard]] std::string_view text() const {
    return {text_.constData(), static_cast<std::size_t>(text_.size())};
  }
  [[nodiscard]] int unit(std::size_t byte) const {
    if (ascii_) return static_cast<int>(byte);
    int units = 0;
    for (const char c : text().substr(0, byte)) {
      const auto value = static_cast<unsigned char>(c);
      // The first byte of a letter counts it; one of four bytes takes two units.
      if ((value & 0xC0U) != 0x80U) units += value >= 0xF0U ? 2 : 1;
    }
    return units;
  }

 private:
  QByteArray text_;
  bool ascii_ = false;
};

/// The pure colour of each part, before it is made legible; far enough apart to be told without green and
/// red.
constexpr std::array<QRgb, partes> puros = {
    0xFFB06000,  // etiqueta: orange
    0xFF2070E0,  // mnemonico: blue
    0xFF9040D0,  // directiva: violet
    0xFF008878,  // numero: blue-green
    0xFF6A7A6A,  // comentario: grey
};
constexpr QRgb puro_error = 0xFFD02020;
constexpr QRgb pure_underline = 0xFFE00070;

}  // namespace

std::vector<trozo> analiza(QStringView line) {
  const utf8_line text(line);
  std::vector<trozo> found;
  for (const source_piece& piece : highlight(text.text())) {
    const int start = text.unit(piece.start);
    found.push_back({start, text.unit(piece.start + piece.length) - start, static_cast<parte>(piece.is)});
  }
  return found;
}

std::vector<odd_part> odd_parts(QStringView line, const name_table& names) {
  const utf8_line text(line);
  std::vector<odd_part> found;
  for (const odd_reading& r : odd_readings(text.text(), names)) {
    const int start = text.unit(r.where.from);
    found.push_back({start, text.unit(r.where.to) - start, QString::fromStdString(tip_of(r))});
  }
  return found;
}

std::optional<definition> definition_in(QStringView line) {
  return definition_in(utf8_line(line).text());
}

colores_fuente::colores_fuente(const QPalette& palette) {
  const QColor base = palette.color(QPalette::Active, QPalette::Base);
  const QColor text = palette.color(QPalette::Active, QPalette::Text);
  constexpr double error_share = 0.14;
  constexpr double margin_share = 0.05;
  constexpr double number_share = 0.6;
  sello_error = legible(QColor(puro_error), base);
  numero_error = legible(base, sello_error);
  fondo_error = mezcla(sello_error, base, error_share);
  for (std::size_t i = 0; i < partes; ++i) letras[i] = legible(legible(QColor(puros[i]), base), fondo_error);
  underline = legible(legible(QColor(pure_underline), base), fondo_error);
  fondo_margen = mezcla(text, base, margin_share);
  numero_margen = legible(mezcla(text, base, number_share), fondo_margen);
  numero_actual = legible(text, fondo_margen);
}

}  // namespace estructura
