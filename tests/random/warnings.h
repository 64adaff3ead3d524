// Qt's warnings while a test runs: all but those in which a platform only says what it is not are faults of
// ours, printed and counted.
//
//   qInstallMessageHandler(random_events::warn);
//   ...
//   return random_events::warnings == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
#pragma once

#include <iostream>

#include <QString>

namespace estructura::random_events {

inline int warnings = 0;

inline void warn(QtMsgType, const QMessageLogContext&, const QString& message) {
  const bool of_the_platform = message.startsWith("This plugin does not support") ||
                               message.startsWith("QStandardPaths: XDG_RUNTIME_DIR");
  if (of_the_platform) return;
  ++warnings;
  std::cerr << message.toStdString() << std::endl;
}

}  // namespace estructura::random_events
