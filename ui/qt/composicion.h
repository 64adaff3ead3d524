// Where each control stands in the window. In the order in which the work goes: the source with its listing,
// program memory with its map, and the instruments in a column that keeps its size; a splitter shares out
// between source and program list all the room that there is.
//
//   composicion layout(panel, find, accompany, measures);
//   layout.acomoda();          // after each copy: what stands elsewhere on some devices
#pragma once

#include <functional>

#include "ui/inventory.h"
#include "ui/qt/medidas.h"

class QBoxLayout;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QWidget;

namespace estructura {

class composicion {
 public:
  /// Finds the widget of a control.
  using buscador = std::function<QWidget*(id which, int index)>;
  /// Makes a widget without a record be seen only while a control is.
  using acompanante = std::function<void(id which, QWidget* companion)>;

  composicion(QWidget& panel, buscador find, acompanante accompany, const medidas& measures);

  /// TRISB takes the line of TRISA on the devices that have no TRISA.
  void acomoda();

 private:
  [[nodiscard]] QWidget* w(id which, int index = 0) const { return find_(which, index); }
  void marco_documentos();
  QWidget* panel_fuente();
  QWidget* panel_programa();
  void marco_instruccion();
  QWidget* panel_instrumentos();
  void marco_pic();
  void marco_registros();
  void marco_puertos();
  void marco_tmr0();
  QWidget* memoria_datos();

  /// The title of a group, what belongs to it, and the line behind.
  QHBoxLayout* cabecera(id title, QWidget* beside = nullptr) const;
  /// A column of cells, each beside a line of the lists next to it.
  QGridLayout* columna(QWidget* sheet, int rows) const;
  /// A label that shows a value: fixed size, so that another text moves nothing.
  QWidget* celda(id which, int characters, int index = 0) const;
  /// The same within a frame of its own.
  QWidget* visor(id which, int characters, Qt::Alignment alignment) const;
  QWidget* titulo(id which) const;
  QLabel* aclaracion(const char* text) const;
  /// A button no wider than its caption needs.
  QWidget* boton(id which) const;

  buscador find_;
  acompanante accompany_;
  medidas m_;
  QGridLayout* tris_ = nullptr;
  bool tris_arriba_ = false;
};

}  // namespace estructura
