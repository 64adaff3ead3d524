// The program: the window in Qt, and nothing else.
#include <cstdio>
#include <cstdlib>

#include <QApplication>

#include "ui/estructura.h"
#include "ui/qt/window/application.h"
#include "ui/qt/window/main_window.h"
#include "ui/qt/window/qt_host.h"

namespace {

// Without a display Qt ends the program with several English lines; one in Spanish says it better.
void say_no_display(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type != QtFatalMsg) return;
  std::fputs("Estructura no puede abrir su ventana: no hay ninguna pantalla disponible.\n", stderr);
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

int main(int, char** argv) {
  qInstallMessageHandler(say_no_display);
  // The program takes no arguments; Qt would take some of its own.
  int only_its_name = 1;
  QApplication app(only_its_name, argv);
  qInstallMessageHandler(nullptr);
  estructura::set_up_application(app);
  estructura::qt_host host;
  estructura::Estructura window(host);
  window.Form_Load();
  estructura::main_window shown(window);
  host.set_window(&shown);
  shown.show();
  return QApplication::exec();
}
