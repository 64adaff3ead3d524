// An open window with files to choose and boxes answered, for the tests of its editor, keys and language.
//
//   class mine : public silent_window {};
//   TEST_F(mine, ...) { write_file("NOP"); click(id::Ensamblar); EXPECT_EQ(source_box().toPlainText(),
//   "NOP\n");
//   }
//
// Boxes are answered No, or OK, without being shown.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/qt_window.h"
#include "ui/qt/widgets/source_editor.h"

namespace estructura {

class silent_host final : public qt_host {
 public:
  answer show_box(box kind, std::string_view) override {
    ++boxes;
    if (at_box) at_box();
    return kind == box::yesno || kind == box::yesnocancel ? answer::no : answer::ok;
  }
  std::string choose_file(bool, std::string_view, std::string_view, std::string_view) override {
    return file;
  }

  void rest() override {}

  int boxes = 0;
  std::function<void()> at_box;
  std::string file;
};

class silent_window : public support::real_window<silent_host> {
 protected:
  source_editor& source_box() { return at<source_editor>(id::source); }
  std::string record_text() { return record.look(id::source).text(); }
  void write_file(const QString& letters) {
    source_box().setFocus();
    QTest::keyClicks(&source_box(), letters);
  }
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  /// A source file loaded by its button.
  void load(const QByteArray& text) {
    QFile file(folder.filePath("fuente.asm"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    host.file = file.fileName().toStdString();
    click(id::cargarasm);
  }

  QTemporaryDir folder;
};

}  // namespace estructura
