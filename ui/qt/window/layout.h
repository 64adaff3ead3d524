// Where each control stands in the window, in the order in which the work goes: the documents
// (document_layout.h), and the instruments (instrument_layout.h).
//
//   window_layout layout(panel, find, accompany, measures);
//   layout.arrange();          // after each copy: what stands elsewhere on some devices
#pragma once

#include "ui/qt/window/instrument_layout.h"
#include "ui/qt/window/layout_parts.h"

namespace estructura {

class window_layout {
 public:
  window_layout(form_area& panel, widget_finder find, companion_setter accompany,
                const panel_metrics& measures);

  void arrange() { instruments_.arrange(); }

 private:
  layout_parts parts_;
  instrument_layout instruments_;
};

}  // namespace estructura
