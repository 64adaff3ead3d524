#include "ui/qt/teclas.h"

#include <QShortcut>

#include "ui/qt/ventana.h"

namespace estructura {

namespace {

struct tecla {
  Qt::Key key;
  id button;
  /// Whether a key held down goes on clicking. A run would be stopped by the key that has started it.
  bool repeats;
};

constexpr tecla teclas[] = {
    {Qt::Key_F5, id::ejecutar, false},
    {Qt::Key_F7, id::eje1, true},
    {Qt::Key_F8, id::eje1, true},
    {Qt::Key_F9, id::break_, false},
};

}  // namespace

void pon_teclas(ventana& window) {
  for (const tecla& one : teclas) {
    auto* const shortcut = new QShortcut(QKeySequence(one.key), &window);
    shortcut->setAutoRepeat(one.repeats);
    QObject::connect(shortcut, &QShortcut::activated, &window,
                     [&window, button = one.button] { window.pulsa(button); });
  }
}

}  // namespace estructura
