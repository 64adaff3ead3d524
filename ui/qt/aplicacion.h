// What the program and its tests set up alike before any window: language, dialogs, icon.
//
//   QApplication app(argc, argv);
//   prepara_aplicacion(app);
#pragma once

class QApplication;

namespace estructura {

void prepara_aplicacion(QApplication& app);

}  // namespace estructura
