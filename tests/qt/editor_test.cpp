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

class editor : public ventana_de_prueba {
 protected:
  void undo() { tecla(Qt::Key_Z, Qt::ControlModifier); }
  void redo() { tecla(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
  /// What widget and record show alike; the difference otherwise.
  std::string texto_de_ambos() {
    const std::string shown = fuente().toPlainText().replace("\n", "\r\n").toStdString();
    return shown == texto() ? shown : "widget: " + shown + " record: " + texto();
  }
  void paint() {
    window.repaint();
    QCoreApplication::processEvents();
  }
  /// Lines that have been coloured, in sight or not.
  int coloured_lines() {
    int count = 0;
    for (QTextBlock line = fuente().document()->begin(); line.isValid(); line = line.next())
      count += static_cast<int>(!line.layout()->formats().empty());
    return count;
  }
  QList<QTextLayout::FormatRange> formats(int line) {
    paint();
    return fuente().document()->findBlockByNumber(line).layout()->formats();
  }
};

class editor_readings : public editor {
 protected:
  /// What is underlined on a line, as it is painted; several operands divided by a blank.
  std::string underlined(int line) {
    const QString text = fuente().document()->findBlockByNumber(line).text();
    QStringList found;
    paint();
    for (const auto& range : source_editor::underlined(fuente().document()->findBlockByNumber(line)))
      found << text.mid(range.start, range.length);
    return found.join(' ').toStdString();
  }
  void caret_at(int line, int column) {
    QTextCursor cursor(fuente().document()->findBlockByNumber(line));
    cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::MoveAnchor, column);
    fuente().setTextCursor(cursor);
    fuente().setFocus();
  }
  /// The tip that comes up under the mouse at a character, without its markup; empty when none does.
  std::string tip_under_mouse(int line, int column) {
    paint();
    QTextCursor cursor(fuente().document()->findBlockByNumber(line));
    cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::MoveAnchor, column);
    return tip_at_point(fuente().cursorRect(cursor).center() + QPoint(2, 0));
  }
  std::string tip_at_point(const QPoint& place) {
    return tip_after([&] {
      QWidget* const viewport = fuente().viewport();
      QHelpEvent event(QEvent::ToolTip, place, viewport->mapToGlobal(place));
      QCoreApplication::sendEvent(viewport, &event);
    });
  }
  std::string tip_by_key() {
    return tip_after([&] { tecla(Qt::Key_F1); });
  }
  /// Another one is up before: a tip that is to go stays a while.
  std::string tip_after(const std::function<void()>& action) {
    const QString before = "before";
    QToolTip::showText(fuente().mapToGlobal(QPoint(5, 5)), before, &fuente());
    action();
    const QString shown = QToolTip::text();
    EXPECT_NE(shown, "");
    return shown == before ? "" : QString(shown).remove("<p>").remove("</p>").toStdString();
  }
  std::string description() { return fuente().accessibleDescription().toStdString(); }

  static constexpr const char* as_zero =
      "EQU lee solo las cifras hexadecimales del principio: se lee como 0.";
};

TEST_F(editor_readings, underline_what_is_read_as_something_else) {
  carga("X EQU 0x10\nY: EQU H'08'\n ORG 0x100\n ADDWF X,F ; F\n BCF X,12\n MOVLW X\n");
  EXPECT_EQ(underlined(0), "0x10");
  EXPECT_EQ(underlined(1), "H'08'");
  EXPECT_EQ(underlined(2), "0x100");
  EXPECT_EQ(underlined(3), "F");
  EXPECT_EQ(underlined(4), "12");
  EXPECT_EQ(underlined(5), "");
}

TEST_F(editor_readings, draw_the_line_below_the_operand_alone) {
  carga("X EQU 0x10\nX EQU 10\n");
  paint();
  const QImage shown = fuente().viewport()->grab().toImage();
  const auto marked = [&](int line, int from, int to) {
    QTextCursor start(fuente().document()->findBlockByNumber(line));
    start.movePosition(QTextCursor::NextCharacter, QTextCursor::MoveAnchor, from);
    QTextCursor end = start;
    end.movePosition(QTextCursor::NextCharacter, QTextCursor::MoveAnchor, to - from);
    const QRect place = fuente().cursorRect(start).united(fuente().cursorRect(end));
    const QColor colour = fuente().colours().underline;
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
  carga("ADDWF 5,F\nGOTO FIN\nMOVLW FF\n\n\n");
  // No name at all: digits are digits.
  EXPECT_EQ(underlined(0), "");
  EXPECT_EQ(underlined(1), "FIN");
  EXPECT_EQ(underlined(2), "");
  caret_at(4, 0);
  QTest::keyClicks(&fuente(), "FIN: NOP");
  EXPECT_EQ(underlined(0), "F");
  EXPECT_EQ(underlined(1), "");
  EXPECT_EQ(underlined(2), "FF");
  tecla(Qt::Key_Return);
  QTest::keyClicks(&fuente(), "F EQU 1");
  EXPECT_EQ(underlined(0), "");
  // A line that goes takes its name with it, whole or joined to another, and undoing brings it back.
  caret_at(3, 0);
  tecla(Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
  tecla(Qt::Key_Delete);
  EXPECT_EQ(underlined(0), "");
  EXPECT_EQ(underlined(1), "FIN");
  EXPECT_EQ(underlined(2), "");
  undo();
  EXPECT_EQ(underlined(1), "");
  EXPECT_EQ(underlined(2), "FF");
  caret_at(3, 0);
  tecla(Qt::Key_Delete);
  QTest::keyClicks(&fuente(), ";");
  EXPECT_EQ(underlined(1), "FIN");
  EXPECT_EQ(underlined(0), "") << "F is defined still";
}

TEST_F(editor_readings, follow_another_document) {
  carga("F EQU 1\nADDWF 5,F\n");
  EXPECT_EQ(underlined(1), "");
  carga("X EQU 1\nADDWF 5,F\n");
  EXPECT_EQ(underlined(1), "F");
  carga("F: NOP\nADDWF 5,F\n");
  EXPECT_EQ(underlined(1), "");
  // The line end in front of a definition moves it to another line.
  caret_at(0, 0);
  tecla(Qt::Key_Return);
  EXPECT_EQ(underlined(2), "");
  QTest::keyClicks(&fuente(), "F: ;");
  EXPECT_EQ(underlined(2), "");
}

TEST_F(editor_readings, tell_what_is_read_under_the_mouse) {
  carga("X EQU 0x10\nRETLW X\n");
  EXPECT_EQ(tip_under_mouse(0, 6), as_zero);
  EXPECT_EQ(tip_under_mouse(0, 9), as_zero);
  EXPECT_EQ(tip_under_mouse(0, 1), "");
  EXPECT_EQ(tip_under_mouse(1, 6), "");
  // Beside the end of a line no operand stands.
  EXPECT_EQ(tip_at_point(QPoint(fuente().viewport()->width() - 5, 10)), "");
}

TEST_F(editor_readings, tell_what_is_read_at_the_caret_by_key_and_to_a_screen_reader) {
  const std::string plain = description();
  carga("X EQU 0x10\nRETLW X\n");
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
  fuente().setFocus();
  EXPECT_EQ(description(), plain + " " + as_zero);
  caret_at(1, 6);
  EXPECT_EQ(description(), plain);
  EXPECT_EQ(tip_by_key(), "");
  // Typing is a move of the caret too.
  caret_at(1, 7);
  QTest::keyClicks(&fuente(), "X");
  EXPECT_EQ(description(), plain + " No está definido: no se lee, y al ensamblar dará un error.");
  tecla(Qt::Key_Backspace);
  EXPECT_EQ(description(), plain);
}

// --- history ---

TEST_F(editor, each_editing_button_is_undone_and_done_again_as_one_step) {
  write_file("ab");
  QGuiApplication::clipboard()->setText("cd\nef");
  click(id::Pegar);
  click(id::tab);
  EXPECT_EQ(texto_de_ambos(), "abcd\r\nef" + std::string(15, ' '));
  undo();
  EXPECT_EQ(texto_de_ambos(), "abcd\r\nef");
  undo();
  EXPECT_EQ(texto_de_ambos(), "ab");
  redo();
  redo();
  EXPECT_EQ(texto_de_ambos(), "abcd\r\nef" + std::string(15, ' '));
  EXPECT_EQ(QApplication::focusWidget(), &fuente());
}

TEST_F(editor, typing_around_a_button_is_undone_apart_from_it) {
  write_file("ab");
  click(id::tab);
  QTest::keyClicks(&fuente(), "cd");
  undo();
  EXPECT_EQ(texto_de_ambos(), "ab" + std::string(15, ' '));
  undo();
  EXPECT_EQ(texto_de_ambos(), "ab");
  undo();
  EXPECT_EQ(texto_de_ambos(), "");
}

TEST_F(editor, a_cut_is_undone) {
  write_file("abcdef");
  record.select(id::source, 2, 3);
  window.refresh();
  click(id::Cortar);
  EXPECT_EQ(texto_de_ambos(), "abf");
  undo();
  EXPECT_EQ(texto_de_ambos(), "abcdef");
}

TEST_F(editor, undoing_a_tab_among_blanks_leaves_the_caret_where_it_was) {
  write_file("a          b");
  record.select(id::source, 4, 0);
  window.refresh();
  click(id::tab);
  EXPECT_EQ(record.look(id::source).sel_start(), 19);
  undo();
  EXPECT_EQ(texto_de_ambos(), "a          b");
  EXPECT_EQ(record.look(id::source).sel_start(), 4);
}

TEST_F(editor, the_line_end_that_assembling_adds_keeps_the_history) {
  write_file("NOP");
  click(id::Ensamblar);
  EXPECT_EQ(texto_de_ambos(), "NOP\r\n");
  fuente().setFocus();
  undo();
  EXPECT_EQ(texto_de_ambos(), "NOP");
  undo();
  EXPECT_EQ(texto_de_ambos(), "");
}

TEST_F(editor, undoing_tells_the_document_that_it_was_changed) {
  write_file("uno");
  host.file = folder.filePath("uno.asm").toStdString();
  click(id::salvarasm);
  ASSERT_FALSE(record.source().modified);
  fuente().setFocus();
  undo();
  EXPECT_EQ(texto_de_ambos(), "");
  redo();
  EXPECT_EQ(texto_de_ambos(), "uno");
  EXPECT_TRUE(record.source().modified);
}

TEST_F(editor, disassembling_is_undone_as_one_step_of_the_same_document) {
  write_file("SLEEP");
  click(id::Ensamblar);
  click(id::desensamblar);
  const std::string disassembled = texto_de_ambos();
  ASSERT_NE(disassembled, "SLEEP\r\n");
  EXPECT_EQ(record.look(id::source).sel_start(), 0);
  fuente().setFocus();
  undo();
  EXPECT_EQ(texto_de_ambos(), "SLEEP\r\n");
  EXPECT_TRUE(record.source().modified);
  redo();
  EXPECT_EQ(texto_de_ambos(), disassembled);
}

TEST_F(editor, a_loaded_file_and_a_cleared_source_begin_a_history) {
  write_file("viejo");
  carga("nuevo\r\n");
  EXPECT_EQ(texto_de_ambos(), "nuevo");
  fuente().setFocus();
  undo();
  EXPECT_EQ(texto_de_ambos(), "nuevo");
  EXPECT_FALSE(record.source().modified);
  QTest::keyClicks(&fuente(), "x");
  click(id::borrarasm);
  fuente().setFocus();
  undo();
  EXPECT_EQ(texto_de_ambos(), "");
}

TEST_F(editor, a_text_emptied_by_hand_does_not_come_back_into_a_new_document) {
  carga("viejo\r\n");
  fuente().setFocus();
  fuente().selectAll();
  tecla(Qt::Key_Delete);
  click(id::borrarasm);
  fuente().setFocus();
  undo();
  EXPECT_EQ(texto_de_ambos(), "");
}

TEST_F(editor, what_ctrl_c_copies_is_the_text_itself) {
  carga(
      "NOP ; a\xE2\x80\xA8"
      "b\r\nNOP");
  fuente().selectAll();
  QTest::keyClick(&fuente(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "NOP ; a\u2028b\nNOP");
}

TEST_F(editor, ctrl_y_does_again_too) {
  write_file("a");
  undo();
  tecla(Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(texto_de_ambos(), "a");
}

TEST_F(editor, what_is_pasted_comes_into_sight) {
  QGuiApplication::clipboard()->setText(QStringLiteral("NOP\n").repeated(500));
  fuente().setFocus();
  click(id::Pegar);
  paint();
  EXPECT_TRUE(fuente().viewport()->rect().contains(fuente().cursorRect().center()));
}

// --- line numbers ---

TEST_F(editor, the_line_numbers_stand_beside_the_text_and_give_way_to_more_digits) {
  carga("NOP\r\n");
  const int narrow = fuente().margin().width();
  EXPECT_GT(narrow, 0);
  EXPECT_EQ(fuente().margin().geometry().right() + 1, fuente().viewport()->geometry().left());
  EXPECT_EQ(fuente().margin().geometry().top(), fuente().viewport()->geometry().top());
  carga(QByteArray("NOP\r\n").repeated(998) + "NOP");
  ASSERT_EQ(fuente().blockCount(), 999);
  EXPECT_EQ(fuente().margin().width(), narrow);
  carga(QByteArray("NOP\r\n").repeated(999) + "NOP");
  EXPECT_GT(fuente().margin().width(), narrow);
  EXPECT_EQ(fuente().margin().geometry().right() + 1, fuente().viewport()->geometry().left());
}

TEST_F(editor, a_number_is_seen_for_each_line_that_there_is) {
  carga("NOP\r\nNOP\r\nNOP");
  paint();
  const QImage picture = const_cast<QWidget&>(fuente().margin()).grab().toImage();
  const qreal scale = picture.devicePixelRatio();
  const int height = fuente().fontMetrics().height();
  const auto inked = [&](int line) {
    const int top = static_cast<int>((fuente().document()->documentMargin() + line * height) * scale);
    for (int y = top; y < top + height * scale; ++y)
      for (int x = 0; x < picture.width(); ++x)
        if (picture.pixel(x, y) != fuente().colours().margin_ground.rgb()) return true;
    return false;
  };
  for (int line = 0; line < 3; ++line) EXPECT_TRUE(inked(line)) << line;
  EXPECT_FALSE(inked(3));
}

// --- the line with the error ---

TEST_F(editor, the_line_with_the_error_is_marked_until_the_text_changes) {
  carga("NOP\r\nNOP\r\nNOPE 1\r\nNOP");
  click(id::Ensamblar);
  EXPECT_EQ(host.boxes, 1);
  EXPECT_EQ(fuente().error_line(), 3);
  ASSERT_EQ(fuente().extraSelections().size(), 1);
  EXPECT_EQ(fuente().extraSelections()[0].cursor.blockNumber(), 2);
  EXPECT_EQ(fuente().textCursor().selectedText(), "NOPE 1");
  paint();
  const QImage margin = const_cast<QWidget&>(fuente().margin()).grab().toImage();
  const QRect line = fuente().cursorRect();
  EXPECT_EQ(margin.pixel(1, static_cast<int>(line.center().y() * margin.devicePixelRatio())),
            fuente().colours().error_number_ground.rgb());
  QTest::keyClicks(&fuente(), "N");
  EXPECT_EQ(fuente().error_line(), 0);
  EXPECT_TRUE(fuente().extraSelections().isEmpty());
  // The mark belongs to an assembly, not to a text.
  undo();
  EXPECT_EQ(texto_de_ambos(), "NOP\r\nNOP\r\nNOPE 1\r\nNOP\r\n");
  EXPECT_EQ(fuente().error_line(), 0);
}

TEST_F(editor, an_error_far_away_comes_into_sight_with_the_beginning_of_its_line) {
  carga(QByteArray("NOP\r\n").repeated(400) + "NOPE " + QByteArray("x").repeated(400) + "\r\nNOP");
  click(id::Ensamblar);
  paint();
  EXPECT_EQ(fuente().error_line(), 401);
  EXPECT_EQ(fuente().horizontalScrollBar()->value(), 0);
  QTextCursor start(fuente().document()->findBlockByNumber(400));
  EXPECT_TRUE(fuente().viewport()->rect().contains(fuente().cursorRect(start).center()));
}

TEST_F(editor, the_marked_line_is_in_sight_while_the_box_tells_of_the_error) {
  carga(QByteArray("NOP\r\n").repeated(400) + "FOO\r\n" + QByteArray("NOP\r\n").repeated(400));
  bool seen = false;
  host.at_box = [&] {
    window.refresh();
    const QTextCursor line(fuente().document()->findBlockByNumber(400));
    seen = fuente().viewport()->rect().contains(fuente().cursorRect(line).center());
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
  carga(QByteArray("NOP\r\n").repeated(400) + "FOO\r\n");
  for (int time = 0; time < 2; ++time) {
    fuente().verticalScrollBar()->setValue(0);
    click(id::Ensamblar);
    EXPECT_TRUE(fuente().viewport()->rect().contains(fuente().cursorRect().center())) << time;
  }
}

TEST_F(editor, an_assembly_without_error_takes_the_mark_away) {
  record.pick(id::PIC, "16C54");
  carga("ORG 200\r\nNOP\r\n ");
  click(id::Ensamblar);
  ASSERT_EQ(fuente().error_line(), 2);
  record.pick(id::PIC, "16C57");
  click(id::Ensamblar);
  EXPECT_EQ(fuente().error_line(), 0);
}

// --- colours ---

TEST_F(editor, what_is_seen_is_coloured_and_follows_what_is_typed) {
  carga("A: MOVLW 10 ; c\r\nNO");
  const source_colours& colours = fuente().colours();
  const auto first = formats(0);
  ASSERT_EQ(first.size(), 4);
  EXPECT_EQ(first[0].format.foreground().color(), colours.of(source_part::label));
  EXPECT_EQ(first[1].format.foreground().color(), colours.of(source_part::mnemonic));
  EXPECT_EQ(first[2].format.foreground().color(), colours.of(source_part::number));
  EXPECT_EQ(first[3].format.foreground().color(), colours.of(source_part::comment));
  EXPECT_TRUE(formats(1).isEmpty());
  fuente().setFocus();
  fuente().moveCursor(QTextCursor::End);
  QTest::keyClicks(&fuente(), "P");
  EXPECT_EQ(formats(1).size(), 1);
  tecla(Qt::Key_Backspace);
  EXPECT_TRUE(formats(1).isEmpty());
}

TEST_F(editor, colours_are_no_change_of_the_text) {
  carga("NOP ; uno\r\nMOVLW 10");
  paint();
  EXPECT_FALSE(record.source().modified);
  EXPECT_FALSE(fuente().document()->isUndoAvailable());
  EXPECT_EQ(record.look(id::source).sel_start(), 0);
}

TEST_F(editor, lines_out_of_sight_wait_until_they_are_seen) {
  carga(QByteArray("NOP\r\n").repeated(5000) + "NOP");
  EXPECT_EQ(formats(0).size(), 1);
  EXPECT_TRUE(formats(4000).isEmpty());
  fuente().verticalScrollBar()->setValue(4000);
  EXPECT_EQ(formats(4000).size(), 1);
}

TEST_F(editor, another_palette_colours_anew) {
  carga("NOP");
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
  carga("MOVLW 10");
  ASSERT_EQ(formats(0).size(), 2);
  fuente().setFocus();
  fuente().moveCursor(QTextCursor::End);
  QTextCharFormat underlined;
  underlined.setFontUnderline(true);
  QInputMethodEvent composing(QStringLiteral("´"), {{QInputMethodEvent::TextFormat, 0, 1,
                                                     QVariant::fromValue<QTextFormat>(underlined)}});
  QApplication::sendEvent(&fuente(), &composing);
  const auto meanwhile = formats(0);
  ASSERT_EQ(meanwhile.size(), 1);
  EXPECT_TRUE(meanwhile[0].format.fontUnderline());
  QInputMethodEvent given_up;
  QApplication::sendEvent(&fuente(), &given_up);
  EXPECT_EQ(formats(0).size(), 2);
  EXPECT_EQ(texto_de_ambos(), "MOVLW 10");
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
  carga(text);
  paint();
  QTextCursor middle = fuente().textCursor();
  middle.setPosition(static_cast<int>(text.size() / 2));
  fuente().setTextCursor(middle);
  fuente().setFocus();
  paint();
  for (int i = 0; i < 10; ++i) {
    QTest::keyClick(&fuente(), Qt::Key_A);
    paint();
  }
  EXPECT_EQ(texto().size(), static_cast<std::size_t>(text.size()) - 2 + 10);
  for (int i = 0; i < 10; ++i) undo();
  EXPECT_EQ(texto() + "\r\n", text.toStdString());
  // A name that begins with L and a number is no wrong one, so only the end of the memory stops it.
  click(id::Ensamblar);
  paint();
  EXPECT_EQ(fuente().error_line(), 2049);
}

// What is done to a text when it is shown and when a key is pressed does not grow with the text: the lines in
// sight get their colours, and one character changes.
TEST_F(editor, only_what_is_seen_and_typed_is_worked_out_whatever_the_length) {
  for (const int length : {megabyte / 2, megabyte}) {
    carga(many_lines(length));
    paint();
    EXPECT_GT(fuente().blockCount(), length / 40);
    const int in_sight = fuente().viewport()->height() / fuente().fontMetrics().height() + 2;
    EXPECT_GT(coloured_lines(), in_sight / 2) << length;
    EXPECT_LE(coloured_lines(), in_sight) << length;

    fuente().setFocus();
    fuente().moveCursor(QTextCursor::Down);
    std::vector<std::array<int, 2>> changes;
    const auto counts = QObject::connect(fuente().document(), &QTextDocument::contentsChange, &fuente(),
                                         [&](int, int removed, int added) {
                                           changes.push_back({removed, added});
                                         });
    QTest::keyClick(&fuente(), Qt::Key_A);
    paint();
    QObject::disconnect(counts);
    EXPECT_EQ(changes, (std::vector<std::array<int, 2>>{{0, 1}})) << length;
    EXPECT_LE(coloured_lines(), in_sight) << length;
  }
}

TEST_F(editor, a_line_of_a_million_characters_can_be_loaded_and_typed_in) {
  const QByteArray line = QByteArray("MOVLW 10 ").repeated(megabyte / 9);
  carga(line);
  paint();
  fuente().setFocus();
  QTest::keyClick(&fuente(), Qt::Key_A);
  paint();
  EXPECT_EQ(texto(), "a" + line.toStdString());
  click(id::Ensamblar);
  paint();
  EXPECT_EQ(fuente().error_line(), 1);
}

}  // namespace
}  // namespace estructura
