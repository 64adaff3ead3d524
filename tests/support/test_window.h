// A window and its desktop for the tests of this room.
//
//   test_window w;                               // loaded, 16C57
//   w.store(0, {0xC05, 0x028});              // MOVLW 05, MOVWF 08
//   w.desktop.at_turn(3, [&] { w.view.click(id::ejecutar); });
//   w.view.click(id::ejecutar);              // a run of three steps
//   w.text("ciclos")                         // "4"
//
// The desktop answers questions from a queue, keeps what it was asked, and does at a turn of a run what the
// test prepared. A run that nobody stops is stopped after 100,000 turns, with a failure.
#pragma once

#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/chipstate.h"
#include "ui/estructura.h"
#include "ui/window_host.h"

namespace estructura::support {

class fake_desktop final : public window_host {
 public:
  answer show_box(box kind, std::string_view text) override {
    boxes.emplace_back(kind, text);
    if (at_box) at_box();
    if (answers.empty()) return window_host::show_box(kind, text);
    const answer first = answers.front();
    answers.pop_front();
    return first;
  }
  std::string choose_file(bool, std::string_view, std::string_view, std::string_view) override {
    ++dialogs;
    return chosen;
  }
  void beep() override { ++beeps; }
  int yield() override {
    ++turns;
    if (const auto found = prepared_.find(turns); found != prepared_.end()) found->second();
    if (turns >= 100'000) {
      ADD_FAILURE() << "the run was not stopped";
      if (give_up) give_up();
    }
    return steps_between_turns;
  }
  void rest() override {
    ++rests;
    if (at_rest) at_rest();
  }
  void end() override { ++ends; }

  /// What happens at a turn, counted from 1 over all runs.
  void at_turn(int turn, std::function<void()> action) { prepared_[turn] = std::move(action); }

  struct shown_box {
    shown_box(box a_kind, std::string_view a_text) : kind(a_kind), text(a_text) {}
    box kind;
    std::string text;
  };
  std::vector<shown_box> boxes;
  std::deque<answer> answers;
  std::string chosen;  ///< what every file dialog gives
  std::function<void()> at_box;
  std::function<void()> at_rest;
  std::function<void()> give_up;
  int dialogs = 0;
  int beeps = 0;
  int turns = 0;
  int ends = 0;
  int rests = 0;
  int steps_between_turns = 1;

 private:
  std::map<int, std::function<void()>> prepared_;
};

struct test_window {
  fake_desktop desktop;
  Estructura view{desktop};

  explicit test_window(std::string_view device = "16C57") {
    view.Form_Load();
    if (device != "16C57") view.pick(id::PIC, device);
    desktop.give_up = [this] { view.poke().running = false; };
  }

  const control& at(std::string_view name) {
    const auto found = find_control(name);
    EXPECT_TRUE(found) << "no control " << name;
    return found ? view.look(found->which, found->index) : view.look(id::Label1);
  }
  const std::string& text(std::string_view name) { return at(name).text(); }
  bool enabled(std::string_view name) { return at(name).enabled(); }
  bool visible(std::string_view name) { return at(name).visible(); }
  bool value(std::string_view name) { return at(name).value(); }

  std::string focused() {
    const control_place place = view.focused();
    return place.which == id::none ? std::string() : view.look(place.which, place.index).name();
  }

  const chipstate& chip() const { return view.chip(); }

  /// Program words from an address on, unseen by list and map.
  void store(int address, std::initializer_list<int> words) {
    chipstate& chip = view.poke();
    for (const int word : words) chip.progmem[address++] = static_cast<std::uint16_t>(word);
  }
  /// The machine stands before an address, past the first step of its reset.
  void stand_at(int address) {
    chipstate& chip = view.poke();
    chip.cpu.pc = static_cast<std::int16_t>(address);
    chip.firststep = false;
  }
};

/// What a control of a device shows once its machine has been changed.
struct shown_text {
  const char* device;
  std::function<void(chipstate&)> change;
  const char* control;
  const char* text;
};

inline void expect_texts(const std::vector<shown_text>& rows) {
  for (const shown_text& row : rows) {
    test_window w(row.device);
    row.change(w.view.poke());
    w.view.refresh();
    EXPECT_EQ(w.text(row.control), row.text) << row.control << " on a " << row.device;
  }
}

}  // namespace estructura::support
