// The program's colours, which follow the desktop's.
#include <gtest/gtest.h>

#include <QApplication>

#include "tests/support/shown_window.h"
#include "ui/qt/look/colours.h"

namespace estructura {
namespace {

class palette_of_program : public support::shown_window {};

TEST_F(palette_of_program, what_a_menu_does_not_offer_now_can_be_read) {
  const QPalette palette = QApplication::palette("QMenu");
  EXPECT_GE(contrast(palette.color(QPalette::Disabled, QPalette::Text), palette.color(QPalette::Window)),
            least_contrast);
  EXPECT_GE(
      contrast(palette.color(QPalette::Disabled, QPalette::WindowText), palette.color(QPalette::Window)),
      least_contrast);
}

TEST_F(palette_of_program, the_window_follows_the_desktop_from_light_to_dark) {
  const QPalette before = QApplication::palette();
  QApplication::setPalette(QPalette(Qt::white, QColor(45, 47, 51), QColor(70, 70, 75), QColor(20, 20, 22),
                                    QColor(35, 35, 38), Qt::white, QColor(30, 31, 34)));
  QCoreApplication::processEvents();
  EXPECT_EQ(window.palette().color(QPalette::Window), QColor(45, 47, 51));
  // What was worked out for the light palette would be dark upon dark.
  EXPECT_GE(contrast(window.palette().color(QPalette::Disabled, QPalette::WindowText), QColor(45, 47, 51)),
            4.5);
  EXPECT_EQ(at(id::source).palette().color(QPalette::Base), QColor(30, 31, 34));
  // A selection that is not seen has the colour of the rest of the text.
  EXPECT_EQ(at(id::FREC).palette().color(QPalette::HighlightedText), QColor(Qt::white));
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace estructura
