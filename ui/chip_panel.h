// The chip: step and run, its resets, and which device it is.
//
//   chip.load();                     // the first consistent state, of the window or of another device
//   chip.ejecutar();                 // the run button, as a breakpoint presses it
//   chip.power_on_reset();           // another program: it starts at its beginning
#pragma once

#include "ui/clocks_panel.h"
#include "ui/panel.h"
#include "ui/pins_panel.h"
#include "ui/program_panel.h"
#include "ui/registers_panel.h"

namespace estructura {

/// What a change of device and a reset show beyond this panel.
struct chip_views {
  registers_panel& registers;
  clocks_panel& clocks;
  pins_panel& pins;
  program_panel& program;
};

class chip_panel final : public panel {
 public:
  chip_panel(const shared_parts& shared, const chip_views& views);

  /// What the views show after a refresh.
  void show();
  /// The start of the window, and of every other device after it.
  void load();
  /// The run button: starts a run and stays in it until it ends, or stops the one that there is.
  void ejecutar();
  void stop_run();
  void power_on_reset();
  /// The first step: the configuration stands until power-on.
  void lock_configuration();

 private:
  struct handlers;
  void first_start();

  chip_views views_;
  bool run_on_stack_ = false;
  button& eje1 = own<button>(id::eje1);
  button& run_button = own<button>(id::ejecutar);
  button& MCLR = own<button>(id::MCLR);
  check_box& CMCLR = own<check_box>(id::CMCLR);
  label& ciclos = own<label>(id::ciclos);
  check_box& estsleep = own<check_box>(id::estsleep);
  combo_box& PIC = own<combo_box>(id::PIC);
};

}  // namespace estructura
