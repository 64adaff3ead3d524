#include "ui/qt/widgets/list_view.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include "ui/qt/look/focus_frame.h"

namespace estructura {

list_view::list_view(const list_traits& traits, const panel_metrics& measures)
    : traits_(traits), delegate_(new list_delegate(traits, measures, this)) {
  setFont(measures.mono);
  setItemDelegate(delegate_);
  setUniformItemSizes(true);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setDragEnabled(false);
  setSelectionMode(traits.several ? QAbstractItemView::ExtendedSelection
                                  : QAbstractItemView::SingleSelection);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  constexpr int least_rows = 8;  // of a list that grows
  least_ = {measures.text_width(traits.characters) + (traits.padding + traits.gutter) * measures.char_width,
            (traits.rows > 0 ? traits.rows : least_rows) * measures.row_height};
  // The sheets on which the lists stand have the frames.
  setFrameShape(QFrame::NoFrame);
  if (traits.rows > 0) {
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFixedSize(least_);
  } else {
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    least_ += {verticalScrollBar()->sizeHint().width(), 0};
  }
}

void list_view::set_changes(std::uint32_t rows) {
  if (rows == changed_rows()) return;
  delegate_->marks.changed_rows = rows;
  viewport()->update();
}

void list_view::set_next_row(int row) {
  if (row == next_row()) return;
  for (const int line : {std::exchange(delegate_->marks.next_row, row), row})
    if (const QModelIndex index = model()->index(line, 0); index.isValid()) update(index);
}

std::vector<int> list_view::selected_rows() const {
  std::vector<int> rows;
  for (const QModelIndex& index : selectionModel()->selectedIndexes()) rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  return rows;
}

/// Lines that follow one another are selected as one range: there may be two thousand.
void list_view::select_rows(const std::vector<int>& rows) {
  QItemSelection ranges;
  for (std::size_t i = 0; i < rows.size();) {
    std::size_t end = i + 1;
    while (end < rows.size() && rows[end] == rows[end - 1] + 1) ++end;
    ranges.select(model()->index(rows[i], 0), model()->index(rows[end - 1], 0));
    i = end;
  }
  selectionModel()->select(ranges, QItemSelectionModel::ClearAndSelect);
}

void list_view::show_selection(int current, const std::vector<int>& selected, bool chosen) {
  const QScopedValueRollback<int> within(within_, within_ + 1);
  if (selected_rows() != selected) select_rows(selected);
  const int shown = current < 0 && hasFocus() ? cursor_ : current;
  const QModelIndex index = model()->index(shown, 0);
  centres_ = true;
  // A line that is current already comes back into view when it is chosen again, and only then: a list that
  // the person has scrolled must not move under the click that brings it the focus.
  if (current_row() != shown)
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  else if (chosen && index.isValid())
    scrollTo(index);
  centres_ = false;
}

bool list_view::event(QEvent* event) {
  const QScopedValueRollback<int> within(within_, within_ + 1);
  return QListView::event(event);
}

bool list_view::viewportEvent(QEvent* event) {
  const QScopedValueRollback<int> within(within_, within_ + 1);
  return QListView::viewportEvent(event);
}

void list_view::selectionChanged(const QItemSelection& now, const QItemSelection& before) {
  QListView::selectionChanged(now, before);
  if (within_ > 0 || !rows_chosen) return;
  // Neither a mouse nor a key nor the record: a screen reader or the like has chosen, for the person.
  if (!now.isEmpty()) {
    const int row = now.indexes().front().row();
    rows_chosen(row, traits_.several ? selected_rows() : std::vector<int>{row});
  } else if (traits_.several && !before.isEmpty()) {
    rows_chosen(before.indexes().front().row(), selected_rows());
  }
}

void list_view::scrollTo(const QModelIndex& index, ScrollHint hint) {
  // A line that the program chooses out of sight comes to the middle, with what stands around it.
  const bool far = centres_ && !viewport()->rect().intersects(visualRect(index));
  QListView::scrollTo(index, far ? PositionAtCenter : hint);
  if (centres_) bring_into_seen_part(index);
}

void list_view::bring_into_seen_part(const QModelIndex& index) {
  const QRect seen = viewport()->visibleRegion().boundingRect();
  const QRect line = visualRect(index);
  if (seen.isEmpty() || (line.top() >= seen.top() && line.bottom() <= seen.bottom())) return;
  // Lines scroll whole: the bar stands at the number of the first one.
  verticalScrollBar()->setValue(index.row() - seen.center().y() / line.height());
}

void list_view::resizeEvent(QResizeEvent* event) {
  const QModelIndex current = currentIndex();
  const bool in_sight = QRect(QPoint(), event->oldSize()).intersects(visualRect(current));
  QListView::resizeEvent(event);
  if (in_sight) scrollTo(current);
}

void list_view::keyboardSearch(const QString& search) {
  // The Space key selects, and then Qt looks for the next line that begins with a blank: nearly all do.
  if (!search.trimmed().isEmpty()) QListView::keyboardSearch(search);
}

void list_view::dataChanged(const QModelIndex& from, const QModelIndex& to, const QList<int>& roles) {
  // QListView's own lays all lines out again, and so paints twice; here a text never changes a line's size.
  // NOLINTNEXTLINE(bugprone-parent-virtual-call)
  QAbstractItemView::dataChanged(from, to, roles);
}

void list_view::tell_choice() {
  if (rows_chosen) rows_chosen(current_row(), selected_rows());
}

void list_view::mousePressEvent(QMouseEvent* event) {
  // The other buttons would select without a click.
  if (event->button() != Qt::LeftButton) return;
  const bool on_line = indexAt(event->position().toPoint()).isValid();
  QListView::mousePressEvent(event);
  // A click on a line that is selected already is a click all the same.
  if (!on_line) return;
  if (!traits_.several) {
    cursor_ = current_row();
    // With Ctrl held Qt takes the selection back from a line that is the only one, now or on release; here it
    // is clicked all the same.
    selectionModel()->select(currentIndex(), QItemSelectionModel::ClearAndSelect);
  }
  tell_choice();
}

void list_view::mouseMoveEvent(QMouseEvent* event) {
  // Where one line at most is selected, its click may have moved the focus on: dragging selects nothing more.
  if (!traits_.several || (event->buttons() & Qt::LeftButton) == 0) return;
  const std::vector<int> before = selected_rows();
  QListView::mouseMoveEvent(event);
  if (selected_rows() != before) tell_choice();
}

void list_view::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  // A press on one of several selected lines might begin a drag for Qt: that it alone is chosen shows on
  // release.
  const std::vector<int> before = selected_rows();
  const QItemSelection kept = selectionModel()->selection();
  QListView::mouseReleaseEvent(event);
  if (selected_rows() == before) return;
  if (traits_.several)
    tell_choice();
  else
    selectionModel()->select(kept, QItemSelectionModel::ClearAndSelect);
}

void list_view::mouseDoubleClickEvent(QMouseEvent* event) {
  // The second press of two: where nothing else is made of it, it is a click as the first was. Qt gives the
  // list the focus again, which that first click may have passed on.
  if (!double_clicked) return mousePressEvent(event);
  const QModelIndex index = indexAt(event->position().toPoint());
  if (event->button() == Qt::LeftButton && index.isValid()) double_clicked(index.row());
}

bool list_view::move_cursor(int key) {
  const int last = model()->rowCount() - 1;
  int to = 0;
  switch (key) {
    case Qt::Key_Up: to = cursor_ < 0 ? 0 : cursor_ - 1; break;
    case Qt::Key_Down: to = cursor_ + 1; break;
    case Qt::Key_Home: break;
    case Qt::Key_End: to = last; break;
    default: return false;
  }
  cursor_ = std::clamp(to, std::min(0, last), last);
  selectionModel()->setCurrentIndex(model()->index(cursor_, 0), QItemSelectionModel::NoUpdate);
  return true;
}

void list_view::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (traits_.several) {
    if (enter && current_row() >= 0 && double_clicked) {
      double_clicked(current_row());
      return;
    }
    const std::vector<int> before = selected_rows();
    const int current = current_row();
    QListView::keyPressEvent(event);
    if (selected_rows() != before || current_row() != current) tell_choice();
    return;
  }
  // A click on a line may take the focus away at once, so the arrow keys only walk; Space or Enter is the
  // click.
  if (move_cursor(event->key())) return;
  if ((enter || event->key() == Qt::Key_Space) && cursor_ >= 0) {
    const QModelIndex index = model()->index(cursor_, 0);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    tell_choice();
    return;
  }
  event->ignore();
}

void list_view::focusInEvent(QFocusEvent* event) {
  // Not QAbstractItemView's own: it would make the first line the current one.
  // NOLINTNEXTLINE(bugprone-parent-virtual-call)
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

void list_view::focusOutEvent(QFocusEvent* event) {
  QListView::focusOutEvent(event);
  viewport()->update();
}

void list_view::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  if (!hasFocus() || currentIndex().isValid()) return;
  // No line to carry the focus mark: the list as a whole does.
  QPainter painter(viewport());
  paint_focus_frame(painter, *this, viewport()->rect(), palette().color(QPalette::Base));
}

}  // namespace estructura
