// Assembly source files: text in, text out, in the encoding that the file had.
//
//   text_encoding encoding = text_encoding::utf8;
//   std::string text;
//   if (!cargaasm("uno.asm", text, encoding)) ...      // "Error en lectura"
//   if (!salvaasm("uno.asm", text, encoding)) ...      // "Error en escritura"
//
// The text has a CR LF between its lines and none behind the last; the file has one behind each line. A file
// is read with line ends CR LF, CR CR LF, LF or CR, up to the character 1A if it has one, and always written
// with CR LF and without 1A. A name finds the file it means whatever its case.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "common/file.h"

namespace estructura {

/// The text with every line end, CR LF, LF or CR, as CR LF. For what is typed and pasted too, where a second
/// CR is a line end of its own, as it is for the text boxes.
[[nodiscard]] std::string with_crlf(std::string_view text);

/// The bytes that a source file may have to be read at all: two thousand for each word of the longest
/// program, and about what a text box of the toolkit takes in within a second.
inline constexpr std::size_t longest_source_file = std::size_t{4} << 20U;

/// Reads a source file; false when it cannot be read, is empty (before a 1A too) or is longer than
/// `longest_source_file`, with `text` and `encoding` as they were.
[[nodiscard]] bool cargaasm(const std::string& path, std::string& text, text_encoding& encoding);

/// Writes a source file; false when the disk refuses, with the old file whole. A text that Windows-1252
/// cannot hold is written as UTF-8, and `encoding` then says so, rather than losing characters.
[[nodiscard]] bool salvaasm(const std::string& path, std::string_view text, text_encoding& encoding);

}  // namespace estructura
