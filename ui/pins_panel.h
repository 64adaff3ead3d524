// The pins: a box for each bit of each port, which shows an input as the person set it and an output as the
// chip drives it.
//
//   pins.show();                     // after a refresh: which boxes are open, and what they show
//   pins.show_pin(3, false);         // GP3 is MCLR now
#pragma once

#include <optional>

#include "ui/panel.h"

namespace estructura {

class pins_panel final : public panel {
 public:
  explicit pins_panel(const shared_parts& shared);

  /// What the boxes show after a refresh.
  void show();
  /// The ports that the device has.
  void show_device();
  /// A pin of port B that has another purpose has no box.
  void show_pin(int bit, bool visible) { PB[bit].set_visible(visible); }
  /// Whether a refresh leaves the control to the person; nothing for one that no refresh opens or closes.
  [[nodiscard]] std::optional<bool> open_after_refresh(control_place place) const;

 private:
  struct handlers;
  [[nodiscard]] bool is_input(int port, int bit) const;
  [[nodiscard]] bool gp2_is_t0cki() const;
  void show_port(const group<check_box>& boxes, int port);

  group<check_box> PA = own_group<check_box>(id::PA);
  group<check_box> PB = own_group<check_box>(id::PB);
  group<check_box> PC = own_group<check_box>(id::PC);
  group<label> lp = own_group<label>(id::lp);
};

}  // namespace estructura
