// The key that has closed a box, which goes on in the window until it is released.
#pragma once

#include <QObject>

namespace estructura {

/// The key that closed a box and is held down goes on sending presses to whatever has the focus behind it:
/// they would press the run button, or break lines in the source. Until it is released, or another is
/// pressed, they reach boxes only.
class held_key final : public QObject {
 public:
  void box_closed();
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace estructura
