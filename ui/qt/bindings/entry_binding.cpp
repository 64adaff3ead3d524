#include "ui/qt/bindings/entry_binding.h"

#include <limits>
#include <string>

#include "ui/qt/text/text_conversion.h"
#include "ui/qt/widgets/entry_line.h"

namespace estructura {

namespace {

/// Start and end of a selection in units of the widget; the caret stands at its end.
struct text_range {
  int start;
  int end;
};

class entry_binding final : public binding {
 public:
  entry_binding(const control& record, action_sink& sink, const panel_metrics& measures)
      : binding(record, sink), edit_(new entry_line) {
    edit_->setFont(measures.mono);
    edit_->setMinimumWidth(measures.cell_width(4));
    // Cut at Qt's own 32,767 characters, the text would be another than the record's.
    edit_->setMaxLength(std::numeric_limits<int>::max());
    const auto look = [this] { look_for_changes(); };
    QObject::connect(edit_, &QLineEdit::textChanged, edit_, look);
    QObject::connect(edit_, &QLineEdit::selectionChanged, edit_, look);
    QObject::connect(edit_, &QLineEdit::cursorPositionChanged, edit_, look);
    QObject::connect(edit_, &QLineEdit::returnPressed, edit_,
                     [this] { perform([this](Estructura& window) { window.enter(which()); }); });
  }
  [[nodiscard]] QWidget* widget() const override { return edit_; }

 protected:
  void show_record(const control& from) override {
    if (from.text() != shown_ || to_qt(shown_) != edit_->text()) {
      shown_ = from.text();
      edit_->setText(to_qt(shown_));
    }
    start_ = from.sel_start();
    length_ = from.sel_length();
    const int start = unit_of_char(shown_, start_);
    const int end = unit_of_char(shown_, start_ + length_);
    const text_range now = selection();
    if (now.start == start && now.end == end) return;
    if (start == end)
      edit_->setCursorPosition(start);
    else
      edit_->setSelection(start, end - start);
  }

 private:
  [[nodiscard]] text_range selection() const {
    if (!edit_->hasSelectedText()) return {edit_->cursorPosition(), edit_->cursorPosition()};
    return {edit_->selectionStart(), edit_->selectionEnd()};
  }

  /// What the person did is found by looking: the signals of one action come in no fixed order.
  void look_for_changes() {
    if (sink().copying()) return;
    const std::string text = from_qt(edit_->text());
    const text_range now = selection();
    const int start = char_of_unit(text, now.start);
    const int length = char_of_unit(text, now.end) - start;
    if (text != shown_) {
      shown_ = text;
      perform([&](Estructura& window) { window.type(which(), text, start); });
    } else if (edit_->hasFocus() && (start != start_ || length != length_)) {
      // Without the focus it is not the person who moves the caret: QLineEdit tells of some changes late.
      start_ = start;
      length_ = length;
      perform([&](Estructura& window) { window.select(which(), start, length); });
    }
  }

  entry_line* edit_;
  std::string shown_;  ///< the record's text as the widget has it
  int start_ = 0;      ///< and its selection
  int length_ = 0;
};

}  // namespace

std::unique_ptr<binding> make_entry_binding(const control& record, action_sink& sink,
                                            const panel_metrics& measures) {
  return std::make_unique<entry_binding>(record, sink, measures);
}

}  // namespace estructura
