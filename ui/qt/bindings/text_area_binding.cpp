#include "ui/qt/bindings/text_area_binding.h"

#include <string>
#include <utility>

#include <QPlainTextEdit>

#include "ui/qt/text/text_conversion.h"
#include "ui/qt/widgets/listing_view.h"
#include "ui/qt/widgets/source_editor.h"

namespace estructura {

namespace {

/// What source and listing have in common: text, caret and selection.
class text_area_binding : public binding {
 public:
  [[nodiscard]] QWidget* widget() const override { return &edit_; }

 protected:
  text_area_binding(const control& record, action_sink& sink, const panel_metrics& measures,
                    QPlainTextEdit& edit)
      : binding(record, sink), edit_(edit) {
    edit_.setFont(measures.mono);
    edit_.setLineWrapMode(QPlainTextEdit::NoWrap);
    edit_.setTabStopDistance(8 * measures.char_width);
    // The Tab key walks on; the `tab` button indents.
    edit_.setTabChangesFocus(true);
    QObject::connect(&edit_, &QPlainTextEdit::selectionChanged, &edit_, [this] { selection_moved(); });
    QObject::connect(&edit_, &QPlainTextEdit::cursorPositionChanged, &edit_, [this] { selection_moved(); });
  }

  void show_record(const control& from) override {
    const bool other_text = put_text(from);
    if (other_text) set_shown_text(from.text());
    const bool into_sight = other_text || shown_selections_ != from.shown_selections();
    shown_selections_ = from.shown_selections();
    start_ = from.sel_start();
    length_ = from.sel_length();
    const int start = unit_of_char(shown_, start_);
    const int end = unit_of_char(shown_, start_ + length_);
    QTextCursor cursor = edit_.textCursor();
    if (cursor.selectionStart() == start && cursor.selectionEnd() == end) {
      if (into_sight) edit_.ensureCursorVisible();
      return;
    }
    // The caret stands at the start, which is what comes into sight of a line longer than the window.
    cursor.setPosition(end);
    cursor.setPosition(start, QTextCursor::KeepAnchor);
    edit_.setTextCursor(cursor);
  }

  /// Puts the record's text into the widget; whether it was another.
  virtual bool put_text(const control& from) = 0;

  [[nodiscard]] int caret() const { return char_of_unit(shown_, edit_.textCursor().position()); }
  [[nodiscard]] const std::string& shown_text() const { return shown_; }
  void set_shown_text(std::string text) {
    shown_ = std::move(text);
    units_ = unit_count(shown_);
  }

 private:
  void selection_moved() {
    // With the text changed but not yet told, positions would be counted in the wrong text; telling it
    // follows.
    if (sink().copying() || edit_.document()->characterCount() - 1 != units_) return;
    const QTextCursor cursor = edit_.textCursor();
    const int start = char_of_unit(shown_, cursor.selectionStart());
    const int length = char_of_unit(shown_, cursor.selectionEnd()) - start;
    if (start == start_ && length == length_) return;
    start_ = start;
    length_ = length;
    perform([&](Estructura& window) { window.select(which(), start, length); });
  }

  QPlainTextEdit& edit_;
  std::string shown_;  ///< the record's text as the widget has it
  int units_ = 0;      ///< its length there
  unsigned shown_selections_ = 0;
  int start_ = 0;  ///< and its selection
  int length_ = 0;
};

// --- the listing ---

class listing_binding final : public text_area_binding {
 public:
  listing_binding(const control& record, action_sink& sink, const panel_metrics& measures)
      : listing_binding(record, sink, measures, *new listing_view) {}

 private:
  listing_binding(const control& record, action_sink& sink, const panel_metrics& measures, listing_view& edit)
      : text_area_binding(record, sink, measures, edit), edit_(edit) {
    edit_.setReadOnly(true);
    edit_.setUndoRedoEnabled(false);
    // A read-only text shows no caret and takes no keys unless told to.
    edit_.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    edit_.clicked = [this] {
      const int at = caret();
      perform([this, at](Estructura& window) { window.click_text(which(), at); });
    };
    edit_.key_released = [this] {
      const int at = caret();
      perform([this, at](Estructura& window) { window.keyup_text(which(), at); });
    };
  }

  bool put_text(const control& from) override {
    if (from.text() == shown_text()) return false;
    edit_.setPlainText(to_document(from.text()));
    return true;
  }

  listing_view& edit_;
};

// --- the source ---

class source_binding final : public text_area_binding {
 public:
  source_binding(const control& record, action_sink& sink, const panel_metrics& measures)
      : source_binding(record, sink, measures, *new source_editor) {}

 private:
  source_binding(const control& record, action_sink& sink, const panel_metrics& measures, source_editor& edit)
      : text_area_binding(record, sink, measures, edit), edit_(edit) {
    QObject::connect(&edit_, &QPlainTextEdit::textChanged, &edit_, [this] { text_edited(); });
  }

  void show_record(const control& from) override {
    text_area_binding::show_record(from);
    edit_.set_error_line(from.marked_line());
  }

  /// What the program changes in the text enters as an edit that can be undone; another document begins a
  /// history of its own.
  bool put_text(const control& from) override {
    const bool other_document = from.documents() != documents_;
    documents_ = from.documents();
    if (other_document) {
      edit_.new_document(to_document(from.text()));
      return true;
    }
    if (from.text() == shown_text()) return false;
    const text_change change = change_between(shown_text(), from.text(), edit_.textCursor().selectionStart());
    edit_.replace(change.start, change.end, change.text);
    return true;
  }

  void text_edited() {
    if (sink().copying()) return;
    const std::string text = from_document(edit_.document()->toRawText());
    // Formats and layouts count as changes of the text for QPlainTextEdit.
    if (text == shown_text()) return;
    set_shown_text(text);
    const int at = caret();
    perform([&](Estructura& window) { window.type(which(), text, at); });
  }

  source_editor& edit_;
  unsigned documents_ = 0;
};

}  // namespace

std::unique_ptr<binding> make_source_binding(const control& record, action_sink& sink,
                                             const panel_metrics& measures) {
  return std::make_unique<source_binding>(record, sink, measures);
}

std::unique_ptr<binding> make_listing_binding(const control& record, action_sink& sink,
                                              const panel_metrics& measures) {
  return std::make_unique<listing_binding>(record, sink, measures);
}

}  // namespace estructura
