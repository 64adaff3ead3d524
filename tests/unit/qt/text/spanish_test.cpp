// That nothing Qt says by itself is left in another language: menus, boxes, the file dialog, keys. Run once
// for each of several languages of the desktop, and without Qt's own catalogue of translations, as where it
// is not installed.
#include "ui/qt/text/spanish.h"

#include <functional>
#include <gtest/gtest.h>
#include <set>
#include <utility>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTranslator>
#include <QTreeView>

#include "tests/support/hang.h"
#include "ui/qt/window/application.h"
#include "ui/qt/window/main_window.h"
#include "ui/qt/window/qt_host.h"

namespace estructura {
namespace {

/// The same in both languages.
const std::set<QString> same_in_both = {"Ctrl", "Alt", "Meta", "Num", "Esc", "Tab",
                                        "+",    "F%1", "&No",  "No",  "--"};

/// Notes every phrase that somebody asks a translation for and that nobody has one for.
class phrase_probe final : public QTranslator {
 public:
  [[nodiscard]] bool isEmpty() const override { return false; }
  QString translate(const char* context, const char* source, const char* note, int n) const override {
    if (asking_) return {};
    asking_ = true;
    QString answer = QCoreApplication::translate(context, source, note, n);
    asking_ = false;
    ++asked;
    // Who reads a key's name compares it with all there are. Those that are shown have a test of their own.
    if (qstrcmp(context, "QShortcut") == 0) return answer;
    if (answer == QString::fromUtf8(source) && !same_in_both.contains(answer) && !answer.isEmpty())
      missing.insert(QString::fromUtf8(context) + " | " + answer);
    return answer;
  }

  mutable int asked = 0;
  mutable std::set<QString> missing;

 private:
  mutable bool asking_ = false;
};

const QRegularExpression& english_words() {
  static const QRegularExpression words(
      "\\b(undo|redo|cut|copy|paste|delete|select|open|save|cancel|yes|close|files?|name|size|type|kind|date|"
      "modified|computer|look|directory|folder|back|forward|parent|create|new|view|detail|rename|show|hidden|"
      "scroll|here|left|right|top|bottom|page|line|up|down|shift|home|end|ins|remove|places|the|of|to|"
      "link|"
      "location|insert|unknown|drive|text|document|plain|already|exists|sure|want|found|press|error in)\\b",
      QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
  return words;
}

/// What is shown, collected and looked through.
class shown_texts {
 public:
  void check(const QString& text, const QString& where) {
    ++count_;
    QString plain = text;
    plain.remove('&');
    const auto found = english_words().match(plain);
    EXPECT_FALSE(found.hasMatch()) << where.toStdString() << ": " << text.toStdString();
  }

  void check_widget(const QWidget& one) {
    const QString where = QString::fromLatin1(one.metaObject()->className()) + ' ' + one.objectName();
    for (const QString& text : {one.toolTip(), one.statusTip(), one.whatsThis(), one.accessibleName(),
                                one.accessibleDescription(), one.windowTitle()})
      check(text, where);
    if (const auto* button = qobject_cast<const QAbstractButton*>(&one)) {
      check(button->text(), where);
      check(button->shortcut().toString(QKeySequence::NativeText), where);
    }
    if (const auto* label = qobject_cast<const QLabel*>(&one)) check(label->text(), where);
    if (const auto* combo = qobject_cast<const QComboBox*>(&one))
      for (int i = 0; i < combo->count(); ++i) check(combo->itemText(i), where);
    if (const auto* edit = qobject_cast<const QLineEdit*>(&one)) check(edit->placeholderText(), where);
    if (const auto* menu = qobject_cast<const QMenu*>(&one)) check_actions(menu->actions());
    if (const auto* view = qobject_cast<const QAbstractItemView*>(&one)) check_view(*view);
  }

  void check_all(const QWidget& top) {
    check_widget(top);
    for (const QWidget* one : top.findChildren<QWidget*>()) check_widget(*one);
  }

  [[nodiscard]] int count() const { return count_; }

 private:
  void check_actions(const QList<QAction*>& actions) {
    for (const QAction* action : actions) {
      check(action->text(), "action");
      check(action->toolTip(), "action's tip");
      for (const QKeySequence& keys : action->shortcuts())
        check(keys.toString(QKeySequence::NativeText), "action's key");
      if (action->menu() != nullptr) check_actions(action->menu()->actions());
    }
  }
  void check_view(const QAbstractItemView& view) {
    if (view.model() == nullptr) return;
    for (int column = 0; column < view.model()->columnCount(view.rootIndex()); ++column) {
      check(view.model()->headerData(column, Qt::Horizontal).toString(), "header");
      for (int row = 0; row < view.model()->rowCount(view.rootIndex()); ++row)
        check(view.model()->index(row, column, view.rootIndex()).data().toString(), "cell");
    }
  }

  int count_ = 0;
};

class spanish_phrases : public testing::Test {
 protected:
  spanish_phrases() : window((record.Form_Load(), record)) {
    QCoreApplication::installTranslator(&probe);
    host.set_window(&window);
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window, support::hang_ms));
  }
  ~spanish_phrases() override {
    QCoreApplication::removeTranslator(&probe);
    for (const QString& phrase : probe.missing) ADD_FAILURE() << "no Spanish for " << phrase.toStdString();
    EXPECT_GT(probe.asked, 0);
  }

  template <class Widget = QWidget>
  Widget& at(id which) {
    return *static_cast<Widget*>(window.widget_of(which));
  }

  /// Performs an action that opens a box or a menu, which may go on only when it is closed, and looks at it.
  template <class Seen>
  static void while_open(const std::function<void()>& action, const std::function<Seen*()>& find,
                         const std::function<void(Seen&)>& look) {
    bool seen = false;
    QTimer poll;
    const auto glance = [&] {
      Seen* const found = seen ? nullptr : find();
      if (found == nullptr) return;
      seen = true;
      poll.stop();
      look(*found);
    };
    QObject::connect(&poll, &QTimer::timeout, &poll, glance);
    poll.start(2);
    action();
    EXPECT_TRUE(QTest::qWaitFor([&] { return seen; }, support::hang_ms));
  }
  static void with_menu(const std::function<void()>& action, const std::function<void(QMenu&)>& look) {
    while_open<QMenu>(
        action, [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); },
        [&](QMenu& menu) {
          look(menu);
          menu.close();
        });
  }
  static void with_box(const std::function<void()>& action, const std::function<void(QDialog&)>& look,
                       const QWidget* other_than = nullptr) {
    while_open<QDialog>(
        action,
        [other_than]() -> QDialog* {
          QWidget* const box = QApplication::activeModalWidget();
          return box == other_than ? nullptr : qobject_cast<QDialog*>(box);
        },
        look);
  }
  static void ask_for_menu(QWidget& where, const QPoint& point) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, point, where.mapToGlobal(point));
    QApplication::sendEvent(&where, &event);
  }
  std::string menu_of(QWidget& where, const QPoint& point = QPoint(3, 3)) {
    QStringList texts;
    with_menu([&] { ask_for_menu(where, point); },
              [&](QMenu& menu) {
                said.check_all(menu);
                for (const QAction* action : menu.actions())
                  if (!action->isSeparator()) texts << action->text().remove('&');
              });
    return texts.join(" | ").toStdString();
  }

  phrase_probe probe;
  shown_texts said;
  QTemporaryDir folder;
  qt_host host;
  Estructura record{host};
  main_window window;
};

// --- context menus ---

/// What the menu of a text that can be changed holds. Desktops differ in the key that does again.
std::string text_menu() {
  const QString redo = QKeySequence(QKeySequence::Redo).toString(QKeySequence::PortableText);
  const std::string key = redo == "Ctrl+Y" ? "Ctrl+Y" : "Ctrl+Mayús+Z";
  return "Deshacer\tCtrl+Z | Rehacer\t" + key +
         " | Cortar\tCtrl+X | Copiar\tCtrl+C | Pegar\tCtrl+V | Borrar | Seleccionar todo\tCtrl+A";
}

TEST_F(spanish_phrases, the_menu_of_the_source_names_commands_and_keys) {
  record.type(id::source, "NOP");
  record.select(id::source, 0, 3);
  window.refresh();
  EXPECT_EQ(menu_of(*at<QPlainTextEdit>(id::source).viewport()), text_menu());
}

TEST_F(spanish_phrases, the_menu_of_the_listing_copies) {
  record.type(id::source, "NOP");
  record.click(id::Ensamblar);
  record.click(id::sl, 1);
  window.refresh();
  EXPECT_EQ(menu_of(*at<QPlainTextEdit>(id::lst).viewport()), "Copiar\tCtrl+C | Seleccionar todo\tCtrl+A");
}

TEST_F(spanish_phrases, the_menu_of_every_line_of_entry_is_the_same) {
  record.click_row(id::RE, 0, 1);
  window.refresh();
  for (const id which : {id::direc, id::INS, id::FREC, id::FR, id::dat})
    EXPECT_EQ(menu_of(at(which)), text_menu()) << at(which).objectName().toStdString();
}

TEST_F(spanish_phrases, the_menus_of_scroll_bars) {
  auto& source = at<QPlainTextEdit>(id::source);
  EXPECT_EQ(menu_of(*source.verticalScrollBar()),
            "Desplazar hasta aquí | Principio | Final | Una página hacia arriba | Una página hacia abajo | "
            "Desplazar hacia arriba | Desplazar hacia abajo");
  EXPECT_EQ(menu_of(*source.horizontalScrollBar()),
            "Desplazar hasta aquí | Borde izquierdo | Borde derecho | Una página a la izquierda | "
            "Una página a la derecha | Desplazar hacia la izquierda | Desplazar hacia la derecha");
}

TEST_F(spanish_phrases, every_key_has_a_spanish_name) {
  const auto name = [](QKeyCombination keys) {
    return QKeySequence(keys).toString(QKeySequence::NativeText);
  };
  EXPECT_EQ(name(Qt::Key_Delete), "Supr");
  EXPECT_EQ(name(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), "Ctrl+Mayús+Z");
  for (const Qt::Key key :
       {Qt::Key_Escape,  Qt::Key_Tab,        Qt::Key_Backtab, Qt::Key_Backspace, Qt::Key_Return,
        Qt::Key_Enter,   Qt::Key_Insert,     Qt::Key_Delete,  Qt::Key_Pause,     Qt::Key_Print,
        Qt::Key_SysReq,  Qt::Key_Home,       Qt::Key_End,     Qt::Key_Left,      Qt::Key_Up,
        Qt::Key_Right,   Qt::Key_Down,       Qt::Key_PageUp,  Qt::Key_PageDown,  Qt::Key_CapsLock,
        Qt::Key_NumLock, Qt::Key_ScrollLock, Qt::Key_Menu,    Qt::Key_Help,      Qt::Key_Space})
    EXPECT_TRUE(name(key) != QKeySequence(key).toString(QKeySequence::PortableText) ||
                same_in_both.contains(name(key)))
        << name(key).toStdString();
}

// --- boxes ---

TEST_F(spanish_phrases, boxes_of_every_kind) {
  const std::pair<box, QStringList> kinds[] = {
      {box::ok, {"Aceptar"}},
      {box::ok_right, {"Aceptar"}},
      {box::fault, {"Aceptar"}},
      {box::yesno, {"Sí", "No"}},
      {box::yesnocancel, {"Sí", "No", "Cancelar"}},
  };
  for (const auto& [kind, captions] : kinds) {
    with_box([&, what = kind] { host.show_box(what, "Texto"); },
             [&, wanted = captions](QDialog& dialog) {
               said.check_all(dialog);
               QStringList got;
               for (const auto* button : dialog.findChildren<QAbstractButton*>())
                 got << button->text().remove('&');
               got.sort();
               QStringList sorted = wanted;
               sorted.sort();
               EXPECT_EQ(got, sorted);
               dialog.findChild<QAbstractButton*>()->click();
             });
  }
}

// --- the file dialog ---

class dialog_phrases : public spanish_phrases {
 protected:
  void SetUp() override {
    QDir(folder.path()).mkdir("carpeta");
    for (const char* name : {"uno.hex", "dos.asm", "tres.txt", "cuatro", "cinco.zip"}) {
      QFile file(folder.filePath(name));
      ASSERT_TRUE(file.open(QIODevice::WriteOnly));
      file.write("hola");
    }
  }
  void with_dialog(bool save, const std::function<void(QFileDialog&)>& look) {
    with_box(
        [&] {
          host.choose_file(save, "Archivos hexadecimales (*.hex)|*.hex|Todos los archivos (*.*)|*.*", "hex",
                           folder.filePath("uno.hex").toStdString());
        },
        [&](QDialog& dialog) {
          auto& files = dynamic_cast<QFileDialog&>(dialog);
          files.selectNameFilter(files.nameFilters().constLast());
          EXPECT_TRUE(QTest::qWaitFor(
              [&] { return list_of(files).model()->rowCount(list_of(files).rootIndex()) > 4; },
              support::hang_ms));
          look(files);
          dialog.reject();
        });
  }
  static QListView& list_of(QFileDialog& files) { return *files.findChild<QListView*>("listView"); }
  static QModelIndex entry(QFileDialog& files, const QString& name, int column = 0) {
    QListView& list = list_of(files);
    for (int row = 0; row < list.model()->rowCount(list.rootIndex()); ++row) {
      const QModelIndex index = list.model()->index(row, 0, list.rootIndex());
      if (index.data().toString() == name) return index.siblingAtColumn(column);
    }
    ADD_FAILURE() << "not in the dialog: " << name.toStdString();
    return {};
  }
};

TEST_F(dialog_phrases, both_dialogs_in_both_views) {
  for (const bool save : {false, true})
    with_dialog(save, [&](QFileDialog& files) {
      EXPECT_EQ(files.windowTitle(), save ? "Salvar como" : "Abrir");
      EXPECT_EQ(files.findChild<QLabel*>("fileTypeLabel")->text(), "Tipo de fichero:");
      EXPECT_EQ(files.findChild<QLabel*>("fileNameLabel")->text().remove('&'), "Nombre del fichero:");
      EXPECT_EQ(files.findChild<QLabel*>("lookInLabel")->text(), "Buscar en:");
      said.check_all(files);
      files.findChild<QAbstractButton*>("detailModeButton")->click();
      QCoreApplication::processEvents();
      const auto* tree = files.findChild<QTreeView*>("treeView");
      ASSERT_TRUE(tree->isVisible());
      QStringList headers;
      for (int i = 0; i < 4; ++i) headers << tree->model()->headerData(i, Qt::Horizontal).toString();
      EXPECT_EQ(headers, QStringList({"Nombre", "Tamaño", "Tipo", "Modificado"}));
      said.check_all(files);
    });
}

TEST_F(dialog_phrases, places_and_labels_are_seen_whole) {
  with_dialog(false, [&](QFileDialog& files) {
    // Without a box to lead to, Qt shows the sign of the underlined letter itself.
    for (const auto* label : files.findChildren<QLabel*>())
      if (label->buddy() == nullptr) {
        EXPECT_FALSE(label->text().contains('&')) << label->text().toStdString();
      }
    const auto* const places = files.findChild<QListView*>("sidebar");
    EXPECT_LE(places->sizeHintForColumn(0), places->viewport()->width());
    EXPECT_GE(files.findChild<QListView*>("listView")->width(), 2 * places->width());
  });
}

TEST_F(dialog_phrases, sizes_and_dates_are_written_as_in_spain_whatever_the_desktop) {
  with_dialog(false, [&](QFileDialog& files) {
    const QLocale spain(QLocale::Spanish, QLocale::Spain);
    const QDateTime changed = QFileInfo(folder.filePath("uno.hex")).lastModified();
    EXPECT_EQ(entry(files, "uno.hex", 3).data().toString(), spain.toString(changed, QLocale::ShortFormat));
    EXPECT_EQ(entry(files, "uno.hex", 1).data().toString(), "4 bytes");
    EXPECT_EQ(entry(files, "carpeta", 2).data().toString(), "Carpeta");
  });
}

TEST_F(dialog_phrases, menus_of_a_file_of_the_empty_sheet_and_of_the_name) {
  with_dialog(true, [&](QFileDialog& files) {
    QListView& list = list_of(files);
    EXPECT_EQ(menu_of(*list.viewport(), list.visualRect(entry(files, "uno.hex")).center()),
              "Cambiar el nombre | Borrar | Mostrar los ficheros ocultos | Carpeta nueva");
    menu_of(*list.viewport(), QPoint(list.viewport()->width() - 2, list.viewport()->height() - 2));
    menu_of(*files.findChild<QLineEdit*>("fileNameEdit"));
    auto* const sidebar = files.findChild<QListView*>("sidebar");
    menu_of(*sidebar->viewport(), sidebar->visualRect(sidebar->model()->index(0, 0)).center());
  });
}

TEST_F(dialog_phrases, deleting_asks_in_spanish) {
  QFile protected_file(folder.filePath("dos.asm"));
  ASSERT_TRUE(protected_file.setPermissions(QFile::ReadOwner));
  with_dialog(false, [&](QFileDialog& files) {
    for (const char* name : {"uno.hex", "dos.asm"}) {
      list_of(files).setCurrentIndex(entry(files, name));
      with_box([&] { QMetaObject::invokeMethod(&files, "_q_deleteCurrent"); },
               [&](QDialog& box) {
                 said.check_all(box);
                 dynamic_cast<QMessageBox&>(box).button(QMessageBox::No)->click();
               },
               &files);
    }
  });
  EXPECT_TRUE(QFile::exists(folder.filePath("uno.hex")));
}

TEST_F(dialog_phrases, keys_of_the_dialog_are_those_that_it_had) {
  with_dialog(false, [](QFileDialog& files) {
    const std::pair<const char*, QKeyCombination> buttons[] = {
        {"backButton", Qt::ALT | Qt::Key_Left},
        {"forwardButton", Qt::ALT | Qt::Key_Right},
        {"toParentButton", Qt::ALT | Qt::Key_Up},
    };
    for (const auto& [name, keys] : buttons)
      EXPECT_EQ(files.findChild<QAbstractButton*>(name)->shortcut(), QKeySequence(keys)) << name;
  });
}

TEST_F(dialog_phrases, a_new_folder_has_a_spanish_name) {
  with_dialog(true, [&](QFileDialog& files) {
    files.findChild<QAbstractButton*>("newFolderButton")->click();
    EXPECT_TRUE(QDir(folder.path()).exists("Carpeta nueva"));
  });
}

// --- what is read aloud ---

TEST_F(spanish_phrases, actions_offered_to_a_screen_reader) {
  for (const QString& name :
       {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::increaseAction(),
        QAccessibleActionInterface::decreaseAction(), QAccessibleActionInterface::showMenuAction(),
        QAccessibleActionInterface::setFocusAction(), QAccessibleActionInterface::toggleAction(),
        QAccessibleActionInterface::scrollLeftAction(), QAccessibleActionInterface::scrollRightAction(),
        QAccessibleActionInterface::scrollUpAction(), QAccessibleActionInterface::scrollDownAction(),
        QAccessibleActionInterface::nextPageAction(), QAccessibleActionInterface::previousPageAction()}) {
    QAccessibleInterface* const button = QAccessible::queryAccessibleInterface(&at(id::eje1));
    said.check(button->actionInterface()->localizedActionName(name), name);
    said.check(button->actionInterface()->localizedActionDescription(name), name);
  }
}

}  // namespace
}  // namespace estructura

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  QApplication app(argc, argv);
  estructura::set_up_application(app);
  for (auto* const catalogue : app.findChildren<QTranslator*>())
    if (!catalogue->filePath().isEmpty()) QCoreApplication::removeTranslator(catalogue);
  return RUN_ALL_TESTS();
}
