// One line of a HEX file into program memory.
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "common/text.h"
#include "files/hex.h"
#include "tests/support/differences.h"
#include "tests/support/memory.h"

namespace estructura {
namespace {

using support::differences;
using support::empty_chip;

constexpr int index_16c57 = device_index("16C57");
constexpr int index_16c56 = device_index("16C56");
constexpr int index_16c54 = device_index("16C54");
constexpr int index_12c508 = device_index("12C508");

using stored = std::vector<std::pair<int, int>>;  // address, word

struct line_row {
  std::string line;
  int code;
  stored words;
  int device_index = index_16c57;
};

void check(const std::vector<line_row>& rows) {
  for (const line_row& r : rows) {
    chipstate chip = empty_chip(r.device_index);
    chipstate wanted = chip;
    for (const auto& [address, word] : r.words) support::put(wanted, address, {word});
    EXPECT_EQ(extlinfic(chip, r.line), r.code) << r.line;
    EXPECT_EQ(differences(wanted, chip), "") << r.line;
  }
}

// A line with the checksum that its bytes ask for. `data` are hexadecimal digits.
std::string record(int count, int address, int type, const std::string& data) {
  int sum = count + address / 256 + address % 256 + type;
  for (std::size_t i = 0; i + 1 < data.size(); i += 2) sum += std::stoi(data.substr(i, 2), nullptr, 16);
  return ":" + hexstr(count, 2) + hexstr(address, 4) + hexstr(type, 2) + data + hexstr(256 - sum % 256, 2);
}

TEST(extlinfic, stores_the_words_of_a_record) {
  check({
      {":04000000250C000AC1", 0, {{0, 0xC25}, {1, 0xA00}}},
      {":0203FE00000AF3", 0, {{0x1FF, 0xA00}}},
      {":020FFE00000AE7", 0, {{0x7FF, 0xA00}}},
      {":100000006A00000C06006600010CA601AA0209099C",
       0,
       {{0, 0x06A}, {1, 0xC00}, {2, 0x006}, {3, 0x066}, {4, 0xC01}, {5, 0x1A6}, {6, 0x2AA}, {7, 0x909}}},
      {":0000000000", 0, {}},
  });
}

TEST(extlinfic, takes_digits_of_both_cases) {
  check({{":0203fe00000af3", 0, {{0x1FF, 0xA00}}}});
}

TEST(extlinfic, the_end_record_stores_nothing_and_needs_its_checksum) {
  check({
      {":00000001FF", 5, {}},
      {":0000000100", 2, {}},
      {":00000001", 2, {}},             // the last two characters are the type's
      {record(0, 0x10, 1, ""), 5, {}},  // its address counts in the checksum
      {":02000001250CFD", 5, {}},       // its data does not
      {":02000001250CCC", 2, {}},
  });
}

TEST(extlinfic, refuses_a_line_without_its_colon_and_the_other_record_types) {
  check({
      {"", 1, {}},
      {"0", 1, {}},
      {" :00000001FF", 1, {}},
      {"é:00000001FF", 1, {}},
      {"00000001FF", 1, {}},
      {record(2, 0, 2, "0010"), 1, {}},
      {record(2, 0, 4, "0000"), 1, {}},
      {record(4, 0, 5, "00000000"), 1, {}},
      {record(2, 0, 0xFF, "0010"), 1, {}},
  });
}

TEST(extlinfic, refuses_a_byte_address_that_is_negative_or_beyond_the_last_word_of_the_device) {
  check({
      {":02FFFF00000A00", 4, {}},
      {":0280000000000A", 4, {}},
      {":027FFF00000A00", 4, {}},
      {":021000000000EE", 4, {}},
      {":020FFF00000AE6", 4, {}},
      {":0203FE00000AF3", 0, {{0x1FF, 0xA00}}, index_16c54},
      {":0203FF00000AF2", 4, {}, index_16c54},
      {":02040000000AF0", 4, {}, index_16c54},
      {":02040000000AF0", 4, {}, index_12c508},
      {":0207FE00000AEF", 0, {{0x3FF, 0xA00}}, index_16c56},
      {":02080000000AEC", 4, {}, index_16c56},
      // The address is looked at before the type, and that of an end record too.
      {":02040002001000", 4, {}, index_16c54},
      {":00FFFF0101", 4, {}},
  });
}

TEST(extlinfic, halves_address_and_count_to_the_even_neighbour) {
  const std::string two = "250C000A";
  check({
      {record(2, 1, 0, "000A"), 0, {{0, 0xA00}}},           // 0.5
      {record(2, 3, 0, "000A"), 0, {{2, 0xA00}}},           // 1.5
      {record(2, 5, 0, "000A"), 0, {{2, 0xA00}}},           // 2.5
      {record(2, 7, 0, "000A"), 0, {{4, 0xA00}}},           // 3.5
      {record(1, 0, 0, ""), 0, {}},                         // 0.5
      {record(3, 0, 0, two), 0, {{0, 0xC25}, {1, 0xA00}}},  // 1.5
      {record(5, 0, 0, two), 0, {{0, 0xC25}, {1, 0xA00}}},  // 2.5
      {record(2, 0xFFD, 0, "000A"), 0, {{0x7FE, 0xA00}}},   // 2046.5
      {record(2, 0x3FD, 0, "000A"), 0, {{0x1FE, 0xA00}}, index_16c54},
  });
}

TEST(extlinfic, a_wrong_checksum_is_told_and_the_words_are_stored) {
  check({
      {":04000000250C000AC0", 2, {{0, 0xC25}, {1, 0xA00}}},
      {":04000000250C000A00", 2, {{0, 0xC25}, {1, 0xA00}}},
      {":04000000250C000AZZ", 2, {{0, 0xC25}, {1, 0xA00}}},
  });
}

TEST(extlinfic, a_word_of_more_than_12_bits_stops_the_record_with_the_words_before_it_stored) {
  check({
      {record(4, 0, 0, "250C0010"), 3, {{0, 0xC25}}},
      {record(4, 0, 0, "0010250C"), 3, {}},
      {record(2, 0, 0, "FFFF"), 3, {}},
      {record(2, 0, 0, "FF0F"), 0, {{0, 0xFFF}}},
      {":04000000250C001000", 3, {{0, 0xC25}}},  // told before the checksum
  });
}

TEST(extlinfic, reads_missing_data_as_0) {
  check({
      {":04000000250CCB", 0, {{0, 0xC25}, {1, 0}}},
      {":04000000250C0CBF", 0, {{0, 0xC25}, {1, 0x00C}}},
      {":0400000025D7", 0, {{0, 0x025}, {1, 0}}},
      {":040000002D4", 2, {{0, 0x002}, {1, 0}}},  // half a byte is a byte of one digit: 4 + 2 + D4 is DA
      {":0400000000", 2, {{0, 0}, {1, 0}}},
      {":04000000FC", 0, {{0, 0}, {1, 0}}},
      {":0400", 2, {{0, 0}, {1, 0}}},  // the last two characters are the checksum, wherever they are
      {":04", 2, {{0, 0}, {1, 0}}},
      {":", 0, {}},
      {":0", 0, {}},
      {":1", 2, {}},
      {":é", 0, {}},
  });
}

TEST(extlinfic, stores_as_many_zeros_as_a_record_without_data_counts) {
  chipstate chip = empty_chip();
  chipstate wanted = chip;
  for (int i = 0; i < 126; ++i) support::put(wanted, i, {0});
  EXPECT_EQ(extlinfic(chip, ":FC"), 2);
  EXPECT_EQ(differences(wanted, chip), "");
}

TEST(extlinfic, ignores_what_stands_behind_the_data_but_the_last_two_characters) {
  check({{":02000000250C0000000000CD", 0, {{0, 0xC25}}}, {":02000000250C ; comentario CD", 0, {{0, 0xC25}}}});
}

TEST(extlinfic, reads_fields_as_far_as_they_are_hexadecimal) {
  check({
      {":0G000000FF", 2, {}},                // count 0
      {":2Z00000025CFE", 2, {{0, 0xC25}}},   // count 2, then 25 and C without its second digit
      {":02 00000000AF4", 0, {{0, 0xA00}}},  // address " 000" is 0
      {":020G0000000AF4", 0, {{0, 0xA00}}},  // address "0G00" is 0
      {":021G0000000AF3", 0, {{0, 0xA00}}},  // address "1G00" is 1, and half of it is 0
      {":02000G00000AF4", 0, {{0, 0xA00}}},  // address "000G" is 0
      {":0200000G000AF4", 0, {{0, 0xA00}}},  // type "0G" is 0
      {":000000G1FF", 2, {}},                // type "G1" is 0: no end record
      {":000000 1FF", 2, {}},
      {":0000001GFF", 5, {}},                // type "1G" is 1
      {":02000000G50AF4", 0, {{0, 0xA00}}},  // low byte "G5" is 0
      {":020000005G0AEF", 0, {{0, 0xA05}}},  // low byte "5G" is 5
      {":02000000000A F4", 0, {{0, 0xA00}}},
      {":02000000000AF", 2, {{0, 0}}},  // the checksum is "AF", the high byte "0"
  });
}

TEST(extlinfic, counts_characters_beyond_ascii_as_one_each) {
  check({
      {":02000000é50AF4", 0, {{0, 0xA00}}},
      {":020000005é0AEF", 0, {{0, 0xA05}}},
      {":02000000€\U0001F6000AF4", 0, {{0, 0xA00}}},
      {":02000000\xFF"
       "50AF4",
       0,
       {{0, 0xA00}}},                   // a byte that is no UTF-8 is a character too
      {":02000000000Añ", 2, {{0, 0}}},  // the checksum is "Añ", so "0" is left of the high byte
      {":02000000000Aññ", 2, {{0, 0xA00}}},
      {std::string(":02") + '\0' + "00000000AF4", 0, {{0, 0xA00}}},
  });
}

TEST(extlinfic, stores_past_the_last_word_of_the_device_as_far_as_memory_goes) {
  check({
      {record(4, 0x3FE, 0, "250C000A"), 0, {{0x1FF, 0xC25}, {0x200, 0xA00}}, index_16c54},
      {record(4, 0xFFC, 0, "250C000A"), 0, {{0x7FE, 0xC25}, {0x7FF, 0xA00}}},
  });
}

TEST(extlinfic, faults_past_the_end_of_memory_with_the_words_before_stored) {
  chipstate chip = empty_chip();
  chipstate wanted = chip;
  support::put(wanted, 0x7FF, {0xC25});
  EXPECT_THROW((void)extlinfic(chip, record(4, 0xFFE, 0, "250C000A")), machine_fault);
  EXPECT_EQ(differences(wanted, chip), "");
  // A word that is too wide is met before its place.
  chip = empty_chip();
  EXPECT_EQ(extlinfic(chip, record(4, 0xFFE, 0, "250C0010")), 3);
  EXPECT_EQ(differences(wanted, chip), "");
}

TEST(extlinfic, takes_the_longest_record) {
  std::string data;
  chipstate wanted = empty_chip();
  for (int i = 0; i < 128; ++i) {
    data += hexstr(i, 2) + "0F";
    support::put(wanted, 0x100 + i, {0xF00 + i});
  }
  // FF bytes are 127.5 words, which round to 128.
  chipstate chip = empty_chip();
  EXPECT_EQ(extlinfic(chip, record(0xFF, 0x200, 0, data)), 0);
  EXPECT_EQ(differences(wanted, chip), "");
}

TEST(extlinfic, survives_a_line_of_any_length) {
  chipstate chip = empty_chip();
  EXPECT_EQ(extlinfic(chip, ":" + std::string(1000000, '0')), 0);
  EXPECT_EQ(extlinfic(chip, ":" + std::string(1000000, 'F')), 4);
  EXPECT_EQ(differences(empty_chip(), chip), "");
}

// What a line of single-byte characters means, read field by field with the library's own conversion.
constexpr int fault = -1;
struct meaning {
  int code;
  stored words;
};

int leading_hex(const std::string& field) {
  const std::string digits = field.substr(0, field.find_first_not_of("0123456789abcdefABCDEF"));
  return digits.empty() ? 0 : static_cast<std::int16_t>(std::stoi(digits, nullptr, 16));
}

meaning meaning_of(const std::string& line, int progmask) {
  const auto field = [&line](std::size_t at, std::size_t length) {
    return leading_hex(line.substr(at, length));
  };
  if (line[0] != ':') return {1, {}};
  const int address = field(3, 4);
  const int type = field(7, 2);
  if (address < 0 || address > 2 * progmask) return {4, {}};
  int sum = field(1, 2) + address / 256 + address % 256 + type + field(line.size() - 2, 2);
  if (type == 1) return {sum % 256 == 0 ? 5 : 2, {}};
  if (type != 0) return {1, {}};
  const std::string padded = line.substr(9, line.size() - 11) + std::string(600, ' ');
  const int first = static_cast<int>(std::lrint(address / 2.0));
  const int count = static_cast<int>(std::lrint(field(1, 2) / 2.0));
  meaning out{0, {}};
  bool too_wide = false;
  for (int i = 0; i < count; ++i) {
    const std::size_t at = static_cast<std::size_t>(i) * 4;
    const int low = leading_hex(padded.substr(at, 2));
    const int high = leading_hex(padded.substr(at + 2, 2));
    sum += low + high;
    too_wide = too_wide || high > 15;
    if (too_wide) continue;
    if (first + i >= program_words) return {fault, out.words};
    out.words.emplace_back(first + i, high * 256 + low);
  }
  out.code = too_wide ? 3 : (sum % 256 == 0 ? 0 : 2);
  return out;
}

int code_or_fault(chipstate& chip, const std::string& line) {
  try {
    return extlinfic(chip, line);
  } catch (const machine_fault&) {
    return fault;
  }
}

TEST(extlinfic, every_byte_of_a_record_changed_to_every_other) {
  const std::vector<std::string> originals = {":04000000250C000AC1", ":0203FE00000AF3", ":00000001FF",
                                              // Eight words, and two at the end of the largest memory.
                                              ":100000006A00000C06006600010CA601AA0209099C",
                                              record(4, 0xFFC, 0, "250C000A")};
  std::map<int, int> met;
  for (const int device_index : {index_16c57, index_16c56, index_16c54}) {
    const chipstate empty = empty_chip(device_index);
    for (const std::string& original : originals) {
      for (std::size_t at = 0; at < original.size(); ++at) {
        for (int byte = 0; byte < 256; ++byte) {
          std::string line = original;
          line[at] = static_cast<char>(byte);
          chipstate chip = empty;
          chipstate wanted = empty;
          const meaning means = meaning_of(line, empty.devmodel.progmask);
          for (const auto& [address, word] : means.words) support::put(wanted, address, {word});
          ASSERT_EQ(code_or_fault(chip, line), means.code) << line << ", byte " << byte << " at " << at;
          if (!(chip == wanted)) {
            ASSERT_EQ(differences(wanted, chip), "") << line << ", byte " << byte << " at " << at;
          }
          ++met[means.code];
        }
      }
    }
  }
  for (const int code : {fault, 0, 1, 2, 3, 4, 5})
    EXPECT_GT(met[code], 0) << "no line of this test has the code " << code;
}

}  // namespace
}  // namespace estructura
