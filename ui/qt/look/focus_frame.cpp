#include "ui/qt/look/focus_frame.h"

#include <QPainter>
#include <QStyle>
#include <QWidget>

namespace estructura {

void paint_focus_frame(QPainter& painter, const QWidget& widget, const QRect& place, const QColor& ground) {
  QStyleOption option;
  option.initFrom(&widget);
  option.rect = place;
  paint_focus_frame(painter, widget, option, ground);
}

void paint_focus_frame(QPainter& painter, const QWidget& widget, const QStyleOption& option,
                       const QColor& ground) {
  QStyleOptionFocusRect focus;
  focus.QStyleOption::operator=(option);
  focus.state |= QStyle::State_KeyboardFocusChange;
  focus.backgroundColor = ground;
  widget.style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, &widget);
}

}  // namespace estructura
