#include "ui/qt/iconos.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace estructura {

namespace {

enum class dibujo { ninguno, carpeta, disco, papelera, chip };

dibujo dibujo_de(id which) {
  switch (which) {
    case id::cargar:
    case id::cargarasm: return dibujo::carpeta;
    case id::salvar:
    case id::salvarasm: return dibujo::disco;
    case id::borrar:
    case id::borrarasm: return dibujo::papelera;
    case id::salvar16c84: return dibujo::chip;
    default: return dibujo::ninguno;
  }
}

// All drawings are made on a sheet of 16 by 16.

/// An open folder with its contents coming out.
void carpeta(QPainter& painter) {
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
void disco(QPainter& painter) {
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
void papelera(QPainter& painter) {
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

class motor final : public QIconEngine {
 public:
  explicit motor(dibujo drawing) : drawing_(drawing) {}

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
      case dibujo::carpeta: carpeta(*painter); break;
      case dibujo::disco: disco(*painter); break;
      case dibujo::papelera: papelera(*painter); break;
      case dibujo::chip: chip(*painter); break;
      case dibujo::ninguno: break;
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

  [[nodiscard]] QIconEngine* clone() const override { return new motor(*this); }

 private:
  dibujo drawing_;
};

}  // namespace

QIcon icono(id which) {
  const dibujo drawing = dibujo_de(which);
  return drawing == dibujo::ninguno ? QIcon() : QIcon(new motor(drawing));
}

QIcon icono_programa() {
  QIcon picture;
  for (const int side : {16, 22, 24, 32, 48, 64, 128, 256})
    picture.addFile(QStringLiteral(":/iconos/%1.png").arg(side), QSize(side, side));
  return picture;
}

}  // namespace estructura
