// Many steps at once, as fast as the host goes, with the same end as so many single ones.
//
// What nobody can see between two looks is not done at each step. There is one clock, the number of cycles
// passed since the stretch began, and everything that counts follows from it:
//
//     cycles ──┬──> cycles, modulo one thousand million
//              └──> wdtcount
//     ticks  ──┬──> prescount ──> TMR0          (instruction clock)
//              └──> tockicount ──> prescount ──> TMR0   (pulse train)
//
//     step        |  one cycle, one tick
//     blank step  |  none of either
//     skip, jump  |  one more of each                        `second_`
//     write PCL   |  one more cycle, which no tick sees      `untimed_`
//
// They are settled where somebody reads or writes one of them: TMR0 read or written, CLRWDT, the end.
// `ticks_now` and `cycles_now` say how far the clock stands, `ticks_settled_` and `cycles_settled_` how much
// of that has been handed on.
//
// The horizon says how many steps may pass before anything happens that one of them would have to notice:
//
//     |---- horizon: no time-out, no overflow, no stall's edge can be met ----|
//     now                                                                     first step that might
//
// It is worked out once for the worst case (three cycles and two ticks a step), and a stretch ends there; the
// next one begins with a single step and finds another horizon, so the last steps before an event are single
// ones. OPTION and SLEEP are left to single steps too.
//
// The registers are within the device's limits all the time: a single step comes first, whose refresh cuts
// them, and what a write can carry beyond them is cut with the write. So are the pins: an output follows its
// latch when latch or direction is written.
//
// PCL is the low byte of `pc` but where CALL or a write has left another in it; `pcl_kept_` says in which
// step that was.

#include <algorithm>
#include <cstdint>
#include <limits>

#include "core/pins.h"
#include "core/processor.h"
#include "core/step.h"
#include "core/timer.h"

namespace estructura {

namespace {

[[gnu::noinline]] void settle_cycles(chipstate& chip, std::int64_t count) {
  constexpr std::int64_t cycles_modulus = 1'000'000'000;
  constexpr std::int64_t greatest = std::numeric_limits<std::int32_t>::max();
  const std::int64_t cycles = chip.cycles + count;
  chip.cycles = static_cast<std::int32_t>(cycles >= cycles_modulus ? cycles - cycles_modulus : cycles);
  chip.wdtcount = static_cast<std::int32_t>(std::min(chip.wdtcount + count, greatest));
}

// Of port 5..7.
[[gnu::noinline]] void cut_latch(chipstate& chip, inputs& in, std::size_t address) {
  const device& model = chip.devmodel;
  std::int16_t& latch = chip.regs.cells[address];
  switch (address) {
    case reg_5:
      latch = static_cast<std::int16_t>(latch & model.mask5);
      follow_latch(in.pin_boxes.cells[0], chip.pina, chip.cpu.trisa, latch, model.port_a_pins);
      break;
    case reg_6:
      latch = static_cast<std::int16_t>(latch & model.mask6);
      follow_latch(in.pin_boxes.cells[1], chip.pinb, chip.cpu.trisb, latch, 255);
      break;
    default:
      if (model.hasportc) follow_latch(in.pin_boxes.cells[2], chip.pinc, chip.cpu.trisc, latch, 255);
      break;
  }
}

void cut_directions(chipstate& chip) {
  core_registers& cpu = chip.cpu;
  cpu.trisa = static_cast<std::int16_t>(cpu.trisa & chip.devmodel.mask5);
  cpu.trisb = static_cast<std::int16_t>(cpu.trisb & chip.devmodel.mask6);
}

class stretch final : public processor<stretch> {
 public:
  stretch(chipstate& chip, inputs& in, const decoded_program& decoded, std::int64_t most,
          bool stop_when_redirected)
      : processor(chip),
        in_(in),
        decoded_(decoded),
        progmask_(static_cast<std::size_t>(chip.devmodel.progmask)),
        planned_(most),
        left_(most),
        stop_when_redirected_(stop_when_redirected) {}

  /// Steps done.
  [[gnu::always_inline]] inline std::int64_t run(trail& seen) {
    do {
      const decoded_word& next = decoded_[pc_];
      pc_ = (pc_ + 1) & progmask_;
      perform(next);
    } while (--left_ != 0);

    const std::int64_t steps = done();
    if (steps == 0) return 0;
    settle();
    if (pcl_kept_ != steps - 1) chip_.regs.cells[reg_pcl] = static_cast<std::int16_t>(pc_ & 255);
    store();
    tell(seen);
    return steps;
  }

 private:
  friend class processor<stretch>;

  [[gnu::always_inline, nodiscard]] std::int64_t done() const { return planned_ - left_; }

  /// This step is the last one.
  [[gnu::always_inline]] void stop_behind() {
    planned_ -= left_ - 1;
    left_ = 1;
  }
  /// This step is not for this pace: as if it had not begun.
  [[gnu::always_inline]] void stop_before() {
    pc_ = address_before(pc_);
    planned_ -= left_;
    left_ = 1;
  }

  [[gnu::always_inline, nodiscard]] std::size_t address_before(std::size_t behind) const {
    return (behind - 1) & progmask_;
  }

  // --- the clock; within a step its first cycle has passed and its tick has not ---

  [[gnu::always_inline]] void second_cycle() { ++second_; }
  [[gnu::always_inline]] void untimed_cycle() { ++untimed_; }
  [[gnu::always_inline]] void at_timer() {
    const std::int64_t ticks_now = done() + second_;
    tmrticks(chip_, ticks_now - ticks_settled_);
    ticks_settled_ = ticks_now;
  }
  [[gnu::always_inline]] void clrwdt() {
    const std::int64_t cycles_now = done() + second_ + untimed_ + 1;
    settle_cycles(chip_, cycles_now - cycles_settled_);
    cycles_settled_ = cycles_now;
    chip_.tolatch = 1;
    chip_.wdtcount = 0;
    status_written();
  }
  [[gnu::always_inline]] void settle() {
    const std::int64_t ticks_now = done() + second_;
    tmrticks(chip_, ticks_now - ticks_settled_);
    settle_cycles(chip_, ticks_now + untimed_ - cycles_settled_);
  }

  // --- PCL ---

  [[gnu::always_inline, nodiscard]] int pcl() const { return static_cast<int>(pc_ & 255U); }
  [[gnu::always_inline]] void pcl_from_pc() {}
  [[gnu::always_inline]] void pcl_written() { pcl_kept_ = done(); }
  [[gnu::always_inline]] void keep_pcl() {
    chip_.regs.cells[reg_pcl] = static_cast<std::int16_t>(pc_ & 255);
    pcl_kept_ = done();
  }

  // --- jumps ---

  [[gnu::always_inline]] void pc_may_be_outside(std::size_t behind) {
    if (pc_ <= progmask_) [[likely]]
      return;
    left_from_ = address_before(behind);
    stop_behind();
  }

  // --- the limits of the device ---

  [[gnu::always_inline]] void status_written() { status_ = normalized_status(chip_, status_); }
  [[gnu::always_inline]] void fsr_written() {
    chip_.regs.cells[reg_fsr] =
        static_cast<std::int16_t>(chip_.regs.cells[reg_fsr] & chip_.devmodel.datamask);
  }
  [[gnu::always_inline]] void latched(std::size_t address) { cut_latch(chip_, in_, address); }
  [[gnu::always_inline]] void directed(std::size_t address) {
    cut_directions(chip_);
    cut_latch(chip_, in_, address);
    if (stop_when_redirected_) stop_behind();
  }

  [[gnu::always_inline]] void tell(trail& seen) const {
    const bool outside = pc_ > progmask_;
    if (outside) seen.arrive(static_cast<int>(left_from_), chip_.devmodel.progmask);
    seen.arrive(static_cast<std::int16_t>(pc_), chip_.devmodel.progmask);
    seen.mark(static_cast<std::int16_t>(pc_));
    seen.refreshed = true;
  }

  // --- steps that take no time, and those left to a single step ---

  [[gnu::always_inline]] void blank() { --second_; }
  [[gnu::always_inline]] void stop() { stop_before(); }
  // Decoded as `op::stop`, these two are never met.
  void option() {}
  void sleep() {}

  inputs& in_;
  const decoded_program& decoded_;
  const std::size_t progmask_;
  std::size_t left_from_ = 0;  ///< the address from which the last step left the device's memory, if it has
  std::int64_t planned_;
  std::int64_t left_;
  std::int64_t second_ = 0;
  std::int64_t untimed_ = 0;
  std::int64_t ticks_settled_ = 0;
  std::int64_t cycles_settled_ = 0;
  std::int64_t pcl_kept_ = -1;  ///< the last step, from 0, that left PCL another than `pc`'s low byte
  const bool stop_when_redirected_;
};

// The object stays in the host's registers: nothing that is not inlined gets hold of it.
[[gnu::noinline]] std::int64_t take_steps(chipstate& chip, inputs& in, trail& seen,
                                          const decoded_program& decoded, std::int64_t most,
                                          bool stop_when_redirected) {
  return stretch(chip, in, decoded, most, stop_when_redirected).run(seen);
}

/// Whether a refresh would change nothing, and the boxes show the pins' levels.
bool refreshed(const chipstate& chip, const inputs& in) {
  const device& model = chip.devmodel;
  const auto within = [](int value, int mask) { return (value & mask) == value; };
  const auto follows = [](int box, int pins, int tris, int latch, int width) {
    return ((((box ^ latch) & ~tris) | (box ^ pins)) & width) == 0;
  };
  const auto& boxes = in.pin_boxes;
  const bool counts_pulses = getbit(chip.cpu.option, option_t0cs) != 0;
  return within(chip.regs[reg_fsr], model.datamask) && within(chip.regs[reg_5], model.mask5) &&
         within(chip.regs[reg_6], model.mask6) && within(chip.cpu.option, model.optmask) &&
         within(chip.cpu.trisa, model.mask5) && within(chip.cpu.trisb, model.mask6) &&
         normalized_status(chip, chip.regs[reg_status]) == chip.regs[reg_status] &&
         (!in.watchdog_on || chip.wdtlimit == in.wdt_limits[watchdog_divisor(chip)]) &&
         (!counts_pulses || !in.pulse_train || chip.tockiperiod == in.tocki_period) &&
         follows(boxes[0], chip.pina, chip.cpu.trisa, chip.regs[reg_5], model.port_a_pins) &&
         follows(boxes[1], chip.pinb, chip.cpu.trisb, chip.regs[reg_6], 255) &&
         (!model.hasportc || follows(boxes[2], chip.pinc, chip.cpu.trisc, chip.regs[reg_7], 255));
}

/// How many steps may pass before one that must be taken singly.
std::int64_t horizon(const chipstate& chip, const inputs& in) {
  constexpr std::int32_t cycles_modulus = 1'000'000'000;
  constexpr std::int64_t most_steps = cycles_modulus / 4;
  constexpr int cycles_a_step = 3;
  constexpr int ticks_a_step = 2;
  const bool steppable = !chip.sleeping && !chip.firststep && chip.cycles < cycles_modulus &&
                         chip.cpu.pc >= 0 && chip.cpu.pc <= chip.devmodel.progmask &&
                         chip.breakpts[chip.cpu.pc] != 1 && refreshed(chip, in);
  if (!steppable) return 0;
  std::int64_t steps = std::min(most_steps, ticks_foreseen(chip) / ticks_a_step);
  if (in.watchdog_on)
    steps = std::min(steps, (std::int64_t{chip.wdtlimit} - chip.wdtcount - 1) / cycles_a_step);
  return steps;
}

/// A GOTO to itself changes nothing but time. Whether the next instruction is one.
bool idles(const chipstate& chip) {
  const unsigned word = chip.progmem[chip.cpu.pc];
  const bool is_goto = word < op_index.size() && op_index[word] == op::goto_;
  const int target = pagebits(chip.devmodel, chip.regs[reg_status]) + static_cast<int>(word & 511U);
  return is_goto && target == chip.cpu.pc;
}

void idle(chipstate& chip, trail& seen, std::int64_t steps) {
  constexpr int cycles_a_step = 2;
  tmrticks(chip, steps * cycles_a_step);
  settle_cycles(chip, steps * cycles_a_step);
  chip.regs[reg_pcl] = static_cast<std::int16_t>(chip.cpu.pc & 255);
  seen.refreshed = true;
}

}  // namespace

stretch_end run_stretch(chipstate& chip, inputs& in, trail& seen, decoded_program& decoded, std::int64_t most,
                        bool stop_when_redirected) {
  stretch_end end{step(chip, in, seen), 1};
  if (end.last == step_end::time_out || most <= 1) return end;
  if (chip.sleeping && chip.breakpts[chip.cpu.pc] != 1) {
    // Every further step would do nothing, until somebody wakes the chip between two of them.
    end.steps = most;
    return end;
  }
  const std::int64_t steps = std::min(most - 1, horizon(chip, in));
  if (steps <= 0) return end;
  if (idles(chip)) {
    idle(chip, seen, steps);
    end.steps += steps;
  } else if (seen.moved) {
    decoded.follow(chip);
    end.steps += take_steps(chip, in, seen, decoded, steps, stop_when_redirected);
  } else {
    // Many steps at once do not notice whether they stay at one address, as a CALL to itself does. Whether
    // the program has moved since the last look is for a single step to say first.
    end.last = step(chip, in, seen);
    ++end.steps;
  }
  return end;
}

}  // namespace estructura
