// An open window with files to choose and boxes answered, for the tests of its editor, keys and language.
//
//   class mine : public ventana_de_prueba {};
//   TEST_F(mine, ...) { write_file("NOP"); click(id::Ensamblar); EXPECT_EQ(fuente().toPlainText(), "NOP\n");
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

class ventana_de_prueba : public support::ventana_real<silent_host> {
 protected:
  source_editor& fuente() { return at<source_editor>(id::source); }
  std::string texto() { return record.look(id::source).text(); }
  void write_file(const QString& letters) {
    fuente().setFocus();
    QTest::keyClicks(&fuente(), letters);
  }
  void tecla(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  /// A source file loaded by its button.
  void carga(const QByteArray& text) {
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
