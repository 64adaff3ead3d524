// The one simulated machine: a plain record, so that a copy is a snapshot and == is a test.
//
//   chipstate chip;
//   select_device(chip, default_device);
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

enum class family_id : std::uint8_t { f16c5x, f12c50x };

/// What the devices of one family share.
struct family {
  family_id which = family_id::f16c5x;
  bool is16c5x = false;              ///< for whoever looks; what follows from it is a column of its own
  std::int16_t optmask = 0;          ///< implemented bits of OPTION, all 1 after a reset
  std::int16_t mask5 = 0;            ///< implemented bits of address 5 and TRISA
  std::int16_t mask6 = 0;            ///< implemented bits of address 6 and TRISB: the pins of that port
  std::int16_t status_mask = 0;      ///< bits of STATUS that are there
  std::int16_t port_a_pins = 0;      ///< pins behind address 5; where there is none, that is OSCCAL
  std::int16_t osccal_at_reset = 0;  ///< what each reset puts there
  std::int16_t waking_pins = 0;      ///< pins at address 6 whose change ends SLEEP, which GPWUF then tells
  std::int16_t internal_khz = 0;     ///< of the oscillator inside the chip; 0 where it has none
  bool shares_pins = false;          ///< T0CKI, MCLR and the outer oscillator take GP2, GP3, and GP4 with GP5

  [[nodiscard]] constexpr bool has_port_a() const { return port_a_pins != 0; }
  [[nodiscard]] constexpr bool wakes_on_pins() const { return waking_pins != 0; }
  bool operator==(const family&) const = default;
};

/// A device: its family's columns and its own. All zero before the first selection.
struct device : family {
  std::int16_t progmask = 0;  ///< highest program address, and the reset vector
  std::int16_t datamask = 0;  ///< implemented bits of FSR; bits 5 and 6 give the number of banks
  bool hasportc = false;      ///< address 7 is port C, and there is a TRISC
  bool operator==(const device&) const = default;
};

/// The core registers in the order of their codes 128..133.
struct core_registers {
  std::int16_t pc =
      0;  ///< address of the next instruction, which a skip or a return can leave beyond the memory
  std::int16_t w = 0;       ///< the working register
  std::int16_t option = 0;  ///< prescaler, source of the timer, wake-up: the bits of `option_bit`
  std::int16_t trisa = 0;   ///< directions of the pins, by bit: 1 is an input, 0 an output
  std::int16_t trisb = 0;   ///< the same of the port at address 6
  std::int16_t trisc = 0;   ///< the same of the port at address 7, which the device need not have

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
  device devmodel;                                        ///< the device chosen, a copy of its catalogue row
  bounded_array<std::uint16_t, program_words> progmem{};  ///< all words whatever the device reaches
  bounded_array<std::uint8_t, program_words> breakpts{};  ///< 1 where a run stops before the instruction
  bounded_array<std::int16_t, 16> regs{};  ///< addresses 00..0F, of ports the latches; INDF's own is unused
  bounded_array<std::int16_t, 64> bankregs{};  ///< bank * 16 + (address - 16)
  core_registers cpu;                          ///< what has no data address
  bounded_array<std::int16_t, 2> stack{};      ///< return addresses, the top first
  std::int16_t pdlatch = 0;                    ///< what STATUS shows as /PD: 0 from SLEEP on
  std::int16_t tolatch = 0;                    ///< what STATUS shows as /TO: 0 from a time-out on
  std::int16_t gpwuflatch = 0;                 ///< GPWUF as the last reset set it
  bool sleeping = false;                       ///< steps do nothing until a reset
  std::int16_t pina = 0;                       ///< levels at the pins, by bit
  std::int16_t pinb = 0;                       ///< the same of port B or GPIO
  std::int16_t pinc = 0;                       ///< the same of port C
  std::int32_t cycles = 0;     ///< instruction cycles since somebody set it to 0, modulo one thousand million
  std::int32_t wdtcount = 0;   ///< instruction cycles since the watchdog was cleared
  std::int32_t wdtlimit = 0;   ///< its period in instruction cycles, postscaler included
  std::int16_t prescount = 0;  ///< what the prescaler of TMR0 has counted towards its ratio
  std::int16_t tockicount = 0;   ///< instruction cycles since the last edge of the train at T0CKI
  std::int32_t tockiperiod = 0;  ///< instruction cycles between two of its edges
  std::int32_t tockifreq = 0;    ///< its frequency in Hz; 0: no train, the person gives the pulses
  bool firststep = false;        ///< after a reset: the next step counts one cycle more
  bool running = false;          ///< a continuous run goes on
  bool resumebp = false;         ///< a run stopped at this breakpoint and may pass it
  bool operator==(const chipstate&) const = default;
};
static_assert(std::is_trivially_copyable_v<chipstate>);

}  // namespace estructura
