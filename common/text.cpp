#include "common/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <locale>
#include <stdexcept>

namespace estructura {

namespace {

struct decoded {
  char32_t point = 0;
  std::size_t length = 1;
  bool valid = false;
};

// One code point at `at`. Overlong forms, surrogates and values past U+10FFFF are invalid and one byte long.
decoded decode_at(std::string_view text, std::size_t at) {
  const auto lead = static_cast<unsigned char>(text[at]);
  if (lead < 0x80) return {lead, 1, true};
  std::size_t length = 0;
  char32_t point = 0;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
    point = lead & 0x1FU;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    point = lead & 0x0FU;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    point = lead & 0x07U;
  } else {
    return {lead, 1, false};
  }
  if (at + length > text.size()) return {lead, 1, false};
  for (std::size_t i = 1; i < length; ++i) {
    if (!is_continuation(text[at + i])) return {lead, 1, false};
    point = (point << 6U) | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
  }
  const bool overlong = (length == 3 && point < 0x800) || (length == 4 && point < 0x10000);
  if (overlong || point > 0x10FFFF || (point >= 0xD800 && point <= 0xDFFF)) return {lead, 1, false};
  return {point, length, true};
}

void append_utf8(std::string& out, char32_t point) {
  const auto byte = [&out](char32_t value) { out.push_back(static_cast<char>(value)); };
  if (point < 0x80) {
    byte(point);
  } else if (point < 0x800) {
    byte(0xC0U | (point >> 6U));
    byte(0x80U | (point & 0x3FU));
  } else if (point < 0x10000) {
    byte(0xE0U | (point >> 12U));
    byte(0x80U | ((point >> 6U) & 0x3FU));
    byte(0x80U | (point & 0x3FU));
  } else {
    byte(0xF0U | (point >> 18U));
    byte(0x80U | ((point >> 12U) & 0x3FU));
    byte(0x80U | ((point >> 6U) & 0x3FU));
    byte(0x80U | (point & 0x3FU));
  }
}

// The C library's table of all scripts, whatever the desktop's language; where a system lacks it, ASCII's.
const std::ctype<wchar_t>& letters() {
  static const std::locale locale = [] {
    try {
      return std::locale("C.UTF-8");
    } catch (const std::runtime_error&) {
      return std::locale::classic();
    }
  }();
  return std::use_facet<std::ctype<wchar_t>>(locale);
}

char32_t upper_point(char32_t c) {
  if (c >= U'a' && c <= U'z') return c - 32;
  return c < 0x80 ? c : static_cast<char32_t>(letters().toupper(static_cast<wchar_t>(c)));
}

char32_t lower_point(char32_t c) {
  if (c >= U'A' && c <= U'Z') return c + 32;
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
  return c <= 0xFF ? c : static_cast<char32_t>(letters().tolower(static_cast<wchar_t>(c)));
}

template <class Map>
std::string map_points(std::string_view text, Map map) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const decoded d = decode_at(text, i);
    if (d.valid)
      append_utf8(out, map(d.point));
    else
      out.push_back(text[i]);
    i += d.length;
  }
  return out;
}

// Windows-1252, bytes 80..9F (the code page's published table); 0 where it leaves a byte open.
constexpr std::array<std::uint16_t, 32> cp1252_high = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

}  // namespace

std::string hexstr(int value, int digits) {
  constexpr std::string_view figures = "0123456789ABCDEF";
  const auto bits = static_cast<unsigned>(value) & 0xFFFFU;
  std::string out(static_cast<std::size_t>(std::clamp(digits, 0, 4)), '0');
  unsigned rest = bits;
  for (auto it = out.rbegin(); it != out.rend(); ++it, rest >>= 4U) *it = figures[rest & 15U];
  return out;
}

std::string nomfic(std::string_view path) {
  const std::size_t cut = path.find_last_of("\\/");
  return std::string(cut == std::string_view::npos ? path : path.substr(cut + 1));
}

bool ishex(std::string_view text, std::string_view extra) {
  return std::all_of(text.begin(), text.end(), [extra](char c) {
    const char up = (c >= 'a' && c <= 'z') ? static_cast<char>(c - 32) : c;
    return (up >= '0' && up <= '9') || (up >= 'A' && up <= 'F') || extra.find(up) != std::string_view::npos;
  });
}

std::string to_upper(std::string_view text) {
  return map_points(text, upper_point);
}
std::string to_lower(std::string_view text) {
  return map_points(text, lower_point);
}

std::string_view trim(std::string_view text, std::string_view blanks) {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::size_t char_length(std::string_view utf8, std::size_t at) {
  return decode_at(utf8, at).length;
}

std::size_t char_count(std::string_view utf8) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < utf8.size(); ++count) i += decode_at(utf8, i).length;
  return count;
}

std::size_t byte_of_char(std::string_view utf8, std::size_t position) {
  std::size_t i = 0;
  for (; position > 0 && i < utf8.size(); --position) i += decode_at(utf8, i).length;
  return i;
}

bool is_valid_utf8(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size();) {
    const decoded d = decode_at(bytes, i);
    if (!d.valid) return false;
    i += d.length;
  }
  return true;
}

std::string from_windows1252(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 8);
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    char32_t point = byte;
    if (byte >= 0x80 && byte <= 0x9F && cp1252_high[byte - 0x80U] != 0) point = cp1252_high[byte - 0x80U];
    append_utf8(out, point);
  }
  return out;
}

bool to_windows1252(std::string_view utf8, std::string& bytes) {
  bytes.clear();
  for (std::size_t i = 0; i < utf8.size();) {
    const decoded d = decode_at(utf8, i);
    i += d.length;
    const auto high = std::find(cp1252_high.begin(), cp1252_high.end(), d.point);
    if (d.valid && d.point >= 0x80 && high != cp1252_high.end()) {
      bytes.push_back(static_cast<char>(0x80 + (high - cp1252_high.begin())));
    } else if (d.valid && d.point <= 0xFF &&
               (d.point < 0x80 || d.point > 0x9F || cp1252_high[d.point - 0x80] == 0)) {
      bytes.push_back(static_cast<char>(d.point));
    } else {
      bytes.clear();
      return false;
    }
  }
  return true;
}

}  // namespace estructura
