// The window in real widgets: keys, entries and tips as Qt brings them.
#include <chrono>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>

#include "tests/support/handled_window.h"
#include "tests/support/hang.h"

namespace estructura {
namespace {

class keys_and_entries : public support::handled_window {};

TEST_F(keys_and_entries, the_current_program_line_stays_in_sight_when_the_window_becomes_lower) {
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

TEST_F(keys_and_entries, no_control_has_the_focus_at_the_start) {
  EXPECT_EQ(record.focused().which, id::none);
  EXPECT_EQ(QApplication::focusWidget(), at(id::Frame7).parentWidget());
}

TEST_F(keys_and_entries, the_tab_key_walks_the_controls_in_the_order_of_their_table) {
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

TEST_F(keys_and_entries, alt_and_a_letter_clicks) {
  load_endless_program();
  QTest::keyClick(&window, Qt::Key_1, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return record.chip().cycles > 0; }, support::hang_ms));
  EXPECT_EQ(record.chip().cycles, 3);
}

TEST_F(keys_and_entries, the_first_click_into_an_entry_keeps_it_selected_and_the_second_sets_the_caret) {
  click(id::FREC);
  EXPECT_EQ(at<QLineEdit>(id::FREC).selectedText(), "4000");
  click(id::FREC);
  EXPECT_EQ(at<QLineEdit>(id::FREC).selectedText(), "");
}

TEST_F(keys_and_entries, the_sleep_box_cannot_be_checked_by_hand) {
  click(id::estsleep);
  EXPECT_FALSE(at<QAbstractButton>(id::estsleep).isChecked());
}

TEST_F(keys_and_entries, typed_letters_reach_the_record_with_the_caret) {
  click(id::source);
  QTest::keyClicks(&at(id::source), "uno");
  QTest::keyClick(&at(id::source), Qt::Key_Return);
  QTest::keyClicks(&at(id::source), "dos");
  EXPECT_EQ(record.look(id::source).text(), "uno\r\ndos");
  EXPECT_EQ(record.look(id::source).sel_start(), 8);
}

TEST_F(keys_and_entries, what_an_editing_button_inserts_can_be_undone) {
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

TEST_F(keys_and_entries, a_line_of_entry_holds_what_the_record_holds_however_long) {
  const std::string text(40'000, 'A');
  record.type(id::INS, text);
  window.refresh();
  EXPECT_EQ(at<QLineEdit>(id::INS).text().toStdString(), text);
}

TEST_F(keys_and_entries, a_value_typed_and_entered_reaches_the_register) {
  click_row(id::RE, 0, 1);
  QTest::keyClicks(&at(id::dat), "a5");
  QTest::keyClick(&at(id::dat), Qt::Key_Return);
  EXPECT_EQ(record.chip().cpu.w, 0xA5);
  EXPECT_FALSE(at(id::dat).isEnabled());
}

TEST_F(keys_and_entries, a_tip_that_is_a_file_name_is_never_taken_for_marked_up_text) {
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

TEST_F(keys_and_entries, the_seven_file_buttons_and_no_others_bear_pictures) {
  QStringList pictured;
  for (const auto* button : window.findChildren<QAbstractButton*>())
    if (!button->icon().isNull()) pictured << button->objectName();
  pictured.sort();
  EXPECT_EQ(pictured, QStringList({"borrar", "borrarasm", "cargar", "cargarasm", "salvar", "salvar16c84",
                                   "salvarasm"}));
}

}  // namespace
}  // namespace estructura
