// What the program and its tests set up alike before any window: language, dialogs, icon.
//
//   QApplication app(argc, argv);
//   set_up_application(app);
#pragma once

class QApplication;

namespace estructura {

void set_up_application(QApplication& app);

}  // namespace estructura
