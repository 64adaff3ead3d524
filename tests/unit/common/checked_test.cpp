// Arithmetic of a stated width, which throws a fault.
#include "common/checked.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

#include "common/fault.h"

namespace estructura {
namespace {

constexpr std::int32_t lowest32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest32 = std::numeric_limits<std::int32_t>::max();

TEST(checked16, holds_what_16_bits_hold_and_faults_beyond) {
  for (const int value : {-32768, -1, 0, 1, 32767}) EXPECT_EQ(checked16(value), value);
  for (const int value : {32768, -32769, 65535, highest32, lowest32})
    EXPECT_THROW((void)checked16(value), machine_fault) << value;
}

TEST(add32, counts_to_the_last_value_and_then_faults_with_the_counter_unchanged) {
  struct row {
    std::int32_t before;
    std::int32_t amount;
    bool fits;
  };
  const std::vector<row> rows = {
      {0, 1, true},
      {highest32 - 1, 1, true},
      {highest32, 1, false},
      {highest32, highest32, false},
      {lowest32 + 1, -1, true},
      {lowest32, -1, false},
      {lowest32, highest32, true},
  };
  for (const row& r : rows) {
    std::int32_t counter = r.before;
    if (r.fits) {
      add32(counter, r.amount);
      EXPECT_EQ(counter, static_cast<std::int64_t>(r.before) + r.amount);
    } else {
      EXPECT_THROW(add32(counter, r.amount), machine_fault) << r.before << " + " << r.amount;
      EXPECT_EQ(counter, r.before);
    }
  }
}

TEST(sub32, faults_when_the_difference_does_not_fit) {
  EXPECT_EQ(sub32(5, 7), -2);
  EXPECT_EQ(sub32(highest32, 0), highest32);
  EXPECT_EQ(sub32(-1, highest32), lowest32);
  EXPECT_THROW((void)sub32(-2, highest32), machine_fault);
  EXPECT_THROW((void)sub32(0, lowest32), machine_fault);
}

TEST(round32, rounds_halves_to_the_even_neighbour) {
  struct row {
    double value;
    std::int32_t rounded;
  };
  const std::vector<row> rows = {
      {0.5, 0},
      {1.5, 2},
      {2.5, 2},
      {3.5, 4},
      {-0.5, 0},
      {-1.5, -2},
      {-2.5, -2},
      {0.49, 0},
      {0.51, 1},
      {144.0, 144},
      {2147483647.0, highest32},
      {2147483647.4, highest32},
      {-2147483648.0, lowest32},
      {-2147483648.5, lowest32},
  };
  for (const row& r : rows) {
    EXPECT_TRUE(fits32(r.value)) << r.value;
    EXPECT_EQ(round32(r.value), r.rounded) << r.value;
  }
}

TEST(round32, faults_beyond_32_bits) {
  for (const double value :
       {2147483647.5, 2147483648.0, -2147483649.0, 1e300, -1e300, std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_FALSE(fits32(value)) << value;
    EXPECT_THROW((void)round32(value), machine_fault) << value;
  }
}

}  // namespace
}  // namespace estructura
