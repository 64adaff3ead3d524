#include "ui/control_set.h"

#include <stdexcept>
#include <string>

namespace estructura {

namespace {

std::unique_ptr<control> made(const declaration& row, int member) {
  switch (row.is) {
    case kind::button: return std::make_unique<button>(row, member);
    case kind::check:
    case kind::option: return std::make_unique<check_box>(row, member);
    case kind::text: return std::make_unique<text_box>(row, member);
    case kind::label: return std::make_unique<label>(row, member);
    case kind::list: return std::make_unique<list_box>(row, member);
    case kind::combo: return std::make_unique<combo_box>(row, member);
    case kind::picture:
    case kind::frame: break;
  }
  return std::make_unique<control>(row, member);
}

}  // namespace

control_set::control_set() {
  for (int i = 0; i < id_count; ++i) {
    const declaration& row = declared(static_cast<id>(i));
    first_member_[static_cast<std::size_t>(i)] = controls_.size();
    for (int member = 0; member < row.count; ++member) controls_.held_.push_back(made(row, member));
  }
  as<check_box>(id::sl, 0)->set_value(true);
}

void control_set::listen(event_sink& sink) {
  for (const std::unique_ptr<control>& held : controls_.held_) held->listen(sink);
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
