// Qt's warnings while a test runs: all but those in which a platform only says what it is not are faults of
// ours, printed and counted.
//
//   qInstallMessageHandler(azar::avisa);
//   ...
//   return azar::avisos == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
#pragma once

#include <iostream>

#include <QString>

namespace estructura::azar {

inline int avisos = 0;

inline void avisa(QtMsgType, const QMessageLogContext&, const QString& message) {
  const bool of_the_platform = message.startsWith("This plugin does not support") ||
                               message.startsWith("QStandardPaths: XDG_RUNTIME_DIR");
  if (of_the_platform) return;
  ++avisos;
  std::cerr << message.toStdString() << std::endl;
}

}  // namespace estructura::azar
