#include "ui/control_set.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace estructura {

namespace {

control made(const declaration& row, int member) {
  const bool in_group = row.count > 1;
  control c(row.which, member, row.is,
            std::string(row.name) + (in_group ? "(" + std::to_string(member) + ")" : ""));
  const bool one_text_for_all = row.texts[1].empty();
  c.set_text(row.texts[one_text_for_all ? 0 : static_cast<std::size_t>(member)]);
  if (row.tip_member == -1 || row.tip_member == member) c.set_tip(row.tip);
  c.set_visible(row.visible);
  c.set_enabled(row.enabled);
  return c;
}

}  // namespace

control_set::control_set() {
  for (int i = 0; i < id_count; ++i) {
    const declaration& row = declared(static_cast<id>(i));
    first_member_[static_cast<std::size_t>(i)] = controls_.size();
    for (int member = 0; member < row.count; ++member) controls_.push_back(made(row, member));
  }
  at(id::sl, 0).set_value(true);
}

void control_set::listen(event_sink& sink) {
  for (control& c : controls_) c.listen(&sink);
}

std::size_t control_set::place(id which, int index) const {
  return first_member_[static_cast<std::size_t>(which)] + static_cast<std::size_t>(index);
}

control& control_set::at(id which, int index) {
  return controls_[place(which, index)];
}

const control& control_set::at(id which, int index) const {
  return controls_[place(which, index)];
}

bool control_set::usable(id which, int index) const {
  const control& c = at(which, index);
  if (!c.enabled() || !c.visible()) return false;
  const id frame = declared(which).frame;
  return frame == id::none || usable(frame);
}

void control_set::claim(id which, panel& owner) {
  panel*& held = owners_[static_cast<std::size_t>(which)];
  if (held != nullptr && held != &owner)
    throw std::logic_error("two panels claim the control " + std::string(declared(which).name));
  held = &owner;
}

}  // namespace estructura
