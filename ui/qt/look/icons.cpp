#include "ui/qt/look/icons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace estructura {

namespace {

enum class icon_drawing { none, folder, disk, bin, chip };

icon_drawing drawing_of(id which) {
  switch (which) {
    case id::cargar:
    case id::cargarasm: return icon_drawing::folder;
    case id::salvar:
    case id::salvarasm: return icon_drawing::disk;
    case id::borrar:
    case id::borrarasm: return icon_drawing::bin;
    case id::salvar16c84: return icon_drawing::chip;
    default: return icon_drawing::none;
  }
}

// All drawings are made on a sheet of 16 by 16.

/// An open folder with its contents coming out.
void folder(QPainter& painter) {
  QPainterPath back;
  back.moveTo(1.5, 13.5);
  back.lineTo(1.5, 3.5);
  back.lineTo(6, 3.5);
  back.lineTo(7.5, 5.5);
  back.lineTo(12.5, 5.5);
  back.lineTo(12.5, 7.5);
  painter.drawPath(back);
  QPainterPath front;
  front.moveTo(1.5, 13.5);
  front.lineTo(4, 7.5);
  front.lineTo(15, 7.5);
  front.lineTo(12.5, 13.5);
  front.closeSubpath();
  painter.drawPath(front);
}

/// A diskette.
void disk(QPainter& painter) {
  QPainterPath body;
  body.moveTo(2, 2);
  body.lineTo(11.5, 2);
  body.lineTo(14, 4.5);
  body.lineTo(14, 14);
  body.lineTo(2, 14);
  body.closeSubpath();
  painter.drawPath(body);
  painter.drawRect(QRectF(5, 2, 5, 3.5));
  painter.drawRect(QRectF(4.5, 8.5, 7, 5.5));
}

/// A bin with its lid.
void bin(QPainter& painter) {
  painter.drawLine(QPointF(2, 4), QPointF(14, 4));
  painter.drawPolyline(QPolygonF({{6, 4}, {6, 2}, {10, 2}, {10, 4}}));
  painter.drawPolyline(QPolygonF({{3.5, 4}, {4.2, 14}, {11.8, 14}, {12.5, 4}}));
  painter.drawLine(QPointF(6.5, 6.5), QPointF(6.7, 11.5));
  painter.drawLine(QPointF(9.5, 6.5), QPointF(9.3, 11.5));
}

/// An integrated circuit seen from above.
void chip(QPainter& painter) {
  painter.drawRect(QRectF(4.5, 1.5, 7, 13));
  for (const double y : {4.0, 8.0, 12.0}) {
    painter.drawLine(QPointF(1.5, y), QPointF(4.5, y));
    painter.drawLine(QPointF(11.5, y), QPointF(14.5, y));
  }
  painter.drawArc(QRectF(6.75, 0.5, 2.5, 2.5), 180 * 16, 180 * 16);
}

class icon_engine final : public QIconEngine {
 public:
  explicit icon_engine(icon_drawing drawing) : drawing_(drawing) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const double side = std::min(rect.width(), rect.height());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.left() + (rect.width() - side) / 2, rect.top() + (rect.height() - side) / 2);
    painter->scale(side / 16, side / 16);
    const QPalette::ColorGroup group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    painter->setPen(QPen(QGuiApplication::palette().color(group, QPalette::ButtonText), 1.2, Qt::SolidLine,
                         Qt::RoundCap, Qt::RoundJoin));
    painter->setBrush(Qt::NoBrush);
    switch (drawing_) {
      case icon_drawing::folder: folder(*painter); break;
      case icon_drawing::disk: disk(*painter); break;
      case icon_drawing::bin: bin(*painter); break;
      case icon_drawing::chip: chip(*painter); break;
      case icon_drawing::none: break;
    }
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap sheet(size);
    sheet.fill(Qt::transparent);
    QPainter painter(&sheet);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return sheet;
  }

  QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
    return {{16, 16}, {24, 24}, {32, 32}, {48, 48}, {64, 64}, {128, 128}};
  }

  [[nodiscard]] QIconEngine* clone() const override { return new icon_engine(*this); }

 private:
  icon_drawing drawing_;
};

}  // namespace

QIcon control_icon(id which) {
  const icon_drawing drawing = drawing_of(which);
  return drawing == icon_drawing::none ? QIcon() : QIcon(new icon_engine(drawing));
}

QIcon program_icon() {
  QIcon picture;
  for (const int side : {16, 22, 24, 32, 48, 64, 128, 256})
    picture.addFile(QStringLiteral(":/icons/%1.png").arg(side), QSize(side, side));
  return picture;
}

}  // namespace estructura
