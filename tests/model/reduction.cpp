#include "tests/model/reduction.h"

#include <cstddef>
#include <sstream>
#include <vector>

#include "files/disassembler.h"
#include "tests/model/fields.h"

namespace estructura::second_model {

namespace {

/// What a person need not be told of.
const model_machine& neutral() {
  static const model_machine plain = [] {
    model_machine m;
    m.progmem.fill(unprogrammed_word);
    return m;
  }();
  return plain;
}

struct named_number {
  std::string name;
  long* value;
};

std::vector<named_number> numbers_of(model_machine& m) {
  std::vector<named_number> all;
  chipstate chip;
  minimal_window window(chip);
  each_field(m, chip, window, [&all](const char* name, int index, long& value, auto&) {
    all.push_back({index < 0 ? name : std::string(name) + "[" + std::to_string(index) + "]", &value});
  });
  return all;
}

/// Keeps a change only while the case still differs.
template <class Change>
bool try_change(test_case& one, Change&& change) {
  test_case smaller = one;
  change(smaller);
  if (!differs(smaller)) return false;
  one = smaller;
  return true;
}

int& word_at_pc(model_machine& m) {
  return m.progmem[static_cast<std::size_t>(m.pc)];
}

void move_to_start(test_case& one) {
  const int word = word_at_pc(one.before);
  one.before.progmem.fill(unprogrammed_word);
  one.before.pc = 0;
  word_at_pc(one.before) = word;
}

bool reduce_numbers(test_case& one) {
  model_machine plain = neutral();
  const std::vector<named_number> wanted = numbers_of(plain);
  bool smaller = false;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const long value = *wanted[i].value;
    if (*numbers_of(one.before)[i].value == value || wanted[i].name == "cpu.pc") continue;
    smaller |= try_change(one, [&](test_case& c) { *numbers_of(c.before)[i].value = value; });
  }
  return smaller;
}

}  // namespace

bool differs(const test_case& one) {
  machine_pair two(one.before);
  two.act(one.action);
  return !two.same();
}

test_case reduce(test_case one) {
  try_change(one, [](test_case& c) { c.before.breakpts.fill(0); });
  try_change(one, [](test_case& c) {
    const int word = word_at_pc(c.before);
    c.before.progmem.fill(unprogrammed_word);
    word_at_pc(c.before) = word;
  });
  while (reduce_numbers(one)) {
  }
  if (one.before.device != default_device)
    try_change(one, [](test_case& c) { c.before.device = default_device; });
  if (one.before.pc != 0) try_change(one, move_to_start);
  if (one.before.frec != 4000) try_change(one, [](test_case& c) { c.before.frec = 4000; });
  if (one.before.fr != 0) try_change(one, [](test_case& c) { c.before.fr = 0; });
  while (reduce_numbers(one)) {
  }
  return one;
}

std::string describe(const model_machine& one) {
  model_machine shown = one;
  std::ostringstream out;
  const int word = word_at_pc(shown);
  out << "a " << catalogue[static_cast<std::size_t>(one.device)].name;
  out << ", at pc the word " << std::hex << word << std::dec << "  "
      << (word == unprogrammed_word ? "unprogrammed" : deshex(word)) << "\nfrom";
  model_machine plain = neutral();
  const std::vector<named_number> usual = numbers_of(plain);
  const std::vector<named_number> found = numbers_of(shown);
  for (std::size_t i = 0; i < found.size(); ++i)
    if (*found[i].value != *usual[i].value) out << "\n  " << found[i].name << " = " << *found[i].value;
  if (one.frec != plain.frec) out << "\n  FREC = " << one.frec;
  if (one.fr != plain.fr) out << "\n  FR = " << one.fr;
  return out.str();
}

std::string explain(const test_case& one) {
  machine_pair two(one.before);
  two.act(one.action);
  return "\n" + name_of(one.action) + " on " + describe(one.before) + "\nafterwards" + two.differences();
}

}  // namespace estructura::second_model
