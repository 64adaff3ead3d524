// The real window, open and active, for one test.
//
//   class menus : public support::real_window<> {};
//   TEST_F(menus, ...) { click(id::eje1); EXPECT_EQ(at<QLabel>(id::ciclos).text(), "1"); }
//
// The host may be another than that of the program: `real_window<mine>`.
#pragma once

#include <gtest/gtest.h>

#include <QTest>

#include "tests/support/hang.h"
#include "ui/qt/window/main_window.h"
#include "ui/qt/window/qt_host.h"

namespace estructura::support {

template <class Host = qt_host>
class real_window : public testing::Test {
 protected:
  real_window() : window((record.Form_Load(), record)) {
    host.set_window(&window);
    // As on a screen of 1366 by 768, whatever the screen is.
    window.resize(window.least().expandedTo({1366, 720}));
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window, hang_ms));
  }

  template <class Widget = QWidget>
  Widget& at(id which, int index = 0) {
    return *static_cast<Widget*>(window.widget_of(which, index));
  }
  void click(id which, int index = 0) { QTest::mouseClick(&at(which, index), Qt::LeftButton); }

  Host host;
  Estructura record{host};
  main_window window;
};

}  // namespace estructura::support
