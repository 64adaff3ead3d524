#include "ui/qt/widgets/memory_map.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include <QMouseEvent>
#include <QPainter>

#include "ui/qt/look/colours.h"

namespace estructura {

memory_map::memory_map() {
  setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  setCursor(Qt::PointingHandCursor);
}

QSize memory_map::sizeHint() const {
  const int width = 4 * fontMetrics().horizontalAdvance(QLatin1Char('0'));
  return {width, 4 * width};
}

void memory_map::set_view(const map_view& view) {
  if (view.changes == view_.changes && view.scale == view_.scale) return;
  view_ = view;
  update();
  for (QWidget* const margin : margins_) margin->update();
}

double memory_map::y_of_row(double row) const {
  const QRect area = contentsRect();
  return area.top() + row * area.height() / std::max(view_.scale, 1);
}

double memory_map::row_at(double height) const {
  const QRect area = contentsRect();
  return (height - area.top()) * view_.scale / std::max(area.height(), 1);
}

memory_map::pixel_rows memory_map::rows_of(int address, int pixels) const {
  const int from = address * pixels / view_.scale;
  return {from, std::min(pixels, std::max(from + 1, (address + 1) * pixels / view_.scale))};
}

void memory_map::paintEvent(QPaintEvent* event) {
  QFrame::paintEvent(event);
  // After the frame, whose line styles draw somewhat thicker than they say at 200 %.
  QPainter painter(this);
  const QRect area = contentsRect();
  painter.fillRect(area, map_ground());
  if (view_.scale > 0) paint(painter, area);
  // On a dark panel the ground alone is not seen.
  constexpr double seen = 3;
  if (contrast(map_ground(), palette().color(QPalette::Window)) >= seen) return;
  painter.setPen(strong_line(palette()));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void memory_map::paint(QPainter& painter, const QRect& area) const {
  // In steps of the screen's own pixels, of which there may be several to a unit of the widget.
  const double pixel = 1 / painter.deviceTransform().m22();
  const int width = static_cast<int>(std::lround(area.width() / pixel));
  const int pixels = static_cast<int>(std::lround(area.height() / pixel));
  const int half = width / 2;
  const auto fill = [&](int left, int right, const pixel_rows& rows, const QColor& colour) {
    painter.fillRect(QRectF(area.left() + left * pixel, area.top() + rows.from * pixel,
                            (right - left) * pixel, (rows.to - rows.from) * pixel),
                     colour);
  };
  std::vector<map_colour> column(static_cast<std::size_t>(pixels), map_colour::none);
  for (int address = 0; address < std::min(view_.scale, program_words); ++address) {
    const pixel_rows rows = rows_of(address, pixels);
    for (int y = rows.from; y < rows.to; ++y) {
      map_colour& there = column[static_cast<std::size_t>(y)];
      there = std::max(there, view_.rows[address]);
    }
  }
  for (int from = 0; from < pixels;) {
    const map_colour what = column[static_cast<std::size_t>(from)];
    int to = from + 1;
    while (to < pixels && column[static_cast<std::size_t>(to)] == what) ++to;
    if (what != map_colour::none) fill(0, half, {from, to}, what == map_colour::blue ? Qt::blue : Qt::yellow);
    from = to;
  }
  if (view_.marker >= 0) fill(half, width, rows_of(view_.marker, pixels), Qt::red);
}

void memory_map::mousePressEvent(QMouseEvent* event) {
  if (pressed) pressed(row_at(event->position().y()));
}

// --- margins ---

map_margin::map_margin(memory_map& map, marks shown) : map_(map), shown_(shown) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  setCursor(map.cursor());
  map.add_margin(this);
}

QSize map_margin::sizeHint() const {
  const int width = fontMetrics().horizontalAdvance(QLatin1Char('0')) * 5 / 4;
  return {width, map_.sizeHint().height()};
}

double map_margin::centre(int address, double half) const {
  constexpr double middle = 0.5;
  return std::clamp(map_.y_of_row(address + middle), half, std::max(half, height() - half));
}

void map_margin::paintEvent(QPaintEvent*) {
  if (map_.scale() <= 0) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (shown_ == marks::breakpoints)
    paint_breakpoints(painter);
  else if (map_.marker() >= 0)
    paint_marker(painter);
}

void map_margin::paint_breakpoints(QPainter& painter) const {
  const QColor ground = palette().color(QPalette::Window);
  // The thin edge keeps discs apart that stand close together.
  painter.setPen(QPen(ground, 1));
  painter.setBrush(breakpoint_disc(ground));
  const double radius = width() / 2.0;
  double last = -1;
  for (int address = 0; address < std::min(map_.scale(), program_words); ++address) {
    if (map_.row(address) != map_colour::blue) continue;
    const double y = centre(address, radius);
    if (std::exchange(last, std::round(y)) == std::round(y)) continue;
    painter.drawEllipse(QPointF(radius, y), radius, radius);
  }
}

void map_margin::paint_marker(QPainter& painter) const {
  painter.setPen(Qt::NoPen);
  painter.setBrush(readable(Qt::red, palette().color(QPalette::Window)));
  const double right = width();
  const double half = right * 0.6;
  const double y = centre(map_.marker(), half);
  painter.drawPolygon(
      QPolygonF({{0, map_.y_of_row(map_.marker() + 0.5)}, {right, y - half}, {right, y + half}}));
}

void map_margin::mousePressEvent(QMouseEvent* event) {
  if (map_.pressed) map_.pressed(map_.row_at(event->position().y()));
}

}  // namespace estructura
