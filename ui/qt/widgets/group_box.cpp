#include "ui/qt/widgets/group_box.h"

#include <QPainter>

#include "ui/qt/look/colours.h"

namespace estructura {

namespace {

void paint_separator(QPainter& painter, const QPalette& palette, int left, int right, int y) {
  painter.fillRect(left, y, right - left, 1, soft_line(palette));
}

}  // namespace

int group_box::title_height(const QWidget& where) {
  const int height = where.fontMetrics().height();
  return height + height / 4;
}

void group_box::set_caption(const QString& title) {
  if (title == this->title()) return;
  setTitle(title);
  set_margins();
}

void group_box::set_margins() {
  // QGroupBox gives itself the style's margins at each of these occasions.
  setContentsMargins(0, title().isEmpty() ? 0 : title_height(*this), 0, 0);
}

void group_box::changeEvent(QEvent* event) {
  QGroupBox::changeEvent(event);
  set_margins();
}

void group_box::resizeEvent(QResizeEvent* event) {
  QGroupBox::resizeEvent(event);
  set_margins();
}

void group_box::paintEvent(QPaintEvent*) {
  if (title().isEmpty()) return;
  QPainter painter(this);
  QFont bold = font();
  bold.setBold(true);
  painter.setFont(bold);
  painter.setPen(palette().color(QPalette::WindowText));
  const QRect line(0, 0, width(), title_height(*this));
  QRect written;
  painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, title(), &written);
  paint_separator(painter, palette(), written.right() + fontMetrics().averageCharWidth(), width(),
                  line.center().y());
}

separator_line::separator_line() {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void separator_line::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paint_separator(painter, palette(), 0, width(), rect().center().y());
}

}  // namespace estructura
