#include "ui/qt/speech/accessible_text.h"

#include <algorithm>

#include <QFontMetrics>
#include <QLineEdit>

#include "ui/qt/speech/editable_text.h"

namespace estructura {

QString terminating_text::textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                                       int* end) const {
  const int count = characterCount();
  const bool by_boundary = boundary == QAccessible::WordBoundary || boundary == QAccessible::SentenceBoundary;
  // -1 stands for the end, -2 for the caret.
  const int place = offset == -1 ? count : offset == -2 ? cursorPosition() : offset;
  if (by_boundary && place >= count) {
    *start = *end = count;
    return {};
  }
  return QAccessibleTextInterface::textAtOffset(place, boundary, start, end);
}

namespace {

class accessible_line final : public editable_text<terminating_text> {
 public:
  using editable_text::editable_text;

  QAccessible::State state() const override {
    QAccessible::State state = text_state(line().isReadOnly());
    state.editable = true;
    return state;
  }

  // --- The text ---

  using editable_text::text;
  QString text(int start, int end) const override { return line().text().mid(start, end - start); }
  int characterCount() const override { return static_cast<int>(line().text().size()); }
  int cursorPosition() const override { return line().cursorPosition(); }
  void setCursorPosition(int position) override { line().setCursorPosition(position); }
  QRect characterRect(int offset) const override {
    const QFontMetrics metrics = line().fontMetrics();
    const QRect content = line().contentsRect();
    const int left = content.left() + metrics.horizontalAdvance(line().text().left(offset));
    const int width = metrics.horizontalAdvance(line().text().mid(offset, 1));
    return {line().mapToGlobal(QPoint(left, content.top())), QSize(width, content.height())};
  }
  int offsetAtPoint(const QPoint& point) const override {
    return rect().contains(point) ? line().cursorPositionAt(line().mapFromGlobal(point)) : -1;
  }
  void scrollToSubstring(int start, int) override { setCursorPosition(start); }

  // --- Its selection ---

  int selectionCount() const override { return line().hasSelectedText() ? 1 : 0; }
  void selection(int, int* start, int* end) const override {
    *start = std::max(0, line().selectionStart());
    *end = line().hasSelectedText() ? line().selectionEnd() : *start;
  }
  void removeSelection(int) override { line().deselect(); }
  void setSelection(int, int start, int end) override { line().setSelection(start, end - start); }

  // --- Writing, as the person does: the line tells it as an edit ---

  void replaceText(int start, int end, const QString& text) override {
    if (line().isReadOnly()) return;
    QString all = line().text();
    line().setText(all.replace(start, end - start, text));
  }

 private:
  [[nodiscard]] QString whole_text() const override { return line().text(); }
  [[nodiscard]] QLineEdit& line() const { return *static_cast<QLineEdit*>(widget()); }
};

}  // namespace

QAccessibleInterface* make_accessible_line(QLineEdit* line) {
  return new accessible_line(line);
}

}  // namespace estructura
