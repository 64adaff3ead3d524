// The register views, each a pure function of the machine, and the panel that edits one register by hand.
//
// The target of the panel is a code kept in the tag of `dirdat`:
//
//   0..15     regs
//   16..127   bank * 32 + address (16..31) of the banked registers
//   128..133  pc, w, option, trisa, trisb, trisc
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "common/number.h"
#include "common/text.h"
#include "core/data_memory.h"
#include "core/timer.h"
#include "ui/estructura.h"
#include "ui/format.h"

namespace estructura {

namespace {

constexpr int core_code = 128;

std::string last(const std::string& text, std::size_t count) {
  return text.size() <= count ? text : text.substr(text.size() - count);
}

// The implemented bits of a register in binary behind dashes, `dashes` of them at the most, in 8 characters.
std::string masked_binary(std::string_view dashes, int mask, int value) {
  const auto bits = mask > 0 ? static_cast<std::size_t>(std::lround(std::log2(mask))) : 0;
  return last(std::string(dashes) + last(binstr(value), bits), 8);
}

}  // namespace

void Estructura::show_views() {
  show_memory();
  show_binary_views();
  show_core_registers();
  show_counters();
  show_timer();
  show_pins();
}

void Estructura::show_memory() {
  const auto& regs = chip_.regs;
  std::vector<std::string> common;
  common.reserve(16);
  for (int i = 0; i < 16; ++i) common.push_back(hexstr(regs[i], 2));
  common[reg_indf] = "**";
  if (chip_.devmodel.mask5 == 15) common[reg_5] = "-" + hexstr(regs[reg_5], 1);
  at(id::MDP).set_rows(std::move(common));

  const int bank = fsrbank(chip_);
  for (int b = 0; b < 4; ++b) {
    std::vector<std::string> lines;
    lines.reserve(16);
    for (int i = 0; i < 16; ++i) lines.push_back(hexstr(chip_.bankregs[b * 16 + i], 2));
    at(id::MD, b).set_rows(std::move(lines));
    at(id::MD, b).set_face_background(b != bank);
  }

  const int a = regs[reg_fsr] & 31;
  at(id::INDF).set_text(hexstr(a >= 16 ? chip_.bankregs[bank * 16 + a - 16] : regs[a], 2));
  at(id::DIRFSR).set_text(hexstr(a, 2));
  at(id::PAGFSR).set_text(hexstr(bank, 1));
}

void Estructura::show_binary_views() {
  const device& model = chip_.devmodel;
  const auto& regs = chip_.regs;
  at(id::STATUS).set_text(binstr(regs[reg_status]));
  at(id::OPT).set_text(masked_binary("--", model.optmask, chip_.cpu.option));
  at(id::BPA).set_text("----" + last(binstr(regs[reg_5]), 4));
  at(id::BPB).set_text(masked_binary("----", model.mask6, regs[reg_6]));
  at(id::BPC).set_text(binstr(regs[reg_7]));
  at(id::TRISA).set_text("----" + last(binstr(chip_.cpu.trisa), 4));
  at(id::TRISB).set_text(masked_binary("----", model.mask6, chip_.cpu.trisb));
  at(id::TRISC).set_text(binstr(chip_.cpu.trisc));
}

void Estructura::show_core_registers() {
  const device& model = chip_.devmodel;
  const core_registers& cpu = chip_.cpu;
  // Blanks and dash keep two digits right-aligned under the three of PC.
  std::vector<std::string> lines = {hexstr(cpu.pc, 3), " " + hexstr(cpu.w, 2), " " + hexstr(cpu.option, 2)};
  if (model.is16c5x) lines.push_back(" -" + hexstr(cpu.trisa, 1));
  lines.push_back(" " + hexstr(cpu.trisb, 2));
  if (model.hasportc) lines.push_back(" " + hexstr(cpu.trisc, 2));
  at(id::RE).set_rows(std::move(lines));
  at(id::PIL).set_rows({hexstr(chip_.stack[0], 3), hexstr(chip_.stack[1], 3)});
}

void Estructura::show_counters() {
  at(id::estsleep).show_value(chip_.sleeping);
  at(id::ciclos).set_text(ponpuntos(chip_.cycles));
  at(id::WATCHDOG).set_text("WDT / " + std::to_string(prescratio(chip_, 0)));
  show_watchdog_count();
  at(id::divtim).set_text(std::to_string(prescratio(chip_, 1)));
}

bool Estructura::timer_counts_pulses() const {
  return getbit(chip_.cpu.option, option_t0cs) != 0;
}

// On the 12C50x the pin of GP2 is the T0CKI input while the timer counts edges.
bool Estructura::gp2_is_t0cki() const {
  return timer_counts_pulses() && !chip_.devmodel.is16c5x;
}

// Whether a refresh enables the control: a pin box, `FR` or `TOCKI`.
bool Estructura::opened_by_refresh(id which, int index) const {
  const core_registers& cpu = chip_.cpu;
  switch (which) {
    case id::FR: return timer_counts_pulses();
    case id::TOCKI: return timer_counts_pulses() && !in_.pulse_train;
    case id::PA: return getbit(cpu.trisa, index) == 1;
    case id::PB: return getbit(cpu.trisb, index) == 1;
    default: return getbit(cpu.trisc, index) == 1;
  }
}

void Estructura::show_timer() {
  const int option = chip_.cpu.option;
  const bool external = timer_counts_pulses();
  const bool falling = getbit(option, option_t0se) != 0;
  at(id::SENTIM).set_text(!external ? "F/4" : falling ? "Ext. Des." : "Ext. Asc.");
  for (const id which : {id::FR, id::TOCKI}) at(which).set_enabled(opened_by_refresh(which));
  if (!external)
    at(id::PB, 2).set_visible(true);
  else if (gp2_is_t0cki())
    at(id::PB, 2).set_visible(false);
}

void Estructura::show_pins() {
  const auto show = [this](id port, int boxes, int pins) {
    for (int i = 0; i < boxes; ++i) {
      at(port, i).set_enabled(opened_by_refresh(port, i));
      at(port, i).show_value(getbit(pins, i) == 1);
    }
  };
  const auto& boxes = in_.pin_boxes;
  if (chip_.devmodel.is16c5x) show(id::PA, 4, boxes[0]);
  show(id::PB, 8, boxes[1]);
  if (chip_.devmodel.hasportc) show(id::PC, 8, boxes[2]);
}

// --- Editing ---

void Estructura::edit_register(int code, const std::string& caption, const std::string& value) {
  at(id::dirdat).set_tag(std::to_string(code));
  at(id::dirdat).set_text(caption);
  at(id::dat).set_text(value);
  at(id::entrardat).set_enabled(true);
  move_focus({id::dat, 0});
}

void Estructura::MDP_Click(int) {
  const int k = at(id::MDP).row();
  const bool is16c5x = chip_.devmodel.is16c5x;
  std::string caption = hexstr(k, 2);
  switch (k) {
    case reg_tmr0: caption = "TMR0"; break;
    case reg_pcl: caption = "PCL"; break;
    case reg_status: caption = "STATUS"; break;
    case reg_fsr: caption = "FSR"; break;
    case reg_5: caption = is16c5x ? "PA" : "OSCCAL"; break;
    case reg_6: caption = is16c5x ? "PB" : "GPIO"; break;
    case reg_7: caption = "PC"; break;
    default: break;
  }
  const int digits = k == reg_5 && chip_.devmodel.mask5 == 15 ? 1 : 2;
  edit_register(k, caption, hexstr(chip_.regs[k], digits));
}

void Estructura::MD_Click(int bank) {
  const int k = at(id::MD, bank).row();
  const int code = bank * 32 + k + 16;
  const std::string caption = hexstr(k + 16, 2) + "." + hexstr(bank, 1) + " (" + hexstr(code, 2) + ")";
  edit_register(code, caption, hexstr(chip_.bankregs[bank * 16 + k], 2));
}

void Estructura::RE_Click(int) {
  const int k = at(id::RE).row();
  const bool is16c5x = chip_.devmodel.is16c5x;
  // The list of the 12C50x has no line for TRISA, so that its line 3 is already TRIS.
  const int place = !is16c5x && k == 3 ? 4 : k;
  static constexpr std::array<std::string_view, 6> names = {"PC", "W", "OPTION", "TRISA", "TRISB", "TRISC"};
  const std::string caption(place == 4 && !is16c5x ? "TRIS" : names[static_cast<std::size_t>(place)]);
  const int digits = place == 0 ? 3 : place == 3 ? 1 : 2;
  edit_register(core_code + place, caption, hexstr(chip_.cpu[place], digits));
}

// Without a selection a later click on the same line counts again.
void Estructura::data_list_LostFocus(id which, int index) {
  at(which, index).choose_row(-1);
}
void Estructura::MDP_LostFocus(int) {
  data_list_LostFocus(id::MDP, 0);
}
void Estructura::MD_LostFocus(int bank) {
  data_list_LostFocus(id::MD, bank);
}
void Estructura::RE_LostFocus(int) {
  data_list_LostFocus(id::RE, 0);
}

void Estructura::dirdat_Change(int) {
  at(id::dat).set_enabled(!at(id::dirdat).text().empty());
}

void Estructura::dat_Change(int) {
  control& dat = at(id::dat);
  if (dat.text().find("\r\n") != std::string::npos) {
    dat.set_text("");
    return;
  }
  const auto acceptable = [&] {
    if (dat.text().empty() || !ishex(dat.text())) return false;
    const auto value = valhex_checked(dat.text());
    if (!value || *value < 0) return false;
    const device& model = chip_.devmodel;
    constexpr int byte_limit = 255;
    switch (static_cast<int>(valdec(at(id::dirdat).tag()))) {
      case core_code: return *value <= model.progmask;
      case core_code + 2: return *value <= model.optmask;
      case core_code + 3: return *value <= model.mask5;
      case core_code + 4: return *value <= model.mask6;
      case reg_5: return *value <= model.mask5 && (model.is16c5x || (*value & model.mask5 & 255) == *value);
      case reg_fsr: return *value <= model.datamask;
      default: return *value <= byte_limit;
    }
  };
  at(id::entrardat).set_enabled(acceptable());
}

void Estructura::dat_KeyPress(int) {
  if (at(id::entrardat).enabled()) entrardat_Click(0);
}

void Estructura::dat_GotFocus(int) {
  at(id::dat).select_all();
}
void Estructura::FR_GotFocus(int) {
  at(id::FR).select_all();
}
void Estructura::FREC_GotFocus(int) {
  at(id::FREC).select_all();
}
void Estructura::direc_GotFocus(int) {
  at(id::direc).select_all();
}
void Estructura::INS_GotFocus(int) {
  at(id::INS).select_all();
}

void Estructura::entrardat_Click(int) {
  const int code = static_cast<int>(valdec(at(id::dirdat).tag()));
  const std::int16_t value = valhex(at(id::dat).text());
  if (code >= core_code)
    chip_.cpu[code - core_code] = value;
  else if (code < 16)
    chip_.regs[code] = value;
  else
    chip_.bankregs[code / 32 * 16 + code % 32 - 16] = value;
  at(id::entrardat).set_enabled(false);
  at(id::dirdat).set_text("");
  at(id::dat).set_text("");
  at(id::dat).set_enabled(false);
  normregs(chip_);
  runner_.regen();
}

}  // namespace estructura
