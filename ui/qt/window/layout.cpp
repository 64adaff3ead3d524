#include "ui/qt/window/layout.h"

#include <utility>

#include <QHBoxLayout>

#include "ui/qt/widgets/form_area.h"
#include "ui/qt/window/document_layout.h"

namespace estructura {

window_layout::window_layout(form_area& panel, widget_finder find, companion_setter accompany,
                             const panel_metrics& measures)
    : parts_(std::move(find), std::move(accompany), measures), instruments_(parts_, panel) {
  const panel_metrics& m = parts_.m;
  for (const id entry : {id::direc, id::INS, id::FREC, id::FR, id::dat})
    parts_.w(entry)->setFixedHeight(m.field_height);
  lay_out_documents(parts_, panel);
  auto* columns = new QHBoxLayout(&panel);
  columns->setContentsMargins(m.gap * 2, m.gap, m.gap * 2, m.gap * 2);
  columns->setSpacing(m.gap * 3);
  columns->addWidget(parts_.w(id::Frame7), 1);
  columns->addWidget(instruments_.column());
  arrange();
}

}  // namespace estructura
