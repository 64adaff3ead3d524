// Lists under mouse and keys.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QTest>

#include "tests/support/handled_window.h"
#include "ui/qt/widgets/memory_map.h"

namespace estructura {
namespace {

class lists : public support::handled_window {};

TEST_F(lists, the_arrow_keys_walk_a_register_list_and_space_chooses) {
  at(id::MDP).setFocus(Qt::TabFocusReason);
  for (int i = 0; i < 4; ++i) QTest::keyClick(&at(id::MDP), Qt::Key_Down);
  EXPECT_EQ(record.look(id::dirdat).text(), "");
  QTest::keyClick(&at(id::MDP), Qt::Key_Space);
  EXPECT_EQ(record.look(id::dirdat).text(), "STATUS");
  EXPECT_EQ(QApplication::focusWidget(), &at(id::dat));
}

TEST_F(lists, a_click_on_the_line_that_is_selected_is_a_click_again) {
  click_row(id::MP, 0, 5);
  auto& direc = at<QLineEdit>(id::direc);
  EXPECT_EQ(direc.text(), "005");
  record.type(id::direc, "0");
  window.refresh();
  EXPECT_EQ(direc.text(), "0");
  click_row(id::MP, 0, 5);
  EXPECT_EQ(direc.text(), "005");
}

TEST_F(lists, a_scrolled_list_does_not_move_under_a_click) {
  auto& list = at<QListView>(id::MP);
  list.scrollToTop();
  click_row(id::MP, 0, 4);
  EXPECT_EQ(record.look(id::direc).text(), "004");
  EXPECT_EQ(list.indexAt(QPoint(1, 1)).row(), 0);
}

TEST_F(lists, a_line_chosen_out_of_sight_comes_into_sight_each_time) {
  auto& list = at<QListView>(id::MP);
  const auto in_sight = [&](int row) {
    return list.viewport()->rect().contains(list.visualRect(list.model()->index(row, 0)));
  };
  for (int time = 0; time < 2; ++time) {
    list.scrollToTop();
    EXPECT_FALSE(in_sight(1000));
    const auto& map = at<memory_map>(id::mapa);
    QTest::mouseClick(&at(id::mapa), Qt::LeftButton, {}, QPoint(5, static_cast<int>(map.y_of_row(1000.5))));
    const int chosen = list.currentIndex().row();
    EXPECT_NEAR(chosen, 1000, 3);
    EXPECT_TRUE(in_sight(chosen));
  }
}

TEST_F(lists, an_address_typed_again_brings_its_line_into_sight) {
  auto& list = at<QListView>(id::MP);
  const auto in_sight = [&] {
    return list.viewport()->rect().contains(list.visualRect(list.model()->index(1000, 0)));
  };
  at(id::direc).setFocus(Qt::TabFocusReason);
  for (int time = 0; time < 2; ++time) {
    list.scrollToTop();
    EXPECT_FALSE(in_sight());
    at<QLineEdit>(id::direc).selectAll();
    QTest::keyClicks(&at(id::direc), "3E8");
    EXPECT_EQ(list.currentIndex().row(), 1000);
    EXPECT_TRUE(in_sight());
  }
}

TEST_F(lists, a_register_can_be_chosen_twice) {
  for (int time = 0; time < 2; ++time) {
    click_row(id::MD, 1, 3);
    EXPECT_EQ(record.look(id::dirdat).text(), "13.1 (33)");
    EXPECT_EQ(QApplication::focusWidget(), &at(id::dat));
    EXPECT_EQ(at<QLineEdit>(id::dat).selectedText(), "00");
    EXPECT_TRUE(at<QListView>(id::MD, 1).selectionModel()->selectedIndexes().isEmpty());
  }
}

TEST_F(lists, only_the_left_button_chooses_a_line) {
  for (const id which : {id::MP, id::MDP, id::PIL, id::nombres}) {
    auto& list = at<QListView>(which);
    const QModelIndexList chosen = list.selectionModel()->selectedIndexes();
    const QModelIndex row = list.model()->index(which == id::MP ? 2040 : 1, 0);
    const QPoint place = list.visualRect(row).center();
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
      QTest::mouseClick(list.viewport(), button, {}, place);
      QTest::mouseDClick(list.viewport(), button, {}, place);
      QTest::mouseRelease(list.viewport(), button, {}, place);
      EXPECT_EQ(list.selectionModel()->selectedIndexes(), chosen) << list.objectName().toStdString();
    }
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    // The value goes to its box at once, and the line is left.
    const int left_at = which == id::MDP ? -1 : row.row();
    EXPECT_EQ(record.look(which).row(), left_at);
  }
}

}  // namespace
}  // namespace estructura
