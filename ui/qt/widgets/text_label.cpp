#include "ui/qt/widgets/text_label.h"

#include <algorithm>

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include "ui/qt/look/colours.h"

namespace estructura {

void text_label::elide() {
  elides_ = true;
  setSizePolicy(QSizePolicy::Maximum, sizePolicy().verticalPolicy());
}

QSize text_label::minimumSizeHint() const {
  const QSize whole = QLabel::minimumSizeHint();
  if (!elides_) return whole;
  constexpr int least = 8;
  return {std::min(whole.width(), least * fontMetrics().averageCharWidth()), whole.height()};
}

void text_label::set_changes(std::uint32_t characters) {
  if (changes_ == characters) return;
  changes_ = characters;
  update();
}

bool text_label::event(QEvent* event) {
  // A tip that is a file name with "<" in it would be taken for marked-up text.
  if (event->type() != QEvent::ToolTip || !Qt::mightBeRichText(toolTip())) return QLabel::event(event);
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                     QStringLiteral("<qt>") + toolTip().toHtmlEscaped() + QStringLiteral("</qt>"), this);
  return true;
}

void text_label::paintEvent(QPaintEvent* event) {
  const QRect room = contentsRect();
  if (changes_ != 0) return paint_changes();
  if (!elides_ || fontMetrics().horizontalAdvance(text()) <= room.width()) {
    QLabel::paintEvent(event);
    return;
  }
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   fontMetrics().elidedText(text(), Qt::ElideMiddle, room.width()));
}

void text_label::paint_changes() {
  QPainter painter(this);
  drawFrame(&painter);
  // A label with a frame keeps half an "x" between the two, unless told otherwise.
  const int inset = indent() >= 0 || frameWidth() == 0
                        ? std::max(indent(), 0)
                        : fontMetrics().horizontalAdvance(QLatin1Char('x')) / 2;
  const QRect room = contentsRect().adjusted(inset, 0, -inset, 0);
  const QColor ground = palette().color(backgroundRole());
  const QString shown = text();
  const auto length = static_cast<int>(shown.size());
  const double letter = fontMetrics().horizontalAdvance(QString(100, QLatin1Char('0'))) / 100.0;
  const double left = (alignment() & Qt::AlignRight) != 0 ? room.right() + 1 - length * letter : room.left();
  QFont strong = font();
  strong.setBold(true);
  const auto changed = [&](int at) { return at < length && (changes_ >> (length - 1 - at) & 1U) != 0; };
  for (int at = 0; at < length; ++at) {
    if (!changed(at)) continue;
    int end = at;
    while (changed(end)) ++end;
    const QRectF cell(left + at * letter, room.top() + 1, (end - at) * letter, room.height() - 2);
    painter.fillRect(cell, change_ground(ground, palette().color(foregroundRole())));
    painter.fillRect(QRectF(cell.left(), cell.bottom() - 2, cell.width(), 2), change_bar(ground));
    at = end;
  }
  painter.setPen(palette().color(foregroundRole()));
  for (int at = 0; at < length; ++at) {
    painter.setFont(changed(at) ? strong : font());
    painter.drawText(QRectF(left + at * letter, room.top(), letter, room.height()),
                     Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip, shown.mid(at, 1));
  }
}

void text_label::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && double_clicked) double_clicked();
}

}  // namespace estructura
