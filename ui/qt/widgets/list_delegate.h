// How the lines of a list are painted: their columns, and the marks upon them. The line of the next
// instruction has an arrow, a breakpoint a disc under its star, and what changed in the last action a soft
// ground with a bar.
//
//   auto* delegate = new list_delegate({.rows = 16, .characters = 2}, measures, &view);
//   delegate->marks.next_row = 5;
//   view.setItemDelegate(delegate);
#pragma once

#include <cstdint>

#include <QStyledItemDelegate>

#include "ui/qt/look/metrics.h"

namespace estructura {

/// How a list looks.
struct list_traits {
  int rows = 0;           ///< lines it is exactly as high as; 0: as high as there is room
  int characters = 0;     ///< characters of its longest line
  int padding = 1;        ///< room beside them, in characters, half of it at either side
  int faint_columns = 0;  ///< leading columns in a fainter colour, of names and addresses
  bool several = false;   ///< several lines may be selected
  int gutter = 0;         ///< characters of room before them, for the arrow of the current instruction
};

/// What is marked in a list beside its selection.
struct list_marks {
  std::uint32_t changed_rows = 0;  ///< a bit for each line, the first one's lowest
  int next_row = -1;               ///< the line of the instruction that is executed next, -1 for none
};

class list_delegate final : public QStyledItemDelegate {
 public:
  list_delegate(const list_traits& traits, const panel_metrics& measures, QObject* parent);

  list_marks marks;

  void paint(QPainter* painter, const QStyleOptionViewItem& given, const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  /// What a line is painted in.
  struct row_colours {
    QColor ground;
    QColor strong;
    QColor faint;
  };
  static row_colours colours_of(const QStyleOptionViewItem& option);
  static void paint_change(QPainter& painter, const QRect& row, const QColor& ground, const QColor& marked);
  void paint_arrow(QPainter& painter, const QRect& row, const QColor& colour) const;
  void paint_breakpoint(QPainter& painter, const QRect& row, const QColor& colour) const;
  void paint_columns(QPainter& painter, const QRect& row, const QString& line,
                     const row_colours& colours) const;

  int faint_columns_;
  int margin_;
  bool channel_;  ///< before the lines there is room for marks
  bool several_;
  double char_width_;
  int row_height_;
};

}  // namespace estructura
