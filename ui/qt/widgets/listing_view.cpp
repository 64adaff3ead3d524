#include "ui/qt/widgets/listing_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

namespace estructura {

bool listing_view::event(QEvent* event) {
  // Told before a shortcut takes the key: its press is not seen here, its release is.
  if (event->type() == QEvent::ShortcutOverride) note(static_cast<const QKeyEvent&>(*event));
  return QPlainTextEdit::event(event);
}

void listing_view::mouseReleaseEvent(QMouseEvent* event) {
  QPlainTextEdit::mouseReleaseEvent(event);
  if (event->button() == Qt::LeftButton && clicked) clicked();
}

void listing_view::keyPressEvent(QKeyEvent* event) {
  note(*event);
  QPlainTextEdit::keyPressEvent(event);
}

void listing_view::keyReleaseEvent(QKeyEvent* event) {
  QPlainTextEdit::keyReleaseEvent(event);
  const bool chord = is_command(*event) || chords_.contains(event->key());
  if (!event->isAutoRepeat()) chords_.remove(event->key());
  if (!chord && key_released) key_released();
}

void listing_view::focusOutEvent(QFocusEvent* event) {
  chords_.clear();
  QPlainTextEdit::focusOutEvent(event);
}

void listing_view::wheelEvent(QWheelEvent* event) {
  // With Ctrl, Qt makes the letters of a read-only text larger, but not the stops of its tabs.
  if ((event->modifiers() & Qt::ControlModifier) == 0) QPlainTextEdit::wheelEvent(event);
}

/// A key that is a command and no walk through the listing: a function key, one with Ctrl or Alt held, and
/// those that are held themselves.
bool listing_view::is_command(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock: return true;
    default: break;
  }
  if (event.key() >= Qt::Key_F1 && event.key() <= Qt::Key_F35) return true;
  return (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
}

void listing_view::note(const QKeyEvent& event) {
  if (is_command(event))
    chords_.insert(event.key());
  else
    chords_.remove(event.key());
}

}  // namespace estructura
