#include "ui/estructura.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <utility>

#include "common/fault.h"
#include "common/number.h"
#include "common/text.h"
#include "files/source_file.h"

namespace estructura {

/// Which handler serves which event of which control.
struct handler_table {
  struct row {
    id which;
    event what;
    Estructura::handler act;
  };
  static const std::array<row, 57> rows;
};

// clang-format off
const std::array<handler_table::row, 57> handler_table::rows = {{
    {id::PIC,       event::click,     &Estructura::PIC_Click},
    {id::sl,        event::click,     &Estructura::sl_Click},
    {id::MDP,       event::click,     &Estructura::MDP_Click},
    {id::MDP,       event::lostfocus, &Estructura::MDP_LostFocus},
    {id::MD,        event::click,     &Estructura::MD_Click},
    {id::MD,        event::lostfocus, &Estructura::MD_LostFocus},
    {id::RE,        event::click,     &Estructura::RE_Click},
    {id::RE,        event::lostfocus, &Estructura::RE_LostFocus},
    {id::dirdat,    event::change,    &Estructura::dirdat_Change},
    {id::dat,       event::change,    &Estructura::dat_Change},
    {id::dat,       event::enter,     &Estructura::dat_KeyPress},
    {id::dat,       event::gotfocus,  &Estructura::dat_GotFocus},
    {id::entrardat, event::click,     &Estructura::entrardat_Click},
    {id::FR,        event::gotfocus,  &Estructura::FR_GotFocus},
    {id::FR,        event::change,    &Estructura::FR_Change},
    {id::FREC,      event::gotfocus,  &Estructura::FREC_GotFocus},
    {id::eje1,      event::click,     &Estructura::eje1_Click},
    {id::ejecutar,  event::click,     &Estructura::ejecutar_Click},
    {id::por,       event::click,     &Estructura::por_Click},
    {id::MCLR,      event::click,     &Estructura::MCLR_Click},
    {id::WDT,       event::click,     &Estructura::WDT_Click},
    {id::WATCHDOG,  event::click,     &Estructura::WATCHDOG_Click},
    {id::CMCLR,     event::click,     &Estructura::CMCLR_Click},
    {id::fext,      event::click,     &Estructura::fext_Click},
    {id::TOCKI,     event::click,     &Estructura::TOCKI_Click},
    {id::ciclos,    event::dblclick,  &Estructura::ciclos_DblClick},
    {id::PA,        event::click,     &Estructura::PA_Click},
    {id::PB,        event::click,     &Estructura::PB_Click},
    {id::PC,        event::click,     &Estructura::PC_Click},
    {id::VISMP,     event::click,     &Estructura::VISMP_Click},
    {id::MP,        event::click,     &Estructura::MP_Click},
    {id::MP,        event::dblclick,  &Estructura::MP_DblClick},
    {id::direc,     event::change,    &Estructura::direc_Change},
    {id::direc,     event::gotfocus,  &Estructura::direc_GotFocus},
    {id::INS,       event::change,    &Estructura::INS_Change},
    {id::INS,       event::gotfocus,  &Estructura::INS_GotFocus},
    {id::INS,       event::enter,     &Estructura::INS_KeyPress},
    {id::Entrarins, event::click,     &Estructura::Entrarins_Click},
    {id::borrarins, event::click,     &Estructura::borrarins_Click},
    {id::break_,    event::click,     &Estructura::break_Click},
    {id::cargar,    event::click,     &Estructura::cargar_Click},
    {id::salvar,    event::click,     &Estructura::salvar_Click},
    {id::borrar,    event::click,     &Estructura::borrar_Click},
    {id::salvar16c84, event::click,   &Estructura::salvar16c84_Click},
    {id::source,    event::change,    &Estructura::source_Change},
    {id::cargarasm, event::click,     &Estructura::cargarasm_Click},
    {id::salvarasm, event::click,     &Estructura::salvarasm_Click},
    {id::borrarasm, event::click,     &Estructura::borrarasm_Click},
    {id::Ensamblar, event::click,     &Estructura::Ensamblar_Click},
    {id::desensamblar, event::click,  &Estructura::desensamblar_Click},
    {id::lst,       event::click,     &Estructura::lst_Click},
    {id::lst,       event::keyup,     &Estructura::lst_KeyUp},
    {id::Copiar,    event::click,     &Estructura::Copiar_Click},
    {id::Cortar,    event::click,     &Estructura::Cortar_Click},
    {id::Pegar,     event::click,     &Estructura::Pegar_Click},
    {id::tab,       event::click,     &Estructura::tab_Click},
    {id::fin,       event::click,     &Estructura::fin_Click},
}};
// clang-format on

Estructura::Estructura(window_host& host) : host_(host) {
  for (int i = 0; i < id_count; ++i) {
    const declaration& row = declared(static_cast<id>(i));
    first_member_[static_cast<std::size_t>(i)] = static_cast<int>(controls_.size());
    for (int member = 0; member < row.count; ++member) {
      const std::string name =
          std::string(row.name) + (row.count > 1 ? "(" + std::to_string(member) + ")" : "");
      control made(row.which, member, row.is, name);
      const std::size_t text = row.texts[1].empty() ? 0 : static_cast<std::size_t>(member);
      made.set_text(row.texts[text]);
      if (row.tip_member == -1 || row.tip_member == member) made.set_tip(row.tip);
      made.set_visible(row.visible);
      made.set_enabled(row.enabled);
      controls_.push_back(std::move(made));
    }
  }
  at(id::sl, 0).set_value(true);
  // The sink comes last: building the controls is no event.
  for (control& c : controls_) c.listen(this);
}

control& Estructura::at(id which, int index) {
  const auto first = static_cast<std::size_t>(first_member_[static_cast<std::size_t>(which)]);
  return controls_[first + static_cast<std::size_t>(index)];
}

const control& Estructura::at(id which, int index) const {
  return const_cast<Estructura&>(*this).at(which, index);
}

// --- Events ---

void Estructura::raised(control& source, event what) {
  for (const handler_table::row& row : handler_table::rows)
    if (row.which == source.which() && row.what == what) return (this->*row.act)(source.index());
}

void Estructura::touched(control& source) {
  switch (source.which()) {
    case id::FREC:
    case id::FR: in_.set_frequencies(valdec(at(id::FREC).text()), valdec(at(id::FR).text())); break;
    case id::WATCHDOG:
      runner_.requests().configuration_open = source.enabled();
      in_.watchdog_on = source.value();
      break;
    case id::INS:
    case id::codop:
      runner_.requests().entry_shown = !at(id::INS).text().empty() || !at(id::codop).text().empty();
      break;
    default: break;
  }
  if (focus_.which != id::none && !usable(focus_.which, focus_.index)) leave_withdrawn_focus();
}

// --- Focus ---

namespace {

bool takes_focus(kind k) {
  return k != kind::label && k != kind::frame && k != kind::picture;
}

}  // namespace

void Estructura::move_focus(focus_place place) {
  if (place == focus_) return;
  const focus_place left = std::exchange(focus_, place);
  runner_.requests().focus_at_stake = place.which == id::PA || place.which == id::PB ||
                                      place.which == id::PC || place.which == id::FR ||
                                      place.which == id::TOCKI;
  if (left.which != id::none) raised(at(left.which, left.index), event::lostfocus);
  if (place.which != id::none && place == focus_) raised(at(place.which, place.index), event::gotfocus);
}

// A control that can no longer be used hands the focus to the next one that can, in the order of the Tab key.
void Estructura::leave_withdrawn_focus() {
  const int size = static_cast<int>(controls_.size());
  const int from = first_member_[static_cast<std::size_t>(focus_.which)] + focus_.index;
  for (int step = 1; step < size; ++step) {
    const control& next = controls_[static_cast<std::size_t>((from + step) % size)];
    if (takes_focus(next.is()) && !skipped_by_tab(next.which()) && usable(next.which(), next.index()))
      return move_focus(harmless(next));
  }
  move_focus({});
}

// Nobody has gone to where a withdrawn focus goes: a key meant for the control before must not end the
// program there, nor erase a word.
focus_place Estructura::harmless(const control& next) const {
  const auto first_usable = [&](std::initializer_list<id> instead) {
    for (const id which : instead)
      if (usable(which)) return focus_place{which, 0};
    return focus_place{next.which(), next.index()};
  };
  switch (next.which()) {
    case id::fin: return first_usable({id::eje1, id::ejecutar});
    case id::borrarins: return first_usable({id::INS});
    default: return first_usable({});
  }
}

bool Estructura::usable(id which, int index) const {
  const control& c = at(which, index);
  if (!c.enabled() || !c.visible()) return false;
  const id frame = declared(which).frame;
  return frame == id::none || usable(frame);
}

// During a run the views are worked out for a look now and then. Where the focus is must not depend on that.
void Estructura::guard_focus() {
  const bool hidden = focus_ == focus_place{id::PB, 2} && gp2_is_t0cki();
  if (hidden || !opened_by_refresh(focus_.which, focus_.index)) settle();
}

// --- The door ---

template <class Action>
void Estructura::through_the_door(Action action) {
  if (ended_) return;
  try {
    settle();
    action();
  } catch (const machine_fault&) {
    // The views show the state as the fault left it.
    runner_.seen().refreshed = true;
    fault();
  }
  bring_up_to_date();
}

void Estructura::fault() {
  stop_run();
  host_.show_box(box::fault, "Se ha producido un error durante la ejecución.");
}

answer Estructura::ask(box kind, const std::string& text) {
  // Whoever reads the question sees the window as it stands.
  bring_up_to_date();
  return host_.show_box(kind, text);
}

void Estructura::Form_Load() {
  through_the_door([this] { load(); });
}

void Estructura::click(id which, int index) {
  through_the_door([&] {
    if (!usable(which, index)) return;
    control& c = at(which, index);
    if (takes_focus(c.is())) move_focus({which, index});
    // Losing the focus may have changed what can be used.
    if (!usable(which, index)) return;
    switch (c.is()) {
      case kind::check:
        // This box only shows a state of the chip.
        if (which != id::estsleep) c.set_value(!c.value());
        break;
      case kind::option:
        for (int member = 0; member < declared(which).count; ++member)
          at(which, member).show_value(member == index);
        raised(c, event::click);
        break;
      case kind::button: raised(c, event::click); break;
      default: break;
    }
  });
}

void Estructura::click_text(id which, int caret) {
  through_the_door([&] {
    if (at(which).is() != kind::text || !usable(which)) return;
    move_focus({which, 0});
    at(which).set_selection(caret, 0);
    raised(at(which), event::click);
  });
}

void Estructura::keyup_text(id which, int caret) {
  through_the_door([&] {
    if (at(which).is() != kind::text || !usable(which)) return;
    move_focus({which, 0});
    at(which).set_selection(caret, 0);
    raised(at(which), event::keyup);
  });
}

void Estructura::dblclick(id which, int index) {
  through_the_door([&] {
    if (usable(which, index)) raised(at(which, index), event::dblclick);
  });
}

void Estructura::choose_rows(id which, int index, int current, std::vector<int> selected) {
  through_the_door([&] {
    if (at(which, index).is() != kind::list || !usable(which, index)) return;
    control& list = at(which, index);
    if (current < 0 || current >= list.count()) return;
    move_focus({which, index});
    std::sort(selected.begin(), selected.end());
    list.set_row_selection(current, std::move(selected));
    raised(list, event::click);
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
    if (at(which).is() != kind::combo || !usable(which)) return;
    control& combo = at(which);
    if (std::find(combo.rows().begin(), combo.rows().end(), entry) == combo.rows().end()) return;
    move_focus({which, 0});
    combo.set_text(entry);
    raised(combo, event::click);
  });
}

void Estructura::type(id which, std::string_view text, int caret) {
  through_the_door([&] {
    if (at(which).is() != kind::text || !usable(which)) return;
    move_focus({which, 0});
    const bool read_only = which == id::lst;
    if (read_only) return;
    control& box = at(which);
    // The source keeps CR LF between its lines, whatever was typed or pasted.
    if (which == id::source)
      box.set_typed_text(with_crlf(text), caret);
    else
      box.set_typed_text(text, caret);
  });
}

void Estructura::select(id which, int start, int length) {
  through_the_door([&] {
    if (at(which).is() != kind::text || !usable(which)) return;
    move_focus({which, 0});
    at(which).set_selection(start, length);
  });
}

void Estructura::press(id which) {
  through_the_door([&] {
    if (at(which).is() == kind::button && usable(which)) raised(at(which), event::click);
  });
}

void Estructura::enter(id which) {
  through_the_door([&] {
    if (at(which).is() != kind::text || !usable(which)) return;
    move_focus({which, 0});
    control& box = at(which);
    // In the one box of several lines the key breaks the line at the caret.
    if (which == id::source)
      replace_selection("\r\n");
    else
      raised(box, which == id::lst ? event::keyup : event::enter);
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
    if (!usable(id::mapa)) return;
    // The scale goes on past the last address; a click there means the last line.
    const double row = std::clamp(std::nearbyint(y), 0.0, static_cast<double>(chip_.devmodel.progmask));
    at(id::MP).choose_row(static_cast<int>(row));
  });
}

void Estructura::close_request() {
  through_the_door([this] { Form_Unload(); });
}

// --- Looking ---

void Estructura::settle_row() {
  trail& seen = runner_.seen();
  if (!std::exchange(seen.arrived, false)) return;
  control& list = at(id::MP);
  if (seen.inner >= 0) list.choose_row(std::exchange(seen.inner, std::int16_t{-1}));
  // An address that was left and met again has changed twice, though its text is the same.
  if (std::exchange(seen.moved, false)) direc_Change(0);
  if (!seen.inside) list.choose_row(-1);
}

void Estructura::settle_marker() {
  const trail& seen = runner_.seen();
  const int marker = seen.marked ? seen.marker : -1;
  if (map_.marker == marker) return;
  map_.marker = marker;
  ++map_.changes;
}

void Estructura::settle() {
  settle_row();
  settle_marker();
  if (std::exchange(runner_.seen().refreshed, false)) show_views();
}

void Estructura::bring_up_to_date() {
  try {
    settle();
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
  return map_;
}

const std::vector<control>& Estructura::look_all() {
  bring_up_to_date();
  return controls_;
}

chipstate& Estructura::poke() {
  bring_up_to_date();
  return chip_;
}

void Estructura::refresh() {
  through_the_door([&] { runner_.regen(); });
}

}  // namespace estructura
