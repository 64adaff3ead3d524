// The keyboard: function keys as clicks on their buttons that leave the focus alone, mnemonics, arrow keys
// and Enter in lists.
#include "ui/qt/window/shortcuts.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QTimer>

#include "tests/support/silent_window.h"

namespace estructura {
namespace {

class shortcuts : public silent_window {
 protected:
  void SetUp() override {
    chipstate& chip = record.poke();
    chip.progmem[0] = 0xA00;  // GOTO 0
    chip.progmem[2047] = 0xA00;
  }
  void key_to_window(Qt::Key key) { QTest::keyClick(&window, key); }
  /// Presses a key again and again at moments of a run, and does something at the first.
  void during_run(const std::function<void()>& action) {
    auto* const poll = new QTimer(&window);
    QObject::connect(poll, &QTimer::timeout, &window, [this, poll, action] {
      if (!record.chip().running || record.chip().cycles < 1000) return;
      poll->stop();
      action();
    });
    poll->start(1);
  }
};

TEST_F(shortcuts, f7_and_f8_execute_one_instruction_and_leave_the_focus) {
  for (const Qt::Key key : {Qt::Key_F7, Qt::Key_F8}) {
    source_box().setFocus();
    const auto before = record.chip().cycles;
    key_to_window(key);
    EXPECT_GT(record.chip().cycles, before);
    EXPECT_EQ(record.focused(), (control_place{id::source, 0}));
    EXPECT_EQ(QApplication::focusWidget(), &source_box());
  }
}

// Breakpoints can be set line after line.
TEST_F(shortcuts, f9_leaves_the_program_list_to_the_arrow_keys) {
  at(id::MP).setFocus(Qt::TabFocusReason);
  key(Qt::Key_Home);
  for (int line = 0; line < 3; ++line) {
    key_to_window(Qt::Key_F9);
    key(Qt::Key_Down);
  }
  EXPECT_EQ(record.look(id::MP).row(), 3);
  for (int line = 0; line < 3; ++line) EXPECT_EQ(record.chip().breakpts[line], 1) << line;
}

// What a step closes must not leave the focus on the button that ends the program.
TEST_F(shortcuts, enter_after_f7_in_the_frequency_does_not_end_the_program) {
  for (const id where : {id::FREC, id::PIC}) {
    click(id::por);
    at(where).setFocus(Qt::TabFocusReason);
    ASSERT_EQ(QApplication::focusWidget(), &at(where));
    key_to_window(Qt::Key_F7);
    EXPECT_EQ(record.focused(), (control_place{id::eje1, 0}));
    EXPECT_EQ(QApplication::focusWidget(), &at(id::eje1));
    key(Qt::Key_Return);
    EXPECT_FALSE(record.ended());
  }
}

TEST_F(shortcuts, enter_after_f7_on_the_entry_button_erases_nothing) {
  record.type(id::direc, "000");
  record.type(id::INS, "NOP");
  window.refresh();
  at(id::Entrarins).setFocus(Qt::TabFocusReason);
  ASSERT_EQ(QApplication::focusWidget(), &at(id::Entrarins));
  key_to_window(Qt::Key_F7);
  key(Qt::Key_Return);
  EXPECT_EQ(record.chip().progmem[0], 0xA00);
  EXPECT_EQ(QApplication::focusWidget(), &at(id::INS));
}

TEST_F(shortcuts, a_value_that_is_being_typed_survives_a_step) {
  record.click_row(id::RE, 0, 1);
  window.refresh();
  at<QLineEdit>(id::dat).setText("5");
  key(Qt::Key_F8);
  EXPECT_EQ(record.focused(), (control_place{id::dat, 0}));
  key(Qt::Key_A);
  key(Qt::Key_Return);
  EXPECT_EQ(record.chip().cpu.w, 0x5A);
}

TEST_F(shortcuts, f5_runs_and_stops) {
  during_run([this] {
    EXPECT_EQ(at<QAbstractButton>(id::ejecutar).text(), "&Parar");
    EXPECT_EQ(record.focused(), control_place{});
    key_to_window(Qt::Key_F5);
  });
  key_to_window(Qt::Key_F5);
  EXPECT_FALSE(record.chip().running);
  EXPECT_GE(record.chip().cycles, 1000);
  EXPECT_EQ(at<QAbstractButton>(id::ejecutar).text(), "Ejecu&tar");
}

TEST_F(shortcuts, f7_and_f8_do_nothing_during_a_run) {
  during_run([this] {
    EXPECT_FALSE(at(id::eje1).isEnabled());
    const auto before = record.chip().cycles;
    key_to_window(Qt::Key_F7);
    key_to_window(Qt::Key_F8);
    EXPECT_EQ(record.chip().cycles, before);
    key_to_window(Qt::Key_F5);
  });
  key_to_window(Qt::Key_F5);
  EXPECT_FALSE(record.chip().running);
}

TEST_F(shortcuts, a_held_f5_stays_one_press_and_a_held_f8_many) {
  const auto held = [this](Qt::Key key) {
    QTest::simulateEvent(&window, true, key, {}, QString(), true, -1);
  };
  key_to_window(Qt::Key_F8);
  const auto once = record.chip().cycles;
  held(Qt::Key_F8);
  EXPECT_GT(record.chip().cycles, once);
  bool went_on = false;
  during_run([&] {
    held(Qt::Key_F5);
    went_on = record.chip().running;
    click(id::ejecutar);
  });
  key_to_window(Qt::Key_F5);
  EXPECT_TRUE(went_on);
  EXPECT_FALSE(record.chip().running);
}

// Nor does Enter held down on a button press it again, but for those that are pressed many times.
TEST_F(shortcuts, a_held_enter_presses_a_button_once_and_the_step_button_many_times) {
  const auto held = [this](id where) {
    at(where).setFocus(Qt::TabFocusReason);
    for (int times = 0; times < 3; ++times)
      QTest::simulateEvent(&at(where), true, Qt::Key_Return, {}, QString(), true, -1);
  };
  held(id::eje1);
  EXPECT_EQ(record.chip().cycles, 7);  // the first step of a reset counts one more
  held(id::break_);
  EXPECT_EQ(record.chip().breakpts, chipstate{}.breakpts);
  bool went_on = false;
  during_run([&] {
    held(id::ejecutar);
    went_on = record.chip().running;
    key_to_window(Qt::Key_F5);
  });
  key_to_window(Qt::Key_F5);
  EXPECT_TRUE(went_on);
}

TEST_F(shortcuts, f9_sets_and_takes_the_breakpoint_of_the_address_in_direc) {
  record.type(id::direc, "00A");
  window.refresh();
  key_to_window(Qt::Key_F9);
  EXPECT_EQ(record.chip().breakpts[10], 1);
  EXPECT_EQ(record.focused(), (control_place{id::direc, 0}));
  key_to_window(Qt::Key_F9);
  EXPECT_EQ(record.chip().breakpts[10], 0);
}

TEST_F(shortcuts, f9_does_nothing_without_an_address) {
  record.type(id::direc, "7");
  window.refresh();
  ASSERT_FALSE(at(id::break_).isEnabled());
  key_to_window(Qt::Key_F9);
  EXPECT_EQ(record.chip().breakpts, chipstate{}.breakpts);
  EXPECT_EQ(record.focused(), (control_place{id::direc, 0}));
}

TEST_F(shortcuts, the_function_keys_work_while_a_text_is_edited) {
  write_file("NOP");
  key(Qt::Key_F8);
  EXPECT_GT(record.chip().cycles, 0);
  EXPECT_EQ(record_text(), "NOP");
}

TEST_F(shortcuts, no_tip_tells_of_the_function_keys) {
  EXPECT_EQ(at(id::eje1).toolTip(), "Ejecjutar una instrucción");
  EXPECT_EQ(at(id::ejecutar).toolTip(), "Ejecutar de forma continua");
  EXPECT_EQ(at(id::break_).toolTip(), "Borrar posición de memoria");
}

// --- mnemonics ---

TEST_F(shortcuts, the_letter_behind_an_ampersand_and_alt_press_the_button_and_no_other) {
  std::map<QString, QString> owners;
  for (const control& one : record.look_all()) {
    const QString caption = QString::fromStdString(one.text());
    const qsizetype mark = caption.indexOf('&');
    if (one.is() != kind::button || mark < 0) continue;
    const QKeySequence wanted("Alt+" + caption.mid(mark + 1, 1).toUpper());
    EXPECT_EQ(at<QAbstractButton>(one.which()).shortcut(), wanted) << one.name();
    const QString key = wanted.toString(QKeySequence::PortableText);
    EXPECT_EQ(owners[key], QString()) << one.name();
    owners[key] = QString::fromStdString(one.name());
  }
  EXPECT_EQ(owners.size(), 15U);
}

// --- lists ---

TEST_F(shortcuts, arrow_keys_click_each_line_of_the_program_list_and_enter_reads_it) {
  record.poke().progmem[1] = 0xC10;  // MOVLW 10
  at(id::MP).setFocus(Qt::TabFocusReason);
  key(Qt::Key_Home);
  EXPECT_EQ(record.look(id::direc).text(), "000");
  key(Qt::Key_Down);
  EXPECT_EQ(record.look(id::direc).text(), "001");
  EXPECT_EQ(record.look(id::INS).text(), "");
  key(Qt::Key_Return);
  EXPECT_EQ(record.look(id::INS).text(), "MOVLW 10");
}

TEST_F(shortcuts, enter_chooses_the_line_of_a_register_list) {
  at(id::RE).setFocus(Qt::TabFocusReason);
  key(Qt::Key_Home);
  key(Qt::Key_Down);
  key(Qt::Key_Return);
  EXPECT_EQ(record.look(id::dirdat).text(), "W");
  EXPECT_EQ(QApplication::focusWidget(), &at(id::dat));
}

TEST_F(shortcuts, arrow_keys_in_the_listing_go_to_the_address_of_its_line) {
  write_file("NOP");
  key(Qt::Key_Return);
  write_file("SLEEP");
  click(id::Ensamblar);
  click(id::sl, 1);
  at(id::lst).setFocus(Qt::TabFocusReason);
  for (int line = 0; line < 4; ++line) key(Qt::Key_Down);
  EXPECT_EQ(record.look(id::MP).row(), 1);
  EXPECT_EQ(record.look(id::INS).text(), "SLEEP");
}

/// The listing of two words, with the caret on the line of the second.
class in_the_listing : public shortcuts {
 protected:
  in_the_listing() {
    write_file("NOP");
    key(Qt::Key_Return);
    write_file("SLEEP");
    click(id::Ensamblar);
    click(id::sl, 1);
    lst().setFocus(Qt::TabFocusReason);
    for (int line = 0; line < 4; ++line) key(Qt::Key_Down);
    record.press_map(100);
    window.refresh();
  }
  QPlainTextEdit& lst() { return at<QPlainTextEdit>(id::lst); }
  void release_key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::simulateEvent(&lst(), false, key, modifiers, QString(), false, -1);
  }
  void press_key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::simulateEvent(&lst(), true, key, modifiers, QString(), false, -1);
  }
};

TEST_F(in_the_listing, ctrl_a_and_ctrl_c_copy_it_whichever_key_is_released_first) {
  for (const bool ctrl_first : {false, true}) {
    QGuiApplication::clipboard()->setText("antes");
    QTextCursor none = lst().textCursor();
    none.clearSelection();
    lst().setTextCursor(none);
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_C}) {
      press_key(Qt::Key_Control, Qt::ControlModifier);
      press_key(key, Qt::ControlModifier);
      if (ctrl_first) release_key(Qt::Key_Control);
      release_key(key, ctrl_first ? Qt::NoModifier : Qt::ControlModifier);
      if (!ctrl_first) release_key(Qt::Key_Control);
    }
    EXPECT_EQ(QGuiApplication::clipboard()->text(), lst().toPlainText());
    EXPECT_GT(lst().toPlainText().size(), 20);
    EXPECT_EQ(record.look(id::MP).row(), 100);
  }
}

TEST_F(in_the_listing, keys_that_are_commands_are_no_key_of_it) {
  for (const Qt::Key key : {Qt::Key_F9, Qt::Key_F1, Qt::Key_F12, Qt::Key_Control, Qt::Key_Shift, Qt::Key_Alt,
                            Qt::Key_AltGr, Qt::Key_Meta, Qt::Key_CapsLock}) {
    press_key(key);
    release_key(key);
    EXPECT_EQ(record.look(id::MP).row(), 100) << key;
  }
  // A shortcut takes the press, and the release comes here.
  press_key(Qt::Key_0, Qt::ControlModifier);
  release_key(Qt::Key_0);
  EXPECT_EQ(record.look(id::MP).row(), 100);
  // Pressed elsewhere, before the focus came here.
  release_key(Qt::Key_F7);
  release_key(Qt::Key_Control);
  release_key(Qt::Key_B, Qt::ControlModifier);
  EXPECT_EQ(record.look(id::MP).row(), 100);
  // The arrow keys are, and so is the same key without Ctrl.
  press_key(Qt::Key_0);
  release_key(Qt::Key_0);
  EXPECT_EQ(record.look(id::MP).row(), 1);
  record.press_map(100);
  window.refresh();
  key(Qt::Key_Down);
  key(Qt::Key_Up);
  EXPECT_EQ(record.look(id::MP).row(), 1);
}

}  // namespace
}  // namespace estructura
