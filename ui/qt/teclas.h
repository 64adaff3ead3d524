// The function keys of the window. Each is a click on a button, with all that a click does: it moves the
// focus, and does nothing where the button cannot be used.
//
//   F5        ejecutar: run, and stop
//   F7, F8    eje1: one instruction; held down, one after the other
//   F9        break: breakpoint at the address of `direc`
//
//   pon_teclas(window);
#pragma once

namespace estructura {

class ventana;

/// For as long as the window lives. The buttons may be made anew meanwhile.
void pon_teclas(ventana& window);

}  // namespace estructura
