// Long random programs, with everything a person may do between their steps: after every step both machines
// are in the same state, whether the step button drives them or the continuous run.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

#include "tests/model/events.h"
#include "tests/model/how_much.h"
#include "tests/model/reduction.h"
#include "tests/model/states.h"

namespace estructura::second_model {
namespace {

constexpr std::uint64_t seed_of_programs = 0x5EED0003;

/// How often what the programs are run for has happened; a count of 0 means that the test looks away.
struct visits {
  long steps = 0;
  long faults = 0;
  long time_outs = 0;
  long stops = 0;
  long sleeps = 0;
  long wake_ups = 0;  ///< by a pin
  long by_cycles = 0;
  long by_pulses = 0;
  long by_hand = 0;
  long devices = 0;    ///< chosen after a power-on
  long watchdogs = 0;  ///< its box clicked
};

/// One program on one device, until its steps are spent, a fault ends it or the machines part.
class journey {
 public:
  journey(random_source& chance, visits& seen, machine_pair& two) : chance_(chance), seen_(seen), two_(two) {}

  /// Empty, or the account of the difference.
  std::string travel(long steps) {
    begin();
    given_ = left_ = steps;
    while (left_ > 0 && shown_.empty() && !two_.faulted()) {
      if (chance_.one_in(2))
        step_by_hand(1 + chance_.below(100));
      else
        run(1 + chance_.below(400));
    }
    seen_.faults += two_.slow_fault ? 1 : 0;
    return shown_;
  }

 private:
  void begin() {
    model_machine start;
    static_cast<model_state&>(start) = random_state(chance_, chance_.below(device_count));
    start.config_open = 1;
    start.sleeping = 0;
    start.wdtcount = std::min(start.wdtcount, start.wdtlimit);
    const bool gaps = chance_.one_in(4);
    for (int& word : start.progmem)
      word = gaps && chance_.one_in(8) ? unprogrammed_word : random_word(chance_);
    if (chance_.one_in(2))
      for (int& mark : start.breakpts) mark = chance_.one_in(64) ? 1 : 0;
    two_.load(start);
  }

  void step_by_hand(long steps) {
    for (; steps > 0 && shown_.empty() && !two_.faulted(); --steps) {
      before_ = two_.slow;
      two_.act({action_kind::step});
      look(1, action_kind::step);
      maybe_some_events();
    }
  }

  /// The continuous run asks back after every `stride` steps; only then the slow machine catches up.
  void run(long steps) {
    steps_behind_ = 1;
    asked_to_run_ = steps;
    before_ = two_.slow;
    two_.slow.running = 1;
    two_.chip.running = true;
    two_.window.running_chip = &two_.chip;
    two_.window.on_yield = [this] { return between_steps(); };
    two_.window.on_stop = [this] { catch_up(); };
    two_.quickly([this] { two_.window.runner.run(); });
    if (two_.quick_fault && !two_.slow_fault && shown_.empty()) catch_up();
    look(0, action_kind::run);
    // A fault ends the run as the window ends it.
    two_.slow.running = 0;
    two_.chip.running = false;
  }

  int between_steps() {
    const long done = steps_behind_;
    catch_up();
    look(done, action_kind::run);
    if (shown_.empty() && !two_.faulted()) maybe_some_events();
    asked_to_run_ -= done;
    if (asked_to_run_ <= 0 || !shown_.empty() || two_.faulted()) {
      two_.slow.running = 0;
      two_.chip.running = false;
    }
    steps_behind_ = chance_.one_in(16) ? 1 + chance_.below(20) : 1;
    before_ = two_.slow;
    return static_cast<int>(steps_behind_);
  }

  void catch_up() {
    two_.slowly([this] {
      for (; steps_behind_ > 0; --steps_behind_)
        if (!turn(two_.slow)) return;
    });
  }

  void look(long steps, action_kind how) {
    left_ -= steps;
    seen_.steps += steps;
    count_visits();
    if (two_.same() || !shown_.empty()) return;
    shown_ = account(how);
  }

  /// The single step that shows the difference, or what differs now when no step alone shows it.
  std::string account(action_kind how) {
    const std::string now = two_.differences();
    test_case one{as_it_was(before_, two_.slow), {how}};
    for (int i = 0; i < 32; ++i) {
      one.before.running = 0;
      if (differs(one)) return explain(reduce(one));
      machine_pair alone(one.before);
      alone.act({action_kind::step});
      if (!alone.same()) return explain(reduce({one.before, {action_kind::step}}));
      one.before = alone.slow;
    }
    return "\nno step alone shows it, up to step " + std::to_string(given_ - left_) + ", on " +
           describe(as_it_was(before_, two_.slow)) + "\nafterwards" + now;
  }

  /// The state of an earlier moment, with the program as it is.
  static model_machine as_it_was(const model_state& then, const model_machine& now) {
    model_machine whole = now;
    static_cast<model_state&>(whole) = then;
    return whole;
  }

  /// Some come together: what a power-on opens, such as the choice of a device, the next step closes again.
  void maybe_some_events() {
    bool another = chance_.one_in(two_.slow.sleeping != 0 ? 4 : 24);
    for (; another && shown_.empty() && !two_.faulted(); another = chance_.one_in(2)) an_event();
  }

  void an_event() {
    const model_state start = two_.slow;
    const long gpwuf = two_.slow.gpwuflatch;
    const std::string_view event = random_event(
        chance_, two_, start.sleeping != 0 && chance_.one_in(2) ? event_kind::pin : event_kind::any);
    if (start.sleeping != 0 && two_.slow.sleeping == 0 && gpwuf == 0 && two_.slow.gpwuflatch == 1)
      ++seen_.wake_ups;
    if (two_.slow.regs[1] == start.regs[1] + 1 && two_.slow.prescount == 0 && start.prescount != 0)
      ++seen_.by_hand;
    if (two_.slow.device != start.device) ++seen_.devices;
    if (two_.slow.watchdog != start.watchdog) ++seen_.watchdogs;
    if (two_.same()) return;
    shown_ = "\n" + std::string(event) + " after step " + std::to_string(given_ - left_) + ", on " +
             describe(as_it_was(start, two_.slow)) + "\nafterwards" + two_.differences();
  }

  void count_visits() {
    const model_state& m = two_.slow;
    seen_.time_outs += m.warnings - before_.warnings;
    seen_.stops += m.stops - before_.stops;
    seen_.sleeps += m.sleeping != 0 && before_.sleeping == 0 ? 1 : 0;
    const bool counted = m.regs[1] == before_.regs[1] + 1;
    const bool external = (m.option >> 5) % 2 == 1;
    seen_.by_cycles += counted && !external ? 1 : 0;
    seen_.by_pulses += counted && external ? 1 : 0;
  }

  random_source& chance_;
  visits& seen_;
  machine_pair& two_;
  model_state before_;
  long given_ = 0;
  long left_ = 0;
  long steps_behind_ = 0;
  long asked_to_run_ = 0;
  std::string shown_;
};

TEST(second_model, random_programs) {
  const long wanted = how_much().program_steps;
  std::cout << "seed " << std::hex << seed_of_programs << std::dec << ", " << wanted << " steps\n";
  random_source chance(seed_of_programs);
  visits seen;
  const auto two = std::make_unique<machine_pair>();
  while (seen.steps < wanted) {
    const std::string shown = journey(chance, seen, *two).travel(3000);
    ASSERT_TRUE(shown.empty()) << shown;
  }
  std::cout << seen.time_outs << " time-outs, " << seen.faults << " faults, " << seen.stops
            << " breakpoints, " << seen.sleeps << " sleeps, " << seen.wake_ups << " wake-ups, TMR0 advanced "
            << seen.by_cycles << " times by cycles, " << seen.by_pulses << " by pulses, " << seen.by_hand
            << " by hand, " << seen.devices << " devices, " << seen.watchdogs << " watchdogs\n";
  EXPECT_GT(seen.time_outs, 0);
  EXPECT_GT(seen.faults, 0);
  EXPECT_GT(seen.stops, 0);
  EXPECT_GT(seen.sleeps, 0);
  EXPECT_GT(seen.wake_ups, 0);
  EXPECT_GT(seen.by_cycles, 0);
  EXPECT_GT(seen.by_pulses, 0);
  EXPECT_GT(seen.by_hand, 0);
  EXPECT_GT(seen.devices, 0);
  EXPECT_GT(seen.watchdogs, 0);
}

}  // namespace
}  // namespace estructura::second_model
