#include "ui/qt/bindings/text_binding.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QSet>
#include <QTextDocument>
#include <QWheelEvent>

#include "ui/qt/text/text_conversion.h"
#include "ui/qt/widgets/source_editor.h"

namespace estructura {

namespace {

// --- one line ---

/// A line of entry whose selection outlives the loss of the focus, as the record's does, but is seen only
/// with it.
class entry_line final : public QLineEdit {
 public:
  entry_line() { show_selection(false); }

 protected:
  bool event(QEvent* event) override {
    // When the window becomes active again QLineEdit drops the selection of a box without the focus; what is
    // selected is for the window to say.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    return event->type() == QEvent::WindowActivate ? QWidget::event(event) : QLineEdit::event(event);
  }

  void focusInEvent(QFocusEvent* event) override {
    // With the Tab key's reason QLineEdit would select all by itself; that is for the window to say.
    QFocusEvent plain(QEvent::FocusIn, Qt::OtherFocusReason);
    QLineEdit::focusInEvent(&plain);
    by_mouse_ = event->reason() == Qt::MouseFocusReason;
    show_selection(true);
  }

  void focusOutEvent(QFocusEvent*) override {
    // For this reason alone QLineEdit keeps what is selected.
    QFocusEvent keeping(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QLineEdit::focusOutEvent(&keeping);
    show_selection(false);
  }

  void mousePressEvent(QMouseEvent* event) override {
    // The click that brings the focus selects the whole text where the window says so; it does not undo that.
    const bool keep = by_mouse_ && hasSelectedText();
    by_mouse_ = false;
    if (keep) return;
    QLineEdit::mousePressEvent(event);
  }

  void changeEvent(QEvent* event) override {
    QLineEdit::changeEvent(event);
    // Hiding the selection changes the palette too.
    const QPalette& now = palette();
    const bool hidden = now.color(QPalette::HighlightedText) == now.color(QPalette::Text);
    if (event->type() == QEvent::PaletteChange && !hasFocus() && !hidden) show_selection(false);
  }

 private:
  void show_selection(bool shown) {
    if (shown) {
      setPalette({});
      return;
    }
    QPalette hidden;
    hidden.setColor(QPalette::Highlight, Qt::transparent);
    hidden.setColor(QPalette::Active, QPalette::HighlightedText,
                    palette().color(QPalette::Active, QPalette::Text));
    hidden.setColor(QPalette::Inactive, QPalette::HighlightedText,
                    palette().color(QPalette::Active, QPalette::Text));
    hidden.setColor(QPalette::Disabled, QPalette::HighlightedText,
                    palette().color(QPalette::Disabled, QPalette::Text));
    setPalette(hidden);
  }

  bool by_mouse_ = false;
};

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

// --- many lines ---

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

class listing_view final : public QPlainTextEdit {
 public:
  /// A click, or a key released, with the caret where it now stands.
  std::function<void()> clicked;
  std::function<void()> key_released;

 protected:
  bool event(QEvent* event) override {
    // Told before a shortcut takes the key: its press is not seen here, its release is.
    if (event->type() == QEvent::ShortcutOverride) note(static_cast<const QKeyEvent&>(*event));
    return QPlainTextEdit::event(event);
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    QPlainTextEdit::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && clicked) clicked();
  }
  void keyPressEvent(QKeyEvent* event) override {
    note(*event);
    QPlainTextEdit::keyPressEvent(event);
  }
  void keyReleaseEvent(QKeyEvent* event) override {
    QPlainTextEdit::keyReleaseEvent(event);
    const bool chord = is_command(*event) || chords_.contains(event->key());
    if (!event->isAutoRepeat()) chords_.remove(event->key());
    if (!chord && key_released) key_released();
  }
  void focusOutEvent(QFocusEvent* event) override {
    chords_.clear();
    QPlainTextEdit::focusOutEvent(event);
  }
  void wheelEvent(QWheelEvent* event) override {
    // With Ctrl, Qt makes the letters of a read-only text larger, but not the stops of its tabs.
    if ((event->modifiers() & Qt::ControlModifier) == 0) QPlainTextEdit::wheelEvent(event);
  }

 private:
  /// A key that is a command and no walk through the listing: a function key, one with Ctrl or Alt held, and
  /// those that are held themselves.
  static bool is_command(const QKeyEvent& event) {
    switch (event.key()) {
      case Qt::Key_Shift:
      case Qt::Key_Control:
      case Qt::Key_Alt:
      case Qt::Key_AltGr:
      case Qt::Key_Meta:
      case Qt::Key_Super_L:
      case Qt::Key_Super_R:
      case Qt::Key_CapsLock:
      case Qt::Key_NumLock:
      case Qt::Key_ScrollLock: return true;
      default: break;
    }
    if (event.key() >= Qt::Key_F1 && event.key() <= Qt::Key_F35) return true;
    return (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
  }
  void note(const QKeyEvent& event) {
    if (is_command(event))
      chords_.insert(event.key());
    else
      chords_.remove(event.key());
  }

  QSet<int> chords_;  ///< keys pressed as part of a command: Ctrl may be released before them
};

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

std::unique_ptr<binding> make_text_binding(const control& record, action_sink& sink,
                                           const panel_metrics& measures) {
  if (record.which() == id::source) return std::make_unique<source_binding>(record, sink, measures);
  if (record.which() == id::lst) return std::make_unique<listing_binding>(record, sink, measures);
  return std::make_unique<entry_binding>(record, sink, measures);
}

}  // namespace estructura
