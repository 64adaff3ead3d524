// The one simulated machine: a plain record, so that a copy is a snapshot and == is a test.
//
//   chipstate chip;
//   select_device(chip, 1);           // 16C57
//   chip.progmem[0] = 0xC05;          // MOVLW 05
//   resetchip(chip, 1, 1, 0);
//
// Registers hold 0..255, program words 0..4095 or `unprogrammed`. What the widths cannot hold is a fault
// (common/checked.h), never a silent wrap. The window's flags and texts are not here.
#pragma once

#include <cstdint>
#include <type_traits>

#include "common/bounded_array.h"

namespace estructura {

inline constexpr int program_words = 2048;
inline constexpr std::uint16_t unprogrammed = 65535;

/// Register addresses and bits that rules name.
enum reg : int {
  reg_indf = 0,
  reg_tmr0 = 1,
  reg_pcl = 2,
  reg_status = 3,
  reg_fsr = 4,
  reg_5 = 5,
  reg_6 = 6,
  reg_7 = 7
};
enum status_bit : int {
  status_c = 0,
  status_dc = 1,
  status_z = 2,
  status_pd = 3,
  status_to = 4,
  status_gpwuf = 7
};
enum option_bit : int { option_psa = 3, option_t0se = 4, option_t0cs = 5, option_gpwu = 7 };

/// What differs between devices. All zero before the first selection.
struct device {
  std::int16_t progmask = 0;  ///< highest program address, and the reset vector
  std::int16_t datamask = 0;  ///< implemented bits of FSR; bits 5 and 6 give the number of banks
  std::int16_t optmask = 0;   ///< implemented bits of OPTION
  std::int16_t mask5 = 0;     ///< implemented bits of address 5 and TRISA
  std::int16_t mask6 = 0;     ///< implemented bits of address 6 and TRISB
  bool hasportc = false;
  bool is16c5x = false;
  bool operator==(const device&) const = default;
};

/// The core registers in the order of their codes 128..133.
struct core_registers {
  std::int16_t pc = 0;
  std::int16_t w = 0;
  std::int16_t option = 0;
  std::int16_t trisa = 0;
  std::int16_t trisb = 0;
  std::int16_t trisc = 0;

  static constexpr int size() { return 6; }
  /// Register 0..5 in that order; `machine_fault` outside.
  constexpr std::int16_t& operator[](int i) {
    switch (i) {
      case 0: return pc;
      case 1: return w;
      case 2: return option;
      case 3: return trisa;
      case 4: return trisb;
      case 5: return trisc;
      default: throw_fault("core register out of bounds");
    }
  }
  constexpr std::int16_t operator[](int i) const { return const_cast<core_registers&>(*this)[i]; }
  bool operator==(const core_registers&) const = default;
};

struct chipstate {
  device devmodel;
  bounded_array<std::uint16_t, program_words> progmem{};
  bounded_array<std::uint8_t, program_words> breakpts{};
  bounded_array<std::int16_t, 16> regs{};
  bounded_array<std::int16_t, 64> bankregs{};  ///< bank * 16 + (address - 16)
  core_registers cpu;
  bounded_array<std::int16_t, 2> stack{};
  std::int16_t pdlatch = 0;
  std::int16_t tolatch = 0;
  std::int16_t gpwuflatch = 0;
  bool sleeping = false;
  std::int16_t pina = 0;
  std::int16_t pinb = 0;
  std::int16_t pinc = 0;
  std::int32_t cycles = 0;
  std::int32_t wdtcount = 0;
  std::int32_t wdtlimit = 0;
  std::int16_t prescount = 0;
  std::int16_t tockicount = 0;
  std::int32_t tockiperiod = 0;
  std::int32_t tockifreq = 0;
  bool firststep = false;
  bool running = false;
  bool resumebp = false;
  bool operator==(const chipstate&) const = default;
};
static_assert(std::is_trivially_copyable_v<chipstate>);

}  // namespace estructura
