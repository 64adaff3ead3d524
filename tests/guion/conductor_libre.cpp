#include "guion/conductor_libre.h"

namespace estructura::guiones {

conductor_libre::conductor_libre(escritorio& desk) : desk_(desk), host_(desk), window_(host_) {
  window_.Form_Load();
}

void conductor_libre::click(const lugar& place) {
  window_.click(place.which, place.index);
}
void conductor_libre::click_text(const lugar& place, int caret) {
  window_.click_text(place.which, caret);
}
void conductor_libre::keyup_text(const lugar& place, int caret) {
  window_.keyup_text(place.which, caret);
}
void conductor_libre::dblclick(const lugar& place) {
  window_.dblclick(place.which, place.index);
}
void conductor_libre::click_row(const lugar& place, int row, bool control_held) {
  window_.click_row(place.which, place.index, row, control_held);
}
void conductor_libre::dblclick_row(const lugar& place, int row) {
  window_.dblclick_row(place.which, place.index, row);
}
void conductor_libre::pick(const lugar& place, int entry) {
  const std::string text = window_.look(place.which).rows().at(static_cast<std::size_t>(entry));
  window_.pick(place.which, text);
}
void conductor_libre::type(const lugar& place, std::string_view text) {
  window_.type(place.which, text);
}
void conductor_libre::select(const lugar& place, int start, int length) {
  window_.select(place.which, start, length);
}
void conductor_libre::enter(const lugar& place) {
  window_.enter(place.which);
}
void conductor_libre::focus(const lugar& place) {
  window_.focus(place.which, place.index);
}
void conductor_libre::press_map(double y) {
  window_.press_map(y);
}
void conductor_libre::close() {
  window_.close_request();
}
void conductor_libre::set_clipboard(std::string_view text) {
  desk_.clipboard = text;
}

bool conductor_libre::usable(const lugar& place) {
  // During a run what the last step chose may be owed still, and decide what can be used.
  window_.bring_up_to_date();
  return window_.usable(place.which, place.index);
}

aspecto conductor_libre::look(const lugar& place) {
  const control& shown = window_.look(place.which, place.index);
  return {.text = shown.text(),
          .tip = shown.tip(),
          .tag = shown.tag(),
          .enabled = shown.enabled(),
          .visible = shown.visible(),
          .value = shown.value(),
          .rows = shown.rows(),
          .row = shown.row(),
          .selected = shown.selected(),
          .face_background = shown.face_background(),
          .sel_start = shown.sel_start(),
          .sel_length = shown.sel_length()};
}

map_view conductor_libre::look_map() {
  return window_.look_map();
}

std::string conductor_libre::focused() {
  const focus_place place = window_.focused();
  return place.which == id::none ? std::string{} : window_.look(place.which, place.index).name();
}

std::string conductor_libre::clipboard() {
  return desk_.clipboard;
}

}  // namespace estructura::guiones
