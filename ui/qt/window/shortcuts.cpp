#include "ui/qt/window/shortcuts.h"

#include <QApplication>
#include <QKeyEvent>
#include <QShortcut>

#include "ui/qt/window/main_window.h"

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

void add_shortcuts(main_window& window) {
  for (const function_key& one : function_keys) {
    auto* const shortcut = new QShortcut(QKeySequence(one.key), &window);
    shortcut->setAutoRepeat(one.repeats);
    QObject::connect(shortcut, &QShortcut::activated, &window,
                     [&window, button = one.button] { window.press(button); });
  }
}

void held_key::box_closed() {
  // Installed once, however often.
  qApp->installEventFilter(this);
}

bool held_key::eventFilter(QObject* watched, QEvent* event) {
  const bool press = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
  if (!press && event->type() != QEvent::KeyRelease) return QObject::eventFilter(watched, event);
  auto& key = static_cast<QKeyEvent&>(*event);
  if (!key.isAutoRepeat()) {
    // A key of its own, or the end of the held one.
    qApp->removeEventFilter(this);
    return false;
  }
  if (QApplication::activeModalWidget() != nullptr) return false;
  // Accepted, it is not looked up among the shortcuts either.
  key.accept();
  return true;
}

}  // namespace estructura
