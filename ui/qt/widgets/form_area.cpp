#include "ui/qt/widgets/form_area.h"

#include <QEvent>

namespace estructura {

overlay_item::overlay_item(QWidget& widget, QWidget& owner, Qt::Alignment alignment)
    : QLayoutItem(alignment), item_(&widget), widget_(widget), owner_(owner) {
  item_.setAlignment(alignment);
  widget.raise();
}

void overlay_item::setGeometry(const QRect& rect) {
  place_ = rect;
  put();
}

bool overlay_item::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Move) put();
  return QObject::eventFilter(watched, event);
}

void overlay_item::put() {
  QWidget* const form = widget_.parentWidget();
  // Layouts are made before what they belong to has its place.
  if (form == nullptr || !form->isAncestorOf(&owner_) || !place_.isValid()) return;
  if (!watching_)
    for (QWidget* moved = &owner_; moved != form; moved = moved->parentWidget())
      moved->installEventFilter(this);
  watching_ = true;
  item_.setGeometry(place_.translated(owner_.mapTo(form, QPoint())));
}

}  // namespace estructura
