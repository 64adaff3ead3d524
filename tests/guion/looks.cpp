#include "guion/looks.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <utility>

#include "guion/machine_fields.h"

namespace estructura::guiones {

namespace {

[[noreturn]] void nothing_of(std::string_view what) {
  throw script_error("nothing of this name to look at: " + std::string(what));
}

/// The name in file("name") when `what` is `function` of a quoted name.
std::optional<std::string> quoted_argument(std::string_view what, std::string_view function) {
  if (!what.starts_with(function) || !what.substr(function.size()).starts_with("(\"")) return std::nullopt;
  if (!what.ends_with("\")")) nothing_of(what);
  const script_value argument =
      read_value(what.substr(function.size() + 1, what.size() - function.size() - 2));
  return std::get<std::string>(argument.content);
}

std::string content_of(const std::string& name) {
  std::error_code error;
  std::ifstream file(name, std::ios::binary);
  if (!file || std::filesystem::is_directory(name, error)) throw script_error("no such file: " + name);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

script_value map_value(window_driver& driver, std::string_view what, std::string_view name,
                       std::int64_t index) {
  const map_view map = driver.look_map();
  if (name == "scale" && index < 0) return number_value(map.scale);
  if (name == "marker" && index < 0) return number_value(map.marker);
  if (name != "row" || index < 0) nothing_of(what);
  if (index >= map.rows.size()) throw script_error("no such address: " + std::string(what));
  switch (map.rows[static_cast<int>(index)]) {
    case map_colour::yellow: return text_value("yellow");
    case map_colour::blue: return text_value("blue");
    case map_colour::none: break;
  }
  return text_value("none");
}

std::optional<script_value> list_value(const appearance& shown, std::string_view name, std::int64_t index) {
  if (name == "row" && index >= 0) {
    if (index >= static_cast<std::int64_t>(shown.rows.size()))
      throw script_error("no such line: " + std::to_string(index));
    return text_value(shown.rows[static_cast<std::size_t>(index)]);
  }
  if (index >= 0) return std::nullopt;
  if (name == "rows") return sequence_value(shown.rows);
  if (name == "count") return number_value(static_cast<std::int64_t>(shown.rows.size()));
  if (name == "index") return number_value(shown.row);
  if (name == "selected") return sequence_value(shown.selected);
  if (name == "background") return text_value(shown.face_background ? "face" : "window");
  return std::nullopt;
}

script_value control_value(window_driver& driver, std::string_view what) {
  const std::size_t dot = what.find('.');
  if (dot == std::string_view::npos) nothing_of(what);
  const script_place place = place_of(what.substr(0, dot));
  std::int64_t index = -1;
  const std::string_view name = name_and_index(what.substr(dot + 1), index);
  const auto is_any_of = [&](auto... kinds) { return ((place.is == kinds) || ...); };

  const appearance shown = driver.look(place);
  if (index < 0) {
    if (name == "tip") return text_value(shown.tip);
    if (name == "enabled") return truth_value(shown.enabled);
    if (name == "visible") return truth_value(shown.visible);
    if (name == "caption" && is_any_of(kind::button, kind::check, kind::option, kind::label, kind::frame))
      return text_value(shown.text);
    if (name == "text" && is_any_of(kind::text, kind::combo)) return text_value(shown.text);
    if (name == "value" && is_any_of(kind::check, kind::option)) return number_value(shown.value ? 1 : 0);
    if (name == "tag" && place.is == kind::label) return text_value(shown.tag);
    if (name == "selstart" && place.is == kind::text) return number_value(shown.sel_start);
    if (name == "sellength" && place.is == kind::text) return number_value(shown.sel_length);
  }
  if (place.is == kind::list) {
    if (const auto value = list_value(shown, name, index)) return *value;
  }
  if (place.is == kind::picture) return map_value(driver, what, name, index);
  nothing_of(what);
}

}  // namespace

script_value look_at(window_driver& driver, scripted_desktop& desk, std::string_view what) {
  if (what == "boxes") return sequence_value(std::exchange(desk.boxes, {}));
  if (what == "dialogs") return sequence_value(std::exchange(desk.dialogs, {}));
  if (what == "beeps") return number_value(std::exchange(desk.beeps, 0));
  if (what == "focus") return text_value(driver.focused());
  if (what == "clipboard") return text_value(driver.clipboard());
  if (what == "ended") return truth_value(driver.ended());
  if (what == "hexname") return text_value(driver.hex().name);
  if (what == "hexmod") return truth_value(driver.hex().modified);
  if (what == "asmname") return text_value(driver.source().name);
  if (what == "asmmod") return truth_value(driver.source().modified);
  if (what.starts_with("chip.")) return machine_field(driver.chip(), what.substr(5));
  if (const auto name = quoted_argument(what, "file")) return text_value(content_of(*name));
  if (const auto name = quoted_argument(what, "exists")) {
    std::error_code error;
    return truth_value(std::filesystem::exists(*name, error));
  }
  return control_value(driver, what);
}

}  // namespace estructura::guiones
