#include "ui/qt/widgets/push_button.h"

#include <QKeyEvent>

namespace estructura {

push_button::push_button() {
  // The Enter key presses it too, as in a dialog.
  setAutoDefault(true);
}

QSize push_button::sizeHint() const {
  const QSize styled = QPushButton::sizeHint();
  return {minimumWidth() > 0 ? minimumWidth() : styled.width(), styled.height()};
}

void push_button::keyPressEvent(QKeyEvent* event) {
  // Qt presses once more for each repeat: the key that has started a run would stop it, and the one that
  // opened a box answer it.
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && event->isAutoRepeat() && !repeats) return;
  QPushButton::keyPressEvent(event);
}

}  // namespace estructura
