#include "ui/qt/widgets/toggles.h"

#include <algorithm>

#include <QFontInfo>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

#include "ui/qt/look/colours.h"
#include "ui/qt/look/focus_frame.h"

namespace estructura {

namespace {

/// The colours of a mark: whether it can be used, and what it says while it is pointed at or held down.
void prepare_mark(QPainter& painter, const QStyleOption& option) {
  const QPalette& palette = option.palette;
  const bool usable = (option.state & QStyle::State_Enabled) != 0;
  painter.setRenderHint(QPainter::Antialiasing);
  if (!usable) {
    painter.setPen(QPen(palette.color(QPalette::Disabled, QPalette::WindowText), 1, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    return;
  }
  const bool focused = (option.state & QStyle::State_HasFocus) != 0;
  const bool pointed_at = (option.state & QStyle::State_MouseOver) != 0;
  const bool down = (option.state & QStyle::State_Sunken) != 0;
  const QColor edge = focused      ? palette.color(QPalette::WindowText)
                      : pointed_at ? palette.color(QPalette::Highlight)
                                   : strong_line(palette);
  painter.setPen(QPen(edge, focused ? 2 : 1));
  painter.setBrush(palette.color(down ? QPalette::Window : QPalette::Base));
}

QColor mark_colour(const QStyleOption& option) {
  const bool usable = (option.state & QStyle::State_Enabled) != 0;
  return option.palette.color(usable ? QPalette::Active : QPalette::Disabled, QPalette::Text);
}

/// Half a pixel in, so that a thin line falls upon whole pixels; a thick one reaches beyond the mark.
QRectF edge_of(const QRect& mark) {
  return QRectF(mark).adjusted(0.5, 0.5, -0.5, -0.5);
}

void paint_tick(QPainter& painter, const QRect& mark, const QColor& colour) {
  const QRectF room = QRectF(mark);
  const auto at = [&room](double x, double y) {
    return QPointF(room.left() + x * room.width(), room.top() + y * room.height());
  };
  painter.setPen(QPen(colour, room.width() / 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  painter.drawPolyline(QPolygonF({at(0.25, 0.52), at(0.43, 0.72), at(0.76, 0.27)}));
}

/// Around the caption, or the whole where there is none.
void paint_focus_around(QPainter& painter, const QWidget& widget, const QRect& caption) {
  paint_focus_frame(painter, widget, caption.isEmpty() ? widget.rect() : caption,
                    widget.palette().color(QPalette::Window));
}

}  // namespace

void qt_check_box::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  const QRect mark = style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this);
  painter.save();
  QStyleOptionButton shown = option;
  if (display_only) shown.state &= ~QStyle::State_Enabled;
  prepare_mark(painter, shown);
  painter.drawRect(edge_of(mark));
  if (isChecked()) paint_tick(painter, mark, mark_colour(option));
  painter.restore();
  QStyleOptionButton caption = option;
  caption.rect = style()->subElementRect(QStyle::SE_CheckBoxContents, &option, this);
  painter.drawControl(QStyle::CE_CheckBoxLabel, caption);
  if (!hasFocus()) return;
  paint_focus_around(painter, *this, style()->subElementRect(QStyle::SE_CheckBoxFocusRect, &option, this));
}

void option_button::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  const QRect mark = style()->subElementRect(QStyle::SE_RadioButtonIndicator, &option, this);
  painter.save();
  prepare_mark(painter, option);
  painter.drawEllipse(edge_of(mark));
  if (isChecked()) {
    const double inside = mark.width() / 4.0;
    painter.setPen(Qt::NoPen);
    painter.setBrush(mark_colour(option));
    painter.drawEllipse(QRectF(mark).adjusted(inside, inside, -inside, -inside));
  }
  painter.restore();
  QStyleOptionButton caption = option;
  caption.rect = style()->subElementRect(QStyle::SE_RadioButtonContents, &option, this);
  painter.drawControl(QStyle::CE_RadioButtonLabel, caption);
  if (!hasFocus()) return;
  paint_focus_around(painter, *this, style()->subElementRect(QStyle::SE_RadioButtonFocusRect, &option, this));
}

int indicator_style::pixelMetric(PixelMetric metric, const QStyleOption* option,
                                 const QWidget* widget) const {
  const int styled = QProxyStyle::pixelMetric(metric, option, widget);
  switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
      if (widget == nullptr) return styled;
      return std::max(styled, QFontInfo(widget->font()).pixelSize());
    default: return styled;
  }
}

}  // namespace estructura
