// The right column of the window, which keeps its size: registers and stack, data memory, ports, Timer0 and
// the chip's controls.
//
//   instrument_layout instruments(parts, panel);
//   columns->addWidget(instruments.column());
//   instruments.arrange();          // after each copy
#pragma once

#include "ui/qt/window/layout_parts.h"

class QLayout;

namespace estructura {

class form_area;

class instrument_layout {
 public:
  instrument_layout(const layout_parts& parts, form_area& panel);

  [[nodiscard]] QWidget* column() const;
  /// TRISB takes the line of TRISA on the devices that have no TRISA.
  void arrange();

 private:
  [[nodiscard]] QWidget* w(id which, int index = 0) const { return parts_.w(which, index); }
  void lay_out_registers();
  QLayout* register_table();
  QWidget* binary_cells();
  QLayout* stack_levels();
  QLayout* data_entry();
  void lay_out_ports();
  void lay_out_timer();
  void lay_out_chip();
  QLayout* run_buttons();
  QLayout* counters();
  QLayout* clock();
  QWidget* data_memory();
  QWidget* common_memory();
  QWidget* cells_beside_common_memory(QWidget* sheet);
  QLayout* indirect_cells();
  QLayout* pointer_cells();
  QWidget* banks(QHBoxLayout& numbers);

  const layout_parts& parts_;
  const panel_metrics& m_;
  form_area* column_;
  QGridLayout* tris_ = nullptr;
  bool tris_moved_up_ = false;
};

}  // namespace estructura
