// The source editor: its history, its line numbers, the line with the error, its colours, and enormous texts.
#include "ui/qt/widgets/source_editor.h"

#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <vector>

#include <QApplication>
#include <QInputMethodEvent>
#include <QTextBlock>
#include <QTextLayout>
#include <QWheelEvent>

#include "tests/unit/qt/widgets/editor_window.h"
#include "ui/qt/look/colours.h"

namespace estructura {
namespace {

class editor : public support::editor_window {};

constexpr int megabyte = 1'000'000;

QByteArray many_lines(int length) {
  QByteArray text;
  for (int i = 0; text.size() < length; ++i)
    text += "L" + QByteArray::number(i) + ":\tMOVLW\t" + QByteArray::number(i % 100) + "\t; algo\r\n";
  return text;
}

TEST_F(editor, each_editing_button_is_undone_and_done_again_as_one_step) {
  write_file("ab");
  QGuiApplication::clipboard()->setText("cd\nef");
  click(id::Pegar);
  click(id::tab);
  EXPECT_EQ(text_of_both(), "abcd\r\nef" + std::string(15, ' '));
  undo();
  EXPECT_EQ(text_of_both(), "abcd\r\nef");
  undo();
  EXPECT_EQ(text_of_both(), "ab");
  redo();
  redo();
  EXPECT_EQ(text_of_both(), "abcd\r\nef" + std::string(15, ' '));
  EXPECT_EQ(QApplication::focusWidget(), &source_box());
}

TEST_F(editor, typing_around_a_button_is_undone_apart_from_it) {
  write_file("ab");
  click(id::tab);
  QTest::keyClicks(&source_box(), "cd");
  undo();
  EXPECT_EQ(text_of_both(), "ab" + std::string(15, ' '));
  undo();
  EXPECT_EQ(text_of_both(), "ab");
  undo();
  EXPECT_EQ(text_of_both(), "");
}

TEST_F(editor, a_cut_is_undone) {
  write_file("abcdef");
  record.select(id::source, 2, 3);
  window.refresh();
  click(id::Cortar);
  EXPECT_EQ(text_of_both(), "abf");
  undo();
  EXPECT_EQ(text_of_both(), "abcdef");
}

TEST_F(editor, undoing_a_tab_among_blanks_leaves_the_caret_where_it_was) {
  write_file("a          b");
  record.select(id::source, 4, 0);
  window.refresh();
  click(id::tab);
  EXPECT_EQ(record.look(id::source).sel_start(), 19);
  undo();
  EXPECT_EQ(text_of_both(), "a          b");
  EXPECT_EQ(record.look(id::source).sel_start(), 4);
}

TEST_F(editor, the_line_end_that_assembling_adds_keeps_the_history) {
  write_file("NOP");
  click(id::Ensamblar);
  EXPECT_EQ(text_of_both(), "NOP\r\n");
  source_box().setFocus();
  undo();
  EXPECT_EQ(text_of_both(), "NOP");
  undo();
  EXPECT_EQ(text_of_both(), "");
}

TEST_F(editor, undoing_tells_the_document_that_it_was_changed) {
  write_file("uno");
  host.file = folder.filePath("uno.asm").toStdString();
  click(id::salvarasm);
  ASSERT_FALSE(record.source().modified);
  source_box().setFocus();
  undo();
  EXPECT_EQ(text_of_both(), "");
  redo();
  EXPECT_EQ(text_of_both(), "uno");
  EXPECT_TRUE(record.source().modified);
}

TEST_F(editor, disassembling_is_undone_as_one_step_of_the_same_document) {
  write_file("SLEEP");
  click(id::Ensamblar);
  click(id::desensamblar);
  const std::string disassembled = text_of_both();
  ASSERT_NE(disassembled, "SLEEP\r\n");
  EXPECT_EQ(record.look(id::source).sel_start(), 0);
  source_box().setFocus();
  undo();
  EXPECT_EQ(text_of_both(), "SLEEP\r\n");
  EXPECT_TRUE(record.source().modified);
  redo();
  EXPECT_EQ(text_of_both(), disassembled);
}

TEST_F(editor, a_loaded_file_and_a_cleared_source_begin_a_history) {
  write_file("viejo");
  load("nuevo\r\n");
  EXPECT_EQ(text_of_both(), "nuevo");
  source_box().setFocus();
  undo();
  EXPECT_EQ(text_of_both(), "nuevo");
  EXPECT_FALSE(record.source().modified);
  QTest::keyClicks(&source_box(), "x");
  click(id::borrarasm);
  source_box().setFocus();
  undo();
  EXPECT_EQ(text_of_both(), "");
}

TEST_F(editor, a_text_emptied_by_hand_does_not_come_back_into_a_new_document) {
  load("viejo\r\n");
  source_box().setFocus();
  source_box().selectAll();
  key(Qt::Key_Delete);
  click(id::borrarasm);
  source_box().setFocus();
  undo();
  EXPECT_EQ(text_of_both(), "");
}

TEST_F(editor, what_ctrl_c_copies_is_the_text_itself) {
  load(
      "NOP ; a\xE2\x80\xA8"
      "b\r\nNOP");
  source_box().selectAll();
  QTest::keyClick(&source_box(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "NOP ; a\u2028b\nNOP");
}

TEST_F(editor, ctrl_y_does_again_too) {
  write_file("a");
  undo();
  key(Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(text_of_both(), "a");
}

TEST_F(editor, what_is_pasted_comes_into_sight) {
  QGuiApplication::clipboard()->setText(QStringLiteral("NOP\n").repeated(500));
  source_box().setFocus();
  click(id::Pegar);
  paint();
  EXPECT_TRUE(source_box().viewport()->rect().contains(source_box().cursorRect().center()));
}

TEST_F(editor, the_line_numbers_stand_beside_the_text_and_give_way_to_more_digits) {
  load("NOP\r\n");
  const int narrow = source_box().margin().width();
  EXPECT_GT(narrow, 0);
  EXPECT_EQ(source_box().margin().geometry().right() + 1, source_box().viewport()->geometry().left());
  EXPECT_EQ(source_box().margin().geometry().top(), source_box().viewport()->geometry().top());
  load(QByteArray("NOP\r\n").repeated(998) + "NOP");
  ASSERT_EQ(source_box().blockCount(), 999);
  EXPECT_EQ(source_box().margin().width(), narrow);
  load(QByteArray("NOP\r\n").repeated(999) + "NOP");
  EXPECT_GT(source_box().margin().width(), narrow);
  EXPECT_EQ(source_box().margin().geometry().right() + 1, source_box().viewport()->geometry().left());
}

TEST_F(editor, a_number_is_seen_for_each_line_that_there_is) {
  load("NOP\r\nNOP\r\nNOP");
  paint();
  const QImage picture = const_cast<QWidget&>(source_box().margin()).grab().toImage();
  const qreal scale = picture.devicePixelRatio();
  const int height = source_box().fontMetrics().height();
  const auto inked = [&](int line) {
    const int top = static_cast<int>((source_box().document()->documentMargin() + line * height) * scale);
    for (int y = top; y < top + height * scale; ++y)
      for (int x = 0; x < picture.width(); ++x)
        if (picture.pixel(x, y) != source_box().colours().margin_ground.rgb()) return true;
    return false;
  };
  for (int line = 0; line < 3; ++line) EXPECT_TRUE(inked(line)) << line;
  EXPECT_FALSE(inked(3));
}

TEST_F(editor, the_line_with_the_error_is_marked_until_the_text_changes) {
  load("NOP\r\nNOP\r\nNOPE 1\r\nNOP");
  click(id::Ensamblar);
  EXPECT_EQ(host.boxes, 1);
  EXPECT_EQ(source_box().error_line(), 3);
  ASSERT_EQ(source_box().extraSelections().size(), 1);
  EXPECT_EQ(source_box().extraSelections()[0].cursor.blockNumber(), 2);
  EXPECT_EQ(source_box().textCursor().selectedText(), "NOPE 1");
  paint();
  const QImage margin = const_cast<QWidget&>(source_box().margin()).grab().toImage();
  const QRect line = source_box().cursorRect();
  EXPECT_EQ(margin.pixel(1, static_cast<int>(line.center().y() * margin.devicePixelRatio())),
            source_box().colours().error_number_ground.rgb());
  QTest::keyClicks(&source_box(), "N");
  EXPECT_EQ(source_box().error_line(), 0);
  EXPECT_TRUE(source_box().extraSelections().isEmpty());
  // The mark belongs to an assembly, not to a text.
  undo();
  EXPECT_EQ(text_of_both(), "NOP\r\nNOP\r\nNOPE 1\r\nNOP\r\n");
  EXPECT_EQ(source_box().error_line(), 0);
}

TEST_F(editor, an_error_far_away_comes_into_sight_with_the_beginning_of_its_line) {
  load(QByteArray("NOP\r\n").repeated(400) + "NOPE " + QByteArray("x").repeated(400) + "\r\nNOP");
  click(id::Ensamblar);
  paint();
  EXPECT_EQ(source_box().error_line(), 401);
  EXPECT_EQ(source_box().horizontalScrollBar()->value(), 0);
  QTextCursor start(source_box().document()->findBlockByNumber(400));
  EXPECT_TRUE(source_box().viewport()->rect().contains(source_box().cursorRect(start).center()));
}

TEST_F(editor, the_marked_line_is_in_sight_while_the_box_tells_of_the_error) {
  load(QByteArray("NOP\r\n").repeated(400) + "FOO\r\n" + QByteArray("NOP\r\n").repeated(400));
  bool seen = false;
  host.at_box = [&] {
    window.refresh();
    const QTextCursor line(source_box().document()->findBlockByNumber(400));
    seen = source_box().viewport()->rect().contains(source_box().cursorRect(line).center());
  };
  click(id::Ensamblar);
  EXPECT_TRUE(seen);
}

TEST_F(editor, the_wheel_with_ctrl_leaves_the_letters_of_the_listing) {
  write_file("NOP");
  click(id::Ensamblar);
  click(id::sl, 1);
  auto& listing = at<QPlainTextEdit>(id::lst);
  const QFont before = listing.font();
  const QPointF place = listing.viewport()->rect().center();
  QWheelEvent wheel(place, listing.viewport()->mapToGlobal(place), {}, {0, 120}, Qt::NoButton,
                    Qt::ControlModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(listing.viewport(), &wheel);
  EXPECT_EQ(listing.font(), before);
}

TEST_F(editor, the_same_error_again_comes_into_sight_again) {
  load(QByteArray("NOP\r\n").repeated(400) + "FOO\r\n");
  for (int time = 0; time < 2; ++time) {
    source_box().verticalScrollBar()->setValue(0);
    click(id::Ensamblar);
    EXPECT_TRUE(source_box().viewport()->rect().contains(source_box().cursorRect().center())) << time;
  }
}

TEST_F(editor, an_assembly_without_error_takes_the_mark_away) {
  record.pick(id::PIC, "16C54");
  load("ORG 200\r\nNOP\r\n ");
  click(id::Ensamblar);
  ASSERT_EQ(source_box().error_line(), 2);
  record.pick(id::PIC, "16C57");
  click(id::Ensamblar);
  EXPECT_EQ(source_box().error_line(), 0);
}

TEST_F(editor, what_is_seen_is_coloured_and_follows_what_is_typed) {
  load("A: MOVLW 10 ; c\r\nNO");
  const source_colours& colours = source_box().colours();
  const auto first = formats(0);
  ASSERT_EQ(first.size(), 4);
  EXPECT_EQ(first[0].format.foreground().color(), colours.of(source_part::label));
  EXPECT_EQ(first[1].format.foreground().color(), colours.of(source_part::mnemonic));
  EXPECT_EQ(first[2].format.foreground().color(), colours.of(source_part::number));
  EXPECT_EQ(first[3].format.foreground().color(), colours.of(source_part::comment));
  EXPECT_TRUE(formats(1).isEmpty());
  source_box().setFocus();
  source_box().moveCursor(QTextCursor::End);
  QTest::keyClicks(&source_box(), "P");
  EXPECT_EQ(formats(1).size(), 1);
  key(Qt::Key_Backspace);
  EXPECT_TRUE(formats(1).isEmpty());
}

TEST_F(editor, colours_are_no_change_of_the_text) {
  load("NOP ; uno\r\nMOVLW 10");
  paint();
  EXPECT_FALSE(record.source().modified);
  EXPECT_FALSE(source_box().document()->isUndoAvailable());
  EXPECT_EQ(record.look(id::source).sel_start(), 0);
}

TEST_F(editor, lines_out_of_sight_wait_until_they_are_seen) {
  load(QByteArray("NOP\r\n").repeated(5000) + "NOP");
  EXPECT_EQ(formats(0).size(), 1);
  EXPECT_TRUE(formats(4000).isEmpty());
  source_box().verticalScrollBar()->setValue(4000);
  EXPECT_EQ(formats(4000).size(), 1);
}

TEST_F(editor, another_palette_colours_anew) {
  load("NOP");
  const QColor light = formats(0)[0].format.foreground().color();
  QPalette dark = window.palette();
  dark.setColor(QPalette::Base, Qt::black);
  dark.setColor(QPalette::Text, Qt::white);
  window.setPalette(dark);
  const QColor other = formats(0)[0].format.foreground().color();
  EXPECT_NE(other, light);
  EXPECT_GE(contrast(other, Qt::black), least_contrast);
}

TEST_F(editor, colours_give_way_to_an_input_method_that_composes_and_come_back) {
  load("MOVLW 10");
  ASSERT_EQ(formats(0).size(), 2);
  source_box().setFocus();
  source_box().moveCursor(QTextCursor::End);
  QTextCharFormat underlined;
  underlined.setFontUnderline(true);
  QInputMethodEvent composing(QStringLiteral("´"), {{QInputMethodEvent::TextFormat, 0, 1,
                                                     QVariant::fromValue<QTextFormat>(underlined)}});
  QApplication::sendEvent(&source_box(), &composing);
  const auto meanwhile = formats(0);
  ASSERT_EQ(meanwhile.size(), 1);
  EXPECT_TRUE(meanwhile[0].format.fontUnderline());
  QInputMethodEvent given_up;
  QApplication::sendEvent(&source_box(), &given_up);
  EXPECT_EQ(formats(0).size(), 2);
  EXPECT_EQ(text_of_both(), "MOVLW 10");
}

TEST_F(editor, a_megabyte_is_loaded_typed_in_and_assembled) {
  const QByteArray text = many_lines(megabyte);
  load(text);
  paint();
  QTextCursor middle = source_box().textCursor();
  middle.setPosition(static_cast<int>(text.size() / 2));
  source_box().setTextCursor(middle);
  source_box().setFocus();
  paint();
  for (int i = 0; i < 10; ++i) {
    QTest::keyClick(&source_box(), Qt::Key_A);
    paint();
  }
  EXPECT_EQ(record_text().size(), static_cast<std::size_t>(text.size()) - 2 + 10);
  for (int i = 0; i < 10; ++i) undo();
  EXPECT_EQ(record_text() + "\r\n", text.toStdString());
  // A name that begins with L and a number is no wrong one, so only the end of the memory stops it.
  click(id::Ensamblar);
  paint();
  EXPECT_EQ(source_box().error_line(), 2049);
}

// What is done to a text when it is shown and when a key is pressed does not grow with the text: the lines in
// sight get their colours, and one character changes.
TEST_F(editor, only_what_is_seen_and_typed_is_worked_out_whatever_the_length) {
  for (const int length : {megabyte / 2, megabyte}) {
    load(many_lines(length));
    paint();
    EXPECT_GT(source_box().blockCount(), length / 40);
    const int in_sight = source_box().viewport()->height() / source_box().fontMetrics().height() + 2;
    EXPECT_GT(coloured_lines(), in_sight / 2) << length;
    EXPECT_LE(coloured_lines(), in_sight) << length;

    source_box().setFocus();
    source_box().moveCursor(QTextCursor::Down);
    std::vector<std::array<int, 2>> changes;
    const auto counts = QObject::connect(source_box().document(), &QTextDocument::contentsChange,
                                         &source_box(), [&](int, int removed, int added) {
                                           changes.push_back({removed, added});
                                         });
    QTest::keyClick(&source_box(), Qt::Key_A);
    paint();
    QObject::disconnect(counts);
    EXPECT_EQ(changes, (std::vector<std::array<int, 2>>{{0, 1}})) << length;
    EXPECT_LE(coloured_lines(), in_sight) << length;
  }
}

TEST_F(editor, a_line_of_a_million_characters_can_be_loaded_and_typed_in) {
  const QByteArray line = QByteArray("MOVLW 10 ").repeated(megabyte / 9);
  load(line);
  paint();
  source_box().setFocus();
  QTest::keyClick(&source_box(), Qt::Key_A);
  paint();
  EXPECT_EQ(record_text(), "a" + line.toStdString());
  click(id::Ensamblar);
  paint();
  EXPECT_EQ(source_box().error_line(), 1);
}

}  // namespace
}  // namespace estructura
