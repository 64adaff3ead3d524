#include "ui/program_panel.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "asm/encodeins.h"
#include "common/number.h"
#include "common/text.h"
#include "files/disassembler.h"
#include "ui/device_texts.h"

namespace estructura {

struct program_panel::handlers {
  static void MP_Click(program_panel& self, int) { self.show_address(); }
  static void MP_DblClick(program_panel& self, int) { self.read_current_line(); }
  static void VISMP_Click(program_panel& self, int) { self.MP.set_visible(self.VISMP.value()); }

  static void direc_GotFocus(program_panel& self, int) { self.direc.select_all(); }
  static void direc_Change(program_panel& self, int) { self.follow_address(); }

  static void INS_GotFocus(program_panel& self, int) { self.INS.select_all(); }

  static void INS_Change(program_panel& self, int) {
    if (self.INS.text().find("\r\n") != std::string::npos) {
      self.INS.set_text("");
      return;
    }
    const int word = encodeins(self.INS.text());
    self.codop.set_text(word == -1 ? "???" : hexstr(word, 3));
    self.Entrarins.set_enabled(word != -1);
  }

  static void INS_KeyPress(program_panel& self, int) {
    if (!self.Entrarins.enabled()) return;
    self.enterins();
    // The focus was here already; the next instruction takes this one's place all the same.
    self.INS.select_all();
  }

  static void Entrarins_Click(program_panel& self, int) { self.enterins(); }

  static void borrarins_Click(program_panel& self, int) {
    const int address = valhex(self.direc.text());
    self.chip_.progmem[address] = unprogrammed;
    self.documents_.hex.modified = true;
    self.rebuild_row(address);
    self.choose(address);
    self.pintamapa();
  }

  static void break_Click(program_panel& self, int) {
    if (self.MP.selected().size() > 1) {
      self.host_.beep();
      return;
    }
    const int address = valhex(self.direc.text());
    self.chip_.breakpts[address] = self.chip_.breakpts[address] == 1 ? 0 : 1;
    self.rebuild_row(address);
    self.choose(address);
    self.pintamapa();
  }

  // clang-format off
  static constexpr handler_row rows[] = {
      {id::MP,        event::click,    act<MP_Click>},
      {id::MP,        event::dblclick, act<MP_DblClick>},
      {id::VISMP,     event::click,    act<VISMP_Click>},
      {id::direc,     event::gotfocus, act<direc_GotFocus>},
      {id::direc,     event::change,   act<direc_Change>},
      {id::INS,       event::gotfocus, act<INS_GotFocus>},
      {id::INS,       event::change,   act<INS_Change>},
      {id::INS,       event::enter,    act<INS_KeyPress>},
      {id::Entrarins, event::click,    act<Entrarins_Click>},
      {id::borrarins, event::click,    act<borrarins_Click>},
      {id::break_,    event::click,    act<break_Click>},
  };
  // clang-format on
};

program_panel::program_panel(const shared_parts& shared) : panel(shared, handlers::rows) {}

void program_panel::touched(const control& source) {
  if (source.which() == id::INS || source.which() == id::codop)
    runner_.requests().entry_shown = !INS.text().empty() || !codop.text().empty();
}

// --- The list and the map ---

void program_panel::listaprog() {
  show_row_of_step();
  std::vector<std::string> lines;
  lines.reserve(static_cast<std::size_t>(chip_.devmodel.progmask) + 1);
  for (int a = 0; a <= chip_.devmodel.progmask; ++a) lines.push_back(lineaprog(chip_, a));
  MP.set_rows(std::move(lines));
  pintamapa();
  VISMP.set_value(true);
}

void program_panel::pintamapa() {
  const int progmask = chip_.devmodel.progmask;
  map_.scale = map_scale(chip_.devmodel);
  map_.rows.fill(map_colour::none);
  for (int a = 0; a <= progmask; ++a) {
    if (chip_.progmem[a] != unprogrammed) map_.rows[a] = map_colour::yellow;
    if (chip_.breakpts[a] == 1) map_.rows[a] = map_colour::blue;
  }
  ++map_.changes;
  // The whole surface was cleared, the marker's half too; the next step draws it again.
  runner_.seen().marked = false;
}

void program_panel::rebuild_row(int address) {
  show_row_of_step();
  if (address <= chip_.devmodel.progmask) MP.replace_row(address, lineaprog(chip_, address));
}

void program_panel::press_map(double y) {
  // The scale goes on past the last address; a click there means the last line.
  const double row = std::clamp(std::nearbyint(y), 0.0, static_cast<double>(chip_.devmodel.progmask));
  choose(static_cast<int>(row));
}

// --- After a step ---

void program_panel::show_step() {
  show_row_of_step();
  show_marker();
}

void program_panel::show_row_of_step() {
  trail& seen = runner_.seen();
  if (!std::exchange(seen.arrived, false)) return;
  if (seen.inner >= 0) MP.choose_row(std::exchange(seen.inner, std::int16_t{-1}));
  // An address that was left and met again has changed twice, though its text is the same.
  if (std::exchange(seen.moved, false)) follow_address();
  if (!seen.inside) MP.choose_row(-1);
}

void program_panel::show_marker() {
  const trail& seen = runner_.seen();
  const int marker = seen.marked ? seen.marker : -1;
  if (map_.marker == marker) return;
  map_.marker = marker;
  ++map_.changes;
}

// --- Address and instruction ---

void program_panel::show_address() {
  direc.set_text(hexstr(MP.row(), 3));
}

void program_panel::read_current_line() {
  const int row = MP.row();
  if (row < 0) return;
  show_address();
  read_instruction(row);
}

// Empty for what is no instruction.
void program_panel::read_instruction(int address) {
  const std::string text = deshex(chip_.progmem[address]);
  INS.set_text(text == "???" ? "" : text);
}

void program_panel::clear_entry() {
  INS.set_text("");
  codop.set_text("");
}

void program_panel::follow_address() {
  const std::string& text = direc.text();
  const auto value = valhex_checked(text);
  const bool is_address =
      char_count(text) == 3 && ishex(text) && value && *value >= 0 && *value <= chip_.devmodel.progmask;
  if (is_address) {
    // Chosen again, the line would be the only one selected; typed again, it is to be seen again.
    if (MP.row() == *value)
      MP.show_row();
    else
      MP.choose_row(*value);
  }
  borrarins.set_enabled(is_address);
  break_.set_enabled(is_address);
}

void program_panel::enterins() {
  const int address = valhex(direc.text());
  chip_.progmem[address] = static_cast<std::uint16_t>(valhex(codop.text()));
  rebuild_row(address);
  choose((address + 1) & chip_.devmodel.progmask);
  window_.move_focus({id::INS, 0});
  documents_.hex.modified = true;
  pintamapa();
}

}  // namespace estructura
