// The device table and the choice of a device.
#include "core/devices.h"

#include <gtest/gtest.h>
#include <string>

#include "tests/core/machine.h"
#include "tests/support/differences.h"

namespace estructura {
namespace {

using support::differences;
using support::expected_device;
using support::expected_devices;
using support::machine;
using support::model_of;

TEST(catalogue, has_the_seven_devices_in_the_order_of_the_list) {
  ASSERT_EQ(catalogue.size(), expected_devices.size());
  for (std::size_t i = 0; i < catalogue.size(); ++i) {
    const expected_device& row = expected_devices[i];
    const device& model = catalogue[i].model;
    EXPECT_EQ(catalogue[i].name, row.name);
    EXPECT_EQ(model.progmask, row.progmask) << row.name;
    EXPECT_EQ(model.datamask, row.datamask) << row.name;
    EXPECT_EQ(model.optmask, row.optmask) << row.name;
    EXPECT_EQ(model.mask5, row.mask5) << row.name;
    EXPECT_EQ(model.mask6, row.mask6) << row.name;
    EXPECT_EQ(model.hasportc, row.hasportc) << row.name;
    EXPECT_EQ(model.is16c5x, row.is16c5x) << row.name;
  }
}

TEST(catalogue, starts_with_the_16C57) {
  EXPECT_EQ(catalogue[static_cast<std::size_t>(default_device)].name, "16C57");
}

TEST(select_device, stores_the_row_and_touches_nothing_else) {
  for (int index = 0; index < 7; ++index) {
    chipstate chip = machine("16C57");
    chip.progmem[2047] = 0xABC;
    chip.breakpts[2047] = 1;
    chipstate wanted = chip;
    wanted.devmodel = model_of(expected_devices[static_cast<std::size_t>(index)]);
    select_device(chip, index);
    EXPECT_EQ(differences(wanted, chip), "") << "device " << index;
  }
}

TEST(select_device, faults_beyond_the_list) {
  for (const int index : {-1, 7}) {
    chipstate chip = machine("16C57");
    const chipstate before = chip;
    EXPECT_TRUE(support::faults([&] { select_device(chip, index); })) << index;
    EXPECT_EQ(differences(before, chip), "");
  }
}

}  // namespace
}  // namespace estructura
