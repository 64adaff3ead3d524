#include "ui/qt/window/document_layout.h"

#include <algorithm>

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "ui/qt/widgets/form_area.h"
#include "ui/qt/widgets/memory_map.h"
#include "ui/qt/widgets/pane_splitter.h"
#include "ui/qt/widgets/text_label.h"

namespace estructura {

namespace {

/// What a file is called, which may be longer than there is room.
text_label* file_name(const layout_parts& parts, id which) {
  auto* label = static_cast<text_label*>(parts.w(which));
  label->elide();
  return label;
}

QLayout* source_views(const layout_parts& parts) {
  auto* clip = without_margins(new QHBoxLayout(parts.w(id::clip)), parts.m.gap);
  for (const id which : {id::tab, id::Copiar, id::Cortar, id::Pegar})
    clip->addWidget(parts.sized_button(which));
  auto* views = without_margins(new QHBoxLayout, parts.m.gap * 2);
  views->addWidget(parts.w(id::sl, 0));
  views->addWidget(parts.w(id::sl, 1));
  views->addStretch(1);
  views->addWidget(parts.w(id::clip));
  return views;
}

void lay_out_source(const layout_parts& parts, QWidget& pane, form_area& panel) {
  auto* rows = without_margins(new QVBoxLayout(&pane), parts.m.gap);
  QWidget* const heading = parts.heading(id::Label5, panel, file_name(parts, id::FILASM));
  rows->addItem(new overlay_item(*heading, pane));
  rows->addLayout(source_views(parts));
  // One place for both: one of them is hidden.
  auto* texts = without_margins(new QGridLayout, 0);
  for (const id which : {id::source, id::lst}) {
    parts.w(which)->setMinimumWidth(parts.m.cell_width(24));
    texts->addWidget(parts.w(which), 0, 0);
  }
  rows->addLayout(texts, 1);
  auto* files = without_margins(new QHBoxLayout, parts.m.gap);
  for (const id which : {id::cargarasm, id::salvarasm, id::borrarasm})
    files->addWidget(parts.sized_button(which));
  files->addStretch(1);
  // Beside what they fill, and what they read.
  files->addWidget(parts.sized_button(id::desensamblar));
  files->addWidget(parts.sized_button(id::Ensamblar));
  rows->addLayout(files);
}

/// The map between its margins, and the list, which stands on the form.
QLayout* program_memory(const layout_parts& parts, QWidget& pane, form_area& panel) {
  auto* memory = without_margins(new QHBoxLayout, 0);
  auto& map = *static_cast<memory_map*>(parts.w(id::mapa));
  const auto margin = [&](map_margin::marks shown, const char* name) {
    auto* strip = new map_margin(map, shown);
    strip->setObjectName(QLatin1String(name));
    return strip;
  };
  memory->addWidget(margin(map_margin::marks::breakpoints, "map_breakpoints"));
  memory->addWidget(&map);
  memory->addWidget(margin(map_margin::marks::marker, "map_marker"));
  memory->addSpacing(parts.m.gap / 2);
  // Where the list is hidden its sheet remains.
  QFrame* const sheet = make_sheet(&panel);
  sheet->setBackgroundRole(QPalette::Window);
  sheet->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
  row_in_sheet(sheet)->addWidget(parts.w(id::MP));
  memory->addItem(new overlay_item(*sheet, pane));
  memory->setStretch(memory->count() - 1, 1);
  return memory;
}

void lay_out_instruction(const layout_parts& parts) {
  const panel_metrics& m = parts.m;
  auto* grid = without_margins(new QGridLayout(parts.w(id::Frame1)), m.gap);
  grid->setVerticalSpacing(m.gap / 2);
  grid->addWidget(parts.w(id::Label1), 0, 0);
  grid->addWidget(parts.w(id::Label2), 0, 1);
  grid->addWidget(parts.w(id::Label3), 0, 2);
  parts.w(id::direc)->setFixedWidth(m.cell_width(5));
  grid->addWidget(parts.w(id::direc), 1, 0);
  parts.w(id::INS)->setMinimumWidth(m.cell_width(14));
  grid->addWidget(parts.w(id::INS), 1, 1);
  QWidget* word = parts.value_display(id::codop, 3, Qt::AlignHCenter);
  word->setFixedWidth(std::max(word->width(), parts.w(id::Label3)->sizeHint().width()));
  grid->addWidget(word, 1, 2);
  grid->setColumnStretch(1, 1);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(m.gap);
  for (const id which : {id::Entrarins, id::borrarins, id::break_})
    buttons->addWidget(parts.sized_button(which), 1);
  grid->setRowMinimumHeight(2, m.gap / 2);
  grid->addLayout(buttons, 3, 0, 1, 3);
}

void lay_out_program(const layout_parts& parts, QWidget& pane, form_area& panel) {
  auto* rows = without_margins(new QVBoxLayout(&pane), parts.m.gap);
  QWidget* const heading = parts.heading(id::Label10, panel, file_name(parts, id::FILHEX));
  rows->addItem(new overlay_item(*heading, pane));
  rows->addLayout(program_memory(parts, pane, panel), 1);
  lay_out_instruction(parts);
  rows->addItem(new overlay_item(*parts.w(id::Frame1), pane));
  auto* files = without_margins(new QGridLayout, parts.m.gap);
  files->addWidget(parts.sized_button(id::cargar), 0, 0);
  files->addWidget(parts.sized_button(id::salvar), 0, 1);
  files->addWidget(parts.sized_button(id::borrar), 0, 2);
  files->addWidget(parts.sized_button(id::salvar16c84), 1, 0);
  files->addWidget(parts.sized_button(id::fin), 1, 2);
  for (int third = 0; third < 3; ++third) files->setColumnStretch(third, 1);
  rows->addLayout(files);
}

}  // namespace

void lay_out_documents(const layout_parts& parts, form_area& panel) {
  QWidget* const frame = parts.w(id::Frame7);
  auto* panes = new pane_splitter;
  without_margins(new QHBoxLayout(frame), 0)->addWidget(panes);
  panes->setHandleWidth(parts.m.gap * 3);
  auto* source = new QWidget(frame);
  lay_out_source(parts, *source, panel);
  panes->addWidget(source);
  auto* program = new QWidget(frame);
  lay_out_program(parts, *program, panel);
  panes->addWidget(program);
  constexpr int source_share = 5;
  constexpr int program_share = 2;
  panes->setStretchFactor(0, source_share);
  panes->setStretchFactor(1, program_share);
}

}  // namespace estructura
