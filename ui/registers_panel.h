// The registers and the data memory: the views, each a pure function of the machine, and the entry of one
// value by hand.
//
//   registers.show();                // after a refresh
//   registers.show_device();         // the registers that the device has, and their names
#pragma once

#include <optional>
#include <string>

#include "ui/panel.h"

namespace estructura {

class registers_panel final : public panel {
 public:
  explicit registers_panel(const shared_parts& shared);

  /// What the views show after a refresh.
  void show();
  void show_device();
  /// Nothing is edited any more.
  void close_entry();

 private:
  struct handlers;
  void show_names();
  void show_memory();
  void show_binary_views();
  void show_core_registers();
  void edit(int code, const std::string& caption, const std::string& value);
  [[nodiscard]] bool takes(const std::string& text) const;
  void enter_value();

  /// Which register the entry is about, as long as somebody has chosen one since the start:
  ///
  ///   0..15     regs
  ///   16..127   bank * 32 + address (16..31) of the banked registers
  ///   128..133  pc, w, option, trisa, trisb, trisc
  std::optional<int> edited_;

  control& MDP = own(id::MDP);
  control_group MD = own_group(id::MD);
  control& RE = own(id::RE);
  control& PIL = own(id::PIL);
  control& nomre = own(id::nomre);
  control& nombres = own(id::nombres);
  control_group dirmd = own_group(id::dirmd);
  control_group lpag = own_group(id::lpag);
  control& INDF = own(id::INDF);
  control& DIRFSR = own(id::DIRFSR);
  control& PAGFSR = own(id::PAGFSR);
  control& STATUS = own(id::STATUS);
  control& lstatus = own(id::lstatus);
  control& OPT = own(id::OPT);
  control& loption = own(id::loption);
  control& BPA = own(id::BPA);
  control& BPB = own(id::BPB);
  control& BPC = own(id::BPC);
  control& TRISA = own(id::TRISA);
  control& TRISB = own(id::TRISB);
  control& TRISC = own(id::TRISC);
  control& dirdat = own(id::dirdat);
  control& dat = own(id::dat);
  control& entrardat = own(id::entrardat);
};

}  // namespace estructura
