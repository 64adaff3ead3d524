// The real window for tests with loops of its own: runs, boxes and dialogs, into which a test reaches by a
// timer.
//
//   class mine : public support::handled_window {};
//   TEST_F(mine, ...) { with_box([&] { click(id::fin); }, [](QDialog& dialog) { dialog.reject(); }); }
#pragma once

#include <functional>
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QListView>
#include <QTest>
#include <QTimer>

#include "tests/support/qt_window.h"

namespace estructura::support {

inline constexpr int goto_self = 0xA00;

class handled_window : public real_window<> {
 protected:
  void click_row(id which, int index, int row, Qt::KeyboardModifiers keys = {}) {
    auto& view = at<QListView>(which, index);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, keys,
                      view.visualRect(view.model()->index(row, 0)).center());
  }
  /// An endless loop at the reset vector's target.
  void load_endless_program() {
    record.poke().progmem[0] = goto_self;
    record.poke().progmem[2047] = goto_self;
  }
  /// Runs the program's loop: an action at once, which may nest loops of its own, and another within them as
  /// soon as it can be done.
  static void run(const std::function<void()>& first, const std::function<bool()>& ready,
                  const std::function<void()>& then) {
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
      if (!ready()) return;
      poll.stop();
      then();
    });
    QTimer::singleShot(0, &poll, [&] {
      poll.start(1);
      first();
    });
    QTimer::singleShot(20000, &poll, [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QApplication::exec(), 0);
  }
  /// The click on the run button, with an action between two steps of the run once `ready`; the loop goes on
  /// to its end if the program has not ended.
  void run_program(const std::function<bool()>& ready, const std::function<void()>& then) {
    run(
        [&] {
          click(id::ejecutar);
          if (!record.ended()) QCoreApplication::exit(0);
        },
        ready, then);
  }
  bool running() { return record.chip().running && record.chip().cycles > 10000; }

  /// Performs an action that opens a box, and hands the box over.
  static void with_box(const std::function<void()>& action, const std::function<void(QDialog&)>& look) {
    bool seen = false;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
      auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || seen) return;
      seen = true;
      poll.stop();
      look(*dialog);
    });
    poll.start(5);
    action();
    EXPECT_TRUE(seen);
  }
};

}  // namespace estructura::support
