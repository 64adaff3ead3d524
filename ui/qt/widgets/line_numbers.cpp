#include "ui/qt/widgets/line_numbers.h"

#include <utility>

#include <QPaintEvent>

namespace estructura {

line_numbers::line_numbers(QWidget& text, std::function<void(const QRect& region)> paint)
    : QWidget(&text), paint_(std::move(paint)) {
  setAccessibleName(QStringLiteral("Números de línea"));
}

void line_numbers::paintEvent(QPaintEvent* event) {
  paint_(event->rect());
}

}  // namespace estructura
