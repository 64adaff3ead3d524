// Everything by keyboard: the order of the Tab key, arrow keys, and what otherwise takes a mouse.
#include <algorithm>
#include <vector>

#include <QAbstractItemView>
#include <QComboBox>
#include <QListView>

#include "tests/accessibility/open_window.h"

namespace estructura {
namespace {

class shortcuts : public accessible_window {
 protected:
  static void key(Qt::Key which, Qt::KeyboardModifiers with = {}) {
    QTest::keyClick(QApplication::focusWidget(), which, with);
  }
  static QWidget* focus() { return QApplication::focusWidget(); }
};

TEST_F(shortcuts, the_tab_key_goes_the_same_way_back) {
  std::vector<QWidget*> there;
  key(Qt::Key_Tab);
  QWidget* const first = focus();
  do {
    there.push_back(focus());
    key(Qt::Key_Tab);
  } while (focus() != first && there.size() < 200);
  EXPECT_GT(there.size(), 50U);
  for (auto expected = there.rbegin(); expected != there.rend(); ++expected) {
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focus(), *expected) << focus()->objectName().toStdString() << " instead of "
                                  << (*expected)->objectName().toStdString();
  }
}

TEST_F(shortcuts, the_tab_key_goes_as_the_eye_does) {
  QRect before;
  std::string left;
  for (int walked = 0; walked < 200; ++walked) {
    key(Qt::Key_Tab);
    if (walked > 0 && focus() == &at(id::sl, 0)) return;
    const QRect now(focus()->mapTo(&window, QPoint()), focus()->size());
    const std::string name = focus()->objectName().toStdString();
    // To the right, or down; to the left only on the way down.
    const bool onwards = walked == 0 || now.left() > before.right() || now.top() > before.bottom();
    EXPECT_TRUE(onwards) << left << " to " << name;
    before = now;
    left = name;
  }
  ADD_FAILURE() << "the Tab key does not come round";
}

TEST_F(shortcuts, the_arrow_keys_walk_the_boxes_of_a_port_as_they_stand) {
  at(id::PB, 3).setFocus(Qt::TabFocusReason);
  key(Qt::Key_Right);
  EXPECT_EQ(focus(), &at(id::PB, 2));
  key(Qt::Key_Left);
  key(Qt::Key_Left);
  EXPECT_EQ(focus(), &at(id::PB, 4));
}

TEST_F(shortcuts, the_arrow_keys_choose_between_source_and_listing) {
  at(id::sl, 0).setFocus(Qt::TabFocusReason);
  key(Qt::Key_Right);
  EXPECT_TRUE(record.look(id::lst).visible());
  EXPECT_TRUE(record.look(id::sl, 1).value());
  EXPECT_EQ(focus(), &at(id::sl, 1));
  key(Qt::Key_Left);
  EXPECT_TRUE(record.look(id::source).visible());
  EXPECT_EQ(focus(), &at(id::sl, 0));
}

TEST_F(shortcuts, space_turns_a_pin_over) {
  at(id::PB, 3).setFocus(Qt::TabFocusReason);
  key(Qt::Key_Space);
  EXPECT_EQ(record.chip().pinb, 8);
}

TEST_F(shortcuts, enter_and_space_press_a_button) {
  record.poke().progmem[0] = 0x000;  // NOP
  record.poke().progmem[1] = 0x000;
  record.poke().cpu.pc = 0;
  record.refresh();
  at(id::eje1).setFocus(Qt::TabFocusReason);
  key(Qt::Key_Return);
  EXPECT_EQ(record.chip().cpu.pc, 1);
  key(Qt::Key_Space);
  EXPECT_EQ(record.chip().cpu.pc, 2);
}

TEST_F(shortcuts, control_and_0_reset_the_counter_of_cycles_from_anywhere) {
  for (const id place : {id::source, id::MP, id::FREC, id::eje1}) {
    record.poke().cycles = 1000;
    record.refresh();
    window.refresh();
    at(place).setFocus(Qt::TabFocusReason);
    key(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(record.chip().cycles, 0) << declared(place).name;
    EXPECT_EQ(record.look(id::ciclos).text(), "0");
    EXPECT_EQ(focus(), &at(place));
  }
  EXPECT_EQ(record.look(id::source).text(), "");
}

TEST_F(shortcuts, the_arrow_keys_click_each_line_of_the_program) {
  record.type(id::direc, "100");
  window.refresh();
  at(id::MP).setFocus(Qt::TabFocusReason);
  key(Qt::Key_Down);
  EXPECT_EQ(record.look(id::direc).text(), "101");
  key(Qt::Key_Home);
  EXPECT_EQ(record.look(id::direc).text(), "000");
  key(Qt::Key_End);
  EXPECT_EQ(record.look(id::direc).text(), "7FF");
}

TEST_F(shortcuts, enter_on_a_line_of_the_program_takes_its_instruction_to_be_edited) {
  record.poke().progmem[0x10] = 0xC05;  // MOVLW 05
  record.type(id::direc, "010");
  window.refresh();
  at(id::MP).setFocus(Qt::TabFocusReason);
  key(Qt::Key_Return);
  EXPECT_EQ(record.look(id::INS).text(), "MOVLW 05");
}

TEST_F(shortcuts, control_and_space_add_a_line_of_the_program_to_those_selected) {
  record.type(id::direc, "100");
  window.refresh();
  at(id::MP).setFocus(Qt::TabFocusReason);
  key(Qt::Key_Down, Qt::ControlModifier);
  key(Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(record.look(id::MP).selected(), std::vector<int>({0x100}));
  key(Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(record.look(id::MP).selected(), std::vector<int>({0x100, 0x102}));
  EXPECT_EQ(record.look(id::direc).text(), "102");
  key(Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(record.look(id::MP).selected(), std::vector<int>({0x100}));
}

TEST_F(shortcuts, shift_and_the_arrow_keys_select_a_run_of_lines) {
  record.type(id::direc, "100");
  window.refresh();
  at(id::MP).setFocus(Qt::TabFocusReason);
  key(Qt::Key_Down, Qt::ShiftModifier);
  key(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(record.look(id::MP).selected(), std::vector<int>({0x100, 0x101, 0x102}));
  // With several lines the button of the breakpoint only beeps.
  at(id::break_).setFocus(Qt::TabFocusReason);
  key(Qt::Key_Space);
  EXPECT_EQ(record.chip().breakpts[0x102], 0);
}

TEST_F(shortcuts, an_address_typed_does_what_a_press_on_the_map_does) {
  record.press_map(0x155);
  const int pressed = record.look(id::MP).row();
  record.press_map(0);
  window.refresh();
  at(id::direc).setFocus(Qt::TabFocusReason);
  QTest::keyClicks(focus(), "155");
  EXPECT_EQ(pressed, 0x155);
  EXPECT_EQ(record.look(id::MP).row(), 0x155);
}

TEST_F(shortcuts, a_walk_through_the_listing_follows_in_the_program) {
  record.type(id::source, " ORG 20\r\n NOP\r\n CLRW\r\n END\r\n");
  record.click(id::Ensamblar);
  record.click(id::sl, 1);
  window.refresh();
  at(id::lst).setFocus(Qt::TabFocusReason);
  std::vector<int> rows;
  for (int line = 0; line < 10; ++line) {
    if (record.look(id::MP).row() != (rows.empty() ? -1 : rows.back()))
      rows.push_back(record.look(id::MP).row());
    key(Qt::Key_Down);
  }
  EXPECT_NE(std::find(rows.begin(), rows.end(), 0x20), rows.end());
  EXPECT_NE(std::find(rows.begin(), rows.end(), 0x21), rows.end());
}

// Another device forgets that documents are unsaved: an arrow key alone does not choose it.
TEST_F(shortcuts, the_arrow_keys_open_the_list_of_devices_and_enter_chooses) {
  auto& combo = at<QComboBox>(id::PIC);
  for (const Qt::Key opens : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Home,
                              Qt::Key_End, Qt::Key_Space, Qt::Key_F4}) {
    combo.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&combo, opens);
    EXPECT_TRUE(combo.view()->isVisible()) << opens;
    QTest::keyClick(combo.view(), Qt::Key_Escape);
    EXPECT_EQ(record.look(id::PIC).text(), "16C57");
  }
  QTest::keyClick(&combo, Qt::Key_1);
  EXPECT_EQ(record.look(id::PIC).text(), "16C57");
  QTest::keyClick(&combo, Qt::Key_Down);
  QTest::keyClick(combo.view(), Qt::Key_Down);
  EXPECT_EQ(record.look(id::PIC).text(), "16C57");
  QTest::keyClick(combo.view(), Qt::Key_Return);
  const catalogue_row& next = catalogue[default_device + 1];
  EXPECT_EQ(record.look(id::PIC).text(), next.name);
  EXPECT_EQ(record.chip().devmodel, next.model);
}

}  // namespace
}  // namespace estructura
