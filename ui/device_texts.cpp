#include "ui/device_texts.h"

namespace estructura {

namespace {

constexpr std::array families = {
    family_texts{
        .which = family_id::f16c5x,
        .status_header = "210odZDC",
        .status_tip = "PS2-PS1-PS0-/TO-/PD-Z-D-C",
        .option_header = "--CSA210",
        .option_tip = "*-*-TOCS-TOSE-PSA-PS2-PS1-PS0",
        .status_bits = {"PS2", "PS1", "PS0", "TO", "PD", "Z", "DC", "C"},
        .register5 = "PA",
        .register6 = "PB",
        .tris6 = "TRISB",
        .ports = {"Puerto A", "Puerto B", "Puerto C"},
    },
    family_texts{
        .which = family_id::f12c50x,
        .status_header = "G-0odZDC",
        .status_tip = "GPWUF-*-PS0-/TO-/PD-Z-D-C",
        .option_header = "WPCSA210",
        .option_tip = "/GPWU-/GPPU-TOCS-TOSE-PSA-PS2-PS1-PS0",
        .status_bits = {"GPWUF", "bit 6 de STATUS", "PS0", "TO", "PD", "Z", "DC", "C"},
        .register5 = "OSCCAL",
        .register6 = "GPIO",
        .tris6 = "TRIS",
        .ports = {"Puerto A", "GPIO", "Puerto C"},
    },
};

constexpr bool rows_stand_at_their_family() {
  for (std::size_t i = 0; i < families.size(); ++i)
    if (families[i].which != static_cast<family_id>(i)) return false;
  return true;
}
static_assert(rows_stand_at_their_family());

}  // namespace

const family_texts& texts_of(const family& of) {
  return families[static_cast<std::size_t>(of.which)];
}

std::string_view register_name(const family& of, int address) {
  switch (address) {
    case reg_indf: return "INDF";
    case reg_tmr0: return "TMR0";
    case reg_pcl: return "PCL";
    case reg_status: return "STATUS";
    case reg_fsr: return "FSR";
    case reg_5: return texts_of(of).register5;
    case reg_6: return texts_of(of).register6;
    case reg_7: return "PC";
    default: return {};
  }
}

std::vector<std::string> register_names(const device& model) {
  const int last = model.hasportc ? reg_7 : reg_6;
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(last) + 1);
  for (int address = 0; address <= last; ++address) names.emplace_back(register_name(model, address));
  return names;
}

std::vector<core_row> core_rows(const device& model) {
  std::vector<core_row> rows = {{0, "PC", 3}, {1, "W", 2}, {2, "OPTION", hex_digits(model.optmask)}};
  if (model.has_port_a()) rows.push_back({3, "TRISA", hex_digits(model.mask5)});
  rows.push_back({4, texts_of(model).tris6, hex_digits(model.mask6)});
  if (model.hasportc) rows.push_back({5, "TRISC", 2});
  return rows;
}

}  // namespace estructura
