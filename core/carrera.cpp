#include "core/carrera.h"

#include "core/step_inline.h"

namespace estructura {

void ejecuta(chipstate& chip, pantalla& view) {
  int free_turns = 0;
  for (;;) {
    if (chip.breakpts[chip.cpu.pc] == 1 && !chip.resumebp) [[unlikely]] {
      chip.resumebp = true;
      view.click_ejecutar();
      return;
    }
    detail::step(chip, view);
    // The window said how many turns it does not need; only then is it asked again.
    if (--free_turns <= 0) free_turns = view.cede();
    if (!chip.running) return;
  }
}

}  // namespace estructura
