// Start-up and the change of device: what the controls show for each device, and the first consistent state.
#include <string>
#include <vector>

#include "common/text.h"
#include "core/devices.h"
#include "core/resets.h"
#include "ui/estructura.h"

namespace estructura {

void Estructura::load() {
  const bool first_start = chip_.devmodel.progmask == 0;
  if (first_start) {
    select_device(chip_, default_device);
    std::vector<std::string> names;
    names.reserve(catalogue.size());
    for (const catalogue_row& row : catalogue) names.emplace_back(row.name);
    at(id::PIC).set_rows(std::move(names));
    chip_.progmem.fill(unprogrammed);
    chip_.breakpts.fill(0);
  }
  show_device();
  listaprog();
  resetchip(chip_, 1, 1, 0);
  runner_.regen();
  show_pc();
  hex_.modified = false;
  asm_.modified = false;
}

void Estructura::show_device() {
  const device& model = chip_.devmodel;
  const bool is16c5x = model.is16c5x;
  at(id::lstatus).set_text(is16c5x ? "210odZDC" : "G-0odZDC");
  at(id::lstatus).set_tip(is16c5x ? "PS2-PS1-PS0-/TO-/PD-Z-D-C" : "GPWUF-*-PS0-/TO-/PD-Z-D-C");
  at(id::loption).set_text(is16c5x ? "--CSA210" : "WPCSA210");
  at(id::loption)
      .set_tip(is16c5x ? "*-*-TOCS-TOSE-PSA-PS2-PS1-PS0" : "/GPWU-/GPPU-TOCS-TOSE-PSA-PS2-PS1-PS0");

  std::vector<std::string> names = {"INDF", "TMR0", "PCL", "STATUS", "FSR"};
  names.emplace_back(is16c5x ? "PA" : "OSCCAL");
  names.emplace_back(is16c5x ? "PB" : "GPIO");
  if (model.hasportc) names.emplace_back("PC");
  at(id::nombres).set_rows(std::move(names));

  std::vector<std::string> core_names = {"PC", "W", "OPTION"};
  if (is16c5x) core_names.emplace_back("TRISA");
  core_names.emplace_back(is16c5x ? "TRISB" : "TRIS");
  if (model.hasportc) core_names.emplace_back("TRISC");
  at(id::nomre).set_rows(std::move(core_names));

  for (int half = 0; half < 2; ++half) {
    std::vector<std::string> addresses;
    addresses.reserve(16);
    for (int i = 0; i < 16; ++i) addresses.push_back(hexstr(half * 16 + i, 2));
    at(id::dirmd, half).set_rows(std::move(addresses));
  }

  for (int i = 0; i < 8; ++i) at(id::PC, i).set_visible(model.hasportc);
  at(id::lp, 2).set_visible(model.hasportc);
  at(id::BPC).set_visible(model.hasportc);
  at(id::TRISC).set_visible(model.hasportc);
  at(id::PB, 6).set_visible(is16c5x);
  at(id::PB, 7).set_visible(is16c5x);
  at(id::lp, 0).set_visible(is16c5x);
  for (int i = 0; i < 4; ++i) at(id::PA, i).set_visible(is16c5x);
  at(id::BPA).set_visible(is16c5x);
  at(id::TRISA).set_visible(is16c5x);
  at(id::lp, 1).set_text(is16c5x ? "PB" : "GPIO");

  const int banks = model.datamask >= 127 ? 4 : model.datamask >= 63 ? 2 : 1;
  at(id::PAGFSR).set_visible(banks > 1);
  for (int b = 1; b < 4; ++b) {
    at(id::MD, b).set_visible(b < banks);
    at(id::lpag, b).set_visible(b < banks);
  }
}

void Estructura::PIC_Click(int) {
  const control& list = at(id::PIC);
  int row = 0;
  while (row < list.count() && list.rows()[static_cast<std::size_t>(row)] != list.text()) ++row;
  at(id::dat).set_text("");
  at(id::dirdat).set_text("");
  select_device(chip_, row);
  const bool is16c5x = chip_.devmodel.is16c5x;
  for (const id box : {id::fext, id::CMCLR}) {
    at(box).set_visible(!is16c5x);
    at(box).set_value(false);
  }
  at(id::MCLR).set_enabled(is16c5x);
  at(id::FREC).set_enabled(is16c5x);
  if (is16c5x)
    at(id::PB, 2).set_visible(true);
  else
    at(id::FREC).set_text("4000");
  load();
}

void Estructura::sl_Click(int) {
  const bool shows_source = at(id::sl, 0).value();
  at(id::source).set_visible(shows_source);
  at(id::clip).set_visible(shows_source);
  at(id::lst).set_visible(!shows_source);
}

}  // namespace estructura
