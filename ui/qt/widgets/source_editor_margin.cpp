// The line numbers of the source editor.
#include <algorithm>

#include <QPainter>
#include <QTextBlock>

#include "ui/qt/widgets/source_editor.h"

namespace estructura {

namespace {

/// Digits that the numbers have room for from the start.
constexpr int least_digits = 3;

}  // namespace

void source_editor::measure_margin() {
  int digits = 1;
  for (int lines = blockCount(); lines >= 10; lines /= 10) ++digits;
  // Before them the sign of an error, a blank at either side.
  const int characters = std::max(digits, least_digits) + 2;
  const int width = fontMetrics().horizontalAdvance(QString(characters, QLatin1Char('0')));
  setViewportMargins(width, 0, 0, 0);
  place_margin();
}

void source_editor::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  place_margin();
}

void source_editor::place_margin() {
  const QRect text = viewport()->geometry();
  margin_->setGeometry(contentsRect().left(), text.top(), viewportMargins().left(), text.height());
}

void source_editor::paint_margin(const QRect& region) {
  QPainter painter(margin_);
  painter.fillRect(region, colours_.margin_ground);
  painter.setFont(font());
  for (QTextBlock line = firstVisibleBlock(); line.isValid(); line = line.next()) {
    const QRectF place = blockBoundingGeometry(line).translated(contentOffset());
    if (place.top() > region.bottom()) break;
    // The last line's place takes in the margin below the text.
    const double below = line.next().isValid() ? 0 : document()->documentMargin();
    const QRect row(0, static_cast<int>(place.top()), margin_->width(),
                    static_cast<int>(place.height() - below));
    paint_number(painter, row, line.blockNumber() + 1);
  }
}

void source_editor::paint_number(QPainter& painter, const QRect& row, int number) const {
  const int letter = fontMetrics().horizontalAdvance(QLatin1Char('0'));
  const QRect inside = row.adjusted(letter / 2, 0, -letter / 2, 0);
  const bool wrong = number == error_line_;
  if (wrong) painter.fillRect(row, colours_.error_number_ground);
  const bool current = number == textCursor().blockNumber() + 1;
  painter.setPen(wrong ? colours_.error_number : current ? colours_.current_number : colours_.margin_number);
  if (wrong) painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("!"));
  painter.drawText(inside, Qt::AlignRight | Qt::AlignVCenter, QString::number(number));
}

}  // namespace estructura
