#include "ui/qt/composicion.h"

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

#include "ui/qt/mapa.h"
#include "ui/qt/piezas.h"
#include "ui/qt/texto_qt.h"

namespace estructura {

namespace {

// Lines of the lists that have something beside them.
enum linea_datos { linea_indf = 0, linea_legend = 2, linea_status = 3, linea_fsr = 4, linea_porta = 5 };
enum linea_registros {
  linea_option_legend = 1,
  linea_option = 2,
  linea_trisa = 3,
  linea_trisb = 4,
  linea_trisc = 5
};

template <class Layout>
Layout* sin_margen(Layout* layout, int spacing) {
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(spacing);
  return layout;
}

/// Room within a sheet's frame: styles draw its line somewhat thicker than they say at 200 %.
constexpr int hilo = 1;

/// A sheet with the background of a list and one frame around all that stands on it.
QFrame* hoja() {
  auto* sheet = new QFrame;
  sheet->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  sheet->setBackgroundRole(QPalette::Base);
  sheet->setAutoFillBackground(true);
  sheet->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  return sheet;
}

QHBoxLayout* en_hoja(QFrame* sheet) {
  auto* row = new QHBoxLayout(sheet);
  row->setContentsMargins(hilo, hilo, hilo, hilo);
  row->setSpacing(0);
  return row;
}

}  // namespace

composicion::composicion(QWidget& panel, buscador find, acompanante accompany, const medidas& measures)
    : find_(std::move(find)), accompany_(std::move(accompany)), m_(measures) {
  auto* columns = new QHBoxLayout(&panel);
  columns->setContentsMargins(m_.hueco * 2, m_.hueco, m_.hueco * 2, m_.hueco * 2);
  columns->setSpacing(m_.hueco * 3);
  for (const id entry : {id::direc, id::INS, id::FREC, id::FR, id::dat}) w(entry)->setFixedHeight(m_.campo);
  marco_documentos();
  columns->addWidget(w(id::Frame7), 1);
  columns->addWidget(panel_instrumentos());
  acomoda();
}

// --- pieces ---

QGridLayout* composicion::columna(QWidget* sheet, int rows) const {
  auto* grid = sin_margen(new QGridLayout(sheet), 0);
  for (int row = 0; row < rows; ++row) grid->setRowMinimumHeight(row, m_.fila);
  grid->setRowStretch(rows, 1);
  return grid;
}

QWidget* composicion::celda(id which, int characters, int index) const {
  auto* label = static_cast<QLabel*>(w(which, index));
  label->setFont(m_.mono);
  label->setFixedSize(m_.ancho(characters), m_.fila);
  return label;
}

QWidget* composicion::visor(id which, int characters, Qt::Alignment alignment) const {
  auto* label = static_cast<QLabel*>(w(which));
  label->setFont(m_.mono);
  label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  label->setBackgroundRole(QPalette::Base);
  label->setForegroundRole(QPalette::Text);
  label->setAutoFillBackground(true);
  label->setAlignment(alignment | Qt::AlignVCenter);
  label->setFixedSize(m_.celda(characters) + 2 * label->frameWidth() + m_.letra / 2, m_.campo);
  return label;
}

QWidget* composicion::titulo(id which) const {
  QWidget* label = w(which);
  QFont bold = label->font();
  bold.setBold(true);
  label->setFont(bold);
  label->setFixedHeight(marco::alto_titulo(*label));
  return label;
}

QHBoxLayout* composicion::cabecera(id title, QWidget* beside) const {
  auto* row = sin_margen(new QHBoxLayout, m_.letra);
  row->addWidget(titulo(title));
  if (beside != nullptr) row->addWidget(beside);
  row->addWidget(new raya, 1);
  return row;
}

QLabel* composicion::aclaracion(const char* text) const {
  auto* label = new QLabel(QString::fromUtf8(text));
  // It is measured before it stands on the panel, whose letters may be smaller than the application's.
  label->setFont(w(id::Label1)->font());
  label->setForegroundRole(QPalette::PlaceholderText);
  QSizePolicy policy = label->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  label->setSizePolicy(policy);
  return label;
}

QWidget* composicion::boton(id which) const {
  auto* button = static_cast<QPushButton*>(w(which));
  QString caption = a_qt(declared(which).texts[0]);
  caption.remove(QLatin1Char('&'));
  const int picture = button->icon().isNull() ? 0 : button->iconSize().width() + m_.letra / 2;
  button->setMinimumWidth(button->fontMetrics().horizontalAdvance(caption) + picture + 3 * m_.letra);
  // With a picture or without, all of the same height.
  button->setFixedHeight(w(id::cargar)->sizeHint().height());
  return button;
}

// --- source and program memory ---

void composicion::marco_documentos() {
  auto* whole = sin_margen(new QHBoxLayout(w(id::Frame7)), 0);
  auto* panes = new repartidor;
  panes->setHandleWidth(m_.hueco * 3);
  panes->addWidget(panel_fuente());
  panes->addWidget(panel_programa());
  panes->setStretchFactor(0, 5);
  panes->setStretchFactor(1, 2);
  whole->addWidget(panes);
}

QWidget* composicion::panel_fuente() {
  auto* column = new QWidget;
  auto* rows = sin_margen(new QVBoxLayout(column), m_.hueco);
  static_cast<rotulo*>(w(id::FILASM))->recorta();
  rows->addLayout(cabecera(id::Label5, w(id::FILASM)));

  auto* clip = sin_margen(new QHBoxLayout(w(id::clip)), m_.hueco);
  for (const id which : {id::tab, id::Copiar, id::Cortar, id::Pegar}) clip->addWidget(boton(which));
  auto* top = sin_margen(new QHBoxLayout, m_.hueco * 2);
  top->addWidget(w(id::sl, 0));
  top->addWidget(w(id::sl, 1));
  top->addStretch(1);
  top->addWidget(w(id::clip));
  rows->addLayout(top);

  // One place for both: one of them is hidden.
  auto* texts = sin_margen(new QGridLayout, 0);
  for (const id which : {id::source, id::lst}) {
    w(which)->setMinimumWidth(m_.celda(24));
    texts->addWidget(w(which), 0, 0);
  }
  rows->addLayout(texts, 1);

  auto* files = sin_margen(new QHBoxLayout, m_.hueco);
  for (const id which : {id::cargarasm, id::salvarasm, id::borrarasm}) files->addWidget(boton(which));
  files->addStretch(1);
  // Beside what they fill, and what they read.
  files->addWidget(boton(id::desensamblar));
  files->addWidget(boton(id::Ensamblar));
  rows->addLayout(files);
  return column;
}

QWidget* composicion::panel_programa() {
  auto* column = new QWidget;
  auto* rows = sin_margen(new QVBoxLayout(column), m_.hueco);
  static_cast<rotulo*>(w(id::FILHEX))->recorta();
  rows->addLayout(cabecera(id::Label10, w(id::FILHEX)));
  auto* memory = sin_margen(new QHBoxLayout, 0);
  auto& map = *static_cast<mapa_qt*>(w(id::mapa));
  const auto margin = [&](map_margin::marks shown, const char* name) {
    auto* strip = new map_margin(map, shown);
    strip->setObjectName(QLatin1String(name));
    return strip;
  };
  memory->addWidget(margin(map_margin::marks::breakpoints, "map_breakpoints"));
  memory->addWidget(&map);
  memory->addWidget(margin(map_margin::marks::marker, "map_marker"));
  memory->addSpacing(m_.hueco / 2);
  // Where the list is hidden its sheet remains.
  QFrame* sheet = hoja();
  sheet->setBackgroundRole(QPalette::Window);
  sheet->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
  en_hoja(sheet)->addWidget(w(id::MP));
  memory->addWidget(sheet, 1);
  rows->addLayout(memory, 1);
  marco_instruccion();
  rows->addWidget(w(id::Frame1));
  auto* files = sin_margen(new QGridLayout, m_.hueco);
  files->addWidget(boton(id::cargar), 0, 0);
  files->addWidget(boton(id::salvar), 0, 1);
  files->addWidget(boton(id::borrar), 0, 2);
  files->addWidget(boton(id::salvar16c84), 1, 0);
  files->addWidget(boton(id::fin), 1, 2);
  for (int third = 0; third < 3; ++third) files->setColumnStretch(third, 1);
  rows->addLayout(files);
  return column;
}

void composicion::marco_instruccion() {
  auto* grid = sin_margen(new QGridLayout(w(id::Frame1)), m_.hueco);
  grid->setVerticalSpacing(m_.hueco / 2);
  grid->addWidget(w(id::Label1), 0, 0);
  grid->addWidget(w(id::Label2), 0, 1);
  grid->addWidget(w(id::Label3), 0, 2);
  w(id::direc)->setFixedWidth(m_.celda(5));
  grid->addWidget(w(id::direc), 1, 0);
  w(id::INS)->setMinimumWidth(m_.celda(14));
  grid->addWidget(w(id::INS), 1, 1);
  QWidget* word = visor(id::codop, 3, Qt::AlignHCenter);
  word->setFixedWidth(std::max(word->width(), w(id::Label3)->sizeHint().width()));
  grid->addWidget(word, 1, 2);
  grid->setColumnStretch(1, 1);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(m_.hueco);
  for (const id which : {id::Entrarins, id::borrarins, id::break_}) buttons->addWidget(boton(which), 1);
  grid->setRowMinimumHeight(2, m_.hueco / 2);
  grid->addLayout(buttons, 3, 0, 1, 3);
}

// --- instruments ---

QWidget* composicion::panel_instrumentos() {
  auto* column = new QWidget;
  column->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
  auto* rows = sin_margen(new QVBoxLayout(column), m_.hueco * 2);
  marco_registros();
  marco_puertos();
  marco_tmr0();
  marco_pic();
  rows->addWidget(w(id::Frame2));
  rows->addWidget(memoria_datos());
  auto* pins = sin_margen(new QHBoxLayout, m_.hueco * 3);
  pins->addWidget(w(id::Frame5), 3);
  pins->addWidget(w(id::Frame4), 2);
  rows->addLayout(pins);
  rows->addWidget(w(id::Frame3));
  rows->addStretch(1);
  w(id::rotulo)->setForegroundRole(QPalette::PlaceholderText);
  rows->addWidget(w(id::rotulo), 0, Qt::AlignRight);
  return column;
}

void composicion::marco_pic() {
  auto* rows = sin_margen(new QVBoxLayout(w(id::Frame3)), m_.hueco);
  auto* run = new QHBoxLayout;
  run->setSpacing(m_.hueco);
  for (const id which : {id::eje1, id::ejecutar, id::MCLR, id::WDT, id::por}) run->addWidget(boton(which), 1);
  rows->addLayout(run);

  auto* counters = sin_margen(new QGridLayout, m_.hueco);
  counters->addWidget(w(id::Label8), 0, 0);
  // Room for any 32-bit count with its points.
  counters->addWidget(visor(id::ciclos, 13, Qt::AlignRight), 0, 1);
  counters->addWidget(w(id::Label9), 1, 0);
  counters->addWidget(visor(id::contawdt, 13, Qt::AlignRight), 1, 1);
  counters->setColumnMinimumWidth(2, m_.hueco);
  counters->addWidget(w(id::VISMP), 0, 3, 1, 2);
  counters->addWidget(w(id::WATCHDOG), 1, 3);
  counters->addWidget(w(id::estsleep), 1, 4);
  counters->setColumnStretch(5, 1);
  rows->addLayout(counters);

  auto* clock = new QHBoxLayout;
  clock->setSpacing(m_.hueco);
  clock->addWidget(w(id::PIC));
  clock->addSpacing(m_.hueco * 2);
  clock->addWidget(w(id::Label14));
  w(id::FREC)->setFixedWidth(m_.celda(8));
  clock->addWidget(w(id::FREC));
  clock->addWidget(w(id::Label19));
  clock->addStretch(1);
  clock->addWidget(w(id::fext));
  clock->addWidget(w(id::CMCLR));
  rows->addLayout(clock);
}

void composicion::marco_registros() {
  auto* columns = sin_margen(new QHBoxLayout(w(id::Frame2)), m_.hueco * 3);

  auto* left = sin_margen(new QVBoxLayout, m_.hueco / 2);
  left->addLayout(cabecera(id::Label13));
  QFrame* registers = hoja();
  QHBoxLayout* table = en_hoja(registers);
  table->addWidget(w(id::nomre));
  table->addWidget(w(id::RE));
  auto* binaries = new QWidget;
  tris_ = columna(binaries, 6);
  tris_->setContentsMargins(m_.letra, 0, m_.letra, 0);
  tris_->addWidget(celda(id::loption, 8), linea_option_legend, 0);
  tris_->addWidget(celda(id::OPT, 8), linea_option, 0);
  tris_->addWidget(celda(id::TRISA, 8), linea_trisa, 0);
  tris_->addWidget(celda(id::TRISB, 8), linea_trisb, 0);
  tris_->addWidget(celda(id::TRISC, 8), linea_trisc, 0);
  w(id::loption)->setForegroundRole(QPalette::PlaceholderText);
  table->addWidget(binaries);
  left->addWidget(registers);
  columns->addLayout(left);

  auto* right = sin_margen(new QVBoxLayout, m_.hueco / 2);
  right->addLayout(cabecera(id::Label12));
  auto* stack = sin_margen(new QHBoxLayout, m_.hueco / 2);
  QFrame* levels = hoja();
  en_hoja(levels)->addWidget(w(id::PIL));
  w(id::Label4)->setFixedHeight(m_.fila + levels->frameWidth() + hilo);
  static_cast<QLabel*>(w(id::Label4))->setAlignment(Qt::AlignRight | Qt::AlignBottom);
  stack->addWidget(levels, 0, Qt::AlignTop);
  stack->addWidget(w(id::Label4), 0, Qt::AlignTop);
  stack->addStretch(1);
  right->addLayout(stack);
  right->addStretch(1);
  auto* entry = sin_margen(new QGridLayout, m_.hueco);
  entry->setVerticalSpacing(m_.hueco / 2);
  entry->addWidget(w(id::Label16), 0, 0);
  entry->addWidget(w(id::Label15), 0, 1);
  entry->addWidget(visor(id::dirdat, 9, Qt::AlignLeft), 1, 0);
  w(id::dat)->setFixedWidth(m_.celda(5));
  entry->addWidget(w(id::dat), 1, 1);
  entry->addWidget(boton(id::entrardat), 1, 2);
  entry->setColumnStretch(3, 1);
  right->addLayout(entry);
  columns->addLayout(right, 1);
}

void composicion::marco_puertos() {
  auto* grid = sin_margen(new QGridLayout(w(id::Frame5)), 0);
  grid->setVerticalSpacing(m_.hueco / 2);
  // Bit 7 stands leftmost, as in the binary views.
  constexpr std::array<id, 8> numbers = {id::Label21, id::Label23, id::Label24, id::Label25,
                                         id::Label26, id::Label27, id::Label28, id::Label29};
  for (int bit = 0; bit < 8; ++bit)
    grid->addWidget(w(numbers[static_cast<std::size_t>(bit)]), 0, 8 - bit, Qt::AlignHCenter);
  for (int port = 0; port < 3; ++port) {
    constexpr std::array<id, 3> pins = {id::PA, id::PB, id::PC};
    QWidget* name = w(id::lp, port);
    name->setMinimumWidth(name->fontMetrics().horizontalAdvance(QStringLiteral("GPIO")) + m_.letra);
    grid->addWidget(name, port + 1, 0);
    const id pin = pins[static_cast<std::size_t>(port)];
    for (int bit = 0; bit < declared(pin).count; ++bit)
      grid->addWidget(w(pin, bit), port + 1, 8 - bit, Qt::AlignCenter);
  }
  for (int column = 1; column <= 8; ++column) grid->setColumnStretch(column, 1);
}

void composicion::marco_tmr0() {
  auto* grid = sin_margen(new QGridLayout(w(id::Frame4)), m_.hueco);
  grid->setVerticalSpacing(m_.hueco);
  w(id::FR)->setFixedWidth(m_.celda(8));
  grid->addWidget(w(id::Label33), 0, 0);
  grid->addWidget(w(id::FR), 0, 1);
  grid->addWidget(aclaracion("Hz"), 0, 2);
  grid->addWidget(boton(id::TOCKI), 0, 3);
  grid->addWidget(w(id::Label22), 1, 0);
  grid->addWidget(visor(id::SENTIM, 9, Qt::AlignLeft), 1, 1, 1, 3, Qt::AlignLeft);
  grid->addWidget(w(id::Label20), 2, 0);
  grid->addWidget(visor(id::divtim, 3, Qt::AlignRight), 2, 1, Qt::AlignLeft);
  grid->setColumnStretch(4, 1);
}

QWidget* composicion::memoria_datos() {
  auto* whole = new QWidget;
  auto* grid = sin_margen(new QGridLayout(whole), 0);
  grid->setHorizontalSpacing(m_.hueco * 2);

  QFrame* common = hoja();
  QHBoxLayout* registers = en_hoja(common);
  registers->addWidget(w(id::nombres));
  registers->addWidget(w(id::dirmd, 0));
  registers->addWidget(w(id::MDP));
  auto* beside = new QWidget;
  QGridLayout* cells = columna(beside, 16);
  cells->setContentsMargins(m_.letra, 0, m_.letra, 0);
  // What FSR points at: the value beside INDF, the bank and the address beside FSR.
  auto* indirect = sin_margen(new QHBoxLayout, m_.letra / 2);
  indirect->addWidget(aclaracion("dato indirecto"));
  indirect->addWidget(celda(id::INDF, 2));
  indirect->addStretch(1);
  cells->addLayout(indirect, linea_indf, 0);
  auto* pointer = sin_margen(new QHBoxLayout, m_.letra / 2);
  QLabel* bank = aclaracion("banco");
  accompany_(id::PAGFSR, bank);
  pointer->addWidget(aclaracion("dirección"));
  pointer->addWidget(celda(id::DIRFSR, 2));
  pointer->addSpacing(m_.letra);
  pointer->addWidget(bank);
  pointer->addWidget(celda(id::PAGFSR, 1));
  pointer->addStretch(1);
  cells->addLayout(pointer, linea_fsr, 0);
  cells->addWidget(celda(id::lstatus, 8), linea_legend, 0);
  w(id::lstatus)->setForegroundRole(QPalette::PlaceholderText);
  cells->addWidget(celda(id::STATUS, 8), linea_status, 0);
  cells->addWidget(celda(id::BPA, 8), linea_porta, 0);
  cells->addWidget(celda(id::BPB, 8), linea_porta + 1, 0);
  cells->addWidget(celda(id::BPC, 8), linea_porta + 2, 0);
  registers->addWidget(beside);

  QFrame* banks = hoja();
  QHBoxLayout* columns = en_hoja(banks);
  columns->addWidget(w(id::dirmd, 1));
  auto* numbers = sin_margen(new QHBoxLayout, 0);
  QLabel* heading = aclaracion("Banco");
  numbers->addSpacing(banks->frameWidth() + hilo);
  numbers->addWidget(heading);
  // The numbers stand above their columns, and what hidden banks leave looks like the panel.
  w(id::dirmd, 1)->setFixedWidth(heading->sizeHint().width());
  banks->setBackgroundRole(QPalette::Window);
  for (int b = 0; b < 4; ++b) {
    columns->addWidget(w(id::MD, b));
    auto* number = static_cast<QLabel*>(celda(id::lpag, 1, b));
    number->setAlignment(Qt::AlignCenter);
    number->setFixedWidth(w(id::MD, b)->width());
    numbers->addWidget(number);
  }
  numbers->addSpacing(banks->frameWidth() + hilo);

  grid->addLayout(cabecera(id::Label11), 0, 0);
  grid->addLayout(numbers, 0, 1);
  grid->addWidget(common, 1, 0);
  grid->addWidget(banks, 1, 1);
  grid->setColumnStretch(2, 1);
  return whole;
}

void composicion::acomoda() {
  const bool up = w(id::TRISA)->isHidden();
  if (up == tris_arriba_) return;
  tris_arriba_ = up;
  tris_->removeWidget(w(id::TRISB));
  tris_->addWidget(w(id::TRISB), up ? linea_trisa : linea_trisb, 0);
}

}  // namespace estructura
