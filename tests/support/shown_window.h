// The real window on a screen of 1366 by 768, for tests of what is seen in it.
//
//   class marks : public support::shown_window {};
//   TEST_F(marks, ...) { program({0xC05}); click(id::eje1); EXPECT_EQ(lines(id::RE), 0b11U); }
#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>

#include <QApplication>

#include "tests/support/qt_window.h"
#include "ui/qt/widgets/list_view.h"
#include "ui/qt/widgets/text_label.h"

namespace estructura::support {

class shown_window : public real_window<> {
 protected:
  shown_window() {
    window.resize(1366, 720);
    QCoreApplication::processEvents();
  }

  std::uint32_t lines(id list, int index = 0) { return at<list_view>(list, index).changed_rows(); }
  std::uint32_t characters(id label) { return at<text_label>(label).changed_characters(); }
  void program(std::initializer_list<int> words) {
    chipstate& chip = record.poke();
    int address = 0;
    for (const int word : words) chip.progmem[address++] = static_cast<std::uint16_t>(word);
    chip.cpu.pc = 0;
    record.refresh();
    window.refresh();
  }
  void choose_device(std::string_view name) {
    record.pick(id::PIC, name);
    window.refresh();
    QCoreApplication::processEvents();
  }
  /// Every control's place in the window, by name.
  std::map<std::string, QRect> places() {
    std::map<std::string, QRect> found;
    for (const control& one : record.look_all()) {
      const QWidget& widget = at(one.which(), one.index());
      if (widget.isVisible()) found[one.name()] = {widget.mapTo(&window, QPoint()), widget.size()};
    }
    return found;
  }
};

}  // namespace estructura::support
