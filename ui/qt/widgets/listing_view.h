// The listing: a text that is read and not written. A click in it is told, and a key that walks through it.
#pragma once

#include <functional>

#include <QPlainTextEdit>
#include <QSet>

namespace estructura {

class listing_view final : public QPlainTextEdit {
 public:
  /// A click, or a key released, with the caret where it now stands.
  std::function<void()> clicked;
  std::function<void()> key_released;

 protected:
  bool event(QEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  static bool is_command(const QKeyEvent& event);
  void note(const QKeyEvent& event);

  QSet<int> chords_;  ///< keys pressed as part of a command: Ctrl may be released before them
};

}  // namespace estructura
