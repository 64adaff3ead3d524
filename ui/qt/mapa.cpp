#include "ui/qt/mapa.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include <QMouseEvent>
#include <QPainter>

#include "ui/qt/colores.h"

namespace estructura {

namespace {

/// What a breakpoint or the marker measures at least, in units of the widget.
constexpr int grueso = 3;

/// In the order in which they cover each other. The thin edge of a breakpoint, dark on a dark ground, covers
/// no word.
enum class trazo : std::uint8_t { nada, borde, palabra, parada };

QColor color_de(trazo what) {
  switch (what) {
    case trazo::palabra: return Qt::yellow;
    case trazo::parada: return Qt::blue;
    default: return Qt::white;
  }
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
  painter.fillRect(area, fondo_mapa());
  if (view_.scale > 0) {
    pinta_palabras(painter, area);
    if (view_.marker >= 0) pinta_marca(painter, area);
  }
  painter.end();
  QFrame::paintEvent(event);
  // On a dark panel the ground alone is not seen.
  constexpr double seen = 3;
  if (contraste(fondo_mapa(), palette().color(QPalette::Window)) >= seen) return;
  QPainter edge(this);
  edge.setPen(linea_fuerte(palette()));
  edge.drawRect(rect().adjusted(0, 0, -1, -1));
}

void mapa_qt::pinta_palabras(QPainter& painter, const QRect& area) const {
  // In steps of the screen's own pixels, of which there may be several to a unit of the widget.
  const double pixel = 1 / devicePixelRatioF();
  const int pixels = static_cast<int>(std::lround(area.height() / pixel));
  std::vector<trazo> column(static_cast<std::size_t>(pixels), trazo::nada);
  const auto draw = [&](int from, int to, trazo what) {
    for (int y = std::max(from, 0); y < std::min(to, pixels); ++y) {
      trazo& there = column[static_cast<std::size_t>(y)];
      there = std::max(there, what);
    }
  };
  const int least = static_cast<int>(std::lround(grueso / pixel));
  const int edge = static_cast<int>(std::lround(1 / pixel));
  for (int row = 0; row < std::min(view_.scale, program_words); ++row) {
    const map_colour colour = view_.rows[row];
    if (colour == map_colour::none) continue;
    int from = row * pixels / view_.scale;
    int to = std::max(from + 1, (row + 1) * pixels / view_.scale);
    if (colour == map_colour::yellow) {
      draw(from, to, trazo::palabra);
      continue;
    }
    const int more = std::max(0, least - (to - from));
    from -= more / 2;
    to += more - more / 2;
    draw(from - edge, to + edge, trazo::borde);
    draw(from, to, trazo::parada);
  }
  const double half = area.width() / 2.0;
  for (int from = 0; from < pixels;) {
    const trazo what = column[static_cast<std::size_t>(from)];
    int to = from + 1;
    while (to < pixels && column[static_cast<std::size_t>(to)] == what) ++to;
    if (what != trazo::nada)
      painter.fillRect(QRectF(area.left(), area.top() + from * pixel, half, (to - from) * pixel),
                       color_de(what));
    from = to;
  }
}

void mapa_qt::pinta_marca(QPainter& painter, const QRect& area) const {
  // Never beyond the edges.
  const double half = area.width() / 2.0;
  const double thick = std::max<double>(grueso, static_cast<double>(area.height()) / view_.scale);
  const double top = std::min(altura(view_.marker), area.top() + area.height() - thick);
  painter.fillRect(QRectF(area.left() + half, top, half, thick), Qt::red);
  // And a head, which points at the row.
  const double size = half / 2;
  const double middle = std::clamp(top + thick / 2, area.top() + size, area.bottom() + 1 - size);
  const double right = area.right() + 1;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::red);
  painter.drawPolygon(
      QPolygonF({{right - size, top + thick / 2}, {right, middle - size}, {right, middle + size}}));
}

void mapa_qt::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && pulsado) pulsado(fila_en(event->position().y()));
}

}  // namespace estructura
