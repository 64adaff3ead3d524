// The window in real widgets: nested loops, closing, keys, boxes and dialogs as Qt brings them.
#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <string_view>

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGroupBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTextDocument>
#include <QTimer>
#include <QToolTip>

#include "core/devices.h"
#include "tests/support/hang.h"
#include "tests/support/qt_window.h"
#include "ui/qt/widgets/memory_map.h"
#include "ui/qt/window/file_dialog.h"
#include "ui/qt/window/main_window.h"

namespace estructura {
namespace {

constexpr int goto_self = 0xA00;

class main_window_test : public support::real_window<> {
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

// --- size and keyboard ---

TEST_F(main_window_test, fits_a_screen_of_1366_by_768_on_every_device) {
  for (const auto& [device, model] : catalogue) {
    record.pick(id::PIC, device);
    window.refresh();
    EXPECT_LE(window.least().width(), 1366) << device;
    EXPECT_LE(window.least().height(), 720) << device;
  }
}

TEST_F(main_window_test, nothing_moves_when_the_device_changes) {
  const QPoint before = at(id::MD, 0).mapTo(&window, QPoint());
  const QSize size = window.least();
  record.pick(id::PIC, "12C508");
  window.refresh();
  QCoreApplication::processEvents();
  EXPECT_EQ(at(id::MD, 0).mapTo(&window, QPoint()), before);
  EXPECT_EQ(window.least(), size);
}

TEST_F(main_window_test, tris_takes_the_line_of_trisa_where_there_is_no_trisa) {
  const QPoint trisa = at(id::TRISA).pos();
  EXPECT_NE(at(id::TRISB).pos(), trisa);
  record.pick(id::PIC, "12C508");
  window.refresh();
  QCoreApplication::processEvents();
  EXPECT_EQ(at(id::TRISB).pos(), trisa);
  record.pick(id::PIC, "16C54");
  window.refresh();
  QCoreApplication::processEvents();
  EXPECT_NE(at(id::TRISB).pos(), trisa);
}

TEST_F(main_window_test, binary_views_stand_beside_the_lines_they_show) {
  const auto middle_of_row = [&](id list, int index, int row) {
    auto& view = at<QListView>(list, index);
    return view.viewport()->mapTo(&window, view.visualRect(view.model()->index(row, 0)).center()).y();
  };
  const auto middle = [&](id which) { return at(which).mapTo(&window, at(which).rect().center()).y(); };
  QCoreApplication::processEvents();
  EXPECT_EQ(middle(id::STATUS), middle_of_row(id::MDP, 0, 3));
  EXPECT_EQ(middle(id::BPA), middle_of_row(id::MDP, 0, 5));
  EXPECT_EQ(middle(id::BPC), middle_of_row(id::MDP, 0, 7));
  EXPECT_EQ(middle(id::OPT), middle_of_row(id::RE, 0, 2));
  EXPECT_EQ(middle(id::TRISC), middle_of_row(id::RE, 0, 5));
  EXPECT_EQ(at(id::lstatus).mapTo(&window, QPoint()).x(), at(id::STATUS).mapTo(&window, QPoint()).x());
}

TEST_F(main_window_test, the_current_program_line_stays_in_sight_when_the_window_becomes_lower) {
  auto& program = at<QListView>(id::MP);
  const auto line = [&] { return program.visualRect(program.currentIndex()); };
  const auto whole = [&] { return program.viewport()->rect().contains(line()); };
  ASSERT_EQ(program.currentIndex().row(), 0x7FF);
  window.resize(window.least() + QSize(0, 200));
  QCoreApplication::processEvents();
  EXPECT_TRUE(whole());
  window.resize(window.least());
  QCoreApplication::processEvents();
  EXPECT_TRUE(whole());

  // One that the person has scrolled out of sight stays there.
  program.scrollToTop();
  window.resize(window.least() + QSize(0, 200));
  QCoreApplication::processEvents();
  EXPECT_FALSE(whole());
}

TEST_F(main_window_test, no_control_has_the_focus_at_the_start) {
  EXPECT_EQ(record.focused().which, id::none);
  EXPECT_EQ(QApplication::focusWidget(), at(id::Frame7).parentWidget());
}

TEST_F(main_window_test, the_tab_key_walks_the_controls_in_the_order_of_their_table) {
  int last = -1;
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  const QWidget* const first = QApplication::focusWidget();
  int walked = 0;
  do {
    const auto found = find_control(QApplication::focusWidget()->objectName().toStdString());
    ASSERT_TRUE(found) << QApplication::focusWidget()->objectName().toStdString();
    const auto [which, index] = *found;
    // In a port bit 7 stands leftmost.
    const bool pin = which == id::PA || which == id::PB || which == id::PC;
    const int place = static_cast<int>(which) * 16 + (pin ? 15 - index : index);
    EXPECT_GT(place, last) << QApplication::focusWidget()->objectName().toStdString();
    EXPECT_EQ(record.focused(), (control_place{which, index}));
    last = place;
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ++walked;
  } while (QApplication::focusWidget() != first && walked < 200);
  // Everything that can be used: buttons, boxes, texts, lists of values, the combo, and of the options the
  // chosen one, from which the arrow keys go to the other.
  int usable = 0;
  for (const control& one : record.look_all()) {
    const bool takes = one.is() != kind::label && one.is() != kind::frame && one.is() != kind::picture;
    const bool reached_by_arrows = one.is() == kind::option && !one.value();
    const bool only_names =
        one.which() == id::nomre || one.which() == id::nombres || one.which() == id::dirmd;
    if (takes && !reached_by_arrows && !only_names && record.usable(one.which(), one.index())) ++usable;
  }
  EXPECT_EQ(walked, usable);
}

TEST_F(main_window_test, alt_and_a_letter_clicks) {
  load_endless_program();
  QTest::keyClick(&window, Qt::Key_1, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return record.chip().cycles > 0; }, support::hang_ms));
  EXPECT_EQ(record.chip().cycles, 3);
}

TEST_F(main_window_test, the_arrow_keys_walk_a_register_list_and_space_chooses) {
  at(id::MDP).setFocus(Qt::TabFocusReason);
  for (int i = 0; i < 4; ++i) QTest::keyClick(&at(id::MDP), Qt::Key_Down);
  EXPECT_EQ(record.look(id::dirdat).text(), "");
  QTest::keyClick(&at(id::MDP), Qt::Key_Space);
  EXPECT_EQ(record.look(id::dirdat).text(), "STATUS");
  EXPECT_EQ(QApplication::focusWidget(), &at(id::dat));
}

// --- mouse ---

TEST_F(main_window_test, a_click_on_the_line_that_is_selected_is_a_click_again) {
  click_row(id::MP, 0, 5);
  auto& direc = at<QLineEdit>(id::direc);
  EXPECT_EQ(direc.text(), "005");
  record.type(id::direc, "0");
  window.refresh();
  EXPECT_EQ(direc.text(), "0");
  click_row(id::MP, 0, 5);
  EXPECT_EQ(direc.text(), "005");
}

TEST_F(main_window_test, a_scrolled_list_does_not_move_under_a_click) {
  auto& list = at<QListView>(id::MP);
  list.scrollToTop();
  click_row(id::MP, 0, 4);
  EXPECT_EQ(record.look(id::direc).text(), "004");
  EXPECT_EQ(list.indexAt(QPoint(1, 1)).row(), 0);
}

TEST_F(main_window_test, a_line_chosen_out_of_sight_comes_into_sight_each_time) {
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

TEST_F(main_window_test, an_address_typed_again_brings_its_line_into_sight) {
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

/// A window smaller than its controls.
class small_window : public main_window_test {
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

TEST_F(main_window_test, a_register_can_be_chosen_twice) {
  for (int time = 0; time < 2; ++time) {
    click_row(id::MD, 1, 3);
    EXPECT_EQ(record.look(id::dirdat).text(), "13.1 (33)");
    EXPECT_EQ(QApplication::focusWidget(), &at(id::dat));
    EXPECT_EQ(at<QLineEdit>(id::dat).selectedText(), "00");
    EXPECT_TRUE(at<QListView>(id::MD, 1).selectionModel()->selectedIndexes().isEmpty());
  }
}

TEST_F(main_window_test, the_first_click_into_an_entry_keeps_it_selected_and_the_second_sets_the_caret) {
  click(id::FREC);
  EXPECT_EQ(at<QLineEdit>(id::FREC).selectedText(), "4000");
  click(id::FREC);
  EXPECT_EQ(at<QLineEdit>(id::FREC).selectedText(), "");
}

TEST_F(main_window_test, the_sleep_box_cannot_be_checked_by_hand) {
  click(id::estsleep);
  EXPECT_FALSE(at<QAbstractButton>(id::estsleep).isChecked());
}

// --- text ---

TEST_F(main_window_test, typed_letters_reach_the_record_with_the_caret) {
  click(id::source);
  QTest::keyClicks(&at(id::source), "uno");
  QTest::keyClick(&at(id::source), Qt::Key_Return);
  QTest::keyClicks(&at(id::source), "dos");
  EXPECT_EQ(record.look(id::source).text(), "uno\r\ndos");
  EXPECT_EQ(record.look(id::source).sel_start(), 8);
}

TEST_F(main_window_test, what_an_editing_button_inserts_can_be_undone) {
  click(id::source);
  QTest::keyClicks(&at(id::source), "ab");
  QTest::keyClick(&at(id::source), Qt::Key_Left);
  QGuiApplication::clipboard()->setText("x\ny");
  click(id::Pegar);
  EXPECT_EQ(record.look(id::source).text(), "ax\r\nyb");
  EXPECT_EQ(at<QPlainTextEdit>(id::source).toPlainText(), "ax\nyb");
  at<QPlainTextEdit>(id::source).undo();
  EXPECT_EQ(record.look(id::source).text(), "ab");
}

TEST_F(main_window_test, a_line_of_entry_holds_what_the_record_holds_however_long) {
  const std::string text(40'000, 'A');
  record.type(id::INS, text);
  window.refresh();
  EXPECT_EQ(at<QLineEdit>(id::INS).text().toStdString(), text);
}

TEST_F(main_window_test, a_value_typed_and_entered_reaches_the_register) {
  click_row(id::RE, 0, 1);
  QTest::keyClicks(&at(id::dat), "a5");
  QTest::keyClick(&at(id::dat), Qt::Key_Return);
  EXPECT_EQ(record.chip().cpu.w, 0xA5);
  EXPECT_FALSE(at(id::dat).isEnabled());
}

// --- continuous runs and closing ---

TEST_F(main_window_test, a_click_on_the_same_button_stops_a_run) {
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

TEST_F(main_window_test, the_views_are_live_during_a_run) {
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

TEST_F(main_window_test, other_controls_are_served_during_a_run) {
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

TEST_F(main_window_test, closing_during_a_run_ends_the_program) {
  load_endless_program();
  run_program([&] { return running(); }, [&] { window.close(); });
  EXPECT_TRUE(record.ended());
  EXPECT_FALSE(record.chip().running);
  EXPECT_FALSE(window.isVisible());
}

TEST_F(main_window_test, the_end_button_ends_the_program_from_within_a_run) {
  load_endless_program();
  run_program([&] { return running(); }, [&] { click(id::fin); });
  EXPECT_TRUE(record.ended());
  EXPECT_FALSE(window.isVisible());
}

TEST_F(main_window_test, closing_while_a_box_is_open_ends_the_program) {
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

TEST_F(main_window_test, a_sleeping_chip_is_woken_by_a_click_during_a_run) {
  record.pick(id::PIC, "12C508");
  chipstate& chip = record.poke();
  chip.progmem[511] = goto_self;
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

// --- a box that comes back ---

/// A run whose watchdog runs out every 144 cycles: no time passes between two boxes that a person could use.
class watchdog_run : public main_window_test {
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

// --- boxes and dialogs ---

TEST_F(main_window_test, a_question_of_two_buttons_is_not_closed_without_an_answer) {
  const std::function<void(QDialog&)> tries[] = {
      [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); },
      [](QDialog& dialog) { QTest::keyClick(dialog.findChild<QPushButton*>(), Qt::Key_Escape); },
      [](QDialog& dialog) { dialog.close(); },
      [](QDialog& dialog) { dialog.reject(); },
  };
  for (const auto& attempt : tries) {
    answer given = answer::ok;
    with_box([&] { given = host.show_box(box::yesno, "algo"); },
             [&](QDialog& dialog) {
               attempt(dialog);
               EXPECT_TRUE(dialog.isVisible());
               if (dialog.isVisible()) dynamic_cast<QMessageBox&>(dialog).button(QMessageBox::Yes)->click();
             });
    EXPECT_EQ(given, answer::yes);
  }
}

TEST_F(main_window_test, a_question_of_three_buttons_is_cancelled_by_escape_and_by_its_close_button) {
  for (const bool by_key : {true, false}) {
    answer given = answer::ok;
    with_box([&] { given = host.show_box(box::yesnocancel, "algo"); },
             [&](QDialog& dialog) {
               if (by_key)
                 QTest::keyClick(&dialog, Qt::Key_Escape);
               else
                 dialog.close();
             });
    EXPECT_EQ(given, answer::cancel);
  }
}

TEST_F(main_window_test, an_enter_that_is_held_down_answers_no_question) {
  for (const box kind : {box::yesno, box::yesnocancel}) {
    answer given = answer::ok;
    with_box([&] { given = host.show_box(kind, "algo"); },
             [&](QDialog& dialog) {
               auto& question = dynamic_cast<QMessageBox&>(dialog);
               for (int times = 0; times < 3; ++times)
                 QTest::simulateEvent(question.button(QMessageBox::Yes), true, Qt::Key_Return, {}, QString(),
                                      true, -1);
               EXPECT_TRUE(dialog.isVisible());
               if (!dialog.isVisible()) return;
               QTest::keyClick(question.button(QMessageBox::No), Qt::Key_Return);
             });
    EXPECT_EQ(given, answer::no);
  }
}

TEST_F(main_window_test, escape_on_the_questions_of_closing_loses_nothing) {
  record.type(id::source, "algo");
  run([&] { window.close(); }, [] { return QApplication::activeModalWidget() != nullptr; },
      [&] {
        auto& question = dynamic_cast<QMessageBox&>(*QApplication::activeModalWidget());
        QTest::keyClick(&question, Qt::Key_Escape);
        EXPECT_FALSE(record.ended());
        EXPECT_TRUE(question.isVisible());
        question.button(QMessageBox::No)->click();
      });
  EXPECT_TRUE(record.ended());
}

TEST_F(main_window_test, questions_are_asked_in_spanish_in_a_fixed_order) {
  record.type(id::source, "algo");
  with_box([&] { click(id::fin); },
           [](QDialog& dialog) {
             auto& box = dynamic_cast<QMessageBox&>(dialog);
             EXPECT_EQ(box.textFormat(), Qt::PlainText);
             EXPECT_EQ(box.text(), " (ASM)\nHa sido modificado.\n¿Desea salvarlo?");
             EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::Yes));
             QStringList captions;
             for (QAbstractButton* button : {box.button(QMessageBox::Yes), box.button(QMessageBox::No),
                                             box.button(QMessageBox::Cancel)})
               captions << button->text().remove('&');
             EXPECT_EQ(captions, QStringList({"Sí", "No", "Cancelar"}));
             EXPECT_LT(box.button(QMessageBox::Yes)->x(), box.button(QMessageBox::No)->x());
             EXPECT_LT(box.button(QMessageBox::No)->x(), box.button(QMessageBox::Cancel)->x());
             QTest::keyClick(&dialog, Qt::Key_Escape);
           });
  EXPECT_FALSE(record.ended());
}

TEST_F(main_window_test, the_watchdogs_box_is_aligned_right_and_has_no_icon) {
  for (const box kind : {box::ok_right, box::ok}) {
    with_box([&] { host.show_box(kind, "uno\rdos"); },
             [&](QDialog& dialog) {
               const auto& shown = dynamic_cast<QMessageBox&>(dialog);
               const Qt::Alignment alignment = shown.findChild<QLabel*>("qt_msgbox_label")->alignment();
               EXPECT_EQ((alignment & Qt::AlignRight) != 0, kind == box::ok_right);
               EXPECT_EQ(shown.icon(), QMessageBox::NoIcon);
               EXPECT_EQ(shown.standardButtons(), QMessageBox::Ok);
               QTest::keyClick(&dialog, Qt::Key_Escape);
             });
  }
}

TEST_F(main_window_test, a_tip_that_is_a_file_name_is_never_taken_for_marked_up_text) {
  const char* const name = "/tmp/a<b>x</b>&lt;.hex";
  auto& label = at<QLabel>(id::FILHEX);
  label.setToolTip(name);
  const QPoint place = label.rect().center();
  QHelpEvent over(QEvent::ToolTip, place, label.mapToGlobal(place));
  QApplication::sendEvent(&label, &over);
  QTextDocument shown;
  shown.setHtml(QToolTip::text());
  EXPECT_TRUE(Qt::mightBeRichText(QToolTip::text()));
  EXPECT_EQ(shown.toPlainText(), name);
  QToolTip::hideText();
}

TEST_F(main_window_test, the_seven_file_buttons_and_no_others_bear_pictures) {
  QStringList pictured;
  for (const auto* button : window.findChildren<QAbstractButton*>())
    if (!button->icon().isNull()) pictured << button->objectName();
  pictured.sort();
  EXPECT_EQ(pictured, QStringList({"borrar", "borrarasm", "cargar", "cargarasm", "salvar", "salvar16c84",
                                   "salvarasm"}));
}

TEST_F(main_window_test, values_stand_digit_under_digit) {
  for (const id which :
       {id::MP, id::MDP, id::MD, id::RE, id::PIL, id::STATUS, id::OPT, id::source, id::lst}) {
    const QFontMetrics letters(at(which).font());
    for (const char letter : std::string_view("1FWi .-?"))
      EXPECT_EQ(letters.horizontalAdvance(QLatin1Char(letter)), letters.horizontalAdvance(QLatin1Char('0')))
          << declared(which).name << ", " << letter;
  }
}

TEST_F(main_window_test, the_file_dialog_proposes_the_file_that_the_document_means) {
  const QTemporaryDir folder;
  ASSERT_TRUE(QDir(folder.path()).mkdir("Curso"));
  QFile file(folder.filePath("Curso/Uno.ASM"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  with_box(
      [&] {
        host.choose_file(true, "Todos (*.*)|*.*", "asm", folder.filePath("curso/uno.asm").toStdString());
      },
      [&](QDialog& dialog) {
        const auto& files = dynamic_cast<QFileDialog&>(dialog);
        const auto* const edit = dialog.findChild<QLineEdit*>("fileNameEdit");
        EXPECT_EQ(files.directory().path(), folder.filePath("Curso"));
        EXPECT_EQ(edit->text(), "Uno.ASM");
        dialog.reject();
      });
}

TEST_F(main_window_test, a_folder_typed_in_the_file_dialog_is_entered_and_its_name_taken_away) {
  const QTemporaryDir folder;
  ASSERT_TRUE(QDir(folder.path()).mkdir("Curso"));
  with_box(
      [&] { host.choose_file(false, "Todos (*.*)|*.*", "asm", folder.filePath("uno.asm").toStdString()); },
      [&](QDialog& dialog) {
        const auto& files = dynamic_cast<QFileDialog&>(dialog);
        auto* const edit = dialog.findChild<QLineEdit*>("fileNameEdit");
        for (const QString& typed : {QString("Curso"), folder.path(), QString("Curso"), QString("..")}) {
          const QString expected = QDir::cleanPath(files.directory().filePath(typed));
          edit->setText(typed);
          QTest::keyClick(edit, Qt::Key_Return);
          EXPECT_TRUE(dialog.isVisible());
          EXPECT_EQ(QDir::cleanPath(files.directory().path()), expected);
          EXPECT_EQ(edit->text(), "");
        }
        dialog.reject();
      });
}

TEST_F(main_window_test, only_the_left_button_chooses_a_line) {
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

TEST(examples_folder, is_found_beside_an_installed_program_and_above_a_built_one) {
  const QTemporaryDir place;
  ASSERT_TRUE(QDir(place.path()).mkpath("usr/share/estructura/ejemplos"));
  ASSERT_TRUE(QDir(place.path()).mkpath("clon/ejemplos"));
  EXPECT_EQ(examples_folder(place.filePath("usr/bin")), place.filePath("usr/share/estructura/ejemplos"));
  EXPECT_EQ(examples_folder(place.filePath("clon/build/release/ui/qt")), place.filePath("clon/ejemplos"));
  EXPECT_EQ(examples_folder(place.filePath("opt/bin")), "");
}

TEST_F(main_window_test, a_file_dialog_leaves_nothing_behind_for_the_next_run) {
  const QTemporaryDir folder;
  // Where Qt keeps what its file dialogs have seen.
  const QString of_dialogs = "QtProject";
  const QFileInfo usual(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + '/' +
                        of_dialogs + ".conf");
  const auto last_written = [&] { return QFileInfo(usual.filePath()).lastModified(); };
  const QDateTime before = last_written();
  with_box(
      [&] { host.choose_file(true, "Todos (*.*)|*.*", "asm", folder.filePath("uno.asm").toStdString()); },
      [&](QDialog& dialog) {
        QTest::keyClick(dialog.findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
      });
  EXPECT_EQ(last_written(), before) << usual.filePath().toStdString();
  EXPECT_FALSE(QFile::exists(QSettings(QSettings::UserScope, of_dialogs).fileName()));
}

class file_dialog_answer : public main_window_test {
 protected:
  /// What the dialog answers when this name is typed in it.
  std::string choose(bool save, const QString& name) {
    std::string path;
    with_box(
        [&] { path = host.choose_file(save, "Hexadecimales (*.hex)|*.hex|Todos (*.*)|*.*", "hex", ""); },
        [&](QDialog& dialog) {
          auto& files = dynamic_cast<QFileDialog&>(dialog);
          EXPECT_EQ(files.nameFilters(), QStringList({"Hexadecimales (*.hex) (*.hex)", "Todos (*.*) (*)"}));
          auto* const edit = dialog.findChild<QLineEdit*>("fileNameEdit");
          edit->setText(name);
          QTest::keyClick(edit, Qt::Key_Return);
        });
    return path;
  }
  void make(const QString& name) {
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  std::string in_folder(const QString& name) { return folder.filePath(name).toStdString(); }

  QTemporaryDir folder;
};

TEST_F(file_dialog_answer, gives_a_name_that_does_not_exist_and_never_asks_to_replace) {
  make("viejo.hex");
  EXPECT_EQ(choose(false, folder.filePath("nuevo.hex")), in_folder("nuevo.hex"));
  EXPECT_EQ(choose(true, folder.filePath("otro")), in_folder("otro.hex"));
  EXPECT_EQ(choose(true, folder.filePath("viejo.hex")), in_folder("viejo.hex"));
}

TEST_F(file_dialog_answer, opens_the_file_named_in_full_before_one_with_the_extension) {
  for (const char* const name : {"LEEME", "leeme.hex", "dos.hex"}) make(name);
  EXPECT_EQ(choose(false, folder.filePath("LEEME")), in_folder("LEEME"));
  // The case of its letters does not matter, as in any other name.
  EXPECT_EQ(choose(false, folder.filePath("Leeme")), in_folder("Leeme"));
  EXPECT_EQ(choose(false, folder.filePath("leeme.hex")), in_folder("leeme.hex"));
  EXPECT_EQ(choose(false, folder.filePath("dos")), in_folder("dos.hex"));
  EXPECT_EQ(choose(false, folder.filePath("tres")), in_folder("tres.hex"));
  // A new file always gets its extension.
  EXPECT_EQ(choose(true, folder.filePath("LEEME")), in_folder("LEEME.hex"));
}

TEST_F(main_window_test, a_dialog_cancelled_gives_no_name) {
  std::string path = "algo";
  with_box([&] { path = host.choose_file(false, "Todos (*.*)|*.*", "hex", "/no/hay/tal.hex"); },
           [](QDialog& dialog) { dialog.reject(); });
  EXPECT_EQ(path, "");
}

}  // namespace
}  // namespace estructura
