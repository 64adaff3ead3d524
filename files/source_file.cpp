#include "files/source_file.h"

#include "common/text.h"

namespace estructura {

namespace {

constexpr std::string_view line_end = "\r\n";

}  // namespace

std::string with_crlf(std::string_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 16);
  while (!text.empty()) {
    const std::size_t end = text.find_first_of(line_end);
    out.append(text.substr(0, end));
    if (end == std::string_view::npos) break;
    text.remove_prefix(end);
    text.remove_prefix(text.starts_with(line_end) ? 2 : 1);
    out.append(line_end);
  }
  return out;
}

bool cargaasm(const std::string& path, std::string& text, text_encoding& encoding) {
  std::string bytes;
  if (!read_file(find_file(path), bytes, longest_source_file)) return false;
  if (text_length(bytes) == 0) return false;
  text = with_crlf(decode_text(bytes, encoding));
  // The end of the last line starts no further one.
  if (text.ends_with(line_end)) text.resize(text.size() - line_end.size());
  return true;
}

bool salvaasm(const std::string& path, std::string_view text, text_encoding& encoding) {
  const std::string lines = std::string(text).append(line_end);
  if (encoding == text_encoding::windows1252) {
    std::string bytes;
    if (to_windows1252(lines, bytes)) return save_file(find_file(path), bytes);
    encoding = text_encoding::utf8;
  }
  const bool marked = encoding == text_encoding::utf8_with_bom;
  return save_file(find_file(path), marked ? std::string(byte_order_mark) + lines : lines);
}

}  // namespace estructura
