#include "ui/estructura.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "common/fault.h"
#include "files/source_file.h"

namespace estructura {

Estructura::Estructura(window_host& host) : host_(host) {
  controls_.listen(*this);
}

// --- Events ---

void Estructura::raised(control& source, event what) {
  if (panel* const owner = controls_.owner(source.which())) owner->raised(source, what);
}

bool Estructura::answers(id which, event what) const {
  const panel* const owner = controls_.owner(which);
  return owner != nullptr && owner->answers(which, what);
}

void Estructura::touched(control& source) {
  if (panel* const owner = controls_.owner(source.which())) owner->touched(source);
  if (focus_.which != id::none && !usable(focus_.which, focus_.index)) leave_withdrawn_focus();
}

// --- Focus ---

namespace {

bool takes_focus(kind k) {
  return k != kind::label && k != kind::frame && k != kind::picture;
}

}  // namespace

void Estructura::move_focus(control_place place) {
  if (place == focus_) return;
  const control_place left = std::exchange(focus_, place);
  runner_.requests().focus_at_stake = open_after_refresh(place).has_value();
  if (left.which != id::none) raised(at(left.which, left.index), event::lostfocus);
  if (place.which != id::none && place == focus_) raised(at(place.which, place.index), event::gotfocus);
}

// A control that can no longer be used hands the focus to the next one that can, in the order of the Tab key.
void Estructura::leave_withdrawn_focus() {
  const std::size_t from = controls_.place(focus_.which, focus_.index);
  const std::size_t size = controls_.all().size();
  for (std::size_t step = 1; step < size; ++step) {
    const control& next = controls_.all()[(from + step) % size];
    if (takes_focus(next.is()) && !skipped_by_tab(next.which()) && usable(next.which(), next.index()))
      return move_focus(harmless(next));
  }
  move_focus({});
}

// Nobody has gone to where a withdrawn focus goes: a key meant for the control before must not end the
// program there, nor erase a word.
control_place Estructura::harmless(const control& next) const {
  const auto first_usable = [&](std::initializer_list<id> instead) {
    for (const id which : instead)
      if (usable(which)) return control_place{which, 0};
    return control_place{next.which(), next.index()};
  };
  switch (next.which()) {
    case id::fin: return first_usable({id::eje1, id::ejecutar});
    case id::borrarins: return first_usable({id::INS});
    default: return first_usable({});
  }
}

std::optional<bool> Estructura::open_after_refresh(control_place place) const {
  const std::optional<bool> pin = pins_panel_.open_after_refresh(place);
  return pin ? pin : clocks_panel_.open_after_refresh(place);
}

// During a run the views are worked out for a look now and then. Where the focus is must not depend on that.
void Estructura::guard_focus() {
  if (!open_after_refresh(focus_).value_or(true)) update_views();
}

// --- The door ---

template <class Action>
void Estructura::through_the_door(Action action) {
  if (ended_) return;
  try {
    update_views();
    action();
  } catch (const machine_fault&) {
    // The views show the state as the fault left it.
    runner_.seen().refreshed = true;
    fault();
  }
  bring_up_to_date();
}

void Estructura::fault() {
  chip_panel_.stop_run();
  host_.show_box(box::fault, "Se ha producido un error durante la ejecución.");
}

answer Estructura::ask(box kind, const std::string& text) {
  // Whoever reads the question sees the window as it stands.
  bring_up_to_date();
  return host_.show_box(kind, text);
}

std::string Estructura::choose_file(bool save, std::string_view filter, std::string_view extension,
                                    std::string_view proposed) {
  // Whoever chooses a file sees the window as it stands.
  bring_up_to_date();
  return host_.choose_file(save, filter, extension, proposed);
}

void Estructura::warn_watchdog() {
  ask(box::ok_right, "Se ha desbordado el Watchdog.\rSe producirá un Reset.");
}

void Estructura::end() {
  ended_ = true;
  host_.end();
}

void Estructura::Form_Load() {
  through_the_door([this] { chip_panel_.load(); });
}

void Estructura::click(id which, int index) {
  through_the_door([&] {
    if (!usable(which, index)) return;
    control& c = at(which, index);
    if (takes_focus(c.is())) move_focus({which, index});
    // Losing the focus may have changed what can be used.
    if (!usable(which, index)) return;
    // This box only shows a state of the chip.
    const bool only_shows = which == id::estsleep;
    switch (c.is()) {
      case kind::check:
        if (!only_shows) controls_.as<check_box>(which, index)->set_value(!c.value());
        break;
      case kind::option:
        for (int member = 0; member < declared(which).count; ++member)
          controls_.as<check_box>(which, member)->show_value(member == index);
        raised(c, event::click);
        break;
      case kind::button: raised(c, event::click); break;
      default: break;
    }
  });
}

void Estructura::click_text(id which, int caret) {
  raise_at_caret(which, caret, event::click);
}

void Estructura::keyup_text(id which, int caret) {
  raise_at_caret(which, caret, event::keyup);
}

void Estructura::raise_at_caret(id which, int caret, event what) {
  through_the_door([&] {
    text_box* const box = usable_as<text_box>(which);
    if (box == nullptr) return;
    move_focus({which, 0});
    box->set_selection(caret, 0);
    raised(*box, what);
  });
}

void Estructura::dblclick(id which, int index) {
  through_the_door([&] {
    if (usable(which, index)) raised(at(which, index), event::dblclick);
  });
}

void Estructura::choose_rows(id which, int index, int current, std::vector<int> selected) {
  through_the_door([&] {
    list_box* const list = usable_as<list_box>(which, index);
    if (list == nullptr || current < 0 || current >= list->count()) return;
    move_focus({which, index});
    std::sort(selected.begin(), selected.end());
    list->set_row_selection(current, std::move(selected));
    raised(*list, event::click);
  });
}

void Estructura::click_row(id which, int index, int row, bool extend) {
  std::vector<int> selected = {row};
  const bool several_lines = which == id::MP;
  if (extend && several_lines) {
    // Ctrl and a click turn the line over and leave the others as they are.
    bring_up_to_date();
    selected = at(which, index).selected();
    if (std::erase(selected, row) == 0) selected.push_back(row);
  }
  choose_rows(which, index, row, std::move(selected));
}

void Estructura::dblclick_row(id which, int index, int row) {
  click_row(which, index, row);
  through_the_door([&] {
    const bool there = usable(which, index) && row >= 0 && row < at(which, index).count();
    if (there) raised(at(which, index), event::dblclick);
  });
}

void Estructura::pick(id which, std::string_view entry) {
  through_the_door([&] {
    combo_box* const combo = usable_as<combo_box>(which);
    if (combo == nullptr) return;
    if (std::find(combo->rows().begin(), combo->rows().end(), entry) == combo->rows().end()) return;
    move_focus({which, 0});
    combo->set_text(entry);
    raised(*combo, event::click);
  });
}

void Estructura::type(id which, std::string_view text, int caret) {
  through_the_door([&] {
    text_box* const box = usable_as<text_box>(which);
    if (box == nullptr) return;
    move_focus({which, 0});
    const bool read_only = which == id::lst;
    if (read_only) return;
    // The source keeps CR LF between its lines, whatever was typed or pasted.
    if (which == id::source)
      box->set_typed_text(with_crlf(text), caret);
    else
      box->set_typed_text(text, caret);
  });
}

void Estructura::select(id which, int start, int length) {
  through_the_door([&] {
    text_box* const box = usable_as<text_box>(which);
    if (box == nullptr) return;
    move_focus({which, 0});
    box->set_selection(start, length);
  });
}

void Estructura::press(id which) {
  through_the_door([&] {
    if (button* const pressed = usable_as<button>(which)) raised(*pressed, event::click);
  });
}

void Estructura::enter(id which) {
  through_the_door([&] {
    text_box* const box = usable_as<text_box>(which);
    if (box == nullptr) return;
    move_focus({which, 0});
    // In the one box of several lines the key breaks the line at the caret.
    if (which == id::source)
      source_panel_.replace_selection("\r\n");
    else
      raised(*box, which == id::lst ? event::keyup : event::enter);
  });
}

void Estructura::focus(id which, int index) {
  through_the_door([&] {
    if (usable(which, index) && takes_focus(at(which, index).is())) move_focus({which, index});
  });
}

void Estructura::blur() {
  through_the_door([&] { move_focus({}); });
}

void Estructura::press_map(double y) {
  through_the_door([&] {
    if (usable(id::mapa)) program_panel_.press_map(y);
  });
}

void Estructura::close_request() {
  through_the_door([this] { documents_panel_.Form_Unload(); });
}

// --- Looking ---

void Estructura::update_views() {
  program_panel_.show_step();
  if (!std::exchange(runner_.seen().refreshed, false)) return;
  registers_panel_.show();
  chip_panel_.show();
  clocks_panel_.show();
  pins_panel_.show();
}

void Estructura::bring_up_to_date() {
  try {
    update_views();
  } catch (const machine_fault&) {
    fault();
  }
}

const control& Estructura::look(id which, int index) {
  bring_up_to_date();
  return at(which, index);
}

const map_view& Estructura::look_map() {
  bring_up_to_date();
  return program_panel_.map();
}

const control_list& Estructura::look_all() {
  bring_up_to_date();
  return controls_.all();
}

chipstate& Estructura::poke() {
  bring_up_to_date();
  return chip_;
}

void Estructura::refresh() {
  through_the_door([&] { runner_.regen(); });
}

}  // namespace estructura
