// The instructions a second time, for the tests alone: decoded by nibbles, written as plainly as the rules
// read, and sharing no line with the step. Slow on purpose.
//
//   chipstate wanted = chip;
//   support::expected_execution(wanted, 0x1E8);     // ADDWF 08
#pragma once

#include "core/chipstate.h"

namespace estructura::support {

class oracle {
 public:
  explicit oracle(chipstate& chip) : chip_(chip) {}

  void execute(int word) {
    cycle();
    const int hi = word / 256, mid = word / 16 % 16, lo = word % 16;
    f_ = mid % 2 * 16 + lo;
    d_ = mid / 2 % 2;
    const int b = mid / 2;
    const int k = mid * 16 + lo;
    if (word > 4095) {
      // Costs its cycle.
    } else if (hi == 0) {
      group_0(mid, lo);
    } else if (hi < 4) {
      file_group((hi - 1) * 4 + mid / 4);
    } else if (hi == 4) {
      const int value = read();
      write(value - (bit(value, b) ? weight(b) : 0), 1);
    } else if (hi == 5) {
      const int value = read();
      write(value + (bit(value, b) ? 0 : weight(b)), 1);
    } else if (hi == 6) {
      if (!bit(read(), b)) skip();
    } else if (hi == 7) {
      if (bit(read(), b)) skip();
    } else if (hi == 8) {
      set(chip_.cpu.pc, chip_.stack[0]);
      second_cycle();
      pcl_from_pc();
      chip_.stack[0] = chip_.stack[1];
      set(chip_.cpu.w, k);
    } else if (hi == 9) {
      chip_.stack[1] = chip_.stack[0];
      chip_.stack[0] = chip_.cpu.pc;
      second_cycle();
      pcl_from_pc();
      set(chip_.cpu.pc, page() + k);
    } else if (hi < 12) {
      second_cycle();
      set(chip_.cpu.pc, page() + (hi - 10) * 256 + k);
      pcl_from_pc();
    } else if (hi == 12) {
      set(chip_.cpu.w, k);
    } else {
      const int w = chip_.cpu.w;
      const int result = hi == 13 ? w | k : hi == 14 ? w & k : w ^ k;
      flag(2, result == 0);
      set(chip_.cpu.w, result);
    }
    if (chip_.cycles >= 1000000000) chip_.cycles -= 1000000000;
  }

  /// One instruction cycle of the timer.
  void tick() {
    if (bit(chip_.cpu.option, 5)) {
      if (chip_.tockifreq == 0) return;
      if (!chip_.sleeping && ++chip_.tockicount >= chip_.tockiperiod) {
        chip_.tockicount = 0;
        ++chip_.prescount;
      }
    } else {
      ++chip_.prescount;
    }
    const int ratio = bit(chip_.cpu.option, 3) ? 1 : weight(chip_.cpu.option % 8 + 1);
    if (chip_.prescount != ratio) return;
    chip_.prescount = 0;
    set(chip_.regs[1], (chip_.regs[1] + 1) % 256);
  }

 private:
  static int weight(int n) { return n == 0 ? 1 : 2 * weight(n - 1); }
  static bool bit(int value, int n) { return value / weight(n) % 2 == 1; }
  static void set(std::int16_t& cell, int value) { cell = static_cast<std::int16_t>(value); }

  void flag(int n, bool on) {
    const int status = chip_.regs[3];
    const int without = status - (bit(status, n) ? weight(n) : 0);
    set(chip_.regs[3], on ? without + weight(n) : without);
  }
  void cycle() {
    ++chip_.cycles;
    ++chip_.wdtcount;
  }
  void second_cycle() {
    cycle();
    tick();
  }
  void pcl_from_pc() { set(chip_.regs[2], chip_.cpu.pc % 256); }
  [[nodiscard]] int page() const {
    const int words = chip_.devmodel.progmask + 1;
    return (words >= 1024 && bit(chip_.regs[3], 5) ? 512 : 0) +
           (words == 2048 && bit(chip_.regs[3], 6) ? 1024 : 0);
  }
  std::int16_t& banked(int address) {
    const int fsr = chip_.regs[4];
    const int bank = (chip_.devmodel.datamask >= 63 && bit(fsr, 5) ? 1 : 0) +
                     (chip_.devmodel.datamask == 127 && bit(fsr, 6) ? 2 : 0);
    return chip_.bankregs[bank * 16 + address - 16];
  }

  int read() {
    const bool indirect = f_ == 0;
    const int a = indirect ? chip_.regs[4] % 32 : f_;
    if (a >= 16) return banked(a);
    if (a == 0) return 0;
    if (a == 4) return indirect ? chip_.regs[4] | 128 : chip_.regs[4] | (255 - chip_.devmodel.datamask);
    if (a == 5 && chip_.devmodel.is16c5x) chip_.regs[5] = chip_.pina;
    if (a == 6) chip_.regs[6] = chip_.pinb;
    if (a == 7 && chip_.devmodel.hasportc) chip_.regs[7] = chip_.pinc;
    return chip_.regs[a];
  }

  void write(int value, int d) {
    if (d == 0) return set(chip_.cpu.w, value);
    const int a = f_ == 0 ? chip_.regs[4] % 32 : f_;
    if (a >= 16) return set(banked(a), value);
    if (a == 0) return;
    set(chip_.regs[a], a == 4 ? value % 128 : value);
    if (a == 1) chip_.prescount = 0;
    if (a != 2) return;
    set(chip_.cpu.pc, page() + value);
    cycle();
  }

  void skip() {
    set(chip_.cpu.pc, chip_.cpu.pc + 1);
    second_cycle();
    if (chip_.cpu.pc == 2048) chip_.cpu.pc = 0;
    pcl_from_pc();
  }

  void group_0(int mid, int lo) {
    const int w = chip_.cpu.w;
    if (mid == 0 && lo == 2) set(chip_.cpu.option, w);
    if (mid == 0 && lo == 3) {
      chip_.pdlatch = 0;
      chip_.tolatch = 1;
      flag(3, false);
      flag(4, true);
      chip_.sleeping = true;
      chip_.wdtcount = 0;
    }
    if (mid == 0 && lo == 4) {
      chip_.tolatch = 1;
      chip_.wdtcount = 0;
    }
    if (mid == 0 && lo == 5) set(chip_.cpu.trisa, w);
    if (mid == 0 && lo == 6) set(chip_.cpu.trisb, w);
    if (mid == 0 && lo == 7) set(chip_.cpu.trisc, w);
    if (mid == 2 || mid == 3) write(w, 1);
    if (mid == 4 && lo == 0) set(chip_.cpu.w, 0);
    if (mid == 6 || mid == 7) write(0, 1);
    if (mid >= 8 && mid < 12) {
      const int file = read();
      const int r = file - w;
      flag(1, file % 16 >= w % 16);
      flag(0, r >= 0);
      flag(2, r == 0);
      write(r < 0 ? r + 256 : r, d_);
    }
    if (mid >= 12) {
      const int r = (read() + 255) % 256;
      flag(2, r == 0);
      write(r, d_);
    }
  }

  // IORWF ANDWF XORWF ADDWF, MOVF COMF INCF DECFSZ, RRF RLF SWAPF INCFSZ.
  void file_group(int place) {
    const int file = read();
    const int w = chip_.cpu.w;
    const bool carry = bit(chip_.regs[3], 0);
    int r = 0;
    switch (place) {
      case 0: r = file | w; break;
      case 1: r = file & w; break;
      case 2: r = file ^ w; break;
      case 3:
        r = (file + w) % 256;
        flag(1, file % 16 + w % 16 >= 16);
        flag(0, file + w > 255);
        break;
      case 4: r = file; break;
      case 5: r = 255 - file; break;
      case 6: r = (file + 1) % 256; break;
      case 7: r = (file + 255) % 256; break;
      case 8:
        r = file / 2 + (carry ? 128 : 0);
        flag(0, bit(file, 0));
        break;
      case 9:
        r = (file * 2 + (carry ? 1 : 0)) % 256;
        flag(0, bit(file, 7));
        break;
      case 10: r = file % 16 * 16 + file / 16; break;
      default: r = (file + 1) % 256; break;
    }
    if (place < 7) flag(2, r == 0);
    if ((place == 7 || place == 11) && r == 0) skip();
    write(r, d_);
  }

  chipstate& chip_;
  int f_ = 0;
  int d_ = 0;
};

inline void expected_execution(chipstate& chip, int word) {
  oracle(chip).execute(word);
}
inline void expected_tick(chipstate& chip) {
  oracle(chip).tick();
}

}  // namespace estructura::support
