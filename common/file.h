// Files as the documents need them: whole reads, text in the encodings people bring, saves that never leave
// half a file, and names that find the file whatever their case.
//
//   const auto path = find_file("/home/ana/pic/uno.hex");   // finds /home/ana/PIC/Uno.hex
//   std::string bytes;
//   if (!read_file(path, bytes, 1 << 20)) ...             // also when it has more than a megabyte
//   if (!save_file(path, bytes)) ...                   // the old file is still whole
//
// Paths are UTF-8. Nothing here throws for what the disk may do: a failure is the value returned. Nothing
// here waits for another process either, but half a second at the most for one that holds a lease on the
// file: what is no regular file (a FIFO, a device, a socket) is refused.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace estructura {

/// The file that a name means: folder by folder the exact name first, then the one that differs only in case.
/// A file that does not exist gets its lower-cased name in the folder found.
std::string find_file(std::string_view path);

/// Whether the path names something on disk that is no folder.
bool file_exists(const std::string& path);

/// Whether both paths lead to one and the same file on disk, whatever they look like.
bool same_file(const std::string& one, const std::string& other);

/// The whole content, as it stood at one moment. False, with `bytes` empty, when the file is missing, is no
/// regular file, cannot be read, holds more than `most` bytes, or was changed by somebody while it was read.
[[nodiscard]] bool read_file(const std::string& path, std::string& bytes, std::size_t most);

/// The same of a file of any length: of one that holds more than `most` bytes only so many of its first ones.
/// `whole` says whether that is all of it.
[[nodiscard]] bool read_start(const std::string& path, std::string& bytes, std::size_t most, bool& whole);

/// Replaces the file's content, through symbolic links and keeping its permissions. The bytes are written
/// beside it, forced to disk and renamed over it, so that the old file stays whole until the new one is; only
/// where the folder takes no new file is the old one written in place, once the disk has room for all of it.
/// False when the disk refuses or the path is that of no regular file. A save that was killed leaves a file
/// `.estructura-XXXXXX` in the folder; the same user's next save there removes it.
[[nodiscard]] bool save_file(const std::string& path, std::string_view bytes);

enum class text_encoding { utf8, utf8_with_bom, windows1252 };

/// How many bytes of a text file are its text: all, or those before the character 1A, with which some
/// programs end one. What stands behind it is left over from longer files.
[[nodiscard]] std::size_t text_length(std::string_view bytes);

/// The text of a file's bytes as UTF-8, and the encoding they were in: UTF-8 when valid, Windows-1252
/// otherwise. CR CR LF, which a file has that was translated twice, is one line end and comes out as CR LF.
std::string decode_text(std::string_view bytes, text_encoding& encoding);

}  // namespace estructura
