// What groups of controls are made of: a title and a thin line behind it.
#pragma once

#include <QGroupBox>

namespace estructura {

/// A group of controls: its title and a thin line, and nothing around it. Without a title it draws nothing.
class group_box final : public QGroupBox {
 public:
  /// Height of the title's line, of any group of the window.
  static int title_height(const QWidget& where);

  void set_caption(const QString& title);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void set_margins();
};

/// The thin line behind the title of a group that is no frame.
class separator_line final : public QWidget {
 public:
  separator_line();

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace estructura
