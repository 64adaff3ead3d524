// The frame around what has the focus: always shown, whether the focus came by a key or by the mouse.
//
//   paint_focus_frame(painter, *this, rect(), palette().color(QPalette::Base));
#pragma once

#include <QColor>
#include <QRect>
#include <QStyleOption>

class QPainter;
class QWidget;

namespace estructura {

/// Around a part of a widget; `ground` is what it is painted upon.
void paint_focus_frame(QPainter& painter, const QWidget& widget, const QRect& place, const QColor& ground);
/// Around what an option of a style describes.
void paint_focus_frame(QPainter& painter, const QWidget& widget, const QStyleOption& option,
                       const QColor& ground);

}  // namespace estructura
