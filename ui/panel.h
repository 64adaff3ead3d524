// What the panels of the window have in common: the parts that they share, the controls that are their own,
// and the table of their handlers.
//
//   class pins_panel final : public panel {
//     struct handlers;                                        // in the .cpp, with the table
//     group<check_box> PA = own_group<check_box>(id::PA);     // nobody else's from here on
//   };
//   static constexpr handler_row rows[] = {{id::PA, event::click, act<PA_Click>}, ...
//
// A panel acts on its own controls alone. What it needs of another panel it asks for by name, through a
// reference that its constructor takes; what it needs of the window is `panel_window`.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/chipstate.h"
#include "core/inputs.h"
#include "ui/control.h"
#include "ui/control_set.h"
#include "ui/open_documents.h"
#include "ui/run_control.h"
#include "ui/window_host.h"

namespace estructura {

/// What a panel asks of the window around it.
class panel_window {
 public:
  virtual void move_focus(control_place place) = 0;
  /// Works out everything that whoever looks would see; boxes and dialogs are such a look.
  virtual void bring_up_to_date() = 0;
  virtual answer ask(box kind, const std::string& text) = 0;
  virtual std::string choose_file(bool save, std::string_view filter, std::string_view extension,
                                  std::string_view proposed) = 0;
  /// The program ends.
  virtual void end() = 0;

 protected:
  panel_window() = default;
  ~panel_window() = default;
  panel_window(const panel_window&) = default;
  panel_window& operator=(const panel_window&) = default;
};

/// One of each for the whole window.
struct shared_parts {
  control_set& controls;
  chipstate& chip;
  inputs& in;
  run_control& runner;
  open_documents& documents;
  window_host& host;
  panel_window& window;
};

/// The members of a group of controls.
template <class Kind>
class group {
 public:
  void add(Kind& member) { members_.push_back(&member); }
  [[nodiscard]] Kind& operator[](int index) const { return *members_[static_cast<std::size_t>(index)]; }
  [[nodiscard]] int count() const { return static_cast<int>(members_.size()); }

 private:
  std::vector<Kind*> members_;
};

class panel;

/// Which handler serves which event of which control. The handler gets the member of a group that it is
/// about.
struct handler_row {
  id which;
  event what;
  void (*act)(panel&, int index);
};

class panel {
 public:
  panel(const panel&) = delete;
  panel& operator=(const panel&) = delete;
  panel(panel&&) = delete;
  panel& operator=(panel&&) = delete;

  /// Runs the handler of an event, if the panel has one.
  void raised(const control& source, event what);
  /// A property of one of the panel's controls has changed.
  virtual void touched(const control& source) { (void)source; }
  [[nodiscard]] bool answers(id which, event what) const;

 protected:
  /// Claims every control that the table speaks of.
  panel(const shared_parts& shared, std::span<const handler_row> rows);
  virtual ~panel() = default;

  /// A control, or a group of them, that is this panel's alone from now on; throws std::bad_cast where it is
  /// of another kind.
  template <class Kind>
  [[nodiscard]] Kind& own(id which, int index = 0) {
    controls_.claim(which, *this);
    return dynamic_cast<Kind&>(controls_.at(which, index));
  }
  template <class Kind>
  [[nodiscard]] group<Kind> own_group(id which) {
    group<Kind> members;
    for (int i = 0; i < declared(which).count; ++i) members.add(own<Kind>(which, i));
    return members;
  }

  /// A handler `void handler(some_panel& self, int index)` as a row takes it.
  template <auto Handler>
  static void act(panel& self, int index) {
    call(Handler, self, index);
  }

  chipstate& chip_;
  inputs& in_;
  run_control& runner_;
  open_documents& documents_;
  window_host& host_;
  panel_window& window_;

 private:
  template <class Panel>
  static void call(void (*handler)(Panel&, int), panel& self, int index) {
    handler(static_cast<Panel&>(self), index);
  }

  control_set& controls_;
  [[nodiscard]] const handler_row* row_of(id which, event what) const;

  std::span<const handler_row> rows_;
};

}  // namespace estructura
