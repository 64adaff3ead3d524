#include "ui/qt/window/held_key.h"

#include <QApplication>
#include <QKeyEvent>

namespace estructura {

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
