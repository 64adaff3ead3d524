// The file dialog of every command, Spanish whatever the desktop's language: Qt's own one, since that of the
// desktop speaks as the desktop does.
//
//   dialogo_ficheros dialog(window, true);
//   dialog.setNameFilters(...);
//   if (dialog.exec() == QDialog::Accepted) ...
#pragma once

#include <QFileDialog>

namespace estructura {

class dialogo_ficheros final : public QFileDialog {
 public:
  dialogo_ficheros(QWidget* parent, bool save);
};

}  // namespace estructura
