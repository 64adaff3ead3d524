#include "ui/qt/widgets/entry_line.h"

#include <QEvent>
#include <QMouseEvent>

namespace estructura {

entry_line::entry_line() {
  show_selection(false);
}

bool entry_line::event(QEvent* event) {
  // When the window becomes active again QLineEdit drops the selection of a box without the focus; what is
  // selected is for the window to say.
  // NOLINTNEXTLINE(bugprone-parent-virtual-call)
  return event->type() == QEvent::WindowActivate ? QWidget::event(event) : QLineEdit::event(event);
}

void entry_line::focusInEvent(QFocusEvent* event) {
  // With the Tab key's reason QLineEdit would select all by itself; that is for the window to say.
  QFocusEvent plain(QEvent::FocusIn, Qt::OtherFocusReason);
  QLineEdit::focusInEvent(&plain);
  by_mouse_ = event->reason() == Qt::MouseFocusReason;
  show_selection(true);
}

void entry_line::focusOutEvent(QFocusEvent*) {
  // For this reason alone QLineEdit keeps what is selected.
  QFocusEvent keeping(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
  QLineEdit::focusOutEvent(&keeping);
  show_selection(false);
}

void entry_line::mousePressEvent(QMouseEvent* event) {
  // The click that brings the focus selects the whole text where the window says so; it does not undo that.
  const bool keep = by_mouse_ && hasSelectedText();
  by_mouse_ = false;
  if (keep) return;
  QLineEdit::mousePressEvent(event);
}

void entry_line::changeEvent(QEvent* event) {
  QLineEdit::changeEvent(event);
  // Hiding the selection changes the palette too.
  const QPalette& now = palette();
  const bool hidden = now.color(QPalette::HighlightedText) == now.color(QPalette::Text);
  if (event->type() == QEvent::PaletteChange && !hasFocus() && !hidden) show_selection(false);
}

void entry_line::show_selection(bool shown) {
  if (shown) {
    setPalette({});
    return;
  }
  QPalette hidden;
  hidden.setColor(QPalette::Highlight, Qt::transparent);
  hidden.setColor(QPalette::Active, QPalette::HighlightedText,
                  palette().color(QPalette::Active, QPalette::Text));
  hidden.setColor(QPalette::Inactive, QPalette::HighlightedText,
                  palette().color(QPalette::Active, QPalette::Text));
  hidden.setColor(QPalette::Disabled, QPalette::HighlightedText,
                  palette().color(QPalette::Disabled, QPalette::Text));
  setPalette(hidden);
}

}  // namespace estructura
