// What the person sees of the last action.
#include "ui/qt/window/change_marks.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QListView>
#include <QTest>
#include <QTimer>

#include "tests/support/shown_window.h"
#include "ui/qt/widgets/list_view.h"

namespace estructura {
namespace {

class marks : public support::shown_window {};

TEST(changed_characters, the_characters_at_which_texts_differ) {
  EXPECT_EQ(difference("00011000", "00011000"), 0U);
  EXPECT_EQ(difference("00011000", "00011101"), 0b00000101U);
  EXPECT_EQ(difference("10000000", "00000000"), 0b10000000U);
  EXPECT_EQ(difference("99", "100"), 0b111U);
  EXPECT_EQ(difference("12", ""), 0U);
}

TEST_F(marks, at_the_start_nothing_is_marked) {
  EXPECT_EQ(lines(id::RE), 0U);
  EXPECT_EQ(lines(id::MDP), 0U);
  EXPECT_EQ(characters(id::STATUS), 0U);
  EXPECT_EQ(characters(id::ciclos), 0U);
}

TEST_F(marks, a_step_marks_the_lines_bits_and_digits_that_it_changed) {
  program({0xC55, 0x028, 0xE00});  // MOVLW 55; MOVWF 08; ANDLW 00
  click(id::eje1);
  EXPECT_EQ(lines(id::RE), 0b11U);     // PC and W
  EXPECT_EQ(lines(id::MDP), 1U << 2);  // PCL
  EXPECT_EQ(characters(id::STATUS), 0U);
  EXPECT_NE(characters(id::ciclos), 0U);
  click(id::eje1);
  EXPECT_EQ(lines(id::RE), 0b01U);
  EXPECT_EQ(lines(id::MDP), 1U << 2 | 1U << 8);
  EXPECT_EQ(characters(id::ciclos), 0b1U);
  click(id::eje1);
  EXPECT_EQ(lines(id::RE), 0b11U);
  // Z is bit 2 of STATUS, the register at 03.
  EXPECT_EQ(lines(id::MDP), 1U << 2 | 1U << 3);
  EXPECT_EQ(characters(id::STATUS), 1U << 2);
}

TEST_F(marks, banked_memory_the_stack_and_indirect_data_are_marked) {
  program({0xC33, 0x024, 0x020, 0x910});  // MOVLW 33; MOVWF FSR; MOVWF INDF; CALL 10
  click(id::eje1);
  click(id::eje1);
  EXPECT_EQ(characters(id::PAGFSR), 0b1U);
  EXPECT_EQ(characters(id::DIRFSR), 0b11U);
  click(id::eje1);
  EXPECT_EQ(lines(id::MD, 1), 1U << 3);
  EXPECT_EQ(lines(id::MD, 0), 0U);
  EXPECT_EQ(characters(id::INDF), 0b11U);
  click(id::eje1);
  EXPECT_EQ(lines(id::MD, 1), 0U);
  EXPECT_EQ(lines(id::PIL), 0b01U);
}

TEST_F(marks, a_value_entered_by_hand_is_marked_and_so_is_a_reset) {
  auto& list = at<QListView>(id::RE);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(1, 0)).center());
  QTest::keyClicks(&at(id::dat), "a5");
  QTest::keyClick(&at(id::dat), Qt::Key_Return);
  EXPECT_EQ(lines(id::RE), 0b10U);
  program({0, 0});
  click(id::eje1);
  click(id::MCLR);
  EXPECT_EQ(lines(id::RE), 0b01U);
  click(id::por);
  EXPECT_EQ(lines(id::RE), 0b10U);
}

TEST_F(marks, what_changes_no_view_of_the_machine_leaves_the_marks) {
  program({0xC55});
  click(id::eje1);
  click(id::sl, 1);
  click(id::sl, 0);
  record.type(id::INS, "NOP");
  window.refresh();
  auto& list = at<QListView>(id::MP);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(1, 0)).center());
  EXPECT_EQ(lines(id::RE), 0b11U);
}

TEST_F(marks, marks_change_neither_texts_nor_backgrounds) {
  program({0xC55, 0x028});
  click(id::eje1);
  click(id::eje1);
  ASSERT_NE(lines(id::MDP), 0U);
  EXPECT_EQ(at<QListView>(id::MDP).model()->index(8, 0).data().toString(), "55");
  EXPECT_EQ(at<QLabel>(id::ciclos).text().toStdString(), record.look(id::ciclos).text());
  EXPECT_EQ(at<QListView>(id::MD, 0).viewport()->backgroundRole(), QPalette::Base);
  EXPECT_EQ(at<QListView>(id::MD, 1).viewport()->backgroundRole(), QPalette::Window);
}

TEST_F(marks, a_marked_line_is_painted_on_another_ground_with_a_bar_and_in_bold) {
  program({0xC55, 0x028});
  click(id::eje1);
  auto& list = at<list_view>(id::MDP);
  const QRect row = list.visualRect(list.model()->index(8, 0));
  const QImage before = list.viewport()->grab(row).toImage();
  click(id::eje1);
  ASSERT_EQ(lines(id::MDP) >> 8 & 1U, 1U);
  const QImage marked = list.viewport()->grab(row).toImage();
  list.set_changes(0);
  const QImage plain = list.viewport()->grab(row).toImage();
  // The same text either way: it is the mark that differs, at the edge and in the middle.
  const int middle = row.height() / 2;
  EXPECT_NE(marked.pixel(0, middle), plain.pixel(0, middle));
  EXPECT_NE(marked.pixel(row.width() - 4, 1), plain.pixel(row.width() - 4, 1));
  EXPECT_NE(before, marked);
}

TEST_F(marks, another_device_is_no_change_of_the_program) {
  program({0xC55});
  click(id::eje1);
  click(id::por);
  choose_device("12C508");
  for (const id list : {id::RE, id::MDP, id::PIL}) EXPECT_EQ(lines(list), 0U);
  EXPECT_EQ(characters(id::TRISB), 0U);
}

TEST_F(marks, during_a_run_nothing_is_marked_and_afterwards_all_that_the_run_changed) {
  program({0xC55, 0x2A8, 0xA01});  // MOVLW 55; INCF 08; GOTO 001
  click(id::eje1);
  ASSERT_NE(lines(id::RE), 0U);
  bool looked = false;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
    if (record.chip().cycles < 200000 || looked) return;
    looked = true;
    EXPECT_EQ(lines(id::RE), 0U);
    EXPECT_EQ(lines(id::MDP), 0U);
    EXPECT_EQ(characters(id::ciclos), 0U);
    // What is done meanwhile marks nothing either.
    click(id::PB, 0);
    EXPECT_EQ(lines(id::MDP), 0U);
    // Ends with 08 as it was not, and W as it was.
    while (record.chip().regs[8] == 0) QCoreApplication::processEvents();
    click(id::ejecutar);
  });
  poll.start(1);
  click(id::ejecutar);
  poll.stop();
  ASSERT_TRUE(looked);
  EXPECT_EQ(lines(id::MDP) >> 8 & 1U, record.chip().regs[8] != 0 ? 1U : 0U);
  EXPECT_EQ(lines(id::RE) & 0b10U, 0U);
  EXPECT_NE(characters(id::ciclos), 0U);
}

}  // namespace
}  // namespace estructura
