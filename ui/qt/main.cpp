// The program: the window in Qt, and nothing else.
#include <QApplication>

#include "ui/estructura.h"
#include "ui/qt/anfitrion_qt.h"
#include "ui/qt/aplicacion.h"
#include "ui/qt/ventana.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  estructura::prepara_aplicacion(app);
  estructura::anfitrion_qt host;
  estructura::Estructura window(host);
  window.Form_Load();
  estructura::ventana shown(window);
  host.pon_ventana(&shown);
  shown.show();
  return QApplication::exec();
}
