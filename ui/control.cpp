#include "ui/control.h"

#include <algorithm>
#include <utility>

#include "common/text.h"
#include "ui/inventory.h"

namespace estructura {

// --- What every control has ---

control::control(const declaration& row, int member)
    : name_(row.name),
      index_(member),
      which_(row.which),
      kind_(row.is),
      visible_(row.visible),
      enabled_(row.enabled) {
  if (row.count > 1) name_ += "(" + std::to_string(member) + ")";
  const bool one_text_for_all = row.texts[1].empty();
  text_ = row.texts[one_text_for_all ? 0 : static_cast<std::size_t>(member)];
  if (row.tip_member == -1 || row.tip_member == member) tip_ = row.tip;
}

const std::string& control::tag() const {
  static const std::string none;
  return none;
}

const std::vector<std::string>& control::rows() const {
  static const std::vector<std::string> none;
  return none;
}

const std::vector<int>& control::selected() const {
  static const std::vector<int> none;
  return none;
}

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

bool control::replace_text(std::string_view text) {
  if (text_ == text) return false;
  text_ = text;
  return true;
}

// --- Buttons, boxes to check, labels ---

void button::set_text(std::string_view text) {
  if (replace_text(text)) touch();
}

void check_box::set_text(std::string_view text) {
  if (replace_text(text)) touch();
}

void check_box::set_value(bool value) {
  if (value_ == value) return;
  show_value(value);
  raise(event::click);
}

void check_box::show_value(bool value) {
  if (value_ == value) return;
  value_ = value;
  touch();
}

void label::set_text(std::string_view text) {
  if (!replace_text(text)) return;
  touch();
  raise(event::change);
}

// --- Text boxes ---

void text_box::set_text(std::string_view text) {
  set_typed_text(text, 0);
}

void text_box::set_typed_text(std::string_view text, int caret) {
  if (!replace_text(text)) return;
  const int size = static_cast<int>(char_count(this->text()));
  sel_start_ = caret < 0 ? size : std::min(caret, size);
  sel_length_ = 0;
  touch();
  raise(event::change);
}

void text_box::set_document(std::string_view text) {
  ++documents_;
  if (this->text() == text)
    touch();
  else
    set_text(text);
}

void text_box::set_selection(int start, int length) {
  const int size = static_cast<int>(char_count(text()));
  start = std::clamp(start, 0, size);
  length = std::clamp(length, 0, size - start);
  if (sel_start_ == start && sel_length_ == length) return;
  sel_start_ = start;
  sel_length_ = length;
  touch();
}

void text_box::select_all() {
  set_selection(0, static_cast<int>(char_count(text())));
}

void text_box::show_selection(int start, int length) {
  ++shown_selections_;
  touch();
  set_selection(start, length);
}

void text_box::set_marked_line(int line) {
  if (marked_line_ == line) return;
  marked_line_ = line;
  touch();
}

// --- Lists ---

void list_box::set_rows(std::vector<std::string> rows) {
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

void list_box::replace_row(int row, std::string_view text) {
  if (row < 0 || row >= count()) return;
  rows_[static_cast<std::size_t>(row)] = text;
  ++row_changes_;
  std::erase(selected_, row);
  if (row_ == row) row_ = -1;
  touch();
}

void list_box::choose_row(int row) {
  if (row < 0 || row >= count()) {
    set_row_selection(-1, {});
    return;
  }
  set_row_selection(row, {row});
  // Chosen anew, be it the same line.
  show_row();
  raise(event::click);
}

void list_box::show_row() {
  ++shown_rows_;
  touch();
}

void list_box::set_row_selection(int current, std::vector<int> selected) {
  if (row_ == current && selected_ == selected) return;
  row_ = current;
  selected_ = std::move(selected);
  touch();
}

void list_box::set_face_background(bool face) {
  if (face_background_ == face) return;
  face_background_ = face;
  touch();
}

void combo_box::set_text(std::string_view text) {
  if (replace_text(text)) touch();
}

void combo_box::set_rows(std::vector<std::string> rows) {
  if (rows_ == rows) return;
  rows_ = std::move(rows);
  ++row_changes_;
  touch();
}

}  // namespace estructura
