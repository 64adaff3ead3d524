#include "ui/qt/window/application.h"

#include <clocale>

#include <QApplication>
#include <QLocale>
#include <QSettings>

#include "ui/qt/look/icons.h"
#include "ui/qt/text/spanish.h"

namespace estructura {

void set_up_application(QApplication& app) {
  // QApplication takes over the person's locale; numbers keep their point.
  std::setlocale(LC_NUMERIC, "C");
  QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  QCoreApplication::setApplicationName(QStringLiteral("estructura"));
  QGuiApplication::setDesktopFileName(QStringLiteral("estructura"));
  QApplication::setWindowIcon(program_icon());
  // The program keeps no settings; Qt's file dialog would keep the folders it has seen, for the next run and
  // for every other program made with Qt. No file can be made below what is no folder.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
  speak_spanish(app);
}

}  // namespace estructura
