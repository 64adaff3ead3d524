// What people read of a device: the names of its registers and ports, and the legends over its bits.
//
//   texts_of(chip.devmodel).register6            // "PB", or "GPIO" on a 12C50x
//   register_name(chip.devmodel, reg_5)          // "PA", or "OSCCAL"
//   core_rows(chip.devmodel)[3].name             // "TRISA", or "TRIS"
//
// The texts go by the family, a row each; what a device has more or less than its family follows from its
// columns (core/devices.h).
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "core/chipstate.h"

namespace estructura {

/// Bits stand from 7 down to 0.
struct family_texts {
  family_id which;
  std::string_view status_header;               ///< a letter for each bit of STATUS
  std::string_view status_tip;                  ///< their names
  std::string_view option_header;               ///< the same of OPTION
  std::string_view option_tip;                  ///< the same of OPTION
  std::array<std::string_view, 8> status_bits;  ///< as they are told when they change
  std::string_view register5;                   ///< at address 5
  std::string_view register6;                   ///< at address 6
  std::string_view tris6;                       ///< the directions of the port at address 6
  std::array<std::string_view, 3> ports;        ///< those at 5, 6 and 7, as they are said
};

[[nodiscard]] const family_texts& texts_of(const family& of);

/// Of addresses 00..07; 07 bears it on devices without port C too, when it is edited.
[[nodiscard]] std::string_view register_name(const family& of, int address);
/// The lines of the list of names: up to port C where there is one.
[[nodiscard]] std::vector<std::string> register_names(const device& model);

/// A line of the list of core registers.
struct core_row {
  int place = 0;  ///< in `core_registers`
  std::string_view name;
  int digits = 0;  ///< hexadecimal ones of its value
};
/// The core registers that the device has, in order.
[[nodiscard]] std::vector<core_row> core_rows(const device& model);

/// Hexadecimal digits of a register that holds these bits.
constexpr int hex_digits(int mask) {
  return mask < 16 ? 1 : 2;
}

/// The lower end of the map, as addresses: some rows below the last one, of which the smallest devices have
/// one less.
constexpr int map_scale(const device& model) {
  constexpr int smallest = 511;
  return model.progmask + (model.progmask == smallest ? 2 : 3);
}

}  // namespace estructura
