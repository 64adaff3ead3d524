// Lenient conversion of text to numbers.
#include "common/number.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "common/fault.h"
#include "common/text.h"

namespace estructura {
namespace {

TEST(valhex, reads_the_leading_digits_as_a_signed_16_bit_number) {
  struct row {
    const char* text;
    int value;
  };
  const std::vector<row> rows = {
      {"", 0},          {"0", 0},   {"1F", 31},      {"1f", 31},       {"1FZ", 31},  {"Z1F", 0},
      {" 1", 0},        {"1 2", 1}, {"7FFF", 32767}, {"8000", -32768}, {"FFFF", -1}, {"00000010", 16},
      {"0000FFFF", -1}, {"-1", 0},  {"é", 0},        {"FSR", 15},      {"PCL", 0},   {"1FFé", 511},
  };
  for (const row& r : rows) {
    EXPECT_EQ(valhex(r.text), r.value) << r.text;
    EXPECT_EQ(valhex_checked(r.text), r.value) << r.text;
  }
}

TEST(valhex, is_a_fault_beyond_16_bits) {
  for (const char* text : {"10000", "12345", "FFFFF", "123456789ABCDEF0123456789", "10000Z"}) {
    EXPECT_THROW((void)valhex(text), machine_fault) << text;
    EXPECT_EQ(valhex_checked(text), std::nullopt) << text;
  }
}

TEST(valhex, reads_back_every_number_of_four_digits) {
  for (int value = 0; value <= 0xFFFF; ++value) {
    const int wanted = value > 32767 ? value - 65536 : value;
    ASSERT_EQ(valhex(hexstr(value, 4)), wanted);
    ASSERT_EQ(valhex(to_lower(hexstr(value, 4)) + "g"), wanted);
  }
}

TEST(valdec, reads_the_longest_leading_number) {
  struct row {
    const char* text;
    double value;
  };
  const std::vector<row> rows = {
      {"", 0},
      {"4000", 4000},
      {"4000 kHz", 4000},
      {"kHz", 0},
      {"-5", -5},
      {"+5", 5},
      {"3.5", 3.5},
      {".5", 0.5},
      {"5.", 5},
      {"1.2.3", 1.2},
      {"-", 0},
      {"- 5", -5},
      {"1e3", 1000},
      {"1E3", 1000},
      {"1d3", 1000},
      {"1D3", 1000},
      {"1e-2", 0.01},
      {"1e+2", 100},
      {"1e", 1},
      {"e3", 0},
      {"3,5", 3},
      {"  7", 7},
      {"1 2 3", 123},
      {"&hFF", 255},
      {"&HFFFF", -1},
      {"&h", 0},
      {"0x10", 0},
      {"inf", 0},
      {"nan", 0},
      {"é", 0},
      {"\t12\r\n", 12},
      {".", 0},
      {"-.5", -0.5},
      {"32.5", 32.5},
      {"20000.4", 20000.4},
      {"0.1", 0.1},
      {"&h12345", 0x12345},
      {"&HFFFFFG", 0xFFFFF},
  };
  for (const row& r : rows) EXPECT_EQ(valdec(r.text), r.value) << r.text;
}

TEST(valdec, survives_absurd_exponents_and_lengths) {
  EXPECT_EQ(valdec("1e400"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(valdec("-1e400"), -std::numeric_limits<double>::infinity());
  EXPECT_EQ(valdec("1e-400"), 0);
  EXPECT_EQ(valdec("1e99999999999999999999"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(valdec("0e99999999999999999999"), 0);
  EXPECT_EQ(valdec("1" + std::string(300, '0')), 1e300);
  EXPECT_EQ(valdec("1" + std::string(400, '0') + "e-10"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(valdec("." + std::string(400, '0') + "1"), 0);
  EXPECT_EQ(valdec("." + std::string(10, '0') + "1e11"), 1);
}

}  // namespace
}  // namespace estructura
