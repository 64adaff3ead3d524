// Many steps at once end as so many single steps do: for every length of a stretch, on every device, with
// programs that do anything, and with everything that may happen between two stretches.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

#include "common/fault.h"
#include "core/resets.h"
#include "core/step.h"
#include "core/timer.h"
#include "tests/model/fields.h"
#include "tests/model/how_much.h"
#include "tests/model/states.h"
#include "tests/support/differences.h"

namespace estructura::second_model {
namespace {

constexpr std::uint64_t seed_of_stretches = 0x5EED0004;

/// A machine with all that a step may change.
struct machine_in_place {
  chipstate chip;
  inputs in;
  trail seen;
  long time_outs = 0;
  bool faulted = false;
};

void load(machine_in_place& place, const model_machine& start) {
  // The walk over the fields of the slow machine fills the quick one through a window; only the machine and
  // its inputs are taken over.
  const auto two = std::make_unique<machine_pair>(start);
  place.chip = two->chip;
  place.in = two->window.in;
  place.seen = two->window.runner.seen();
  place.time_outs = 0;
  place.faulted = false;
}

bool at_breakpoint(const chipstate& chip) {
  return chip.breakpts[chip.cpu.pc] == 1 && !chip.resumebp;
}

/// Steps taken before a breakpoint, at most `most`; a fault ends them.
long take_singly(machine_in_place& place, long most) {
  long taken = 0;
  try {
    for (; taken < most && !at_breakpoint(place.chip); ++taken) {
      if (step(place.chip, place.in, place.seen) == step_end::whole) continue;
      ++place.time_outs;
      finish_time_out(place.chip, place.in, place.seen);
    }
  } catch (const machine_fault&) {
    place.faulted = true;
  }
  return taken;
}

/// `calls` counts the stretches that it took.
long take_in_stretches(machine_in_place& place, decoded_program& decoded, long most, long& calls) {
  long taken = 0;
  try {
    while (taken < most && !at_breakpoint(place.chip)) {
      const stretch_end end = run_stretch(place.chip, place.in, place.seen, decoded, most - taken);
      taken += end.steps;
      ++calls;
      if (end.last == step_end::whole) continue;
      ++place.time_outs;
      finish_time_out(place.chip, place.in, place.seen);
    }
  } catch (const machine_fault&) {
    place.faulted = true;
  }
  return taken;
}

std::string differences_of(const machine_in_place& wanted, const machine_in_place& got) {
  std::ostringstream out;
  out << support::differences(wanted.chip, got.chip);
  for (int port = 0; port < 3; ++port)
    if (wanted.in.pin_boxes[port] != got.in.pin_boxes[port])
      out << "\n  pin boxes of port " << port << ": wanted " << int{wanted.in.pin_boxes[port]} << ", got "
          << int{got.in.pin_boxes[port]};
  if (wanted.time_outs != got.time_outs)
    out << "\n  time-outs: wanted " << wanted.time_outs << ", got " << got.time_outs;
  if (wanted.faulted != got.faulted) out << "\n  fault: wanted " << wanted.faulted << ", got " << got.faulted;
  const trail& a = wanted.seen;
  const trail& b = got.seen;
  if (a == b) return out.str();
  out << "\n  seen: wanted";
  for (const trail* one : {&a, &b})
    out << (one == &b ? ", got" : "") << " refreshed " << one->refreshed << " arrived " << one->arrived
        << " inside " << one->inside << " inner " << one->inner << " moved " << one->moved << " marker "
        << one->marker << " marked " << one->marked;
  return out.str();
}

/// What the stretches were made for; a count of 0 means that the test looks away.
struct visits {
  long steps = 0;
  long calls = 0;  ///< far fewer than steps, or nothing was taken at once
  long time_outs = 0;
  long faults = 0;
  long stops = 0;
};

template <class Action>
void ending_in_a_fault(machine_in_place& place, Action action) {
  try {
    action();
  } catch (const machine_fault&) {
    place.faulted = true;
  }
}

class journey {
 public:
  journey(random_source& chance, visits& seen) : chance_(chance), seen_(seen) {}

  /// Empty, or the account of the difference.
  std::string travel(long device, long steps, long length) {
    begin(device);
    for (long done = 0; done < steps && !single_->faulted;) {
      const long most = length > 0 ? length : 1 + chance_.below(3000);
      const machine_in_place before = *single_;
      const long singly = take_singly(*single_, most);
      const long at_once = take_in_stretches(*many_, *decoded_, most, seen_.calls);
      const std::string shown = differences_of(*single_, *many_);
      if (!shown.empty() || (!single_->faulted && singly != at_once))
        return "\na stretch of " + std::to_string(most) + " from pc " + std::to_string(before.chip.cpu.pc) +
               " took " + std::to_string(singly) + " and " + std::to_string(at_once) + " steps" + shown;
      count(before, singly);
      done += singly > 0 ? singly : 1;
      between();
    }
    return {};
  }

 private:
  void begin(long device) {
    model_machine start;
    static_cast<model_state&>(start) = random_state(chance_, device);
    start.sleeping = 0;
    if (!chance_.one_in(4)) start.pins = start.boxes;
    if (chance_.one_in(2)) start.prescount = 0;
    start.tockicount = chance_.below(100);
    const long gaps = chance_.one_in(4) ? 8 : 0;
    for (int& word : start.progmem)
      word = gaps > 0 && chance_.one_in(gaps) ? unprogrammed_word : random_word(chance_);
    if (chance_.one_in(2))
      for (int& mark : start.breakpts) mark = chance_.one_in(256) ? 1 : 0;
    load(*single_, start);
    load(*many_, start);
  }

  void count(const machine_in_place& before, long steps) {
    seen_.steps += steps;
    seen_.time_outs += single_->time_outs - before.time_outs;
    seen_.faults += single_->faulted ? 1 : 0;
  }

  /// The same happens to both machines.
  template <class Happens>
  void both(Happens happens) {
    for (machine_in_place* place : {single_.get(), many_.get()}) happens(*place);
  }

  void between() {
    if (single_->faulted) return;
    if (at_breakpoint(single_->chip)) {
      ++seen_.stops;
      both([](machine_in_place& place) { place.chip.resumebp = true; });
    }
    if (chance_.one_in(3)) both([](machine_in_place& place) { place.seen = {}; });
    while (chance_.one_in(3)) an_event();
    if (single_->chip.sleeping) both([](machine_in_place& place) { mclr_reset(place.chip); });
  }

  void an_event() {
    const int which = static_cast<int>(chance_.below(9));
    const int address = static_cast<int>(chance_.below(16));
    const int cell = static_cast<int>(chance_.below(64));
    const int at = static_cast<int>(chance_.below(program_words));
    const auto value = static_cast<std::int16_t>(chance_.below(256));
    const int port = static_cast<int>(chance_.below(3));
    const int bit = static_cast<int>(chance_.below(8));
    const bool on = chance_.one_in(2);
    const int word = random_word(chance_);
    constexpr std::array<double, 5> kilohertz = {32, 33.3, 100, 4000, 20000};
    constexpr std::array<double, 6> hertz = {0, 0, 1, 25000, 333333, 1000000};
    const double frec = chance_.one_of(kilohertz);
    const double fr = chance_.one_of(hertz);
    both([&](machine_in_place& place) {
      chipstate& chip = place.chip;
      switch (which) {
        case 0:
          ending_in_a_fault(place, [&] { pin_click(chip, place.in, place.seen, port, bit, on); });
          break;
        case 1: chip.regs[address] = value; break;
        case 2: chip.bankregs[cell] = value; break;
        case 3: chip.cpu[1 + address % 5] = value; break;
        case 4: chip.progmem[at] = static_cast<std::uint16_t>(word); break;
        case 5: chip.breakpts[at] = on ? 1 : 0; break;
        case 6: place.in.watchdog_on = on; break;
        case 7:
          place.in.set_frequencies(frec, fr);
          chip.tockifreq = static_cast<std::int32_t>(fr);
          break;
        default: chip.prescount = 0; break;
      }
      // A hand edit ends with a refresh; what is stored from outside does not.
      if (on) ending_in_a_fault(place, [&] { regen(chip, place.in, place.seen); });
    });
  }

  random_source& chance_;
  visits& seen_;
  std::unique_ptr<machine_in_place> single_ = std::make_unique<machine_in_place>();
  std::unique_ptr<machine_in_place> many_ = std::make_unique<machine_in_place>();
  std::unique_ptr<decoded_program> decoded_ = std::make_unique<decoded_program>();
};

long steps_wanted() {
  const char* const asked = std::getenv("ESTRUCTURA_LONG");
  if (asked != nullptr && std::string_view(asked) == "1") return 110'000'000;
  return how_much().program_steps;
}

TEST(stretch, of_any_length_ends_as_so_many_single_steps_do) {
  const long wanted = steps_wanted();
  std::cout << "seed " << std::hex << seed_of_stretches << std::dec << ", " << wanted << " steps\n";
  random_source chance(seed_of_stretches);
  visits seen;
  journey both(chance, seen);
  constexpr long longest = 300;
  while (seen.steps < wanted)
    // Length 0 stands for lengths by chance.
    for (long length = 0; length <= longest; ++length) {
      const std::string shown = both.travel(chance.below(device_count), length == 0 ? 20000 : 2000, length);
      ASSERT_TRUE(shown.empty()) << shown;
    }
  std::cout << seen.steps << " steps in " << seen.calls << " calls, " << seen.time_outs << " time-outs, "
            << seen.faults << " faults, " << seen.stops << " breakpoints\n";
  EXPECT_LT(seen.calls, seen.steps / 4);
  EXPECT_GT(seen.time_outs, 0);
  EXPECT_GT(seen.faults, 0);
  EXPECT_GT(seen.stops, 0);
}

/// Ticks at once end as so many single ticks do, over every ratio and count that they are foreseen for.
TEST(tmrticks, end_as_so_many_calls_of_tmrtick) {
  constexpr std::array<std::int16_t, 12> counts = {-3, 0, 1, 2, 127, 255, 256, 257, 32760, 32767};
  constexpr std::array<std::int32_t, 8> periods = {-1, 0, 1, 2, 3, 100, 32767, 32768};
  for (int option = 0; option < 64; ++option)
    for (const std::int16_t prescount : counts)
      for (const std::int32_t period : periods)
        for (const std::int16_t tockicount : counts)
          for (const int freq : {0, 1}) {
            const bool pulses = (option & 0x20) != 0;
            if (!pulses && (freq == 1 || period != 1 || tockicount != 0)) continue;
            chipstate chip;
            chip.cpu.option = static_cast<std::int16_t>(option);
            chip.regs[reg_tmr0] = 0xFA;
            chip.prescount = prescount;
            chip.tockicount = tockicount;
            chip.tockiperiod = period;
            chip.tockifreq = freq;
            chipstate singly = chip;
            const long foreseen = std::min<std::int64_t>(ticks_foreseen(chip), 260);
            for (long ticks = 0; ticks <= foreseen; ++ticks) {
              if (ticks < 20 || ticks > foreseen - 3 || ticks % 97 == 0) {
                chipstate at_once = chip;
                tmrticks(at_once, ticks);
                ASSERT_EQ(support::differences(singly, at_once), "")
                    << "option " << option << ", prescount " << prescount << ", period " << period
                    << ", count " << tockicount << ", ticks " << ticks;
              }
              if (ticks < foreseen) tmrtick(singly);
            }
          }
}

}  // namespace
}  // namespace estructura::second_model
