#include "ui/qt/bindings/make_binding.h"

#include <string>
#include <type_traits>

#include <QAction>

#include "ui/qt/bindings/entry_binding.h"
#include "ui/qt/bindings/list_binding.h"
#include "ui/qt/bindings/text_area_binding.h"
#include "ui/qt/look/icons.h"
#include "ui/qt/text/text_conversion.h"
#include "ui/qt/widgets/combo_box.h"
#include "ui/qt/widgets/group_box.h"
#include "ui/qt/widgets/memory_map.h"
#include "ui/qt/widgets/push_button.h"
#include "ui/qt/widgets/text_label.h"
#include "ui/qt/widgets/toggles.h"

namespace estructura {

namespace {

template <class Button>
class button_binding final : public binding {
 public:
  button_binding(const control& record, action_sink& sink) : binding(record, sink), button_(new Button) {
    QObject::connect(button_, &QAbstractButton::clicked, button_,
                     [this] { perform([this](Estructura& window) { window.click(which(), index()); }); });
    button_->setIcon(control_icon(record.which()));
    // As by its function key; and one pulse after the other.
    if constexpr (std::is_same_v<Button, push_button>)
      button_->repeats = record.which() == id::eje1 || record.which() == id::TOCKI;
    if constexpr (std::is_same_v<Button, qt_check_box>)
      button_->display_only = record.which() == id::estsleep;
  }
  [[nodiscard]] QWidget* widget() const override { return button_; }

 protected:
  void show_record(const control& from) override {
    if (const QString text = to_qt(from.text()); button_->text() != text) button_->setText(text);
    if (button_->isChecked() != from.value()) button_->setChecked(from.value());
  }

 private:
  Button* button_;
};

class label_binding final : public binding {
 public:
  label_binding(const control& record, action_sink& sink) : binding(record, sink), label_(new text_label) {
    label_->setTextFormat(Qt::PlainText);
    if (record.which() != id::ciclos) return;
    label_->double_clicked = [this] {
      perform([this](Estructura& window) { window.dblclick(which(), index()); });
    };
    // The same without a mouse: a label takes no focus.
    auto* reset = new QAction(QStringLiteral("Poner a cero"), label_);
    reset->setShortcut(Qt::CTRL | Qt::Key_0);
    QObject::connect(reset, &QAction::triggered, label_, [this] { label_->double_clicked(); });
    label_->addAction(reset);
  }
  [[nodiscard]] QWidget* widget() const override { return label_; }

 protected:
  void show_record(const control& from) override {
    if (from.text() == shown_) return;
    shown_ = from.text();
    label_->setText(to_qt(shown_));
  }

 private:
  text_label* label_;
  std::string shown_;
};

class combo_binding final : public binding {
 public:
  combo_binding(const control& record, action_sink& sink) : binding(record, sink), combo_(new qt_combo_box) {
    QObject::connect(combo_, &QComboBox::textActivated, combo_, [this](const QString& entry) {
      perform([&](Estructura& window) { window.pick(which(), entry.toStdString()); });
    });
  }
  [[nodiscard]] QWidget* widget() const override { return combo_; }

 protected:
  void show_record(const control& from) override {
    if (combo_->count() != from.count() || rows_seen_ != from.row_changes()) {
      rows_seen_ = from.row_changes();
      combo_->clear();
      for (const std::string& entry : from.rows()) combo_->addItem(to_qt(entry));
    }
    const int at = combo_->findText(to_qt(from.text()), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (combo_->currentIndex() != at) combo_->setCurrentIndex(at);
  }

 private:
  qt_combo_box* combo_;
  unsigned rows_seen_ = 0;
};

class group_binding final : public binding {
 public:
  group_binding(const control& record, action_sink& sink) : binding(record, sink), box_(new group_box) {}
  [[nodiscard]] QWidget* widget() const override { return box_; }

 protected:
  void show_record(const control& from) override { box_->set_caption(to_qt(from.text())); }

 private:
  group_box* box_;
};

class map_binding final : public binding {
 public:
  map_binding(const control& record, action_sink& sink) : binding(record, sink), map_(new memory_map) {
    map_->pressed = [this](double y) { perform([y](Estructura& window) { window.press_map(y); }); };
  }
  [[nodiscard]] QWidget* widget() const override { return map_; }

 protected:
  /// What it shows is no property of the record: the window gives it the map (main_window::refresh).
  void show_record(const control&) override {}

 private:
  memory_map* map_;
};

std::unique_ptr<binding> binding_of_kind(const control& record, action_sink& sink,
                                         const panel_metrics& measures) {
  switch (record.is()) {
    case kind::button: return std::make_unique<button_binding<push_button>>(record, sink);
    case kind::check: return std::make_unique<button_binding<qt_check_box>>(record, sink);
    case kind::option: return std::make_unique<button_binding<option_button>>(record, sink);
    case kind::label: return std::make_unique<label_binding>(record, sink);
    case kind::combo: return std::make_unique<combo_binding>(record, sink);
    case kind::frame: return std::make_unique<group_binding>(record, sink);
    case kind::picture: return std::make_unique<map_binding>(record, sink);
    case kind::list: return make_list_binding(record, sink, measures);
    case kind::text: break;
  }
  if (record.which() == id::source) return make_source_binding(record, sink, measures);
  if (record.which() == id::lst) return make_listing_binding(record, sink, measures);
  return make_entry_binding(record, sink, measures);
}

}  // namespace

std::unique_ptr<binding> make_binding(const control& record, action_sink& sink, const panel_metrics& measures,
                                      QWidget* panel) {
  std::unique_ptr<binding> link = binding_of_kind(record, sink, measures);
  QWidget& widget = *link->widget();
  widget.setParent(panel);
  widget.setObjectName(to_qt(record.name()));
  // Hidden controls keep their place, so that nothing jumps when the device changes.
  QSizePolicy policy = widget.sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  widget.setSizePolicy(policy);
  return link;
}

}  // namespace estructura
