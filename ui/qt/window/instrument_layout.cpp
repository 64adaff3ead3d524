#include "ui/qt/window/instrument_layout.h"

#include <array>

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "ui/qt/widgets/form_area.h"

namespace estructura {

namespace {

// Lines of the lists that have something beside them.
enum data_line { line_indf = 0, line_legend = 2, line_status = 3, line_fsr = 4, line_porta = 5 };
enum register_line {
  line_option_legend = 1,
  line_option = 2,
  line_trisa = 3,
  line_trisb = 4,
  line_trisc = 5
};

}  // namespace

instrument_layout::instrument_layout(const layout_parts& parts, form_area& panel)
    : parts_(parts), m_(parts.m), column_(new form_area(&panel)) {
  column_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
  auto* rows = without_margins(new QVBoxLayout(column_), m_.gap * 2);
  rows->addWidget(w(id::Frame2));
  lay_out_registers();
  lay_out_ports();
  lay_out_timer();
  lay_out_chip();
  rows->addWidget(data_memory());
  auto* pins = without_margins(new QHBoxLayout, m_.gap * 3);
  pins->addWidget(w(id::Frame5), 3);
  pins->addWidget(w(id::Frame4), 2);
  rows->addLayout(pins);
  rows->addWidget(w(id::Frame3));
  rows->addStretch(1);
  w(id::rotulo)->setForegroundRole(QPalette::PlaceholderText);
  rows->addWidget(w(id::rotulo), 0, Qt::AlignRight);
}

QWidget* instrument_layout::column() const {
  return column_;
}

void instrument_layout::arrange() {
  const bool up = w(id::TRISA)->isHidden();
  if (up == tris_moved_up_) return;
  tris_moved_up_ = up;
  tris_->removeWidget(w(id::TRISB));
  tris_->addWidget(w(id::TRISB), up ? line_trisa : line_trisb, 0);
}

// --- registers, stack and the entry of a value ---

void instrument_layout::lay_out_registers() {
  auto* columns = without_margins(new QHBoxLayout(w(id::Frame2)), m_.gap * 3);
  columns->addLayout(register_table());
  auto* right = without_margins(new QVBoxLayout, m_.gap / 2);
  right->addItem(new overlay_item(*parts_.heading(id::Label12, *column_), *w(id::Frame2)));
  right->addLayout(stack_levels());
  right->addStretch(1);
  right->addLayout(data_entry());
  columns->addLayout(right, 1);
}

QLayout* instrument_layout::register_table() {
  auto* rows = without_margins(new QVBoxLayout, m_.gap / 2);
  rows->addItem(new overlay_item(*parts_.heading(id::Label13, *column_), *w(id::Frame2)));
  QFrame* const sheet = make_sheet(w(id::Frame2));
  QHBoxLayout* const table = row_in_sheet(sheet);
  table->addWidget(w(id::nomre));
  table->addWidget(w(id::RE));
  table->addItem(new overlay_item(*binary_cells(), *sheet));
  rows->addWidget(sheet);
  return rows;
}

QWidget* instrument_layout::binary_cells() {
  auto* cells = new QWidget(column_);
  // The ground of the sheet that they lie over.
  cells->setBackgroundRole(QPalette::Base);
  tris_ = parts_.cell_column(cells, 6);
  tris_->setContentsMargins(m_.char_width, 0, m_.char_width, 0);
  tris_->addWidget(parts_.cell_label(id::loption, 8), line_option_legend, 0);
  tris_->addWidget(parts_.cell_label(id::OPT, 8), line_option, 0);
  tris_->addWidget(parts_.cell_label(id::TRISA, 8), line_trisa, 0);
  tris_->addWidget(parts_.cell_label(id::TRISB, 8), line_trisb, 0);
  tris_->addWidget(parts_.cell_label(id::TRISC, 8), line_trisc, 0);
  w(id::loption)->setForegroundRole(QPalette::PlaceholderText);
  return cells;
}

QLayout* instrument_layout::stack_levels() {
  auto* stack = without_margins(new QHBoxLayout, m_.gap / 2);
  QFrame* const levels = make_sheet(w(id::Frame2));
  row_in_sheet(levels)->addWidget(w(id::PIL));
  stack->addWidget(levels, 0, Qt::AlignTop);
  auto* const top = static_cast<QLabel*>(w(id::Label4));
  top->setParent(column_);
  top->setFixedHeight(m_.row_height + levels->frameWidth() + frame_line);
  top->setAlignment(Qt::AlignRight | Qt::AlignBottom);
  stack->addItem(new overlay_item(*top, *w(id::Frame2), Qt::AlignTop));
  stack->addStretch(1);
  return stack;
}

QLayout* instrument_layout::data_entry() {
  auto* entry = without_margins(new QGridLayout, m_.gap);
  entry->setVerticalSpacing(m_.gap / 2);
  entry->addWidget(w(id::Label16), 0, 0);
  entry->addWidget(w(id::Label15), 0, 1);
  entry->addWidget(parts_.value_display(id::dirdat, 9, Qt::AlignLeft), 1, 0);
  w(id::dat)->setFixedWidth(m_.cell_width(5));
  entry->addWidget(w(id::dat), 1, 1);
  entry->addWidget(parts_.sized_button(id::entrardat), 1, 2);
  entry->setColumnStretch(3, 1);
  return entry;
}

// --- ports, Timer0 and chip ---

void instrument_layout::lay_out_ports() {
  auto* grid = without_margins(new QGridLayout(w(id::Frame5)), 0);
  grid->setVerticalSpacing(m_.gap / 2);
  // Bit 7 stands leftmost, as in the binary views.
  constexpr std::array<id, 8> numbers = {id::Label21, id::Label23, id::Label24, id::Label25,
                                         id::Label26, id::Label27, id::Label28, id::Label29};
  for (int bit = 0; bit < 8; ++bit)
    grid->addWidget(w(numbers[static_cast<std::size_t>(bit)]), 0, 8 - bit, Qt::AlignHCenter);
  for (int port = 0; port < 3; ++port) {
    constexpr std::array<id, 3> pins = {id::PA, id::PB, id::PC};
    QWidget* name = w(id::lp, port);
    name->setMinimumWidth(name->fontMetrics().horizontalAdvance(QStringLiteral("GPIO")) + m_.char_width);
    grid->addWidget(name, port + 1, 0);
    const id pin = pins[static_cast<std::size_t>(port)];
    for (int bit = 0; bit < declared(pin).count; ++bit)
      grid->addWidget(w(pin, bit), port + 1, 8 - bit, Qt::AlignCenter);
  }
  for (int column = 1; column <= 8; ++column) grid->setColumnStretch(column, 1);
}

void instrument_layout::lay_out_timer() {
  auto* grid = without_margins(new QGridLayout(w(id::Frame4)), m_.gap);
  grid->setVerticalSpacing(m_.gap);
  w(id::FR)->setFixedWidth(m_.cell_width(8));
  grid->addWidget(w(id::Label33), 0, 0);
  grid->addWidget(w(id::FR), 0, 1);
  grid->addWidget(parts_.note_label("Hz"), 0, 2);
  grid->addWidget(parts_.sized_button(id::TOCKI), 0, 3);
  grid->addWidget(w(id::Label22), 1, 0);
  grid->addWidget(parts_.value_display(id::SENTIM, 9, Qt::AlignLeft), 1, 1, 1, 3, Qt::AlignLeft);
  grid->addWidget(w(id::Label20), 2, 0);
  grid->addWidget(parts_.value_display(id::divtim, 3, Qt::AlignRight), 2, 1, Qt::AlignLeft);
  grid->setColumnStretch(4, 1);
}

void instrument_layout::lay_out_chip() {
  auto* rows = without_margins(new QVBoxLayout(w(id::Frame3)), m_.gap);
  rows->addLayout(run_buttons());
  rows->addLayout(counters());
  rows->addLayout(clock());
}

QLayout* instrument_layout::run_buttons() {
  auto* run = new QHBoxLayout;
  run->setSpacing(m_.gap);
  for (const id which : {id::eje1, id::ejecutar, id::MCLR, id::WDT, id::por})
    run->addWidget(parts_.sized_button(which), 1);
  return run;
}

QLayout* instrument_layout::counters() {
  auto* grid = without_margins(new QGridLayout, m_.gap);
  grid->addWidget(w(id::Label8), 0, 0);
  // Room for any 32-bit count with its points.
  grid->addWidget(parts_.value_display(id::ciclos, 13, Qt::AlignRight), 0, 1);
  grid->addWidget(w(id::Label9), 1, 0);
  grid->addWidget(parts_.value_display(id::contawdt, 13, Qt::AlignRight), 1, 1);
  grid->setColumnMinimumWidth(2, m_.gap);
  grid->addWidget(w(id::VISMP), 0, 3, 1, 2);
  grid->addWidget(w(id::WATCHDOG), 1, 3);
  grid->addWidget(w(id::estsleep), 1, 4);
  grid->setColumnStretch(5, 1);
  return grid;
}

QLayout* instrument_layout::clock() {
  auto* row = new QHBoxLayout;
  row->setSpacing(m_.gap);
  row->addWidget(w(id::PIC));
  row->addSpacing(m_.gap * 2);
  row->addWidget(w(id::Label14));
  w(id::FREC)->setFixedWidth(m_.cell_width(8));
  row->addWidget(w(id::FREC));
  row->addWidget(w(id::Label19));
  row->addStretch(1);
  row->addWidget(w(id::fext));
  row->addWidget(w(id::CMCLR));
  return row;
}

// --- data memory ---

QWidget* instrument_layout::data_memory() {
  auto* whole = new QWidget(column_);
  auto* grid = without_margins(new QGridLayout(whole), 0);
  grid->setHorizontalSpacing(m_.gap * 2);
  auto* numbers = without_margins(new QHBoxLayout, 0);
  grid->addWidget(parts_.heading(id::Label11, *whole), 0, 0);
  grid->addLayout(numbers, 0, 1);
  grid->addWidget(common_memory(), 1, 0);
  grid->addWidget(banks(*numbers), 1, 1);
  grid->setColumnStretch(2, 1);
  return whole;
}

QWidget* instrument_layout::common_memory() {
  QFrame* const sheet = make_sheet(column_);
  QHBoxLayout* const row = row_in_sheet(sheet);
  row->addWidget(w(id::nombres));
  row->addWidget(w(id::dirmd, 0));
  row->addWidget(w(id::MDP));
  row->addWidget(cells_beside_common_memory(sheet));
  return sheet;
}

QWidget* instrument_layout::cells_beside_common_memory(QWidget* sheet) {
  auto* beside = new QWidget(sheet);
  QGridLayout* const cells = parts_.cell_column(beside, 16);
  cells->setContentsMargins(m_.char_width, 0, m_.char_width, 0);
  // What FSR points at: the value beside INDF, the bank and the address beside FSR.
  cells->addLayout(indirect_cells(), line_indf, 0);
  cells->addLayout(pointer_cells(), line_fsr, 0);
  cells->addWidget(parts_.cell_label(id::lstatus, 8), line_legend, 0);
  w(id::lstatus)->setForegroundRole(QPalette::PlaceholderText);
  cells->addWidget(parts_.cell_label(id::STATUS, 8), line_status, 0);
  cells->addWidget(parts_.cell_label(id::BPA, 8), line_porta, 0);
  cells->addWidget(parts_.cell_label(id::BPB, 8), line_porta + 1, 0);
  cells->addWidget(parts_.cell_label(id::BPC, 8), line_porta + 2, 0);
  return beside;
}

QLayout* instrument_layout::indirect_cells() {
  auto* row = without_margins(new QHBoxLayout, m_.char_width / 2);
  row->addWidget(parts_.note_label("dato indirecto"));
  row->addWidget(parts_.cell_label(id::INDF, 2));
  row->addStretch(1);
  return row;
}

QLayout* instrument_layout::pointer_cells() {
  auto* row = without_margins(new QHBoxLayout, m_.char_width / 2);
  QLabel* const bank = parts_.note_label("banco");
  parts_.accompany(id::PAGFSR, bank);
  row->addWidget(parts_.note_label("dirección"));
  row->addWidget(parts_.cell_label(id::DIRFSR, 2));
  row->addSpacing(m_.char_width);
  row->addWidget(bank);
  row->addWidget(parts_.cell_label(id::PAGFSR, 1));
  row->addStretch(1);
  return row;
}

/// The banks, and their numbers above them.
QWidget* instrument_layout::banks(QHBoxLayout& numbers) {
  QFrame* const sheet = make_sheet(column_);
  QHBoxLayout* const columns = row_in_sheet(sheet);
  columns->addWidget(w(id::dirmd, 1));
  QLabel* const heading = parts_.note_label("Banco");
  numbers.addSpacing(sheet->frameWidth() + frame_line);
  numbers.addWidget(heading);
  // The numbers stand above their columns, and what hidden banks leave looks like the panel.
  w(id::dirmd, 1)->setFixedWidth(heading->sizeHint().width());
  sheet->setBackgroundRole(QPalette::Window);
  for (int b = 0; b < 4; ++b) {
    columns->addWidget(w(id::MD, b));
    auto* const number = static_cast<QLabel*>(parts_.cell_label(id::lpag, 1, b));
    number->setAlignment(Qt::AlignCenter);
    number->setFixedWidth(w(id::MD, b)->width());
    numbers.addWidget(number);
  }
  numbers.addSpacing(sheet->frameWidth() + frame_line);
  return sheet;
}

}  // namespace estructura
