#include "ui/web/browser_host.h"

#include <cstdlib>
#include <emscripten.h>

#include "common/file.h"
#include "ui/estructura.h"
#include "ui/web/page_imports.h"

namespace estructura {

namespace {

/// How long the run keeps the thread: a click waits for at most this and the frame being painted.
constexpr double turn_ms = 5;
/// Steps between two looks at the clock: some 80 microseconds.
constexpr int steps_between_looks = 32768;

/// How long a run stands still behind a box of the watchdog, for the person to stop it.
constexpr double rest_ms = 1000;

enum turn_reason { turn_for_events = 0, turn_of_a_sleeping_chip = 1, turn_paused = 2 };

std::string taken(char* text) {
  std::string copy = text != nullptr ? text : "";
  std::free(text);
  return copy;
}

}  // namespace

answer browser_host::show_box(box kind, std::string_view text) {
  switch (page_box(static_cast<int>(kind), text.data(), text.size())) {
    case static_cast<int>(answer::yes): return answer::yes;
    case static_cast<int>(answer::no): return answer::no;
    case static_cast<int>(answer::ok): return answer::ok;
    default: return window_host::show_box(kind, text);
  }
}

std::string browser_host::choose_file(bool save, std::string_view filter, std::string_view extension,
                                      std::string_view proposed) {
  return taken(page_choose_file(save ? 1 : 0, filter.data(), filter.size(), extension.data(),
                                extension.size(), proposed.data(), proposed.size()));
}

bool browser_host::hand_over(const std::string& path) {
  // What the file was written as: a name of its own, or that of the file it replaced.
  const std::string written = find_file(path);
  return page_hand_over(path.data(), path.size(), written.data(), written.size()) != 0;
}

std::string browser_host::clipboard_text() {
  return taken(page_read_clipboard());
}

void browser_host::set_clipboard_text(std::string_view text) {
  page_write_clipboard(text.data(), text.size());
}

void browser_host::beep() {
  page_beep();
}

int browser_host::yield() {
  yields_ += granted_;
  const bool paused = pause_at_ >= 0 && yields_ >= pause_at_;
  if (paused) {
    pause_at_ = -1;
    page_turn(turn_paused);
    attended_ms_ = emscripten_get_now();
  } else if (emscripten_get_now() - attended_ms_ >= turn_ms) {
    page_turn(window_->chip().sleeping && pause_at_ < 0 ? turn_of_a_sleeping_chip : turn_for_events);
    attended_ms_ = emscripten_get_now();
  }
  // What was done meanwhile may have set another pause, or started a run that counts for itself.
  return granted_ = pause_at_ >= 0 ? 1 : steps_between_looks;
}

void browser_host::rest() {
  if (scripted_) return;
  const double end = emscripten_get_now() + rest_ms;
  while (emscripten_get_now() < end && window_->chip().running && !window_->ended())
    page_turn(turn_of_a_sleeping_chip);
  attended_ms_ = emscripten_get_now();
}

void browser_host::end() {
  page_end();
}

}  // namespace estructura
