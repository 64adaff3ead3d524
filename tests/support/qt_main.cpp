// The tests of the window share one application.
#include <gtest/gtest.h>

#include <QApplication>

#include "ui/qt/window/application.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  QApplication app(argc, argv);
  estructura::set_up_application(app);
  return RUN_ALL_TESTS();
}
