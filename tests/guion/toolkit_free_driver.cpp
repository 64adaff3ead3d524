#include "guion/toolkit_free_driver.h"

namespace estructura::guiones {

toolkit_free_driver::toolkit_free_driver(scripted_desktop& desk) : desk_(desk), host_(desk), window_(host_) {
  window_.Form_Load();
}

void toolkit_free_driver::click(const script_place& place) {
  window_.click(place.which, place.index);
}
void toolkit_free_driver::click_text(const script_place& place, int caret) {
  window_.click_text(place.which, caret);
}
void toolkit_free_driver::keyup_text(const script_place& place, int caret) {
  window_.keyup_text(place.which, caret);
}
void toolkit_free_driver::dblclick(const script_place& place) {
  window_.dblclick(place.which, place.index);
}
void toolkit_free_driver::click_row(const script_place& place, int row, bool control_held) {
  window_.click_row(place.which, place.index, row, control_held);
}
void toolkit_free_driver::dblclick_row(const script_place& place, int row) {
  window_.dblclick_row(place.which, place.index, row);
}
void toolkit_free_driver::pick(const script_place& place, int entry) {
  const std::string text = window_.look(place.which).rows().at(static_cast<std::size_t>(entry));
  window_.pick(place.which, text);
}
void toolkit_free_driver::type(const script_place& place, std::string_view text) {
  window_.type(place.which, text);
}
void toolkit_free_driver::select(const script_place& place, int start, int length) {
  window_.select(place.which, start, length);
}
void toolkit_free_driver::enter(const script_place& place) {
  window_.enter(place.which);
}
void toolkit_free_driver::focus(const script_place& place) {
  window_.focus(place.which, place.index);
}
void toolkit_free_driver::press_map(double y) {
  window_.press_map(y);
}
void toolkit_free_driver::close() {
  window_.close_request();
}
void toolkit_free_driver::set_clipboard(std::string_view text) {
  desk_.clipboard = text;
}

bool toolkit_free_driver::usable(const script_place& place) {
  // During a run what the last step chose may be put off still, and decide what can be used.
  window_.bring_up_to_date();
  return window_.usable(place.which, place.index);
}

appearance toolkit_free_driver::look(const script_place& place) {
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

map_view toolkit_free_driver::look_map() {
  return window_.look_map();
}

std::string toolkit_free_driver::focused() {
  const estructura::control_place place = window_.focused();
  return place.which == id::none ? std::string{} : window_.look(place.which, place.index).name();
}

std::string toolkit_free_driver::clipboard() {
  return desk_.clipboard;
}

}  // namespace estructura::guiones
