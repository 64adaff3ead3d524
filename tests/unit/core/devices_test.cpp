// Every column of every device, stated once more and flat, and the choice of a device. The other tests take
// the columns as they are and walk the catalogue: a wrong number shows here.
#include "core/devices.h"

#include <gtest/gtest.h>
#include <string>

#include "tests/support/differences.h"
#include "tests/unit/core/machine.h"

namespace estructura {
namespace {

using support::differences;
using support::machine;

struct stated {
  std::string_view name;
  int progmask, datamask;
  bool hasportc, is16c5x;
  int optmask, mask5, mask6, status_mask;
  int port_a_pins, osccal_at_reset, waking_pins, internal_khz;
  bool shares_pins;
  family_id which;
};
// clang-format off
constexpr std::array stated_devices = {
    //              program data portc  16c5x  option reg5  reg6  STATUS  A osccal wake   khz  shared
    stated{"16C58",  0x7FF, 0x7F, false, true,  0x3F, 0x0F, 0xFF, 0xFF, 0xF,   0, 0x0,    0, false, family_id::f16c5x},
    stated{"16C57",  0x7FF, 0x7F, true,  true,  0x3F, 0x0F, 0xFF, 0xFF, 0xF,   0, 0x0,    0, false, family_id::f16c5x},
    stated{"16C56",  0x3FF, 0x1F, false, true,  0x3F, 0x0F, 0xFF, 0xFF, 0xF,   0, 0x0,    0, false, family_id::f16c5x},
    stated{"16C55",  0x3FF, 0x1F, true,  true,  0x3F, 0x0F, 0xFF, 0xFF, 0xF,   0, 0x0,    0, false, family_id::f16c5x},
    stated{"16C54",  0x1FF, 0x1F, false, true,  0x3F, 0x0F, 0xFF, 0xFF, 0xF,   0, 0x0,    0, false, family_id::f16c5x},
    stated{"12C509", 0x3FF, 0x3F, false, false, 0xFF, 0xFC, 0x3F, 0xBF, 0x0, 112, 0xB, 4000, true,  family_id::f12c50x},
    stated{"12C508", 0x1FF, 0x1F, false, false, 0xFF, 0xFC, 0x3F, 0xBF, 0x0, 112, 0xB, 4000, true,  family_id::f12c50x},
};
// clang-format on

TEST(catalogue, has_the_seven_devices_in_the_order_of_the_list) {
  ASSERT_EQ(catalogue.size(), stated_devices.size());
  for (std::size_t i = 0; i < catalogue.size(); ++i) {
    const stated& row = stated_devices[i];
    const device& model = catalogue[i].model;
    EXPECT_EQ(catalogue[i].name, row.name);
    EXPECT_EQ(model.progmask, row.progmask) << row.name;
    EXPECT_EQ(model.datamask, row.datamask) << row.name;
    EXPECT_EQ(model.hasportc, row.hasportc) << row.name;
    EXPECT_EQ(model.is16c5x, row.is16c5x) << row.name;
    EXPECT_EQ(model.optmask, row.optmask) << row.name;
    EXPECT_EQ(model.mask5, row.mask5) << row.name;
    EXPECT_EQ(model.mask6, row.mask6) << row.name;
    EXPECT_EQ(model.status_mask, row.status_mask) << row.name;
    EXPECT_EQ(model.port_a_pins, row.port_a_pins) << row.name;
    EXPECT_EQ(model.osccal_at_reset, row.osccal_at_reset) << row.name;
    EXPECT_EQ(model.waking_pins, row.waking_pins) << row.name;
    EXPECT_EQ(model.internal_khz, row.internal_khz) << row.name;
    EXPECT_EQ(model.shares_pins, row.shares_pins) << row.name;
    EXPECT_EQ(model.which, row.which) << row.name;
  }
}

TEST(catalogue, starts_with_the_16C57) {
  EXPECT_EQ(catalogue[static_cast<std::size_t>(default_device)].name, "16C57");
}

TEST(device_index, finds_every_name_and_no_other) {
  for (int index = 0; index < device_count; ++index)
    EXPECT_EQ(device_index(catalogue[static_cast<std::size_t>(index)].name), index);
  for (const char* name : {"", "16C5", "16C577", "16c57"}) EXPECT_EQ(device_index(name), -1) << name;
}

TEST(bank_count, is_4_2_or_1_by_the_bits_of_FSR) {
  EXPECT_EQ(bank_count(machine("16C57").devmodel), 4);
  EXPECT_EQ(bank_count(machine("12C509").devmodel), 2);
  EXPECT_EQ(bank_count(machine("16C55").devmodel), 1);
}

TEST(select_device, stores_the_row_and_touches_nothing_else) {
  for (int index = 0; index < device_count; ++index) {
    chipstate chip = machine("16C57");
    chip.progmem[2047] = 0xABC;
    chip.breakpts[2047] = 1;
    chipstate wanted = chip;
    wanted.devmodel = catalogue[static_cast<std::size_t>(index)].model;
    select_device(chip, index);
    EXPECT_EQ(differences(wanted, chip), "") << "device " << index;
  }
}

TEST(select_device, faults_beyond_the_list) {
  for (const int index : {-1, device_count}) {
    chipstate chip = machine("16C57");
    const chipstate before = chip;
    EXPECT_TRUE(support::faults([&] { select_device(chip, index); })) << index;
    EXPECT_EQ(differences(before, chip), "");
  }
}

}  // namespace
}  // namespace estructura
