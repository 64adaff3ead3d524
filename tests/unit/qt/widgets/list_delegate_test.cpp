// The lines of a list as they are painted.
#include <gtest/gtest.h>

#include <QTest>

#include "tests/support/shown_window.h"
#include "ui/qt/widgets/list_view.h"

namespace estructura {
namespace {

class list_lines : public support::shown_window {};

TEST_F(list_lines, a_line_chosen_in_a_small_list_shows_only_while_the_list_has_the_focus) {
  for (const id which : {id::PIL, id::nombres, id::nomre, id::dirmd}) {
    auto& list = at<list_view>(which);
    const QRect row = list.visualRect(list.model()->index(1, 0));
    const QImage plain = list.viewport()->grab(row).toImage();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, row.center());
    EXPECT_EQ(record.look(which).row(), 1);
    EXPECT_NE(list.viewport()->grab(row).toImage(), plain);
    at(id::eje1).setFocus(Qt::TabFocusReason);
    EXPECT_EQ(record.look(which).row(), 1);
    EXPECT_EQ(list.viewport()->grab(row).toImage(), plain) << list.objectName().toStdString();
  }
}

TEST_F(list_lines, the_next_instruction_has_an_arrow_wherever_the_selection_is) {
  program({0, 0, 0});
  click(id::eje1);
  auto& list = at<list_view>(id::MP);
  EXPECT_EQ(list.next_row(), 1);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(5, 0)).center());
  EXPECT_EQ(list.current_row(), 5);
  EXPECT_EQ(list.next_row(), 1);
  const auto gutter = [&](int row) {
    const QRect line = list.visualRect(list.model()->index(row, 0));
    return list.viewport()
        ->grab(QRect(line.topLeft(), QSize(2 * line.height() / 3, line.height())))
        .toImage();
  };
  EXPECT_NE(gutter(1), gutter(2));
  EXPECT_EQ(gutter(3), gutter(2));
}

TEST_F(list_lines, a_breakpoint_keeps_its_star_and_has_a_disc) {
  program({0, 0, 0});
  record.type(id::direc, "002");
  click(id::break_);
  record.type(id::direc, "004");
  window.refresh();
  auto& list = at<list_view>(id::MP);
  EXPECT_TRUE(list.model()->index(2, 0).data().toString().startsWith('*'));
  const QRect line = list.visualRect(list.model()->index(2, 0));
  const QImage row = list.viewport()->grab(line).toImage();
  // The disc: as high as most of the line.
  int blue = 0;
  for (int y = 0; y < row.height(); ++y)
    for (int x = 0; x < 3 * line.height(); ++x)
      if (row.pixelColor(x, y) == QColor(0, 0, 200)) {
        ++blue;
        break;
      }
  EXPECT_GE(blue, line.height() / 2);
  // Between it and the address a column of the ground is left.
  const auto is_ground = [&](int x) {
    for (int y = 0; y < row.height(); ++y)
      if (row.pixelColor(x, y) != row.pixelColor(0, 0)) return false;
    return true;
  };
  const int middle = row.height() / 2;
  int x = 0;
  while (row.pixelColor(x, middle) != QColor(0, 0, 200)) ++x;
  const int left_edge = x;
  while (!is_ground(x)) ++x;
  EXPECT_LE(x - left_edge, line.height());
}

}  // namespace
}  // namespace estructura
