#include "tests/random/snapshot.h"

#include "guion/words.h"
#include "tests/support/differences.h"

namespace estructura::random_events {

namespace {

using guiones::appearance;
using guiones::script_place;

/// Every control, in the order of the inventory.
const std::vector<script_place>& places() {
  static const std::vector<script_place> all = [] {
    std::vector<script_place> places;
    for (int i = 0; i < id_count; ++i) {
      const declaration& row = declared(static_cast<id>(i));
      for (int member = 0; member < row.count; ++member) {
        std::string name(row.name);
        if (row.count > 1) name += '(' + std::to_string(member) + ')';
        places.push_back(guiones::place_of(name));
      }
    }
    return places;
  }();
  return all;
}

/// Compares properties one by one and keeps the first that differs.
class comparison {
 public:
  std::optional<difference> found;

  void sample_texts(const std::string& name, const std::string& wanted, const std::string& got) {
    if (!found && wanted != got) keep(name, guiones::text_value(wanted), guiones::text_value(got));
  }
  void numbers(const std::string& name, int wanted, int got) {
    if (!found && wanted != got) keep(name, guiones::number_value(wanted), guiones::number_value(got));
  }
  void truths(const std::string& name, bool wanted, bool got) {
    if (!found && wanted != got) keep(name, guiones::truth_value(wanted), guiones::truth_value(got));
  }
  template <class Member>
  void lists(const std::string& name, const std::vector<Member>& wanted, const std::vector<Member>& got) {
    if (!found && wanted != got) keep(name, guiones::sequence_value(wanted), guiones::sequence_value(got));
  }

 private:
  void keep(const std::string& name, const guiones::script_value& wanted, const guiones::script_value& got) {
    found = difference{name, guiones::printed(wanted), guiones::printed(got)};
  }
};

void compare_lines(comparison& c, const std::string& name, const appearance& wanted, const appearance& got) {
  c.numbers(name + ".count", static_cast<int>(wanted.rows.size()), static_cast<int>(got.rows.size()));
  if (c.found || wanted.rows == got.rows) return;
  for (std::size_t row = 0; row < wanted.rows.size(); ++row)
    c.sample_texts(name + ".row(" + std::to_string(row) + ")", wanted.rows[row], got.rows[row]);
}

void compare_control(comparison& c, const script_place& place, const appearance& wanted,
                     const appearance& got) {
  const std::string& name = place.name;
  c.sample_texts(name + ".tip", wanted.tip, got.tip);
  c.truths(name + ".enabled", wanted.enabled, got.enabled);
  c.truths(name + ".visible", wanted.visible, got.visible);
  switch (place.is) {
    case kind::check:
    case kind::option: c.numbers(name + ".value", wanted.value ? 1 : 0, got.value ? 1 : 0); [[fallthrough]];
    case kind::button:
    case kind::frame: c.sample_texts(name + ".caption", wanted.text, got.text); break;
    case kind::label:
      c.sample_texts(name + ".caption", wanted.text, got.text);
      c.sample_texts(name + ".tag", wanted.tag, got.tag);
      break;
    case kind::text:
      c.sample_texts(name + ".text", wanted.text, got.text);
      c.numbers(name + ".selstart", wanted.sel_start, got.sel_start);
      c.numbers(name + ".sellength", wanted.sel_length, got.sel_length);
      break;
    case kind::combo:
      c.sample_texts(name + ".text", wanted.text, got.text);
      if (!c.found && wanted.rows != got.rows)
        c.found = difference{"", printed(guiones::sequence_value(wanted.rows)),
                             name + printed(guiones::sequence_value(got.rows))};
      break;
    case kind::list:
      compare_lines(c, name, wanted, got);
      c.numbers(name + ".index", wanted.row, got.row);
      c.lists(name + ".selected", wanted.selected, got.selected);
      c.sample_texts(name + ".background", wanted.face_background ? "face" : "window",
                     got.face_background ? "face" : "window");
      break;
    case kind::picture: break;
  }
}

std::string colour_name(map_colour colour) {
  switch (colour) {
    case map_colour::yellow: return "yellow";
    case map_colour::blue: return "blue";
    case map_colour::none: break;
  }
  return "none";
}

void compare_map(comparison& c, const map_view& wanted, const map_view& got) {
  c.numbers("mapa.scale", wanted.scale, got.scale);
  c.numbers("mapa.marker", wanted.marker, got.marker);
  for (int a = 0; !c.found && a < program_words; ++a)
    if (wanted.rows[a] != got.rows[a])
      c.sample_texts("mapa.row(" + std::to_string(a) + ")", colour_name(wanted.rows[a]),
                     colour_name(got.rows[a]));
}

}  // namespace

snapshot take_snapshot(guiones::in_process_driver& driver, const guiones::scripted_desktop& desk) {
  snapshot shown;
  Estructura& window = driver.window();
  shown.ended = window.ended();
  if (!shown.ended) {
    for (const script_place& place : places()) shown.controls.push_back(driver.look(place));
    shown.map = driver.look_map();
    shown.focus = driver.focused();
  }
  shown.clipboard = driver.clipboard();
  shown.chip = window.chip();
  shown.hex = window.hex();
  shown.source = window.source();
  shown.boxes = desk.boxes;
  shown.dialogs = desk.dialogs;
  shown.beeps = desk.beeps;
  return shown;
}

std::optional<difference> difference_between(const snapshot& wanted, const snapshot& got) {
  comparison c;
  c.lists("boxes", wanted.boxes, got.boxes);
  c.lists("dialogs", wanted.dialogs, got.dialogs);
  c.numbers("beeps", wanted.beeps, got.beeps);
  c.truths("ended", wanted.ended, got.ended);
  c.sample_texts("hexname", wanted.hex.name, got.hex.name);
  c.truths("hexmod", wanted.hex.modified, got.hex.modified);
  c.sample_texts("asmname", wanted.source.name, got.source.name);
  c.truths("asmmod", wanted.source.modified, got.source.modified);
  c.sample_texts("clipboard", wanted.clipboard, got.clipboard);
  c.sample_texts("focus", wanted.focus, got.focus);
  for (std::size_t i = 0; !c.found && i < wanted.controls.size() && i < got.controls.size(); ++i)
    compare_control(c, places()[i], wanted.controls[i], got.controls[i]);
  if (!wanted.ended && !got.ended) compare_map(c, wanted.map, got.map);
  if (!c.found && wanted.chip != got.chip)
    c.found = difference{"", "one machine", "another:" + support::differences(wanted.chip, got.chip)};
  return c.found;
}

}  // namespace estructura::random_events
