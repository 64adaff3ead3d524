#include "guion/mirada.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <utility>

#include "guion/maquina.h"

namespace estructura::guiones {

namespace {

[[noreturn]] void nothing_of(std::string_view what) {
  throw error_de_guion("nothing of this name to look at: " + std::string(what));
}

/// The name in file("name") when `what` is `function` of a quoted name.
std::optional<std::string> quoted_argument(std::string_view what, std::string_view function) {
  if (!what.starts_with(function) || !what.substr(function.size()).starts_with("(\"")) return std::nullopt;
  if (!what.ends_with("\")")) nothing_of(what);
  const valor argument = leido(what.substr(function.size() + 1, what.size() - function.size() - 2));
  return std::get<std::string>(argument.content);
}

std::string content_of(const std::string& name) {
  std::error_code error;
  std::ifstream file(name, std::ios::binary);
  if (!file || std::filesystem::is_directory(name, error)) throw error_de_guion("no such file: " + name);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

valor map_value(conductor& driver, std::string_view what, std::string_view name, std::int64_t index) {
  const map_view map = driver.look_map();
  if (name == "scale" && index < 0) return entero(map.scale);
  if (name == "marker" && index < 0) return entero(map.marker);
  if (name != "row" || index < 0) nothing_of(what);
  if (index >= map.rows.size()) throw error_de_guion("no such address: " + std::string(what));
  switch (map.rows[static_cast<int>(index)]) {
    case map_colour::yellow: return texto("yellow");
    case map_colour::blue: return texto("blue");
    case map_colour::none: break;
  }
  return texto("none");
}

std::optional<valor> list_value(const aspecto& shown, std::string_view name, std::int64_t index) {
  if (name == "row" && index >= 0) {
    if (index >= static_cast<std::int64_t>(shown.rows.size()))
      throw error_de_guion("no such line: " + std::to_string(index));
    return texto(shown.rows[static_cast<std::size_t>(index)]);
  }
  if (index >= 0) return std::nullopt;
  if (name == "rows") return lista(shown.rows);
  if (name == "count") return entero(static_cast<std::int64_t>(shown.rows.size()));
  if (name == "index") return entero(shown.row);
  if (name == "selected") return lista(shown.selected);
  if (name == "background") return texto(shown.face_background ? "face" : "window");
  return std::nullopt;
}

valor control_value(conductor& driver, std::string_view what) {
  const std::size_t dot = what.find('.');
  if (dot == std::string_view::npos) nothing_of(what);
  const lugar place = lugar_de(what.substr(0, dot));
  std::int64_t index = -1;
  const std::string_view name = nombre_e_indice(what.substr(dot + 1), index);
  const auto is_any_of = [&](auto... kinds) { return ((place.is == kinds) || ...); };

  const aspecto shown = driver.look(place);
  if (index < 0) {
    if (name == "tip") return texto(shown.tip);
    if (name == "enabled") return logico(shown.enabled);
    if (name == "visible") return logico(shown.visible);
    if (name == "caption" && is_any_of(kind::button, kind::check, kind::option, kind::label, kind::frame))
      return texto(shown.text);
    if (name == "text" && is_any_of(kind::text, kind::combo)) return texto(shown.text);
    if (name == "value" && is_any_of(kind::check, kind::option)) return entero(shown.value ? 1 : 0);
    if (name == "tag" && place.is == kind::label) return texto(shown.tag);
    if (name == "selstart" && place.is == kind::text) return entero(shown.sel_start);
    if (name == "sellength" && place.is == kind::text) return entero(shown.sel_length);
  }
  if (place.is == kind::list) {
    if (const auto value = list_value(shown, name, index)) return *value;
  }
  if (place.is == kind::picture) return map_value(driver, what, name, index);
  nothing_of(what);
}

}  // namespace

valor mira(conductor& driver, escritorio& desk, std::string_view what) {
  if (what == "boxes") return lista(std::exchange(desk.boxes, {}));
  if (what == "dialogs") return lista(std::exchange(desk.dialogs, {}));
  if (what == "beeps") return entero(std::exchange(desk.beeps, 0));
  if (what == "focus") return texto(driver.focused());
  if (what == "clipboard") return texto(driver.clipboard());
  if (what == "ended") return logico(driver.ended());
  if (what == "hexname") return texto(driver.hex().name);
  if (what == "hexmod") return logico(driver.hex().modified);
  if (what == "asmname") return texto(driver.source().name);
  if (what == "asmmod") return logico(driver.source().modified);
  if (what.starts_with("chip.")) return campo(driver.chip(), what.substr(5));
  if (const auto name = quoted_argument(what, "file")) return texto(content_of(*name));
  if (const auto name = quoted_argument(what, "exists")) {
    std::error_code error;
    return logico(std::filesystem::exists(*name, error));
  }
  return control_value(driver, what);
}

}  // namespace estructura::guiones
