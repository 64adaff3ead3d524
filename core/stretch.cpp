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
//     skip, jump  |  one more of each                        `second`
//     write PCL   |  one more cycle, which no tick sees      `untimed`
//
// They are counted where somebody reads or writes one of them: TMR0 read or written, CLRWDT, the end.
// `ticks_now` and `cycles_now` say how far the clock stands, `ticks_counted` and `cycles_counted` how much
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
// PCL is the low byte of `pc` but where CALL or a write has left another in it; `pcl_kept` says in which
// step that was.
//
// Each step ends with a jump to the next, a call in the last place: `pc`, W, STATUS and the steps left are
// handed on in the host's registers, all else stays in `stretch_memory`.
//
//     take_step<DECFSZ 08..0F to file> ──> take_step<GOTO> ──> take_step<DECFSZ 08..0F to file> ──> ...
//
// There is such a function for each variant of an instruction (core/variant.h), which the compiler makes of
// the one statement by leaving out what its word rules out: the effects of the registers that it does not
// name, mostly. Only what FSR points to can be anything, and is looked at before the step.

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <utility>

#include "core/pins.h"
#include "core/processor.h"
#include "core/step.h"
#include "core/timer.h"
#include "core/variant.h"

namespace estructura {

namespace {

[[gnu::noinline]] void count_cycles(chipstate& chip, std::int64_t count) {
  constexpr std::int64_t cycles_modulus = 1'000'000'000;
  constexpr std::int64_t greatest = std::numeric_limits<std::int32_t>::max();
  const std::int64_t cycles = chip.cycles + count;
  chip.cycles = static_cast<std::int32_t>(cycles >= cycles_modulus ? cycles - cycles_modulus : cycles);
  chip.wdtcount = static_cast<std::int32_t>(std::min(chip.wdtcount + count, greatest));
}

// Of port 5..7; the bits that are left.
[[gnu::always_inline]] inline int cut_latch(chipstate& chip, std::size_t address) {
  const device& model = chip.devmodel;
  std::int16_t& latch = chip.regs.cells[address];
  if (address == reg_5) latch = static_cast<std::int16_t>(latch & model.mask5);
  if (address == reg_6) latch = static_cast<std::int16_t>(latch & model.mask6);
  return latch;
}

[[gnu::always_inline]] inline void follow_cut_latch(chipstate& chip, inputs& in, std::size_t address) {
  const device& model = chip.devmodel;
  auto& boxes = in.pin_boxes.cells;
  const int latch = cut_latch(chip, address);
  if (address == reg_6)
    follow_latch(boxes[1], chip.pinb, chip.cpu.trisb, latch, 255);
  else if (address == reg_7 && model.hasportc)
    follow_latch(boxes[2], chip.pinc, chip.cpu.trisc, latch, 255);
  else if (address == reg_5 && model.has_port_a())
    follow_latch(boxes[0], chip.pina, chip.cpu.trisa, latch, model.port_a_pins);
}

void cut_directions(chipstate& chip) {
  core_registers& cpu = chip.cpu;
  cpu.trisa = static_cast<std::int16_t>(cpu.trisa & chip.devmodel.mask5);
  cpu.trisb = static_cast<std::int16_t>(cpu.trisb & chip.devmodel.mask6);
}

/// What steps do not hand on to each other in registers.
struct stretch_memory {
  stretch_memory(const chipstate& chip, inputs& boxes, const decoded_program& program, bool stop_at_tris)
      : in(boxes),
        decoded(program),
        progmask(static_cast<std::size_t>(chip.devmodel.progmask)),
        page_mask(estructura::page_mask(chip.devmodel)),
        stop_when_redirected(stop_at_tris),
        bank(static_cast<std::size_t>(fsrbank(chip))),
        pc(static_cast<std::size_t>(chip.cpu.pc)),
        w(chip.cpu.w),
        status(chip.regs[reg_status]) {}

  inputs& in;
  const decoded_program& decoded;
  const std::size_t progmask;
  const int page_mask;
  const bool stop_when_redirected;
  bool stopped = false;  ///< a step was the last one before its time
  std::size_t bank;      ///< the one that FSR points into
  std::int64_t planned = 0;
  std::int64_t second = 0;
  std::int64_t untimed = 0;
  std::int64_t ticks_counted = 0;
  std::int64_t cycles_counted = 0;
  std::int64_t pcl_kept = -1;  ///< the last step, from 0, that left PCL another than `pc`'s low byte
  std::size_t left_from = 0;   ///< the address from which the last step left the device's memory, if it has
  // Between two chains of steps.
  std::size_t pc;
  int w;
  int status;
};

using step_function = void(chipstate&, stretch_memory&, std::size_t pc, std::int64_t left, int w, int status);
extern const std::array<step_function*, variant::count> step_functions;

// Where a call in the last place does not become a jump, the steps stand in one loop instead of a chain: a
// step that is called has a frame on the stack, of up to 25 KB unoptimized. WebAssembly knows no such jump.
#if defined(__OPTIMIZE__) && !defined(ESTRUCTURA_SANITIZED) && !defined(__wasm__)
constexpr bool steps_are_chained = true;
#else
constexpr bool steps_are_chained = false;
#endif

// What the stack bears where a compiler that optimizes makes calls of them all the same.
constexpr std::int64_t longest_chain = 512;

class stretch final : public processor<stretch> {
 public:
  [[gnu::always_inline]] stretch(chipstate& chip, stretch_memory& memory, std::size_t pc, std::int64_t left,
                                 int w, int status)
      : processor(chip, pc, w, status), memory_(memory), left_(left) {}

  [[gnu::always_inline]] void take(const decoded_word& next) {
    pc_ = (pc_ + 1) & memory_.progmask;
    perform(next);
    --left_;
  }

  /// To the next step of the chain, or to rest behind its end.
  [[gnu::always_inline]] void go_on() const {
    if (left_ == 0) [[unlikely]]
      return rest();
    return step_functions[memory_.decoded[pc_].variant](chip_, memory_, pc_, left_, w_, status_);
  }

  /// The same in one place, without variants.
  [[gnu::always_inline]] void loop() {
    do take(memory_.decoded[pc_]);
    while (left_ != 0);
    rest();
  }

  /// Steps done, behind the last chain.
  std::int64_t finish(trail& seen) {
    const std::int64_t steps = done();
    if (steps == 0) return 0;
    count_rest();
    if (memory_.pcl_kept != steps - 1) chip_.regs.cells[reg_pcl] = static_cast<std::int16_t>(pc_ & 255);
    store();
    tell(seen);
    return steps;
  }

 private:
  friend class processor<stretch>;

  [[gnu::always_inline]] void rest() const {
    memory_.pc = pc_;
    memory_.w = w_;
    memory_.status = status_;
  }

  [[gnu::always_inline, nodiscard]] std::int64_t done() const { return memory_.planned - left_; }

  /// This step is the last one.
  [[gnu::always_inline]] void stop_behind() {
    memory_.stopped = true;
    memory_.planned -= left_ - 1;
    left_ = 1;
  }
  /// This step is not for this pace: as if it had not begun.
  [[gnu::always_inline]] void stop_before() {
    pc_ = address_before(pc_);
    memory_.stopped = true;
    memory_.planned -= left_;
    left_ = 1;
  }

  [[gnu::always_inline, nodiscard]] std::size_t address_before(std::size_t behind) const {
    return (behind - 1) & memory_.progmask;
  }

  // --- the clock; within a step its first cycle has passed and its tick has not ---

  [[gnu::always_inline]] void second_cycle() { ++memory_.second; }
  [[gnu::always_inline]] void untimed_cycle() { ++memory_.untimed; }
  [[gnu::always_inline]] void at_timer() {
    const std::int64_t ticks_now = done() + memory_.second;
    tmrticks(chip_, ticks_now - memory_.ticks_counted);
    memory_.ticks_counted = ticks_now;
  }
  [[gnu::always_inline]] void clrwdt() {
    const std::int64_t cycles_now = done() + memory_.second + memory_.untimed + 1;
    count_cycles(chip_, cycles_now - memory_.cycles_counted);
    memory_.cycles_counted = cycles_now;
    chip_.tolatch = 1;
    chip_.wdtcount = 0;
    status_written();
  }
  [[gnu::always_inline]] void count_rest() {
    const std::int64_t ticks_now = done() + memory_.second;
    tmrticks(chip_, ticks_now - memory_.ticks_counted);
    count_cycles(chip_, ticks_now + memory_.untimed - memory_.cycles_counted);
  }

  // --- what stays in memory ---

  [[gnu::always_inline, nodiscard]] std::size_t bank() const { return memory_.bank; }
  [[gnu::always_inline, nodiscard]] int page_mask() const { return memory_.page_mask; }

  // --- PCL ---

  [[gnu::always_inline, nodiscard]] int pcl() const { return static_cast<int>(pc_ & 255U); }
  [[gnu::always_inline]] void pcl_from_pc() {}
  [[gnu::always_inline]] void pcl_written() { memory_.pcl_kept = done(); }
  [[gnu::always_inline]] void keep_pcl() {
    chip_.regs.cells[reg_pcl] = static_cast<std::int16_t>(pc_ & 255);
    memory_.pcl_kept = done();
  }

  // --- jumps ---

  [[gnu::always_inline]] void pc_may_be_outside(std::size_t behind) {
    if (pc_ <= memory_.progmask) [[likely]]
      return;
    memory_.left_from = address_before(behind);
    stop_behind();
  }

  // --- the limits of the device ---

  [[gnu::always_inline]] void status_written() { status_ = normalized_status(chip_, status_); }
  [[gnu::always_inline]] void fsr_written() {
    chip_.regs.cells[reg_fsr] =
        static_cast<std::int16_t>(chip_.regs.cells[reg_fsr] & chip_.devmodel.datamask);
    memory_.bank = static_cast<std::size_t>(fsrbank(chip_));
  }
  // Boxes and outputs stand as the pins do already.
  [[gnu::always_inline]] void pins_latched(std::size_t address) { cut_latch(chip_, address); }
  [[gnu::always_inline]] void latched(std::size_t address) { follow_cut_latch(chip_, memory_.in, address); }
  [[gnu::always_inline]] void directed(std::size_t address) {
    cut_directions(chip_);
    follow_cut_latch(chip_, memory_.in, address);
    if (memory_.stop_when_redirected) stop_behind();
  }

  [[gnu::always_inline]] void tell(trail& seen) const {
    const bool outside = pc_ > memory_.progmask;
    if (outside) seen.arrive(static_cast<int>(memory_.left_from), chip_.devmodel.progmask);
    seen.arrive(static_cast<std::int16_t>(pc_), chip_.devmodel.progmask);
    seen.mark(static_cast<std::int16_t>(pc_));
    seen.refreshed = true;
  }

  // --- steps that take no time, and those left to a single step ---

  [[gnu::always_inline]] void blank() { --memory_.second; }
  [[gnu::always_inline]] void stop() { stop_before(); }
  // Decoded as `op::stop`, these two are never met.
  void option() {}
  void sleep() {}

  stretch_memory& memory_;
  std::int64_t left_;  ///< steps of this chain, this one included
};

/// A step that leaves nothing out.
[[gnu::noinline, maybe_unused]] void take_any_step(chipstate& chip, stretch_memory& memory, std::size_t pc,
                                                   std::int64_t left, int w, int status) {
  stretch now(chip, memory, pc, left, w, status);
  now.take(memory.decoded[pc]);
  now.go_on();
}

/// The word, which is one of the variant's: the compiler is told what that rules out.
template <std::size_t index>
[[gnu::always_inline]] inline decoded_word known(decoded_word o) {
  constexpr variant v = variant::at(index);
  o.code = v.code;
  if (v.has_destination()) o.word = static_cast<std::uint16_t>((o.word & ~32) | (v.to_file ? 32 : 0));
  constexpr file_range files = files_of(v.operand);
  if (o.file < files.first || o.file > files.last) __builtin_unreachable();
  return o;
}

template <std::size_t index>
void take_step(chipstate& chip, stretch_memory& memory, std::size_t pc, std::int64_t left, int w,
               int status) {
  constexpr bool indirect = variant::at(index).operand == operand_kind::indirect;
  if (indirect && (chip.regs.cells[reg_fsr] & 31) <= reg_7)
    return take_any_step(chip, memory, pc, left, w, status);
  stretch now(chip, memory, pc, left, w, status);
  now.take(known<index>(memory.decoded[pc]));
  now.go_on();
}

template <std::size_t... indices>
constexpr std::array<step_function*, variant::count> make_step_functions(std::index_sequence<indices...>) {
  return {take_step<variant::at(indices).index()>...};
}
const std::array<step_function*, variant::count> step_functions =
    make_step_functions(std::make_index_sequence < steps_are_chained ? variant::count : 0 > ());

std::int64_t take_steps(chipstate& chip, inputs& in, trail& seen, const decoded_program& decoded,
                        std::int64_t most, bool stop_when_redirected) {
  stretch_memory memory(chip, in, decoded, stop_when_redirected);
  while (memory.planned < most && !memory.stopped) {
    const std::int64_t chain = std::min(most - memory.planned, longest_chain);
    memory.planned += chain;
    stretch first(chip, memory, memory.pc, chain, memory.w, memory.status);
    if constexpr (steps_are_chained)
      first.go_on();
    else
      first.loop();
  }
  return stretch(chip, memory, memory.pc, 0, memory.w, memory.status).finish(seen);
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
  count_cycles(chip, steps * cycles_a_step);
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
