#include "ui/registers_panel.h"

#include <cmath>
#include <string_view>
#include <utility>
#include <vector>

#include "common/number.h"
#include "common/text.h"
#include "core/data_memory.h"
#include "ui/device_texts.h"
#include "ui/format.h"

namespace estructura {

namespace {

constexpr int first_core_code = 128;
constexpr int first_banked_code = 16;

std::string last(const std::string& text, std::size_t count) {
  return text.size() <= count ? text : text.substr(text.size() - count);
}

// The implemented bits of a register in binary behind dashes, `dashes` of them at the most, in 8 characters.
std::string masked_binary(std::string_view dashes, int mask, int value) {
  const auto bits = mask > 0 ? static_cast<std::size_t>(std::lround(std::log2(mask))) : 0;
  return last(std::string(dashes) + last(binstr(value), bits), 8);
}

std::string common_register_name(const device& model, int address) {
  const std::string_view name = address == reg_indf ? std::string_view() : register_name(model, address);
  return name.empty() ? hexstr(address, 2) : std::string(name);
}

}  // namespace

struct registers_panel::handlers {
  static void MDP_Click(registers_panel& self, int) {
    const int k = self.MDP.row();
    const device& model = self.chip_.devmodel;
    const int digits = k == reg_5 ? hex_digits(model.mask5) : 2;
    self.edit(k, common_register_name(model, k), hexstr(self.chip_.regs[k], digits));
  }

  static void MD_Click(registers_panel& self, int bank) {
    const int k = self.MD[bank].row();
    const int code = bank * 32 + k + 16;
    const std::string caption = hexstr(k + 16, 2) + "." + hexstr(bank, 1) + " (" + hexstr(code, 2) + ")";
    self.edit(code, caption, hexstr(self.chip_.bankregs[bank * 16 + k], 2));
  }

  static void RE_Click(registers_panel& self, int) {
    const core_row row = core_rows(self.chip_.devmodel)[static_cast<std::size_t>(self.RE.row())];
    self.edit(first_core_code + row.place, std::string(row.name),
              hexstr(self.chip_.cpu[row.place], row.digits));
  }

  // Without a selection a later click on the same line counts again.
  static void MDP_LostFocus(registers_panel& self, int) { self.MDP.choose_row(-1); }
  static void MD_LostFocus(registers_panel& self, int bank) { self.MD[bank].choose_row(-1); }
  static void RE_LostFocus(registers_panel& self, int) { self.RE.choose_row(-1); }

  static void dirdat_Change(registers_panel& self, int) { self.dat.set_enabled(!self.dirdat.text().empty()); }

  static void dat_GotFocus(registers_panel& self, int) { self.dat.select_all(); }

  static void dat_Change(registers_panel& self, int) {
    if (self.dat.text().find("\r\n") != std::string::npos) {
      self.dat.set_text("");
      return;
    }
    self.entrardat.set_enabled(self.takes(self.dat.text()));
  }

  static void dat_KeyPress(registers_panel& self, int) {
    if (self.entrardat.enabled()) self.enter_value();
  }

  static void entrardat_Click(registers_panel& self, int) { self.enter_value(); }

  // clang-format off
  static constexpr handler_row rows[] = {
      {id::MDP,       event::click,     act<MDP_Click>},
      {id::MDP,       event::lostfocus, act<MDP_LostFocus>},
      {id::MD,        event::click,     act<MD_Click>},
      {id::MD,        event::lostfocus, act<MD_LostFocus>},
      {id::RE,        event::click,     act<RE_Click>},
      {id::RE,        event::lostfocus, act<RE_LostFocus>},
      {id::dirdat,    event::change,    act<dirdat_Change>},
      {id::dat,       event::gotfocus,  act<dat_GotFocus>},
      {id::dat,       event::change,    act<dat_Change>},
      {id::dat,       event::enter,     act<dat_KeyPress>},
      {id::entrardat, event::click,     act<entrardat_Click>},
  };
  // clang-format on
};

registers_panel::registers_panel(const shared_parts& shared) : panel(shared, handlers::rows) {}

// --- The device ---

void registers_panel::show_device() {
  show_names();
  for (int half = 0; half < dirmd.count(); ++half) {
    std::vector<std::string> addresses;
    addresses.reserve(16);
    for (int i = 0; i < 16; ++i) addresses.push_back(hexstr(half * 16 + i, 2));
    dirmd[half].set_rows(std::move(addresses));
  }

  const device& model = chip_.devmodel;
  BPA.set_visible(model.has_port_a());
  TRISA.set_visible(model.has_port_a());
  BPC.set_visible(model.hasportc);
  TRISC.set_visible(model.hasportc);

  const int banks = bank_count(model);
  PAGFSR.set_visible(banks > 1);
  for (int b = 1; b < MD.count(); ++b) {
    MD[b].set_visible(b < banks);
    lpag[b].set_visible(b < banks);
  }
}

void registers_panel::show_names() {
  const device& model = chip_.devmodel;
  const family_texts& texts = texts_of(model);
  lstatus.set_text(texts.status_header);
  lstatus.set_tip(texts.status_tip);
  loption.set_text(texts.option_header);
  loption.set_tip(texts.option_tip);
  nombres.set_rows(register_names(model));

  std::vector<std::string> core_names;
  for (const core_row& row : core_rows(model)) core_names.emplace_back(row.name);
  nomre.set_rows(std::move(core_names));
}

// --- The views ---

void registers_panel::show() {
  show_memory();
  show_binary_views();
  show_core_registers();
}

void registers_panel::show_memory() {
  const auto& regs = chip_.regs;
  std::vector<std::string> common;
  common.reserve(16);
  for (int i = 0; i < 16; ++i) common.push_back(hexstr(regs[i], 2));
  common[reg_indf] = "**";
  if (hex_digits(chip_.devmodel.mask5) == 1) common[reg_5] = "-" + hexstr(regs[reg_5], 1);
  MDP.set_rows(std::move(common));

  const int bank = fsrbank(chip_);
  for (int b = 0; b < MD.count(); ++b) {
    std::vector<std::string> lines;
    lines.reserve(16);
    for (int i = 0; i < 16; ++i) lines.push_back(hexstr(chip_.bankregs[b * 16 + i], 2));
    MD[b].set_rows(std::move(lines));
    MD[b].set_face_background(b != bank);
  }

  const int a = regs[reg_fsr] & 31;
  INDF.set_text(hexstr(a >= 16 ? chip_.bankregs[bank * 16 + a - 16] : regs[a], 2));
  DIRFSR.set_text(hexstr(a, 2));
  PAGFSR.set_text(hexstr(bank, 1));
}

void registers_panel::show_binary_views() {
  const device& model = chip_.devmodel;
  const auto& regs = chip_.regs;
  STATUS.set_text(binstr(regs[reg_status]));
  OPT.set_text(masked_binary("--", model.optmask, chip_.cpu.option));
  BPA.set_text("----" + last(binstr(regs[reg_5]), 4));
  BPB.set_text(masked_binary("----", model.mask6, regs[reg_6]));
  BPC.set_text(binstr(regs[reg_7]));
  TRISA.set_text("----" + last(binstr(chip_.cpu.trisa), 4));
  TRISB.set_text(masked_binary("----", model.mask6, chip_.cpu.trisb));
  TRISC.set_text(binstr(chip_.cpu.trisc));
}

void registers_panel::show_core_registers() {
  std::vector<std::string> lines;
  // Blank and dash keep one digit and two right-aligned under the three of PC.
  for (const core_row& row : core_rows(chip_.devmodel))
    lines.push_back(std::string(" -", static_cast<std::size_t>(3 - row.digits)) +
                    hexstr(chip_.cpu[row.place], row.digits));
  RE.set_rows(std::move(lines));
  PIL.set_rows({hexstr(chip_.stack[0], 3), hexstr(chip_.stack[1], 3)});
}

// --- Editing ---

void registers_panel::edit(int code, const std::string& caption, const std::string& value) {
  edited_ = code;
  // For whoever looks; the panel itself goes by the number.
  dirdat.set_tag(std::to_string(code));
  dirdat.set_text(caption);
  dat.set_text(value);
  entrardat.set_enabled(true);
  window_.move_focus({id::dat, 0});
}

bool registers_panel::takes(const std::string& text) const {
  if (!edited_ || text.empty() || !ishex(text)) return false;
  const auto value = valhex_checked(text);
  if (!value || *value < 0) return false;
  const device& model = chip_.devmodel;
  constexpr int byte_limit = 255;
  switch (*edited_) {
    case first_core_code: return *value <= model.progmask;
    case first_core_code + 2: return *value <= model.optmask;
    case first_core_code + 3: return *value <= model.mask5;
    case first_core_code + 4: return *value <= model.mask6;
    // What OSCCAL lacks are its low bits.
    case reg_5: return (*value & model.mask5) == *value;
    case reg_fsr: return *value <= model.datamask;
    default: return *value <= byte_limit;
  }
}

void registers_panel::enter_value() {
  if (!edited_) return;
  const int code = *edited_;
  const std::int16_t value = valhex(dat.text());
  if (code >= first_core_code)
    chip_.cpu[code - first_core_code] = value;
  else if (code < first_banked_code)
    chip_.regs[code] = value;
  else
    chip_.bankregs[code / 32 * 16 + code % 32 - 16] = value;
  entrardat.set_enabled(false);
  close_entry();
  dat.set_enabled(false);
  normregs(chip_);
  runner_.regen();
}

void registers_panel::close_entry() {
  edited_.reset();
  dirdat.set_text("");
  dat.set_text("");
}

}  // namespace estructura
