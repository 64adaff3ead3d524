// The pieces that the layouts of the window are put together from.
//
//   const layout_parts parts(find, accompany, measures);
//   column->addWidget(parts.sized_button(id::cargar));
//   column->addItem(new overlay_item(*parts.heading(id::Label10, panel), *pane));
#pragma once

#include <functional>

#include "ui/inventory.h"
#include "ui/qt/look/metrics.h"

class QFrame;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QWidget;

namespace estructura {

/// Finds the widget of a control.
using widget_finder = std::function<QWidget*(id which, int index)>;
/// Makes a widget without a record be seen only while a control is.
using companion_setter = std::function<void(id which, QWidget* companion)>;

class layout_parts {
 public:
  layout_parts(widget_finder find, companion_setter accompany, const panel_metrics& measures);

  const panel_metrics m;
  const companion_setter accompany;

  [[nodiscard]] QWidget* w(id which, int index = 0) const { return find_(which, index); }

  /// The title of a group, what belongs to it, and the line behind.
  [[nodiscard]] QWidget* heading(id title, QWidget& parent, QWidget* beside = nullptr) const;
  /// A column of cells, each beside a line of the lists next to it.
  [[nodiscard]] QGridLayout* cell_column(QWidget* sheet, int rows) const;
  /// A label that shows a value: fixed size, so that another text moves nothing.
  [[nodiscard]] QWidget* cell_label(id which, int characters, int index = 0) const;
  /// The same within a frame of its own.
  [[nodiscard]] QWidget* value_display(id which, int characters, Qt::Alignment alignment) const;
  /// A text beside a control that is no control itself.
  [[nodiscard]] QLabel* note_label(const char* text) const;
  /// A button no wider than its caption needs.
  [[nodiscard]] QWidget* sized_button(id which) const;

 private:
  [[nodiscard]] QWidget* title_label(id which) const;

  widget_finder find_;
};

template <class Layout>
Layout* without_margins(Layout* layout, int spacing) {
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(spacing);
  return layout;
}

/// Room within a sheet's frame: styles draw its line somewhat thicker than they say at 200 %.
inline constexpr int frame_line = 1;

/// A sheet with the background of a list and one frame around all that stands on it.
[[nodiscard]] QFrame* make_sheet(QWidget* parent);
[[nodiscard]] QHBoxLayout* row_in_sheet(QFrame* sheet);

}  // namespace estructura
