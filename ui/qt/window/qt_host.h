// The desktop as Qt gives it: boxes, file dialogs, clipboard, beep, the turns of a continuous run, and the
// end.
//
//   qt_host host;
//   Estructura window(host);
//   window.Form_Load();
//   main_window shown(window);
//   host.set_window(&shown);
//
// Everything is virtual: the guion runner answers boxes and dialogs itself and keeps the rest.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "ui/qt/window/held_key.h"
#include "ui/window_host.h"

namespace estructura {

class main_window;

class qt_host : public window_host {
 public:
  qt_host();

  /// The window that boxes stand in front of and that a run keeps alive; none at first.
  void set_window(main_window* window) { window_ = window; }

  answer show_box(box kind, std::string_view text) override;
  std::string choose_file(bool save, std::string_view filter, std::string_view extension,
                          std::string_view proposed) override;
  std::string clipboard_text() override;
  void set_clipboard_text(std::string_view text) override;
  void beep() override;
  int yield() override;
  void rest() override;
  void end() override;
  /// How long a run rests; what a test would wait for otherwise.
  void set_rest(std::chrono::milliseconds rest) { rest_ = rest; }

 protected:
  /// The person sees what the handler sees: whatever opens a box calls this first.
  void refresh_window();

 private:
  using clock = std::chrono::steady_clock;

  main_window* window_ = nullptr;
  bool ended_ = false;
  std::chrono::milliseconds rest_;
  held_key held_;
  clock::time_point attended_;    ///< when pending events were last handled
  clock::time_point next_frame_;  ///< when the window is to be painted next
};

}  // namespace estructura
