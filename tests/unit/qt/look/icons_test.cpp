// The program's icon, in the window and in the menu.
#include "ui/qt/look/icons.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileInfo>
#include <QImage>
#include <QPixmap>

namespace estructura {
namespace {

TEST(program_icon, is_the_one_that_is_installed) {
  const QIcon icon = QApplication::windowIcon();
  for (const int side : {16, 22, 24, 32, 48, 64, 128, 256}) {
    const QPixmap installed(QStringLiteral(ESTRUCTURA_PACKAGING "/icons/%1.png").arg(side));
    ASSERT_EQ(installed.size(), QSize(side, side));
    EXPECT_EQ(icon.pixmap(QSize(side, side), 1.0).toImage(), installed.toImage()) << side;
  }
}

// On Wayland the desktop finds the window's icon by the name of its menu entry.
TEST(program_icon, is_found_through_the_menu_entry) {
  EXPECT_TRUE(QFileInfo::exists(
      QStringLiteral(ESTRUCTURA_PACKAGING "/%1.desktop").arg(QGuiApplication::desktopFileName())));
}

}  // namespace
}  // namespace estructura
