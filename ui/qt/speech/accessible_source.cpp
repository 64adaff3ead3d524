#include "ui/qt/speech/accessible_source.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>

#include "ui/qt/speech/editable_text.h"

namespace estructura {

namespace {

class accessible_source final : public editable_text<QAccessibleTextInterface> {
 public:
  using editable_text::editable_text;

  QAccessible::State state() const override {
    QAccessible::State state = text_state(edit().isReadOnly());
    state.editable = !edit().isReadOnly();
    state.multiLine = true;
    return state;
  }

  QList<std::pair<QAccessibleInterface*, QAccessible::Relation>> relations(
      QAccessible::Relation match) const override {
    auto found = QAccessibleWidget::relations(match);
    if (!match.testFlag(QAccessible::Label)) return found;
    for (QLabel* const title : edit().window()->findChildren<QLabel*>())
      if (title->buddy() == widget())
        found.emplace_back(QAccessible::queryAccessibleInterface(title), QAccessible::Label);
    return found;
  }

  // --- The text ---

  using editable_text::text;
  QString text(int start, int end) const override {
    return stretch(start, end).selectedText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
  }
  int characterCount() const override { return edit().document()->characterCount() - 1; }
  QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                       int* end) const override {
    return part_around(place_of(offset), boundary, start, end);
  }
  QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                           int* end) const override {
    part_around(place_of(offset), boundary, start, end);
    return part_around(*start - 1, boundary, start, end);
  }
  QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                          int* end) const override {
    part_around(place_of(offset), boundary, start, end);
    return part_around(*end, boundary, start, end);
  }
  int cursorPosition() const override { return edit().textCursor().position(); }
  void setCursorPosition(int position) override { edit().setTextCursor(stretch(position, position)); }
  QRect characterRect(int offset) const override {
    const QRect here = edit().cursorRect(stretch(offset, offset));
    const QString letter = text(offset, offset + 1);
    const QPoint corner = edit().viewport()->mapToGlobal(here.topLeft());
    return {corner, QSize(edit().fontMetrics().horizontalAdvance(letter), here.height())};
  }
  int offsetAtPoint(const QPoint& point) const override {
    return edit().cursorForPosition(edit().viewport()->mapFromGlobal(point)).position();
  }
  void scrollToSubstring(int start, int) override {
    edit().verticalScrollBar()->setValue(stretch(start, start).blockNumber());
  }

  // --- Its selection ---

  int selectionCount() const override { return edit().textCursor().hasSelection() ? 1 : 0; }
  void selection(int, int* start, int* end) const override {
    *start = edit().textCursor().selectionStart();
    *end = edit().textCursor().selectionEnd();
  }
  void removeSelection(int) override { setCursorPosition(cursorPosition()); }
  void setSelection(int, int start, int end) override { edit().setTextCursor(stretch(start, end)); }

  // --- Writing, as the person does: the editor tells it as an edit ---

  void replaceText(int start, int end, const QString& text) override {
    if (!edit().isReadOnly()) stretch(start, end).insertText(text);
  }

 private:
  [[nodiscard]] QString whole_text() const override { return edit().toPlainText(); }
  [[nodiscard]] QPlainTextEdit& edit() const { return *static_cast<QPlainTextEdit*>(widget()); }

  [[nodiscard]] QTextCursor stretch(int start, int end) const {
    QTextCursor cursor(edit().document());
    cursor.setPosition(qBound(0, start, characterCount()));
    cursor.setPosition(qBound(0, end, characterCount()), QTextCursor::KeepAnchor);
    return cursor;
  }
  /// -1 stands for the end, -2 for the caret.
  [[nodiscard]] int place_of(int offset) const {
    return offset == -1 ? characterCount() : offset == -2 ? cursorPosition() : offset;
  }
  QString part_around(int place, QAccessible::TextBoundaryType boundary, int* start, int* end) const {
    if (place < 0 || place > characterCount()) {
      *start = *end = qBound(0, place, characterCount());
      return {};
    }
    const auto [first, second] = QAccessible::qAccessibleTextBoundaryHelper(stretch(place, place), boundary);
    *start = first;
    *end = second;
    return text(first, second);
  }
};

}  // namespace

QAccessibleInterface* make_accessible_source(QPlainTextEdit* edit) {
  return new accessible_source(edit);
}

}  // namespace estructura
