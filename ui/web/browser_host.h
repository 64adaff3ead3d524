// The desktop as a browser gives it: boxes, file dialogs, clipboard, beep, the turns of a continuous run, and
// the end. What waits for the person gives the thread back to the browser meanwhile (Asyncify).
//
//   browser_host host;
//   Estructura window(host);
//   host.watch(window);
//   window.Form_Load();
//
// The page's side of each member is in library.js and, behind it, in page/host.js.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ui/window_host.h"

namespace estructura {

class Estructura;

class browser_host final : public window_host {
 public:
  /// The window whose chip may sleep; a run then waits for the person.
  void watch(const Estructura& window) { window_ = &window; }

  answer show_box(box kind, std::string_view text) override;
  std::string choose_file(bool save, std::string_view filter, std::string_view extension,
                          std::string_view proposed) override;
  bool hand_over(const std::string& path) override;
  std::string clipboard_text() override;
  void set_clipboard_text(std::string_view text) override;
  void beep() override;
  int yield() override;
  void rest() override;
  void end() override;

  /// An action of the person begins: a run that it starts yields after its first step.
  void begin_action() { granted_ = 1; }

  // --- For tests: a run that pauses after a counted yield ---

  /// The run pauses right after so many more yields; -1: never. While this is set each yield is counted.
  /// From then on the run does not rest either.
  void pause_after(std::int32_t yields) {
    pause_at_ = yields < 0 ? -1 : yields_ + yields;
    scripted_ = true;
  }
  [[nodiscard]] std::int64_t yields() const { return yields_; }

 private:
  const Estructura* window_ = nullptr;
  double attended_ms_ = 0;  ///< when the browser last had the thread
  std::int64_t yields_ = 0;
  std::int64_t pause_at_ = -1;
  bool scripted_ = false;
  int granted_ = 1;  ///< steps that the run may take before it asks again
};

}  // namespace estructura
