// Every word's translation for the 16C84, against the table of translations written down once more.
#include "files/hex84.h"

#include <array>
#include <gtest/gtest.h>
#include <string>

#include "common/text.h"
#include "core/devices.h"
#include "tests/support/temporary_folder.h"

namespace estructura {
namespace {

using support::lee;
using support::temporary_folder;

// Rows of the table. A digit of the result is a number, or a rule.
constexpr int d_f = -1;   // destination or bit number to bit 7, top of the file address to bit 4
constexpr int same = -2;  // as in the word
constexpr int six = -3;   // 6 with anything in the low digit, else 0

struct translation {
  int h;
  int first_m;
  int last_m;
  int r3;
  int r2;
  int r1;
};

// clang-format off
constexpr auto translations = std::to_array<translation>({
    {0, 0, 0, 0, 0, six},   {0, 1, 1, 0, 0, same},  {0, 2, 2, 0, 0, 8},     {0, 3, 3, 0, 0, 9},
    {0, 4, 4, 0, 1, 0},     {0, 5, 5, 0, 0, same},  {0, 6, 6, 0, 1, 8},     {0, 7, 7, 0, 1, 9},
    {0, 8, 8, 0, 2, 0},     {0, 9, 9, 0, 2, 1},     {0, 10, 10, 0, 2, 8},   {0, 11, 11, 0, 2, 9},
    {0, 12, 12, 0, 3, 0},   {0, 13, 13, 0, 3, 1},   {0, 14, 14, 0, 3, 8},   {0, 15, 15, 0, 3, 9},
    {1, 0, 3, 0, 4, d_f},   {1, 4, 7, 0, 5, d_f},   {1, 8, 11, 0, 6, d_f},  {1, 12, 15, 0, 7, d_f},
    {2, 0, 3, 0, 8, d_f},   {2, 4, 7, 0, 9, d_f},   {2, 8, 11, 0, 10, d_f}, {2, 12, 15, 0, 11, d_f},
    {3, 0, 3, 0, 12, d_f},  {3, 4, 7, 0, 13, d_f},  {3, 8, 11, 0, 14, d_f}, {3, 12, 15, 0, 15, d_f},
    {4, 0, 3, 1, 0, d_f},   {4, 4, 7, 1, 1, d_f},   {4, 8, 11, 1, 2, d_f},  {4, 12, 15, 1, 3, d_f},
    {5, 0, 3, 1, 4, d_f},   {5, 4, 7, 1, 5, d_f},   {5, 8, 11, 1, 6, d_f},  {5, 12, 15, 1, 7, d_f},
    {6, 0, 3, 1, 8, d_f},   {6, 4, 7, 1, 9, d_f},   {6, 8, 11, 1, 10, d_f}, {6, 12, 15, 1, 11, d_f},
    {7, 0, 3, 1, 12, d_f},  {7, 4, 7, 1, 13, d_f},  {7, 8, 11, 1, 14, d_f}, {7, 12, 15, 1, 15, d_f},
    {8, 0, 15, 3, 4, same}, {9, 0, 15, 2, 0, same}, {10, 0, 15, 2, 8, same}, {11, 0, 15, 2, 9, same},
    {12, 0, 15, 3, 0, same}, {13, 0, 15, 3, 8, same}, {14, 0, 15, 3, 9, same}, {15, 0, 15, 3, 10, same},
});
// clang-format on

int expected_r1(int rule, int m, int l) {
  if (rule == same) return m;
  if (rule == six) return l == 0 ? 0 : 6;
  // Middle digits 0, 1, 2, 3 of each four.
  constexpr std::array moved = {0, 1, 8, 9};
  if (rule == d_f) return moved[static_cast<std::size_t>(m % 4)];
  return rule;
}

TEST(hex84, translates_every_word_by_its_row) {
  int met = 0;
  for (const translation& row : translations)
    for (int m = row.first_m; m <= row.last_m; ++m)
      for (int l = 0; l < 16; ++l, ++met) {
        const int word = row.h * 256 + m * 16 + l;
        const int wanted = row.r3 * 4096 + row.r2 * 256 + expected_r1(row.r1, m, l) * 16 + l;
        EXPECT_EQ(hex84(word), wanted)
            << hexstr(word, 3) << ": wanted " << hexstr(wanted, 4) << ", got " << hexstr(hex84(word), 4);
      }
  EXPECT_EQ(met, 4096);
}

TEST(hex84, of_known_words) {
  struct pair {
    int word;
    int wanted;
  };
  constexpr auto rows = std::to_array<pair>({
      {0x000, 0x0000},
      {0x001, 0x0061},
      {0x002, 0x0062},
      {0x003, 0x0063},
      {0x004, 0x0064},
      {0x006, 0x0066},
      {0x010, 0x0010},
      {0x025, 0x0085},
      {0x040, 0x0100},
      {0x065, 0x0185},
      {0x465, 0x1185},
      {0x8FF, 0x34FF},
      {0xA05, 0x2805},
      {0xB05, 0x2905},
      {0xBFF, 0x29FF},
      {0xC25, 0x3025},
      {0xFFF, 0x3AFF},
  });
  for (const pair& row : rows) EXPECT_EQ(hex84(row.word), row.wanted) << hexstr(row.word, 3);
}

TEST(crealinhxx, translates_before_bytes_are_taken_and_summed) {
  const auto line = [](int address, std::array<std::uint16_t, 8> words) {
    std::string text;
    crealinhxx(address, words, text);
    return text;
  };
  constexpr std::uint16_t none = unprogrammed;
  EXPECT_EQ(line(0, {0xBFF, none, none, none, none, none, none, none}), ":02000000FF29D6");
  // 3025 2800 at byte address 0: 04 25 30 00 28 add up to 81.
  EXPECT_EQ(line(0, {0xC25, 0xA00, none, none, none, none, none, none}), ":04000000253000287F");
  // Eight times 0064 at byte address 03F0: 10 03 F0 and 8 * 64 add up to 423.
  EXPECT_EQ(line(0x1F8, {4, 4, 4, 4, 4, 4, 4, 4}), ":1003F00064006400640064006400640064006400DD");
}

chipstate chip_of(int device_index) {
  chipstate chip;
  select_device(chip, device_index);
  chip.progmem.fill(unprogrammed);
  return chip;
}

TEST(salvahxx, of_an_empty_memory_writes_the_end_record_alone) {
  const temporary_folder folder;
  ASSERT_TRUE(salvahxx(chip_of(default_device), folder / "vacio.hex"));
  EXPECT_EQ(lee(folder / "vacio.hex"), ":00000001FF\r\n");
}

TEST(salvahxx, cuts_records_as_the_other_writer_does_and_leaves_memory_alone) {
  chipstate chip = chip_of(device_index("16C54"));
  for (int a = 0; a < 10; ++a) chip.progmem[a] = 0xC00;  // MOVLW 0 gives 3000
  chip.progmem[20] = 0x001;
  chip.progmem[0x1FF] = 0xBFF;
  chip.progmem[0x200] = 0xBFF;  // beyond the last word of the device
  const chipstate before = chip;
  const temporary_folder folder;
  ASSERT_TRUE(salvahxx(chip, folder / "uno.hex"));
  EXPECT_EQ(lee(folder / "uno.hex"),
            ":100000000030003000300030003000300030003070\r\n"
            ":04001000003000308C\r\n"
            ":02002800610075\r\n"
            ":0203FE00FF29D5\r\n"
            ":00000001FF\r\n");
  EXPECT_TRUE(chip == before);
}

TEST(salvahxx, says_when_the_disk_refuses) {
  const temporary_folder folder;
  EXPECT_FALSE(salvahxx(chip_of(default_device), folder.path()));
  EXPECT_FALSE(salvahxx(chip_of(default_device), folder / "no/existe.hex"));
}

}  // namespace
}  // namespace estructura
