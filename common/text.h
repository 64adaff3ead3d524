// Text helpers that every room shares. Text is UTF-8 throughout.
//
//   hexstr(300, 2)               -> "2C"
//   nomfic("c:\\pic\\uno.hex")   -> "uno.hex"
//   ishex("1fW", "W")            -> true
//   to_lower("ÑANDÚ")            -> "ñandú"
//
// Case mapping covers the letters of all scripts, each by itself: one character becomes one character.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace estructura {

/// The 16-bit value in upper-case hexadecimal, padded with zeros and cut to its last `digits` characters
/// (1..4). A negative value prints as its two's complement.
std::string hexstr(int value, int digits);

/// The part of a path after its last separator: "\" everywhere, and "/" too, which separates folders here.
std::string nomfic(std::string_view path);

/// Whether every character, upper-cased, is a hexadecimal digit or one of `extra`. True for an empty text.
bool ishex(std::string_view text, std::string_view extra = {});

/// Upper and lower case of every letter that has one of a single character: "ÿ" gives "Ÿ", while "ß" stays,
/// whose upper case is two letters. Letters may meet: both forms of the small sigma give "Σ", "ı" gives "I",
/// "ſ" gives "S", and the micro sign the Greek capital "Μ". Bytes that are no UTF-8 stay.
std::string to_upper(std::string_view text);
std::string to_lower(std::string_view text);

/// Without blanks at either end. Only the blank character counts, neither tabs nor line ends, unless they are
/// given.
std::string_view trim(std::string_view text, std::string_view blanks = " ");

/// What some editors put before the text of a UTF-8 file.
inline constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

/// A byte of a character that is not its first one.
constexpr bool is_continuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// Bytes of the character at `at`: 1 to 4, of which those of 4 are two units in UTF-16. Each byte of an
/// invalid sequence is a character of its own.
std::size_t char_length(std::string_view utf8, std::size_t at);

/// Number of characters (code points). Each byte of an invalid sequence counts one.
std::size_t char_count(std::string_view utf8);

/// Byte position of character `position`; the text's size when it has fewer characters.
std::size_t byte_of_char(std::string_view utf8, std::size_t position);

bool is_valid_utf8(std::string_view bytes);

/// Windows-1252 bytes as UTF-8. The five bytes that the code page leaves open become the C1 controls of the
/// same number, so that every byte survives the way back.
std::string from_windows1252(std::string_view bytes);

/// UTF-8 text as Windows-1252 bytes; false when a character has no place there, with `bytes` left empty.
[[nodiscard]] bool to_windows1252(std::string_view utf8, std::string& bytes);

}  // namespace estructura
