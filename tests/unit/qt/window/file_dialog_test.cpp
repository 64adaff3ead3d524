// The file dialog as Qt brings it.
#include "ui/qt/window/file_dialog.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/handled_window.h"

namespace estructura {
namespace {

class file_dialog : public support::handled_window {};

class named_in_dialog : public support::handled_window {
 protected:
  /// What the dialog answers when this name is typed in it.
  std::string choose(bool save, const QString& name) {
    std::string path;
    with_box(
        [&] { path = host.choose_file(save, "Hexadecimales (*.hex)|*.hex|Todos (*.*)|*.*", "hex", ""); },
        [&](QDialog& dialog) {
          auto& files = dynamic_cast<QFileDialog&>(dialog);
          EXPECT_EQ(files.nameFilters(), QStringList({"Hexadecimales (*.hex) (*.hex)", "Todos (*.*) (*)"}));
          auto* const edit = dialog.findChild<QLineEdit*>("fileNameEdit");
          edit->setText(name);
          QTest::keyClick(edit, Qt::Key_Return);
        });
    return path;
  }
  void make(const QString& name) {
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  std::string in_folder(const QString& name) { return folder.filePath(name).toStdString(); }

  QTemporaryDir folder;
};

TEST_F(file_dialog, the_file_dialog_proposes_the_file_that_the_document_means) {
  const QTemporaryDir folder;
  ASSERT_TRUE(QDir(folder.path()).mkdir("Curso"));
  QFile file(folder.filePath("Curso/Uno.ASM"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  with_box(
      [&] {
        host.choose_file(true, "Todos (*.*)|*.*", "asm", folder.filePath("curso/uno.asm").toStdString());
      },
      [&](QDialog& dialog) {
        const auto& files = dynamic_cast<QFileDialog&>(dialog);
        const auto* const edit = dialog.findChild<QLineEdit*>("fileNameEdit");
        EXPECT_EQ(files.directory().path(), folder.filePath("Curso"));
        EXPECT_EQ(edit->text(), "Uno.ASM");
        dialog.reject();
      });
}

TEST_F(file_dialog, a_folder_typed_in_the_file_dialog_is_entered_and_its_name_taken_away) {
  const QTemporaryDir folder;
  ASSERT_TRUE(QDir(folder.path()).mkdir("Curso"));
  with_box(
      [&] { host.choose_file(false, "Todos (*.*)|*.*", "asm", folder.filePath("uno.asm").toStdString()); },
      [&](QDialog& dialog) {
        const auto& files = dynamic_cast<QFileDialog&>(dialog);
        auto* const edit = dialog.findChild<QLineEdit*>("fileNameEdit");
        for (const QString& typed : {QString("Curso"), folder.path(), QString("Curso"), QString("..")}) {
          const QString expected = QDir::cleanPath(files.directory().filePath(typed));
          edit->setText(typed);
          QTest::keyClick(edit, Qt::Key_Return);
          EXPECT_TRUE(dialog.isVisible());
          EXPECT_EQ(QDir::cleanPath(files.directory().path()), expected);
          EXPECT_EQ(edit->text(), "");
        }
        dialog.reject();
      });
}

TEST(examples_folder, is_found_beside_an_installed_program_and_above_a_built_one) {
  const QTemporaryDir place;
  ASSERT_TRUE(QDir(place.path()).mkpath("usr/share/estructura/ejemplos"));
  ASSERT_TRUE(QDir(place.path()).mkpath("clon/ejemplos"));
  EXPECT_EQ(examples_folder(place.filePath("usr/bin")), place.filePath("usr/share/estructura/ejemplos"));
  EXPECT_EQ(examples_folder(place.filePath("clon/build/release/ui/qt")), place.filePath("clon/ejemplos"));
  EXPECT_EQ(examples_folder(place.filePath("opt/bin")), "");
}

TEST_F(file_dialog, a_file_dialog_leaves_nothing_behind_for_the_next_run) {
  const QTemporaryDir folder;
  // Where Qt keeps what its file dialogs have seen.
  const QString of_dialogs = "QtProject";
  const QFileInfo usual(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + '/' +
                        of_dialogs + ".conf");
  const auto last_written = [&] { return QFileInfo(usual.filePath()).lastModified(); };
  const QDateTime before = last_written();
  with_box(
      [&] { host.choose_file(true, "Todos (*.*)|*.*", "asm", folder.filePath("uno.asm").toStdString()); },
      [&](QDialog& dialog) {
        QTest::keyClick(dialog.findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
      });
  EXPECT_EQ(last_written(), before) << usual.filePath().toStdString();
  EXPECT_FALSE(QFile::exists(QSettings(QSettings::UserScope, of_dialogs).fileName()));
}

TEST_F(named_in_dialog, gives_a_name_that_does_not_exist_and_never_asks_to_replace) {
  make("viejo.hex");
  EXPECT_EQ(choose(false, folder.filePath("nuevo.hex")), in_folder("nuevo.hex"));
  EXPECT_EQ(choose(true, folder.filePath("otro")), in_folder("otro.hex"));
  EXPECT_EQ(choose(true, folder.filePath("viejo.hex")), in_folder("viejo.hex"));
}

TEST_F(named_in_dialog, opens_the_file_named_in_full_before_one_with_the_extension) {
  for (const char* const name : {"LEEME", "leeme.hex", "dos.hex"}) make(name);
  EXPECT_EQ(choose(false, folder.filePath("LEEME")), in_folder("LEEME"));
  // The case of its letters does not matter, as in any other name.
  EXPECT_EQ(choose(false, folder.filePath("Leeme")), in_folder("Leeme"));
  EXPECT_EQ(choose(false, folder.filePath("leeme.hex")), in_folder("leeme.hex"));
  EXPECT_EQ(choose(false, folder.filePath("dos")), in_folder("dos.hex"));
  EXPECT_EQ(choose(false, folder.filePath("tres")), in_folder("tres.hex"));
  // A new file always gets its extension.
  EXPECT_EQ(choose(true, folder.filePath("LEEME")), in_folder("LEEME.hex"));
}

TEST_F(file_dialog, a_dialog_cancelled_gives_no_name) {
  std::string path = "algo";
  with_box([&] { path = host.choose_file(false, "Todos (*.*)|*.*", "hex", "/no/hay/tal.hex"); },
           [](QDialog& dialog) { dialog.reject(); });
  EXPECT_EQ(path, "");
}

}  // namespace
}  // namespace estructura
