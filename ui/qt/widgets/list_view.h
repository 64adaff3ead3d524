// A list of the window as a view of its lines (list_model.h, list_delegate.h).
//
//   list_view view(traits, measures);
//   view.setModel(&model);
//   view.rows_chosen = [](int current, std::vector<int> selected) { ... };
//
// The selection is the record's: what the person chooses is told, and comes back from there.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <QListView>

#include "ui/qt/look/metrics.h"
#include "ui/qt/widgets/list_delegate.h"

namespace estructura {

class list_view final : public QListView {
 public:
  list_view(const list_traits& traits, const panel_metrics& measures);

  /// The person chose: the current line and the selected ones.
  std::function<void(int current, std::vector<int> selected)> rows_chosen;
  /// A double-click on a line, or the Enter key on the current one.
  std::function<void(int row)> double_clicked;

  /// Takes the record's selection; `chosen`: the record has chosen anew, be it the same line.
  void show_selection(int current, const std::vector<int>& selected, bool chosen);

  /// Lines that have changed: a bit for each, the first one's lowest.
  void set_changes(std::uint32_t rows);
  [[nodiscard]] std::uint32_t changed_rows() const { return delegate_->marks.changed_rows; }
  /// The line of the instruction that is executed next, -1 for none.
  void set_next_row(int row);
  [[nodiscard]] int next_row() const { return delegate_->marks.next_row; }

  [[nodiscard]] int current_row() const { return currentIndex().row(); }
  [[nodiscard]] std::vector<int> selected_rows() const;

  [[nodiscard]] QSize sizeHint() const override { return least_; }
  [[nodiscard]] QSize minimumSizeHint() const override { return least_; }

  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
  void keyboardSearch(const QString& search) override;

 protected:
  void dataChanged(const QModelIndex& from, const QModelIndex& to, const QList<int>& roles) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void selectionChanged(const QItemSelection& now, const QItemSelection& before) override;

 private:
  void tell_choice();
  void select_rows(const std::vector<int>& rows);
  bool move_cursor(int key);
  /// In a window that scrolls, only a part of the list may be seen: the line comes there.
  void bring_into_seen_part(const QModelIndex& index);

  list_traits traits_;
  list_delegate* delegate_;
  QSize least_;
  bool centres_ = false;  ///< it is the record that moves the current line
  int within_ = 0;   ///< events and copies of the record in progress: whoever selects then tells it himself
  int cursor_ = -1;  ///< line the arrow keys stand on in a list of single selection, -1 none
};

}  // namespace estructura
