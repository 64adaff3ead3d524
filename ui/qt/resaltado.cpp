#include "ui/qt/resaltado.h"

#include <string>

#include <QString>

#include "asm/ensamblador.h"
#include "common/texto.h"
#include "core/instrucciones.h"
#include "ui/qt/colores.h"

namespace estructura {

namespace {

/// Longer than this is no line of a program, and not worth the time to cut it.
constexpr qsizetype longest_line = 2000;

bool es_blanco(QChar c) {
  return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

/// Part of a line by its two ends.
struct corte {
  qsizetype from;
  qsizetype to;
  [[nodiscard]] bool empty() const { return from >= to; }
};

class cortador {
 public:
  explicit cortador(QStringView line) : line_(line), rest_{0, line.size()} {}

  std::vector<trozo> corta() {
    const qsizetype semicolon = line_.indexOf(QLatin1Char(';'));
    if (semicolon >= 0) rest_.to = semicolon;
    rest_ = ajusta(rest_);
    corta_etiqueta();
    corta_mnemonico();
    corta_operandos();
    if (semicolon >= 0) pon({semicolon, line_.size()}, parte::comentario);
    return std::move(found_);
  }

 private:
  [[nodiscard]] corte ajusta(corte part) const {
    while (!part.empty() && es_blanco(line_[part.from])) ++part.from;
    while (!part.empty() && es_blanco(line_[part.to - 1])) --part.to;
    return part;
  }

  [[nodiscard]] corte primera_palabra(corte part) const {
    corte word{part.from, part.from};
    while (word.to < part.to && !es_blanco(line_[word.to])) ++word.to;
    return word;
  }

  /// As the tables hold it: in upper case.
  [[nodiscard]] std::string palabra(corte part) const {
    return to_upper(line_.mid(part.from, part.to - part.from).toString().toStdString());
  }

  void pon(corte part, parte is) {
    if (!part.empty())
      found_.push_back({static_cast<int>(part.from), static_cast<int>(part.to - part.from), is});
  }

  /// What stands before ":", with it; or the name that EQU defines without one.
  void corta_etiqueta() {
    const qsizetype colon = line_.indexOf(QLatin1Char(':'), rest_.from);
    if (colon >= 0 && colon < rest_.to) {
      pon({rest_.from, colon + 1}, parte::etiqueta);
      rest_ = ajusta({colon + 1, rest_.to});
      return;
    }
    const corte name = primera_palabra(rest_);
    const corte behind = ajusta({name.to, rest_.to});
    if (palabra(primera_palabra(behind)) != directive::equ) return;
    pon(name, parte::etiqueta);
    rest_ = behind;
  }

  void corta_mnemonico() {
    const corte word = primera_palabra(rest_);
    const std::string text = palabra(word);
    if (find_mnemonic(text) != nullptr)
      pon(word, parte::mnemonico);
    else if (is_directive(text))
      pon(word, parte::directiva);
    rest_ = ajusta({word.to, rest_.to});
  }

  void corta_operandos() {
    const qsizetype comma = line_.indexOf(QLatin1Char(','), rest_.from);
    const bool two = comma >= 0 && comma < rest_.to;
    corta_operando({rest_.from, two ? comma : rest_.to});
    if (two) corta_operando({comma + 1, rest_.to});
  }

  /// A number begins with a decimal digit: another text is looked up as a name first.
  void corta_operando(corte part) {
    part = ajusta(part);
    const std::string text = palabra(part);
    if (!text.empty() && text[0] >= '0' && text[0] <= '9' && ishex(text)) pon(part, parte::numero);
  }

  QStringView line_;
  corte rest_;
  std::vector<trozo> found_;
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

}  // namespace

std::vector<trozo> analiza(QStringView line) {
  if (line.size() > longest_line) return {};
  return cortador(line).corta();
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
  fondo_margen = mezcla(text, base, margin_share);
  numero_margen = legible(mezcla(text, base, number_share), fondo_margen);
  numero_actual = legible(text, fondo_margen);
}

}  // namespace estructura
