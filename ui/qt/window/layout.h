// Where each control stands in the window. In the order in which the work goes: the source with its listing,
// program memory with its map, and the instruments in a column that keeps its size; a splitter shares out
// between source and program list all the room that there is.
//
//   window_layout layout(panel, find, accompany, measures);
//   layout.arrange();          // after each copy: what stands elsewhere on some devices
#pragma once

#include <functional>

#include "ui/inventory.h"
#include "ui/qt/look/metrics.h"

class QBoxLayout;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QWidget;

namespace estructura {

class window_layout {
 public:
  /// Finds the widget of a control.
  using widget_finder = std::function<QWidget*(id which, int index)>;
  /// Makes a widget without a record be seen only while a control is.
  using companion_setter = std::function<void(id which, QWidget* companion)>;

  window_layout(QWidget& panel, widget_finder find, companion_setter accompany,
                const panel_metrics& measures);

  /// TRISB takes the line of TRISA on the devices that have no TRISA.
  void arrange();

 private:
  [[nodiscard]] QWidget* w(id which, int index = 0) const { return find_(which, index); }
  void lay_out_documents();
  QWidget* source_pane();
  QWidget* program_pane();
  void lay_out_instruction();
  QWidget* instrument_column();
  void lay_out_chip();
  void lay_out_registers();
  void lay_out_ports();
  void lay_out_timer();
  QWidget* data_memory();

  /// The title of a group, what belongs to it, and the line behind.
  QHBoxLayout* heading_row(id title, QWidget* beside = nullptr) const;
  /// A column of cells, each beside a line of the lists next to it.
  QGridLayout* cell_column(QWidget* sheet, int rows) const;
  /// A label that shows a value: fixed size, so that another text moves nothing.
  QWidget* cell_label(id which, int characters, int index = 0) const;
  /// The same within a frame of its own.
  QWidget* value_display(id which, int characters, Qt::Alignment alignment) const;
  QWidget* title_label(id which) const;
  QLabel* note_label(const char* text) const;
  /// A button no wider than its caption needs.
  QWidget* sized_button(id which) const;

  widget_finder find_;
  companion_setter accompany_;
  panel_metrics m_;
  QGridLayout* tris_ = nullptr;
  bool tris_moved_up_ = false;
};

}  // namespace estructura
