// The operands that are read as something else than they look, underlined and told.
#include <cstdlib>
#include <gtest/gtest.h>

#include <QApplication>
#include <QTextBlock>
#include <QTextLayout>
#include <QToolTip>

#include "tests/unit/qt/widgets/editor_window.h"
#include "ui/qt/widgets/source_editor.h"

namespace estructura {
namespace {

class editor_readings : public support::editor_window {
 protected:
  /// What is underlined on a line, as it is painted; several operands divided by a blank.
  std::string underlined(int line) {
    const QString text = source_box().document()->findBlockByNumber(line).text();
    QStringList found;
    paint();
    for (const auto& range : source_editor::underlined(source_box().document()->findBlockByNumber(line)))
      found << text.mid(range.start, range.length);
    return found.join(' ').toStdString();
  }
  void caret_at(int line, int column) {
    QTextCursor cursor(source_box().document()->findBlockByNumber(line));
    cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::MoveAnchor, column);
    source_box().setTextCursor(cursor);
    source_box().setFocus();
  }
  /// The tip that comes up under the mouse at a character, without its markup; empty when none does.
  std::string tip_under_mouse(int line, int column) {
    paint();
    QTextCursor cursor(source_box().document()->findBlockByNumber(line));
    cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::MoveAnchor, column);
    return tip_at_point(source_box().cursorRect(cursor).center() + QPoint(2, 0));
  }
  std::string tip_at_point(const QPoint& place) {
    return tip_after([&] {
      QWidget* const viewport = source_box().viewport();
      QHelpEvent event(QEvent::ToolTip, place, viewport->mapToGlobal(place));
      QCoreApplication::sendEvent(viewport, &event);
    });
  }
  std::string tip_by_key() {
    return tip_after([&] { key(Qt::Key_F1); });
  }
  /// Another one is up before: a tip that is to go stays a while.
  std::string tip_after(const std::function<void()>& action) {
    const QString before = "before";
    QToolTip::showText(source_box().mapToGlobal(QPoint(5, 5)), before, &source_box());
    action();
    const QString shown = QToolTip::text();
    EXPECT_NE(shown, "");
    return shown == before ? "" : QString(shown).remove("<p>").remove("</p>").toStdString();
  }
  std::string description() { return source_box().accessibleDescription().toStdString(); }

  static constexpr const char* as_zero =
      "EQU lee solo las cifras hexadecimales del principio: se lee como 0.";
};

TEST_F(editor_readings, underline_what_is_read_as_something_else) {
  load("X EQU 0x10\nY: EQU H'08'\n ORG 0x100\n ADDWF X,F ; F\n BCF X,12\n MOVLW X\n");
  EXPECT_EQ(underlined(0), "0x10");
  EXPECT_EQ(underlined(1), "H'08'");
  EXPECT_EQ(underlined(2), "0x100");
  EXPECT_EQ(underlined(3), "F");
  EXPECT_EQ(underlined(4), "12");
  EXPECT_EQ(underlined(5), "");
}

TEST_F(editor_readings, draw_the_line_below_the_operand_alone) {
  load("X EQU 0x10\nX EQU 10\n");
  paint();
  const QImage shown = source_box().viewport()->grab().toImage();
  const auto marked = [&](int line, int from, int to) {
    QTextCursor start(source_box().document()->findBlockByNumber(line));
    start.movePosition(QTextCursor::NextCharacter, QTextCursor::MoveAnchor, from);
    QTextCursor end = start;
    end.movePosition(QTextCursor::NextCharacter, QTextCursor::MoveAnchor, to - from);
    const QRect place = source_box().cursorRect(start).united(source_box().cursorRect(end));
    const QColor colour = source_box().colours().underline;
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
  load("ADDWF 5,F\nGOTO FIN\nMOVLW FF\n\n\n");
  // No name at all: digits are digits.
  EXPECT_EQ(underlined(0), "");
  EXPECT_EQ(underlined(1), "FIN");
  EXPECT_EQ(underlined(2), "");
  caret_at(4, 0);
  QTest::keyClicks(&source_box(), "FIN: NOP");
  EXPECT_EQ(underlined(0), "F");
  EXPECT_EQ(underlined(1), "");
  EXPECT_EQ(underlined(2), "FF");
  key(Qt::Key_Return);
  QTest::keyClicks(&source_box(), "F EQU 1");
  EXPECT_EQ(underlined(0), "");
  // A line that goes takes its name with it, whole or joined to another, and undoing brings it back.
  caret_at(3, 0);
  key(Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
  key(Qt::Key_Delete);
  EXPECT_EQ(underlined(0), "");
  EXPECT_EQ(underlined(1), "FIN");
  EXPECT_EQ(underlined(2), "");
  undo();
  EXPECT_EQ(underlined(1), "");
  EXPECT_EQ(underlined(2), "FF");
  caret_at(3, 0);
  key(Qt::Key_Delete);
  QTest::keyClicks(&source_box(), ";");
  EXPECT_EQ(underlined(1), "FIN");
  EXPECT_EQ(underlined(0), "") << "F is defined still";
}

TEST_F(editor_readings, follow_another_document) {
  load("F EQU 1\nADDWF 5,F\n");
  EXPECT_EQ(underlined(1), "");
  load("X EQU 1\nADDWF 5,F\n");
  EXPECT_EQ(underlined(1), "F");
  load("F: NOP\nADDWF 5,F\n");
  EXPECT_EQ(underlined(1), "");
  // The line end in front of a definition moves it to another line.
  caret_at(0, 0);
  key(Qt::Key_Return);
  EXPECT_EQ(underlined(2), "");
  QTest::keyClicks(&source_box(), "F: ;");
  EXPECT_EQ(underlined(2), "");
}

TEST_F(editor_readings, tell_what_is_read_under_the_mouse) {
  load("X EQU 0x10\nRETLW X\n");
  EXPECT_EQ(tip_under_mouse(0, 6), as_zero);
  EXPECT_EQ(tip_under_mouse(0, 9), as_zero);
  EXPECT_EQ(tip_under_mouse(0, 1), "");
  EXPECT_EQ(tip_under_mouse(1, 6), "");
  // Beside the end of a line no operand stands.
  EXPECT_EQ(tip_at_point(QPoint(source_box().viewport()->width() - 5, 10)), "");
}

TEST_F(editor_readings, tell_what_is_read_at_the_caret_by_key_and_to_a_screen_reader) {
  const std::string plain = description();
  load("X EQU 0x10\nRETLW X\n");
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
  source_box().setFocus();
  EXPECT_EQ(description(), plain + " " + as_zero);
  caret_at(1, 6);
  EXPECT_EQ(description(), plain);
  EXPECT_EQ(tip_by_key(), "");
  // Typing is a move of the caret too.
  caret_at(1, 7);
  QTest::keyClicks(&source_box(), "X");
  EXPECT_EQ(description(), plain + " No está definido: no se lee, y al ensamblar dará un error.");
  key(Qt::Key_Backspace);
  EXPECT_EQ(description(), plain);
}

}  // namespace
}  // namespace estructura
