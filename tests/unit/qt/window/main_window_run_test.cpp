// A run in the real window: nested loops, closing, and a box that comes back.
#include <chrono>
#include <functional>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "tests/support/handled_window.h"

namespace estructura {
namespace {

class real_run : public support::handled_window {};

/// A run whose watchdog runs out every 144 cycles: no time passes between two boxes that a person could use.
class watchdog_run : public support::handled_window {
 protected:
  watchdog_run() {
    record.type(id::FREC, "32");
    record.click(id::WATCHDOG);
    window.refresh();
    chipstate& chip = record.poke();
    chip.progmem[2047] = 0xC00;  // MOVLW 00
    chip.progmem[0] = 0x002;     // OPTION: no divisor
    chip.progmem[1] = 0xA01;     // GOTO 001
    // Were nothing served in it, the test would stand still here and not pass by waiting.
    host.set_rest(std::chrono::hours(1));
  }
  static QMessageBox* open_box() { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); }
  /// A key that is held down.
  static void hold(QWidget& where, Qt::Key key) {
    QTest::simulateEvent(&where, true, key, {}, QString(), true, -1);
  }
  /// Runs, closes each box by Enter held down, and does something in the rest after the box of that number.
  void in_the_rest_after(int after, const std::function<void()>& then) {
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
      if (open_box() != nullptr) {
        ++boxes;
        if (boxes > 50) record.click(id::ejecutar);
        hold(*open_box(), Qt::Key_Return);
      } else if (boxes == after) {
        poll.stop();
        // Without a window manager nobody gives the focus back.
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        then();
      }
    });
    poll.start(1);
    click(id::ejecutar);
  }
  int boxes = 0;
};

TEST_F(real_run, a_click_on_the_same_button_stops_a_run) {
  load_endless_program();
  run_program([&] { return running(); },
              [&] {
                EXPECT_EQ(at<QPushButton>(id::ejecutar).text(), "&Parar");
                EXPECT_FALSE(at(id::eje1).isEnabled());
                click(id::ejecutar);
              });
  EXPECT_FALSE(record.chip().running);
  EXPECT_GT(record.chip().cycles, 10000);
  EXPECT_EQ(at<QPushButton>(id::ejecutar).text(), "Ejecu&tar");
  EXPECT_FALSE(record.ended());
}

TEST_F(real_run, the_views_are_live_during_a_run) {
  load_endless_program();
  QString early;
  run_program(
      [&] {
        const QString now = at<QLabel>(id::ciclos).text();
        if (early.isEmpty() && now.size() > 5) early = now;
        return !early.isEmpty() && now != early;
      },
      [&] { click(id::ejecutar); });
  EXPECT_NE(early, "");
}

TEST_F(real_run, other_controls_are_served_during_a_run) {
  load_endless_program();
  run_program([&] { return running(); },
              [&] {
                click(id::PB, 3);
                click_row(id::RE, 0, 1);
                QTest::keyClicks(&at(id::dat), "7");
                click(id::entrardat);
                click(id::ejecutar);
              });
  EXPECT_EQ(record.chip().pinb, 8);
  EXPECT_EQ(record.chip().cpu.w, 7);
}

TEST_F(real_run, closing_during_a_run_ends_the_program) {
  load_endless_program();
  run_program([&] { return running(); }, [&] { window.close(); });
  EXPECT_TRUE(record.ended());
  EXPECT_FALSE(record.chip().running);
  EXPECT_FALSE(window.isVisible());
}

TEST_F(real_run, the_end_button_ends_the_program_from_within_a_run) {
  load_endless_program();
  run_program([&] { return running(); }, [&] { click(id::fin); });
  EXPECT_TRUE(record.ended());
  EXPECT_FALSE(window.isVisible());
}

TEST_F(real_run, closing_while_a_box_is_open_ends_the_program) {
  record.type(id::source, "algo");
  const auto box_open = [] { return QApplication::activeModalWidget() != nullptr; };
  run([&] { click(id::cargarasm); }, box_open,
      [&] {
        const QWidget* const before = QApplication::activeModalWidget();
        // The question of closing itself is answered with No.
        QTimer answer;
        QObject::connect(&answer, &QTimer::timeout, &answer, [&] {
          auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
          if (box == nullptr || box == before) return;
          answer.stop();
          EXPECT_EQ(box->button(QMessageBox::Cancel), nullptr);
          box->button(QMessageBox::No)->click();
        });
        answer.start(1);
        window.close();
      });
  EXPECT_TRUE(record.ended());
  EXPECT_FALSE(window.isVisible());
}

TEST_F(real_run, a_sleeping_chip_is_woken_by_a_click_during_a_run) {
  record.pick(id::PIC, "12C508");
  chipstate& chip = record.poke();
  chip.progmem[511] = support::goto_self;
  chip.progmem[0] = 0xC0F;  // MOVLW 0F
  chip.progmem[1] = 0x002;  // OPTION: wake-up on
  chip.progmem[2] = 0x003;  // SLEEP
  run_program([&] { return record.chip().sleeping; },
              [&] {
                click(id::PB, 0);
                click(id::ejecutar);
              });
  EXPECT_EQ(record.look(id::STATUS).text().front(), '1');
}

TEST_F(watchdog_run, every_way_to_stop_is_served_between_two_boxes_though_enter_is_held) {
  const std::function<void()> ways[] = {
      [&] { click(id::ejecutar); },
      [&] { QTest::keyClick(&window, Qt::Key_F5); },
      [&] { QTest::keyClick(&window, Qt::Key_P, Qt::AltModifier); },
      [&] { QTest::keyClick(&at(id::ejecutar), Qt::Key_Space); },
  };
  for (const auto& way : ways) {
    boxes = 0;
    in_the_rest_after(1, [&] {
      ASSERT_EQ(QApplication::focusWidget(), &at(id::ejecutar));
      for (int times = 0; times < 20; ++times) hold(*QApplication::focusWidget(), Qt::Key_Return);
      EXPECT_TRUE(record.chip().running);
      way();
    });
    EXPECT_EQ(boxes, 1);
    EXPECT_FALSE(record.chip().running);
    EXPECT_EQ(at<QPushButton>(id::ejecutar).text(), "Ejecu&tar");
  }
}

TEST_F(watchdog_run, closing_between_two_boxes_asks_for_what_is_unsaved_and_ends_the_program) {
  record.type(id::source, "algo");
  const auto resting = [&] { return boxes == 1 && open_box() == nullptr; };
  int questions = 0;
  QTimer answers;
  QObject::connect(&answers, &QTimer::timeout, &answers, [&] {
    QMessageBox* const shown = open_box();
    if (shown == nullptr) return;
    QAbstractButton* const no = shown->button(QMessageBox::No);
    ++(no != nullptr ? questions : boxes);
    (no != nullptr ? no : shown->button(QMessageBox::Ok))->click();
  });
  answers.start(1);
  run([&] { click(id::ejecutar); }, resting, [&] { window.close(); });
  EXPECT_EQ(boxes, 1);
  EXPECT_EQ(questions, 1);
  EXPECT_TRUE(record.ended());
}

TEST_F(watchdog_run, the_window_is_painted_and_edited_between_two_boxes) {
  in_the_rest_after(1, [&] {
    EXPECT_EQ(at<QLabel>(id::STATUS).text(), "00001000");
    click(id::source);
    QTest::keyClicks(&at(id::source), "NOP");
    click(id::ejecutar);
  });
  EXPECT_EQ(record.look(id::source).text(), "NOP");
}

TEST_F(watchdog_run, a_held_enter_breaks_no_line_of_the_source_behind_the_box) {
  in_the_rest_after(1, [&] {
    at(id::source).setFocus();
    hold(at(id::source), Qt::Key_Return);
    EXPECT_EQ(record.look(id::source).text(), "");
    // A press of its own counts again.
    QTest::keyClick(&at(id::source), Qt::Key_Return);
    EXPECT_EQ(record.look(id::source).text(), "\r\n");
    hold(at(id::source), Qt::Key_Return);
    EXPECT_EQ(record.look(id::source).text(), "\r\n\r\n");
    click(id::ejecutar);
  });
}

TEST_F(watchdog_run, the_run_goes_on_by_itself_after_its_rest) {
  host.set_rest(std::chrono::milliseconds(1));
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
    if (open_box() == nullptr) return;
    if (++boxes == 3) record.click(id::ejecutar);
    open_box()->button(QMessageBox::Ok)->click();
  });
  poll.start(1);
  click(id::ejecutar);
  EXPECT_EQ(boxes, 3);
}

}  // namespace
}  // namespace estructura
