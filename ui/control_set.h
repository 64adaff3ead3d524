// The controls of the window, made as the inventory declares them.
//
//   control_set controls;
//   controls.at(id::PB, 3).name()              -> "PB(3)"
//   controls.as<list_box>(id::MP)              // nullptr where it is no list
//   controls.usable(id::tab)                   -> false while its frame is hidden
//   controls.claim(id::PB, pins);              // they are that panel's from now on, and no other's
//
// Which panel acts on which control is kept here, so that it can be asked; what acting means is the panel's.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include "ui/control.h"
#include "ui/inventory.h"

namespace estructura {

class panel;

/// All controls, to be looked at, in the order of the inventory, which is that of the Tab key.
class control_list {
 public:
  class iterator {
   public:
    explicit iterator(const std::unique_ptr<control>* at) : at_(at) {}
    const control& operator*() const { return **at_; }
    iterator& operator++() {
      ++at_;
      return *this;
    }
    bool operator==(const iterator&) const = default;

   private:
    const std::unique_ptr<control>* at_;
  };

  [[nodiscard]] std::size_t size() const { return held_.size(); }
  [[nodiscard]] const control& operator[](std::size_t place) const { return *held_[place]; }
  [[nodiscard]] iterator begin() const { return iterator(held_.data()); }
  [[nodiscard]] iterator end() const { return iterator(held_.data() + held_.size()); }

 private:
  friend class control_set;
  std::vector<std::unique_ptr<control>> held_;
};

class control_set {
 public:
  control_set();

  /// From now on every change is told to `sink`; making the controls was none.
  void listen(event_sink& sink);

  [[nodiscard]] control& at(id which, int index = 0) { return *controls_.held_[place(which, index)]; }
  [[nodiscard]] const control& at(id which, int index = 0) const { return controls_[place(which, index)]; }
  /// The control as what it is; nullptr where it is of another kind.
  template <class Kind>
  [[nodiscard]] Kind* as(id which, int index = 0) {
    return dynamic_cast<Kind*>(&at(which, index));
  }
  [[nodiscard]] const control_list& all() const { return controls_; }
  /// Where a control stands among all of them.
  [[nodiscard]] std::size_t place(id which, int index = 0) const {
    return first_member_[static_cast<std::size_t>(which)] + static_cast<std::size_t>(index);
  }

  /// Whether a person can use the control: enabled, visible, and its frames visible.
  [[nodiscard]] bool usable(id which, int index = 0) const;

  /// Gives a control with all of its group to a panel; throws std::logic_error where another one has it.
  void claim(id which, panel& owner);
  /// nullptr for what only stands there, as titles and frames do.
  [[nodiscard]] panel* owner(id which) const { return owners_[static_cast<std::size_t>(which)]; }

 private:
  control_list controls_;
  std::array<std::size_t, id_count> first_member_{};
  std::array<panel*, id_count> owners_{};
};

}  // namespace estructura
