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

  /// Which register the entry is about, while there is one:
  ///
  ///   0..15     regs
  ///   16..127   bank * 32 + address (16..31) of the banked registers
  ///   128..133  pc, w, option, trisa, trisb, trisc
  std::optional<int> edited_;

  list_box& MDP = own<list_box>(id::MDP);
  group<list_box> MD = own_group<list_box>(id::MD);
  list_box& RE = own<list_box>(id::RE);
  list_box& PIL = own<list_box>(id::PIL);
  list_box& nomre = own<list_box>(id::nomre);
  list_box& nombres = own<list_box>(id::nombres);
  group<list_box> dirmd = own_group<list_box>(id::dirmd);
  group<label> lpag = own_group<label>(id::lpag);
  label& INDF = own<label>(id::INDF);
  label& DIRFSR = own<label>(id::DIRFSR);
  label& PAGFSR = own<label>(id::PAGFSR);
  label& STATUS = own<label>(id::STATUS);
  label& lstatus = own<label>(id::lstatus);
  label& OPT = own<label>(id::OPT);
  label& loption = own<label>(id::loption);
  label& BPA = own<label>(id::BPA);
  label& BPB = own<label>(id::BPB);
  label& BPC = own<label>(id::BPC);
  label& TRISA = own<label>(id::TRISA);
  label& TRISB = own<label>(id::TRISB);
  label& TRISC = own<label>(id::TRISC);
  label& dirdat = own<label>(id::dirdat);
  text_box& dat = own<text_box>(id::dat);
  button& entrardat = own<button>(id::entrardat);
};

}  // namespace estructura
