// Makes the widget of a control and binds the two.
//
//   std::unique_ptr<binding> one = make_binding(window.look(id::eje1), sink, measures, panel);
#pragma once

#include <memory>

#include "ui/qt/bindings/binding.h"
#include "ui/qt/look/metrics.h"

namespace estructura {

/// The widget for a control, by kind, named after it, and its binding. The widget stands on the panel, whose
/// letters it takes, but has no place there yet.
std::unique_ptr<binding> make_binding(const control& record, action_sink& sink, const panel_metrics& measures,
                                      QWidget* panel);

}  // namespace estructura
