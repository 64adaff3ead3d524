// The controls of the window, made as the inventory declares them.
//
//   control_set controls;
//   controls.at(id::PB, 3).name()        -> "PB(3)"
//   controls.usable(id::tab)             -> false while its frame is hidden
//   controls.claim(id::PB, pins);        // they are that panel's from now on, and no other's
//
// Which panel acts on which control is kept here, so that it can be asked; what acting means is the panel's.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "ui/control.h"
#include "ui/inventory.h"

namespace estructura {

class panel;

/// One control by its name and its place within its group.
struct focus_place {
  id which = id::none;
  int index = 0;
  bool operator==(const focus_place&) const = default;
};

/// The members of a group.
class control_group {
 public:
  control_group(control& first, int count) : first_(first), count_(count) {}
  [[nodiscard]] control& operator[](int index) const { return (&first_)[index]; }
  [[nodiscard]] int count() const { return count_; }

 private:
  control& first_;
  int count_;
};

class control_set {
 public:
  control_set();

  /// From now on every change is told to `sink`; making the controls was none.
  void listen(event_sink& sink);

  [[nodiscard]] control& at(id which, int index = 0);
  [[nodiscard]] const control& at(id which, int index = 0) const;
  /// In the order of the inventory, which is that of the Tab key.
  [[nodiscard]] const std::vector<control>& all() const { return controls_; }
  /// Where a control stands among all of them.
  [[nodiscard]] std::size_t place(id which, int index = 0) const;

  /// Whether a person can use the control: enabled, visible, and its frames visible.
  [[nodiscard]] bool usable(id which, int index = 0) const;

  /// Gives a control with all of its group to a panel; throws std::logic_error where another one has it.
  void claim(id which, panel& owner);
  /// nullptr for what only stands there, as titles and frames do.
  [[nodiscard]] panel* owner(id which) const { return owners_[static_cast<std::size_t>(which)]; }

 private:
  std::vector<control> controls_;
  std::array<std::size_t, id_count> first_member_{};
  std::array<panel*, id_count> owners_{};
};

}  // namespace estructura
