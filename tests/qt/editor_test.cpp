// The source editor: its history, its line numbers, the line with the error, its colours, and enormous texts.
#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <vector>

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <QToolTip>
#include <QWheelEvent>

#include "tests/qt/open_window.h"
#include "ui/qt/look/colours.h"
#include "ui/qt/widgets/source_editor.h"

namespace estructura {
namespace {

class editor : public editing_window {
 protected:
  void undo() { key_to_focus(Qt::Key_Z, Qt::ControlModifier); }
  void redo() { key_to_focus(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
  /// What widget and record show alike; the difference otherwise.
  std::string text_of_both() {
    const std::string shown = source_view().toPlainText().replace("\n", "\r\n").toStdString();
    return shown == source_text() ? shown : "widget: " + shown + " record: " + source_text();
  }
  void paint() {
    window.repaint();
    QCoreApplication::processEvents();
  }
  /// Lines that have been coloured, in sight or not.
  int coloured_lines() {
    int count = 0;
    for (QTextBlock line = source_view().document()->begin(); line.isValid(); line = line.next())
      count += static_cast<int>(!line.layout()->formats().empty());
    return count;
  }
  QList<QTextLayout::FormatRange> formats(int line) {
    paint();
    return source_view().document()->findBlockByNumber(line).layout()->formats();
  }
};

class editor_readings : public editor {
 protected:
  /// What is underlined on a line, as it is painted; several operands divided by a blank.
  std::string underlined(int line) {
    const QString text = source_view().document()->findBlockByNumber(line).text();
    QStringList found;
    paint();
    for (const auto& range : source_editor::underlined(source_view().document()->findBlockByNumber(line)))
      found << text.mid(range.start, range.length);
    return found.join(' ').toStdString();
  }
  void caret_at(int line, int column) {
    QTextCursor cursor(source_view().document()->findBlockByNumber(line));
    cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::MoveAnchor, column);
    source_view().setTextCursor(cursor);
    source_view().setFocus();
  }
  /// The tip that comes up under the mouse at a character, without its markup; empty when none does.
  std::string tip_under_mouse(int line, int column) {
    paint();
    QTextCursor cursor(source_view().document()->findBlockByNumber(line));
    cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::MoveAnchor, column);
    return tip_at_point(source_view().cursorRect(cursor).center() + QPoint(2, 0));
  }
  std::string tip_at_point(const QPoint& place) {
    return tip_after([&] {
      QWidget* const viewport = source_view().viewport();
      QHelpEvent event(QEvent::ToolTip, place, viewport->mapToGlobal(place));
      QCoreApplication::sendEvent(viewport, &event);
    });
  }
  std::string tip_by_key() {
    return tip_after([&] { key_to_focus(Qt::Key_F1); });
  }
  /// Another one is up before: a tip that is to go stays a while.
  std::string tip_after(const std::function<void()>& action) {
    const QString before = "before";
    QToolTip::showText(source_view().mapToGlobal(QPoint(5, 5)), before, &source_view());
    action();
    const QString shown = QToolTip::text();
    EXPECT_NE(shown, "");
    return shown == before ? "" : QString(shown).remove("<p>").remove("</p>").toStdString();
  }
  std::string description() { return source_view().accessibleDescription().toStdString(); }

  static constexpr const char* as_zero =
      "EQU lee solo las cifras hexadecimales del principio: se lee como 0.";
};

TEST_F(editor_readings, underline_what_is_read_as_something_else) {
  load_source("X EQU 0x10\nY: EQU H'08'\n ORG 0x100\n ADDWF X,F ; F\n BCF X,12\n MOVLW X\n");
  EXPECT_EQ(underlined(0), "0x10");
  EXPECT_EQ(underlined(1), "H'08'");
  EXPECT_EQ(underlined(2), "0x100");
  EXPECT_EQ(underlined(3), "F");
  EXPECT_EQ(underlined(4), "12");
  EXPECT_EQ(underlined(5), "");
}

TEST_F(editor_readings, draw_the_line_below_the_operand_alone) {
  load_source("X EQU 0x10\nX EQU 10\n");
  paint();
  const QImage shown = source_view().viewport()->grab().toImage();
  const auto marked = [&](int line, int from, int to) {
    QTextCursor start(source_view().document()->findBlockByNumber(line));
    start.movePosition(QTextCursor::NextCharacter, QTextCursor::MoveAnchor, from);
    QTextCursor end = start;
    end.movePosition(QTextCursor::NextCharacter, QTextCursor::MoveAnchor, to - from);
    const QRect place = source_view().cursorRect(start).united(source_view().cursorRect(end));
    const QColor colour = source_view().colours().underline;
    int pixels = 0;
    for (int y = place.top(); y <= place.bottom(); ++y)
      for (int x = place.left(); x <= place.right(); ++x) {
        const QColor pixel = shown.pixelColor(x, y);
        if (std::abs(pixel.hue() - colour.hue()) < 10 && pixel.saturation() > 100) ++pixels;
      }
    return pixels;
  };
  EXPECT_GT(marked(0, 6, 10), 10);
  EXPECT_EQ(marked(0, 0, 5), 0);
  EXPECT_EQ(marked(1, 6, 8), 0);
}

TEST_F(editor_readings, follow_the_names_of_the_whole_source) {
  load_source("ADDWF 5,F\nGOTO FIN\nMOVLW FF\n\n\n");
  // No name at all: digits are digits.
  EXPECT_EQ(underlined(0), "");
  EXPECT_EQ(underlined(1), "FIN");
  EXPECT_EQ(underlined(2), "");
  caret_at(4, 0);
  QTest::keyClicks(&source_view(), "FIN: NOP");
  EXPECT_EQ(underlined(0), "F");
  EXPECT_EQ(underlined(1), "");
  EXPECT_EQ(underlined(2), "FF");
  key_to_focus(Qt::Key_Return);
  QTest::keyClicks(&source_view(), "F EQU 1");
  EXPECT_EQ(underlined(0), "");
  // A line that goes takes its name with it, whole or joined to another, and undoing brings it back.
  caret_at(3, 0);
  key_to_focus(Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
  key_to_focus(Qt::Key_Delete);
  EXPECT_EQ(underlined(0), "");
  EXPECT_EQ(underlined(1), "FIN");
  EXPECT_EQ(underlined(2), "");
  undo();
  EXPECT_EQ(underlined(1), "");
  EXPECT_EQ(underlined(2), "FF");
  caret_at(3, 0);
  key_to_focus(Qt::Key_Delete);
  QTest::keyClicks(&source_view(), ";");
  EXPECT_EQ(underlined(1), "FIN");
  EXPECT_EQ(underlined(0), "") << "F is defined still";
}

TEST_F(editor_readings, follow_another_document) {
  load_source("F EQU 1\nADDWF 5,F\n");
  EXPECT_EQ(underlined(1), "");
  load_source("X EQU 1\nADDWF 5,F\n");
  EXPECT_EQ(underlined(1), "F");
  load_source("F: NOP\nADDWF 5,F\n");
  EXPECT_EQ(underlined(1), "");
  // The line end in front of a definition moves it to another line.
  caret_at(0, 0);
  key_to_focus(Qt::Key_Return);
  EXPECT_EQ(underlined(2), "");
  QTest::keyClicks(&source_view(), "F: ;");
  EXPECT_EQ(underlined(2), "");
}

TEST_F(editor_readings, tell_what_is_read_under_the_mouse) {
  load_source("X EQU 0x10\nRETLW X\n");
  EXPECT_EQ(tip_under_mouse(0, 6), as_zero);
  EXPECT_EQ(tip_under_mouse(0, 9), as_zero);
  EXPECT_EQ(tip_under_mouse(0, 1), "");
  EXPECT_EQ(tip_under_mouse(1, 6), "");
  // Beside the end of a line no operand stands.
  EXPECT_EQ(tip_at_point(QPoint(source_view().viewport()->width() - 5, 10)), "");
}

TEST_F(editor_readings, tell_what_is_read_at_the_caret_by_key_and_to_a_screen_reader) {
  const std::string plain = description();
  load_source("X EQU 0x10\nRETLW X\n");
  caret_at(0, 0);
  EXPECT_EQ(description(), plain);
  EXPECT_EQ(tip_by_key(), "");
  caret_at(0, 8);
  EXPECT_EQ(description(), plain + " " + as_zero);
  EXPECT_EQ(tip_by_key(), as_zero);
  // Another family of devices has the descriptions given anew.
  at<QWidget>(id::PIC).setFocus();
  record.pick(id::PIC, "12C508");
  window.refresh();
  source_view().setFocus();
  EXPECT_EQ(description(), plain + " " + as_zero);
  caret_at(1, 6);
  EXPECT_EQ(description(), plain);
  EXPECT_EQ(tip_by_key(), "");
  // Typing is a move of the caret too.
  caret_at(1, 7);
  QTest::keyClicks(&source_view(), "X");
  EXPECT_EQ(description(), plain + " No está definido: no se lee, y al ensamblar dará un error.");
  key_to_focus(Qt::Key_Backspace);
  EXPECT_EQ(description(), plain);
}

// --- history ---

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
  EXPECT_EQ(QApplication::focusWidget(), &source_view());
}

TEST_F(editor, typing_around_a_button_is_undone_apart_from_it) {
  write_file("ab");
  click(id::tab);
  QTest::keyClicks(&source_view(), "cd");
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
  source_view().setFocus();
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
  source_view().setFocus();
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
  source_view().setFocus();
  undo();
  EXPECT_EQ(text_of_both(), "SLEEP\r\n");
  EXPECT_TRUE(record.source().modified);
  redo();
  EXPECT_EQ(text_of_both(), disassembled);
}

TEST_F(editor, a_loaded_file_and_a_cleared_source_begin_a_history) {
  write_file("viejo");
  load_source("nuevo\r\n");
  EXPECT_EQ(text_of_both(), "nuevo");
  source_view().setFocus();
  undo();
  EXPECT_EQ(text_of_both(), "nuevo");
  EXPECT_FALSE(record.source().modified);
  QTest::keyClicks(&source_view(), "x");
  click(id::borrarasm);
  source_view().setFocus();
  undo();
  EXPECT_EQ(text_of_both(), "");
}

TEST_F(editor, a_text_emptied_by_hand_does_not_come_back_into_a_new_document) {
  load_source("viejo\r\n");
  source_view().setFocus();
  source_view().selectAll();
  key_to_focus(Qt::Key_Delete);
  click(id::borrarasm);
  source_view().setFocus();
  undo();
  EXPECT_EQ(text_of_both(), "");
}

TEST_F(editor, what_ctrl_c_copies_is_the_text_itself) {
  load_source(
      "NOP ; a\xE2\x80\xA8"
      "b\r\nNOP");
  source_view().selectAll();
  QTest::keyClick(&source_view(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "NOP ; a\u2028b\nNOP");
}

TEST_F(editor, ctrl_y_does_again_too) {
  write_file("a");
  undo();
  key_to_focus(Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(text_of_both(), "a");
}

TEST_F(editor, what_is_pasted_comes_into_sight) {
  QGuiApplication::clipboard()->setText(QStringLiteral("NOP\n").repeated(500));
  source_view().setFocus();
  click(id::Pegar);
  paint();
  EXPECT_TRUE(source_view().viewport()->rect().contains(source_view().cursorRect().center()));
}

// --- line numbers ---

TEST_F(editor, the_line_numbers_stand_beside_the_text_and_give_way_to_more_digits) {
  load_source("NOP\r\n");
  const int narrow = source_view().margin().width();
  EXPECT_GT(narrow, 0);
  EXPECT_EQ(source_view().margin().geometry().right() + 1, source_view().viewport()->geometry().left());
  EXPECT_EQ(source_view().margin().geometry().top(), source_view().viewport()->geometry().top());
  load_source(QByteArray("NOP\r\n").repeated(998) + "NOP");
  ASSERT_EQ(source_view().blockCount(), 999);
  EXPECT_EQ(source_view().margin().width(), narrow);
  load_source(QByteArray("NOP\r\n").repeated(999) + "NOP");
  EXPECT_GT(source_view().margin().width(), narrow);
  EXPECT_EQ(source_view().margin().geometry().right() + 1, source_view().viewport()->geometry().left());
}

TEST_F(editor, a_number_is_seen_for_each_line_that_there_is) {
  load_source("NOP\r\nNOP\r\nNOP");
  paint();
  const QImage picture = const_cast<QWidget&>(source_view().margin()).grab().toImage();
  const qreal scale = picture.devicePixelRatio();
  const int height = source_view().fontMetrics().height();
  const auto inked = [&](int line) {
    const int top = static_cast<int>((source_view().document()->documentMargin() + line * height) * scale);
    for (int y = top; y < top + height * scale; ++y)
      for (int x = 0; x < picture.width(); ++x)
        if (picture.pixel(x, y) != source_view().colours().margin_ground.rgb()) return true;
    return false;
  };
  for (int line = 0; line < 3; ++line) EXPECT_TRUE(inked(line)) << line;
  EXPECT_FALSE(inked(3));
}

// --- the line with the error ---

TEST_F(editor, the_line_with_the_error_is_marked_until_the_text_changes) {
  load_source("NOP\r\nNOP\r\nNOPE 1\r\nNOP");
  click(id::Ensamblar);
  EXPECT_EQ(host.boxes, 1);
  EXPECT_EQ(source_view().error_line(), 3);
  ASSERT_EQ(source_view().extraSelections().size(), 1);
  EXPECT_EQ(source_view().extraSelections()[0].cursor.blockNumber(), 2);
  EXPECT_EQ(source_view().textCursor().selectedText(), "NOPE 1");
  paint();
  const QImage margin = const_cast<QWidget&>(source_view().margin()).grab().toImage();
  const QRect line = source_view().cursorRect();
  EXPECT_EQ(margin.pixel(1, static_cast<int>(line.center().y() * margin.devicePixelRatio())),
            source_view().colours().error_number_ground.rgb());
  QTest::keyClicks(&source_view(), "N");
  EXPECT_EQ(source_view().error_line(), 0);
  EXPECT_TRUE(source_view().extraSelections().isEmpty());
  // The mark belongs to an assembly, not to a text.
  undo();
  EXPECT_EQ(text_of_both(), "NOP\r\nNOP\r\nNOPE 1\r\nNOP\r\n");
  EXPECT_EQ(source_view().error_line(), 0);
}

TEST_F(editor, an_error_far_away_comes_into_sight_with_the_beginning_of_its_line) {
  load_source(QByteArray("NOP\r\n").repeated(400) + "NOPE " + QByteArray("x").repeated(400) + "\r\nNOP");
  click(id::Ensamblar);
  paint();
  EXPECT_EQ(source_view().error_line(), 401);
  EXPECT_EQ(source_view().horizontalScrollBar()->value(), 0);
  QTextCursor start(source_view().document()->findBlockByNumber(400));
  EXPECT_TRUE(source_view().viewport()->rect().contains(source_view().cursorRect(start).center()));
}

TEST_F(editor, the_marked_line_is_in_sight_while_the_box_tells_of_the_error) {
  load_source(QByteArray("NOP\r\n").repeated(400) + "FOO\r\n" + QByteArray("NOP\r\n").repeated(400));
  bool seen = false;
  host.at_box = [&] {
    window.refresh();
    const QTextCursor line(source_view().document()->findBlockByNumber(400));
    seen = source_view().viewport()->rect().contains(source_view().cursorRect(line).center());
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
  load_source(QByteArray("NOP\r\n").repeated(400) + "FOO\r\n");
  for (int time = 0; time < 2; ++time) {
    source_view().verticalScrollBar()->setValue(0);
    click(id::Ensamblar);
    EXPECT_TRUE(source_view().viewport()->rect().contains(source_view().cursorRect().center())) << time;
  }
}

TEST_F(editor, an_assembly_without_error_takes_the_mark_away) {
  record.pick(id::PIC, "16C54");
  load_source("ORG 200\r\nNOP\r\n ");
  click(id::Ensamblar);
  ASSERT_EQ(source_view().error_line(), 2);
  record.pick(id::PIC, "16C57");
  click(id::Ensamblar);
  EXPECT_EQ(source_view().error_line(), 0);
}

// --- colours ---

TEST_F(editor, what_is_seen_is_coloured_and_follows_what_is_typed) {
  load_source("A: MOVLW 10 ; c\r\nNO");
  const source_colours& colours = source_view().colours();
  const auto first = formats(0);
  ASSERT_EQ(first.size(), 4);
  EXPECT_EQ(first[0].format.foreground().color(), colours.of(source_part::label));
  EXPECT_EQ(first[1].format.foreground().color(), colours.of(source_part::mnemonic));
  EXPECT_EQ(first[2].format.foreground().color(), colours.of(source_part::number));
  EXPECT_EQ(first[3].format.foreground().color(), colours.of(source_part::comment));
  EXPECT_TRUE(formats(1).isEmpty());
  source_view().setFocus();
  source_view().moveCursor(QTextCursor::End);
  QTest::keyClicks(&source_view(), "P");
  EXPECT_EQ(formats(1).size(), 1);
  key_to_focus(Qt::Key_Backspace);
  EXPECT_TRUE(formats(1).isEmpty());
}

TEST_F(editor, colours_are_no_change_of_the_text) {
  load_source("NOP ; uno\r\nMOVLW 10");
  paint();
  EXPECT_FALSE(record.source().modified);
  EXPECT_FALSE(source_view().document()->isUndoAvailable());
  EXPECT_EQ(record.look(id::source).sel_start(), 0);
}

TEST_F(editor, lines_out_of_sight_wait_until_they_are_seen) {
  load_source(QByteArray("NOP\r\n").repeated(5000) + "NOP");
  EXPECT_EQ(formats(0).size(), 1);
  EXPECT_TRUE(formats(4000).isEmpty());
  source_view().verticalScrollBar()->setValue(4000);
  EXPECT_EQ(formats(4000).size(), 1);
}

TEST_F(editor, another_palette_colours_anew) {
  load_source("NOP");
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
  load_source("MOVLW 10");
  ASSERT_EQ(formats(0).size(), 2);
  source_view().setFocus();
  source_view().moveCursor(QTextCursor::End);
  QTextCharFormat underlined;
  underlined.setFontUnderline(true);
  QInputMethodEvent composing(QStringLiteral("´"), {{QInputMethodEvent::TextFormat, 0, 1,
                                                     QVariant::fromValue<QTextFormat>(underlined)}});
  QApplication::sendEvent(&source_view(), &composing);
  const auto meanwhile = formats(0);
  ASSERT_EQ(meanwhile.size(), 1);
  EXPECT_TRUE(meanwhile[0].format.fontUnderline());
  QInputMethodEvent given_up;
  QApplication::sendEvent(&source_view(), &given_up);
  EXPECT_EQ(formats(0).size(), 2);
  EXPECT_EQ(text_of_both(), "MOVLW 10");
}

// --- enormous texts ---

constexpr int megabyte = 1'000'000;

QByteArray many_lines(int length) {
  QByteArray text;
  for (int i = 0; text.size() < length; ++i)
    text += "L" + QByteArray::number(i) + ":\tMOVLW\t" + QByteArray::number(i % 100) + "\t; algo\r\n";
  return text;
}

TEST_F(editor, a_megabyte_is_loaded_typed_in_and_assembled) {
  const QByteArray text = many_lines(megabyte);
  load_source(text);
  paint();
  QTextCursor middle = source_view().textCursor();
  middle.setPosition(static_cast<int>(text.size() / 2));
  source_view().setTextCursor(middle);
  source_view().setFocus();
  paint();
  for (int i = 0; i < 10; ++i) {
    QTest::keyClick(&source_view(), Qt::Key_A);
    paint();
  }
  EXPECT_EQ(source_text().size(), static_cast<std::size_t>(text.size()) - 2 + 10);
  for (int i = 0; i < 10; ++i) undo();
  EXPECT_EQ(source_text() + "\r\n", text.toStdString());
  // A name that begins with L and a number is no wrong one, so only the end of the memory stops it.
  click(id::Ensamblar);
  paint();
  EXPECT_EQ(source_view().error_line(), 2049);
}

// What is done to a text when it is shown and when a key is pressed does not grow with the text: the lines in
// sight get their colours, and one character changes.
TEST_F(editor, only_what_is_seen_and_typed_is_worked_out_whatever_the_length) {
  for (const int length : {megabyte / 2, megabyte}) {
    load_source(many_lines(length));
    paint();
    EXPECT_GT(source_view().blockCount(), length / 40);
    const int in_sight = source_view().viewport()->height() / source_view().fontMetrics().height() + 2;
    EXPECT_GT(coloured_lines(), in_sight / 2) << length;
    EXPECT_LE(coloured_lines(), in_sight) << length;

    source_view().setFocus();
    source_view().moveCursor(QTextCursor::Down);
    std::vector<std::array<int, 2>> changes;
    const auto counts = QObject::connect(source_view().document(), &QTextDocument::contentsChange,
                                         &source_view(), [&](int, int removed, int added) {
                                           changes.push_back({removed, added});
                                         });
    QTest::keyClick(&source_view(), Qt::Key_A);
    paint();
    QObject::disconnect(counts);
    EXPECT_EQ(changes, (std::vector<std::array<int, 2>>{{0, 1}})) << length;
    EXPECT_LE(coloured_lines(), in_sight) << length;
  }
}

TEST_F(editor, a_line_of_a_million_characters_can_be_loaded_and_typed_in) {
  const QByteArray line = QByteArray("MOVLW 10 ").repeated(megabyte / 9);
  load_source(line);
  paint();
  source_view().setFocus();
  QTest::keyClick(&source_view(), Qt::Key_A);
  paint();
  EXPECT_EQ(source_text(), "a" + line.toStdString());
  click(id::Ensamblar);
  paint();
  EXPECT_EQ(source_view().error_line(), 1);
}

}  // namespace
}  // namespace estructura
