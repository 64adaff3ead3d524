// The 33 instructions and the data memory as they see it, each rule stated once, whatever the pace at which
// time is counted.
//
//   class exact final : public processor<exact> { ... };    // every cycle counted as it passes
//   exact(chip).execinst(0x1E8);                            // ADDWF 08
//
// `pc`, W and STATUS live in members, which a pace that is inlined whole keeps in the host's registers, and
// go back to the machine with `store`. The rest is the machine's own.
//
// The order inside an instruction is the chip's: operand read, flags, skip, result written last, so that an
// instruction whose destination is STATUS leaves the result there and not the flags.
//
// What a pace provides, since it depends on how time is counted:
//
//   second_cycle()     a skip or a jump takes a second cycle, which the timer sees
//   untimed_cycle()    a write to PCL takes one that the timer does not see
//   bank()             the bank that FSR points into
//   page_mask()        the page bits of STATUS that the device has
//   pcl()              what PCL reads
//   pcl_from_pc()      `pc` was loaded: PCL shows its low byte
//   keep_pcl()         PCL shows the low byte of `pc` and goes on showing it, whatever `pc` becomes
//   pcl_written()      PCL shows what was just written to it
//   at_timer()         TMR0 is about to be read or written
//   pc_may_be_outside(behind)  what was loaded may be no address of the device
//   pins_latched(address)  a port's latch has just taken its pins, as reading the port does
//   latched(address), directed(address), fsr_written(), status_written()
//                      a port's latch, its TRIS register, FSR or STATUS has just taken a value
//   option(), sleep(), clrwdt(), blank(), stop()
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/chipstate.h"
#include "core/data_memory.h"
#include "core/decoded_word.h"
#include "core/instructions.h"

namespace estructura {

template <class Pace>
class processor {
 public:
  /// The value 0..255 of data address 0..31, read as the chip reads, with effects: reading a port stores its
  /// pins into the latch. Both forms of reading FSR are the chip's.
  [[gnu::always_inline]] int readreg(std::size_t f) {
    if (f >= first_general) [[likely]]
      return general(f);
    if (f != reg_indf) return read_special(f);
    const std::size_t a = indirect();
    if (a >= first_general) return general(a);
    if (a == reg_indf) return 0;
    if (a == reg_fsr) return chip_.regs.cells[reg_fsr] | 128;
    return read_special(a);
  }

  /// Writes 0..255 to W (`tofile` 0) or to data address 0..31, with the effects that the address has.
  [[gnu::always_inline]] void writereg(std::size_t f, int tofile, int value) {
    if (tofile == 0) {
      w_ = value;
      return;
    }
    if (f >= first_general) [[likely]] {
      general(f) = static_cast<std::int16_t>(value);
      return;
    }
    const std::size_t a = f != reg_indf ? f : indirect();
    if (a >= first_general)
      general(a) = static_cast<std::int16_t>(value);
    else if (a != reg_indf)
      write_special(a, value);
  }

 protected:
  [[gnu::always_inline]] explicit processor(chipstate& chip)
      : processor(chip, static_cast<std::size_t>(chip.cpu.pc), chip.cpu.w, chip.regs[reg_status]) {}
  [[gnu::always_inline]] processor(chipstate& chip, std::size_t pc, int w, int status)
      : chip_(chip), pc_(pc), w_(w), status_(status) {}

  [[gnu::always_inline]] void store() const {
    chip_.cpu.pc = static_cast<std::int16_t>(pc_);
    chip_.cpu.w = static_cast<std::int16_t>(w_);
    chip_.regs[reg_status] = static_cast<std::int16_t>(status_);
  }

  [[gnu::always_inline]] void perform(const decoded_word& o);

  chipstate& chip_;
  std::size_t pc_;  ///< whatever is no address, a negative number too, is beyond them all
  int w_;
  int status_;

 private:
  /// From here on addresses have no effects; 7 is one of them on some devices only.
  static constexpr std::size_t first_general = 8;
  static constexpr int bit_c = 1 << status_c;
  static constexpr int bit_dc = 1 << status_dc;
  static constexpr int bit_z = 1 << status_z;

  [[gnu::always_inline]] Pace& pace() { return static_cast<Pace&>(*this); }

  [[gnu::always_inline]] std::size_t pagebits() {
    return static_cast<unsigned>(status_ & pace().page_mask()) << 4U;
  }

  // --- data memory ---

  /// The address that FSR holds, 0..31.
  [[gnu::always_inline]] std::size_t indirect() const {
    return static_cast<std::size_t>(chip_.regs.cells[reg_fsr] & 31);
  }

  [[gnu::always_inline]] std::int16_t& general(std::size_t f) {
    return f < 16 ? chip_.regs.cells[f] : chip_.bankregs.cells[pace().bank() * 16 + (f - 16)];
  }

  [[gnu::always_inline]] int read_pins(std::size_t address, std::int16_t pins) {
    chip_.regs.cells[address] = pins;
    pace().pins_latched(address);
    return pins;
  }

  /// Addresses 1..7.
  [[gnu::always_inline]] int read_special(std::size_t a) {
    const device& model = chip_.devmodel;
    switch (a) {
      case reg_tmr0: pace().at_timer(); break;
      case reg_pcl: return pace().pcl();
      case reg_status: return status_;
      case reg_fsr: return chip_.regs.cells[reg_fsr] | (~model.datamask & 255);
      case reg_5:
        if (model.has_port_a()) return read_pins(a, chip_.pina);
        break;
      case reg_6: return read_pins(a, chip_.pinb);
      default:
        if (model.hasportc) return read_pins(a, chip_.pinc);
        break;
    }
    return chip_.regs.cells[a];
  }

  [[gnu::always_inline]] void write_special(std::size_t a, int value) {
    const auto put = [this, value](std::size_t address) {
      chip_.regs.cells[address] = static_cast<std::int16_t>(value);
    };
    switch (a) {
      case reg_tmr0:
        pace().at_timer();
        put(reg_tmr0);
        chip_.prescount = 0;
        break;
      case reg_pcl: {
        const std::size_t behind = pc_;
        put(reg_pcl);
        pc_ = pagebits() + static_cast<std::size_t>(value);
        pace().untimed_cycle();
        pace().pcl_written();
        pace().pc_may_be_outside(behind);
        break;
      }
      case reg_status:
        status_ = value;
        pace().status_written();
        break;
      case reg_fsr:
        chip_.regs.cells[reg_fsr] = static_cast<std::int16_t>(value & 127);
        pace().fsr_written();
        break;
      default:
        put(a);
        pace().latched(a);
        break;
    }
  }

  // --- flags and jumps ---

  [[gnu::always_inline]] void set_flags(int mask, int bits) { status_ = (status_ & (255 - mask)) | bits; }
  [[gnu::always_inline]] void set_z(int result) { set_flags(bit_z, result == 0 ? bit_z : 0); }

  /// C is bit 8 of the whole, DC bit 4 of what the lower halves make.
  [[gnu::always_inline]] void arithmetic_flags(int whole, int halves) {
    const int carry = whole >> 8;
    const int digit_carry = halves >> 4;
    const int zero = (whole & 255) == 0 ? 1 : 0;
    set_flags(bit_c | bit_dc | bit_z, carry << status_c | digit_carry << status_dc | zero << status_z);
  }

  /// Over the next instruction. The wrap is at 2048 on every device: a smaller one is left one past its
  /// memory for a step.
  [[gnu::always_inline]] void skip() {
    const std::size_t behind = pc_++;
    pace().second_cycle();
    if (pc_ == program_words) [[unlikely]]
      pc_ = 0;
    pace().pcl_from_pc();
    pace().pc_may_be_outside(behind);
  }

  // --- the instructions, by the bits of their words ---

  [[gnu::always_inline]] void result(const decoded_word& o, int value) {
    writereg(o.file, o.destination(), value);
  }
  [[gnu::always_inline]] void result_with_z(const decoded_word& o, int value) {
    set_z(value);
    result(o, value);
  }
  [[gnu::always_inline]] void literal_with_z(int value) {
    set_z(value);
    w_ = value;
  }

  // No `if` in these two: a host that guesses branches ahead cannot guess a carry.
  [[gnu::always_inline]] void subwf(const decoded_word& o) {
    const int file = readreg(o.file);
    // Bit 8, and bit 4 of the lower halves, stay set where nothing was borrowed.
    const int difference = 256 + file - w_;
    const int halves = 16 + (file & 15) - (w_ & 15);
    arithmetic_flags(difference, halves);
    result(o, difference & 255);
  }

  [[gnu::always_inline]] void addwf(const decoded_word& o) {
    const int file = readreg(o.file);
    const int sum = file + w_;
    const int halves = (file & 15) + (w_ & 15);
    arithmetic_flags(sum, halves);
    result(o, sum & 255);
  }

  /// DECFSZ and INCFSZ, which change no flag.
  [[gnu::always_inline]] void count_and_skip(const decoded_word& o, int by) {
    const int counted = (readreg(o.file) + by) & 255;
    if (counted == 0) skip();
    result(o, counted);
  }

  [[gnu::always_inline]] void rrf(const decoded_word& o) {
    const int file = readreg(o.file);
    const int rotated = getbit(status_, status_c) * 128 + file / 2;
    set_flags(bit_c, file & 1);
    result(o, rotated);
  }

  [[gnu::always_inline]] void rlf(const decoded_word& o) {
    const int shifted = readreg(o.file) * 2 + getbit(status_, status_c);
    set_flags(bit_c, shifted >> 8);
    result(o, shifted & 255);
  }

  [[gnu::always_inline]] void swapf(const decoded_word& o) {
    const int file = readreg(o.file);
    result(o, (file & 15) * 16 + (file & 240) / 16);
  }

  [[gnu::always_inline]] void bit_to(const decoded_word& o, int on) {
    writereg(o.file, 1, setbit(readreg(o.file), o.bit(), on));
  }

  [[gnu::always_inline]] void skip_if_bit(const decoded_word& o, int wanted) {
    if (getbit(readreg(o.file), o.bit()) == wanted) skip();
  }

  [[gnu::always_inline]] void goto_(unsigned word) {
    pc_ = pagebits() + (word & 511U);
    pace().second_cycle();
    pace().pcl_from_pc();
  }

  [[gnu::always_inline]] void call(unsigned target) {
    chip_.stack.cells[1] = chip_.stack.cells[0];
    chip_.stack.cells[0] = static_cast<std::int16_t>(pc_);
    pace().second_cycle();
    // PCL keeps the return address until the next fetch.
    pace().keep_pcl();
    pc_ = pagebits() + target;
  }

  [[gnu::always_inline]] void retlw(int k) {
    const std::size_t behind = pc_;
    pc_ = static_cast<std::size_t>(chip_.stack.cells[0]);
    pace().second_cycle();
    pace().pcl_from_pc();
    chip_.stack.cells[0] = chip_.stack.cells[1];
    w_ = k;
    pace().pc_may_be_outside(behind);
  }

  [[gnu::always_inline]] void tris(std::size_t port) {
    std::int16_t& direction = port == reg_5   ? chip_.cpu.trisa
                              : port == reg_6 ? chip_.cpu.trisb
                                              : chip_.cpu.trisc;
    direction = static_cast<std::int16_t>(w_);
    pace().directed(port);
  }
};

template <class Pace>
inline void processor<Pace>::perform(const decoded_word& o) {
  switch (o.code) {
    case op::nothing:
    case op::nop: break;
    case op::option: pace().option(); break;
    case op::sleep: pace().sleep(); break;
    case op::clrwdt: pace().clrwdt(); break;
    case op::tris: tris(o.file & 7U); break;
    case op::movwf: writereg(o.file, 1, w_); break;
    case op::clrw: w_ = 0; break;
    case op::clrf: writereg(o.file, 1, 0); break;
    case op::subwf: subwf(o); break;
    case op::decf: result_with_z(o, (readreg(o.file) - 1) & 255); break;
    case op::iorwf: result_with_z(o, readreg(o.file) | w_); break;
    case op::andwf: result_with_z(o, readreg(o.file) & w_); break;
    case op::xorwf: result_with_z(o, readreg(o.file) ^ w_); break;
    case op::addwf: addwf(o); break;
    case op::movf: result_with_z(o, readreg(o.file)); break;
    case op::comf: result_with_z(o, ~readreg(o.file) & 255); break;
    case op::incf: result_with_z(o, (readreg(o.file) + 1) & 255); break;
    case op::decfsz: count_and_skip(o, -1); break;
    case op::rrf: rrf(o); break;
    case op::rlf: rlf(o); break;
    case op::swapf: swapf(o); break;
    case op::incfsz: count_and_skip(o, 1); break;
    case op::bcf: bit_to(o, 0); break;
    case op::bsf: bit_to(o, 1); break;
    case op::btfsc: skip_if_bit(o, 0); break;
    case op::btfss: skip_if_bit(o, 1); break;
    case op::retlw: retlw(o.literal()); break;
    case op::call: call(o.word & 255U); break;
    case op::goto_: goto_(o.word); break;
    case op::movlw: w_ = o.literal(); break;
    case op::iorlw: literal_with_z(w_ | o.literal()); break;
    case op::andlw: literal_with_z(w_ & o.literal()); break;
    case op::xorlw: literal_with_z(w_ ^ o.literal()); break;
    case op::blank: pace().blank(); break;
    case op::stop: pace().stop(); break;
    default: __builtin_unreachable();
  }
}

}  // namespace estructura
