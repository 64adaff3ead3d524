#include "ui/qt/text/text_conversion.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "common/text.h"

namespace estructura {

namespace {

/// What a document takes for a line end of its own, and what it holds instead: characters that no text may
/// hold, since Unicode keeps them for use within programs.
constexpr std::pair<char16_t, char16_t> stand_ins[] = {
    {0x2028, 0xFDD8}, {0x2029, 0xFDD9}, {0xFDD0, 0xFDDA}, {0xFDD1, 0xFDDB}};

/// Every line end as CR LF; `separators` are ends too, as a document holds them.
QString with_crlf(const QString& text, bool separators) {
  QString lines;
  lines.reserve(text.size() + text.size() / 16);
  for (qsizetype at = 0; at < text.size(); ++at) {
    const QChar c = text[at];
    const bool feed = c == QLatin1Char('\n');
    if (feed && at > 0 && text[at - 1] == QLatin1Char('\r')) continue;
    const bool line_end = feed || c == QLatin1Char('\r') ||
                          (separators && (c == QChar::ParagraphSeparator || c == QChar::LineSeparator));
    if (line_end)
      lines += QLatin1String("\r\n");
    else
      lines += c;
  }
  return lines;
}

/// One character of the record's text: how far it reaches in each of the three countings.
struct text_step {
  std::size_t bytes;
  int characters;
  int units;
};

text_step step_at(std::string_view text, std::size_t at) {
  if (text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n') return {2, 2, 1};
  const std::size_t bytes = char_length(text, at);
  // What lies beyond the first 65,536 code points takes a pair of UTF-16 units.
  return {bytes, 1, bytes == 4 ? 2 : 1};
}

/// Byte of the record's text at which a unit stands.
std::size_t byte_of_unit(std::string_view text, int unit) {
  std::size_t at = 0;
  for (int units = 0; at < text.size() && units < unit;) {
    const text_step one = step_at(text, at);
    at += one.bytes;
    units += one.units;
  }
  return at;
}

/// Whether a text may be cut there: not within a character, nor within a line end.
bool may_be_cut(std::string_view text, std::size_t at) {
  if (at == 0 || at >= text.size()) return true;
  return !is_continuation(text[at]) && !(text[at - 1] == '\r' && text[at] == '\n');
}

}  // namespace

QString to_qt(std::string_view text) {
  QString result = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  // The string is shortened where it stands: one by one its line ends would be moved over and over.
  qsizetype kept = 0;
  for (qsizetype at = 0; at < result.size(); ++at) {
    const bool line_end =
        result[at] == QLatin1Char('\r') && at + 1 < result.size() && result[at + 1] == QLatin1Char('\n');
    if (!line_end) result[kept++] = result[at];
  }
  result.truncate(kept);
  return result;
}

std::string from_qt(const QString& text) {
  return with_crlf(text, false).toStdString();
}

QString to_document(std::string_view text) {
  QString result = to_qt(text);
  for (const auto& [meant, held] : stand_ins) result.replace(QChar(meant), QChar(held));
  return result;
}

std::string from_document(const QString& text) {
  return without_stand_ins(with_crlf(text, true)).toStdString();
}

QString without_stand_ins(QString text) {
  for (const auto& [meant, held] : stand_ins) text.replace(QChar(held), QChar(meant));
  return text;
}

int unit_of_char(std::string_view text, int character) {
  int characters = 0;
  int units = 0;
  for (std::size_t at = 0; at < text.size() && characters < character;) {
    const text_step one = step_at(text, at);
    at += one.bytes;
    characters += one.characters;
    // Between CR and LF there is no place in a widget: it is the place before both.
    if (characters > character) break;
    units += one.units;
  }
  return units;
}

int char_of_unit(std::string_view text, int unit) {
  int characters = 0;
  int units = 0;
  for (std::size_t at = 0; at < text.size() && units < unit;) {
    const text_step one = step_at(text, at);
    at += one.bytes;
    units += one.units;
    characters += one.characters;
  }
  return characters;
}

int unit_count(std::string_view text) {
  int units = 0;
  for (std::size_t at = 0; at < text.size();) {
    const text_step one = step_at(text, at);
    at += one.bytes;
    units += one.units;
  }
  return units;
}

text_change change_between(std::string_view before, std::string_view after, int caret) {
  const std::size_t shorter = std::min(before.size(), after.size());
  const auto head = static_cast<std::size_t>(
      std::mismatch(before.begin(), before.begin() + static_cast<std::ptrdiff_t>(shorter), after.begin())
          .first -
      before.begin());
  std::size_t tail = 0;
  while (tail < shorter && before[before.size() - 1 - tail] == after[after.size() - 1 - tail]) ++tail;
  // Where head and tail overlap, something was only put in or only taken out, anywhere between the two.
  std::size_t start = head;
  if (head + tail > shorter) start = std::clamp(byte_of_unit(before, caret), shorter - tail, head);
  tail = std::min(tail, shorter - start);
  while (!may_be_cut(before, start) || !may_be_cut(after, start)) --start;
  while (!may_be_cut(before, before.size() - tail) || !may_be_cut(after, after.size() - tail)) --tail;
  const std::string_view old = before.substr(start, before.size() - tail - start);
  const int first = unit_count(before.substr(0, start));
  return {first, first + unit_count(old), to_document(after.substr(start, after.size() - tail - start))};
}

}  // namespace estructura
