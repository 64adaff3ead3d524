#include "ui/qt/mapa.h"

#include <algorithm>
#include <cmath>

#include <QMouseEvent>
#include <QPainter>

namespace estructura {

namespace {

constexpr Qt::GlobalColor colour_of(map_colour colour) {
  return colour == map_colour::yellow ? Qt::yellow : Qt::blue;
}

}  // namespace

mapa_qt::mapa_qt() {
  setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  setCursor(Qt::PointingHandCursor);
}

QSize mapa_qt::sizeHint() const {
  const int width = 4 * fontMetrics().horizontalAdvance(QLatin1Char('0'));
  return {width, 4 * width};
}

void mapa_qt::pon(const map_view& view) {
  if (view.changes == view_.changes && view.scale == view_.scale) return;
  view_ = view;
  update();
}

double mapa_qt::altura(double row) const {
  const QRect area = contentsRect();
  return area.top() + row * area.height() / std::max(view_.scale, 1);
}

double mapa_qt::fila_en(double height) const {
  const QRect area = contentsRect();
  return (height - area.top()) * view_.scale / std::max(area.height(), 1);
}

void mapa_qt::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const QRect area = contentsRect();
  // Neither light nor dark, so that yellow, blue and red are all seen on it.
  painter.fillRect(area, palette().color(QPalette::Mid));
  if (view_.scale > 0) {
    // In steps of the screen's own pixels, of which there may be several to a unit of the widget.
    const double pixel = 1 / devicePixelRatioF();
    const double half = area.width() / 2.0;
    const int pixels = static_cast<int>(std::lround(area.height() / pixel));
    std::vector<map_colour> column(static_cast<std::size_t>(pixels), map_colour::none);
    for (int row = 0; row < std::min(view_.scale, program_words); ++row) {
      const map_colour colour = view_.rows[row];
      if (colour == map_colour::none) continue;
      const int from = row * pixels / view_.scale;
      const int to = std::max(from + 1, (row + 1) * pixels / view_.scale);
      for (int y = from; y < std::min(to, pixels); ++y)
        column[static_cast<std::size_t>(y)] = std::max(column[static_cast<std::size_t>(y)], colour);
    }
    for (int from = 0; from < pixels;) {
      const map_colour colour = column[static_cast<std::size_t>(from)];
      int to = from + 1;
      while (to < pixels && column[static_cast<std::size_t>(to)] == colour) ++to;
      if (colour != map_colour::none)
        painter.fillRect(QRectF(area.left(), area.top() + from * pixel, half, (to - from) * pixel),
                         colour_of(colour));
      from = to;
    }
    if (view_.marker >= 0) {
      // Thick enough to be found, and never beyond the lower edge.
      const double thick = std::max(2.0, static_cast<double>(area.height()) / view_.scale);
      const double top = std::min(altura(view_.marker), area.top() + area.height() - thick);
      painter.fillRect(QRectF(area.left() + half, top, area.width() - half, thick), Qt::red);
    }
  }
  painter.end();
  QFrame::paintEvent(event);
}

void mapa_qt::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && pulsado) pulsado(fila_en(event->position().y()));
}

}  // namespace estructura
