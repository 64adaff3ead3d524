#include "tests/azar/foto.h"

#include "guion/palabras.h"
#include "tests/apoyo/diferencias.h"

namespace estructura::azar {

namespace {

using guiones::aspecto;
using guiones::lugar;

/// Every control, in the order of the inventory.
const std::vector<lugar>& lugares() {
  static const std::vector<lugar> all = [] {
    std::vector<lugar> places;
    for (int i = 0; i < id_count; ++i) {
      const declaration& row = declared(static_cast<id>(i));
      for (int member = 0; member < row.count; ++member) {
        std::string name(row.name);
        if (row.count > 1) name += '(' + std::to_string(member) + ')';
        places.push_back(guiones::lugar_de(name));
      }
    }
    return places;
  }();
  return all;
}

/// Compares properties one by one and keeps the first that differs.
class cotejo {
 public:
  std::optional<diferencia> found;

  void textos(const std::string& name, const std::string& wanted, const std::string& got) {
    if (!found && wanted != got) keep(name, guiones::texto(wanted), guiones::texto(got));
  }
  void numeros(const std::string& name, int wanted, int got) {
    if (!found && wanted != got) keep(name, guiones::entero(wanted), guiones::entero(got));
  }
  void logicos(const std::string& name, bool wanted, bool got) {
    if (!found && wanted != got) keep(name, guiones::logico(wanted), guiones::logico(got));
  }
  template <class Member>
  void listas(const std::string& name, const std::vector<Member>& wanted, const std::vector<Member>& got) {
    if (!found && wanted != got) keep(name, guiones::lista(wanted), guiones::lista(got));
  }

 private:
  void keep(const std::string& name, const guiones::valor& wanted, const guiones::valor& got) {
    found = diferencia{name, guiones::impreso(wanted), guiones::impreso(got)};
  }
};

void coteja_lineas(cotejo& c, const std::string& name, const aspecto& wanted, const aspecto& got) {
  c.numeros(name + ".count", static_cast<int>(wanted.rows.size()), static_cast<int>(got.rows.size()));
  if (c.found || wanted.rows == got.rows) return;
  for (std::size_t row = 0; row < wanted.rows.size(); ++row)
    c.textos(name + ".row(" + std::to_string(row) + ")", wanted.rows[row], got.rows[row]);
}

void coteja_control(cotejo& c, const lugar& place, const aspecto& wanted, const aspecto& got) {
  const std::string& name = place.name;
  c.textos(name + ".tip", wanted.tip, got.tip);
  c.logicos(name + ".enabled", wanted.enabled, got.enabled);
  c.logicos(name + ".visible", wanted.visible, got.visible);
  switch (place.is) {
    case kind::check:
    case kind::option: c.numeros(name + ".value", wanted.value ? 1 : 0, got.value ? 1 : 0); [[fallthrough]];
    case kind::button:
    case kind::frame: c.textos(name + ".caption", wanted.text, got.text); break;
    case kind::label:
      c.textos(name + ".caption", wanted.text, got.text);
      c.textos(name + ".tag", wanted.tag, got.tag);
      break;
    case kind::text:
      c.textos(name + ".text", wanted.text, got.text);
      c.numeros(name + ".selstart", wanted.sel_start, got.sel_start);
      c.numeros(name + ".sellength", wanted.sel_length, got.sel_length);
      break;
    case kind::combo:
      c.textos(name + ".text", wanted.text, got.text);
      if (!c.found && wanted.rows != got.rows)
        c.found =
            diferencia{"", impreso(guiones::lista(wanted.rows)), name + impreso(guiones::lista(got.rows))};
      break;
    case kind::list:
      coteja_lineas(c, name, wanted, got);
      c.numeros(name + ".index", wanted.row, got.row);
      c.listas(name + ".selected", wanted.selected, got.selected);
      c.textos(name + ".background", wanted.face_background ? "face" : "window",
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

void coteja_mapa(cotejo& c, const map_view& wanted, const map_view& got) {
  c.numeros("mapa.scale", wanted.scale, got.scale);
  c.numeros("mapa.marker", wanted.marker, got.marker);
  for (int a = 0; !c.found && a < program_words; ++a)
    if (wanted.rows[a] != got.rows[a])
      c.textos("mapa.row(" + std::to_string(a) + ")", colour_name(wanted.rows[a]), colour_name(got.rows[a]));
}

}  // namespace

foto toma(guiones::in_process_conductor& driver, const guiones::escritorio& desk) {
  foto shown;
  Estructura& window = driver.window();
  shown.ended = window.ended();
  if (!shown.ended) {
    for (const lugar& place : lugares()) shown.controls.push_back(driver.look(place));
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

std::optional<diferencia> diferencia_entre(const foto& wanted, const foto& got) {
  cotejo c;
  c.listas("boxes", wanted.boxes, got.boxes);
  c.listas("dialogs", wanted.dialogs, got.dialogs);
  c.numeros("beeps", wanted.beeps, got.beeps);
  c.logicos("ended", wanted.ended, got.ended);
  c.textos("hexname", wanted.hex.name, got.hex.name);
  c.logicos("hexmod", wanted.hex.modified, got.hex.modified);
  c.textos("asmname", wanted.source.name, got.source.name);
  c.logicos("asmmod", wanted.source.modified, got.source.modified);
  c.textos("clipboard", wanted.clipboard, got.clipboard);
  c.textos("focus", wanted.focus, got.focus);
  for (std::size_t i = 0; !c.found && i < wanted.controls.size() && i < got.controls.size(); ++i)
    coteja_control(c, lugares()[i], wanted.controls[i], got.controls[i]);
  if (!wanted.ended && !got.ended) coteja_mapa(c, wanted.map, got.map);
  if (!c.found && wanted.chip != got.chip)
    c.found = diferencia{"", "one machine", "another:" + apoyo::differences(wanted.chip, got.chip)};
  return c.found;
}

}  // namespace estructura::azar
