// Program memory: its list and its map, and the panel that enters one instruction by hand.
#include <string>
#include <vector>

#include "asm/encodeins.h"
#include "common/number.h"
#include "common/text.h"
#include "files/disassembler.h"
#include "ui/estructura.h"

namespace estructura {

void Estructura::listaprog() {
  settle_row();
  std::vector<std::string> lines;
  lines.reserve(static_cast<std::size_t>(chip_.devmodel.progmask) + 1);
  for (int a = 0; a <= chip_.devmodel.progmask; ++a) lines.push_back(lineaprog(chip_, a));
  at(id::MP).set_rows(std::move(lines));
  pintamapa();
  at(id::VISMP).set_value(true);
}

void Estructura::pintamapa() {
  const int progmask = chip_.devmodel.progmask;
  // A row less below the last address of the smallest devices.
  map_.scale = progmask == 511 ? progmask + 2 : progmask + 3;
  map_.rows.fill(map_colour::none);
  for (int a = 0; a <= progmask; ++a) {
    if (chip_.progmem[a] != unprogrammed) map_.rows[a] = map_colour::yellow;
    if (chip_.breakpts[a] == 1) map_.rows[a] = map_colour::blue;
  }
  ++map_.changes;
  // The whole surface was cleared, the marker's half too; the next step draws it again.
  erase_marker();
}

void Estructura::rebuild_row(int address) {
  settle_row();
  if (address <= chip_.devmodel.progmask) at(id::MP).replace_row(address, lineaprog(chip_, address));
}

void Estructura::MP_Click(int) {
  at(id::direc).set_text(hexstr(at(id::MP).row(), 3));
}

void Estructura::MP_DblClick(int) {
  const int row = at(id::MP).row();
  if (row < 0) return;
  MP_Click(0);
  show_instruction_at(row);
}

// The text of a word, ready to be edited; empty for what is no instruction.
void Estructura::show_instruction_at(int address) {
  const std::string text = deshex(chip_.progmem[address]);
  at(id::INS).set_text(text == "???" ? "" : text);
}

void Estructura::direc_Change(int) {
  const std::string& text = at(id::direc).text();
  const auto value = valhex_checked(text);
  const bool is_address =
      char_count(text) == 3 && ishex(text) && value && *value >= 0 && *value <= chip_.devmodel.progmask;
  if (is_address) {
    control& list = at(id::MP);
    // Chosen again, the line would be the only one selected; typed again, it is to be seen again.
    if (list.row() == *value)
      list.show_row();
    else
      list.choose_row(*value);
  }
  at(id::borrarins).set_enabled(is_address);
  at(id::break_).set_enabled(is_address);
}

void Estructura::INS_Change(int) {
  control& ins = at(id::INS);
  if (ins.text().find("\r\n") != std::string::npos) {
    ins.set_text("");
    return;
  }
  const int word = encodeins(ins.text());
  at(id::codop).set_text(word == -1 ? "???" : hexstr(word, 3));
  at(id::Entrarins).set_enabled(word != -1);
}

void Estructura::INS_KeyPress(int) {
  if (!at(id::Entrarins).enabled()) return;
  enterins();
  // The focus was here already; the next instruction takes this one's place all the same.
  INS_GotFocus(0);
}

void Estructura::Entrarins_Click(int) {
  enterins();
}

void Estructura::enterins() {
  const int address = valhex(at(id::direc).text());
  chip_.progmem[address] = static_cast<std::uint16_t>(valhex(at(id::codop).text()));
  rebuild_row(address);
  at(id::MP).choose_row((address + 1) & chip_.devmodel.progmask);
  move_focus({id::INS, 0});
  hex_.modified = true;
  pintamapa();
}

void Estructura::borrarins_Click(int) {
  const int address = valhex(at(id::direc).text());
  chip_.progmem[address] = unprogrammed;
  hex_.modified = true;
  rebuild_row(address);
  at(id::MP).choose_row(address);
  pintamapa();
}

void Estructura::break_Click(int) {
  if (at(id::MP).selected().size() > 1) {
    host_.beep();
    return;
  }
  const int address = valhex(at(id::direc).text());
  chip_.breakpts[address] = chip_.breakpts[address] == 1 ? 0 : 1;
  rebuild_row(address);
  at(id::MP).choose_row(address);
  pintamapa();
}

}  // namespace estructura
