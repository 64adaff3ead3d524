#include "ui/qt/widgets/pane_splitter.h"

#include <QPainter>

#include "ui/qt/look/colours.h"

namespace estructura {

namespace {

class pane_handle final : public QSplitterHandle {
 public:
  pane_handle(Qt::Orientation orientation, QSplitter* parent) : QSplitterHandle(orientation, parent) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    // Two short lines: something to hold on to.
    QPainter painter(this);
    const QPoint middle = rect().center();
    const int length = 2 * width();
    const QColor colour = underMouse() ? palette().color(QPalette::Highlight) : strong_line(palette());
    for (const int x : {middle.x() - 1, middle.x() + 1})
      painter.fillRect(x, middle.y() - length / 2, 1, length, colour);
  }
  void enterEvent(QEnterEvent*) override { update(); }
  void leaveEvent(QEvent*) override { update(); }
};

}  // namespace

pane_splitter::pane_splitter() {
  setChildrenCollapsible(false);
}

QSplitterHandle* pane_splitter::createHandle() {
  return new pane_handle(orientation(), this);
}

}  // namespace estructura
