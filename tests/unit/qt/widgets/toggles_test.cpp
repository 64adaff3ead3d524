// Check boxes as they are painted: open, locked, with the focus.
#include "ui/qt/widgets/toggles.h"

#include <gtest/gtest.h>
#include <set>

#include <QAbstractButton>
#include <QApplication>
#include <QStyleOptionButton>

#include "tests/support/shown_window.h"
#include "ui/qt/look/colours.h"

namespace estructura {
namespace {

class check_boxes : public support::shown_window {};

TEST_F(check_boxes, a_box_that_only_shows_has_the_edge_of_what_cannot_be_used) {
  auto& sleep = at<qt_check_box>(id::estsleep);
  const QImage shown = sleep.grab().toImage();
  sleep.display_only = false;
  EXPECT_NE(sleep.grab().toImage(), shown);
  EXPECT_FALSE(at<qt_check_box>(id::VISMP).display_only);
}

TEST_F(check_boxes, a_box_that_cannot_be_used_looks_different_in_a_dark_palette_too) {
  const QPalette before = QApplication::palette();
  for (const bool dark : {false, true}) {
    if (dark) {
      QPalette palette(Qt::white, QColor(45, 47, 51), QColor(70, 70, 75), QColor(20, 20, 22),
                       QColor(35, 35, 38), Qt::white, QColor(30, 31, 34));
      QApplication::setPalette(palette);
      QCoreApplication::processEvents();
    }
    auto& box = at<QAbstractButton>(id::PB, 3);
    for (const bool checked : {false, true}) {
      box.setChecked(checked);
      box.setEnabled(true);
      const QImage usable = box.grab().toImage();
      box.setEnabled(false);
      const QImage locked = box.grab().toImage();
      // Another ground, and the edge in dots.
      QStyleOptionButton option;
      option.initFrom(&box);
      const QRect mark = box.style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, &box);
      const auto colours_of_edge = [&mark](const QImage& picture) {
        std::set<QRgb> found;
        for (int x = mark.left() + 2; x <= mark.right() - 2; ++x) found.insert(picture.pixel(x, mark.top()));
        return found.size();
      };
      const QPoint inside = mark.topLeft() + QPoint(2, 2);
      EXPECT_NE(usable.pixel(inside), locked.pixel(inside)) << "dark " << dark << " checked " << checked;
      EXPECT_EQ(colours_of_edge(usable), 1U) << "dark " << dark << " checked " << checked;
      EXPECT_GE(colours_of_edge(locked), 2U) << "dark " << dark << " checked " << checked;
    }
  }
  QApplication::setPalette(before);
}

TEST_F(check_boxes, a_box_with_the_focus_has_a_thicker_edge) {
  auto& box = at<QAbstractButton>(id::PB, 3);
  const auto dark_pixels = [&] {
    const QImage picture = box.grab().toImage();
    const QColor text = window.palette().color(QPalette::WindowText);
    int found = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x)
        if (contrast(picture.pixelColor(x, y), text) < 2) ++found;
    return found;
  };
  const int without = dark_pixels();
  box.setFocus(Qt::TabFocusReason);
  // At least the four sides.
  EXPECT_GT(dark_pixels(), without + 40);
}

}  // namespace
}  // namespace estructura
