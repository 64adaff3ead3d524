// A window smaller than its controls.
#include <gtest/gtest.h>

#include <QApplication>
#include <QListView>
#include <QScrollArea>
#include <QTest>

#include "tests/support/handled_window.h"

namespace estructura {
namespace {

/// A window smaller than its controls.
class small_window : public support::handled_window {
 protected:
  small_window() {
    record.poke().progmem[2047] = 0xA80;  // GOTO 080
    record.poke().progmem[0x80] = 0xA01;  // GOTO 001
    record.poke().progmem[1] = 0xA80;
  }
  void resize_to(const QSize& size) {
    window.resize(size);
    QCoreApplication::processEvents();
    ASSERT_TRUE(area().horizontalScrollBar()->maximum() > 0);
  }
  QScrollArea& area() { return *window.findChild<QScrollArea*>(); }
  bool line_in_sight() {
    auto& list = at<QListView>(id::MP);
    const QRect line = list.visualRect(list.model()->index(record.chip().cpu.pc, 0));
    return list.viewport()->visibleRegion().boundingRect().contains(line);
  }
};

TEST_F(small_window, a_step_brings_its_line_into_sight_wherever_the_window_was_scrolled) {
  for (const QSize& size : {QSize(1000, 500), QSize(640, 480), QSize(500, 300)}) {
    resize_to(size);
    auto& across = *area().horizontalScrollBar();
    auto& down = *area().verticalScrollBar();
    for (const int x : {0, across.maximum()})
      for (const int y : {0, down.maximum()}) {
        across.setValue(x);
        down.setValue(y);
        QTest::keyClick(&window, Qt::Key_F7);
        EXPECT_TRUE(line_in_sight()) << size.width() << ": " << x << ", " << y;
      }
  }
}

TEST_F(small_window,
       nothing_moves_from_under_the_mouse_that_steps_and_what_is_seen_of_the_list_shows_the_line) {
  record.poke().progmem[0x80] = 0xA72;  // GOTO 072, above in the same list
  record.poke().progmem[0x72] = 0xA80;
  resize_to({1000, 500});
  area().ensureWidgetVisible(&at(id::eje1));
  QTest::mouseMove(&at(id::eje1));
  ASSERT_TRUE(QTest::qWaitFor([&] { return at(id::eje1).underMouse(); }));
  const QPoint before = at(id::eje1).mapTo(&window, QPoint());
  for (int times = 0; times < 4; ++times) {
    click(id::eje1);
    EXPECT_EQ(at(id::eje1).mapTo(&window, QPoint()), before);
    EXPECT_TRUE(line_in_sight());
  }
  // Nor where nothing of the list is seen.
  resize_to({500, 300});
  area().ensureWidgetVisible(&at(id::eje1));
  area().horizontalScrollBar()->setValue(area().horizontalScrollBar()->maximum());
  QTest::mouseMove(&at(id::eje1));
  ASSERT_TRUE(QTest::qWaitFor([&] { return at(id::eje1).underMouse(); }));
  const QPoint there = at(id::eje1).mapTo(&window, QPoint());
  click(id::eje1);
  EXPECT_EQ(at(id::eje1).mapTo(&window, QPoint()), there);
}

TEST_F(small_window, a_run_leaves_the_window_where_the_person_has_scrolled_it) {
  resize_to({640, 480});
  auto& across = *area().horizontalScrollBar();
  int seen = -1;
  run_program([&] { return running(); },
              [&] {
                across.setValue(across.maximum());
                window.refresh();
                seen = across.value();
                QTest::keyClick(&window, Qt::Key_F5);
              });
  EXPECT_EQ(seen, across.maximum());
}

}  // namespace
}  // namespace estructura
