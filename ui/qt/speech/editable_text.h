// What the accessible objects of all texts that can be edited have in common; where the text stands and how
// it is changed is each one's own. `Text` is QAccessibleTextInterface or a class upon it.
#pragma once

#include <QAccessibleWidget>
#include <QString>

namespace estructura {

template <class Text>
class editable_text : public QAccessibleWidget, public Text, public QAccessibleEditableTextInterface {
 public:
  explicit editable_text(QWidget* widget) : QAccessibleWidget(widget, QAccessible::EditableText) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::EditableTextInterface)
      return static_cast<QAccessibleEditableTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }

  using QAccessibleTextInterface::text;
  QString text(QAccessible::Text what) const override {
    return what == QAccessible::Value ? whole_text() : QAccessibleWidget::text(what);
  }
  void setText(QAccessible::Text what, const QString& text) override {
    if (what == QAccessible::Value)
      this->replaceText(0, this->characterCount(), text);
    else
      QAccessibleWidget::setText(what, text);
  }

  // The same for all characters.
  QString attributes(int, int* start, int* end) const override {
    *start = 0;
    *end = this->characterCount();
    return {};
  }
  void addSelection(int start, int end) override { this->setSelection(0, start, end); }
  void insertText(int offset, const QString& text) override { this->replaceText(offset, offset, text); }
  void deleteText(int start, int end) override { this->replaceText(start, end, {}); }

 protected:
  [[nodiscard]] virtual QString whole_text() const = 0;
  [[nodiscard]] QAccessible::State text_state(bool read_only) const {
    QAccessible::State state = QAccessibleWidget::state();
    state.selectableText = true;
    state.readOnly = read_only;
    return state;
  }
};

}  // namespace estructura
