// Gives the widgets what a screen reader says of them (ui/accessible_names.h), and keeps it true.
//
//   nombres_accesibles names(window, find);
//   names.enlaza();                           // once they are there
//   names.actualiza();                        // after each copy of the record
#pragma once

#include <functional>
#include <vector>

#include "ui/estructura.h"

class QWidget;

namespace estructura {

/// Keeps the widgets' names and descriptions true to the record.
class nombres_accesibles {
 public:
  using buscador = std::function<QWidget*(id which, int index)>;

  nombres_accesibles(Estructura& window, buscador find);

  /// Once the widgets are there: their lists speak, their titles belong to what they stand beside.
  void enlaza();
  /// After each copy of the record to the widgets.
  void actualiza();

 private:
  Estructura& window_;
  buscador find_;
  std::vector<unsigned> seen_;  ///< changes of each record that its name was worked out from
  family_id family_{};          ///< whose names are given
};

}  // namespace estructura
