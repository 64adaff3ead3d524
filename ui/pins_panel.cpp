#include "ui/pins_panel.h"

#include "core/data_memory.h"
#include "ui/device_texts.h"

namespace estructura {

struct pins_panel::handlers {
  static void PA_Click(pins_panel& self, int bit) { self.runner_.pin_click(0, bit, self.PA[bit].value()); }
  static void PB_Click(pins_panel& self, int bit) { self.runner_.pin_click(1, bit, self.PB[bit].value()); }
  static void PC_Click(pins_panel& self, int bit) { self.runner_.pin_click(2, bit, self.PC[bit].value()); }

  // clang-format off
  static constexpr handler_row rows[] = {
      {id::PA, event::click, act<PA_Click>},
      {id::PB, event::click, act<PB_Click>},
      {id::PC, event::click, act<PC_Click>},
  };
  // clang-format on
};

pins_panel::pins_panel(const shared_parts& shared) : panel(shared, handlers::rows) {}

bool pins_panel::is_input(int port, int bit) const {
  const core_registers& cpu = chip_.cpu;
  return getbit(port == 0 ? cpu.trisa : port == 1 ? cpu.trisb : cpu.trisc, bit) == 1;
}

// Where T0CKI has no pin of its own it is that of GP2 while the timer counts edges.
bool pins_panel::gp2_is_t0cki() const {
  return getbit(chip_.cpu.option, option_t0cs) != 0 && chip_.devmodel.shares_pins;
}

std::optional<bool> pins_panel::open_after_refresh(control_place place) const {
  switch (place.which) {
    case id::PA: return is_input(0, place.index);
    case id::PB: return is_input(1, place.index) && !(place.index == 2 && gp2_is_t0cki());
    case id::PC: return is_input(2, place.index);
    default: return std::nullopt;
  }
}

void pins_panel::show() {
  PB[2].set_visible(!gp2_is_t0cki());
  if (chip_.devmodel.has_port_a()) show_port(PA, 0);
  show_port(PB, 1);
  if (chip_.devmodel.hasportc) show_port(PC, 2);
}

void pins_panel::show_port(const group<check_box>& boxes, int port) {
  const int pins = in_.pin_boxes[port];
  for (int bit = 0; bit < boxes.count(); ++bit) {
    boxes[bit].set_enabled(is_input(port, bit));
    boxes[bit].show_value(getbit(pins, bit) == 1);
  }
}

void pins_panel::show_device() {
  const device& model = chip_.devmodel;
  for (int bit = 0; bit < PC.count(); ++bit) PC[bit].set_visible(model.hasportc);
  lp[2].set_visible(model.hasportc);
  for (const int bit : {6, 7}) PB[bit].set_visible(getbit(model.mask6, bit) != 0);
  lp[0].set_visible(model.has_port_a());
  for (int bit = 0; bit < PA.count(); ++bit) PA[bit].set_visible(getbit(model.port_a_pins, bit) != 0);
  lp[1].set_text(texts_of(model).register6);
}

}  // namespace estructura
