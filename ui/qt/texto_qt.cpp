#include "ui/qt/texto_qt.h"

#include <cstddef>

namespace estructura {

namespace {

/// One character of the record's text: how far it reaches in each of the three countings.
struct paso {
  std::size_t bytes;
  int characters;
  int units;
};

paso paso_en(std::string_view text, std::size_t at) {
  const auto lead = static_cast<unsigned char>(text[at]);
  if (lead == '\r' && at + 1 < text.size() && text[at + 1] == '\n') return {2, 2, 1};
  std::size_t bytes = 1;
  if (lead >= 0xF0) {
    bytes = 4;
  } else if (lead >= 0xE0) {
    bytes = 3;
  } else if (lead >= 0xC0) {
    bytes = 2;
  }
  if (at + bytes > text.size()) bytes = text.size() - at;
  // What lies beyond the first 65,536 code points takes a pair of UTF-16 units.
  return {bytes, 1, bytes == 4 ? 2 : 1};
}

}  // namespace

QString a_qt(std::string_view text) {
  QString result = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  result.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  return result;
}

std::string de_qt(const QString& text) {
  QString lines = text;
  lines.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  lines.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
  lines.replace(QChar::LineSeparator, QLatin1Char('\n'));
  lines.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  lines.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
  return lines.toStdString();
}

int unidad_de_caracter(std::string_view text, int character) {
  int characters = 0;
  int units = 0;
  for (std::size_t at = 0; at < text.size() && characters < character;) {
    const paso one = paso_en(text, at);
    at += one.bytes;
    characters += one.characters;
    // Between CR and LF there is no place in a widget: it is the place before both.
    if (characters > character) break;
    units += one.units;
  }
  return units;
}

int caracter_de_unidad(std::string_view text, int unit) {
  int characters = 0;
  int units = 0;
  for (std::size_t at = 0; at < text.size() && units < unit;) {
    const paso one = paso_en(text, at);
    at += one.bytes;
    units += one.units;
    characters += one.characters;
  }
  return characters;
}

}  // namespace estructura
