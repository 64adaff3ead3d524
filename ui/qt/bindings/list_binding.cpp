#include "ui/qt/bindings/list_binding.h"

#include <utility>

#include "ui/qt/widgets/list_model.h"
#include "ui/qt/widgets/list_view.h"

namespace estructura {

namespace {

/// Which list looks how.
list_traits traits_of(id which) {
  switch (which) {
    case id::nombres: return {.rows = 16, .characters = 6, .faint_columns = 1};
    case id::dirmd: return {.rows = 16, .characters = 2, .faint_columns = 1};
    case id::MDP: return {.rows = 16, .characters = 2};
    case id::MD: return {.rows = 16, .characters = 2, .padding = 3};
    case id::nomre: return {.rows = 6, .characters = 6, .faint_columns = 1};
    case id::RE: return {.rows = 6, .characters = 3};
    case id::PIL: return {.rows = 2, .characters = 3};
    // "*7FF", "FFF" and the longest instruction, "DECFSZ 1F,W", with their gaps.
    case id::MP: return {.characters = 24, .faint_columns = 1, .several = true, .gutter = 3};
    default: return {};
  }
}

class list_binding final : public binding {
 public:
  list_binding(const control& record, action_sink& sink, const panel_metrics& measures)
      : binding(record, sink),
        view_(new list_view(traits_of(record.which()), measures)),
        model_(new list_model(view_)) {
    view_->setModel(model_);
    view_->rows_chosen = [this](int current, std::vector<int> selected) {
      perform(
          [&](Estructura& window) { window.choose_rows(which(), index(), current, std::move(selected)); });
    };
    if (record.which() == id::MP)
      view_->double_clicked = [this](int row) {
        perform([&](Estructura& window) { window.dblclick_row(which(), index(), row); });
      };
  }
  [[nodiscard]] QWidget* widget() const override { return view_; }

 protected:
  void show_record(const control& from) override {
    if (!filled_ || rows_seen_ != from.row_changes()) {
      filled_ = true;
      rows_seen_ = from.row_changes();
      model_->set_rows(from.rows());
    }
    view_->show_selection(from.row(), from.selected(), changes_seen_ != from.changes());
    changes_seen_ = from.changes();
    const QPalette::ColorRole role = from.face_background() ? QPalette::Window : QPalette::Base;
    if (view_->viewport()->backgroundRole() != role) view_->viewport()->setBackgroundRole(role);
  }

 private:
  list_view* view_;
  list_model* model_;
  unsigned rows_seen_ = 0;
  unsigned changes_seen_ = 0;
  bool filled_ = false;
};

}  // namespace

std::unique_ptr<binding> make_list_binding(const control& record, action_sink& sink,
                                           const panel_metrics& measures) {
  return std::make_unique<list_binding>(record, sink, measures);
}

}  // namespace estructura
