// The window with its source editor at hand, for the editor's tests.
//
//   class mine : public support::editor_window {};
//   TEST_F(mine, ...) { write_file("NOP"); undo(); EXPECT_EQ(text_of_both(), ""); }
#pragma once

#include <string>

#include <QApplication>
#include <QList>
#include <QTextBlock>
#include <QTextLayout>

#include "tests/support/silent_window.h"

namespace estructura::support {

class editor_window : public silent_window {
 protected:
  void undo() { key(Qt::Key_Z, Qt::ControlModifier); }
  void redo() { key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
  /// What widget and record show alike; the difference otherwise.
  std::string text_of_both() {
    const std::string shown = source_box().toPlainText().replace("\n", "\r\n").toStdString();
    return shown == record_text() ? shown : "widget: " + shown + " record: " + record_text();
  }
  void paint() {
    window.repaint();
    QCoreApplication::processEvents();
  }
  /// Lines that have been coloured, in sight or not.
  int coloured_lines() {
    int count = 0;
    for (QTextBlock line = source_box().document()->begin(); line.isValid(); line = line.next())
      count += static_cast<int>(!line.layout()->formats().empty());
    return count;
  }
  QList<QTextLayout::FormatRange> formats(int line) {
    paint();
    return source_box().document()->findBlockByNumber(line).layout()->formats();
  }
};

}  // namespace estructura::support
