#include "ui/qt/speech/accessible_events.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QLineEdit>
#include <QVariant>
#include <QWidget>

namespace estructura {

namespace {

constexpr const char* held_back = "stateHeldBack";

bool is_of_lines(QAccessible::Event type) {
  switch (type) {
    case QAccessible::Focus:
    case QAccessible::Selection:
    case QAccessible::SelectionAdd:
    case QAccessible::SelectionRemove:
    case QAccessible::SelectionWithin:
    case QAccessible::ActiveDescendantChanged: return true;
    default: return false;
  }
}

bool is_of_text(QAccessible::Event type) {
  switch (type) {
    case QAccessible::TextInserted:
    case QAccessible::TextRemoved:
    case QAccessible::TextUpdated:
    case QAccessible::TextCaretMoved:
    case QAccessible::TextSelectionChanged:
    case QAccessible::ValueChanged: return true;
    default: return false;
  }
}

bool shows_a_run(const QWidget& widget) {
  const auto* const window = dynamic_cast<const run_display*>(widget.window());
  return window != nullptr && window->shows_a_run();
}

void handle(QAccessibleEvent* event) {
  if (!is_told(*event)) return;
  // Without a handler Qt tells it.
  QAccessible::installUpdateHandler(nullptr);
  QAccessible::updateAccessibility(event);
  QAccessible::installUpdateHandler(handle);
}

}  // namespace

bool is_told(const QAccessibleEvent& event) {
  auto* const widget = qobject_cast<QWidget*>(event.object());
  if (widget == nullptr) return true;
  const bool run = shows_a_run(*widget);
  if (!run && widget->hasFocus()) return true;
  if (is_of_lines(event.type()) && qobject_cast<QAbstractItemView*>(widget) != nullptr) return false;
  if (is_of_text(event.type()) && qobject_cast<QLineEdit*>(widget) != nullptr) return false;
  if (event.type() != QAccessible::StateChanged || !run) return true;
  widget->setProperty(held_back, true);
  return false;
}

void install_accessible_events() {
  QAccessible::installUpdateHandler(handle);
}

void say_held_back(QWidget& widget) {
  if (!widget.property(held_back).toBool()) return;
  widget.setProperty(held_back, QVariant());
  QAccessible::State changed;
  changed.checked = true;
  changed.disabled = true;
  QAccessibleStateChangeEvent event(&widget, changed);
  QAccessible::updateAccessibility(&event);
}

}  // namespace estructura
