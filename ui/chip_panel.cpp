#include "ui/chip_panel.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/devices.h"
#include "core/resets.h"
#include "ui/format.h"

namespace estructura {

namespace {

constexpr std::string_view run_caption = "Ejecu&tar";
constexpr std::string_view stop_caption = "&Parar";

/// Says while it lives that something is going on.
class going_on {
 public:
  explicit going_on(bool& flag) : flag_(flag) { flag_ = true; }
  ~going_on() { flag_ = false; }
  going_on(const going_on&) = delete;
  going_on& operator=(const going_on&) = delete;
  going_on(going_on&&) = delete;
  going_on& operator=(going_on&&) = delete;

 private:
  bool& flag_;
};

}  // namespace

struct chip_panel::handlers {
  static void eje1_Click(chip_panel& self, int) { self.runner_.step(); }
  static void ejecutar_Click(chip_panel& self, int) { self.ejecutar(); }
  static void por_Click(chip_panel& self, int) { self.power_on_reset(); }

  static void MCLR_Click(chip_panel& self, int) {
    mclr_reset(self.chip_);
    self.runner_.show_reset();
  }

  static void CMCLR_Click(chip_panel& self, int) {
    const bool pin_is_mclr = self.CMCLR.value();
    self.MCLR.set_enabled(pin_is_mclr);
    self.views_.pins.show_pin(3, !pin_is_mclr);
  }

  static void ciclos_DblClick(chip_panel& self, int) {
    self.chip_.cycles = 0;
    self.ciclos.set_text("0");
  }

  static void PIC_Click(chip_panel& self, int) {
    self.views_.registers.close_entry();
    // While their device is there, whose pins and oscillator they give back.
    self.views_.clocks.leave_device();
    self.CMCLR.set_value(false);
    select_device(self.chip_, device_index(self.PIC.text()));
    const bool shares_pins = self.chip_.devmodel.shares_pins;
    self.views_.clocks.show_device();
    self.CMCLR.set_visible(shares_pins);
    self.MCLR.set_enabled(!shares_pins);
    self.load();
  }

  // clang-format off
  static constexpr handler_row rows[] = {
      {id::eje1,     event::click,    act<eje1_Click>},
      {id::ejecutar, event::click,    act<ejecutar_Click>},
      {id::por,      event::click,    act<por_Click>},
      {id::MCLR,     event::click,    act<MCLR_Click>},
      {id::CMCLR,    event::click,    act<CMCLR_Click>},
      {id::ciclos,   event::dblclick, act<ciclos_DblClick>},
      {id::PIC,      event::click,    act<PIC_Click>},
  };
  // clang-format on
};

chip_panel::chip_panel(const shared_parts& shared, const chip_views& views)
    : panel(shared, handlers::rows), views_(views) {}

void chip_panel::show() {
  estsleep.show_value(chip_.sleeping);
  ciclos.set_text(ponpuntos(chip_.cycles));
}

// --- Start-up and devices ---

void chip_panel::first_start() {
  select_device(chip_, default_device);
  std::vector<std::string> names;
  names.reserve(catalogue.size());
  for (const catalogue_row& row : catalogue) names.emplace_back(row.name);
  PIC.set_rows(std::move(names));
  chip_.progmem.fill(unprogrammed);
  chip_.breakpts.fill(0);
}

void chip_panel::load() {
  const bool has_device = chip_.devmodel.progmask != 0;
  if (!has_device) first_start();
  views_.registers.show_device();
  views_.pins.show_device();
  views_.program.listaprog();
  resetchip(chip_, 1, 1, 0);
  runner_.show_reset();
  documents_.hex.modified = false;
  documents_.source.modified = false;
}

// --- Run ---

void chip_panel::ejecutar() {
  if (run_button.text() != run_caption) {
    stop_run();
    window_.bring_up_to_date();
    views_.program.read_current_line();
    return;
  }
  run_button.set_text(stop_caption);
  eje1.set_enabled(false);
  chip_.running = true;
  // Stopped and started again within one turn of the loop: that loop simply goes on.
  if (run_on_stack_) return;
  const going_on loop(run_on_stack_);
  runner_.run();
}

void chip_panel::stop_run() {
  run_button.set_text(run_caption);
  eje1.set_enabled(true);
  chip_.running = false;
}

// --- Configuration and reset ---

void chip_panel::lock_configuration() {
  views_.clocks.lock();
  CMCLR.set_enabled(false);
  PIC.set_enabled(false);
}

void chip_panel::power_on_reset() {
  CMCLR.set_enabled(true);
  PIC.set_enabled(true);
  views_.clocks.unlock();
  power_on(chip_);
  runner_.show_reset();
  views_.program.pintamapa();
}

}  // namespace estructura
