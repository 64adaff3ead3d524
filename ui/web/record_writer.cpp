#include "ui/web/record_writer.h"

#include <algorithm>
#include <array>
#include <utility>

#include "ui/accessible_names.h"
#include "ui/highlight.h"
#include "ui/reading_tips.h"

namespace estructura {

namespace {

void write_text(std::string& out, std::string_view text) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  out += '"';
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (byte < 0x20) {
      out += "\\u00";
      out += digits[byte >> 4U];
      out += digits[byte & 15U];
    } else {
      out += c;
    }
  }
  out += '"';
}

void write_key(std::string& out, std::string_view key) {
  out += ",\"";
  out += key;
  out += "\":";
}

void write(std::string& out, std::string_view key, std::string_view text) {
  write_key(out, key);
  write_text(out, text);
}

void write(std::string& out, std::string_view key, int number) {
  write_key(out, key);
  out += std::to_string(number);
}

void write_flag(std::string& out, std::string_view key, bool value) {
  write_key(out, key);
  out += value ? "true" : "false";
}

template <class Items, class Write>
void write_list(std::string& out, const Items& items, const Write& one) {
  out += '[';
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (i > 0) out += ',';
    one(items[i]);
  }
  out += ']';
}

std::string_view kind_name(kind is) {
  constexpr std::array<std::string_view, 9> names = {"button", "check", "option",  "text", "label",
                                                     "list",   "combo", "picture", "frame"};
  return names[static_cast<std::size_t>(is)];
}

/// How many UTF-16 units a text takes: one for each character, two beyond the first 65,536.
int units_of(std::string_view utf8) {
  int units = 0;
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0U) != 0x80U) units += byte >= 0xF0 ? 2 : 1;
  }
  return units;
}

}  // namespace

record_writer::record_writer(Estructura& window) : window_(window), first_(id_count) {
  const control_list& controls = window.look_all();
  seen_.resize(controls.size());
  for (std::size_t place = controls.size(); place-- > 0;)
    first_[static_cast<std::size_t>(controls[place].which())] = place;
}

std::size_t record_writer::place_of(id which, int index) const {
  return first_[static_cast<std::size_t>(which)] + static_cast<std::size_t>(index);
}

std::string record_writer::inventory() {
  std::string out;
  write_list(out, window_.look_all(), [&](const control& record) {
    const id frame = declared(record.which()).frame;
    out += "{\"which\":" + std::to_string(static_cast<int>(record.which()));
    write(out, "index", record.index());
    write(out, "name", record.name());
    write(out, "kind", kind_name(record.is()));
    write(out, "frame", frame == id::none ? -1 : static_cast<int>(place_of(frame, 0)));
    write_flag(out, "skipped", skipped_by_tab(record.which()));
    out += '}';
  });
  return out;
}

void record_writer::write_control(std::string& out, const control& record, copy& before, std::size_t place) {
  const bool all = !before.fresh;
  before.fresh = true;
  before.changes = record.changes();
  out += "{\"at\":" + std::to_string(place);
  if (all || before.text != record.text()) {
    before.text = record.text();
    write(out, "text", record.text());
  }
  write(out, "tip", record.tip());
  write_flag(out, "visible", record.visible());
  write_flag(out, "enabled", record.enabled());
  switch (record.is()) {
    case kind::check:
    case kind::option: write_flag(out, "value", record.value()); break;
    case kind::text:
      write(out, "start", record.sel_start());
      write(out, "length", record.sel_length());
      write(out, "line", record.marked_line());
      write(out, "documents", static_cast<int>(record.documents()));
      write(out, "shown", static_cast<int>(record.shown_selections()));
      break;
    case kind::list:
    case kind::combo:
      write(out, "row", record.row());
      write_flag(out, "face", record.face_background());
      write_key(out, "selected");
      write_list(out, record.selected(), [&](int row) { out += std::to_string(row); });
      if (!all && before.row_changes == record.row_changes()) break;
      before.row_changes = record.row_changes();
      write_key(out, "rows");
      write_list(out, record.rows(), [&](const std::string& row) { write_text(out, row); });
      if (record.is() == kind::list) write_spoken_rows(out, record);
      break;
    default: break;
  }
  write_spoken(out, record, all);
  out += '}';
}

void record_writer::write_spoken(std::string& out, const control& record, bool all) {
  if (!all && !accessible_texts_vary(record.which())) return;
  const family& of = window_.chip().devmodel;
  write(out, "name", accessible_name(record, of));
  std::string description = accessible_description(record, of);
  if (record.which() == id::mapa) description = accessible_map(window_.look_map()) + ' ' + description;
  write(out, "description", description);
}

void record_writer::write_spoken_rows(std::string& out, const control& record) {
  write_key(out, "spoken");
  out += '[';
  for (int row = 0; row < record.count(); ++row) {
    if (row > 0) out += ',';
    write_text(out, accessible_row(window_, record.which(), record.index(), row));
  }
  out += ']';
}

void record_writer::write_map(std::string& out) {
  const map_view& map = window_.look_map();
  write(out, "marker", map.marker);
  std::string rows(static_cast<std::size_t>(program_words), '0');
  for (int address = 0; address < program_words; ++address)
    rows[static_cast<std::size_t>(address)] = static_cast<char>('0' + static_cast<int>(map.rows[address]));
  if (rows == map_rows_ && map.scale == map_scale_) return;
  map_rows_ = rows;
  map_scale_ = map.scale;
  write(out, "scale", map.scale);
  write(out, "words", rows);
}

std::string record_writer::changes() {
  const control_list& controls = window_.look_all();
  // The names say which ports there are.
  const family_id now = window_.chip().devmodel.which;
  if (std::exchange(family_, now) != now)
    for (copy& before : seen_) before.fresh = false;
  std::string out = "{\"controls\":[";
  bool first = true;
  for (std::size_t place = 0; place < controls.size(); ++place) {
    copy& before = seen_[place];
    if (before.fresh && before.changes == controls[place].changes()) continue;
    if (!first) out += ',';
    first = false;
    write_control(out, controls[place], before, place);
  }
  out += ']';
  const control_place focus = window_.focused();
  write(out, "focus", focus.which == id::none ? -1 : static_cast<int>(place_of(focus.which, focus.index)));
  write(out, "pc", window_.chip().cpu.pc);
  write_flag(out, "running", window_.chip().running);
  write_flag(out, "unsaved", window_.hex().modified || window_.source().modified);
  write_flag(out, "ended", window_.ended());
  write_map(out);
  write(out, "said", ear_.news(window_));
  out += '}';
  return out;
}

void record_writer::learn_names() {
  const control& source = window_.look(id::source);
  if (names_changes_ == source.changes()) return;
  names_changes_ = source.changes();
  names_ = {};
  std::string_view rest = source.text();
  while (!rest.empty()) {
    const std::string_view line = rest.substr(0, rest.find("\r\n"));
    if (const auto made = definition_in(line)) names_.add(*made);
    rest.remove_prefix(std::min(rest.size(), line.size() + 2));
  }
}

std::string record_writer::highlighted(std::string_view line) {
  learn_names();
  const auto place = [&](std::size_t from, std::size_t to) {
    const int start = units_of(line.substr(0, from));
    return '[' + std::to_string(start) + ',' + std::to_string(units_of(line.substr(0, to)) - start) + ',';
  };
  std::string out = "{\"parts\":";
  write_list(out, highlight(line), [&](const source_piece& piece) {
    out += place(piece.start, piece.start + piece.length) + std::to_string(static_cast<int>(piece.is)) + ']';
  });
  write_key(out, "odd");
  write_list(out, odd_readings(line, names_), [&](const odd_reading& reading) {
    out += place(reading.where.from, reading.where.to);
    write_text(out, tip_of(reading));
    out += ']';
  });
  return out + '}';
}

}  // namespace estructura
