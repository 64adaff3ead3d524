#include "ui/qt/window/layout_parts.h"

#include <utility>

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "ui/qt/text/text_conversion.h"
#include "ui/qt/widgets/group_box.h"

namespace estructura {

layout_parts::layout_parts(widget_finder find, companion_setter accompany_with, const panel_metrics& measures)
    : m(measures), accompany(std::move(accompany_with)), find_(std::move(find)) {}

QGridLayout* layout_parts::cell_column(QWidget* sheet, int rows) const {
  auto* grid = without_margins(new QGridLayout(sheet), 0);
  for (int row = 0; row < rows; ++row) grid->setRowMinimumHeight(row, m.row_height);
  grid->setRowStretch(rows, 1);
  return grid;
}

QWidget* layout_parts::cell_label(id which, int characters, int index) const {
  auto* label = static_cast<QLabel*>(w(which, index));
  label->setFont(m.mono);
  label->setFixedSize(m.text_width(characters), m.row_height);
  return label;
}

QWidget* layout_parts::value_display(id which, int characters, Qt::Alignment alignment) const {
  auto* label = static_cast<QLabel*>(w(which));
  label->setFont(m.mono);
  label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  label->setBackgroundRole(QPalette::Base);
  label->setForegroundRole(QPalette::Text);
  label->setAutoFillBackground(true);
  label->setAlignment(alignment | Qt::AlignVCenter);
  label->setFixedSize(m.cell_width(characters) + 2 * label->frameWidth() + m.char_width / 2, m.field_height);
  return label;
}

QWidget* layout_parts::title_label(id which) const {
  QWidget* label = w(which);
  QFont bold = label->font();
  bold.setBold(true);
  label->setFont(bold);
  label->setFixedHeight(group_box::title_height(*label));
  return label;
}

QWidget* layout_parts::heading(id title, QWidget& parent, QWidget* beside) const {
  auto* whole = new QWidget(&parent);
  whole->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  auto* row = without_margins(new QHBoxLayout(whole), m.char_width);
  row->addWidget(title_label(title));
  if (beside != nullptr) row->addWidget(beside);
  row->addWidget(new separator_line, 1);
  return whole;
}

QLabel* layout_parts::note_label(const char* text) const {
  auto* label = new QLabel(QString::fromUtf8(text));
  // It is measured before it stands on the panel, whose letters may be smaller than the application's.
  label->setFont(w(id::Label1)->font());
  label->setForegroundRole(QPalette::PlaceholderText);
  QSizePolicy policy = label->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  label->setSizePolicy(policy);
  return label;
}

QWidget* layout_parts::sized_button(id which) const {
  auto* button = static_cast<QPushButton*>(w(which));
  QString caption = to_qt(declared(which).texts[0]);
  caption.remove(QLatin1Char('&'));
  const int picture = button->icon().isNull() ? 0 : button->iconSize().width() + m.char_width / 2;
  button->setMinimumWidth(button->fontMetrics().horizontalAdvance(caption) + picture + 3 * m.char_width);
  // With a picture or without, all of the same height.
  button->setFixedHeight(w(id::cargar)->sizeHint().height());
  return button;
}

QFrame* make_sheet(QWidget* parent) {
  auto* sheet = new QFrame(parent);
  sheet->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  sheet->setBackgroundRole(QPalette::Base);
  sheet->setAutoFillBackground(true);
  sheet->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  return sheet;
}

QHBoxLayout* row_in_sheet(QFrame* sheet) {
  auto* row = new QHBoxLayout(sheet);
  row->setContentsMargins(frame_line, frame_line, frame_line, frame_line);
  row->setSpacing(0);
  return row;
}

}  // namespace estructura
