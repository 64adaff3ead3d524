// The window without a toolkit: it owns the machine, the documents, every control and the panels that act on
// them, and takes what the person does through one door.
//
//   struct mute : window_host {} host;
//   Estructura window(host);
//   window.Form_Load();
//   window.click(id::eje1);
//   window.look(id::ciclos).text()       -> "0"
//
// Every member under "the door" is one action of a person: it is ignored while its control cannot be used,
// moves the focus as that action does (a function key does not), runs the handler that the control's panel
// has, and catches a fault. Everything under "looking" shows the views as they stand for whoever looks: texts
// are worked out then, not at each step.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/chipstate.h"
#include "ui/chip_panel.h"
#include "ui/clocks_panel.h"
#include "ui/control.h"
#include "ui/control_set.h"
#include "ui/documents.h"
#include "ui/inventory.h"
#include "ui/open_documents.h"
#include "ui/panel.h"
#include "ui/pins_panel.h"
#include "ui/program_panel.h"
#include "ui/registers_panel.h"
#include "ui/run_control.h"
#include "ui/source_panel.h"
#include "ui/window_host.h"

namespace estructura {

class Estructura final : private run_listener, private event_sink, private panel_window {
 public:
  explicit Estructura(window_host& host);
  Estructura(const Estructura&) = delete;
  Estructura& operator=(const Estructura&) = delete;
  Estructura(Estructura&&) = delete;
  Estructura& operator=(Estructura&&) = delete;
  ~Estructura() = default;

  /// The window's load event. A device change runs the same again (chip_panel::load).
  void Form_Load();

  // --- The door ---

  /// A click on a button; on a check box or option, which takes its new value first.
  void click(id which, int index = 0);
  /// A click, or a key released, in a text box that listens to it, with the caret at `caret` characters.
  void click_text(id which, int caret);
  void keyup_text(id which, int caret);
  /// A double-click on a label.
  void dblclick(id which, int index = 0);
  /// A click on a line, alone or (`extend`) added to the selection with Ctrl, as far as the list takes
  /// several lines; and the same followed by the double-click.
  void click_row(id which, int index, int row, bool extend = false);
  void dblclick_row(id which, int index, int row);
  /// The selection of a list as the person made it by any means of the toolkit: counts as a click.
  void choose_rows(id which, int index, int current, std::vector<int> selected);
  /// An entry of the combo, by its text.
  void pick(id which, std::string_view entry);
  /// The whole text of a text box, replaced in one change; the caret goes to `caret`, or to its end.
  void type(id which, std::string_view text, int caret = -1);
  void select(id which, int start, int length);
  /// A button's function key: its click, with the focus left where it is.
  void press(id which);
  /// The Enter key in a text box.
  void enter(id which);
  /// The focus moves, as by the Tab key; `blur` leaves no control with it.
  void focus(id which, int index = 0);
  void blur();
  /// Mouse-down on the map at height `y` of its scale.
  void press_map(double y);
  /// The window's own close request.
  void close_request();

  // --- Looking ---

  /// Works out everything that there is to be seen. The looks below do it themselves.
  void bring_up_to_date() override;
  [[nodiscard]] const control& look(id which, int index = 0);
  [[nodiscard]] const map_view& look_map();
  [[nodiscard]] const control_list& look_all();
  [[nodiscard]] control_place focused() const { return focus_; }
  /// Whether a person can use the control: enabled, visible, and its frames visible.
  [[nodiscard]] bool usable(id which, int index = 0) const { return controls_.usable(which, index); }
  [[nodiscard]] bool ended() const { return ended_; }
  [[nodiscard]] const document& hex() const { return documents_.hex; }
  [[nodiscard]] const document& source() const { return documents_.source; }
  [[nodiscard]] const chipstate& chip() const { return chip_; }

  // --- For tests: the machine changed from outside, with no refresh until asked for ---

  /// The machine's state, open to change, after everything put off so far has been worked out.
  [[nodiscard]] chipstate& poke();
  void refresh();

  /// The handlers of a control's events, as far as its panel has any.
  [[nodiscard]] bool answers(id which, event what) const;

 private:
  // run_listener: what running the machine asks for.
  void lock_configuration() override { chip_panel_.lock_configuration(); }
  void clear_entry() override { program_panel_.clear_entry(); }
  void show_whole_step() override { update_views(); }
  void warn_watchdog() override;
  void guard_focus() override;
  void click_ejecutar() override { chip_panel_.ejecutar(); }
  void rest() override { host_.rest(); }
  int yield() override { return host_.yield(); }

  // event_sink: what the controls report.
  void raised(control& source, event what) override;
  void touched(control& source) override;

  // panel_window: what the panels ask for.
  void move_focus(control_place place) override;
  answer ask(box kind, const std::string& text) override;
  std::string choose_file(bool save, std::string_view filter, std::string_view extension,
                          std::string_view proposed) override;
  void end() override;

  template <class Action>
  void through_the_door(Action action);
  void fault();
  void update_views();
  void leave_withdrawn_focus();
  [[nodiscard]] control_place harmless(const control& next) const;
  [[nodiscard]] std::optional<bool> open_after_refresh(control_place place) const;
  [[nodiscard]] control& at(id which, int index = 0) { return controls_.at(which, index); }
  /// The control as what it is; nullptr where it is of another kind or a person cannot use it.
  template <class Kind>
  [[nodiscard]] Kind* usable_as(id which, int index = 0) {
    return usable(which, index) ? controls_.as<Kind>(which, index) : nullptr;
  }
  void raise_at_caret(id which, int caret, event what);

  window_host& host_;
  chipstate chip_;
  inputs in_;
  run_control runner_{chip_, in_, *this};
  open_documents documents_;
  control_set controls_;
  control_place focus_;
  bool ended_ = false;

  const shared_parts shared_{controls_, chip_, in_, runner_, documents_, host_, *this};
  program_panel program_panel_{shared_};
  source_panel source_panel_{shared_, program_panel_};
  registers_panel registers_panel_{shared_};
  pins_panel pins_panel_{shared_};
  clocks_panel clocks_panel_{shared_, pins_panel_};
  chip_panel chip_panel_{shared_, {registers_panel_, clocks_panel_, pins_panel_, program_panel_}};
  documents documents_panel_{shared_, program_panel_, source_panel_, chip_panel_};
};

}  // namespace estructura
