// A box of one line whose selection outlives the loss of the focus, as the record's does, but is seen only
// with it. What is selected when the focus comes is for the window to say, not for Qt.
#pragma once

#include <QLineEdit>

namespace estructura {

class entry_line final : public QLineEdit {
 public:
  entry_line();

 protected:
  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void show_selection(bool shown);

  bool by_mouse_ = false;
};

}  // namespace estructura
