// The function keys of the window. Each is a click on a button, with all that a click does: it moves the
// focus, and does nothing where the button cannot be used.
//
//   F5        ejecutar: run, and stop
//   F7, F8    eje1: one instruction; held down, one after the other
//   F9        break: breakpoint at the address of `direc`
//
//   add_shortcuts(window);
//
// And the key that has closed a box, which goes on in the window until it is released.
#pragma once

#include <QObject>

namespace estructura {

class main_window;

/// For as long as the window lives. The buttons may be made anew meanwhile.
void add_shortcuts(main_window& window);

/// The key that closed a box and is held down goes on sending presses to whatever has the focus behind it:
/// they would press the run button, or break lines in the source. Until it is released, or another is
/// pressed, they reach boxes only.
class held_key final : public QObject {
 public:
  void box_closed();
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace estructura
