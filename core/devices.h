// The seven devices, in the order in which the device list offers them.
//
//   select_device(chip, 6);      // 12C508
//
// The 16C55 carries 1024 words, as the 16C56 does.
#pragma once

#include <array>
#include <string_view>

#include "core/chipstate.h"

namespace estructura {

struct catalogue_row {
  std::string_view name;
  device model;
};

// clang-format off
inline constexpr std::array<catalogue_row, 7> catalogue = {{
    //         progmask datamask optmask mask5 mask6 portc  16c5x
    {"16C58",  {2047,   127,     63,     15,   255,  false, true}},
    {"16C57",  {2047,   127,     63,     15,   255,  true,  true}},
    {"16C56",  {1023,   31,      63,     15,   255,  false, true}},
    {"16C55",  {1023,   31,      63,     15,   255,  true,  true}},
    {"16C54",  {511,    31,      63,     15,   255,  false, true}},
    {"12C509", {1023,   63,      255,    252,  63,   false, false}},
    {"12C508", {511,    31,      255,    252,  63,   false, false}},
}};
// clang-format on

/// The row that is in force before any selection.
inline constexpr int default_device = 1;

/// Stores row 0..6 of the catalogue. Program memory and registers stay as they are.
void select_device(chipstate& chip, int index);

}  // namespace estructura
