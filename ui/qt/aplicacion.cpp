#include "ui/qt/aplicacion.h"

#include <clocale>

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include "ui/qt/iconos.h"

namespace estructura {

void prepara_aplicacion(QApplication& app) {
  // QApplication takes over the person's locale; numbers keep their point.
  std::setlocale(LC_NUMERIC, "C");
  QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  QCoreApplication::setApplicationName(QStringLiteral("estructura"));
  QGuiApplication::setDesktopFileName(QStringLiteral("estructura"));
  QApplication::setWindowIcon(icono_programa());
  // Named, not chosen by the locale: the program speaks Spanish on any desktop.
  auto* spanish = new QTranslator(&app);
  if (spanish->load(QStringLiteral("qtbase_es"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QCoreApplication::installTranslator(spanish);
}

}  // namespace estructura
