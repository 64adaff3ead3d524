// The labels of the window: titles, names of files and values.
//
//   auto* label = new text_label;
//   label->set_changes(0b00001000);      // the fourth character from the right has changed
#pragma once

#include <cstdint>
#include <functional>

#include <QLabel>

namespace estructura {

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

}  // namespace estructura
