// Text boxes: lines of entry, the source and the listing. Text, caret and selection are the record's; what
// the person types or selects is told to it in its own counting (texto_qt.h).
#pragma once

#include <memory>

#include "ui/qt/bindings/binding.h"

namespace estructura {

std::unique_ptr<binding> make_text_binding(const control& record, action_sink& sink,
                                           const panel_metrics& measures);

}  // namespace estructura
