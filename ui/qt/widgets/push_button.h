// The buttons of the window.
#pragma once

#include <QPushButton>

namespace estructura {

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

}  // namespace estructura
