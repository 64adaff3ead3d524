#include "ui/control.h"

#include <algorithm>
#include <utility>

#include "common/text.h"

namespace estructura {

control::control(id which, int index, kind is_a, std::string name)
    : name_(std::move(name)), index_(index), which_(which), kind_(is_a) {}

void control::touch() {
  ++changes_;
  if (sink_ != nullptr) sink_->touched(*this);
}

void control::raise(event what) {
  if (sink_ != nullptr) sink_->raised(*this, what);
}

void control::set_tip(std::string_view tip) {
  if (tip_ == tip) return;
  tip_ = tip;
  touch();
}

void control::set_visible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  touch();
}

void control::set_enabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  touch();
}

void control::set_text(std::string_view text) {
  set_typed_text(text, 0);
}

void control::set_typed_text(std::string_view text, int caret) {
  if (text_ == text) return;
  text_ = text;
  const int size = static_cast<int>(char_count(text_));
  sel_start_ = caret < 0 ? size : std::min(caret, size);
  sel_length_ = 0;
  touch();
  const bool listens = kind_ == kind::text || kind_ == kind::label;
  if (listens) raise(event::change);
}

void control::set_document(std::string_view text) {
  ++documents_;
  if (text_ == text)
    touch();
  else
    set_text(text);
}

void control::set_value(bool value) {
  if (value_ == value) return;
  value_ = value;
  touch();
  raise(event::click);
}

void control::show_value(bool value) {
  if (value_ == value) return;
  value_ = value;
  touch();
}

void control::set_selection(int start, int length) {
  const int size = static_cast<int>(char_count(text_));
  start = std::clamp(start, 0, size);
  length = std::clamp(length, 0, size - start);
  if (sel_start_ == start && sel_length_ == length) return;
  sel_start_ = start;
  sel_length_ = length;
  touch();
}

void control::select_all() {
  set_selection(0, static_cast<int>(char_count(text_)));
}

void control::show_selection(int start, int length) {
  ++shown_selections_;
  touch();
  set_selection(start, length);
}

void control::set_marked_line(int line) {
  if (marked_line_ == line) return;
  marked_line_ = line;
  touch();
}

void control::set_rows(std::vector<std::string> rows) {
  const bool same_rows = rows_ == rows;
  if (same_rows && row_ == -1 && selected_.empty()) return;
  if (!same_rows) {
    rows_ = std::move(rows);
    ++row_changes_;
  }
  row_ = -1;
  selected_.clear();
  touch();
}

void control::replace_row(int row, std::string_view text) {
  if (row < 0 || row >= count()) return;
  rows_[static_cast<std::size_t>(row)] = text;
  ++row_changes_;
  std::erase(selected_, row);
  if (row_ == row) row_ = -1;
  touch();
}

void control::choose_row(int row) {
  if (row < 0 || row >= count()) {
    set_row_selection(-1, {});
    return;
  }
  set_row_selection(row, {row});
  // Chosen anew, be it the same line.
  show_row();
  raise(event::click);
}

void control::show_row() {
  ++shown_rows_;
  touch();
}

void control::set_row_selection(int current, std::vector<int> selected) {
  if (row_ == current && selected_ == selected) return;
  row_ = current;
  selected_ = std::move(selected);
  touch();
}

void control::set_face_background(bool face) {
  if (face_background_ == face) return;
  face_background_ = face;
  touch();
}

}  // namespace estructura
