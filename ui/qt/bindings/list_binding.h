// The binding of a list: its lines, its selection, and the person's clicks.
#pragma once

#include <memory>

#include "ui/qt/bindings/binding.h"
#include "ui/qt/look/metrics.h"

namespace estructura {

std::unique_ptr<binding> make_list_binding(const control& record, action_sink& sink,
                                           const panel_metrics& measures);

}  // namespace estructura
