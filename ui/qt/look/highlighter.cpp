#include "ui/qt/look/highlighter.h"

#include <QByteArray>
#include <QString>

#include "ui/qt/look/colours.h"
#include "ui/qt/text/text_conversion.h"
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
    return unit_count(text().substr(0, byte));
  }

 private:
  QByteArray text_;
  bool ascii_ = false;
};

/// The pure colour of each part, before it is made legible; far enough apart to be told without green and
/// red.
constexpr std::array<QRgb, source_parts> pure_colours = {
    0xFFB06000,  // label: orange
    0xFF2070E0,  // mnemonic: blue
    0xFF9040D0,  // directive: violet
    0xFF008878,  // number: blue-green
    0xFF6A7A6A,  // comment: grey
};
constexpr QRgb pure_error = 0xFFD02020;
constexpr QRgb pure_underline = 0xFFE00070;

}  // namespace

std::vector<coloured_part> coloured_parts(QStringView line) {
  const utf8_line text(line);
  std::vector<coloured_part> found;
  for (const source_piece& piece : highlight(text.text())) {
    const int start = text.unit(piece.start);
    found.push_back({start, text.unit(piece.start + piece.length) - start, piece.is});
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

source_colours::source_colours(const QPalette& palette) {
  const QColor base = palette.color(QPalette::Active, QPalette::Base);
  const QColor text = palette.color(QPalette::Active, QPalette::Text);
  constexpr double error_share = 0.14;
  constexpr double margin_share = 0.05;
  constexpr double number_share = 0.6;
  error_number_ground = readable(QColor(pure_error), base);
  error_number = readable(base, error_number_ground);
  error_ground = mix(error_number_ground, base, error_share);
  for (std::size_t i = 0; i < source_parts; ++i)
    of_part[i] = readable(readable(QColor(pure_colours[i]), base), error_ground);
  underline = readable(readable(QColor(pure_underline), base), error_ground);
  margin_ground = mix(text, base, margin_share);
  margin_number = readable(mix(text, base, number_share), margin_ground);
  current_number = readable(text, margin_ground);
}

}  // namespace estructura
