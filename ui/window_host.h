// What the window needs from the desktop it stands on: boxes, file dialogs, the clipboard, the beep, a turn
// for pending events, and the end. The toolkit implements it for people, the guion runner with queued
// answers, and a test with as little as it needs: every member has a do-nothing default.
//
//   struct mute : window_host {};
//   mute host;
//   Estructura window(host);
//   window.Form_Load();
#pragma once

#include <string>
#include <string_view>

namespace estructura {

enum class box { ok, ok_right, yesno, yesnocancel, fault };
enum class answer { yes, no, cancel, ok };

class window_host {
 public:
  window_host() = default;
  virtual ~window_host() = default;
  window_host(const window_host&) = delete;
  window_host& operator=(const window_host&) = delete;
  window_host(window_host&&) = delete;
  window_host& operator=(window_host&&) = delete;

  /// A modal message box. Lines of `text` are divided by a carriage return. Boxes with an OK button only
  /// answer `ok`; closing one that has Cancel answers `cancel`. A question of two buttons cannot be closed
  /// without choosing: for who must not lose what is unsaved by Escape, there it does nothing. Only where
  /// nobody is left to choose (the program ends meanwhile, or there is no desktop) is it answered `no`.
  virtual answer show_box(box kind, std::string_view text) {
    (void)text;
    return kind == box::yesnocancel ? answer::cancel : kind == box::yesno ? answer::no : answer::ok;
  }

  /// The file dialog. `filter` is "description|pattern" pairs joined by "|"; `proposed` may be empty. Returns
  /// the path chosen, empty when the dialog was cancelled. It does not ask whether a file is to be replaced.
  virtual std::string choose_file(bool save, std::string_view filter, std::string_view extension,
                                  std::string_view proposed) {
    (void)save, (void)filter, (void)extension, (void)proposed;
    return {};
  }

  /// A file has been written at a path that the dialog gave. Where files are not the person's own until they
  /// are handed over (a browser), this does it; false when that failed.
  virtual bool hand_over(const std::string& path) {
    (void)path;
    return true;
  }

  virtual std::string clipboard_text() { return {}; }
  virtual void set_clipboard_text(std::string_view text) { (void)text; }
  virtual void beep() {}

  /// Lets pending events be handled between two steps of a continuous run, and answers how many steps may
  /// pass before it wants to be asked again (at least 1). The first step of a run is always followed by a
  /// call.
  virtual int yield() { return 1 << 20; }

  /// A box that comes back every few milliseconds of a run leaves the person no moment to stop it: after such
  /// a box the run stands between two steps and rests here. Whoever shows boxes to people serves the window
  /// meanwhile, for about a second, or until the run is stopped or the program ends.
  virtual void rest() {}

  /// The program ends: the window closes and nothing more is done in it.
  virtual void end() {}
};

}  // namespace estructura
