// An open window with files to choose and boxes answered, for the tests of its editor, keys and language.
//
//   class mine : public ventana_de_prueba {};
//   TEST_F(mine, ...) { escribe("NOP"); click(id::Ensamblar); EXPECT_EQ(fuente().toPlainText(), "NOP\n"); }
//
// Boxes are answered No, or OK, without being shown.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "ui/qt/anfitrion_qt.h"
#include "ui/qt/editor_fuente.h"
#include "ui/qt/ventana.h"

namespace estructura {

class anfitrion_callado final : public anfitrion_qt {
 public:
  answer mensaje(box kind, std::string_view) override {
    ++boxes;
    return kind == box::yesno || kind == box::yesnocancel ? answer::no : answer::ok;
  }
  std::string elige_fichero(bool, std::string_view, std::string_view, std::string_view) override {
    return file;
  }

  int boxes = 0;
  std::string file;
};

class ventana_de_prueba : public testing::Test {
 protected:
  ventana_de_prueba() : window((record.Form_Load(), record)) {
    host.pon_ventana(&window);
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }

  template <class Widget = QWidget>
  Widget& at(id which, int index = 0) {
    return *static_cast<Widget*>(window.widget_of(which, index));
  }
  editor_fuente& fuente() { return at<editor_fuente>(id::source); }
  std::string texto() { return record.look(id::source).text(); }
  void click(id which, int index = 0) { QTest::mouseClick(&at(which, index), Qt::LeftButton); }
  void escribe(const QString& letters) {
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
  anfitrion_callado host;
  Estructura record{host};
  ventana window;
};

}  // namespace estructura
