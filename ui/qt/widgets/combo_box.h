// The list of devices that drops down.
#pragma once

#include <QComboBox>

namespace estructura {

/// The wheel or a key over the closed list would change the device, and forget what is unsaved, of someone
/// who only wants to scroll or to go on: keys open the list.
class qt_combo_box final : public QComboBox {
 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace estructura
