#include "ui/qt/lista.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyleOptionFocusRect>

#include "ui/qt/colores.h"
#include "ui/qt/texto_qt.h"

namespace estructura {

namespace {

aspecto_lista aspecto(id which) {
  switch (which) {
    case id::nombres: return {.filas = 16, .letras = 6, .tenues = 1};
    case id::dirmd: return {.filas = 16, .letras = 2, .tenues = 1};
    case id::MDP: return {.filas = 16, .letras = 2};
    case id::MD: return {.filas = 16, .letras = 2, .holgura = 3};
    case id::nomre: return {.filas = 6, .letras = 6, .tenues = 1};
    case id::RE: return {.filas = 6, .letras = 3};
    case id::PIL: return {.filas = 2, .letras = 3};
    // "*7FF", "FFF" and the longest instruction, "DECFSZ 1F,W", with their gaps.
    case id::MP: return {.letras = 24, .tenues = 1, .varias = true, .canal = 3};
    default: return {};
  }
}

/// Columns of a line with tabs: the mark and address, the word, the instruction.
constexpr int parada_de_columna(int column) {
  return column == 0 ? 0 : column == 1 ? 6 : 11 + (column - 2) * 8;
}

class delegado_lista final : public QStyledItemDelegate {
 public:
  delegado_lista(const aspecto_lista& traits, const medidas& measures, QObject* parent)
      : QStyledItemDelegate(parent),
        tenues_(traits.tenues),
        margin_(traits.holgura * measures.letra / 2 + traits.canal * measures.letra),
        channel_(traits.canal > 0),
        several_(traits.varias),
        letra_(measures.ancho(100) / 100.0),
        fila_(measures.fila) {}

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
    const auto& list = static_cast<const vista_lista&>(*option.widget);
    const QColor ground =
        option.palette.color(group, selected ? QPalette::Highlight : list.viewport()->backgroundRole());
    const QColor strong = option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
    const QColor faint = selected ? strong : tenue(strong, ground);
    const bool next = index.row() == list.siguiente();
    const bool news = index.row() < 32 && (list.marcadas() >> index.row() & 1U) != 0;
    if (news) pinta_novedad(*painter, option.rect, ground, selected ? ground : fondo_novedad(ground, strong));

    QFont font = option.font;
    font.setBold(news || next);
    painter->setFont(font);
    QString line = index.data(Qt::DisplayRole).toString();
    if (channel_) {
      if (next) pinta_flecha(*painter, option.rect, strong);
      if (line.startsWith(QLatin1Char('*'))) {
        pinta_parada(*painter, option.rect, selected ? strong : disco_parada(ground));
        line[0] = QLatin1Char(' ');
      }
    }
    int column = 0;
    for (qsizetype from = 0; from <= line.size(); ++column) {
      qsizetype to = line.indexOf(QLatin1Char('\t'), from);
      if (to < 0) to = line.size();
      const double x = option.rect.left() + margin_ + parada_de_columna(column) * letra_;
      const QRectF cell(x, option.rect.top(), option.rect.right() - x + 1, option.rect.height());
      painter->setPen(column < tenues_ ? faint : strong);
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
    return {margin_, fila_};
  }

 private:
  static void pinta_novedad(QPainter& painter, const QRect& row, const QColor& ground, const QColor& marked) {
    painter.fillRect(row.adjusted(2, 0, -2, 0), marked);
    painter.fillRect(QRect(row.left(), row.top(), 2, row.height()), barra_novedad(ground));
  }

  /// A triangle that points at the line.
  void pinta_flecha(QPainter& painter, const QRect& row, const QColor& colour) const {
    const double middle = row.top() + row.height() / 2.0;
    const double half = letra_ * 0.62;
    const double left = row.left() + letra_ * 0.35;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(
        QPolygonF({{left, middle - half}, {left + 1.5 * half, middle}, {left, middle + half}}));
    painter.restore();
  }

  /// The star of a breakpoint upon a disc.
  void pinta_parada(QPainter& painter, const QRect& row, const QColor& colour) const {
    const double radius = row.height() * 0.4;
    // Its edge keeps off the address, which begins one character on.
    const QPointF centre(row.left() + margin_ + letra_ * 0.8 - radius, row.top() + row.height() / 2.0);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(centre, radius, radius);
    painter.setPen(sobre(colour));
    QFont bold = painter.font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.drawText(
        QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius).translated(0, radius * 0.15),
        Qt::AlignCenter | Qt::TextDontClip, QStringLiteral("*"));
    painter.restore();
  }

  int tenues_;
  int margin_;
  bool channel_;  ///< before the lines there is room for marks
  bool several_;
  double letra_;
  int fila_;
};

}  // namespace

// --- model ---

int modelo_lista::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant modelo_lista::data(const QModelIndex& index, int role) const {
  if (role == Qt::AccessibleTextRole && index.isValid() && voz) return voz(index.row());
  if (role != Qt::DisplayRole || !index.isValid()) return {};
  return a_qt(rows_[static_cast<std::size_t>(index.row())]);
}

void modelo_lista::pon(const std::vector<std::string>& rows) {
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

vista_lista::vista_lista(const aspecto_lista& traits, const medidas& measures) : traits_(traits) {
  setFont(measures.mono);
  setItemDelegate(new delegado_lista(traits, measures, this));
  setUniformItemSizes(true);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setDragEnabled(false);
  setSelectionMode(traits.varias ? QAbstractItemView::ExtendedSelection : QAbstractItemView::SingleSelection);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  constexpr int least_rows = 8;  // of a list that grows
  least_ = {measures.ancho(traits.letras) + (traits.holgura + traits.canal) * measures.letra,
            (traits.filas > 0 ? traits.filas : least_rows) * measures.fila};
  // The sheets on which the lists stand have the frames.
  setFrameShape(QFrame::NoFrame);
  if (traits.filas > 0) {
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFixedSize(least_);
  } else {
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    least_ += {verticalScrollBar()->sizeHint().width(), 0};
  }
}

void vista_lista::pon_novedades(std::uint32_t rows) {
  if (rows == news_) return;
  news_ = rows;
  viewport()->update();
}

void vista_lista::pon_siguiente(int row) {
  if (row == next_) return;
  for (const int line : {std::exchange(next_, row), row})
    if (const QModelIndex index = model()->index(line, 0); index.isValid()) update(index);
}

std::vector<int> vista_lista::seleccionadas() const {
  std::vector<int> rows;
  for (const QModelIndex& index : selectionModel()->selectedIndexes()) rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  return rows;
}

void vista_lista::pon_seleccion(int current, const std::vector<int>& selected, bool chosen) {
  const QScopedValueRollback<int> within(within_, within_ + 1);
  if (seleccionadas() != selected) {
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
  centra_ = true;
  // A line that is current already comes back into view when it is chosen again, and only then: a list that
  // the person has scrolled must not move under the click that brings it the focus.
  if (actual() != shown)
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  else if (chosen && index.isValid())
    scrollTo(index);
  centra_ = false;
}

bool vista_lista::event(QEvent* event) {
  const QScopedValueRollback<int> within(within_, within_ + 1);
  return QListView::event(event);
}

bool vista_lista::viewportEvent(QEvent* event) {
  const QScopedValueRollback<int> within(within_, within_ + 1);
  return QListView::viewportEvent(event);
}

void vista_lista::selectionChanged(const QItemSelection& now, const QItemSelection& before) {
  QListView::selectionChanged(now, before);
  if (within_ > 0 || !elegida) return;
  // Neither a mouse nor a key nor the record: a screen reader or the like has chosen, for the person.
  if (!now.isEmpty()) {
    const int row = now.indexes().front().row();
    elegida(row, traits_.varias ? seleccionadas() : std::vector<int>{row});
  } else if (traits_.varias && !before.isEmpty()) {
    elegida(before.indexes().front().row(), seleccionadas());
  }
}

void vista_lista::scrollTo(const QModelIndex& index, ScrollHint hint) {
  // A line that the program chooses out of sight comes to the middle, with what stands around it.
  const bool far = centra_ && !viewport()->rect().intersects(visualRect(index));
  QListView::scrollTo(index, far ? PositionAtCenter : hint);
  if (centra_) bring_into_seen_part(index);
}

void vista_lista::bring_into_seen_part(const QModelIndex& index) {
  const QRect seen = viewport()->visibleRegion().boundingRect();
  const QRect line = visualRect(index);
  if (seen.isEmpty() || (line.top() >= seen.top() && line.bottom() <= seen.bottom())) return;
  // Lines scroll whole: the bar stands at the number of the first one.
  verticalScrollBar()->setValue(index.row() - seen.center().y() / line.height());
}

void vista_lista::resizeEvent(QResizeEvent* event) {
  const QModelIndex current = currentIndex();
  const bool in_sight = QRect(QPoint(), event->oldSize()).intersects(visualRect(current));
  QListView::resizeEvent(event);
  if (in_sight) scrollTo(current);
}

void vista_lista::keyboardSearch(const QString& search) {
  // The Space key selects, and then Qt looks for the next line that begins with a blank: nearly all do.
  if (!search.trimmed().isEmpty()) QListView::keyboardSearch(search);
}

void vista_lista::dataChanged(const QModelIndex& from, const QModelIndex& to, const QList<int>& roles) {
  // QListView's own lays all lines out again, and so paints twice; here a text never changes a line's size.
  // NOLINTNEXTLINE(bugprone-parent-virtual-call)
  QAbstractItemView::dataChanged(from, to, roles);
}

void vista_lista::warn() {
  if (elegida) elegida(actual(), seleccionadas());
}

void vista_lista::mousePressEvent(QMouseEvent* event) {
  // The other buttons would select without a click.
  if (event->button() != Qt::LeftButton) return;
  const bool on_line = indexAt(event->position().toPoint()).isValid();
  QListView::mousePressEvent(event);
  // A click on a line that is selected already is a click all the same.
  if (!on_line) return;
  if (!traits_.varias) {
    cursor_ = actual();
    // With Ctrl held Qt takes the selection back from a line that is the only one, now or on release; here it
    // is clicked all the same.
    selectionModel()->select(currentIndex(), QItemSelectionModel::ClearAndSelect);
  }
  warn();
}

void vista_lista::mouseMoveEvent(QMouseEvent* event) {
  // Where one line at most is selected, its click may have moved the focus on: dragging selects nothing more.
  if (!traits_.varias || (event->buttons() & Qt::LeftButton) == 0) return;
  const std::vector<int> before = seleccionadas();
  QListView::mouseMoveEvent(event);
  if (seleccionadas() != before) warn();
}

void vista_lista::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  // A press on one of several selected lines might begin a drag for Qt: that it alone is chosen shows on
  // release.
  const std::vector<int> before = seleccionadas();
  const QItemSelection kept = selectionModel()->selection();
  QListView::mouseReleaseEvent(event);
  if (seleccionadas() == before) return;
  if (traits_.varias)
    warn();
  else
    selectionModel()->select(kept, QItemSelectionModel::ClearAndSelect);
}

void vista_lista::mouseDoubleClickEvent(QMouseEvent* event) {
  // The second press of two: where nothing else is made of it, it is a click as the first was. Qt gives the
  // list the focus again, which that first click may have passed on.
  if (!doble_click) return mousePressEvent(event);
  const QModelIndex index = indexAt(event->position().toPoint());
  if (event->button() == Qt::LeftButton && index.isValid()) doble_click(index.row());
}

bool vista_lista::mueve_cursor(int key) {
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

void vista_lista::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (traits_.varias) {
    if (enter && actual() >= 0 && doble_click) {
      doble_click(actual());
      return;
    }
    const std::vector<int> before = seleccionadas();
    const int current = actual();
    QListView::keyPressEvent(event);
    if (seleccionadas() != before || actual() != current) warn();
    return;
  }
  // A click on a line may take the focus away at once, so the arrow keys only walk; Space or Enter is the
  // click.
  if (mueve_cursor(event->key())) return;
  if ((enter || event->key() == Qt::Key_Space) && cursor_ >= 0) {
    const QModelIndex index = model()->index(cursor_, 0);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    warn();
    return;
  }
  event->ignore();
}

void vista_lista::focusInEvent(QFocusEvent* event) {
  // Not QAbstractItemView's own: it would make the first line the current one.
  // NOLINTNEXTLINE(bugprone-parent-virtual-call)
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

void vista_lista::focusOutEvent(QFocusEvent* event) {
  QListView::focusOutEvent(event);
  viewport()->update();
}

void vista_lista::paintEvent(QPaintEvent* event) {
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

class enlace_lista final : public enlace {
 public:
  enlace_lista(const control& record, puerta& door, const medidas& measures)
      : enlace(record, door),
        view_(new vista_lista(aspecto(record.which()), measures)),
        model_(new modelo_lista(view_)) {
    view_->setModel(model_);
    view_->elegida = [this](int current, std::vector<int> selected) {
      actua([&](Estructura& window) { window.choose_rows(which(), index(), current, std::move(selected)); });
    };
    if (record.which() == id::MP)
      view_->doble_click = [this](int row) {
        actua([&](Estructura& window) { window.dblclick_row(which(), index(), row); });
      };
  }
  [[nodiscard]] QWidget* widget() const override { return view_; }

 protected:
  void muestra(const control& from) override {
    if (!filled_ || rows_seen_ != from.row_changes()) {
      filled_ = true;
      rows_seen_ = from.row_changes();
      model_->pon(from.rows());
    }
    view_->pon_seleccion(from.row(), from.selected(), changes_seen_ != from.changes());
    changes_seen_ = from.changes();
    const QPalette::ColorRole role = from.face_background() ? QPalette::Window : QPalette::Base;
    if (view_->viewport()->backgroundRole() != role) view_->viewport()->setBackgroundRole(role);
  }

 private:
  vista_lista* view_;
  modelo_lista* model_;
  unsigned rows_seen_ = 0;
  unsigned changes_seen_ = 0;
  bool filled_ = false;
};

}  // namespace

std::unique_ptr<enlace> enlaza_lista(const control& record, puerta& door, const medidas& measures) {
  return std::make_unique<enlace_lista>(record, door, measures);
}

}  // namespace estructura
