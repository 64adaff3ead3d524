// The driver of the window without a toolkit: acts through its door and reads its records.
//
//   escritorio desk;
//   conductor_libre driver(desk);       // the window, just after its load event
//   driver.click(lugar_de("eje1"));
#pragma once

#include "guion/conductor.h"
#include "guion/escritorio.h"

namespace estructura::guiones {

class conductor_libre final : public in_process_conductor {
 public:
  explicit conductor_libre(escritorio& desk);

  Estructura& window() override { return window_; }

  void click(const lugar& place) override;
  void click_text(const lugar& place, int caret) override;
  void keyup_text(const lugar& place, int caret) override;
  void dblclick(const lugar& place) override;
  void click_row(const lugar& place, int row, bool control_held) override;
  void dblclick_row(const lugar& place, int row) override;
  void pick(const lugar& place, int entry) override;
  void type(const lugar& place, std::string_view text) override;
  void select(const lugar& place, int start, int length) override;
  void enter(const lugar& place) override;
  void focus(const lugar& place) override;
  void press_map(double y) override;
  void close() override;
  void set_clipboard(std::string_view text) override;

  bool usable(const lugar& place) override;
  aspecto look(const lugar& place) override;
  map_view look_map() override;
  std::string focused() override;
  std::string clipboard() override;

 private:
  class host : public anfitrion_guiado<anfitrion> {
   public:
    using anfitrion_guiado::anfitrion_guiado;
    std::string portapapeles() override { return desk().clipboard; }
    void pon_portapapeles(std::string_view text) override { desk().clipboard = text; }
  };

  escritorio& desk_;
  host host_;
  Estructura window_;
};

}  // namespace estructura::guiones
