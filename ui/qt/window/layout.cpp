#include "ui/qt/window/layout.h"

#include <algorithm>
#include <utility>

#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "ui/qt/text/text_conversion.h"
#include "ui/qt/widgets/group_box.h"
#include "ui/qt/widgets/memory_map.h"
#include "ui/qt/widgets/pane_splitter.h"
#include "ui/qt/widgets/text_label.h"

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

template <class Layout>
Layout* without_margins(Layout* layout, int spacing) {
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(spacing);
  return layout;
}

/// Room within a sheet's frame: styles draw its line somewhat thicker than they say at 200 %.
constexpr int frame_line = 1;

/// A sheet with the background of a list and one frame around all that stands on it.
QFrame* make_sheet() {
  auto* sheet = new QFrame;
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

}  // namespace

window_layout::window_layout(QWidget& panel, widget_finder find, companion_setter accompany,
                             const panel_metrics& measures)
    : find_(std::move(find)), accompany_(std::move(accompany)), m_(measures) {
  auto* columns = new QHBoxLayout(&panel);
  columns->setContentsMargins(m_.gap * 2, m_.gap, m_.gap * 2, m_.gap * 2);
  columns->setSpacing(m_.gap * 3);
  for (const id entry : {id::direc, id::INS, id::FREC, id::FR, id::dat})
    w(entry)->setFixedHeight(m_.field_height);
  lay_out_documents();
  columns->addWidget(w(id::Frame7), 1);
  columns->addWidget(instrument_column());
  arrange();
}

// --- pieces ---

QGridLayout* window_layout::cell_column(QWidget* sheet, int rows) const {
  auto* grid = without_margins(new QGridLayout(sheet), 0);
  for (int row = 0; row < rows; ++row) grid->setRowMinimumHeight(row, m_.row_height);
  grid->setRowStretch(rows, 1);
  return grid;
}

QWidget* window_layout::cell_label(id which, int characters, int index) const {
  auto* label = static_cast<QLabel*>(w(which, index));
  label->setFont(m_.mono);
  label->setFixedSize(m_.text_width(characters), m_.row_height);
  return label;
}

QWidget* window_layout::value_display(id which, int characters, Qt::Alignment alignment) const {
  auto* label = static_cast<QLabel*>(w(which));
  label->setFont(m_.mono);
  label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  label->setBackgroundRole(QPalette::Base);
  label->setForegroundRole(QPalette::Text);
  label->setAutoFillBackground(true);
  label->setAlignment(alignment | Qt::AlignVCenter);
  label->setFixedSize(m_.cell_width(characters) + 2 * label->frameWidth() + m_.char_width / 2,
                      m_.field_height);
  return label;
}

QWidget* window_layout::title_label(id which) const {
  QWidget* label = w(which);
  QFont bold = label->font();
  bold.setBold(true);
  label->setFont(bold);
  label->setFixedHeight(group_box::title_height(*label));
  return label;
}

QHBoxLayout* window_layout::heading_row(id title, QWidget* beside) const {
  auto* row = without_margins(new QHBoxLayout, m_.char_width);
  row->addWidget(title_label(title));
  if (beside != nullptr) row->addWidget(beside);
  row->addWidget(new separator_line, 1);
  return row;
}

QLabel* window_layout::note_label(const char* text) const {
  auto* label = new QLabel(QString::fromUtf8(text));
  // It is measured before it stands on the panel, whose letters may be smaller than the application's.
  label->setFont(w(id::Label1)->font());
  label->setForegroundRole(QPalette::PlaceholderText);
  QSizePolicy policy = label->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  label->setSizePolicy(policy);
  return label;
}

QWidget* window_layout::sized_button(id which) const {
  auto* button = static_cast<QPushButton*>(w(which));
  QString caption = to_qt(declared(which).texts[0]);
  caption.remove(QLatin1Char('&'));
  const int picture = button->icon().isNull() ? 0 : button->iconSize().width() + m_.char_width / 2;
  button->setMinimumWidth(button->fontMetrics().horizontalAdvance(caption) + picture + 3 * m_.char_width);
  // With a picture or without, all of the same height.
  button->setFixedHeight(w(id::cargar)->sizeHint().height());
  return button;
}

// --- source and program memory ---

void window_layout::lay_out_documents() {
  auto* whole = without_margins(new QHBoxLayout(w(id::Frame7)), 0);
  auto* panes = new pane_splitter;
  panes->setHandleWidth(m_.gap * 3);
  panes->addWidget(source_pane());
  panes->addWidget(program_pane());
  panes->setStretchFactor(0, 5);
  panes->setStretchFactor(1, 2);
  whole->addWidget(panes);
}

QWidget* window_layout::source_pane() {
  auto* column = new QWidget;
  auto* rows = without_margins(new QVBoxLayout(column), m_.gap);
  static_cast<text_label*>(w(id::FILASM))->elide();
  rows->addLayout(heading_row(id::Label5, w(id::FILASM)));

  auto* clip = without_margins(new QHBoxLayout(w(id::clip)), m_.gap);
  for (const id which : {id::tab, id::Copiar, id::Cortar, id::Pegar}) clip->addWidget(sized_button(which));
  auto* top = without_margins(new QHBoxLayout, m_.gap * 2);
  top->addWidget(w(id::sl, 0));
  top->addWidget(w(id::sl, 1));
  top->addStretch(1);
  top->addWidget(w(id::clip));
  rows->addLayout(top);

  // One place for both: one of them is hidden.
  auto* texts = without_margins(new QGridLayout, 0);
  for (const id which : {id::source, id::lst}) {
    w(which)->setMinimumWidth(m_.cell_width(24));
    texts->addWidget(w(which), 0, 0);
  }
  rows->addLayout(texts, 1);

  auto* files = without_margins(new QHBoxLayout, m_.gap);
  for (const id which : {id::cargarasm, id::salvarasm, id::borrarasm}) files->addWidget(sized_button(which));
  files->addStretch(1);
  // Beside what they fill, and what they read.
  files->addWidget(sized_button(id::desensamblar));
  files->addWidget(sized_button(id::Ensamblar));
  rows->addLayout(files);
  return column;
}

QWidget* window_layout::program_pane() {
  auto* column = new QWidget;
  auto* rows = without_margins(new QVBoxLayout(column), m_.gap);
  static_cast<text_label*>(w(id::FILHEX))->elide();
  rows->addLayout(heading_row(id::Label10, w(id::FILHEX)));
  auto* memory = without_margins(new QHBoxLayout, 0);
  auto& map = *static_cast<memory_map*>(w(id::mapa));
  const auto margin = [&](map_margin::marks shown, const char* name) {
    auto* strip = new map_margin(map, shown);
    strip->setObjectName(QLatin1String(name));
    return strip;
  };
  memory->addWidget(margin(map_margin::marks::breakpoints, "map_breakpoints"));
  memory->addWidget(&map);
  memory->addWidget(margin(map_margin::marks::marker, "map_marker"));
  memory->addSpacing(m_.gap / 2);
  // Where the list is hidden its sheet remains.
  QFrame* sheet = make_sheet();
  sheet->setBackgroundRole(QPalette::Window);
  sheet->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
  row_in_sheet(sheet)->addWidget(w(id::MP));
  memory->addWidget(sheet, 1);
  rows->addLayout(memory, 1);
  lay_out_instruction();
  rows->addWidget(w(id::Frame1));
  auto* files = without_margins(new QGridLayout, m_.gap);
  files->addWidget(sized_button(id::cargar), 0, 0);
  files->addWidget(sized_button(id::salvar), 0, 1);
  files->addWidget(sized_button(id::borrar), 0, 2);
  files->addWidget(sized_button(id::salvar16c84), 1, 0);
  files->addWidget(sized_button(id::fin), 1, 2);
  for (int third = 0; third < 3; ++third) files->setColumnStretch(third, 1);
  rows->addLayout(files);
  return column;
}

void window_layout::lay_out_instruction() {
  auto* grid = without_margins(new QGridLayout(w(id::Frame1)), m_.gap);
  grid->setVerticalSpacing(m_.gap / 2);
  grid->addWidget(w(id::Label1), 0, 0);
  grid->addWidget(w(id::Label2), 0, 1);
  grid->addWidget(w(id::Label3), 0, 2);
  w(id::direc)->setFixedWidth(m_.cell_width(5));
  grid->addWidget(w(id::direc), 1, 0);
  w(id::INS)->setMinimumWidth(m_.cell_width(14));
  grid->addWidget(w(id::INS), 1, 1);
  QWidget* word = value_display(id::codop, 3, Qt::AlignHCenter);
  word->setFixedWidth(std::max(word->width(), w(id::Label3)->sizeHint().width()));
  grid->addWidget(word, 1, 2);
  grid->setColumnStretch(1, 1);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(m_.gap);
  for (const id which : {id::Entrarins, id::borrarins, id::break_})
    buttons->addWidget(sized_button(which), 1);
  grid->setRowMinimumHeight(2, m_.gap / 2);
  grid->addLayout(buttons, 3, 0, 1, 3);
}

// --- instruments ---

QWidget* window_layout::instrument_column() {
  auto* column = new QWidget;
  column->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
  auto* rows = without_margins(new QVBoxLayout(column), m_.gap * 2);
  lay_out_registers();
  lay_out_ports();
  lay_out_timer();
  lay_out_chip();
  rows->addWidget(w(id::Frame2));
  rows->addWidget(data_memory());
  auto* pins = without_margins(new QHBoxLayout, m_.gap * 3);
  pins->addWidget(w(id::Frame5), 3);
  pins->addWidget(w(id::Frame4), 2);
  rows->addLayout(pins);
  rows->addWidget(w(id::Frame3));
  rows->addStretch(1);
  w(id::rotulo)->setForegroundRole(QPalette::PlaceholderText);
  rows->addWidget(w(id::rotulo), 0, Qt::AlignRight);
  return column;
}

void window_layout::lay_out_chip() {
  auto* rows = without_margins(new QVBoxLayout(w(id::Frame3)), m_.gap);
  auto* run = new QHBoxLayout;
  run->setSpacing(m_.gap);
  for (const id which : {id::eje1, id::ejecutar, id::MCLR, id::WDT, id::por})
    run->addWidget(sized_button(which), 1);
  rows->addLayout(run);

  auto* counters = without_margins(new QGridLayout, m_.gap);
  counters->addWidget(w(id::Label8), 0, 0);
  // Room for any 32-bit count with its points.
  counters->addWidget(value_display(id::ciclos, 13, Qt::AlignRight), 0, 1);
  counters->addWidget(w(id::Label9), 1, 0);
  counters->addWidget(value_display(id::contawdt, 13, Qt::AlignRight), 1, 1);
  counters->setColumnMinimumWidth(2, m_.gap);
  counters->addWidget(w(id::VISMP), 0, 3, 1, 2);
  counters->addWidget(w(id::WATCHDOG), 1, 3);
  counters->addWidget(w(id::estsleep), 1, 4);
  counters->setColumnStretch(5, 1);
  rows->addLayout(counters);

  auto* clock = new QHBoxLayout;
  clock->setSpacing(m_.gap);
  clock->addWidget(w(id::PIC));
  clock->addSpacing(m_.gap * 2);
  clock->addWidget(w(id::Label14));
  w(id::FREC)->setFixedWidth(m_.cell_width(8));
  clock->addWidget(w(id::FREC));
  clock->addWidget(w(id::Label19));
  clock->addStretch(1);
  clock->addWidget(w(id::fext));
  clock->addWidget(w(id::CMCLR));
  rows->addLayout(clock);
}

void window_layout::lay_out_registers() {
  auto* columns = without_margins(new QHBoxLayout(w(id::Frame2)), m_.gap * 3);

  auto* left = without_margins(new QVBoxLayout, m_.gap / 2);
  left->addLayout(heading_row(id::Label13));
  QFrame* registers = make_sheet();
  QHBoxLayout* table = row_in_sheet(registers);
  table->addWidget(w(id::nomre));
  table->addWidget(w(id::RE));
  auto* binaries = new QWidget;
  tris_ = cell_column(binaries, 6);
  tris_->setContentsMargins(m_.char_width, 0, m_.char_width, 0);
  tris_->addWidget(cell_label(id::loption, 8), line_option_legend, 0);
  tris_->addWidget(cell_label(id::OPT, 8), line_option, 0);
  tris_->addWidget(cell_label(id::TRISA, 8), line_trisa, 0);
  tris_->addWidget(cell_label(id::TRISB, 8), line_trisb, 0);
  tris_->addWidget(cell_label(id::TRISC, 8), line_trisc, 0);
  w(id::loption)->setForegroundRole(QPalette::PlaceholderText);
  table->addWidget(binaries);
  left->addWidget(registers);
  columns->addLayout(left);

  auto* right = without_margins(new QVBoxLayout, m_.gap / 2);
  right->addLayout(heading_row(id::Label12));
  auto* stack = without_margins(new QHBoxLayout, m_.gap / 2);
  QFrame* levels = make_sheet();
  row_in_sheet(levels)->addWidget(w(id::PIL));
  w(id::Label4)->setFixedHeight(m_.row_height + levels->frameWidth() + frame_line);
  static_cast<QLabel*>(w(id::Label4))->setAlignment(Qt::AlignRight | Qt::AlignBottom);
  stack->addWidget(levels, 0, Qt::AlignTop);
  stack->addWidget(w(id::Label4), 0, Qt::AlignTop);
  stack->addStretch(1);
  right->addLayout(stack);
  right->addStretch(1);
  auto* entry = without_margins(new QGridLayout, m_.gap);
  entry->setVerticalSpacing(m_.gap / 2);
  entry->addWidget(w(id::Label16), 0, 0);
  entry->addWidget(w(id::Label15), 0, 1);
  entry->addWidget(value_display(id::dirdat, 9, Qt::AlignLeft), 1, 0);
  w(id::dat)->setFixedWidth(m_.cell_width(5));
  entry->addWidget(w(id::dat), 1, 1);
  entry->addWidget(sized_button(id::entrardat), 1, 2);
  entry->setColumnStretch(3, 1);
  right->addLayout(entry);
  columns->addLayout(right, 1);
}

void window_layout::lay_out_ports() {
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

void window_layout::lay_out_timer() {
  auto* grid = without_margins(new QGridLayout(w(id::Frame4)), m_.gap);
  grid->setVerticalSpacing(m_.gap);
  w(id::FR)->setFixedWidth(m_.cell_width(8));
  grid->addWidget(w(id::Label33), 0, 0);
  grid->addWidget(w(id::FR), 0, 1);
  grid->addWidget(note_label("Hz"), 0, 2);
  grid->addWidget(sized_button(id::TOCKI), 0, 3);
  grid->addWidget(w(id::Label22), 1, 0);
  grid->addWidget(value_display(id::SENTIM, 9, Qt::AlignLeft), 1, 1, 1, 3, Qt::AlignLeft);
  grid->addWidget(w(id::Label20), 2, 0);
  grid->addWidget(value_display(id::divtim, 3, Qt::AlignRight), 2, 1, Qt::AlignLeft);
  grid->setColumnStretch(4, 1);
}

QWidget* window_layout::data_memory() {
  auto* whole = new QWidget;
  auto* grid = without_margins(new QGridLayout(whole), 0);
  grid->setHorizontalSpacing(m_.gap * 2);

  QFrame* common = make_sheet();
  QHBoxLayout* registers = row_in_sheet(common);
  registers->addWidget(w(id::nombres));
  registers->addWidget(w(id::dirmd, 0));
  registers->addWidget(w(id::MDP));
  auto* beside = new QWidget;
  QGridLayout* cells = cell_column(beside, 16);
  cells->setContentsMargins(m_.char_width, 0, m_.char_width, 0);
  // What FSR points at: the value beside INDF, the bank and the address beside FSR.
  auto* indirect = without_margins(new QHBoxLayout, m_.char_width / 2);
  indirect->addWidget(note_label("dato indirecto"));
  indirect->addWidget(cell_label(id::INDF, 2));
  indirect->addStretch(1);
  cells->addLayout(indirect, line_indf, 0);
  auto* pointer = without_margins(new QHBoxLayout, m_.char_width / 2);
  QLabel* bank = note_label("banco");
  accompany_(id::PAGFSR, bank);
  pointer->addWidget(note_label("dirección"));
  pointer->addWidget(cell_label(id::DIRFSR, 2));
  pointer->addSpacing(m_.char_width);
  pointer->addWidget(bank);
  pointer->addWidget(cell_label(id::PAGFSR, 1));
  pointer->addStretch(1);
  cells->addLayout(pointer, line_fsr, 0);
  cells->addWidget(cell_label(id::lstatus, 8), line_legend, 0);
  w(id::lstatus)->setForegroundRole(QPalette::PlaceholderText);
  cells->addWidget(cell_label(id::STATUS, 8), line_status, 0);
  cells->addWidget(cell_label(id::BPA, 8), line_porta, 0);
  cells->addWidget(cell_label(id::BPB, 8), line_porta + 1, 0);
  cells->addWidget(cell_label(id::BPC, 8), line_porta + 2, 0);
  registers->addWidget(beside);

  QFrame* banks = make_sheet();
  QHBoxLayout* columns = row_in_sheet(banks);
  columns->addWidget(w(id::dirmd, 1));
  auto* numbers = without_margins(new QHBoxLayout, 0);
  QLabel* heading = note_label("Banco");
  numbers->addSpacing(banks->frameWidth() + frame_line);
  numbers->addWidget(heading);
  // The numbers stand above their columns, and what hidden banks leave looks like the panel.
  w(id::dirmd, 1)->setFixedWidth(heading->sizeHint().width());
  banks->setBackgroundRole(QPalette::Window);
  for (int b = 0; b < 4; ++b) {
    columns->addWidget(w(id::MD, b));
    auto* number = static_cast<QLabel*>(cell_label(id::lpag, 1, b));
    number->setAlignment(Qt::AlignCenter);
    number->setFixedWidth(w(id::MD, b)->width());
    numbers->addWidget(number);
  }
  numbers->addSpacing(banks->frameWidth() + frame_line);

  grid->addLayout(heading_row(id::Label11), 0, 0);
  grid->addLayout(numbers, 0, 1);
  grid->addWidget(common, 1, 0);
  grid->addWidget(banks, 1, 1);
  grid->setColumnStretch(2, 1);
  return whole;
}

void window_layout::arrange() {
  const bool up = w(id::TRISA)->isHidden();
  if (up == tris_moved_up_) return;
  tris_moved_up_ = up;
  tris_->removeWidget(w(id::TRISB));
  tris_->addWidget(w(id::TRISB), up ? line_trisa : line_trisb, 0);
}

}  // namespace estructura
