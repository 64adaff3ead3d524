// Files far too long: a message, and 200 MB of memory at the most, measured in a process of its own. Those
// that are only long are read within the same, and twice the length takes twice the work. How long that is,
// bench/ tells; here time only ends what hangs, as ten megabytes read in quadratic time would.
#include <cstddef>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

#include "common/file.h"
#include "common/text.h"
#include "files/hex.h"
#include "files/source_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/system/allocations.h"
#include "tests/system/child.h"
#include "tests/system/documents.h"

namespace estructura {
namespace {

namespace fs = std::filesystem;
using support::account;
using support::document_kind;
using support::document_window;
using support::run_in_child;
using support::temporary_folder;
using support::write_file;

constexpr const char* refusal = "Error en lectura";
constexpr long most_memory_kb = 200L * 1024;
constexpr bool measured = !support::sanitized;

// The sanitizers' own memory is not the program's.
void expect_cheap(const account& told, const std::string& what) {
  if (!measured) return;
  EXPECT_LT(told.memory_kb, most_memory_kb) << what;
}

// Twice the length of a file, twice the work. What the window costs by itself makes it less.
void expect_growth_with_length(const account& half, const account& whole, const std::string& what) {
  EXPECT_LE(whole.allocated_bytes, half.allocated_bytes * 21 / 10) << what;
}

// A reader that knows no end shall fail here, and not take the machine with it.
void allow_a_gigabyte() {
  constexpr rlim_t gigabyte = rlim_t{1} << 30U;
  const rlimit limit{gigabyte, gigabyte};
  if (measured) (void)::setrlimit(RLIMIT_AS, &limit);
}

account load(document_kind which, const std::string& path) {
  return run_in_child([&] {
    allow_a_gigabyte();
    document_window window(which);
    return window.carga(path);
  });
}

std::string told_of(const std::string& path, const std::string& message) {
  return "Error en fichero " + to_lower(path) + ".\r" + message;
}

// A file of holes, which read as NULs, behind some text.
void write_sparse(const std::string& path, std::string_view start, std::size_t size) {
  write_file(path, start);
  ASSERT_EQ(::truncate(path.c_str(), static_cast<off_t>(size)), 0);
}

std::string repeat(std::string_view piece, std::size_t size) {
  std::string text;
  text.reserve(size);
  while (text.size() + piece.size() <= size) text += piece;
  return text;
}

TEST(enormous, a_file_of_two_gigabytes_is_refused_unless_its_beginning_says_all) {
  const temporary_folder folder;
  constexpr std::size_t two_gigabytes = std::size_t{2} << 30U;
  const std::string path = folder / "enorme";
  struct row {
    std::string start;
    std::string hex;
  };
  for (const row& r :
       {row{"", refusal}, row{":020000000A0CE8\r\n", refusal}, row{":020000000A0C00\r\n", refusal},
        row{":020000000A0CE8\r\n:00000001FF\r\n", ""}, row{"; x\n", told_of(path, "Formato incorrecto.")},
        row{":020000000A10E4\n", told_of(path, "Código de operación no valido.")}}) {
    write_sparse(path, r.start, two_gigabytes);
    for (const document_kind which : {document_kind::hex, document_kind::source_text}) {
      const account told = load(which, path);
      EXPECT_EQ(told.text, which == document_kind::hex ? r.hex : refusal) << r.start;
      expect_cheap(told, r.start);
    }
  }
}

// A regular file whose size says 0 and whose content has no end to speak of.
TEST(enormous, a_file_without_end_is_refused) {
  if (!measured) GTEST_SKIP() << "the sanitizers' memory has no limit that would stop a reader gone wrong";
  const std::string path = "/proc/self/pagemap";
  if (::access(path.c_str(), R_OK) != 0 || !fs::is_regular_file(path))
    GTEST_SKIP() << "the system shows no such file";
  for (const document_kind which : {document_kind::hex, document_kind::source_text}) {
    const account told = load(which, path);
    EXPECT_EQ(told.text, refusal);
    expect_cheap(told, path);
  }
}

TEST(enormous, the_longest_hex_file_is_read_to_its_end_and_no_further) {
  const temporary_folder folder;
  const std::string end = ":00000001FF\r\n";
  std::string text = ":020000000A0CE8\r\n";
  text += repeat(":0000000000\r\n", longest_hex_file - text.size() - end.size());
  text.append(longest_hex_file - text.size() - end.size(), ' ');
  text += end;
  ASSERT_EQ(text.size(), longest_hex_file);
  write_file(folder / "uno", text);
  const auto read = [&] {
    return run_in_child([&] {
      document_window window(document_kind::hex);
      const std::string boxes = window.carga(folder / "uno");
      return boxes + " " + hexstr(window.chip().progmem[0], 4);
    });
  };
  account told = read();
  EXPECT_EQ(told.text, " 0C0A");
  expect_cheap(told, "the longest");
  // The end of the end record's line lies beyond what is read.
  write_file(folder / "uno", text.insert(text.size() - end.size(), "  "));
  told = read();
  EXPECT_EQ(told.text, std::string(refusal) + " 0C0A");
  expect_cheap(told, "no further");
}

TEST(enormous, the_longest_source_is_read_and_one_byte_more_is_not) {
  const temporary_folder folder;
  const std::string text = support::text_of('f', longest_source_file);
  ASSERT_LT(text.size(), longest_source_file);
  const std::string file = text + std::string(longest_source_file - text.size(), 'f');
  const auto read = [&] {
    return run_in_child([&]() -> std::string {
      document_window window(document_kind::source_text);
      const std::string boxes = window.carga(folder / "uno");
      const std::string got = window.source_text();
      return boxes + (got == file ? " whole" : got.empty() ? " nothing" : " something else");
    });
  };
  write_file(folder / "uno", file);
  account told = read();
  EXPECT_EQ(told.text, " whole");
  expect_cheap(told, "the longest");
  write_file(folder / "uno", file + "f");
  told = read();
  EXPECT_EQ(told.text, std::string(refusal) + " nothing");
  expect_cheap(told, "one byte more");
}

// What a file holds: a start, a piece again and again up to a length, an end.
struct shape {
  std::string_view start;
  std::string_view piece;
  std::size_t length;
  std::string_view end;

  [[nodiscard]] shape half() const { return {start, piece, length / 2, end}; }
};

// In a function of its own, so that the text is not part of the memory that the next process starts with.
void write_long(const std::string& path, const shape& s) {
  write_file(path, std::string(s.start).append(repeat(s.piece, s.length)).append(s.end));
}

TEST(enormous, long_hex_files_of_any_shape_get_their_message) {
  // Under the sanitizers, which slow every byte down, the shapes alone.
  constexpr std::size_t ten_megabytes = measured ? 10'000'000 : 100'000;
  constexpr std::size_t longest = measured ? longest_hex_file - 100 : 100'000;
  const std::string bad_format = "Formato incorrecto.";
  const std::string no_end = "No hay código de fin.";
  const std::string long_record = ":FE000000" + std::string(std::size_t{2} * 0xFE, '0') + "02,";
  struct row {
    const char* what;
    shape file;
    std::vector<std::string> messages;
  };
  const std::vector<row> rows = {
      {"one line, a record", {":10000000", "0", ten_megabytes, "F0"}, {no_end}},
      {"one line, a record with a wrong sum",
       {":10000000", "0", ten_megabytes, ""},
       {no_end, "Error de checksum."}},
      {"one line of figures", {"", "0", ten_megabytes, ""}, {bad_format}},
      {"one line behind a quote", {"\":", "0", ten_megabytes, ""}, {no_end}},
      {"one line of letters of two bytes", {"", "ñ", longest, ""}, {bad_format}},
      {"one line, a record of such letters", {":", "ñ", longest, "00"}, {no_end}},
      {"one line, a record of bytes that are no UTF-8", {":", "\x80", longest, "00"}, {no_end}},
      {"holes", {"", {"\0", 1}, longest, ""}, {bad_format}},
      {"blanks", {"", " ", longest, ""}, {bad_format}},
      {"commas", {"", ",", longest, ""}, {bad_format}},
      {"line ends", {"", "\n", longest, ""}, {bad_format}},
      {"empty records", {"", ":0000000000\n", longest, ""}, {no_end}},
      {"end records with a wrong sum", {"", ":00000001FE\n", longest, ""}, {no_end, "Error de checksum."}},
      {"long records", {"", long_record, longest, ""}, {no_end}},
  };
  const temporary_folder folder;
  for (const row& r : rows) {
    std::string wanted;
    for (const std::string& message : r.messages)
      wanted.append(wanted.empty() ? "" : " | ").append(told_of(folder / "largo", message));
    write_long(folder / "largo", r.file.half());
    const account half = load(document_kind::hex, folder / "largo");
    EXPECT_EQ(half.text, wanted) << "half of " << r.what;
    write_long(folder / "largo", r.file);
    const account told = load(document_kind::hex, folder / "largo");
    EXPECT_EQ(told.text, wanted) << r.what;
    expect_cheap(told, r.what);
    expect_growth_with_length(half, told, r.what);
  }
}

// The text that most bytes of memory come of: each of the file's bytes is three of UTF-8.
TEST(enormous, long_sources_of_any_shape_are_read) {
  const temporary_folder folder;
  for (const std::string_view piece :
       {"\x80", "\n", "\r", "\r\n", "\xC3\xB1", " ", "ETIQ: MOVLW 1 ; uno\n"}) {
    const shape file{"", piece, measured ? longest_source_file : 100'000, ""};
    write_long(folder / "largo", file.half());
    const account half = load(document_kind::source_text, folder / "largo");
    write_long(folder / "largo", file);
    const account told = load(document_kind::source_text, folder / "largo");
    EXPECT_EQ(half.text + told.text, "") << piece;
    expect_cheap(told, std::string(piece));
    expect_growth_with_length(half, told, std::string(piece));
  }
}

}  // namespace
}  // namespace estructura
