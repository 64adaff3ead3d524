// Assembly source files: text in, text out, in the encoding that the file had.
//
//   codificacion encoding = codificacion::utf8;
//   std::string text;
//   if (!cargaasm("uno.asm", text, encoding)) ...      // "Error en lectura"
//   if (!salvaasm("uno.asm", text, encoding)) ...      // "Error en escritura"
//
// The text has a CR LF between its lines and none behind the last; the file has one behind each line. A file
// is read with line ends CR LF, LF or CR, and always written with CR LF. A name finds the file it means
// whatever its case.
#pragma once

#include <string>
#include <string_view>

#include "common/fichero.h"

namespace estructura {

/// The text with every line end, CR LF, LF or CR, as CR LF.
[[nodiscard]] std::string with_crlf(std::string_view text);

/// Reads a source file; false when it cannot be read or is empty, with `text` and `encoding` as they were.
[[nodiscard]] bool cargaasm(const std::string& path, std::string& text, codificacion& encoding);

/// Writes a source file; false when the disk refuses, with the old file whole. A text that Windows-1252
/// cannot hold is written as UTF-8, and `encoding` then says so, rather than losing characters.
[[nodiscard]] bool salvaasm(const std::string& path, std::string_view text, codificacion& encoding);

}  // namespace estructura
