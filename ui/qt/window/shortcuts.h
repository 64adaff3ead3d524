// The function keys of the window. Each is a click on a button that leaves the focus where it is, unless the
// action closes what has it, and does nothing where the button cannot be used.
//
//   F5        ejecutar: run, and stop
//   F7, F8    eje1: one instruction; held down, one after the other
//   F9        break: breakpoint at the address of `direc`
//
//   add_shortcuts(window, [&](id button) { window.press(button); });
#pragma once

#include <functional>

#include "ui/inventory.h"

class QWidget;

namespace estructura {

/// For as long as the window lives. The buttons may be made anew meanwhile.
void add_shortcuts(QWidget& window, const std::function<void(id button)>& press);

}  // namespace estructura
