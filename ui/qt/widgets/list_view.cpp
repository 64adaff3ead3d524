#include "ui/qt/widgets/list_view.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyleOptionFocusRect>

#include "ui/qt/look/colours.h"
#include "ui/qt/text/text_conversion.h"

namespace estructura {

namespace {

list_traits traits_of(id which) {
  switch (which) {
    case id::nombres: return {.rows = 16, .characters = 6, .faint_columns = 1};
    case id::dirmd: return {.rows = 16, .characters = 2, .faint_columns = 1};
    case id::MDP: return {.rows = 16, .characters = 2};
    case id::MD: return {.rows = 16, .characters = 2, .padding = 3};
    case id::nomre: return {.rows = 6, .characters = 6, .faint_columns = 1};
    case id::RE: return {.rows = 6, .characters = 3};
    case id::PIL: return {.rows = 2, .characters = 3};
    // "*7FF", "FFF" and the longest instruction, "DECFSZ 1F,W", with their gaps.
    case id::MP: return {.characters = 24, .faint_columns = 1, .several = true, .gutter = 3};
    default: return {};
  }
}

/// Columns of a line with tabs: the mark and address, the word, the instruction.
constexpr int column_stop(int column) {
  return column == 0 ? 0 : column == 1 ? 6 : 11 + (column - 2) * 8;
}

class list_delegate final : public QStyledItemDelegate {
 public:
  list_delegate(const list_traits& traits, const panel_metrics& measures, QObject* parent)
      : QStyledItemDelegate(parent),
        faint_columns_(traits.faint_columns),
        margin_(traits.padding * measures.char_width / 2 + traits.gutter * measures.char_width),
        channel_(traits.gutter > 0),
        several_(traits.several),
        char_width_(measures.text_width(100) / 100.0),
        row_height_(measures.row_height) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& given, const QModelIndex& index) const override {
    QStyleOptionViewItem option = given;
    // A line that was clicked stays chosen, and looked as if it waited for something. Only in the program
    // list the selection is told of from elsewhere.
    if (!several_ && !option.widget->hasFocus()) option.state &= ~QStyle::State_Selected;
    const QStyle& style = *option.widget->style();
    style.drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
    const bool selected = (option.state & QStyle::State_Selected) != 0;
    const bool active = (option.state & QStyle::State_Active) != 0;
    const bool usable = (option.state & QStyle::State_Enabled) != 0;
    const QPalette::ColorGroup group = !usable  ? QPalette::Disabled
                                       : active ? QPalette::Active
                                                : QPalette::Inactive;
    const auto& list = static_cast<const list_view&>(*option.widget);
    const QColor ground =
        option.palette.color(group, selected ? QPalette::Highlight : list.viewport()->backgroundRole());
    const QColor strong = option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
    const QColor faint = selected ? strong : fainter(strong, ground);
    const bool next = index.row() == list.next_row();
    const bool news = index.row() < 32 && (list.changed_rows() >> index.row() & 1U) != 0;
    if (news) paint_change(*painter, option.rect, ground, selected ? ground : change_ground(ground, strong));

    QFont font = option.font;
    font.setBold(news || next);
    painter->setFont(font);
    QString line = index.data(Qt::DisplayRole).toString();
    if (channel_) {
      if (next) paint_arrow(*painter, option.rect, strong);
      if (line.startsWith(QLatin1Char('*'))) {
        paint_breakpoint(*painter, option.rect, selected ? strong : breakpoint_disc(ground));
        line[0] = QLatin1Char(' ');
      }
    }
    int column = 0;
    for (qsizetype from = 0; from <= line.size(); ++column) {
      qsizetype to = line.indexOf(QLatin1Char('\t'), from);
      if (to < 0) to = line.size();
      const double x = option.rect.left() + margin_ + column_stop(column) * char_width_;
      const QRectF cell(x, option.rect.top(), option.rect.right() - x + 1, option.rect.height());
      painter->setPen(column < faint_columns_ ? faint : strong);
      painter->drawText(cell, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip,
                        line.mid(from, to - from));
      from = to + 1;
    }
    if ((option.state & QStyle::State_HasFocus) != 0) {
      QStyleOptionFocusRect focus;
      focus.QStyleOption::operator=(option);
      focus.state |= QStyle::State_KeyboardFocusChange;
      focus.backgroundColor = option.palette.color(selected ? QPalette::Highlight : QPalette::Base);
      style.drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, option.widget);
    }
  }

  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
    return {margin_, row_height_};
  }

 private:
  static void paint_change(QPainter& painter, const QRect& row, const QColor& ground, const QColor& marked) {
    painter.fillRect(row.adjusted(2, 0, -2, 0), marked);
    painter.fillRect(QRect(row.left(), row.top(), 2, row.height()), change_bar(ground));
  }

  /// A triangle that points at the line.
  void paint_arrow(QPainter& painter, const QRect& row, const QColor& colour) const {
    const double middle = row.top() + row.height() / 2.0;
    const double half = char_width_ * 0.62;
    const double left = row.left() + char_width_ * 0.35;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(
        QPolygonF({{left, middle - half}, {left + 1.5 * half, middle}, {left, middle + half}}));
    painter.restore();
  }

  /// The star of a breakpoint upon a disc.
  void paint_breakpoint(QPainter& painter, const QRect& row, const QColor& colour) const {
    const double radius = row.height() * 0.4;
    // Its edge keeps off the address, which begins one character on.
    const QPointF centre(row.left() + margin_ + char_width_ * 0.8 - radius, row.top() + row.height() / 2.0);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(centre, radius, radius);
    painter.setPen(ink_on(colour));
    QFont bold = painter.font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.drawText(
        QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius).translated(0, radius * 0.15),
        Qt::AlignCenter | Qt::TextDontClip, QStringLiteral("*"));
    painter.restore();
  }

  int faint_columns_;
  int margin_;
  bool channel_;  ///< before the lines there is room for marks
  bool several_;
  double char_width_;
  int row_height_;
};

}  // namespace

// --- model ---

int list_model::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant list_model::data(const QModelIndex& index, int role) const {
  if (role == Qt::AccessibleTextRole && index.isValid() && spoken) return spoken(index.row());
  if (role != Qt::DisplayRole || !index.isValid()) return {};
  return to_qt(rows_[static_cast<std::size_t>(index.row())]);
}

void list_model::set_rows(const std::vector<std::string>& rows) {
  if (rows.size() != rows_.size()) {
    beginResetModel();
    rows_ = rows;
    endResetModel();
    return;
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows_[i] == rows[i]) continue;
    rows_[i] = rows[i];
    const QModelIndex changed = index(static_cast<int>(i));
    emit dataChanged(changed, changed, {Qt::DisplayRole});
  }
}

// --- view ---

list_view::list_view(const list_traits& traits, const panel_metrics& measures) : traits_(traits) {
  setFont(measures.mono);
  setItemDelegate(new list_delegate(traits, measures, this));
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
  if (rows == news_) return;
  news_ = rows;
  viewport()->update();
}

void list_view::set_next_row(int row) {
  if (row == next_) return;
  for (const int line : {std::exchange(next_, row), row})
    if (const QModelIndex index = model()->index(line, 0); index.isValid()) update(index);
}

std::vector<int> list_view::selected_rows() const {
  std::vector<int> rows;
  for (const QModelIndex& index : selectionModel()->selectedIndexes()) rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  return rows;
}

void list_view::show_selection(int current, const std::vector<int>& selected, bool chosen) {
  const QScopedValueRollback<int> within(within_, within_ + 1);
  if (selected_rows() != selected) {
    QItemSelection rows;
    for (std::size_t i = 0; i < selected.size();) {
      std::size_t end = i + 1;
      while (end < selected.size() && selected[end] == selected[end - 1] + 1) ++end;
      rows.select(model()->index(selected[i], 0), model()->index(selected[end - 1], 0));
      i = end;
    }
    selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
  }
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
  QStyleOptionFocusRect focus;
  focus.initFrom(this);
  focus.rect = viewport()->rect();
  focus.state |= QStyle::State_KeyboardFocusChange;
  focus.backgroundColor = palette().color(QPalette::Base);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
}

// --- link ---

namespace {

class list_binding final : public binding {
 public:
  list_binding(const control& record, action_sink& sink, const panel_metrics& measures)
      : binding(record, sink),
        view_(new list_view(traits_of(record.which()), measures)),
        model_(new list_model(view_)) {
    view_->setModel(model_);
    view_->rows_chosen = [this](int current, std::vector<int> selected) {
      perform(
          [&](Estructura& window) { window.choose_rows(which(), index(), current, std::move(selected)); });
    };
    if (record.which() == id::MP)
      view_->double_clicked = [this](int row) {
        perform([&](Estructura& window) { window.dblclick_row(which(), index(), row); });
      };
  }
  [[nodiscard]] QWidget* widget() const override { return view_; }

 protected:
  void show_record(const control& from) override {
    if (!filled_ || rows_seen_ != from.row_changes()) {
      filled_ = true;
      rows_seen_ = from.row_changes();
      model_->set_rows(from.rows());
    }
    view_->show_selection(from.row(), from.selected(), changes_seen_ != from.changes());
    changes_seen_ = from.changes();
    const QPalette::ColorRole role = from.face_background() ? QPalette::Window : QPalette::Base;
    if (view_->viewport()->backgroundRole() != role) view_->viewport()->setBackgroundRole(role);
  }

 private:
  list_view* view_;
  list_model* model_;
  unsigned rows_seen_ = 0;
  unsigned changes_seen_ = 0;
  bool filled_ = false;
};

}  // namespace

std::unique_ptr<binding> make_list_binding(const control& record, action_sink& sink,
                                           const panel_metrics& measures) {
  return std::make_unique<list_binding>(record, sink, measures);
}

}  // namespace estructura
