// The families and their devices, in the order in which the device list offers them.
//
//   select_device(chip, device_index("12C508"));
//   catalogue[6].model.progmask                      // 511
//
// A device is one row, and whatever asks what a device has asks for a column. What people read of it, names
// and legends, goes by its family: ui/device_texts.h.
//
// The 16C55 carries 1024 words, as the 16C56 does.
#pragma once

#include <array>
#include <string_view>

#include "core/chipstate.h"

namespace estructura {

inline constexpr family family_16c5x = {
    .which = family_id::f16c5x,
    .is16c5x = true,
    .optmask = 63,
    .mask5 = 15,
    .mask6 = 255,
    .status_mask = 0b1111'1111,
    .port_a_pins = 0b1111,
    .osccal_at_reset = 0,
    .waking_pins = 0,
    .internal_khz = 0,
    .shares_pins = false,
};

inline constexpr family family_12c50x = {
    .which = family_id::f12c50x,
    .is16c5x = false,
    .optmask = 255,
    .mask5 = 252,
    .mask6 = 63,
    .status_mask = 0b1011'1111,
    .port_a_pins = 0,
    .osccal_at_reset = 112,
    .waking_pins = 0b1011,
    .internal_khz = 4000,
    .shares_pins = true,
};

struct catalogue_row {
  std::string_view name;
  device model;
};

// clang-format off
inline constexpr std::array catalogue = {
    //                      family         progmask datamask portc
    catalogue_row{"16C58",  {family_16c5x,  2047,   127,     false}},
    catalogue_row{"16C57",  {family_16c5x,  2047,   127,     true}},
    catalogue_row{"16C56",  {family_16c5x,  1023,   31,      false}},
    catalogue_row{"16C55",  {family_16c5x,  1023,   31,      true}},
    catalogue_row{"16C54",  {family_16c5x,  511,    31,      false}},
    catalogue_row{"12C509", {family_12c50x, 1023,   63,      false}},
    catalogue_row{"12C508", {family_12c50x, 511,    31,      false}},
};
// clang-format on

inline constexpr int device_count = static_cast<int>(catalogue.size());

/// The row of a name; -1 where no device bears it.
constexpr int device_index(std::string_view name) {
  for (std::size_t i = 0; i < catalogue.size(); ++i)
    if (catalogue[i].name == name) return static_cast<int>(i);
  return -1;
}

/// The row that is in force before any selection.
inline constexpr int default_device = device_index("16C57");
static_assert(default_device >= 0);

/// Stores a row of the catalogue. Program memory and registers stay as they are.
void select_device(chipstate& chip, int index);

}  // namespace estructura
