// Gives the widgets what a screen reader says of them (ui/accessible_names.h), and keeps it true.
//
//   widget_names names(window, find);
//   names.attach();                           // once they are there
//   names.refresh();                        // after each copy of the record
#pragma once

#include <functional>
#include <vector>

#include "ui/estructura.h"

class QWidget;

namespace estructura {

/// Keeps the widgets' names and descriptions true to the record.
class widget_names {
 public:
  using widget_finder = std::function<QWidget*(id which, int index)>;

  widget_names(Estructura& window, widget_finder find);

  /// Once the widgets are there: their lists speak, their titles belong to what they stand beside.
  void attach();
  /// After each copy of the record to the widgets.
  void refresh();

 private:
  Estructura& window_;
  widget_finder find_;
  std::vector<unsigned> seen_;  ///< changes of each record that its name was worked out from
  family_id family_{};          ///< whose names are given
};

}  // namespace estructura
