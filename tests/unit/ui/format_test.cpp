// The two formats of the views.
#include "ui/format.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace estructura {
namespace {

TEST(binstr, is_eight_digits_bit_7_first_for_every_byte) {
  for (int value = 0; value < 256; ++value) {
    std::string digits(8, '0');
    for (int n = 0; n < 8; ++n)
      if (value / (1 << n) % 2 == 1) digits[static_cast<std::size_t>(7 - n)] = '1';
    EXPECT_EQ(binstr(value), digits) << value;
  }
}

TEST(binstr, saturates_above_a_byte_and_is_zeros_below) {
  EXPECT_EQ(binstr(256), "11111111");
  EXPECT_EQ(binstr(32767), "11111111");
  EXPECT_EQ(binstr(-1), "00000000");
  EXPECT_EQ(binstr(-32768), "00000000");
}

TEST(ponpuntos, has_a_point_between_groups_of_three) {
  struct row {
    std::int32_t value;
    const char* text;
  };
  const std::vector<row> rows = {{0, "0"},
                                 {7, "7"},
                                 {99, "99"},
                                 {999, "999"},
                                 {1000, "1.000"},
                                 {12345, "12.345"},
                                 {123456, "123.456"},
                                 {1234567, "1.234.567"},
                                 {999'999'999, "999.999.999"},
                                 {std::numeric_limits<std::int32_t>::max(), "2.147.483.647"},
                                 {-1, "-1"},
                                 {-12, "-12"},
                                 {-123, "-.123"},
                                 {-1234, "-1.234"}};
  for (const row& r : rows) EXPECT_EQ(ponpuntos(r.value), r.text);
}

}  // namespace
}  // namespace estructura
