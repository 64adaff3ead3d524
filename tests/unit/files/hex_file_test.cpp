// Whole HEX files read into program memory: items, codes, messages and failures.
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "files/hex.h"
#include "tests/support/differences.h"
#include "tests/support/memory.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/temporary_folder.h"

namespace estructura {
namespace {

using support::differences;
using support::empty_chip;
using support::temporary_folder;
using support::write_file;

using messages = std::vector<std::string>;

const std::string two_words = ":04000000250C000AC1";  // 0C25 at 0, 0A00 at 1
const std::string last_word = ":0203FE00000AF3";      // 0A00 at 1FF
const std::string wrong_sum = ":0203FE00000AF4";
const std::string end_record = ":00000001FF";
const char* const bad_format = "Formato incorrecto.";
const char* const bad_word = "Código de operación no valido.";
const char* const bad_address = "Dirección no valida.";
const char* const no_end = "No hay código de fin.";
const char* const bad_sum = "Error de checksum.";

struct file_row {
  std::string content;
  messages said;
  std::vector<std::pair<int, int>> words;  // address, word
  bool failed = false;
};

const std::vector<std::pair<int, int>> first_two = {{0, 0xC25}, {1, 0xA00}};
const std::vector<std::pair<int, int>> all_three = {{0, 0xC25}, {1, 0xA00}, {0x1FF, 0xA00}};

void check(const std::vector<file_row>& rows) {
  const temporary_folder folder;
  for (const file_row& r : rows) {
    write_file(folder / "uno.hex", r.content);
    chipstate chip = empty_chip(device_index("16C54"));
    chipstate wanted = chip;
    for (const auto& [address, word] : r.words) support::put(wanted, address, {word});
    const hex_reading met = carga(chip, folder / "uno.hex");
    const std::string start = r.content.substr(0, 200);
    EXPECT_EQ(met.messages, r.said) << start;
    EXPECT_EQ(met.failed, r.failed) << start;
    EXPECT_EQ(differences(wanted, chip), "") << start;
  }
}

TEST(carga, reads_lines_of_every_line_end) {
  check({
      {two_words + "\r\n" + last_word + "\r\n" + end_record + "\r\n", {}, all_three},
      {two_words + "\n" + last_word + "\n" + end_record + "\n", {}, all_three},
      {two_words + "\r" + last_word + "\r" + end_record + "\r", {}, all_three},
      {two_words + "\r\n" + last_word + "\n" + end_record, {}, all_three},
      {two_words + "\r\r\n" + last_word + "\r\r\n" + end_record + "\r\r\n", {}, all_three},
      {end_record, {}, {}},
  });
}

TEST(carga, ends_at_the_character_1A) {
  check({
      {two_words + "\r\n" + end_record + "\r\n\x1A", {}, first_two},
      {two_words + "\r\n\x1A\x1A\x1A", {no_end}, first_two},
      {two_words + "\x1A" + last_word + "\n" + end_record, {no_end}, first_two},
      {wrong_sum + "\r\n\x1A\r\n" + end_record, {no_end, bad_sum}, {{0x1FF, 0xA00}}},
      {two_words + "\r\n" + end_record + "\x1A\xF1", {}, first_two},
      {"\x1A" + two_words, {}, {}, true},
  });
}

TEST(carga, ends_an_item_at_a_comma_and_drops_blanks_around_it) {
  check({
      {two_words + "," + last_word + "," + end_record, {}, all_three},
      {"  " + two_words + " , " + last_word + "   \r\n   " + end_record + " ", {}, all_three},
      {two_words + ",\r\n" + end_record,
       {bad_format},
       first_two},  // an empty item between comma and line end
      {"," + end_record, {bad_format}, {}},
      {two_words + ",", {no_end}, first_two},
      {two_words + ",,", {bad_format}, first_two},
      {"\t" + two_words + "\t,\t" + last_word + " \t \r\n \t" + end_record + "\t", {}, all_three},
      {two_words + "\r\n\t\r\n" + end_record, {bad_format}, first_two},
  });
}

TEST(carga, an_item_that_begins_with_a_double_quote_runs_to_the_next) {
  check({
      {"\"" + two_words + "\",\"" + last_word + "\"\r\n\"" + end_record + "\"\r\n", {}, all_three},
      {" \"" + two_words + "\" , " + end_record, {}, first_two},
      {"\t\"" + two_words + "\"\t,\t" + end_record, {}, first_two},
      {"\"" + two_words, {no_end}, first_two},
      {"\"" + end_record + "\" " + two_words, {}, {}},
      {"\"" + two_words + "\"" + last_word + "\n" + end_record, {}, all_three},
      {"\" " + end_record + "\"", {bad_format}, {}},  // blanks inside the quotes belong to it
      {"\"\"", {bad_format}, {}},
      {"\"", {bad_format}, {}},
      {":02\"00000000AF4\n" + end_record, {}, {{0, 0xA00}}},
  });
}

TEST(carga, an_empty_line_is_an_item_without_colon_and_the_last_line_end_starts_none) {
  check({
      {two_words + "\r\n\r\n" + end_record, {bad_format}, first_two},
      {"\r\n" + end_record, {bad_format}, {}},
      {"\n", {bad_format}, {}},
      {"\n\n", {bad_format}, {}},
      {"   ", {bad_format}, {}},
      {two_words + "\r\n", {no_end}, first_two},
      {two_words + "\r\n\r\n", {bad_format}, first_two},
      {two_words + "\n\r" + end_record, {bad_format}, first_two},  // two line ends
  });
}

TEST(carga, stops_at_the_end_record_without_a_word) {
  check({
      {end_record + "\r\n" + two_words + "\r\n", {}, {}},
      {two_words + "\r\n" + end_record + "\r\nbasura\r\n", {}, first_two},
      {wrong_sum + "\n" + end_record, {}, {{0x1FF, 0xA00}}},  // no word of the wrong checksum
  });
}

TEST(carga, says_that_the_end_record_is_missing_and_then_speaks_of_the_checksum) {
  check({
      {two_words + "\r\n", {no_end}, first_two},
      {wrong_sum + "\r\n", {no_end, bad_sum}, {{0x1FF, 0xA00}}},
      {wrong_sum + "\r\n" + two_words, {no_end, bad_sum}, all_three},
      {":0000000100\r\n", {no_end, bad_sum}, {}},
      {":0000000100\r\n" + two_words, {no_end, bad_sum}, first_two},  // a wrong end record does not stop
  });
}

TEST(carga, stops_at_the_first_record_that_it_cannot_take) {
  check({
      {two_words + "\nhola\n" + last_word, {bad_format}, first_two},
      {two_words + "\n:020000020010EC\n" + last_word, {bad_format}, first_two},
      {two_words + "\n:04000400250C0010B7\n" + last_word, {bad_word}, {{0, 0xC25}, {1, 0xA00}, {2, 0xC25}}},
      {two_words + "\n:02FFFF00000AF6\n" + last_word, {bad_address}, first_two},
      {two_words + "\n:02040000000AF0\n" + last_word, {bad_address}, first_two},
      {wrong_sum + "\nhola", {bad_format}, {{0x1FF, 0xA00}}},  // no word of the wrong checksum
  });
}

TEST(carga, fails_on_an_empty_file) {
  check({
      {"", {}, {}, true},
      {"\xEF\xBB\xBF", {}, {}, true},
  });
}

TEST(carga, of_a_file_too_long_to_read_whole_needs_an_end_in_what_is_read) {
  const std::string rest(longest_hex_file, ' ');
  check({
      {two_words + "\n" + end_record + "\n" + rest, {}, first_two},
      {two_words + "\nhola\n" + rest, {bad_format}, first_two},
      {two_words + "\n\x1A" + rest, {no_end}, first_two},
      {two_words + "\n" + rest, {}, first_two, true},
      {wrong_sum + "\n" + rest, {}, {{0x1FF, 0xA00}}, true},
  });
}

TEST(carga, fails_past_the_end_of_memory_with_the_words_before_kept) {
  const temporary_folder folder;
  write_file(folder / "uno.hex", two_words + "\n:040FFE00250C000AB4\n:02000000FF0FF0\n" + end_record);
  chipstate chip = empty_chip(device_index("16C57"));
  chipstate wanted = chip;
  support::put(wanted, 0, {0xC25, 0xA00});
  support::put(wanted, 0x7FF, {0xC25});
  const hex_reading met = carga(chip, folder / "uno.hex");
  EXPECT_TRUE(met.failed);
  EXPECT_EQ(met.messages, messages{});
  EXPECT_EQ(differences(wanted, chip), "");
}

TEST(carga, takes_text_in_any_encoding) {
  check({
      {"\xEF\xBB\xBF" + two_words + "\r\n" + end_record, {}, first_two},
      {two_words + "\r\n" + end_record + "\r\n; a\xC3\xB1o", {}, first_two},
      {two_words + "\r\n" + end_record + "\r\n; a\xF1o", {}, first_two},
      {two_words + "\r\n; a\xF1o", {bad_format}, first_two},
      // One character in the place of a digit, in either encoding.
      {":02000000\xC3\xB1"
       "50AF4\n" +
           end_record,
       {},
       {{0, 0xA00}}},
      {":02000000\xF1"
       "50AF4\n" +
           end_record,
       {},
       {{0, 0xA00}}},
      {std::string("\0\0\0", 3), {bad_format}, {}},
      {std::string("\xFF\xFE:\0", 4), {bad_format}, {}},
  });
}

TEST(carga, leaves_memory_that_the_file_does_not_name) {
  const temporary_folder folder;
  write_file(folder / "uno.hex", last_word + "\n" + end_record);
  chipstate chip = empty_chip(device_index("16C54"));
  support::put(chip, 0, {0x123, 0x456});
  support::put(chip, 0x1FF, {0x789});
  chip.breakpts[3] = 1;
  chipstate wanted = chip;
  support::put(wanted, 0x1FF, {0xA00});
  EXPECT_FALSE(carga(chip, folder / "uno.hex").failed);
  EXPECT_EQ(differences(wanted, chip), "");
}

TEST(carga, fails_where_there_is_no_file_to_read) {
  const temporary_folder folder;
  std::filesystem::create_directory(folder / "carpeta");
  for (const std::string& path :
       {folder / "falta.hex", folder / "carpeta", folder / "carpeta/falta/uno.hex", std::string()}) {
    chipstate chip = empty_chip();
    const hex_reading met = carga(chip, path);
    EXPECT_TRUE(met.failed) << path;
    EXPECT_EQ(met.messages, messages{}) << path;
    EXPECT_EQ(differences(empty_chip(), chip), "") << path;
  }
}

TEST(carga, fails_on_a_file_that_may_not_be_read) {
  const temporary_folder folder;
  const std::string path = folder / "uno.hex";
  write_file(path, end_record);
  ASSERT_TRUE(support::give_to_ordinary_user(folder.path().c_str()));
  ASSERT_EQ(::chmod(path.c_str(), 0), 0);
  EXPECT_TRUE(support::as_ordinary_user([&] {
    chipstate chip = empty_chip();
    return carga(chip, path).failed;
  }));
}

TEST(carga, finds_a_file_with_blanks_accents_or_another_case) {
  const temporary_folder folder;
  write_file(folder / "Mis Prácticas/Año Ñ.HEX", two_words + "\n" + end_record);
  chipstate chip = empty_chip();
  EXPECT_FALSE(carga(chip, folder / "mis prácticas/año ñ.hex").failed);
  EXPECT_EQ(chip.progmem[1], 0xA00);
}

TEST(carga, survives_anything) {
  const temporary_folder folder;
  constexpr unsigned seed = 16057;
  std::mt19937 random(seed);
  const std::vector<std::string> pieces = {two_words, last_word,   wrong_sum, end_record,  ":",  ",",   "\"",
                                           "\r\n",    "\n",        " ",       ":FF0FFE00", "FF", "0F",  "ñ",
                                           "\xF1",    ":10000000", "00",      "hola",      "\t", "\x1A"};
  int failures = 0;
  for (int round = 0; round < 2000; ++round) {
    std::string content;
    for (auto n = random() % 30; n > 0; --n) {
      if (random() % 8 == 0)
        content.push_back(static_cast<char>(random() % 256));
      else
        content += pieces[random() % pieces.size()];
    }
    // A new file each time: some file systems force one to disk that is emptied and written again.
    std::filesystem::remove(folder / "uno.hex");
    write_file(folder / "uno.hex", content);
    chipstate chip = empty_chip(static_cast<int>(random() % 7));
    const chipstate before = chip;
    const hex_reading met = carga(chip, folder / "uno.hex");
    failures += met.failed ? 1 : 0;
    for (const std::uint16_t word : chip.progmem)
      ASSERT_TRUE(word < 4096 || word == unprogrammed) << "round " << round << " of seed " << seed;
    ASSERT_LE(met.messages.size(), 2U);
    ASSERT_FALSE(met.failed && !met.messages.empty());
    chip.progmem = before.progmem;
    ASSERT_EQ(chip, before) << "nothing besides program memory";
  }
  EXPECT_GT(failures, 0) << "the texts reach past the end of memory";
}

}  // namespace
}  // namespace estructura
