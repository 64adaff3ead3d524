#include "ui/qt/speech/widget_names.h"

#include <utility>

#include <QLabel>

#include "ui/accessible_names.h"
#include "ui/qt/text/text_conversion.h"
#include "ui/qt/widgets/list_model.h"
#include "ui/qt/widgets/list_view.h"

namespace estructura {

widget_names::widget_names(Estructura& window, widget_finder find)
    : window_(window), find_(std::move(find)) {}

void widget_names::attach() {
  for (const control& record : window_.look_all()) {
    if (record.is() != kind::list) continue;
    const auto* const view = static_cast<list_view*>(find_(record.which(), record.index()));
    const auto say = [this, view, which = record.which(), index = record.index()](int row) {
      std::string text = accessible_row(window_, which, index, row);
      constexpr int marks = 32;
      if (row < marks && (view->changed_rows() >> row & 1U) != 0) text += accessible_row_changed;
      return to_qt(text);
    };
    static_cast<list_model*>(view->model())->spoken = say;
  }
  for (const auto& [title, field] : accessible_titles)
    static_cast<QLabel*>(find_(title, 0))->setBuddy(find_(field, 0));
}

void widget_names::refresh() {
  const control_list& controls = window_.look_all();
  const family& of = window_.chip().devmodel;
  const bool running = window_.chip().running;
  const bool all = seen_.empty() || of.which != family_;
  family_ = of.which;
  seen_.resize(controls.size());
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const control& record = controls[i];
    if (!all && (seen_[i] == record.changes() || !accessible_texts_vary(record.which()))) continue;
    // A run changes the directions of pins as often as it likes; the run button's name must be true at once.
    if (!all && running && record.which() != id::ejecutar) continue;
    seen_[i] = record.changes();
    QWidget& widget = *find_(record.which(), record.index());
    // Each setting is told to whoever listens, be it the same text.
    if (const QString name = to_qt(accessible_name(record, of)); widget.accessibleName() != name)
      widget.setAccessibleName(name);
    if (const QString text = to_qt(accessible_description(record, of));
        widget.accessibleDescription() != text)
      widget.setAccessibleDescription(text);
  }
}

}  // namespace estructura
