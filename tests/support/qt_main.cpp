// The tests of the window share one application.
#include <gtest/gtest.h>

#include <QApplication>

#include "ui/qt/aplicacion.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  QApplication app(argc, argv);
  estructura::prepara_aplicacion(app);
  return RUN_ALL_TESTS();
}
