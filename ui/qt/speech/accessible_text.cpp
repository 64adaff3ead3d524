#include "ui/qt/speech/accessible_text.h"

#include <algorithm>

#include <QAccessibleWidget>
#include <QFontMetrics>
#include <QLineEdit>

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

class accessible_line final : public QAccessibleWidget,
                              public terminating_text,
                              public QAccessibleEditableTextInterface {
 public:
  explicit accessible_line(QLineEdit* line) : QAccessibleWidget(line, QAccessible::EditableText) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::EditableTextInterface)
      return static_cast<QAccessibleEditableTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.editable = true;
    state.selectableText = true;
    state.readOnly = line().isReadOnly();
    return state;
  }

  QString text(QAccessible::Text what) const override {
    return what == QAccessible::Value ? line().text() : QAccessibleWidget::text(what);
  }
  void setText(QAccessible::Text what, const QString& text) override {
    if (what == QAccessible::Value)
      replaceText(0, characterCount(), text);
    else
      QAccessibleWidget::setText(what, text);
  }

  // --- The text ---

  QString text(int start, int end) const override { return line().text().mid(start, end - start); }
  int characterCount() const override { return static_cast<int>(line().text().size()); }
  QString attributes(int, int* start, int* end) const override {
    *start = 0;
    *end = characterCount();
    return {};
  }
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
  void addSelection(int start, int end) override { setSelection(0, start, end); }
  void removeSelection(int) override { line().deselect(); }
  void setSelection(int, int start, int end) override { line().setSelection(start, end - start); }

  // --- Writing, as the person does: the line tells it as an edit ---

  void insertText(int offset, const QString& text) override { replaceText(offset, offset, text); }
  void deleteText(int start, int end) override { replaceText(start, end, {}); }
  void replaceText(int start, int end, const QString& text) override {
    if (line().isReadOnly()) return;
    QString all = line().text();
    line().setText(all.replace(start, end - start, text));
  }

 private:
  [[nodiscard]] QLineEdit& line() const { return *static_cast<QLineEdit*>(widget()); }
};

}  // namespace

QAccessibleInterface* make_accessible_line(QLineEdit* line) {
  return new accessible_line(line);
}

}  // namespace estructura
