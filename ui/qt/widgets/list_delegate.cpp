#include "ui/qt/widgets/list_delegate.h"

#include <QAbstractScrollArea>
#include <QPainter>

#include "ui/qt/look/colours.h"
#include "ui/qt/look/focus_frame.h"

namespace estructura {

namespace {

/// Columns of a line with tabs: the mark and address, the word, the instruction.
constexpr int column_stop(int column) {
  return column == 0 ? 0 : column == 1 ? 6 : 11 + (column - 2) * 8;
}

}  // namespace

list_delegate::list_delegate(const list_traits& traits, const panel_metrics& measures, QObject* parent)
    : QStyledItemDelegate(parent),
      faint_columns_(traits.faint_columns),
      margin_(traits.padding * measures.char_width / 2 + traits.gutter * measures.char_width),
      channel_(traits.gutter > 0),
      several_(traits.several),
      char_width_(measures.text_width(100) / 100.0),
      row_height_(measures.row_height) {}

QSize list_delegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
  return {margin_, row_height_};
}

list_delegate::row_colours list_delegate::colours_of(const QStyleOptionViewItem& option) {
  const bool selected = (option.state & QStyle::State_Selected) != 0;
  const bool active = (option.state & QStyle::State_Active) != 0;
  const bool usable = (option.state & QStyle::State_Enabled) != 0;
  const QPalette::ColorGroup group = !usable  ? QPalette::Disabled
                                     : active ? QPalette::Active
                                              : QPalette::Inactive;
  const auto& list = static_cast<const QAbstractScrollArea&>(*option.widget);
  const QColor ground =
      option.palette.color(group, selected ? QPalette::Highlight : list.viewport()->backgroundRole());
  const QColor strong = option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
  return {ground, strong, selected ? strong : fainter(strong, ground)};
}

void list_delegate::paint(QPainter* painter, const QStyleOptionViewItem& given,
                          const QModelIndex& index) const {
  QStyleOptionViewItem option = given;
  // A line that was clicked stays chosen, and looked as if it waited for something. Only in the program
  // list the selection is told of from elsewhere.
  if (!several_ && !option.widget->hasFocus()) option.state &= ~QStyle::State_Selected;
  option.widget->style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
  const bool selected = (option.state & QStyle::State_Selected) != 0;
  const row_colours colours = colours_of(option);
  const QColor& ground = colours.ground;
  const bool next = index.row() == marks.next_row;
  const bool changed = index.row() < 32 && (marks.changed_rows >> index.row() & 1U) != 0;
  if (changed)
    paint_change(*painter, option.rect, ground, selected ? ground : change_ground(ground, colours.strong));

  QFont font = option.font;
  font.setBold(changed || next);
  painter->setFont(font);
  QString line = index.data(Qt::DisplayRole).toString();
  if (channel_ && next) paint_arrow(*painter, option.rect, colours.strong);
  if (channel_ && line.startsWith(QLatin1Char('*'))) {
    paint_breakpoint(*painter, option.rect, selected ? colours.strong : breakpoint_disc(ground));
    line[0] = QLatin1Char(' ');
  }
  paint_columns(*painter, option.rect, line, colours);
  if ((option.state & QStyle::State_HasFocus) != 0)
    paint_focus_frame(*painter, *option.widget, option,
                      option.palette.color(selected ? QPalette::Highlight : QPalette::Base));
}

void list_delegate::paint_columns(QPainter& painter, const QRect& row, const QString& line,
                                  const row_colours& colours) const {
  int column = 0;
  for (qsizetype from = 0; from <= line.size(); ++column) {
    qsizetype to = line.indexOf(QLatin1Char('\t'), from);
    if (to < 0) to = line.size();
    const double x = row.left() + margin_ + column_stop(column) * char_width_;
    const QRectF cell(x, row.top(), row.right() - x + 1, row.height());
    painter.setPen(column < faint_columns_ ? colours.faint : colours.strong);
    painter.drawText(cell, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip,
                     line.mid(from, to - from));
    from = to + 1;
  }
}

void list_delegate::paint_change(QPainter& painter, const QRect& row, const QColor& ground,
                                 const QColor& marked) {
  painter.fillRect(row.adjusted(2, 0, -2, 0), marked);
  painter.fillRect(QRect(row.left(), row.top(), 2, row.height()), change_bar(ground));
}

/// A triangle that points at the line.
void list_delegate::paint_arrow(QPainter& painter, const QRect& row, const QColor& colour) const {
  const double middle = row.top() + row.height() / 2.0;
  const double half = char_width_ * 0.62;
  const double left = row.left() + char_width_ * 0.35;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawPolygon(QPolygonF({{left, middle - half}, {left + 1.5 * half, middle}, {left, middle + half}}));
  painter.restore();
}

/// The star of a breakpoint upon a disc.
void list_delegate::paint_breakpoint(QPainter& painter, const QRect& row, const QColor& colour) const {
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

}  // namespace estructura
