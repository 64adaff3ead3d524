// Who acts in the window and looks at it on behalf of a guion. There are three: one works on the toolkit-free
// window, one on the real widgets, one on the page in a browser.
//
//   script_place place = ...;                        // the control "PB(3)"
//   if (driver.usable(place)) driver.click(place);
//   driver.look(place).value
//
// Acting is asked for only while the control can be used, with lines and entries that exist. Looking always
// shows the window as it stands now.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/estructura.h"

namespace estructura::guiones {

/// A control of the window as a script names it.
struct script_place {
  id which = id::none;
  int index = 0;
  kind is = kind::frame;
  std::string name;
};

/// What a control shows; what its kind does not have stays empty.
struct appearance {
  std::string text;  ///< caption, or the text of a text box or combo with line ends CR LF
  std::string tip;
  std::string tag;
  bool enabled = true;  ///< its own flag, whatever its frame's
  bool visible = true;
  bool value = false;
  std::vector<std::string> rows;  ///< lines of a list, entries of a combo
  int row = -1;
  std::vector<int> selected;
  bool face_background = false;
  int sel_start = 0;  ///< in characters, a line end counting two
  int sel_length = 0;
};

class window_driver {
 public:
  window_driver() = default;
  virtual ~window_driver() = default;
  window_driver(const window_driver&) = delete;
  window_driver& operator=(const window_driver&) = delete;
  window_driver(window_driver&&) = delete;
  window_driver& operator=(window_driver&&) = delete;

  // The machine and what else is seen nowhere.
  virtual const chipstate& chip() = 0;
  virtual void change_machine(const std::function<void(chipstate&)>& change) = 0;
  virtual void refresh() = 0;
  virtual document hex() = 0;
  virtual document source() = 0;
  virtual bool ended() = 0;

  virtual void click(const script_place& place) = 0;
  virtual void click_text(const script_place& place, int caret) = 0;
  virtual void keyup_text(const script_place& place, int caret) = 0;
  virtual void dblclick(const script_place& place) = 0;
  virtual void click_row(const script_place& place, int row, bool control_held) = 0;
  virtual void dblclick_row(const script_place& place, int row) = 0;
  virtual void pick(const script_place& place, int entry) = 0;
  virtual void type(const script_place& place, std::string_view text) = 0;
  virtual void select(const script_place& place, int start, int length) = 0;
  virtual void enter(const script_place& place) = 0;
  virtual void focus(const script_place& place) = 0;
  virtual void press_map(double y) = 0;
  virtual void close() = 0;
  virtual void set_clipboard(std::string_view text) = 0;

  virtual bool usable(const script_place& place) = 0;
  virtual appearance look(const script_place& place) = 0;
  virtual map_view look_map() = 0;
  /// Name of the control with the focus, empty for none.
  virtual std::string focused() = 0;
  virtual std::string clipboard() = 0;
};

/// A driver of a window of this process.
class in_process_driver : public window_driver {
 public:
  virtual Estructura& window() = 0;

  const chipstate& chip() override { return window().chip(); }
  void change_machine(const std::function<void(chipstate&)>& change) override { change(window().poke()); }
  void refresh() override { window().refresh(); }
  document hex() override { return window().hex(); }
  document source() override { return window().source(); }
  bool ended() override { return window().ended(); }
};

/// The control that a script means by "eje1" or "PB(3)"; throws when there is none.
script_place place_of(std::string_view written);

}  // namespace estructura::guiones
