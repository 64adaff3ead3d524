// Program memory written as a HEX file, byte by byte.
#include <array>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "files/hex.h"
#include "tests/support/memory.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/temporary_folder.h"

namespace estructura {
namespace {

using support::empty_chip;
using support::lee;
using support::temporary_folder;
using support::write_file;

constexpr std::uint16_t none = unprogrammed;

TEST(crealin, builds_the_record_of_the_words_before_the_first_unprogrammed_one) {
  struct row {
    int address;
    std::array<std::uint16_t, 8> words;
    const char* line;
  };
  const std::vector<row> rows = {
      {0, {0xC25, 0xA00, none, none, none, none, none, none}, ":04000000250C000AC1"},
      {0x1FF, {0xA00, none, none, none, none, none, none, none}, ":0203FE00000AF3"},
      {0x7FF, {0xA00, none, none, none, none, none, none, none}, ":020FFE00000AE7"},
      {0, {0xC25, none, 0xA00, 0xA00, 0xA00, 0xA00, 0xA00, 0xA00}, ":02000000250CCD"},
      {0,
       {0x06A, 0xC00, 0x006, 0x066, 0xC01, 0x1A6, 0x2AA, 0x909},
       ":100000006A00000C06006600010CA601AA0209099C"},
      {0, {none, none, none, none, none, none, none, none}, ":0000000000"},
      {0, {0, none, none, none, none, none, none, none}, ":020000000000FE"},
      {0x80, {0xFFF, none, none, none, none, none, none, none}, ":02010000FF0FEF"},
      {0,
       {0x0FE, none, none, none, none, none, none, none},
       ":02000000FE0000"},  // the sum is 100: checksum 00
  };
  for (const row& r : rows) {
    std::string line = "before";
    crealin(r.address, r.words, line);
    EXPECT_EQ(line, r.line);
  }
}

TEST(crealin, faults_where_the_byte_address_exceeds_16_bits) {
  const std::array<std::uint16_t, 8> words = {0, none, none, none, none, none, none, none};
  std::string line;
  crealin(16383, words, line);
  EXPECT_EQ(line, ":027FFE00000081");
  for (const int address : {16384, 32767, 32768, 2147483647})
    EXPECT_THROW(crealin(address, words, line), machine_fault) << address;
}

std::string written(const chipstate& chip) {
  const temporary_folder folder;
  const chipstate before = chip;
  EXPECT_TRUE(salva(chip, folder / "uno.hex"));
  EXPECT_EQ(chip, before);
  return lee(folder / "uno.hex");
}

TEST(salva, cuts_runs_into_records_of_eight_words_in_order) {
  chipstate chip = empty_chip();
  for (int a = 0; a < 10; ++a) support::put(chip, a, {a});
  support::put(chip, 20, {0xA14});
  EXPECT_EQ(written(chip),
            ":1000000000000100020003000400050006000700D4\r\n"
            ":0400100008000900DB\r\n"
            ":02002800140AB8\r\n"
            ":00000001FF\r\n");
}

TEST(salva, an_empty_memory_is_an_end_record) {
  for (int index = 0; index < device_count; ++index) EXPECT_EQ(written(empty_chip(index)), ":00000001FF\r\n");
}

TEST(salva, writes_the_last_word_of_the_device_and_none_beyond) {
  for (int index = 0; index < device_count; ++index) {
    chipstate chip = empty_chip(index);
    const int last = chip.devmodel.progmask;
    for (int a = last; a < program_words; ++a) support::put(chip, a, {0xA00});
    const char* const record = last == 0x7FF   ? ":020FFE00000AE7"
                               : last == 0x3FF ? ":0207FE00000AEF"
                                               : ":0203FE00000AF3";
    EXPECT_EQ(written(chip), std::string(record) + "\r\n:00000001FF\r\n") << index;
  }
}

TEST(salva, a_record_never_spans_an_unprogrammed_word) {
  chipstate chip = empty_chip();
  support::put(chip, 6, {0xA00, 0xA00});
  support::put(chip, 9, {0xA00});
  EXPECT_EQ(written(chip),
            ":04000C00000A000ADC\r\n"
            ":02001200000AE2\r\n"
            ":00000001FF\r\n");
}

TEST(salva, replaces_the_file_that_its_name_means) {
  const temporary_folder folder;
  write_file(folder / "PIC/Uno.HEX", "an old and much longer content than the new one");
  EXPECT_TRUE(salva(empty_chip(), folder / "pic/uno.hex"));
  EXPECT_EQ(lee(folder / "PIC/Uno.HEX"), ":00000001FF\r\n");
  EXPECT_TRUE(salva(empty_chip(), folder / "PIC/Nuevo.hex"));
  EXPECT_EQ(lee(folder / "PIC/nuevo.hex"), ":00000001FF\r\n") << "a new file has its name in lower case";
  EXPECT_EQ(folder.entries(), 1);
}

TEST(write_hex, fails_on_a_fault_with_the_old_file_whole) {
  const temporary_folder folder;
  write_file(folder / "uno.hex", "old");
  chipstate chip = empty_chip();
  support::put(chip, 0, {0xA00});
  const record_builder faulty = [](int, const std::array<std::uint16_t, 8>&, std::string&) {
    throw_fault("a record that cannot be built");
  };
  EXPECT_FALSE(write_hex(chip, folder / "uno.hex", faulty));
  EXPECT_EQ(lee(folder / "uno.hex"), "old");
  // A memory beyond the last word that there is.
  chip.devmodel.progmask = program_words;
  EXPECT_FALSE(salva(chip, folder / "uno.hex"));
  EXPECT_EQ(lee(folder / "uno.hex"), "old");
  EXPECT_EQ(folder.entries(), 1);
}

TEST(salva, fails_where_there_is_nowhere_to_write) {
  const temporary_folder folder;
  std::filesystem::create_directory(folder / "carpeta");
  for (const std::string& path :
       {folder / "carpeta", folder / "falta/uno.hex", std::string(), std::string("/dev/full")})
    EXPECT_FALSE(salva(empty_chip(), path)) << path;
}

TEST(salva, fails_with_the_old_file_whole_when_the_disk_is_full) {
  const temporary_folder folder;
  const std::string path = folder / "uno.hex";
  write_file(path, ":0203FE00000AF3\r\n:00000001FF\r\n");
  chipstate chip = empty_chip();
  chip.progmem.fill(0xA00);
  EXPECT_TRUE(support::with_file_limit(1000, [&] { return !salva(chip, path); }));
  EXPECT_EQ(lee(path), ":0203FE00000AF3\r\n:00000001FF\r\n");
  EXPECT_EQ(folder.entries(), 1);
}

TEST(salva, fails_on_a_device_larger_than_memory) {
  const temporary_folder folder;
  chipstate chip = empty_chip();
  chip.devmodel.progmask = 2048;
  EXPECT_FALSE(salva(chip, folder / "uno.hex"));
  EXPECT_EQ(folder.entries(), 0);
}

}  // namespace
}  // namespace estructura
