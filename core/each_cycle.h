// The pace of a single step: every cycle and every tick of the timer is counted as it passes, so that a value
// that leaves its width is noticed at the very cycle, with the machine as it stood.
//
//   each_cycle(chip, in).execinst(0x1E8);     // ADDWF 08, fetched before
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

#include "common/checked.h"
#include "core/inputs.h"
#include "core/processor.h"
#include "core/timer.h"

namespace estructura {

class each_cycle final : public processor<each_cycle> {
 public:
  each_cycle(chipstate& chip, const inputs& in) : processor(chip), watchdog_on_(in.watchdog_on) {}
  // After a fault too.
  ~each_cycle() { store(); }
  each_cycle(const each_cycle&) = delete;
  each_cycle& operator=(const each_cycle&) = delete;
  each_cycle(each_cycle&&) = delete;
  each_cycle& operator=(each_cycle&&) = delete;

  void execinst(int word) {
    constexpr std::int32_t cycles_modulus = 1'000'000'000;
    count_cycle();
    perform(decoded(word));
    if (chip_.cycles >= cycles_modulus) chip_.cycles -= cycles_modulus;
  }

  /// While the watchdog is off its count stands still at the greatest value, so that a program may run for
  /// ever.
  void count_cycle() {
    add32(chip_.cycles, 1);
    if (watchdog_on_ || chip_.wdtcount < std::numeric_limits<std::int32_t>::max()) add32(chip_.wdtcount, 1);
  }

 private:
  friend class processor<each_cycle>;

  void second_cycle() {
    count_cycle();
    tmrtick(chip_);
  }
  void untimed_cycle() { count_cycle(); }
  [[nodiscard]] std::size_t bank() const { return static_cast<std::size_t>(fsrbank(chip_)); }
  [[nodiscard]] int page_mask() const { return estructura::page_mask(chip_.devmodel); }
  [[nodiscard]] int pcl() const { return chip_.regs[reg_pcl]; }
  void pcl_from_pc() { chip_.regs[reg_pcl] = static_cast<std::int16_t>(pc_ & 255); }
  void keep_pcl() { pcl_from_pc(); }

  void option() { chip_.cpu.option = static_cast<std::int16_t>(w_); }
  void sleep() {
    chip_.pdlatch = 0;
    chip_.tolatch = 1;
    status_ = setbit(setbit(status_, status_pd, 0), status_to, 1);
    chip_.sleeping = true;
    chip_.wdtcount = 0;
  }
  void clrwdt() {
    chip_.tolatch = 1;
    chip_.wdtcount = 0;
  }

  void blank() {}
  void stop() {}

  // Nothing is put off at this pace, and the refresh at the end of the step sees to the rest.
  void at_timer() {}
  void pins_latched(std::size_t) {}
  void latched(std::size_t) {}
  void directed(std::size_t) {}
  void fsr_written() {}
  void status_written() {}
  void pcl_written() {}
  void pc_may_be_outside(std::size_t) {}

  const bool watchdog_on_;
};

}  // namespace estructura
