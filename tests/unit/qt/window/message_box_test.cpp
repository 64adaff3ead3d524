// Boxes and questions as Qt brings them.
#include <functional>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include "tests/support/handled_window.h"

namespace estructura {
namespace {

class boxes : public support::handled_window {};

TEST_F(boxes, a_question_of_two_buttons_is_not_closed_without_an_answer) {
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

TEST_F(boxes, a_question_of_three_buttons_is_cancelled_by_escape_and_by_its_close_button) {
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

TEST_F(boxes, an_enter_that_is_held_down_answers_no_question) {
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

TEST_F(boxes, escape_on_the_questions_of_closing_loses_nothing) {
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

TEST_F(boxes, questions_are_asked_in_spanish_in_a_fixed_order) {
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

TEST_F(boxes, the_watchdogs_box_is_aligned_right_and_has_no_icon) {
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

}  // namespace
}  // namespace estructura
