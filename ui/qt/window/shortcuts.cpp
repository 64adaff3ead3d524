#include "ui/qt/window/shortcuts.h"

#include <QShortcut>
#include <QWidget>

namespace estructura {

namespace {

struct function_key {
  Qt::Key key;
  id button;
  /// Whether a key held down goes on clicking. A run would be stopped by the key that has started it.
  bool repeats;
};

constexpr function_key function_keys[] = {
    {Qt::Key_F5, id::ejecutar, false},
    {Qt::Key_F7, id::eje1, true},
    {Qt::Key_F8, id::eje1, true},
    {Qt::Key_F9, id::break_, false},
};

}  // namespace

void add_shortcuts(QWidget& window, const std::function<void(id button)>& press) {
  for (const function_key& one : function_keys) {
    auto* const shortcut = new QShortcut(QKeySequence(one.key), &window);
    shortcut->setAutoRepeat(one.repeats);
    QObject::connect(shortcut, &QShortcut::activated, &window,
                     [press, button = one.button] { press(button); });
  }
}

}  // namespace estructura
