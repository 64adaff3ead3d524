// The desktop as Qt gives it: boxes, file dialogs, clipboard, beep, the turns of a continuous run, and the
// end.
//
//   anfitrion_qt host;
//   Estructura window(host);
//   window.Form_Load();
//   ventana shown(window);
//   host.pon_ventana(&shown);
//
// Everything is virtual: the guion runner answers boxes and dialogs itself and keeps the rest.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "ui/anfitrion.h"
#include "ui/qt/teclas.h"

namespace estructura {

class ventana;

class anfitrion_qt : public anfitrion {
 public:
  anfitrion_qt();

  /// The window that boxes stand in front of and that a run keeps alive; none at first.
  void pon_ventana(ventana* window) { window_ = window; }

  answer mensaje(box kind, std::string_view text) override;
  std::string elige_fichero(bool save, std::string_view filter, std::string_view extension,
                            std::string_view proposed) override;
  std::string portapapeles() override;
  void pon_portapapeles(std::string_view text) override;
  void pita() override;
  int cede() override;
  void rest() override;
  void termina() override;
  /// How long a run rests; what a test would wait for otherwise.
  void set_rest(std::chrono::milliseconds rest) { rest_ = rest; }

 protected:
  /// The person sees what the handler sees: whatever opens a box calls this first.
  void pon_al_dia();

 private:
  using reloj = std::chrono::steady_clock;

  ventana* window_ = nullptr;
  bool ended_ = false;
  std::chrono::milliseconds rest_;
  held_key held_;
  reloj::time_point attended_;    ///< when pending events were last handled
  reloj::time_point next_frame_;  ///< when the window is to be painted next
};

}  // namespace estructura
