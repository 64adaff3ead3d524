// The panel that edits one register: every target of every device with every value of 16 bits, typed; and
// every value that it takes, stored.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "common/text.h"
#include "core/devices.h"
#include "tests/exhaustive/how_much.h"
#include "tests/support/differences.h"
#include "tests/support/test_window.h"

namespace estructura {
namespace {

using support::differences;
using support::test_window;

struct target {
  int code;
  id list;
  int index;  ///< of the list
  int row;
};

std::vector<target> targets_of(const device& model) {
  std::vector<target> all;
  for (int k = 0; k < 16; ++k) all.push_back({k, id::MDP, 0, k});
  // The banks that a device lacks are hidden, and nobody can click them.
  for (int bank = 0; bank <= model.datamask / 32; ++bank)
    for (int k = 0; k < 16; ++k) all.push_back({bank * 32 + 16 + k, id::MD, bank, k});
  std::vector<int> core = {128, 129, 130};
  if (model.is16c5x) core.push_back(131);
  core.push_back(132);
  if (model.hasportc) core.push_back(133);
  for (int row = 0; row < static_cast<int>(core.size()); ++row)
    all.push_back({core[static_cast<std::size_t>(row)], id::RE, 0, row});
  return all;
}

bool takes(const device& model, int code, int value) {
  switch (code) {
    case 4: return value <= model.datamask;
    // The low two bits of OSCCAL are not there.
    case 5: return value <= model.mask5 && (model.is16c5x || value % 4 == 0);
    case 128: return value <= model.progmask;
    case 130: return value <= model.optmask;
    case 131: return value <= model.mask5;
    case 132: return value <= model.mask6;
    default: return value <= 255;
  }
}

TEST(dat_space, every_target_of_every_device_takes_exactly_the_values_within_its_limit) {
  for (const catalogue_row& row : catalogue) {
    const device& model = row.model;
    test_window w(row.name);
    for (const target& t : targets_of(model)) {
      w.view.click_row(t.list, t.index, t.row);
      ASSERT_EQ(w.at("dirdat").tag(), std::to_string(t.code)) << row.name;
      const control& button = w.at("entrardat");
      for (int value = 0; value <= 0xFFFF; value += value < support::dense ? 1 : support::stride) {
        w.view.type(id::dat, hexstr(value, 4));
        ASSERT_EQ(button.enabled(), takes(model, t.code, value))
            << row.name << ", target " << t.code << ", value " << hexstr(value, 4);
      }
    }
  }
}

// The register of a code, in the machine that is wanted, and what the refresh leaves of it.
void store(chipstate& chip, const device& model, int code, int value) {
  const auto word = static_cast<std::int16_t>(value);
  switch (code) {
    case 128: chip.cpu.pc = word; return;
    case 129: chip.cpu.w = word; return;
    case 130: chip.cpu.option = word; return;
    case 131: chip.cpu.trisa = word; return;
    case 132: chip.cpu.trisb = word; return;
    case 133: chip.cpu.trisc = word; return;
    // After power-on /TO and /PD are 1 and nothing but a reset changes them; PA1 of the 12C50x is not there.
    case 3: chip.regs[3] = static_cast<std::int16_t>((value | 0x18) & (model.is16c5x ? 0xFF : 0xBF)); return;
    case 6: chip.regs[6] = static_cast<std::int16_t>(value & model.mask6); return;
    default:
      if (code < 16)
        chip.regs[code] = word;
      else
        chip.bankregs[(code / 32) * 16 + code % 16] = word;
  }
}

TEST(dat_space, every_value_taken_is_stored_in_its_register_and_nowhere_else) {
  for (const catalogue_row& row : catalogue) {
    const device& model = row.model;
    test_window w(row.name);
    // Every pin an input, so that no pin follows what is stored, and a pattern in every other register.
    chipstate before = w.chip();
    for (int k = 8; k < 16; ++k) before.regs[k] = static_cast<std::int16_t>(0xA0 + k);
    for (int k = 0; k < 64; ++k) before.bankregs[k] = static_cast<std::int16_t>(0x40 + k);
    for (const target& t : targets_of(model)) {
      for (int value = 0; value <= 0x7FF; value += support::whole_space ? 1 : 31) {
        if (!takes(model, t.code, value)) continue;
        w.view.poke() = before;
        w.view.click_row(t.list, t.index, t.row);
        w.view.type(id::dat, hexstr(value, 3));
        w.view.click(id::entrardat);
        chipstate wanted = before;
        store(wanted, model, t.code, value);
        ASSERT_EQ(differences(wanted, w.chip()), "")
            << row.name << ", target " << t.code << ", value " << hexstr(value, 3);
        ASSERT_FALSE(w.enabled("entrardat"));
        ASSERT_FALSE(w.enabled("dat"));
      }
    }
  }
}

}  // namespace
}  // namespace estructura
