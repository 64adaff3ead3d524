// Lists of the window on Qt's model and view: the rows of a list's record, its selection, and the person's
// clicks.
//
//   list_model model;
//   model.pon({" 000\tC05\tMOVLW 05", " 001\t???"});
//   list_view view(traits, measures);
//   view.setModel(&model);
//
// The tab characters of a line stand for columns. The selection is the record's: what the person chooses goes
// through the door and comes back from there.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QAbstractListModel>
#include <QListView>
#include <QStyledItemDelegate>

#include "ui/qt/bindings/binding.h"

namespace estructura {

class list_model final : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

  /// What is read aloud of a line, where it is more than what is shown.
  std::function<QString(int row)> spoken;

  /// The rows as they are now. Only lines whose text differs are announced.
  void set_rows(const std::vector<std::string>& rows);

 private:
  std::vector<std::string> rows_;
};

/// How a list looks; which list looks how is a table in lista.cpp.
struct list_traits {
  int rows = 0;           ///< lines it is exactly as high as; 0: as high as there is room
  int characters = 0;     ///< characters of its longest line
  int padding = 1;        ///< room beside them, in characters, half of it at either side
  int faint_columns = 0;  ///< leading columns in a fainter colour, of names and addresses
  bool several = false;   ///< several lines may be selected
  int gutter = 0;         ///< characters of room before them, for the arrow of the current instruction
};

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
  [[nodiscard]] std::uint32_t changed_rows() const { return news_; }
  /// The line of the instruction that is executed next, -1 for none.
  void set_next_row(int row);
  [[nodiscard]] int next_row() const { return next_; }

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
  bool move_cursor(int key);
  /// In a window that scrolls, only a part of the list may be seen: the line comes there.
  void bring_into_seen_part(const QModelIndex& index);

  list_traits traits_;
  QSize least_;
  bool centres_ = false;  ///< it is the record that moves the current line
  int within_ = 0;  ///< events and copies of the record in progress: whoever selects then tells it himself
  std::uint32_t news_ = 0;
  int next_ = -1;
  int cursor_ = -1;  ///< line the arrow keys stand on in a list of single selection, -1 none
};

std::unique_ptr<binding> make_list_binding(const control& record, action_sink& sink,
                                           const panel_metrics& measures);

}  // namespace estructura
