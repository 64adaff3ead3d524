// .asm bytes through the document layer: what is loaded is text with CR LF between its lines, and loading
// what was saved gives the same text in the same encoding.
#include <filesystem>
#include <fstream>
#include <unistd.h>

#include "common/text.h"
#include "files/source_file.h"
#include "tests/fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace estructura;
  static const std::string path = (std::filesystem::temp_directory_path() /
                                   ("estructura-fuzz-asm-" + std::to_string(::getpid()) + ".asm"))
                                      .string();
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  std::string text;
  text_encoding encoding = text_encoding::utf8;
  const bool loaded = cargaasm(path, text, encoding);
  fuzz::must(loaded == (size > 0), "every file that holds something is loaded");
  if (loaded) {
    fuzz::must(is_valid_utf8(text), "a loaded text is UTF-8");
    fuzz::must(with_crlf(text) == text, "lines end in CR LF");
    text_encoding kept = encoding;
    fuzz::must(salvaasm(path, text, kept), "the file is written");
    fuzz::must(kept == encoding, "a text that came in an encoding can be saved in it");
    std::string again;
    text_encoding found = text_encoding::utf8;
    fuzz::must(cargaasm(path, again, found), "what was saved loads");
    fuzz::must(again == text, "what was saved loads as it was");
  }
  std::filesystem::remove(path);
  return 0;
}
