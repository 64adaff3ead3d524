// Text helpers: hexadecimal texts, names of files, upper and lower case, characters and bytes.
#include "common/text.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "common/file.h"

namespace estructura {
namespace {

TEST(hexstr, is_the_last_digits_of_the_padded_number) {
  struct row {
    int value;
    int digits;
    const char* text;
  };
  const std::vector<row> rows = {
      {10, 2, "0A"},      {300, 2, "2C"},   {0, 1, "0"},       {15, 1, "F"},        {16, 1, "0"},
      {0, 4, "0000"},     {0x1F, 3, "01F"}, {0xA05, 3, "A05"}, {0x4A85, 3, "A85"},  {0xABCD, 4, "ABCD"},
      {-1, 4, "FFFF"},    {-1, 3, "FFF"},   {-1, 2, "FF"},     {-32768, 4, "8000"}, {32767, 4, "7FFF"},
      {65535, 4, "FFFF"}, {2047, 3, "7FF"},
  };
  for (const row& r : rows) EXPECT_EQ(hexstr(r.value, r.digits), r.text) << r.value << " in " << r.digits;
}

TEST(nomfic, is_what_follows_the_last_separator) {
  struct row {
    const char* path;
    const char* name;
  };
  const std::vector<row> rows = {
      {"c:\\pic\\uno.hex", "uno.hex"},
      {"uno.hex", "uno.hex"},
      {"/home/ana/uno.hex", "uno.hex"},
      {"", ""},
      {"c:\\pic\\", ""},
      {"/home/ana\\uno.hex", "uno.hex"},
      {"c:\\pic/uno.hex", "uno.hex"},
      {"/año/ñandú.hex", "ñandú.hex"},
  };
  for (const row& r : rows) EXPECT_EQ(nomfic(r.path), r.name) << r.path;
}

TEST(ishex, takes_digits_of_both_cases_and_the_extra_characters) {
  struct row {
    const char* text;
    const char* extra;
    bool hex;
  };
  const std::vector<row> rows = {
      {"", "", true},       {"", "W", true},    {"0123456789ABCDEF", "", true},
      {"abcdef", "", true}, {"G", "", false},   {"1fW", "W", true},
      {"1fw", "W", true},   {"1fw", "", false}, {" 1", "", false},
      {"1 ", "", false},    {"1,2", "", false}, {"ñ", "", false},
      {"é1", "W", false},   {"-1", "", false},  {"&h1", "", false},
      {"W", "w", false},
  };
  for (const row& r : rows) EXPECT_EQ(ishex(r.text, r.extra), r.hex) << '"' << r.text << "\" + " << r.extra;
}

TEST(ishex, knows_every_single_byte) {
  const std::string digits = "0123456789ABCDEFabcdef";
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    EXPECT_EQ(ishex(text), digits.find(text[0]) != std::string::npos) << "byte " << byte;
  }
}

TEST(letter_case, covers_the_spanish_letters_and_leaves_the_rest) {
  struct row {
    const char* lower;
    const char* upper;
  };
  const std::vector<row> rows = {
      {"abcxyz", "ABCXYZ"}, {"áéíóúüñ", "ÁÉÍÓÚÜÑ"},
      {"çàèâÿ", "ÇÀÈÂŸ"},   {"0129 .,;_[]{}@`^~", "0129 .,;_[]{}@`^~"},
      {"×÷", "×÷"},         {"€…", "€…"},
      {"ñandú", "ÑANDÚ"},   {"日本", "日本"},
  };
  for (const row& r : rows) {
    EXPECT_EQ(to_upper(r.lower), r.upper);
    EXPECT_EQ(to_lower(r.upper), r.lower);
    EXPECT_EQ(to_upper(r.upper), r.upper);
    EXPECT_EQ(to_lower(r.lower), r.lower);
  }
  EXPECT_EQ(to_lower("ŠŽŒĄ ΔΣ ЖЯ Ÿ"), "šžœą δσ жя ÿ");
  EXPECT_EQ(to_upper("\xFF"
                     "a\xC3"),
            "\xFF"
            "A\xC3")
      << "bytes that are no UTF-8 stay";
}

TEST(letter_case, upper_case_covers_all_scripts_a_character_for_a_character) {
  struct row {
    const char* text;
    const char* upper;
  };
  const std::vector<row> rows = {
      {"š ž œ ą ő", "Š Ž Œ Ą Ő"},
      {"α ω ά", "Α Ω Ά"},
      {"ж я ё", "Ж Я Ё"},
      {"ÿ", "Ÿ"},
      {"ა", "Ა"},
      // Outside the first 65536.
      {"𐐨", "𐐀"},
      // Two letters of the alphabet in one character.
      {"ǆ ǅ", "Ǆ Ǆ"},
      // Different letters with one upper case.
      {"σ ς", "Σ Σ"},
      {"ı i", "I I"},
      {"ſ s", "S S"},
      {"µ μ", "Μ Μ"},
      // The upper case of these is longer than one character.
      {"ß ŉ ΐ ﬁ", "ß ŉ ΐ ﬁ"},
      {"日本 ª º ¿ × ÷ €", "日本 ª º ¿ × ÷ €"},
  };
  for (const row& r : rows) {
    EXPECT_EQ(to_upper(r.text), r.upper);
    EXPECT_EQ(to_upper(r.upper), r.upper);
  }
}

TEST(letter_case, maps_every_ascii_byte_as_the_alphabet_says) {
  for (int byte = 0; byte < 128; ++byte) {
    const char c = static_cast<char>(byte);
    const bool lower = c >= 'a' && c <= 'z';
    const bool upper = c >= 'A' && c <= 'Z';
    EXPECT_EQ(to_upper(std::string(1, c)), std::string(1, lower ? static_cast<char>(byte - 32) : c)) << byte;
    EXPECT_EQ(to_lower(std::string(1, c)), std::string(1, upper ? static_cast<char>(byte + 32) : c)) << byte;
  }
}

TEST(trim, drops_blanks_and_nothing_else) {
  EXPECT_EQ(trim("  a b  "), "a b");
  EXPECT_EQ(trim("a"), "a");
  EXPECT_EQ(trim(""), "");
  EXPECT_EQ(trim("   "), "");
  EXPECT_EQ(trim(" \ta\r\n "), "\ta\r\n");
  EXPECT_EQ(trim(" \t a \tb\t ", " \t"), "a \tb");
  EXPECT_EQ(trim(" \t", " \t"), "");
}

TEST(text, the_length_of_a_character_is_that_of_its_bytes) {
  const std::string text = "a\u00F1\u20AC\U0001F600";
  EXPECT_EQ(char_length(text, 0), 1U);
  EXPECT_EQ(char_length(text, 1), 2U);
  EXPECT_EQ(char_length(text, 3), 3U);
  EXPECT_EQ(char_length(text, 6), 4U);
  // A byte that begins no character, a character cut short, and one that is written longer than it need be.
  EXPECT_EQ(char_length("\x80", 0), 1U);
  EXPECT_EQ(char_length("\xE2\x82", 0), 1U);
  EXPECT_EQ(char_length("\xC0\x80", 0), 1U);
}

TEST(characters, are_code_points_and_single_bytes_of_what_is_no_utf8) {
  struct row {
    std::string text;
    std::size_t count;
    std::size_t byte_of_second;
  };
  const std::vector<row> rows = {
      {"", 0, 0},
      {"a", 1, 1},
      {"ab", 2, 1},
      {"ñb", 2, 2},
      {"€b", 2, 3},
      {"\U0001F600b", 2, 4},
      {"\xC3", 1, 1},
      {"\x80\x80", 2, 1},
      {"\xC3\x28", 2, 1},
      {"\xE2\x82", 2, 1},
      {"\xC0\x80", 2, 1},
      {"\xED\xA0\x80", 3, 1},
      {"\xF4\x90\x80\x80", 4, 1},
      {"\xFF"
       "b",
       2, 1},
  };
  for (const row& r : rows) {
    EXPECT_EQ(char_count(r.text), r.count) << r.text;
    EXPECT_EQ(byte_of_char(r.text, 1), r.byte_of_second) << r.text;
    EXPECT_EQ(byte_of_char(r.text, 0), 0U);
    EXPECT_EQ(byte_of_char(r.text, r.count + 5), r.text.size()) << "past the end";
  }
}

// The form of a code point, worked out by arithmetic on its number.
std::string utf8_of(unsigned point) {
  const auto tail = [point](unsigned shift) { return static_cast<char>(0x80U + (point >> shift) % 64U); };
  if (point < 0x80) return {static_cast<char>(point)};
  if (point < 0x800) return {static_cast<char>(0xC0U + point / 64U), tail(0)};
  if (point < 0x10000) return {static_cast<char>(0xE0U + point / 4096U), tail(6), tail(0)};
  return {static_cast<char>(0xF0U + point / 262144U), tail(12), tail(6), tail(0)};
}

TEST(utf8, every_code_point_is_valid_but_the_surrogates) {
  int wrong = 0;
  for (unsigned point = 0; point <= 0x110FFF; ++point) {
    const bool surrogate = point >= 0xD800 && point <= 0xDFFF;
    const bool valid = point <= 0x10FFFF && !surrogate;
    const std::string text = utf8_of(point);
    if (is_valid_utf8(text) != valid || (char_count(text) == 1) != valid) ++wrong;
  }
  EXPECT_EQ(wrong, 0);
}

TEST(utf8, a_code_point_has_one_form_alone_and_the_longer_ones_are_invalid) {
  for (unsigned point = 0; point < 0x800; ++point) {
    const auto lower_bits = static_cast<char>(0x80U + point % 64U);
    const auto upper_bits = static_cast<char>(0x80U + point / 64U);
    EXPECT_FALSE(is_valid_utf8(std::string{'\xE0', upper_bits, lower_bits})) << point;
    EXPECT_FALSE(is_valid_utf8(std::string{'\xF0', '\x80', upper_bits, lower_bits})) << point;
  }
  EXPECT_FALSE(is_valid_utf8("\xF0\x8F\xBF\xBF")) << "FFFF in four bytes";
  EXPECT_TRUE(is_valid_utf8("\xF0\x90\x80\x80")) << "10000 in four bytes";
}

TEST(utf8, every_pair_of_bytes_is_valid_only_as_the_encoding_says) {
  int wrong = 0;
  for (unsigned first = 0; first < 256; ++first) {
    for (unsigned second = 0; second < 256; ++second) {
      const bool two_characters = first < 0x80 && second < 0x80;
      const bool one_character = first >= 0xC2 && first <= 0xDF && second >= 0x80 && second <= 0xBF;
      const std::string text = {static_cast<char>(first), static_cast<char>(second)};
      if (is_valid_utf8(text) != (two_characters || one_character)) ++wrong;
    }
  }
  EXPECT_EQ(wrong, 0);
}

// The code page's bytes 80..9F; 0 where it defines none.
constexpr std::array<unsigned, 32> code_page_1252 = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

TEST(windows1252, every_byte_becomes_its_character_and_comes_back) {
  for (unsigned byte = 0; byte < 256; ++byte) {
    unsigned point = byte;
    if (byte >= 0x80 && byte <= 0x9F && code_page_1252[byte - 0x80] != 0) point = code_page_1252[byte - 0x80];
    const std::string one(1, static_cast<char>(byte));
    EXPECT_EQ(from_windows1252(one), utf8_of(point)) << "byte " << byte;
    std::string back;
    EXPECT_TRUE(to_windows1252(utf8_of(point), back)) << "byte " << byte;
    EXPECT_EQ(back, one) << "byte " << byte;
  }
}

TEST(windows1252, has_no_place_for_the_other_characters) {
  int accepted = 0;
  for (unsigned point = 0; point < 0x3000; ++point) {
    if (point >= 0xD800 && point <= 0xDFFF) continue;
    std::string bytes = "before";
    if (to_windows1252(utf8_of(point), bytes))
      ++accepted;
    else
      EXPECT_EQ(bytes, "") << point;
  }
  EXPECT_EQ(accepted, 256) << "one character for each byte";
}

TEST(windows1252, refuses_text_that_is_no_utf8_instead_of_losing_its_end) {
  for (const std::string text : {"a\xFF"
                                 "b",
                                 "\xC3", "abc\x80"}) {
    std::string bytes = "before";
    EXPECT_FALSE(to_windows1252(text, bytes));
    EXPECT_EQ(bytes, "");
  }
}

TEST(decode_text, takes_utf8_where_it_is_valid_and_windows1252_otherwise) {
  struct row {
    std::string bytes;
    std::string text;
    text_encoding encoding;
  };
  const std::vector<row> rows = {
      {"", "", text_encoding::utf8},
      {"abc", "abc", text_encoding::utf8},
      {"a\xC3\xB1o", "año", text_encoding::utf8},
      {"a\xF1o", "año", text_encoding::windows1252},
      {"\x80", "€", text_encoding::windows1252},
      {"\xEF\xBB\xBF:00", ":00", text_encoding::utf8_with_bom},
      {"\xEF\xBB\xBF", "", text_encoding::utf8_with_bom},
      {"\xEF\xBB\xBF\xF1", "ï»¿ñ", text_encoding::windows1252},
      // The text ends at 1A, and what stands behind it does not tell the encoding either.
      {"a\x1A"
       "b",
       "a", text_encoding::utf8},
      {"\x1A", "", text_encoding::utf8},
      {"a\xC3\xB1o\x1A\xF1\x1A", "año", text_encoding::utf8},
      {"\xEF\xBB\xBF"
       "a\x1A\xFF",
       "a", text_encoding::utf8_with_bom},
      {"\xF1\x1A\xC3\xB1", "ñ", text_encoding::windows1252},
      // A second CR before a line end is part of it; alone, each is a line end of its own.
      {"a\r\r\nb\r\r\n\r\nc", "a\r\nb\r\n\r\nc", text_encoding::utf8},
      {"\xF1\r\r\n\r\r\n", "ñ\r\n\r\n", text_encoding::windows1252},
      {"a\r\rb\r", "a\r\rb\r", text_encoding::utf8},
      {"a\r\r\r\nb", "a\r\r\nb", text_encoding::utf8},
      {"a\n\r\nb\r\n\r\r", "a\n\r\nb\r\n\r\r", text_encoding::utf8},
  };
  for (const row& r : rows) {
    text_encoding encoding{};
    EXPECT_EQ(decode_text(r.bytes, encoding), r.text) << r.bytes;
    EXPECT_EQ(encoding, r.encoding) << r.bytes;
  }
}

}  // namespace
}  // namespace estructura
