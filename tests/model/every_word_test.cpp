// Every instruction word on every device, and every other action, each from many states: the quick machine
// must end where the slow one ends.

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <iostream>
#include <memory>
#include <vector>

#include "core/devices.h"
#include "tests/model/fields.h"
#include "tests/model/how_much.h"
#include "tests/model/reduction.h"
#include "tests/model/states.h"

namespace estructura::second_model {
namespace {

constexpr std::uint64_t seed_of_words = 0x5EED0001;
constexpr std::uint64_t seed_of_actions = 0x5EED0002;

/// The 12-bit words, the unprogrammed one, and some of those in between that a HEX file can bring.
std::vector<int> words_to_try(random_source& chance) {
  std::vector<int> words;
  words.reserve(4200);
  for (int word = 0; word < 4096; ++word) words.push_back(word);
  for (const int word : {4096, 4097, 0x1002, 0x2A05, 0x7FFF, 0x8000, 0xFC05, 65534, unprogrammed_word})
    words.push_back(word);
  for (int i = 0; i < 32; ++i) words.push_back(4096 + static_cast<int>(chance.below(61438)));
  return words;
}

/// Neighbours that differ from the word under test, so that fetching another cell shows.
void fill_program(random_source& chance, machine_pair& two) {
  for (int i = 0; i < program_words; ++i) two.set_word(i, static_cast<int>(chance.below(4096)));
}

std::string difference_after(machine_pair& two, const model_state& start, const machine_action& one) {
  two.load_state(start);
  two.act(one);
  if (two.same()) return {};
  test_case found{two.slow, one};
  static_cast<model_state&>(found.before) = start;
  return explain(reduce(found));
}

/// A field that the walk forgets would never be compared.
TEST(model_fields, every_field_of_the_machine_is_walked) {
  model_machine slow;
  chipstate chip;
  minimal_window window(chip);
  std::memset(static_cast<void*>(&chip), 1, sizeof chip);
  const auto clear = [](const char*, int, const auto&, auto& quick) { quick = {}; };
  each_field(slow, chip, window, clear);
  chip.devmodel = {};
  chip.progmem.fill(0);
  chip.breakpts.fill(0);
  EXPECT_EQ(chip, chipstate{});
}

TEST(second_model, every_word_from_random_states) {
  const long states = how_much().states_per_word;
  std::cout << "seed " << std::hex << seed_of_words << std::dec << ", " << states << " states a word\n";
  random_source chance(seed_of_words);
  const auto two = std::make_unique<machine_pair>();
  const std::vector<int> words = words_to_try(chance);
  for (long device = 0; device < device_count; ++device) {
    fill_program(chance, *two);
    for (const int word : words) {
      for (long i = 0; i < states; ++i) {
        const model_state start = random_state(chance, device);
        const int pc = static_cast<int>(start.pc);
        const int replaced = two->slow.progmem[static_cast<std::size_t>(pc)];
        two->set_word(pc, word);
        const std::string shown = difference_after(*two, start, {action_kind::step});
        ASSERT_TRUE(shown.empty()) << shown;
        two->set_word(pc, replaced);
      }
    }
  }
}

machine_action random_act(random_source& chance) {
  constexpr std::array<action_kind, 9> kinds = {action_kind::run,  action_kind::refresh, action_kind::refresh,
                                                action_kind::pin,  action_kind::pin,     action_kind::por,
                                                action_kind::mclr, action_kind::wdt,     action_kind::pulse};
  machine_action one{chance.one_of(kinds)};
  one.port = static_cast<int>(chance.below(3));
  one.bit = static_cast<int>(chance.below(one.port == 0 ? 4 : 8));
  one.on = chance.one_in(2);
  return one;
}

TEST(second_model, every_action_from_random_states) {
  const long states = how_much().states_per_action;
  std::cout << "seed " << std::hex << seed_of_actions << std::dec << ", " << states << " states a device\n";
  random_source chance(seed_of_actions);
  const auto two = std::make_unique<machine_pair>();
  for (long device = 0; device < device_count; ++device) {
    fill_program(chance, *two);
    for (int i = 0; i < program_words; ++i) two->set_breakpoint(i, chance.one_in(4));
    for (long i = 0; i < states; ++i) {
      model_state start = random_state(chance, device);
      if (chance.one_in(3)) start.sleeping = 1;
      const std::string shown = difference_after(*two, start, random_act(chance));
      ASSERT_TRUE(shown.empty()) << shown;
    }
  }
}

}  // namespace
}  // namespace estructura::second_model
