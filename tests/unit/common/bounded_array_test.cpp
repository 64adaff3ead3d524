// The array with checked indexes, which throws a fault.
#include "common/bounded_array.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

#include "common/fault.h"

namespace estructura {
namespace {

constexpr std::int32_t lowest32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest32 = std::numeric_limits<std::int32_t>::max();

TEST(bounded_array, faults_outside_its_indexes_to_read_and_to_write) {
  bounded_array<std::int16_t, 16> cells{};
  for (int i = 0; i < 16; ++i) cells[i] = static_cast<std::int16_t>(i * i);
  for (int i = 0; i < 16; ++i) EXPECT_EQ(cells[i], i * i);
  const auto before = cells;
  for (const int i : {16, 17, 2048, -1, -16, highest32, lowest32}) {
    EXPECT_THROW(cells[i] = 1, machine_fault) << i;
    EXPECT_THROW((void)before[i], machine_fault) << i;
  }
  EXPECT_EQ(cells, before);
}

TEST(bounded_array, walks_fills_and_compares) {
  bounded_array<int, 3> cells{};
  EXPECT_EQ(cells.size(), 3);
  cells.fill(7);
  int sum = 0;
  for (const int cell : cells) sum += cell;
  EXPECT_EQ(sum, 21);
  auto other = cells;
  EXPECT_EQ(cells, other);
  other[2] = 8;
  EXPECT_NE(cells, other);
}

}  // namespace
}  // namespace estructura
