#include "common/number.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "common/fault.h"

namespace estructura {

namespace {

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

int hex_digit(char c) {
  if (is_digit(c)) return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

std::string without_blanks(std::string_view text) {
  std::string out;
  for (const char c : text)
    if (c != ' ' && c != '\t' && c != '\r' && c != '\n') out.push_back(c);
  return out;
}

double marked_hex(std::string_view digits) {
  if (const auto value = valhex_checked(digits)) return *value;
  double value = 0;
  for (std::size_t i = 0; i < digits.size() && hex_digit(digits[i]) >= 0; ++i)
    value = value * 16 + hex_digit(digits[i]);
  return value;
}

// The exponent behind "E" or "D" at `at`, 0 when none stands there. Kept within what a double can show.
int exponent_at(std::string_view text, std::size_t at) {
  if (at >= text.size()) return 0;
  const char mark = text[at];
  if (mark != 'e' && mark != 'E' && mark != 'd' && mark != 'D') return 0;
  ++at;
  bool negative = false;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) negative = text[at++] == '-';
  int value = 0;
  for (; at < text.size() && is_digit(text[at]); ++at)
    if (value < 10000) value = value * 10 + (text[at] - '0');
  return negative ? -value : value;
}

}  // namespace

double valdec(std::string_view typed) {
  const std::string text = without_blanks(typed);
  if (text.size() >= 2 && text[0] == '&' && (text[1] == 'h' || text[1] == 'H'))
    return marked_hex(std::string_view(text).substr(2));
  std::size_t i = 0;
  bool negative = false;
  if (!text.empty() && (text[0] == '+' || text[0] == '-')) negative = text[i++] == '-';
  std::string digits;
  int scale = 0;
  for (; i < text.size() && is_digit(text[i]); ++i) digits.push_back(text[i]);
  if (i < text.size() && text[i] == '.') {
    for (++i; i < text.size() && is_digit(text[i]); ++i, --scale) digits.push_back(text[i]);
  }
  if (digits.empty()) return 0;
  // The library's own conversion rounds once; digits and exponent are handed over in a form it reads whatever
  // the locale, with no decimal point.
  const std::string plain = digits + "e" + std::to_string(scale + exponent_at(text, i));
  double value = 0;
  try {
    value = std::stod(plain);
  } catch (const std::out_of_range&) {
    // Which of the two it was shows in the place of the first figure that is not 0.
    const std::size_t zeros = std::min(digits.find_first_not_of('0'), digits.size());
    const int places = static_cast<int>(digits.size() - zeros);
    const bool tiny = places + scale + exponent_at(text, i) < 0;
    value = tiny ? 0.0 : std::numeric_limits<double>::infinity();
  }
  return negative ? -value : value;
}

std::optional<std::int16_t> valhex_checked(std::string_view text) {
  std::int32_t value = 0;
  for (const char c : text) {
    const int digit = hex_digit(c);
    if (digit < 0) break;
    value = value * 16 + digit;
    if (value > 0xFFFF) return std::nullopt;
  }
  return static_cast<std::int16_t>(static_cast<std::uint16_t>(value));
}

std::int16_t valhex(std::string_view text) {
  const auto value = valhex_checked(text);
  if (!value) throw_fault("hexadecimal number of more than 16 bits");
  return *value;
}

}  // namespace estructura
