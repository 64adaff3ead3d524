// What a screen reader says of each control: its name and its description, and of each line of a list its
// address, its register's name and its value.
//
//   nombre_accesible(window.look(id::PB, 3), true)         -> "Puerto B, bit 3"; "GPIO, bit 3" on a 12C50x
//   descripcion_accesible(window.look(id::PB, 3), true)    -> "Pin de entrada. Marcada, está a 1."
//   fila_accesible(window, id::MD, 1, 2)                   -> "dirección 12, banco 1, valor 3F"
//
// The texts are one table in nombres_accesibles.cpp, which does not compile with a control missing. Tool-tips
// are another matter: they are shown to those who see.
#pragma once

#include <functional>
#include <vector>

#include <QString>

#include "ui/estructura.h"

class QWidget;

namespace estructura {

[[nodiscard]] QString nombre_accesible(const control& record, bool is16c5x);
[[nodiscard]] QString descripcion_accesible(const control& record, bool is16c5x);
/// A line of a list; empty where the text that is shown says it all.
[[nodiscard]] QString fila_accesible(Estructura& window, id list, int index, int row);

/// Keeps the widgets' names and descriptions true to the record.
class nombres_accesibles {
 public:
  using buscador = std::function<QWidget*(id which, int index)>;

  /// To be made before the widgets are: whoever asks for one of them sooner is answered without the above.
  nombres_accesibles(Estructura& window, buscador find);

  /// Once the widgets are there: their lists speak, their titles belong to what they stand beside.
  void enlaza();
  /// After each copy of the record to the widgets.
  void actualiza();

 private:
  Estructura& window_;
  buscador find_;
  std::vector<unsigned> seen_;  ///< changes of each record that its name was worked out from
  bool is16c5x_ = false;
};

}  // namespace estructura
