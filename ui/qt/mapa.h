// The map of program memory: a row for each address, its left half yellow where a word is programmed and blue
// where there is a breakpoint, the marker of the last step in red on the right half.
//
//   map.pon(window.look_map());
//   map.escala(), map.fila(0x1FF), map.marca()
//
// Rows are far thinner than a pixel on most devices: a word alone takes a whole one, a breakpoint and the
// marker some, and where several fall together the breakpoint is seen. They differ by more than their
// colours: words are thin, breakpoints thick with a light edge, and the marker has a head.
#pragma once

#include <functional>

#include <QFrame>

#include "ui/estructura.h"

namespace estructura {

class mapa_qt final : public QFrame {
 public:
  mapa_qt();

  /// Mouse-down at this height of the scale.
  std::function<void(double y)> pulsado;

  void pon(const map_view& view);

  // What was last given, for whoever looks from outside.
  [[nodiscard]] int escala() const { return view_.scale; }
  [[nodiscard]] map_colour fila(int address) const { return view_.rows[address]; }
  [[nodiscard]] int marca() const { return view_.marker; }
  /// Height within the widget of a row of the scale, and back.
  [[nodiscard]] double altura(double row) const;
  [[nodiscard]] double fila_en(double height) const;

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void pinta_palabras(QPainter& painter, const QRect& area) const;
  void pinta_marca(QPainter& painter, const QRect& area) const;

  map_view view_;
};

}  // namespace estructura
