// The binding of a box of one line. Text, caret and selection are the record's; what the person types or
// selects is told to it in its own counting (text_conversion.h).
#pragma once

#include <memory>

#include "ui/qt/bindings/binding.h"
#include "ui/qt/look/metrics.h"

namespace estructura {

std::unique_ptr<binding> make_entry_binding(const control& record, action_sink& sink,
                                            const panel_metrics& measures);

}  // namespace estructura
