// Source files: lines, line ends, encodings, and whatever bytes people bring.
#include "files/source_file.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "tests/support/temporary_folder.h"

namespace estructura {
namespace {

using support::lee;
using support::temporary_folder;
using support::write_file;

using namespace std::string_view_literals;

struct loaded {
  bool read = false;
  std::string text = "antes";
  text_encoding encoding = text_encoding::utf8;
};

loaded load(std::string_view bytes) {
  const temporary_folder folder;
  write_file(folder / "uno.asm", bytes);
  loaded out;
  out.read = cargaasm(folder / "uno.asm", out.text, out.encoding);
  return out;
}

// The bytes of a file after it was loaded and saved.
std::string load_and_save(std::string_view bytes) {
  const temporary_folder folder;
  write_file(folder / "uno.asm", bytes);
  loaded doc;
  if (!cargaasm(folder / "uno.asm", doc.text, doc.encoding)) return "<not read>";
  if (!salvaasm(folder / "uno.asm", doc.text, doc.encoding)) return "<not written>";
  return lee(folder / "uno.asm");
}

TEST(cargaasm, lines_are_divided_by_crlf_with_none_behind_the_last) {
  struct row {
    std::string_view bytes;
    std::string_view text;
  };
  constexpr auto rows = std::to_array<row>({
      {"uno\r\ndos\r\ntres\r\n", "uno\r\ndos\r\ntres"},
      {"uno\r\ndos\r\ntres", "uno\r\ndos\r\ntres"},
      {"uno\ndos\n", "uno\r\ndos"},
      {"uno\rdos\r", "uno\r\ndos"},
      {"uno\r\n\ndos\n\r\n\rtres", "uno\r\n\r\ndos\r\n\r\n\r\ntres"},
      {"\r\n", ""},
      {"\n\n", "\r\n"},
      {"uno\r\n\r\n", "uno\r\n"},
      {"x", "x"},
      {"uno\r\r\ndos\r\r\n", "uno\r\ndos"},
      {"uno\r\r\n\r\r\n", "uno\r\n"},
      {"uno\rdos\r\rtres\r", "uno\r\ndos\r\n\r\ntres"},
      {"uno\r\n\x1A", "uno"},
      {"uno\r\n\x1A\x1A\r\nresto\r\n", "uno"},
      {"uno\x1A", "uno"},
      {"\r\n\x1A", ""},
      {" \t", " \t"},
  });
  for (const row& r : rows) {
    const loaded doc = load(r.bytes);
    EXPECT_TRUE(doc.read) << r.bytes;
    EXPECT_EQ(doc.text, r.text) << r.bytes;
    EXPECT_EQ(doc.encoding, text_encoding::utf8) << r.bytes;
  }
}

TEST(cargaasm, recognises_the_encoding) {
  struct row {
    std::string_view bytes;
    std::string_view text;
    text_encoding encoding;
  };
  constexpr auto rows = std::to_array<row>({
      {"; a\xC3\xB1o \xE2\x82\xAC \xF0\x9F\x98\x80", "; año € 😀", text_encoding::utf8},
      {"\xEF\xBB\xBF; a\xC3\xB1o", "; año", text_encoding::utf8_with_bom},
      {"\xEF\xBB\xBF", "", text_encoding::utf8_with_bom},
      {"; a\xF1o, 5 \x80, \x93"
       "as\xED\x94",
       "; año, 5 €, “así”", text_encoding::windows1252},
      // A byte that the code page leaves open keeps its number.
      {"\xF1\x81", "ñ\xC2\x81", text_encoding::windows1252},
      // Half a letter, a surrogate and an overlong form are no UTF-8.
      {"\xC3", "Ã", text_encoding::windows1252},
      {"\xED\xA0\x80", "í\xC2\xA0€", text_encoding::windows1252},
      {"\xC0\xAF", "À¯", text_encoding::windows1252},
      {"\xEF\xBB\xBF\xF1", "ï»¿ñ", text_encoding::windows1252},
  });
  for (const row& r : rows) {
    const loaded doc = load(r.bytes);
    EXPECT_TRUE(doc.read) << r.text;
    EXPECT_EQ(doc.text, r.text);
    EXPECT_EQ(doc.encoding, r.encoding) << r.text;
  }
}

TEST(cargaasm, refuses_what_gives_no_first_line) {
  const temporary_folder folder;
  write_file(folder / "vacio.asm", "");
  write_file(folder / "marca.asm", "\x1ANOP\r\n");
  for (const std::string& path :
       {folder / "vacio.asm", folder / "marca.asm", folder / "falta.asm", folder.path(),
        folder / "no/hay.asm", std::string(), std::string("/dev/null")}) {
    std::string text = "antes";
    text_encoding encoding = text_encoding::windows1252;
    EXPECT_FALSE(cargaasm(path, text, encoding)) << path;
    EXPECT_EQ(text, "antes") << path;
    EXPECT_EQ(encoding, text_encoding::windows1252) << path;
  }
}

TEST(cargaasm, takes_any_bytes_as_text) {
  EXPECT_EQ(load("A\0B\r\n\0\r\n"sv).text, "A\0B\r\n\0"sv);
  EXPECT_EQ(load(std::string(1'000'000, 'x')).text, std::string(1'000'000, 'x'));
  std::string every_byte;
  for (int byte = 0; byte < 256; ++byte)
    if (byte != 0x1A) every_byte.push_back(static_cast<char>(byte));
  const loaded doc = load(every_byte);
  EXPECT_TRUE(doc.read);
  EXPECT_EQ(doc.encoding, text_encoding::windows1252);
}

TEST(source_file, a_file_that_is_loaded_and_saved_keeps_its_bytes) {
  std::string long_line(1'000'000, 'a');
  std::string every_byte;
  for (int byte = 0; byte < 256; ++byte)
    if (byte != '\r' && byte != '\n' && byte != 0x1A) every_byte.push_back(static_cast<char>(byte));
  const std::array<std::string, 11> files = {
      "uno\r\ndos\r\ntres\r\n",
      "\r\n",
      "\r\n\r\n\r\n",
      "; a\xC3\xB1o \xE2\x82\xAC \xF0\x9F\x98\x80\r\n",
      "\xEF\xBB\xBF; a\xC3\xB1o\r\n",
      "\xEF\xBB\xBF\r\n",
      "; a\xF1o, 5 \x80, \x93"
      "as\xED\x94\r\nNOP\r\n",
      std::string("A\0B\r\n\0\r\n", 8),
      long_line + "\r\n",
      long_line + "\xF1\r\n",
      every_byte + "\r\n",
  };
  for (const std::string& bytes : files) EXPECT_EQ(load_and_save(bytes), bytes) << bytes.substr(0, 40);
}

TEST(source_file, a_missing_last_line_end_and_other_line_ends_become_crlf) {
  EXPECT_EQ(load_and_save("uno\ndos\rtres"), "uno\r\ndos\r\ntres\r\n");
  EXPECT_EQ(load_and_save("a\xF1o\nb"), "a\xF1o\r\nb\r\n");
}

TEST(salvaasm, writes_the_text_with_a_line_end_behind_it) {
  const temporary_folder folder;
  text_encoding encoding = text_encoding::utf8;
  ASSERT_TRUE(salvaasm(folder / "uno.asm", "uno\r\nmañana", encoding));
  EXPECT_EQ(lee(folder / "uno.asm"),
            "uno\r\nma\xC3\xB1"
            "ana\r\n");
  ASSERT_TRUE(salvaasm(folder / "uno.asm", "", encoding));
  EXPECT_EQ(lee(folder / "uno.asm"), "\r\n");
  ASSERT_TRUE(salvaasm(folder / "uno.asm", "uno\r\n", encoding));
  EXPECT_EQ(lee(folder / "uno.asm"), "uno\r\n\r\n");
  EXPECT_EQ(folder.entries(), 1);
}

TEST(salvaasm, writes_utf8_rather_than_lose_a_letter) {
  const temporary_folder folder;
  text_encoding encoding = text_encoding::windows1252;
  ASSERT_TRUE(salvaasm(folder / "uno.asm", "mañana", encoding));
  EXPECT_EQ(lee(folder / "uno.asm"),
            "ma\xF1"
            "ana\r\n");
  EXPECT_EQ(encoding, text_encoding::windows1252);
  ASSERT_TRUE(salvaasm(folder / "uno.asm", "mañana Ω", encoding));
  EXPECT_EQ(lee(folder / "uno.asm"),
            "ma\xC3\xB1"
            "ana \xCE\xA9\r\n");
  EXPECT_EQ(encoding, text_encoding::utf8);
}

TEST(salvaasm, says_when_the_disk_refuses_and_leaves_no_litter) {
  const temporary_folder folder;
  text_encoding encoding = text_encoding::utf8;
  EXPECT_FALSE(salvaasm(folder.path(), "x", encoding));
  EXPECT_FALSE(salvaasm(folder / "no/existe.asm", "x", encoding));
  EXPECT_FALSE(salvaasm("", "x", encoding));
  EXPECT_EQ(folder.entries(), 0);
}

TEST(source_file, a_name_finds_its_file_whatever_its_case) {
  const temporary_folder folder;
  write_file(folder / "Curso/Uno.ASM", "NOP\r\n");
  loaded doc;
  ASSERT_TRUE(cargaasm(folder / "curso/uno.asm", doc.text, doc.encoding));
  EXPECT_EQ(doc.text, "NOP");
  ASSERT_TRUE(salvaasm(folder / "curso/uno.asm", "SLEEP", doc.encoding));
  EXPECT_EQ(lee(folder / "Curso/Uno.ASM"), "SLEEP\r\n");
  EXPECT_EQ(folder.entries(), 1);
  // A new file gets its name in lower case.
  ASSERT_TRUE(salvaasm(folder / "CURSO/DOS.ASM", "NOP", doc.encoding));
  EXPECT_EQ(lee(folder / "Curso/dos.asm"), "NOP\r\n");
}

TEST(with_crlf, takes_each_line_end_once) {
  EXPECT_EQ(with_crlf(""), "");
  EXPECT_EQ(with_crlf("a"), "a");
  EXPECT_EQ(with_crlf("a\rb\nc\r\nd"), "a\r\nb\r\nc\r\nd");
  EXPECT_EQ(with_crlf("\n\r"), "\r\n\r\n");
  EXPECT_EQ(with_crlf("\r\r\n\n"), "\r\n\r\n\r\n");
  EXPECT_EQ(with_crlf("a\0b\n"sv), "a\0b\r\n"sv);
}

}  // namespace
}  // namespace estructura
