#include "ui/qt/widgets/combo_box.h"

#include <QKeyEvent>
#include <QWheelEvent>

namespace estructura {

void qt_combo_box::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

void qt_combo_box::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End: return showPopup();
    default: break;
  }
  // Letters and digits would look for an entry.
  if (event->text().isEmpty() || !event->text().front().isLetterOrNumber()) QComboBox::keyPressEvent(event);
}

}  // namespace estructura
