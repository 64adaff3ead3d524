// The desktop that a guion puts around the window: questions are answered from a queue, file dialogs give the
// paths that were queued, and whatever was shown, asked or sounded is kept for the script to look at.
//
//   scripted_desktop desk;
//   desk.answers.push_back(answer::yes);
//   scripted_host<window_host> host(desk);
//   Estructura window(host);
//
// The host is a layer over any other one, so that the window with widgets keeps what it needs of the
// toolkit's.
#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ui/window_host.h"

namespace estructura::guiones {

struct scripted_desktop {
  std::deque<answer> answers;
  std::deque<std::string> paths;
  std::vector<std::string> boxes;    ///< since the last look, as `boxes` prints them
  std::vector<std::string> dialogs;  ///< since the last look, as `dialogs` prints them
  int beeps = 0;                     ///< since the last look
  std::string clipboard;             ///< where the toolkit has none
  int granted = 1;                   ///< steps that the run may take before it yields to the host again

  /// A question, or a file dialog with its proposed name, comes up: the last moment to queue what it is
  /// given.
  std::function<void(box)> asking = [](box) {};
  std::function<void(std::string_view)> choosing = [](std::string_view) {};
  /// Something was asked that the script has no answer for.
  std::function<void(std::string)> unexpected = [](const std::string&) {};
  /// So many yields have passed; answers how many more may pass before the script has something to do.
  std::function<int(int)> yielded = [](int) { return 1; };

  /// How many yields from now on the next waiting statement is done; 0: none waits.
  std::function<std::int64_t()> yields_to_next = [] { return std::int64_t{0}; };

  answer ask(box kind, std::string_view text);
  std::string choose(bool save, std::string_view filter, std::string_view extension,
                     std::string_view proposed);
};

template <class Base>
class scripted_host : public Base {
 public:
  template <class... Arguments>
  explicit scripted_host(scripted_desktop& desk, Arguments&&... arguments)
      : Base(std::forward<Arguments>(arguments)...), desk_(desk) {}

  answer show_box(box kind, std::string_view text) override { return desk_.ask(kind, text); }
  std::string choose_file(bool save, std::string_view filter, std::string_view extension,
                          std::string_view proposed) override {
    return desk_.choose(save, filter, extension, proposed);
  }
  void beep() override { ++desk_.beeps; }
  void rest() override {}
  int yield() override {
    const int passed = desk_.granted;
    base_left_ -= passed;
    if (base_left_ <= 0) base_left_ = attend();
    // What the script does now may start a run of its own, which grants anew: so the grant is stored last.
    const int most = desk_.yielded(passed);
    return desk_.granted = std::max(1, std::min(base_left_, most));
  }

 protected:
  scripted_desktop& desk() { return desk_; }
  /// The turn of the host underneath; answers how many steps may pass before its next one.
  virtual int attend() { return Base::yield(); }

 private:
  scripted_desktop& desk_;
  int base_left_ = 0;  ///< steps before the host underneath wants to be asked
};

}  // namespace estructura::guiones
