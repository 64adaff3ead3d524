// The driver of the window without a toolkit: acts through its door and reads its records.
//
//   scripted_desktop desk;
//   toolkit_free_driver driver(desk);       // the window, just after its load event
//   driver.click(place_of("eje1"));
#pragma once

#include "guion/scripted_desktop.h"
#include "guion/window_driver.h"

namespace estructura::guiones {

class toolkit_free_driver final : public in_process_driver {
 public:
  explicit toolkit_free_driver(scripted_desktop& desk);

  Estructura& window() override { return window_; }

  void click(const script_place& place) override;
  void click_text(const script_place& place, int caret) override;
  void keyup_text(const script_place& place, int caret) override;
  void dblclick(const script_place& place) override;
  void click_row(const script_place& place, int row, bool control_held) override;
  void dblclick_row(const script_place& place, int row) override;
  void pick(const script_place& place, int entry) override;
  void type(const script_place& place, std::string_view text) override;
  void select(const script_place& place, int start, int length) override;
  void enter(const script_place& place) override;
  void focus(const script_place& place) override;
  void press_map(double y) override;
  void close() override;
  void set_clipboard(std::string_view text) override;

  bool usable(const script_place& place) override;
  appearance look(const script_place& place) override;
  map_view look_map() override;
  std::string focused() override;
  std::string clipboard() override;

 private:
  class host : public scripted_host<window_host> {
   public:
    using scripted_host::scripted_host;
    std::string clipboard_text() override { return desk().clipboard; }
    void set_clipboard_text(std::string_view text) override { desk().clipboard = text; }
  };

  scripted_desktop& desk_;
  host host_;
  Estructura window_;
};

}  // namespace estructura::guiones
