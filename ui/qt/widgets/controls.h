// The widgets that most controls of the window are made of, and what stands around them.
//
//   auto* button = new push_button;                     // as narrow as it is told to be
//   auto* label = new text_label;
//   label->set_changes(0b00001000);                // the fourth character from the right has changed
#pragma once

#include <cstdint>
#include <functional>

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QProxyStyle>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>

namespace estructura {

/// A check box or option button that leaves its value to the record: a click only tells.
template <class Button>
class controlled_toggle : public Button {
 public:
  using Button::Button;

 protected:
  void nextCheckState() override {}
};

/// Check boxes and option buttons with marks of our own: in dark palettes some styles draw boxes without an
/// edge, and those that cannot be used like the others. What can be used is a sheet with a firm edge, what
/// cannot has a dotted one.
class check_box final : public controlled_toggle<QCheckBox> {
 public:
  bool display_only = false;  ///< a click leaves it as it is: its edge is dotted too

 protected:
  void paintEvent(QPaintEvent* event) override;
};

class option_button final : public controlled_toggle<QRadioButton> {
 protected:
  void paintEvent(QPaintEvent* event) override;
};

/// Gives those marks the size of the letters beside them; styles know one size only.
class indicator_style final : public QProxyStyle {
 public:
  [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                const QWidget* widget) const override;
};

/// A push button as wide as it was told to be at least: styles would make a short caption's button wide.
class push_button final : public QPushButton {
 public:
  bool repeats = false;  ///< the Enter key, held down, goes on pressing it

  push_button();
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

/// The wheel or a key over the closed list would change the device, and forget what is unsaved, of someone
/// who only wants to scroll or to go on: keys open the list.
class combo_box final : public QComboBox {
 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
};

class text_label final : public QLabel {
 public:
  std::function<void()> double_clicked;

  /// Where it may be narrower than its text (names of files), the text ends in an ellipsis.
  void elide();
  /// What changed of the text: a bit for each character, the last one's lowest.
  void set_changes(std::uint32_t characters);
  [[nodiscard]] std::uint32_t changed_characters() const { return changes_; }

  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  void paint_changes();

  bool elides_ = false;
  std::uint32_t changes_ = 0;
};

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

/// Two panes and the handle between them, which shows quietly where it can be taken.
class pane_splitter final : public QSplitter {
 public:
  pane_splitter();

 protected:
  QSplitterHandle* createHandle() override;
};

}  // namespace estructura
